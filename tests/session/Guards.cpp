#include "Says.h"

#include "attrlog/Ear.h"

#include <Zel/Exception>

#include <gtest/gtest.h>

// A mirror that is not live refuses writes, at every moment from its first record on.

namespace {

using namespace Maintenance::Unit;
using Wiretap::listen;
using Zel::Mount;
using Zel::Name;
using Zel::Ptr;

class Guarded : public testing::Test, public TwoUnits {
protected:
  /// Those who hear of changes, all of them adapters.
  template <class T>
  static unsigned adapters(const Ptr<T>& entity) {
    return entity->zelNotifieeList().count();
  }
};

TEST_F(Guarded, AMirrorIsReadOnlyFromItsFirstRecordOn) {
  units->statusIs("a");
  const Ptr<Mount> mount = share(Zel::accessReadWrite);
  unsigned records = 0;
  settleSlowly([&] {
    if (mount->entity() && mount->state() != Mount::live && ++records < 24) {
      EXPECT_EQ(mount->state(), Mount::resyncing);
      EXPECT_THROW(mirror()->statusIs(Name(std::to_string(records))), Zel::ReadOnlyException);
    }
  });
  EXPECT_GT(records, 20U);
  EXPECT_EQ(mount->state(), Mount::live);
}

TEST_F(Guarded, CutBehindAnyRecordTheMirrorIsReadOnly) {
  units->statusIs("a")->profileNameIs("slow");
  const Ptr<Mount> mount = share();
  for (unsigned cutBehind = 1; mount->state() != Mount::live; ++cutBehind) {
    unsigned records = 0;
    connect();
    settleSlowly([&] {
      if (++records == cutBehind) {
        cut();
      }
    });
    if (mount->state() == Mount::live) {
      break;
    }
    if (mount->entity()) {
      EXPECT_EQ(mount->state(), Mount::stale) << cutBehind;
      EXPECT_THROW(mirror()->statusIs(Name(std::to_string(cutBehind))), Zel::ReadOnlyException);
      if (mirror("a")) {
        EXPECT_THROW(mirror("a")->genIdIs(mirror("a")->genId() + 1), Zel::ReadOnlyException);
      }
    }
    ASSERT_LT(cutBehind, 100U);
  }
  settle();
  EXPECT_TRUE(isEqual());
}

TEST_F(Guarded, AWriteWhileResyncingIsRepairedWhateverHasBeenSent) {
  units->statusIs("a")->profileNameIs("slow");
  units->statusIs("b");
  const Ptr<Mount> mount = share();
  settle();
  for (unsigned at = 1; at < 80; ++at) {
    cut();
    connect();
    unsigned records = 0;
    settleSlowly([&] {
      if (++records == at && mount->state() != Mount::live) {
        EXPECT_THROW(mirror("a")->genIdIs(at), Zel::ReadOnlyException);
        EXPECT_THROW(mirror()->statusDel("b"), Zel::ReadOnlyException);
        EXPECT_THROW(mirror()->statusIs(Name(std::to_string(at))), Zel::ReadOnlyException);
      }
    });
    ASSERT_STREQ(client->failure().charPtr(), "") << at;
    ASSERT_STREQ(server->failure().charPtr(), "") << at;
    ASSERT_EQ(mount->state(), Mount::live) << at;
    ASSERT_TRUE(isEqual()) << at;
  }
}

TEST_F(Guarded, CutsInTheMidstOfResyncsLeaveOneGuardForEachEntity) {
  for (const char* const unit : {"a", "b", "c", "d"}) {
    units->statusIs(unit);
  }
  const Ptr<Mount> mount = share();
  settle();
  const Ptr<Status> a = mirror("a");
  for (unsigned round = 1; round < 30; ++round) {
    cut();
    EXPECT_EQ(adapters(mirror()), 1U) << round;
    EXPECT_EQ(adapters(a), 1U) << round;
    EXPECT_THROW(a->genIdIs(round), Zel::ReadOnlyException);
    connect();
    unsigned records = 0;
    settleSlowly([&] {
      if (++records == 4 * round) {
        cut("again");
      }
    });
  }
  connect();
  settle();
  EXPECT_EQ(mount->state(), Mount::live);
  EXPECT_EQ(mirror("a"), a);
  EXPECT_EQ(adapters(a), 1U);
  EXPECT_TRUE(isEqual());
}

TEST_F(Guarded, TheRingOfAConnectionThatIsGoneIsNotKept) {
  units->statusIs("a");
  const Ptr<Mount> mount = share();
  settle();
  const Ptr<const Zel::NboAttrLog::Out> out(client->connection()->out());
  cut();
  EXPECT_EQ(out->capacity(), std::size_t{1} << 18);
  client = nullptr;
  EXPECT_EQ(out->capacity(), 0U);
  EXPECT_GT(out->references(), 1U) << "the guards have it";
  EXPECT_THROW(mirror("a")->genIdIs(7), Zel::ReadOnlyException);
  connect();
  settle();
  EXPECT_EQ(mount->state(), Mount::live);
  EXPECT_TRUE(isEqual());
}

TEST_F(Guarded, MembersThatAWalkAnewHasNotReachedRefuseToo) {
  for (const char* const unit : {"a", "b", "c", "d"}) {
    units->statusIs(unit);
  }
  share();
  for (unsigned cutBehind = 1; cutBehind < 12; ++cutBehind) {
    settle();
    EXPECT_THROW(mirror()->statusIs("nobody"), Zel::ReadOnlyException);
    unsigned records = 0;
    settleSlowly([&] {
      if (++records == cutBehind) {
        cut();
      }
    });
    for (const char* const unit : {"a", "b", "c", "d"}) {
      EXPECT_THROW(mirror(unit)->genIdIs(cutBehind), Zel::ReadOnlyException) << cutBehind << unit;
    }
    connect();
    settle();
    ASSERT_TRUE(isEqual()) << cutBehind;
  }
}

TEST_F(Guarded, MembersThatARepairHasNotReachedRefuseToo) {
  for (const char* const unit : {"a", "b", "c", "d"}) {
    units->statusIs(unit);
  }
  share();
  settle();
  unsigned records = 1;
  for (unsigned at = 1; at <= records; ++at) {
    EXPECT_THROW(mirror()->statusIs("nobody"), Zel::ReadOnlyException);
    records = 0;
    settleSlowly([&] {
      for (const char* const unit : {"a", "b", "c", "d"}) {
        if (records + 1 == at) {
          EXPECT_THROW(mirror(unit)->genIdIs(at), Zel::ReadOnlyException) << at << unit;
        }
      }
      ++records;
    });
    ASSERT_TRUE(isEqual()) << at;
    ASSERT_LT(at, 200U);
  }
  EXPECT_GT(records, 50U);
}

TEST_F(Guarded, MembersThatAreTakenOutOfAStaleMirrorAreFree) {
  units->statusIs("a");
  share();
  settle();
  cut();
  const Ptr<Status> a = mirror("a");
  EXPECT_THROW(mirror()->statusDel("a"), Zel::ReadOnlyException);
  EXPECT_FALSE(mirror("a"));
  a->genIdIs(7); // of no tree any more
  EXPECT_EQ(a->genId(), 7U);
  connect();
  settle();
  EXPECT_TRUE(isEqual());
  EXPECT_NE(mirror("a"), a);
}

TEST_F(Guarded, MembersThatAreMadeInAStaleMirrorRefuseToo) {
  share(Zel::accessReadWrite);
  settle();
  cut();
  EXPECT_THROW(mirror()->statusIs("mine"), Zel::ReadOnlyException);
  EXPECT_THROW(mirror("mine")->genIdIs(7), Zel::ReadOnlyException);
  units->statusIs("mine"); // there is such a unit by now
  connect();
  EXPECT_THROW(mirror("mine")->genIdIs(8), Zel::ReadOnlyException);
  settle();
  EXPECT_EQ(mount()->state(), Mount::live);
  EXPECT_EQ(adapters(mirror("mine")), 1U);
  EXPECT_TRUE(isEqual());
  mirror("mine")->genIdIs(9);
  settle();
  EXPECT_EQ(units->status("mine")->genId(), 9U);
}

TEST_F(Guarded, MembersThatAreMadeInAReadOnlyMirrorRefuseUntilTheyAreRepaired) {
  share(Zel::accessReadOnly);
  settle();
  EXPECT_THROW(mirror()->statusIs("mine"), Zel::ReadOnlyException);
  EXPECT_THROW(mirror("mine")->genIdIs(7), Zel::ReadOnlyException);
  EXPECT_THROW(mirror()->statusIs("both"), Zel::ReadOnlyException);
  const Ptr<Status> both = mirror("both");
  units->statusIs("both")->genIdIs(3);
  EXPECT_THROW(both->genIdIs(7), Zel::ReadOnlyException);
  const Ptr<Status> mine = mirror("mine");
  settle();
  EXPECT_FALSE(mirror("mine"));
  mine->genIdIs(9); // of no tree any more
  EXPECT_EQ(mirror("both"), both);
  EXPECT_EQ(adapters(both), 1U);
  EXPECT_TRUE(isEqual());
}

TEST_F(Guarded, AMemberThatIsToldOfAgainIsNoGuard) {
  units->statusIs("a");
  share();
  settle();
  const Ptr<Status> a = mirror("a");
  EXPECT_THROW(mirror()->statusNotify("a"), Zel::ReadOnlyException);
  settle();
  units->status("a")->genIdIs(7);
  settle();
  EXPECT_STREQ(client->failure().charPtr(), "");
  EXPECT_EQ(mount()->state(), Mount::live);
  EXPECT_EQ(adapters(a), 1U);
  EXPECT_EQ(mirror("a"), a);
  EXPECT_TRUE(isEqual());
}

TEST_F(Guarded, RefusedMembersThatAreGoneAreNotKept) {
  share(Zel::accessReadOnly);
  settle();
  const Ptr<Zel::NboAttrLog::Root> root =
      mirror()
          ->zelNboAttrLogSa(Ptr<const Zel::NboAttrLog::Out>(client->connection()->out()))
          ->root();
  for (unsigned i = 0; i < 1000; ++i) {
    EXPECT_THROW(mirror()->statusIs(Name(std::to_string(i))), Zel::ReadOnlyException);
    EXPECT_THROW(mirror()->statusDel(Name(std::to_string(i))), Zel::ReadOnlyException);
    ASSERT_LE(root->guards(), 16U) << i;
  }
  settle();
  EXPECT_EQ(mount()->state(), Mount::live);
  EXPECT_EQ(root->guards(), 0U);
  EXPECT_TRUE(isEqual());
}

TEST_F(Guarded, ARootThatComesAgainOverTheSameConnectionIsMirroredAgain) {
  units->statusIs("a");
  share();
  settle();
  const Ptr<Status> a = mirror("a");
  for (unsigned round = 1; round < 4; ++round) {
    exports->entityDel("units");
    settle();
    EXPECT_EQ(mount()->state(), Mount::stale);
    EXPECT_THROW(a->genIdIs(100 + round), Zel::ReadOnlyException);
    exports->entityIs(units);
    unsigned records = 0;
    settleSlowly([&] {
      if (mount()->state() == Mount::resyncing && ++records < 30) {
        EXPECT_THROW(a->genIdIs(1000 + records), Zel::ReadOnlyException);
      }
    });
    EXPECT_EQ(mount()->state(), Mount::live);
    EXPECT_EQ(mirror("a"), a);
    EXPECT_EQ(adapters(a), 1U);
    EXPECT_EQ(adapters(mirror()), 1U);
    units->status("a")->totalIntfTrafficViolationsIs(round);
    settle();
    EXPECT_EQ(a->totalIntfTrafficViolations(), round);
    EXPECT_TRUE(isEqual());
  }
  exports->entityDel("units");
  settle();
  cut();
  EXPECT_THROW(a->genIdIs(5), Zel::ReadOnlyException);
}

TEST_F(Guarded, GuardsOfWhatIsGoneGoToo) {
  share();
  settle();
  for (unsigned round = 1; round < 20; ++round) {
    cut();
    units->statusDelAll(); // another device by now
    for (unsigned i = 0; i < 5; ++i) {
      units->statusIs(Name(std::to_string(10 * round + i)));
    }
    connect();
    bool isMade = false;
    settleSlowly([&] {
      isMade = isMade || mirror(std::to_string(10 * round).c_str());
      if (isMade && mirror()->statusMap().count() == 5) {
        cut(); // swept, and not live yet
      }
    });
    ASSERT_EQ(mount()->state(), Mount::stale);
    std::size_t guards = 0;
    const auto& members = mirror()->statusMap();
    for (StatusDir::StatusMap::Iterator at(members); at; at.advance()) {
      guards += adapters(Ptr<Status>(at.ptr()));
    }
    EXPECT_EQ(guards, members.count());
    EXPECT_EQ(adapters(mirror()), 1U);
  }
}

TEST_F(Guarded, AWriteThatANotifieeMakesDuringAResyncIsRefused) {
  units->statusIs("a");
  share();
  settle();
  const auto ear = listen<Wiretap::Ear>(mirror("a"));
  unsigned refused = 0;
  ear->onHeard = [&](const std::string& word) {
    if (word == "genId") {
      try {
        mirror("a")->totalIntfTrafficViolationsIs(99);
      } catch (const Zel::ReadOnlyException&) {
        ++refused;
      }
    }
  };
  cut();
  units->status("a")->genIdIs(7);
  connect();
  settle();
  EXPECT_EQ(refused, 1U);
  EXPECT_EQ(mount()->state(), Mount::live);
  EXPECT_TRUE(isEqual());
}

} // namespace
