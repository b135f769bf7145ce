#include "Random.h"
#include "Tracking.h"

#include <model/Profile/ConfigDir.h>

#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace {

using namespace KernelRandom;
using namespace Maintenance::Profile;

ProfileKey keyOf(unsigned number) {
  return {profileTypeUnit, Zel::String8(std::to_string(number))};
}

/// Counts its ends.
struct CountedDir : ConfigDir {
  explicit CountedDir(unsigned& ends) : ConfigDir("profiles"), ends_(ends) {}
  ~CountedDir() override { ++ends_; }
  unsigned& ends_;
};

struct Witness : ConfigDir::Notifiee {
  using ConfigDir::Notifiee::onConfig;
  void onConfig(const ProfileKey& key) override {
    heard.push_back(key);
    if (reaction) {
      reaction(key);
    }
  }
  void onZeroReferences() override {
    ++zeros;
    if (atZero) {
      atZero();
    }
  }
  /// Whether there is a notifier, without a look at it.
  bool hasNotifier() const { return rawNotifier() != nullptr; }
  std::vector<ProfileKey> heard;
  std::function<void(const ProfileKey&)> reaction;
  std::function<void()> atZero;
  unsigned zeros = 0;
};

void joinWeakly(Witness& witness, const ConfigDir* dir) {
  witness.isRegisteredNotifieeIs(true);
  witness.notifierIs(Zel::Ptr<Zel::PtrInterface const>(dir));
  witness.isWeakReferenceIs(true);
}

TEST(Destruction, HandlesTakenAndDroppedOnTheWayEndTheObjectOnce) {
  const Tracking tracking;
  unsigned ends = 0;
  Zel::Ptr<ConfigDir> dir = Zel::makeObject<CountedDir>(ends);
  const auto one = Zel::makeObject<Witness>();
  const auto other = Zel::makeObject<Witness>();
  for (const auto& witness : {one, other}) {
    joinWeakly(*witness, dir.ptr());
    const auto takeAndDrop = [raw = dir.ptr()](unsigned held) {
      for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(raw->references(), held);
        const Zel::Ptr<ConfigDir> first(raw);
        const Zel::Ptr<ConfigDir> second = first;
        EXPECT_EQ(raw->references(), held + 2);
      }
    };
    witness->atZero = [takeAndDrop] { takeAndDrop(0); };
    // While it deletes its members the directory holds itself.
    witness->reaction = [takeAndDrop](const ProfileKey&) { takeAndDrop(1); };
  }
  dir->newConfig(keyOf(1));
  dir->newConfig(keyOf(2));
  dir = nullptr;
  EXPECT_EQ(ends, 1U);
  EXPECT_EQ(one->zeros, 1U);
  EXPECT_EQ(other->zeros, 1U);
  EXPECT_EQ(one->heard.size(), 2U);
  EXPECT_EQ(other->heard, one->heard);
  EXPECT_FALSE(one->hasNotifier());
  EXPECT_EQ(tracking.living(), 2U);
}

TEST(Destruction, AnObjectRevivedAtZeroLivesOnUnchangedAndDiesOnce) {
  const Tracking tracking;
  for (unsigned revivals = 1; revivals <= 4; ++revivals) {
    unsigned ends = 0;
    Zel::Ptr<ConfigDir> dir = Zel::makeObject<CountedDir>(ends);
    dir->configIs(keyOf(1));
    Zel::Ptr<ConfigDir> kept;
    const auto witness = Zel::makeObject<Witness>();
    joinWeakly(*witness, dir.ptr());
    auto* const raw = dir.ptr();
    unsigned left = revivals;
    witness->atZero = [&] {
      if (left > 0) {
        --left;
        kept = Zel::Ptr<ConfigDir>(raw);
      }
    };
    for (unsigned round = 1; round <= revivals; ++round) {
      dir = nullptr;
      ASSERT_EQ(ends, 0U);
      ASSERT_EQ(kept.ptr(), raw);
      dir = std::move(kept);
      ASSERT_EQ(witness->zeros, round);
      ASSERT_EQ(dir->referenceWord(), 1U); // neither a count too many nor the guard
      ASSERT_EQ(dir->versionCounter(), round);
      ASSERT_EQ(dir->configMap().count(), round);
      ASSERT_EQ(dir->zelNotifieeList().count(), 1U);
      dir->configIs(keyOf(round + 1));
      ASSERT_EQ(witness->heard.size(), round);
    }
    dir = nullptr;
    EXPECT_EQ(ends, 1U);
    EXPECT_EQ(witness->zeros, revivals + 1);
    EXPECT_EQ(witness->heard.size(), 2 * revivals + 1); // all but the first heard coming, all going
  }
  EXPECT_EQ(tracking.living(), 0U);
}

/// Random doings in every callback while a directory dies.
class DyingDirectory {
public:
  explicit DyingDirectory(std::uint64_t seed) : random_(seed) {
    originals_ = random_.below(40);
    next_ = originals_;
    for (unsigned number = 0; number < originals_; ++number) {
      hold(dir_->newConfig(keyOf(number)));
    }
    joinWeakly(*first_, dir_.ptr());
    for (unsigned i = 0; i < 4; ++i) {
      others_.push_back(other());
    }
  }

