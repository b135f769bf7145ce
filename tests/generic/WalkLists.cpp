#include "GenericFixture.h"

#include <generic/MaintenanceAgentInfo.h>
#include <generic/MaintenanceGroup.h>
#include <generic/MaintenanceUnitProfile.h>
#include <generic/Mapping.h>

#include <algorithm>
#include <sstream>

// What the delivery of everything tells of each entity type, in which order.

namespace {

using namespace TestGeneric;
using namespace Maintenance;

/// A type and the attributes that are told, in order, those of collections with a star.
struct WalkList {
  const char* name;
  Ptr<Zel::Entity> (*make)();
  Zel::PtrInterface::NotifieeConst& (*firstListed)(const Zel::Entity& entity);
  const char* attributes;

  friend void PrintTo(const WalkList& list, std::ostream* out) { *out << list.name; }
};

template <auto Make>
constexpr WalkList listOf(const char* name, const char* attributes) {
  using T = std::remove_reference_t<decltype(*Make())>;
  return {name, [] { return Ptr<Zel::Entity>(Make()); },
          [](const Zel::Entity& entity) -> Zel::PtrInterface::NotifieeConst& {
            return *static_cast<const T&>(entity).zelNotifieeList().head();
          },
          attributes};
}

constexpr auto profile = [] { return Zel::makeObject<Profile::Config>(Profile::ProfileKey()); };
constexpr auto profiles = [] { return Profile::configDirFactory("e"); };
constexpr auto defaultProfile = [] { return Profile::defaultProfileFactory("e"); };
constexpr auto unit = [] { return Unit::configFactory("e"); };
constexpr auto units = [] { return Unit::configDirFactory("e"); };
constexpr auto status = [] { return Unit::statusFactory("e"); };
constexpr auto statuses = [] { return Unit::statusDirFactory("e"); };
constexpr auto input = [] { return Unit::inputFactory("e"); };
constexpr auto merged = [] { return Unit::mergedInputFactory("e", Unit::srcCli); };
constexpr auto mergedDir = [] { return Unit::mergedInputDirFactory("e"); };
constexpr auto member = [] { return Zel::makeObject<MemberToGroup>("e"); };
constexpr auto groupToUnit = [] { return Zel::makeObject<GroupToUnit>(Group::GroupKey()); };
constexpr auto groupToUnits = [] { return groupToUnitDirFactory("e"); };
constexpr auto group = [] { return MaintenanceGroup::configFactory("e", Group::GroupKey()); };
constexpr auto groups = [] { return MaintenanceGroup::configDirFactory("e"); };
constexpr auto unitProfile = [] { return MaintenanceUnitProfile::configFactory("e"); };
constexpr auto unitProfiles = [] { return MaintenanceUnitProfile::configDirFactory("e"); };
constexpr auto agent = [] { return agentInfoFactory("e"); };

constexpr WalkList lists[] = {
    listOf<profile>("ProfileConfig", ""),
    listOf<profiles>("ProfileConfigDir", "258*"),
    listOf<defaultProfile>("DefaultProfile", "259"),
    listOf<unit>("UnitConfig", "259 260* 261"),
    listOf<units>("UnitConfigDir", "258*"),
    listOf<status>("Status", "259 260* 261 262 263 264 265 267 268* 269 270 271 272* 273 274"),
    listOf<statuses>("StatusDir", "258*"),
    listOf<input>("Input", "258 259*"),
    listOf<merged>("MergedInput", "259"),
    listOf<mergedDir>("MergedInputDir", "258*"),
    listOf<member>("MemberToGroup", "258* 259* 260 261"),
    listOf<groupToUnit>("GroupToUnit", "259*"),
    listOf<groupToUnits>("GroupToUnitDir", "258*"),
    listOf<group>("MaintenanceGroup", "259*"),
    listOf<groups>("MaintenanceGroupDir", "258*"),
    listOf<unitProfile>("UnitProfile", "387 390"),
    listOf<unitProfiles>("UnitProfileDir", "258*"),
    listOf<agent>("AgentInfo", "258 259 260 261* 262"),
};

class WalkLists : public testing::TestWithParam<WalkList> {
protected:
  WalkLists() {
    std::istringstream words(GetParam().attributes);
    for (std::string word; words >> word;) {
      if (word.back() == '*') {
        word.pop_back();
      } else {
        singular.push_back(word);
      }
      all.push_back(word);
    }
  }

  /// What is told where this attribute is pending.
  Log delivered(Zel::AttributeId pending) {
    log.clear();
    object->pendingAttributeIs(pending);
    object->handleNotification(nullptr);
    return log;
  }

  Log all;
  Log singular;
  Log log;
  Listener listener{log};
  const Ptr<Zel::Entity> entity = GetParam().make();
  const Handle object = told(Zel::generic(entity), listener);
};

TEST_P(WalkLists, AllChangedTellsEachAttributeOnceInAscendingId) {
  EXPECT_EQ(delivered(-2), all);
  EXPECT_EQ(object->pendingAttribute(), -2);
}

TEST_P(WalkLists, AllTellsTheSingularOnesWhereNoKeyWaits) {
  EXPECT_EQ(delivered(-1), singular);
  EXPECT_EQ(object->pendingAttribute(), -1);
}

TEST_P(WalkLists, OneByItselfIsToldIfItIsInTheListAndLeftToTheBaseIfNot) {
  for (Zel::AttributeId id = 1; id < 520; ++id) {
    const std::string name = std::to_string(id);
    const auto in = [&](const Log& some) {
      return std::find(some.begin(), some.end(), name) != some.end();
    };
    EXPECT_EQ(delivered(id), in(singular) ? Log{name} : Log()) << id;
    EXPECT_EQ(object->pendingAttribute(), in(all) ? 0 : id);
  }
}

TEST_P(WalkLists, ACollectionThatHasChangedAsAWholeIsTold) {
  const Zel::TypeTable& table = *object->type()->table();
  Log collections;
  for (const std::string& name : all) {
    if (std::find(singular.begin(), singular.end(), name) == singular.end()) {
      table.row(std::stoi(name))->collection->tell(GetParam().firstListed(*entity));
      collections.push_back(name);
    }
  }
  EXPECT_EQ(log, collections);
}

INSTANTIATE_TEST_SUITE_P(Types, WalkLists, testing::ValuesIn(lists),
                         [](const auto& type) { return type.param.name; });

} // namespace
