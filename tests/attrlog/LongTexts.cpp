// Texts of megabytes through the smallest rings: whoever reads sees whole ones, and in the end the
// newest.

#include "Ear.h"
#include "Log.h"
#include "Pair.h"

#include <gmock/gmock.h>

#include <random>
#include <set>

namespace {

using namespace Maintenance::Unit;
using Zel::Ptr;
using Zel::String8;

/// A text that differs from every other that is made here.
String8 fresh(std::size_t length) {
  static unsigned serial = 0;
  const std::string head = std::to_string(++serial) + ":";
  std::string text = head;
  while (text.size() < length) {
    text += static_cast<char>('a' + (text.size() * 7 + serial) % 26);
  }
  text.resize(std::max(length, head.size()));
  return String8(text);
}

struct LongTexts : testing::Test {
  LongTexts() {
    pair.here->demuxer()->exportIs(unit);
    pair.settle();
    mirror = pair.mirror<Status>("System");
    ear = Wiretap::listen<Wiretap::Ear>(mirror);
    ear->onHeard = [this](const std::string& what) { check(what); };
  }
  void check(const std::string& what) {
    ++seen;
    for (const String8& text :
         {mirror->profileName(), mirror->maintEnterInstance(), mirror->maintExitInstance()}) {
      whole(what, text);
    }
    for (Status::HistoryMap::IteratorConst at(mirror->historyMap()); at; at.advance()) {
      whole(what, at->zelValue());
    }
  }
  void whole(const std::string& what, const String8& text) {
    if (written.count(std::string(text.view())) == 0) {
      ADD_FAILURE() << what << ": a text of " << text.length() << " bytes that nobody wrote";
    }
  }
  String8 text(std::size_t length) {
    String8 made = fresh(length);
    written.emplace(made.view());
    return made;
  }
  /// Lets both ends do a little.
  void step(std::size_t bytes) {
    pair.here->service(bytes);
    Pair::move(*pair.here, *pair.there, bytes);
    pair.there->service();
    Pair::move(*pair.there, *pair.here);
  }
  /// Both ends have the same, and nothing is owed.
  void agree() {
    pair.settle();
    EXPECT_STREQ(pair.here->failure().charPtr(), "");
    EXPECT_STREQ(pair.there->failure().charPtr(), "");
    EXPECT_TRUE(mirror->profileName() == unit->profileName());
    EXPECT_TRUE(mirror->maintEnterInstance() == unit->maintEnterInstance());
    EXPECT_TRUE(mirror->maintExitInstance() == unit->maintExitInstance());
    EXPECT_EQ(mirror->historyMap().count(), unit->historyMap().count());
    for (Status::HistoryMap::IteratorConst at(unit->historyMap()); at; at.advance()) {
      EXPECT_TRUE(mirror->history(at->zelKey()) == at->zelValue()) << at->zelKey();
    }
    EXPECT_EQ(pair.here->demuxer()->scheduled() + pair.here->demuxer()->parked(), 0U);
    EXPECT_EQ(pair.here->out()->capacity(), Zel::ConnectionLimits::smallestRing);
    EXPECT_EQ(pair.there->out()->capacity(), Zel::ConnectionLimits::smallestRing);
  }

