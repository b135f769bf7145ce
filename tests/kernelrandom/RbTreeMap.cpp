#include "Random.h"
#include "TreeCheck.h"

#include <array>
#include <map>
#include <memory>
#include <set>

namespace {

using namespace KernelRandom;

class Numbered : public Zel::TreeEntry<Numbered, int, int> {
public:
  inline static int living = 0;
  Numbered(int key, int value) : TreeEntry(key, value) { ++living; }

  unsigned held = 0;  ///< handles of the test
  unsigned under = 0; ///< iterators that stand on it

protected:
  ~Numbered() override { --living; }
};

using NumberedMap = Zel::RbTreeMap<Numbered, int, int>;
using Handle = Zel::Ptr<Numbered>;

/// A tree, a sorted map beside it, handles on entries, and iterators that live on.
class TreeRun {
public:
  TreeRun(std::uint64_t seed, unsigned keys) : random_(seed), keys_(keys) {}

  void step() {
    const unsigned choice = random_.below(100);
    if (choice < 32) {
      insert(Zel::makeObject<Numbered>(key(), value_++));
    } else if (choice < 50) {
      erase(key());
    } else if (choice < 60) {
      handle();
    } else if (choice < 70) {
      const int wanted = key();
      const auto expected = model_.find(wanted);
      ASSERT_EQ((*map_)[wanted], expected == model_.end() ? nullptr : expected->second);
    } else {
      walk(walks_[random_.below(static_cast<unsigned>(walks_.size()))]);
    }
    ASSERT_EQ(map_->count(), model_.size());
    ASSERT_EQ(map_->treeVersion(), version_);
  }

  void check() {
    const TreeCheck<NumberedMap> found(*map_);
    std::vector<const Numbered*> expected;
    NumberedMap::IteratorConst at(*map_);
    for (const auto& [key, entry] : model_) {
      expected.push_back(entry);
      ASSERT_EQ(at.ptr().ptr(), entry);
      ASSERT_EQ(entry->references(), 2 + entry->held + entry->under);
      at.advance();
    }
    ASSERT_FALSE(at);
    ASSERT_EQ(found.entries(), expected);
  }

  /// The tree dies before the handles, which pin nothing but their entries.
  void end() {
    for (auto& at : walks_) {
      leave(at);
      at = {};
    }
    map_.reset();
    std::set<const Numbered*> survivors;
    for (const auto& entry : held_) {
      survivors.insert(entry.ptr());
      ASSERT_EQ(entry->references(), entry->held);
      ASSERT_FALSE(NumberedMap::isLinked(entry.ptr()));
    }
    ASSERT_EQ(Numbered::living, static_cast<int>(survivors.size()));
    held_.clear();
    ASSERT_EQ(Numbered::living, 0);
  }

private:
  int key() { return static_cast<int>(random_.below(keys_)); }
  bool isIn(const Handle& entry) const {
    const auto at = model_.find(entry->zelKey());
    return at != model_.end() && at->second == entry.ptr();
  }

  /// The newer entry wins.
  void insert(const Handle& entry) {
    Numbered*& place = model_[entry->zelKey()];
    const Handle former(place);
    map_->newMember(entry);
    place = entry.ptr();
    ++version_;
    left(former);
  }

  void erase(int wanted) {
    const Handle entry = map_->deleteKey(wanted);
    const auto at = model_.find(wanted);
    ASSERT_EQ(entry.ptr(), at == model_.end() ? nullptr : at->second);
    if (entry) {
      model_.erase(at);
      ++version_;
    }
    left(entry);
  }

  void left(const Handle& entry) {
    if (entry) {
      const auto& node = entry.ptr()->*Numbered::zelNode();
      ASSERT_FALSE(NumberedMap::isLinked(entry.ptr()));
      ASSERT_TRUE(node.parent == nullptr && !node.left && !node.right);
      ASSERT_EQ(entry->references(), 1 + entry->held + entry->under);
    }
  }

  /// Takes, drops, removes or puts back by handle.
  void handle() {
    const unsigned choice = random_.below(4);
    if (held_.empty() || choice == 0) {
      if (const Handle entry((*map_)[key()]); entry) {
        held_.push_back(entry);
        ++entry->held;
      }
      return;
    }
    const auto index = random_.below(static_cast<unsigned>(held_.size()));
    const Handle entry = held_[index];
    if (choice == 1) {
      --entry->held;
      std::swap(held_[index], held_.back());
      held_.pop_back();
    } else if (isIn(entry)) {
      remove(entry);
    } else {
      insert(entry);
    }
  }

  void remove(const Handle& entry) {
    map_->deleteMember(entry);
    model_.erase(entry->zelKey());
    ++version_;
    left(entry);
  }

  static void leave(NumberedMap::Iterator& at) {
    if (at) {
      --at->under;
    }
  }

  void arrive(NumberedMap::Iterator& at, std::map<int, Numbered*>::const_iterator expected) {
    Numbered* const on = expected == model_.end() ? nullptr : expected->second;
    ASSERT_EQ(at.ptr().ptr(), on);
    if (on != nullptr) {
      ++on->under;
    }
  }

  void walk(NumberedMap::Iterator& at) {
    const unsigned choice = random_.below(12);
    if (choice == 0) {
      leave(at);
      at = NumberedMap::Iterator(*map_);
      arrive(at, model_.begin());
    } else if (choice == 1) {
      const int from = key();
      leave(at);
      at = NumberedMap::Iterator(*map_, from);
      arrive(at, model_.lower_bound(from));
    } else if (choice == 2) {
      leave(at);
      at = walks_[random_.below(static_cast<unsigned>(walks_.size()))];
      if (at) {
        ++at->under;
      }
    } else if (!at) {
      at.advance(); // stays at the end
      ASSERT_FALSE(at);
    } else {
      if (choice < 5 && isIn(at.ptr())) {
        remove(at.ptr());
      }
      const auto next = model_.upper_bound(at->zelKey());
      leave(at);
      at.advance();
      arrive(at, next);
    }
  }

  Random random_;
  const unsigned keys_;
  std::unique_ptr<NumberedMap> map_ = std::make_unique<NumberedMap>();
  std::map<int, Numbered*> model_;
  unsigned version_ = 1;
  int value_ = 0;
  std::vector<Handle> held_;
  std::array<NumberedMap::Iterator, 6> walks_;
};

class RbTreeMapHistories : public testing::TestWithParam<unsigned> {};

TEST_P(RbTreeMapHistories, KeepOrderBalanceVersionsAndCounts) {
  for (std::uint64_t seed = 1; seed <= 6; ++seed) {
    SCOPED_TRACE(testing::Message() << "seed " << seed << " keys " << GetParam());
    TreeRun run(seed, GetParam());
    for (unsigned i = 0; i < scaled(50'000); ++i) {
      ASSERT_NO_FATAL_FAILURE(run.step()) << i;
      if (i % 512 == 0) {
        ASSERT_NO_FATAL_FAILURE(run.check()) << i;
        ASSERT_FALSE(HasFailure()) << i;
      }
    }
    ASSERT_NO_FATAL_FAILURE(run.end());
  }
}

INSTANTIATE_TEST_SUITE_P(Kernel, RbTreeMapHistories, testing::Values(3U, 12U, 100U, 3000U));

} // namespace
