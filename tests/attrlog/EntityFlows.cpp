#include "Log.h"

#include <attrlog/MaintenanceAgentInfo.h>
#include <attrlog/MaintenanceGroup.h>
#include <attrlog/MaintenanceUnitProfile.h>
#include <attrlog/Mapping.h>

#include <gtest/gtest.h>

#include <sstream>

// Which attributes of each entity type flow, in which order, and which of them are collections.

namespace {

using namespace Maintenance;
using namespace Wiretap;

/// An adapter that writes down the transactions that are started and ended.
template <class T>
class Told : public T::ZelNboAttrLogSa {
  using Base = typename T::ZelNboAttrLogSa;

public:
  using Base::Base;
  void handleAttrTransaction(AttributeId attr, Adapter::AttrTransactionType type,
                             unsigned n) override {
    calls.push_back(std::to_string(attr) + ' ' + std::to_string(type) + ' ' + std::to_string(n));
  }

  Briefs calls;

protected:
  ~Told() override = default;
};

/// The transactions of one change of the sync mode.
template <class T>
Briefs transactionsOf(const Ptr<T>& entity, unsigned flags, Adapter::SyncMode mode) {
  const auto connection = Zel::makeObject<Connection>(Connection::End::first, "somebody");
  const auto told =
      Zel::makeObject<Told<T>>(Flags(Adapter::flagWeakNotifiee), entity, 1U, connection->out(),
                               static_cast<Zel::PtrInterface*>(nullptr));
  told->flagsIs(flags, true);
  told->syncModeIs(mode);
  connection->close();
  return told->calls;
}

/// A type and the attributes that flow, in order, those of collections with a star, and in
/// parentheses what a new subscriber is not owed since the entity is made with it.
struct Flow {
  const char* name;
  Ptr<Zel::Entity> (*make)();
  Briefs (*transactions)(unsigned flags, Adapter::SyncMode mode);
  const char* attributes;

