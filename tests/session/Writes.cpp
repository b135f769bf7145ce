#include "Alone.h"

#include <Zel/Exception>
#include <foreign/model/Carrier.h>
#include <model/MaintenanceAgentInfo.h>

#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>

// Writes that depend on what stands there, which the end with the original decides.

namespace {

using namespace Maintenance::Unit;
using Maintenance::AgentInfo;
using Zel::Ptr;
using Zel::Session;
using Zel::String8;
using Result = Session::WriteResult;
using Results = std::vector<Result>;
using Words = std::vector<std::string>;

class Deciding : public testing::Test, public TwoUnits {
protected:
  Deciding() { unit->stateIs(active); }
  /// Whoever still waits is answered while there is somewhere to put it.
  ~Deciding() override { cut(); }

  Session::WriteAnswer answer() {
    return [this](Result result) { results.push_back(result); };
  }
  void stateIf(State old, State value) {
    client->writeIf({mirror("a"), Status::Attr::state, {}, old, value}, answer());
  }
  /// What has been answered, forgotten.
  Results taken() { return std::exchange(results, {}); }

  const Ptr<Status> unit = units->statusIs("a");
  Results results;
};

TEST_F(Deciding, AValueIsWrittenWhereTheOldOneStands) {
  share(Zel::accessReadWrite);
  settle();
  stateIf(active, maintenanceModeEnter);
  EXPECT_EQ(mirror("a")->state(), active) << "before it has been decided";
  settle();
  EXPECT_EQ(taken(), Results{Session::writeDone});
  EXPECT_EQ(unit->state(), maintenanceModeEnter);
  EXPECT_EQ(mirror("a")->state(), maintenanceModeEnter);
}

TEST_F(Deciding, NothingIsWrittenWhereSomethingElseStands) {
  share(Zel::accessReadWrite);
  settle();
  const unsigned version = unit->versionCounter();
  stateIf(underMaintenance, maintenanceModeExit);
  settle();
  EXPECT_EQ(taken(), Results{Session::writeDiffers});
  EXPECT_EQ(unit->state(), active);
  EXPECT_EQ(unit->versionCounter(), version);
}

TEST_F(Deciding, OfTwoThatWantTheSameOneIsTooLate) {
  share(Zel::accessReadWrite);
  settle();
  Two second; // another peer of the same exports
  second.server = Zel::makeObject<Session>(Zel::Connection::End::second, Zel::SessionOptions(),
                                           exports, nullptr);
  second.mounts->mountIs("units", Zel::accessReadWrite);
  second.settle();
  const auto theirs = Zel::ptrCast<StatusDir>(second.mounts->mount("units")->entity());
  stateIf(active, maintenanceModeEnter);
  second.client->writeIf({theirs->status("a"), Status::Attr::state, {}, active, failedEnter},
                         answer());
  second.settle();
  settle();
  second.settle();
  EXPECT_EQ(taken(), (Results{Session::writeDone, Session::writeDiffers}));
  EXPECT_EQ(unit->state(), failedEnter);
  EXPECT_EQ(mirror("a")->state(), failedEnter);
  EXPECT_EQ(theirs->status("a")->state(), failedEnter);
  second.cut();
}

TEST_F(Deciding, WhatWasChangedBeforeIsThere) {
  connectTightly();
  fillUnits(40, 1);
  share(Zel::accessReadWrite);
  settle();
  const String8 text(std::string(9000, 'x'));
  for (unsigned i = 0; i < 40; ++i) { // more than the ring holds
    mirror(std::to_string(i).c_str())->profileNameIs(text);
  }
  mirror("a")->stateIs(underMaintenance);
  stateIf(underMaintenance, maintenanceModeExit);
  stateIf(maintenanceModeExit, failedExit);
  settle();
  EXPECT_EQ(taken(), (Results{Session::writeDone, Session::writeDone}));
  EXPECT_EQ(unit->state(), failedExit);
  EXPECT_TRUE(isEqual());
  stateIf(failedExit, active);
  serve(*client);
  mirror("a")->genIdIs(7);
  unit->stateIs(init); // before that has come
  settle();
  EXPECT_EQ(taken(), Results{Session::writeDiffers});
  EXPECT_EQ(unit->genId(), 7U);
  EXPECT_TRUE(isEqual());
}

TEST_F(Deciding, ANewEntryIsOfTheFirstOfTwo) {
  share(Zel::accessReadWrite);
  settle();
  Two second;
  second.server = Zel::makeObject<Session>(Zel::Connection::End::second, Zel::SessionOptions(),
                                           exports, nullptr);
  second.mounts->mountIs("units", Zel::accessReadWrite);
  second.settle();
  const auto theirs = Zel::ptrCast<StatusDir>(second.mounts->mount("units")->entity());
  client->writeIf({mirror("a"), Status::Attr::history, 1.5, {}, String8("first")}, answer());
  second.client->writeIf({theirs->status("a"), Status::Attr::history, 1.5, {}, String8("second")},
                         answer());
  settle();
  second.settle();
  settle();
  EXPECT_EQ(taken(), (Results{Session::writeDone, Session::writeDiffers}));
  EXPECT_EQ(unit->history(1.5), "first");
  EXPECT_EQ(mirror("a")->history(1.5), "first");
  EXPECT_EQ(theirs->status("a")->history(1.5), "first");
  second.cut();
}

TEST_F(Deciding, AnEntryIsWrittenIfItIsThere) {
  const Group::GroupKey peers(Group::groupTypeBgp, "peers");
  unit->historyIs(1.5, "begun");
  unit->groupIs(peers, true);
  share(Zel::accessReadWrite);
  settle();
  const auto history = [&](double key, const char* old, const char* value) {
    client->writeIf({mirror("a"), Status::Attr::history, key, String8(old), String8(value)},
                    answer());
  };
  history(1.5, "begun", "over");
  history(1.5, "begun", "again");
  history(2.5, "", "other");
  client->writeIf({mirror("a"), Status::Attr::group, peers, true, false}, answer());
  settle();
  EXPECT_EQ(taken(), (Results{Session::writeDone, Session::writeDiffers, Session::writeUnknown,
                              Session::writeDone}));
  EXPECT_EQ(unit->history(1.5), "over");
  EXPECT_EQ(unit->historyMap().count(), 1U);
  EXPECT_FALSE(unit->group(peers));
}

TEST_F(Deciding, AValueThatBringsItsKeyStaysUnderIt) {
  const Ptr<AgentInfo> agent = Maintenance::agentInfoFactory("agent");
  agent->onBootMaintEnterIs({"a", srcCli});
  exports->entityIs(agent, Zel::accessReadWrite);
  mounts->mountIs("agent", Zel::accessReadWrite);
  settle();
  using Value = Maintenance::OnBootUnitAndReason;
  const auto reasonIf = [&](const Value& value) {
    client->writeIf({mounts->mount("agent")->entity(), AgentInfo::Attr::onBootMaintEnter,
                     String8("a"), Value("a", srcCli), value},
                    answer());
  };
  reasonIf({"b", srcOnBoot});
  reasonIf({"a", srcOnBoot});
  settle();
  EXPECT_EQ(taken(), (Results{Session::writeUnknown, Session::writeDone}));
  EXPECT_EQ(agent->onBootMaintEnter("a").reason(), srcOnBoot);
  EXPECT_EQ(agent->onBootMaintEnterMap().count(), 1U);
}

TEST_F(Deciding, APeerThatMayOnlyReadIsRefused) {
  share();
  settle();
  stateIf(active, init);
  settle();
  EXPECT_EQ(taken(), Results{Session::writeRefused});
  EXPECT_EQ(unit->state(), active);
  EXPECT_EQ(server->connection()->demuxer()->counts().refused, 1U);
  EXPECT_EQ(mount()->state(), Zel::Mount::live) << "the mirror has nothing to repair";
}

/// Lets nobody decide about states.
class NoStates : public Zel::Exports {
public:
  bool mayWriteIf(const Session& session, const Zel::Entity& entity,
                  Zel::AttributeId attribute) const override {
    asked.emplace_back(std::string(session.peer().name.view()) + " " +
                       std::string(entity.name().view()));
    return attribute != Status::Attr::state;
  }
  mutable Words asked;
};

TEST_F(Deciding, TheProgramSaysWhoMay) {
  const auto closed = Zel::makeObject<NoStates>();
  closed->entityIs(units, Zel::accessReadWrite);
  server = Zel::makeObject<Session>(Zel::Connection::End::second, Zel::SessionOptions(),
                                    Ptr<Zel::Exports>(closed), nullptr);
  mounts->mountIs("units", Zel::accessReadWrite);
  settle();
  stateIf(active, init);
  client->writeIf({mirror("a"), Status::Attr::genId, {}, 0U, 7U}, answer());
  settle();
  EXPECT_EQ(taken(), (Results{Session::writeRefused, Session::writeDone}));
  EXPECT_EQ(closed->asked, (Words{"client a", "client a"}));
  EXPECT_EQ(unit->genId(), 7U);
}

TEST_F(Deciding, WhoHasNotTheOriginalRefuses) {
  share(Zel::accessReadWrite);
  settle();
  Two last;
  last.exports->entityIs(mirror(), Zel::accessReadWrite);
  last.mounts->mountIs("units", Zel::accessReadWrite);
  last.settle();
  const auto theirs = Zel::ptrCast<StatusDir>(last.mounts->mount("units")->entity());
  last.client->writeIf({theirs->status("a"), Status::Attr::state, {}, active, init}, answer());
  last.settle();
  EXPECT_EQ(taken(), Results{Session::writeRefused});
  EXPECT_EQ(mirror("a")->state(), active);
  server->writeIf({unit, Status::Attr::state, {}, active, init}, answer()); // of its own
  settle();
  EXPECT_EQ(taken(), Results{Session::writeUnknown});
  last.cut();
}

/// Cannot make up its mind.
class Moody : public Foreign::Carrier {
public:
  explicit Moody(Zel::Name name) : Carrier(std::move(name)) {}
  void urgencyIs(Foreign::Urgency urgency) override {
    if (urgency == Foreign::express) {
      throw std::runtime_error("not today");
    }
    throw Zel::ReadOnlyException("not this one");
  }

protected:
  ~Moody() override = default;
};

TEST_F(Deciding, AMutatorThatThrowsRefusesAndTheSessionGoesOn) {
  const auto log = std::make_shared<Words>(); // the session writes to it when it ends, too
  Zel::SessionOptions options;
  options.log = [log](Zel::LogLevel /*level*/, const String8& line) {
    log->emplace_back(line.view());
  };
  connect({}, options);
  exports->entityIs(Zel::makeObject<Moody>("moody"), Zel::accessReadWrite);
  mounts->mountIs("moody", Zel::accessReadWrite);
  settle();
  log->clear();
  const auto urgencyIf = [&](Foreign::Urgency urgency) {
    client->writeIf({mounts->mount("moody")->entity(),
                     Foreign::Carrier::Attr::urgency,
                     {},
                     Foreign::urgencyUnknown,
                     urgency},
                    answer());
  };
  urgencyIf(Foreign::express);
  urgencyIf(Foreign::routine);
  settle();
  EXPECT_EQ(taken(), (Results{Session::writeRefused, Session::writeRefused}));
  EXPECT_EQ(*log, Words{"a write was not taken: not today"});
  EXPECT_TRUE(server->isUp());
}

TEST_F(Deciding, OfWhatHasGoneNothingIsKnown) {
  share(Zel::accessReadWrite);
  settle();
  const Ptr<Status> theirs = mirror("a");
  stateIf(active, init);
  units->statusDel("a"); // which the client hears of too late
  serve(*client);
  move(*client, *server);
  settle();
  EXPECT_EQ(taken(), Results{Session::writeUnknown});
  client->writeIf({theirs, Status::Attr::state, {}, active, init}, answer());
  settle();
  EXPECT_EQ(taken(), Results{Session::writeUnknown});
}

TEST_F(Deciding, WhoWaitsWhenTheSessionEndsIsToldThatNobodyKnows) {
  share(Zel::accessReadWrite);
  settle();
  stateIf(active, init);
  serve(*client);
  stateIf(active, init);
  EXPECT_EQ(taken(), Results());
  cut();
  EXPECT_EQ(taken(), (Results{Session::writeLost, Session::writeLost}));
  stateIf(active, init);
  EXPECT_EQ(taken(), Results{Session::writeLost});
}

TEST_F(Deciding, WhatIsNoWriteIsRefusedAtOnce) {
  share(Zel::accessReadWrite);
  settle();
  const Ptr<Status> a = mirror("a");
  const auto isRefused = [&](const Session::WriteIf& what) {
    EXPECT_THROW(client->writeIf(what, answer()), Zel::RangeException);
    EXPECT_THROW(Session::decide(what), Zel::RangeException);
  };
  isRefused({nullptr, Status::Attr::state, {}, active, init});
  isRefused({a, 9999, {}, active, init});
  isRefused({a, Status::Attr::unitName, {}, String8("a"), String8("b")});
  isRefused({mirror(), StatusDir::Attr::status, Zel::Name("a"), {}, {}});
  isRefused({a, Status::Attr::state, {}, 1U, 2U});
  isRefused({a, Status::Attr::state, {}, active, {}});
  isRefused({a, Status::Attr::state, {}, {}, init});
  isRefused({a, Status::Attr::history, {}, {}, String8("b")});
  isRefused({a, Status::Attr::history, 1.5, {}, 2U});
  isRefused({a, Status::Attr::history, 1.5, String8("a"), {}});
  isRefused({a, Status::Attr::state, 1.5, active, init});
  isRefused({a, Status::Attr::history, {}, String8("a"), String8("b")});
  const String8 most(std::string(Zel::maxWholeString, 'x'));
  const String8 tooMuch(std::string(Zel::maxWholeString + 1, 'x'));
  EXPECT_THROW(client->writeIf({a, Status::Attr::profileName, {}, String8(), tooMuch}, answer()),
               Zel::RangeException);
  EXPECT_TRUE(results.empty());
  client->writeIf({a, Status::Attr::profileName, {}, most, most}, answer());
  settle();
  EXPECT_EQ(taken(), Results{Session::writeDiffers});
}

TEST_F(Deciding, AnAnswerThatFailsIsItsOwnAffair) {
  share(Zel::accessReadWrite);
  settle();
  client->writeIf({mirror("a"), Status::Attr::state, {}, active, init},
                  [](Result) { throw std::runtime_error("no"); });
  client->writeIf({mirror("a"), Status::Attr::state, {}, active, init}, {});
  stateIf(init, active);
  settle();
  EXPECT_EQ(taken(), Results{Session::writeDone});
  EXPECT_TRUE(client->isUp());
}

/// A peer that writes what it likes.
class HostileWriter : public Alone, public testing::Test {
protected:
  HostileWriter() {
    units->statusIs("a")->stateIs(active);
    exports->entityIs(units, Zel::accessReadWrite);
    hear(hello() + ask("units", 2));
    said();
  }

