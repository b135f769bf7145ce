#pragma once

#include "ChosenHash.h"
#include "HashModel.h"
#include "Random.h"

#include <Zel/Exception>

#include <gtest/gtest.h>

#include <array>
#include <memory>
#include <set>
#include <vector>

namespace KernelRandom {

/// A map, its model, handles on members, and iterators that live on across all changes.
template <class Member>
class HashMapRun {
  using Map = ChosenMap<Member>;
  using Model = HashModel<ChosenKey>;
  using Handle = Zel::Ptr<Member>;

public:
  HashMapRun(std::uint64_t seed, Hashing hashing, unsigned keys)
      : random_(seed), hashing_(hashing), keys_(keys) {}

  void step() {
    const unsigned choice = random_.below(100);
    if (choice < 32) {
      insert(Zel::makeObject<Member>(key()));
    } else if (choice < 50) {
      erase(key());
    } else if (choice < 60) {
      handle();
    } else if (choice < 70) {
      const auto wanted = key();
      const Member* const found = (*map_)[wanted];
      ASSERT_EQ(found != nullptr, model_.has(wanted));
      ASSERT_TRUE(found == nullptr || found->zelKey() == wanted);
    } else {
      walk(walks_[random_.below(static_cast<unsigned>(walks_.size()))]);
    }
    ASSERT_EQ(map_->count(), model_.count());
    ASSERT_EQ(map_->mapVersion(), model_.version());
    ASSERT_EQ(map_->buckets(), model_.buckets());
  }

  /// Compares all there is.
  void check() {
    auto expected = model_.members().begin();
    for (typename Map::IteratorConst at(*map_); at; at.advance(), ++expected) {
      ASSERT_NE(expected, model_.members().end());
      ASSERT_EQ(at->zelKey(), expected->first.second);
      ASSERT_EQ(at.bucket(), static_cast<int>(model_.bucket(expected->first.first)));
      ASSERT_TRUE(at->isLinkSetTimes(at->book.formerLinks + expected->second));
      ASSERT_EQ(at->references(), 2 + at->book.held + at->book.under);
    }
    ASSERT_EQ(expected, model_.members().end());
  }

  /// The map dies before the handles, which pin nothing but their members.
  void end() {
    for (Walk& walk : walks_) {
      leave(walk);
      walk.at = {};
    }
    map_.reset();
    std::set<const Member*> survivors;
    for (const auto& member : held_) {
      survivors.insert(member.ptr());
      ASSERT_EQ(member->references(), member->book.held);
      ASSERT_FALSE(member.ptr()->*Member::zelMemberNext());
    }
    ASSERT_EQ(Member::living, static_cast<int>(survivors.size()));
    held_.clear();
    ASSERT_EQ(Member::living, 0);
  }

private:
  struct Walk {
    typename Map::Iterator at;
  };

  ChosenKey key() { return chosenKey(hashing_, random_.below(keys_)); }

  void insert(const Handle& member) {
    const ChosenKey wanted = member->zelKey();
    if (model_.insert(wanted)) {
      map_->newMemberG(member, &wanted);
      ASSERT_EQ((*map_)[wanted], member.ptr());
    } else {
      ASSERT_THROW(map_->newMemberG(member, &wanted), Zel::NameInUseException);
      ASSERT_TRUE(member->isLinkSetTimes(member->book.formerLinks));
    }
  }

  void erase(const ChosenKey& wanted) {
    const Handle member = map_->deleteKey(wanted);
    ASSERT_EQ(static_cast<bool>(member), model_.has(wanted));
    left(member);
  }

  /// A member has left the map: it keeps no link, and the walks and handles on it.
  void left(const Handle& member) {
    if (member) {
      member->book.formerLinks += model_.erase(member->zelKey());
      ASSERT_TRUE(member->isLinkSetTimes(member->book.formerLinks));
      ASSERT_FALSE(member.ptr()->*Member::zelMemberNext());
      ASSERT_EQ(member->references(), 1 + member->book.held + member->book.under);
    }
  }

  bool isIn(const Handle& member) const { return (*map_)[member->zelKey()] == member.ptr(); }

  /// Takes, drops, removes or puts back by handle.
  void handle() {
    const unsigned choice = random_.below(4);
    if (held_.empty() || choice == 0) {
      if (const Handle member((*map_)[key()]); member) {
        held_.push_back(member);
        ++member->book.held;
      }
      return;
    }
    const auto index = random_.below(static_cast<unsigned>(held_.size()));
    const Handle member = held_[index];
    if (choice == 1) {
      --member->book.held;
      std::swap(held_[index], held_.back());
      held_.pop_back();
    } else if (isIn(member)) {
      map_->deleteMember(member);
      left(member);
    } else if (choice == 2) {
      map_->deleteMember(member); // no member: nothing happens
    } else {
      insert(member);
    }
  }

  /// Called before the iterator moves, which may end the member that it stands on.
  void leave(Walk& walk) {
    if (walk.at) {
      --walk.at->book.under;
    }
  }

  /// The iterator has come to stand where the model says.
  void arrive(Walk& walk, typename Model::Members::const_iterator expected) {
    const bool end = expected == model_.members().end();
    ASSERT_EQ(static_cast<bool>(walk.at), !end);
    if (!end) {
      ++walk.at->book.under;
      ASSERT_EQ(walk.at->zelKey(), expected->first.second);
      ASSERT_TRUE(isIn(walk.at.ptr()));
    }
  }

  void walk(Walk& walk) {
    const unsigned choice = random_.below(12);
    if (choice == 0) {
      leave(walk);
      walk.at = typename Map::Iterator(*map_);
      arrive(walk, model_.members().begin());
    } else if (choice == 1) {
      const auto from = key();
      leave(walk);
      walk.at = typename Map::Iterator(*map_, from);
      arrive(walk, model_.from(from));
    } else if (choice == 2) {
      leave(walk);
      walk.at = walks_[random_.below(static_cast<unsigned>(walks_.size()))].at;
      if (walk.at) {
        ++walk.at->book.under;
      }
    } else if (!walk.at) {
      walk.at.advance(); // stays at the end
      ASSERT_FALSE(walk.at);
    } else {
      if (choice < 5 && isIn(walk.at.ptr())) {
        const ChosenKey gone = walk.at->zelKey();
        map_->deleteMember(walk.at.ptr());
        left(walk.at.ptr());
        ASSERT_EQ(walk.at->zelKey(), gone);
      }
      const auto next = model_.after(Model::place(walk.at->zelKey()));
      leave(walk);
      walk.at.advance();
      arrive(walk, next);
    }
  }

  Random random_;
  const Hashing hashing_;
  const unsigned keys_;
  std::unique_ptr<Map> map_ = std::make_unique<Map>();
  Model model_;
  std::vector<Handle> held_;
  std::array<Walk, 6> walks_;
};

} // namespace KernelRandom
