#include "Listeners.h"

#include "support/OneAtATime.h"

#include <algorithm>
#include <stdexcept>

namespace {

using namespace Maintenance;
using namespace TestModel;
using Noted = OnBootUnitAndReason;

struct AgentInfos : testing::Test {
  const Ptr<AgentInfo> agent = agentInfoFactory("agent");
  Log log;
  const Ptr<AgentInfoListener> listener = listen<AgentInfoListener>(agent, log);
};

TEST_F(AgentInfos, ANewOneSaysNothing) {
  const auto made = agentInfoFactory("agent");
  EXPECT_EQ(made->references(), 1U);
  EXPECT_EQ(made->name(), "agent");
  EXPECT_FALSE(made->parent());
  EXPECT_EQ(made->versionCounter(), 0U);
  EXPECT_EQ(made->readCounter(), 0U);
  EXPECT_EQ(made->agentPid(), 0U);
  EXPECT_EQ(made->restartCount(), 0U);
  EXPECT_FALSE(made->onBoot());
  EXPECT_EQ(made->onBootMaintEnterMap().count(), 0U);
  EXPECT_FALSE(made->ready());
  EXPECT_EQ(made->readCounter(), 4U);
}

TEST_F(AgentInfos, EachSingleValueIsToldOncePerRealChange) {
  expectMoves(*agent, 1, 0, [&] { agent->agentPidIs(4711); });
  expectMoves(*agent, 0, 0, [&] { agent->agentPidIs(4711); });
  expectMoves(*agent, 1, 0, [&] { agent->restartCountIs(3); });
  expectMoves(*agent, 0, 0, [&] { agent->restartCountIs(3); });
  expectMoves(*agent, 1, 0, [&] { agent->onBootIs(true); });
  expectMoves(*agent, 0, 0, [&] { agent->onBootIs(true); });
  expectMoves(*agent, 1, 0, [&] { agent->readyIs(true); });
  expectMoves(*agent, 0, 0, [&] { agent->readyIs(true); });
  EXPECT_EQ(log, Log({"onAgentPid", "onRestartCount", "onOnBoot", "onReady"}));
  EXPECT_EQ(agent->agentPid(), 4711U);
  EXPECT_EQ(agent->restartCount(), 3U);
  EXPECT_TRUE(agent->onBoot());
  EXPECT_TRUE(agent->ready());
}

TEST_F(AgentInfos, ARestartMovesTheReadCounterAloneAndTells) {
  expectMoves(*agent, 0, 1, [&] { EXPECT_EQ(agent->restartCountInc(2), 2U); });
  expectMoves(*agent, 0, 1, [&] { EXPECT_EQ(agent->restartCountInc(0), 2U); });
  EXPECT_EQ(log, Log({"onRestartCount"}));
  EXPECT_EQ(agent->restartCountInc(4294967295), 1U);
  EXPECT_EQ(agent->restartCount(), 1U);
  EXPECT_EQ(log, Log(2, "onRestartCount"));
}

TEST_F(AgentInfos, AnEqualValueTwiceIsToldOnce) {
  expectMoves(*agent, 1, 0, [&] { agent->onBootMaintEnterIs(Noted("System", Unit::srcCli)); });
  expectMoves(*agent, 0, 0, [&] { agent->onBootMaintEnterIs(Noted("System", Unit::srcCli)); });
  EXPECT_EQ(log, Log({"onOnBootMaintEnter System"}));
}

TEST_F(AgentInfos, ANewReasonOfTheSameUnitTakesThePlaceOfTheOld) {
  agent->onBootMaintEnterIs(Noted("System", Unit::srcCli));
  const unsigned mapVersion = agent->onBootMaintEnterMap().mapVersion();
  expectMoves(*agent, 1, 0, [&] { agent->onBootMaintEnterIs(Noted("System", Unit::srcOnBoot)); });
  EXPECT_EQ(agent->onBootMaintEnterMap().count(), 1U);
  EXPECT_EQ(agent->onBootMaintEnterMap().mapVersion(), mapVersion);
  EXPECT_EQ(agent->onBootMaintEnter("System"), Noted("System", Unit::srcOnBoot));
  EXPECT_EQ(log, Log(2, "onOnBootMaintEnter System"));
}

TEST_F(AgentInfos, AnAbsentUnitReadsAsTheDefaultAndIsDeletedWithoutAWord) {
  expectMoves(*agent, 0, 1, [&] { EXPECT_EQ(agent->onBootMaintEnter("System"), Noted()); });
  expectMoves(*agent, 0, 0, [&] {
    const Noted gone = agent->onBootMaintEnterDel("System");
    EXPECT_EQ(gone.unitName(), "");
    EXPECT_EQ(gone.reason(), Unit::srcUnknown);
  });
  EXPECT_EQ(log, Log());
}

TEST_F(AgentInfos, ADeletionYieldsTheWholeValue) {
  agent->onBootMaintEnterIs(Noted("System", Unit::srcOnBootCli));
  log.clear();
  expectMoves(*agent, 1, 0, [&] {
    EXPECT_EQ(agent->onBootMaintEnterDel("System"), Noted("System", Unit::srcOnBootCli));
  });
  EXPECT_EQ(log, Log({"onOnBootMaintEnter System"}));
  EXPECT_EQ(agent->onBootMaintEnterMap().count(), 0U);
}

TEST_F(AgentInfos, AReadValueIsACopy) {
  agent->onBootMaintEnterIs(Noted("System", Unit::srcCli));
  const Noted before = agent->onBootMaintEnter("System");
  agent->onBootMaintEnterIs(Noted("System", Unit::srcOnBoot));
  EXPECT_EQ(before, Noted("System", Unit::srcCli));
}

TEST_F(AgentInfos, ANewValueIsFoundByItsOwnNameAndIsNeitherCountedNorTold) {
  expectMoves(*agent, 0, 0, [&] {
    const auto entry = agent->newOnBootMaintEnter(Noted("System", Unit::srcCli));
    EXPECT_EQ(entry->zelKey(), "System");
    EXPECT_EQ(entry->zelValue(), Noted("System", Unit::srcCli));
    EXPECT_THROW(agent->newOnBootMaintEnter(Noted("System", Unit::srcOnBoot)),
                 Zel::NameInUseException);
  });
  EXPECT_EQ(agent->onBootMaintEnter("System").reason(), Unit::srcCli);
  EXPECT_EQ(log, Log());
}

TEST_F(AgentInfos, AWalkRunsByTheHashOfTheNamesWhateverTheReasons) {
  std::vector<std::pair<unsigned, std::string>> expected;
  for (int number = 0; number < 40; ++number) {
    const Zel::String8 name(joined("unit", std::to_string(number)));
    agent->newOnBootMaintEnter(Noted(name, static_cast<Unit::InputSrc>(number % 4)));
    expected.emplace_back(Support::reversed(name.hash()), textOf(name));
  }
  std::sort(expected.begin(), expected.end());
  std::size_t place = 0;
  using At = AgentInfo::OnBootMaintEnterMap::IteratorConst;
  for (At at(agent->onBootMaintEnterMap()); at; at.advance()) {
    ASSERT_LT(place, expected.size());
    EXPECT_EQ(textOf(at->zelKey()), expected[place++].second);
  }
  EXPECT_EQ(place, expected.size());
}

TEST_F(AgentInfos, AllValuesGoInTheOrderOfIteration) {
  for (const char* const unit : {"System", "Linecard1", "Linecard2"}) {
    agent->newOnBootMaintEnter(Noted(unit, Unit::srcCli));
  }
  Log expected;
  using At = AgentInfo::OnBootMaintEnterMap::IteratorConst;
  for (At at(agent->onBootMaintEnterMap()); at; at.advance()) {
    expected.push_back(joined("onOnBootMaintEnter ", textOf(at->zelKey())));
  }
  ASSERT_EQ(expected.size(), 3U);
  expectMoves(*agent, 3, 0, [&] { agent->onBootMaintEnterDelAll(); });
  EXPECT_EQ(log, expected);
}

TEST_F(AgentInfos, TheValueUnderAnIteratorIsDeletedOnce) {
  agent->newOnBootMaintEnter(Noted("System", Unit::srcCli));
  AgentInfo::OnBootMaintEnterMap::Iterator at(agent->onBootMaintEnterMap());
  EXPECT_EQ(agent->onBootMaintEnterDel(at), Noted("System", Unit::srcCli));
  EXPECT_EQ(agent->onBootMaintEnterDel(at), Noted());
  EXPECT_EQ(log, Log({"onOnBootMaintEnter System"}));
}

TEST_F(AgentInfos, ANotificationAloneChangesNothing) {
  expectMoves(*agent, 0, 0, [&] { agent->onBootMaintEnterNotify("System"); });
  EXPECT_EQ(log, Log({"onOnBootMaintEnter System"}));
  EXPECT_EQ(agent->onBootMaintEnterMap().count(), 0U);
}

TEST_F(AgentInfos, AValueThatANotifieeDeletesIsToldToTheNextAllTheSame) {
  const auto last = listen<AgentInfoListener>(agent, log, "last ");
  listener->onCall = [&] {
    listener->onCall = nullptr;
    agent->onBootMaintEnterDel("System");
  };
  agent->onBootMaintEnterIs(Noted("System", Unit::srcCli));
  EXPECT_EQ(log, Log({"onOnBootMaintEnter System", "onOnBootMaintEnter System",
                      "last onOnBootMaintEnter System", "last onOnBootMaintEnter System"}));
  EXPECT_EQ(agent->onBootMaintEnterMap().count(), 0U);
}

TEST_F(AgentInfos, ANotifieeThatThrowsIsToldTheId) {
  listener->onCall = [] { throw std::runtime_error("refused"); };
  agent->agentPidIs(1);
  agent->restartCountInc(1);
  agent->onBootIs(true);
  agent->onBootMaintEnterIs(Noted("System", Unit::srcCli));
  agent->readyIs(true);
  EXPECT_EQ(log, Log({"onAgentPid", "exception 258", "onRestartCount", "exception 259", "onOnBoot",
                      "exception 260", "onOnBootMaintEnter System", "exception 261", "onReady",
                      "exception 262"}));
}

TEST_F(AgentInfos, ItNamesItsAttributesAndAsksItsBaseForTheRest) {
  EXPECT_EQ(agent->attributeString(258), "agentPid");
  EXPECT_EQ(agent->attributeString(259), "restartCount");
  EXPECT_EQ(agent->attributeString(260), "onBoot");
  EXPECT_EQ(agent->attributeString(261), "onBootMaintEnter");
  EXPECT_EQ(agent->attributeString(262), "ready");
  EXPECT_EQ(agent->attributeString(0), "fwkKey");
  for (const int id : {-261, -1, 2, 257, 263, 386}) {
    EXPECT_EQ(agent->attributeString(id), "unknown") << id;
  }
}

TEST(AgentInfoEnds, AreToldToAWeakNotifiee) {
  Log log;
  auto agent = agentInfoFactory("agent");
  const auto listener = listen<AgentInfoListener>(agent, log);
  listener->isWeakReferenceIs(true);
  agent = nullptr;
  EXPECT_EQ(log, Log({"zero"}));
  EXPECT_FALSE(listener->notifier());
}

TEST(OnBootUnitsAndReasons, ADefaultOneIsEmptyAndUnknown) {
  EXPECT_EQ(Noted().unitName(), "");
  EXPECT_EQ(Noted().reason(), Unit::srcUnknown);
}

TEST(OnBootUnitsAndReasons, OfEqualNamesAreInTheOrderOfTheReasons) {
  EXPECT_LT(Noted("System", Unit::srcOnBoot), Noted("System", Unit::srcCli));
  EXPECT_FALSE(Noted("System", Unit::srcCli) < Noted("System", Unit::srcOnBoot));
}

TEST(OnBootUnitsAndReasons, AreInOneOrderByNameFirst) {
  const auto below = static_cast<Unit::InputSrc>(-1);
  const Noted ascending[] = {{"", Unit::srcCli},          {"Linecard", below},
                             {"Linecard", Unit::srcCli},  {"Linecard1", Unit::srcUnknown},
                             {"System", Unit::srcOnBoot}, {"System", Unit::srcCli}};
  for (const Noted& a : ascending) {
    for (const Noted& b : ascending) {
      SCOPED_TRACE(testing::Message()
                   << a.unitName() << a.reason() << ' ' << b.unitName() << b.reason());
      EXPECT_EQ(a == b, &a == &b);
      EXPECT_EQ(a != b, &a != &b);
      EXPECT_EQ(a < b, &a < &b);
      EXPECT_EQ(a <= b, &a <= &b);
      EXPECT_EQ(a > b, &a > &b);
      EXPECT_EQ(a >= b, &a >= &b);
    }
  }
}

} // namespace
