#include "Listeners.h"

#include <Zel/TypeTable>

namespace {

using namespace Maintenance;
using namespace TestModel;

/// What overrides nothing but what it is told of failures.
template <class T>
class Deaf : public T::Notifiee {
public:
  void onNotificationException(Zel::AttributeId id) override { failed.push_back(id); }
  std::vector<Zel::AttributeId> failed;
};

/// Calls each callback that a row of the type names, as the kernel does; yields how many there are.
template <class T>
unsigned callAll(Deaf<T>& deaf) {
  unsigned calls = 0;
  T::zelTable().forEachRow([&](const Zel::AttrRow& row) {
    if (row.tell != nullptr) {
      row.tell(deaf);
      ++calls;
    }
    if (row.isCollection() && row.collection->tell != nullptr) {
      Zel::ValueSlot key(*row.key);
      row.collection->tellKey(deaf, key.at());
      row.collection->tell(deaf);
      calls += 2;
    }
  });
  return calls;
}

/// Expects that a notifiee may leave all callbacks of the type alone, of which there are so many
/// besides those that no mutator calls: `later` calls these.
template <class T, class Later>
void expectMayBeIgnored(const Ptr<T>& object, unsigned count, const Later& later) {
  SCOPED_TRACE(T::zelTypeName);
  const auto deaf = listen<Deaf<T>>(object);
  EXPECT_EQ(callAll<T>(*deaf), count);
  later(*deaf);
  if constexpr (std::derived_from<T, Zel::Entity>) {
    deaf->onParent();
    deaf->onVersion();
  }
  EXPECT_EQ(deaf->failed, std::vector<Zel::AttributeId>());
  EXPECT_TRUE(deaf->notifier() == object);
  EXPECT_TRUE(deaf->hasNotificationActive());
}

template <class T>
void expectMayBeIgnored(const Ptr<T>& object, unsigned count) {
  expectMayBeIgnored(object, count, [](Deaf<T>& /*deaf*/) {});
}

TEST(Unheard, CallbacksOfProfilesMayBeLeftAlone) {
  expectMayBeIgnored(Profile::configDirFactory("dir"), 2,
                     [](auto& deaf) { deaf.onConfigzelImmediate(); });
  expectMayBeIgnored(Profile::defaultProfileFactory("default"), 1);
  expectMayBeIgnored(MaintenanceUnitProfile::configFactory("careful"), 2);
  expectMayBeIgnored(MaintenanceUnitProfile::configDirFactory("dir"), 2,
                     [](auto& deaf) { deaf.onConfigzelImmediate(); });
}

TEST(Unheard, CallbacksOfUnitsMayBeLeftAlone) {
  expectMayBeIgnored(Unit::configFactory("unit"), 4,
                     [](auto& deaf) { deaf.onGroupzelImmediate(); });
  expectMayBeIgnored(Unit::configDirFactory("dir"), 2,
                     [](auto& deaf) { deaf.onConfigzelImmediate(); });
  expectMayBeIgnored(Unit::statusFactory("unit"), 18, [](auto& deaf) {
    deaf.onGroupzelImmediate();
    deaf.onHistoryzelImmediate();
    deaf.onIntfsViolatingTrafficThresholdzelImmediate();
  });
  expectMayBeIgnored(Unit::statusDirFactory("dir"), 2,
                     [](auto& deaf) { deaf.onStatuszelImmediate(); });
  expectMayBeIgnored(Unit::inputFactory("cli"), 3, [](auto& deaf) { deaf.onUnitzelImmediate(); });
  expectMayBeIgnored(Unit::mergedInputFactory("unit", Unit::srcCli), 1);
  expectMayBeIgnored(Unit::mergedInputDirFactory("dir"), 2,
                     [](auto& deaf) { deaf.onUnitzelImmediate(); });
}

TEST(Unheard, CallbacksOfGroupsMayBeLeftAlone) {
  const Group::GroupKey peers(Group::groupTypeBgp, "peers");
  expectMayBeIgnored(MaintenanceGroup::configFactory("group", peers), 2,
                     [](auto& deaf) { deaf.onProfilezelImmediate(); });
  expectMayBeIgnored(MaintenanceGroup::configDirFactory("dir"), 2,
                     [](auto& deaf) { deaf.onMaintenanceGroupzelImmediate(); });
  expectMayBeIgnored(Zel::makeObject<GroupToUnit>(peers), 2,
                     [](auto& deaf) { deaf.onUnitNamezelImmediate(); });
  expectMayBeIgnored(groupToUnitDirFactory("dir"), 2,
                     [](auto& deaf) { deaf.onGroupToUnitzelImmediate(); });
  expectMayBeIgnored(Zel::makeObject<MemberToGroup>("Ethernet1"), 6, [](auto& deaf) {
    deaf.onGroupzelImmediate();
    deaf.onSelectedProfilezelImmediate();
  });
}

TEST(Unheard, CallbacksOfSelectionsMayBeLeftAlone) {
  const GroupProfileSelKey request(Group::groupTypeBgp, 1);
  const UnitProfileSelKey selected("unit", userConfigChange);
  expectMayBeIgnored(groupProfileSelectionInFactory(request), 3,
                     [](auto& deaf) { deaf.onGroupNamezelImmediate(); });
  expectMayBeIgnored(unitProfileSelectionFactory(selected), 7, [](auto& deaf) {
    deaf.onGroupProfileSelectionInzelImmediate();
    deaf.onGroupProfileSelectionOutzelImmediate();
  });
  expectMayBeIgnored(profileSelectionFactory(), 2,
                     [](auto& deaf) { deaf.onUnitProfileSelectionzelImmediate(); });
}

TEST(Unheard, CallbacksOfTheAgentMayBeLeftAlone) {
  expectMayBeIgnored(agentInfoFactory("agent"), 6,
                     [](auto& deaf) { deaf.onOnBootMaintEnterzelImmediate(); });
}

} // namespace