  void run() {
    raw_ = dir_.ptr();
    dir_ = nullptr;
    ASSERT_EQ(ends_, 1U);
    // All of the first members were told of once, those added on the way once or, when they were
    // deleted in time, twice.
    std::map<ProfileKey, unsigned> told;
    for (const auto& key : first_->heard) {
      ++told[key];
    }
    for (unsigned number = 0; number < next_; ++number) {
      const unsigned times = told[keyOf(number)];
      ASSERT_TRUE(times == 1 || (times == 2 && number >= originals_)) << number << ' ' << times;
    }
    for (const auto& member : held_) {
      ASSERT_EQ(member->parent(), nullptr);
      ASSERT_EQ(member->references(), 1U);
    }
    ASSERT_EQ(held_.size(), next_);
    ASSERT_FALSE(first_->hasNotifier());
    for (const auto& witness : others_) {
      ASSERT_FALSE(witness->hasNotifier());
    }
  }

  /// The objects that must be alive then.
  std::size_t survivors() const { return held_.size() + 1 + others_.size(); }
  unsigned added() const { return next_ - originals_; }

private:
  void hold(const Zel::Ptr<Config>& member) { held_.insert(member); }

  Zel::Ptr<Witness> other() {
    auto witness = Zel::makeObject<Witness>();
    joinWeakly(*witness, raw_ != nullptr ? raw_ : dir_.ptr());
    witness->reaction = [this](const ProfileKey&) { react(); };
    witness->atZero = [this] { react(); };
    return witness;
  }

  void react() {
    if (depth_ == 3) {
      return;
    }
    ++depth_;
    for (unsigned actions = random_.below(3); actions > 0; --actions) {
      act();
    }
    --depth_;
  }

  void act() {
    const Zel::Ptr<ConfigDir> dying(raw_);
    const auto some = [&] { return random_.below(static_cast<unsigned>(others_.size())); };
    switch (random_.below(6)) {
    case 0:
      if (next_ < originals_ + 30) {
        const unsigned number = next_++;
        hold(dying->configIs(keyOf(number)));
      }
      break;
    case 1:
      dying->configDel(keyOf(random_.below(next_ + 1)));
      break;
    case 2:
      if (others_.size() < 12) {
        others_.push_back(other());
      }
      break;
    case 3:
      if (!others_.empty()) { // drops it, which may be the one that is being called
        const auto index = some();
        const auto last = std::move(others_[index]);
        others_.erase(others_.begin() + index);
      }
      break;
    case 4:
      if (!others_.empty()) {
        others_[some()]->notifierIs(nullptr);
      }
      break;
    default:
      for (ConfigDir::ConfigMap::IteratorConst at(dying->configMap()); at; at.advance()) {
        ASSERT_EQ(dying->config(at->zelKey()).ptr(), at.ptr().ptr());
      }
    }
  }

  struct ByAddress {
    bool operator()(const Zel::Ptr<Config>& a, const Zel::Ptr<Config>& b) const {
      return a.ptr() < b.ptr();
    }
  };

  Random random_;
  unsigned ends_ = 0;
  Zel::Ptr<ConfigDir> dir_ = Zel::makeObject<CountedDir>(ends_);
  ConfigDir* raw_ = nullptr;
  const Zel::Ptr<Witness> first_ = Zel::makeObject<Witness>();
  std::vector<Zel::Ptr<Witness>> others_;
  std::set<Zel::Ptr<Config>, ByAddress> held_;
  unsigned originals_ = 0;
  unsigned next_ = 0;
  unsigned depth_ = 0;
};

TEST(Destruction, OfADirectoryBearsAllThatItsNotifieesDoMeanwhile) {
  const Tracking tracking;
  unsigned added = 0;
  for (std::uint64_t seed = 1; seed <= scaled(4000); ++seed) {
    SCOPED_TRACE(testing::Message() << "seed " << seed);
    {
      DyingDirectory directory(seed);
      ASSERT_NO_FATAL_FAILURE(directory.run());
      ASSERT_EQ(tracking.living(), directory.survivors());
      added += directory.added();
    }
    ASSERT_EQ(tracking.living(), 0U);
  }
  EXPECT_GT(added, scaled(4000));
}

TEST(Destruction, LeavesNoNotifierToANotifieeThatJoinedMeanwhileByACountedHandle) {
  auto dir = configDirFactory("profiles");
  dir->newConfig(keyOf(1));
  const auto witness = Zel::makeObject<Witness>();
  joinWeakly(*witness, dir.ptr());
  auto late = Zel::makeObject<Witness>();
  late->isRegisteredNotifieeIs(true);
  witness->reaction = [&, raw = dir.ptr()](const ProfileKey&) {
    late->notifierIs(Zel::Ptr<Zel::PtrInterface const>(raw));
  };
  dir = nullptr;
  EXPECT_EQ(witness->heard.size(), 1U);
  EXPECT_FALSE(late->hasNotifier());
}

} // namespace