  friend void PrintTo(const Flow& flow, std::ostream* out) { *out << flow.name; }
};

template <auto Make>
constexpr Flow flowOf(const char* name, const char* attributes) {
  return {
      name, [] { return Ptr<Zel::Entity>(Make()); },
      [](unsigned flags, Adapter::SyncMode mode) { return transactionsOf(Make(), flags, mode); },
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

constexpr Flow flows[] = {
    flowOf<profile>("ProfileConfig", ""),
    flowOf<profiles>("ProfileConfigDir", "258*"),
    flowOf<defaultProfile>("DefaultProfile", "259"),
    flowOf<unit>("UnitConfig", "259 260* 261"),
    flowOf<units>("UnitConfigDir", "258*"),
    flowOf<status>("Status", "259 260* 261 262 263 264 265 267 268* 269 270 271 272* 273 274"),
    flowOf<statuses>("StatusDir", "258*"),
    flowOf<input>("Input", "258 259*"),
    flowOf<merged>("MergedInput", "(259)"),
    flowOf<mergedDir>("MergedInputDir", "258*"),
    flowOf<member>("MemberToGroup", "258* 259* 260 261"),
    flowOf<groupToUnit>("GroupToUnit", "259*"),
    flowOf<groupToUnits>("GroupToUnitDir", "258*"),
    flowOf<group>("MaintenanceGroup", "259*"),
    flowOf<groups>("MaintenanceGroupDir", "258*"),
    flowOf<unitProfile>("UnitProfile", "387 390"),
    flowOf<unitProfiles>("UnitProfileDir", "258*"),
    flowOf<agent>("AgentInfo", "258 259 260 261* 262"),
};

class EntityFlows : public testing::TestWithParam<Flow> {
protected:
  EntityFlows() {
    std::istringstream words(GetParam().attributes);
    for (std::string word; words >> word;) {
      if (word.back() == '*') {
        word.pop_back();
        written.insert(written.end(), {"begin " + word, "end " + word});
        collections.push_back(word);
      } else if (word.front() != '(') {
        written.push_back(word);
      }
    }
  }

  /// The transactions of all collections.
  Briefs each(const char* how) const {
    Briefs all;
    for (const std::string& collection : collections) {
      all.push_back(collection + how);
    }
    return all;
  }

  Briefs written{"root"}; ///< what a new subscriber gets of an entity with empty collections
  Briefs collections;
};

TEST_P(EntityFlows, ANewSubscriberGetsTheRootAndThenEachAttributeInAscendingId) {
  const auto connection =
      Zel::makeObject<Connection>(Connection::End::first, "somebody", rings(1 << 18));
  const Ptr<Zel::Entity> entity = GetParam().make();
  connection->demuxer()->exportIs(entity);
  Briefs sent;
  for (bool more = true; more;) {
    more = connection->service();
    const Briefs some = briefs(records(*connection));
    more = more || !some.empty();
    sent.insert(sent.end(), some.begin(), some.end());
  }
  EXPECT_EQ(sent, written);
  connection->close();
}

TEST_P(EntityFlows, ASyncModeOfARecordStartsOrEndsEachCollection) {
  const auto transactions = GetParam().transactions;
  EXPECT_EQ(transactions(Adapter::flagReactorActive, Adapter::syncModeResync), each(" 0 0"));
  EXPECT_EQ(transactions(Adapter::flagReactorActive, Adapter::syncModeSynced), each(" 2 0"));
}

TEST_P(EntityFlows, ASyncModeOfNoRecordStartsNothing) {
  EXPECT_EQ(GetParam().transactions(0, Adapter::syncModeResync), Briefs());
}

INSTANTIATE_TEST_SUITE_P(Types, EntityFlows, testing::ValuesIn(flows),
                         [](const auto& type) { return type.param.name; });

/// What an adapter writes when a notification is replayed by its id.
template <class T>
Briefs replayed(Writer<T>& writer, AttributeId id, void* key = nullptr) {
  writer.adapter->doNotification(id, key);
  return writer.sent();
}

TEST(Replays, OfAConfiguredUnit) {
  Group::GroupKey peers(Group::groupTypeBgp, "peers");
  Writer<Unit::Config> writer(unit());
  EXPECT_EQ(replayed(writer, 259), Briefs{"259"});
  EXPECT_EQ(replayed(writer, 261), Briefs{"261"});
  EXPECT_EQ(replayed(writer, 260, &peers), Briefs{"-260"});
  writer.entity->newGroup(peers, false);
  EXPECT_EQ(replayed(writer, 260, &peers), Briefs{"260"});
  EXPECT_EQ(replayed(writer, -260, &peers), Briefs{"260"}) << "the collection tells which";
  for (const AttributeId other : {0, 154, 257, 258, 262, -258, -259, -261}) {
    EXPECT_EQ(replayed(writer, other), Briefs()) << other;
  }
}

TEST(Replays, OfInputs) {
  Zel::String8 name("u");
  Writer<Unit::Input> writer(input());
  EXPECT_EQ(replayed(writer, 258), Briefs{"258"});
  EXPECT_EQ(replayed(writer, -259, &name), Briefs{"-259"});
  writer.entity->newUnit(name, true);
  EXPECT_EQ(replayed(writer, 259, &name), Briefs{"259"});
  Writer<Unit::MergedInput> of(merged());
  EXPECT_EQ(replayed(of, 259), Briefs{"259"});
  for (const AttributeId other : {0, 258, 260, -258, -259}) {
    EXPECT_EQ(replayed(of, other), Briefs()) << other;
  }
}

TEST(Replays, OfAMemberOfGroups) {
  Group::GroupKey peers(Group::groupTypeBgp, "peers");
  Profile::ProfileType type = Profile::profileTypeUnit;
  Writer<MemberToGroup> writer(member());
  EXPECT_EQ(replayed(writer, 258, &peers), Briefs{"-258"});
  EXPECT_EQ(replayed(writer, 259, &type), Briefs{"-259"});
  writer.entity->newGroup(peers, true);
  writer.entity->newSelectedProfile(type, Profile::ProfileKey());
  EXPECT_EQ(replayed(writer, -258, &peers), Briefs{"258"});
  EXPECT_EQ(replayed(writer, -259, &type), Briefs{"259"});
  EXPECT_EQ(replayed(writer, 260), Briefs{"260"});
  EXPECT_EQ(replayed(writer, 261), Briefs{"261"});
  for (const AttributeId other : {0, 257, 262, -260, -261}) {
    EXPECT_EQ(replayed(writer, other), Briefs()) << other;
  }
}

TEST(Replays, OfAGroupOfUnits) {
  Zel::Name name("u");
  Writer<GroupToUnit> writer(groupToUnit());
  EXPECT_EQ(replayed(writer, 259, &name), Briefs{"-259"});
  writer.entity->newUnitName(name, true);
  EXPECT_EQ(replayed(writer, 259, &name), Briefs{"259"});
  EXPECT_EQ(replayed(writer, 258), Briefs());
}

TEST(Replays, OfDirectories) {
  Zel::Name name("u");
  Writer<Unit::ConfigDir> configs(units());
  EXPECT_EQ(replayed(configs, 258, &name), Briefs{"-258"});
  Writer<Unit::MergedInputDir> inputs(mergedDir());
  EXPECT_EQ(replayed(inputs, -258, &name), Briefs{"-258"});
  Group::GroupKey peers(Group::groupTypeBgp, "peers");
  Writer<GroupToUnitDir> mapped(groupToUnits());
  mapped.entity->newGroupToUnit(peers);
  EXPECT_EQ(replayed(mapped, 258, &peers), Briefs{"258"});
}

} // namespace
