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
  const char* attributes;

  friend void PrintTo(const WalkList& list, std::ostream* out) { *out << list.name; }
};

const WalkList lists[] = {
    {"ProfileConfig",
     [] { return Ptr<Zel::Entity>(Zel::makeObject<Profile::Config>(Profile::ProfileKey())); }, ""},
    {"ProfileConfigDir", [] { return Ptr<Zel::Entity>(Profile::configDirFactory("e")); }, "258*"},
    {"DefaultProfile", [] { return Ptr<Zel::Entity>(Profile::defaultProfileFactory("e")); }, "259"},
    {"UnitConfig", [] { return Ptr<Zel::Entity>(Unit::configFactory("e")); }, "259 260* 261"},
    {"UnitConfigDir", [] { return Ptr<Zel::Entity>(Unit::configDirFactory("e")); }, "258*"},
    {"Status", [] { return Ptr<Zel::Entity>(Unit::statusFactory("e")); },
     "259 260* 261 262 263 264 265 267 268* 269 270 271 272* 273 274"},
    {"StatusDir", [] { return Ptr<Zel::Entity>(Unit::statusDirFactory("e")); }, "258*"},
    {"Input", [] { return Ptr<Zel::Entity>(Unit::inputFactory("e")); }, "258 259*"},
    {"MergedInput", [] { return Ptr<Zel::Entity>(Unit::mergedInputFactory("e", Unit::srcCli)); },
     "259"},
    {"MergedInputDir", [] { return Ptr<Zel::Entity>(Unit::mergedInputDirFactory("e")); }, "258*"},
    {"MemberToGroup", [] { return Ptr<Zel::Entity>(Zel::makeObject<MemberToGroup>("e")); },
     "258* 259* 260 261"},
    {"GroupToUnit",
     [] { return Ptr<Zel::Entity>(Zel::makeObject<GroupToUnit>(Group::GroupKey())); }, "259*"},
    {"GroupToUnitDir", [] { return Ptr<Zel::Entity>(groupToUnitDirFactory("e")); }, "258*"},
    {"MaintenanceGroup",
     [] { return Ptr<Zel::Entity>(MaintenanceGroup::configFactory("e", Group::GroupKey())); },
     "259*"},
    {"MaintenanceGroupDir",
     [] { return Ptr<Zel::Entity>(MaintenanceGroup::configDirFactory("e")); }, "258*"},
    {"UnitProfile", [] { return Ptr<Zel::Entity>(MaintenanceUnitProfile::configFactory("e")); },
     "387 390"},
    {"UnitProfileDir",
     [] { return Ptr<Zel::Entity>(MaintenanceUnitProfile::configDirFactory("e")); }, "258*"},
    {"AgentInfo", [] { return Ptr<Zel::Entity>(agentInfoFactory("e")); }, "258 259 260 261* 262"},
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
  const Handle object = told(Zel::generic(GetParam().make()), listener);
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

INSTANTIATE_TEST_SUITE_P(Types, WalkLists, testing::ValuesIn(lists),
                         [](const auto& type) { return type.param.name; });

} // namespace