  /// A write to an attribute of an entity, whose values are these bytes.
  static std::string write(Zel::EntityId id, int attribute, const std::string& values,
                           unsigned kind = 13) {
    return record(kind, [&](Out& out) {
      out.put32(7);
      out.putEntityId(id);
      out.put32(static_cast<std::uint32_t>(attribute));
      out.putBytes(values.data(), values.size());
    });
  }
  static std::string numbers(unsigned one, unsigned other) {
    std::string bytes;
    for (const unsigned number : {one, other}) {
      bytes += {0, 0, 0, static_cast<char>(number)};
    }
    return bytes;
  }

  static constexpr Zel::EntityId unitId{4, 0x80000000};
  const Ptr<StatusDir> units = Maintenance::Unit::statusDirFactory("units");
};

TEST_F(HostileWriter, IsAnsweredAndCountedWhateverItSends) {
  const Words unknown{"written 7 result 3"};
  const auto heard = [&](const std::string& bytes) {
    hear(bytes);
    return said();
  };
  EXPECT_EQ(heard(write({99, 0}, Status::Attr::state, numbers(active, init))), unknown);
  EXPECT_EQ(heard(write(Zel::orphanEntityId, Status::Attr::state, numbers(active, init))), unknown);
  EXPECT_EQ(heard(write(unitId, 9999, numbers(active, init))), unknown);
  EXPECT_EQ(heard(write(unitId, -Status::Attr::state, numbers(active, init))), unknown);
  EXPECT_EQ(heard(write(unitId, Zel::NboAttrLog::attrIdSyncMode, numbers(1, 2))), unknown);
  EXPECT_EQ(heard(write({2, 0x80000000}, StatusDir::Attr::status, numbers(0, 0))), unknown);
  EXPECT_EQ(counts().badValues, 0U);
  EXPECT_EQ(heard(write(unitId, Status::Attr::state, numbers(active, 99))), unknown);
  EXPECT_EQ(heard(write(unitId, Status::Attr::state, numbers(active, init).substr(0, 7))), unknown);
  EXPECT_EQ(heard(write(unitId, Status::Attr::state, "")), unknown);
  EXPECT_EQ(counts().badValues, 3U);
  EXPECT_EQ(heard(record(13, [](Out& out) { out.put32(7); })), unknown);
  EXPECT_EQ(heard(record(13, [](Out& out) { out.put8(7); })), Words());
  EXPECT_EQ(counts().badValues, 5U);
  EXPECT_EQ(units->status("a")->state(), active);
  EXPECT_EQ(heard(write(unitId, Status::Attr::state, numbers(active, init) + "more")).back(),
            "written 7 result 0");
  EXPECT_EQ(units->status("a")->state(), init);
  EXPECT_TRUE(session->isUp());
}

TEST_F(HostileWriter, MakesNoEntryOfWhatHasNone) {
  const std::string interface = numbers(1, 2); // its two words
  const auto heard = [&](int attribute, const std::string& values) {
    hear(write(unitId, attribute, values, 15));
    return said();
  };
  const Words unknown{"written 7 result 3"};
  EXPECT_EQ(heard(Status::Attr::state, numbers(active, init)), unknown);
  EXPECT_EQ(heard(Status::Attr::intfsViolatingTrafficThreshold, interface), unknown);
  EXPECT_EQ(units->status("a")->state(), active);
  EXPECT_EQ(counts().badValues, 1U) << "the one that is cut short";
  EXPECT_EQ(heard(Status::Attr::intfsViolatingTrafficThreshold, interface + '\1').back(),
            "written 7 result 0");
  EXPECT_EQ(heard(Status::Attr::intfsViolatingTrafficThreshold, interface + '\0'),
            Words{"written 7 result 1"});
  EXPECT_EQ(units->status("a")->intfsViolatingTrafficThresholdMap().count(), 1U);
}

TEST(NewEntries, AreRefusedAboveTheLimitOfKeys) {
  const auto units = Maintenance::Unit::statusDirFactory("units");
  const Ptr<Status> unit = units->statusIs("a");
  Two both;
  Zel::SessionOptions options;
  options.limits.maxKeys = 2;
  both.connect({}, options);
  both.exports->entityIs(units, Zel::accessReadWrite);
  const auto mount = both.mounts->mountIs("units", Zel::accessReadWrite);
  both.settle();
  Results results;
  for (const double key : {1.5, 2.5, 3.5}) {
    both.client->writeIf({Zel::ptrCast<StatusDir>(mount->entity())->status("a"),
                          Status::Attr::history,
                          key,
                          {},
                          String8("x")},
                         [&](Result result) { results.push_back(result); });
  }
  both.settle();
  EXPECT_EQ(results, (Results{Session::writeDone, Session::writeDone, Session::writeRefused}));
  EXPECT_EQ(unit->historyMap().count(), 2U);
  EXPECT_TRUE(both.client->isUp());
  both.cut();
}

TEST_F(HostileWriter, ThatReadsNothingIsLeft) {
  const std::string one = write(unitId, Status::Attr::state, numbers(failedExit, init));
  std::size_t sent = 0;
  while (session->isUp() && sent < 100000) {
    hear(one);
    ++sent;
  }
  EXPECT_EQ(failure(), "the peer asks for more than it reads");
  EXPECT_LT(sent, 50000U);
}

TEST(WriteAnswer, ThatNobodyWaitsForIsPassedOver) {
  Alone client(Alone::End::first);
  client.hear(Alone::hello(accepting));
  const auto written = [](unsigned result) {
    return Alone::record(14, [&](Alone::Out& out) {
      out.put32(1);
      out.put8(static_cast<std::uint8_t>(result));
    });
  };
  client.hear(written(0));
  EXPECT_EQ(client.counts().badValues, 1U);
  const Ptr<Zel::Mount> mount = client.mounts->mountIs("units", Zel::accessReadWrite);
  constexpr Zel::EntityId id{2, 0x80000000};
  client.hear(Alone::offer("units", "Maintenance::Unit::Input", 2) + Alone::grant("units", 2) +
              Alone::root("units", id, "Maintenance::Unit::Input") + Alone::syncMode(id, 2) +
              Alone::syncMode(id, 1));
  Results results;
  client.session->writeIf({mount->entity(), Input::Attr::priority, {}, srcUnknown, srcCli},
                          [&](Result result) { results.push_back(result); });
  client.serve();
  EXPECT_EQ(client.said().back(), "write? 1");
  client.hear(written(4) + written(200));
  EXPECT_EQ(results, Results());
  EXPECT_EQ(client.counts().badValues, 3U);
  client.hear(written(2) + written(0));
  EXPECT_EQ(results, Results{Session::writeRefused});
  EXPECT_EQ(client.counts().badValues, 4U);
}

} // namespace