  Pair pair{0, Wiretap::rings(Zel::ConnectionLimits::smallestRing)};
  const Ptr<Status> unit = statusFactory("System");
  Ptr<Status> mirror;
  Ptr<Wiretap::Ear> ear;
  std::set<std::string> written{""};
  unsigned seen = 0;
};

TEST_F(LongTexts, OfMegabytesArriveWhole) {
  unit->profileNameIs(text(5000000));
  agree();
  EXPECT_EQ(mirror->profileName().length(), 5000000U);
  unit->historyIs(1.0, text(3000000));
  agree();
  EXPECT_EQ(seen, 2U);
}

TEST_F(LongTexts, OfEveryLengthAroundOneRecordArriveWhole) {
  for (std::size_t length = 32690; length < 32790; length += 3) {
    unit->maintExitInstanceIs(text(length));
    unit->historyIs(1.0, text(length));
    agree();
  }
}

TEST_F(LongTexts, AreOverwrittenAtAnyPoint) {
  for (unsigned steps = 0; steps < 40; ++steps) {
    unit->maintEnterInstanceIs(text(200000));
    for (unsigned i = 0; i < steps; ++i) {
      step(7000);
    }
    unit->maintEnterInstanceIs(text(steps % 3 == 0 ? 10 : 150000));
    agree();
  }
}

TEST_F(LongTexts, OfEntriesAreOverwrittenAtAnyPoint) {
  for (unsigned steps = 0; steps < 40; ++steps) {
    unit->historyIs(4.0, text(200000));
    for (unsigned i = 0; i < steps; ++i) {
      step(7000);
    }
    unit->historyIs(4.0, text(steps % 3 == 0 ? 10 : 150000));
    agree();
  }
}

TEST_F(LongTexts, OfEntriesAreDeletedAtAnyPoint) {
  for (unsigned steps = 0; steps < 40; ++steps) {
    unit->historyIs(4.0, text(200000));
    for (unsigned i = 0; i < steps; ++i) {
      step(7000);
    }
    unit->historyDel(4.0);
    if (steps % 2 == 0) {
      step(7000);
      unit->historyIs(4.0, text(steps * 3000));
    }
    agree();
  }
}

TEST_F(LongTexts, OfOneEntityGoOneAfterTheOther) {
  unit->profileNameIs(text(300000));
  unit->maintEnterInstanceIs(text(300000));
  unit->historyIs(1.0, text(300000));
  unit->historyIs(2.0, text(300000));
  unit->maintExitInstanceIs(text(300000));
  for (int i = 0; i < 30; ++i) {
    step(7000);
  }
  unit->maintEnterInstanceIs(text(100000)); // whose turn has not come
  unit->profileNameIs(text(100000));
  agree();
  EXPECT_EQ(mirror->historyMap().count(), 2U);
}

TEST_F(LongTexts, OneThatChangesForEverArrivesWhenItIsLetBe) {
  for (int i = 0; i < 300; ++i) {
    unit->profileNameIs(text(200000));
    step(5000);
  }
  agree();
}

TEST_F(LongTexts, GiveWayToAResyncAtAnyPoint) {
  for (int i = 0; i < 200; ++i) {
    unit->groupIs(Group::GroupKey(Group::groupTypeBgp, String8(std::to_string(i))), true);
    unit->historyIs(100 + i, text(300));
  }
  agree();
  const auto adapter = unit->zelNboAttrLogSa(pair.here->out());
  for (unsigned steps = 0; steps < 50; ++steps) {
    unit->profileNameIs(text(100000));
    unit->historyIs(150, text(100000));
    if (steps % 2 == 0) {
      unit->historyIs(1e9, text(100000)); // the last of the walk
    }
    for (unsigned i = 0; i < steps; ++i) {
      step(9000);
    }
    adapter->doThis();
    for (unsigned i = 0; i < 3 * (50 - steps); ++i) {
      step(9000);
    }
    unit->historyIs(150, text(50000));
    unit->maintEnterInstanceIs(text(100000));
    unit->historyDel(100 + steps);
    if (steps % 3 == 0) {
      unit->historyDel(1e9);
    }
    unit->groupDel(Group::GroupKey(Group::groupTypeBgp, String8(std::to_string(steps))));
    agree();
  }
}

TEST_F(LongTexts, ThatComeAndGoAtRandomEndAsTheNewest) {
  for (unsigned seed = 0; seed < 40; ++seed) {
    std::mt19937 random(seed);
    const auto upTo = [&](std::size_t most) {
      return std::uniform_int_distribution<std::size_t>(0, most)(random);
    };
    for (int i = 0; i < 60; ++i) {
      const std::size_t length = upTo(4) == 0 ? upTo(150000) : upTo(40);
      switch (upTo(7)) {
      case 0:
        unit->profileNameIs(text(length));
        break;
      case 1:
        unit->maintEnterInstanceIs(text(length));
        break;
      case 2:
        unit->maintExitInstanceIs(text(length));
        break;
      case 3:
      case 4:
        unit->historyIs(static_cast<double>(upTo(4)), text(length));
        break;
      case 5:
        unit->historyDel(static_cast<double>(upTo(4)));
        break;
      case 6:
        if (upTo(5) == 0) {
          unit->zelNboAttrLogSa(pair.here->out())->doThis();
        }
        break;
      default:
        for (std::size_t steps = upTo(6); steps != 0; --steps) {
          step(upTo(30000));
        }
      }
    }
    agree();
    ASSERT_FALSE(HasFailure()) << "seed " << seed;
    written = {""}; // and what both have
    for (const String8& kept :
         {unit->profileName(), unit->maintEnterInstance(), unit->maintExitInstance()}) {
      written.emplace(kept.view());
    }
    for (Status::HistoryMap::IteratorConst at(unit->historyMap()); at; at.advance()) {
      written.emplace(at->zelValue().view());
    }
  }
}

} // namespace
