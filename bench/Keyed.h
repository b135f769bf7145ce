#pragma once

#include "Bench.h"

#include <algorithm>
#include <cstddef>
#include <ctime>
#include <map>
#include <memory>
#include <random>
#include <vector>

namespace Bench {

/// The keys of one run, in random order, made by `makeKey(number, there)`: the members, and the
/// keys to look for, which are equal to them but share no storage with them.
///
/// A small collection gets several groups of members, one for each pass, and a long sequence of
/// probes: one that repeats after a hundred would be learned by the branch predictor.
template <class Key>
class KeyPool {
public:
  static constexpr std::size_t probeCount = std::size_t{1} << 16;

  template <class MakeKey>
  KeyPool(std::size_t size, MakeKey makeKey) : size_(size), random_(size) {
    const std::size_t all = std::max<std::size_t>(size, 10'000);
    fill(members_, all, makeKey, true);
    fill(equals_, all, makeKey, true);
    fill(strangers_, all, makeKey, false);
    probes(hits_, equals_);
    probes(misses_, strangers_);
  }

  std::size_t size() const noexcept { return size_; }
  std::size_t groups() const noexcept { return members_.size() / size_; }

  /// The keys of a group, and the same ones in another order and other storage.
  const Key* members(std::size_t group) const noexcept { return &members_[group * size_]; }
  const Key* equals(std::size_t group) const noexcept { return &equals_[group * size_]; }

  /// What to look for among the members of group 0.
  const std::vector<const Key*>& hits() const noexcept { return hits_; }
  const std::vector<const Key*>& misses() const noexcept { return misses_; }

private:
  template <class MakeKey>
  void fill(std::vector<Key>& keys, std::size_t all, MakeKey makeKey, bool there) {
    std::vector<std::size_t> numbers(all);
    for (std::size_t i = 0; i < all; ++i) {
      numbers[i] = i;
    }
    keys.reserve(all);
    for (std::size_t at = 0; at < all; at += size_) {
      const auto first = numbers.begin() + static_cast<std::ptrdiff_t>(at);
      std::shuffle(first, first + static_cast<std::ptrdiff_t>(size_), random_);
    }
    for (const std::size_t number : numbers) {
      keys.push_back(makeKey(number, there));
    }
  }

  void probes(std::vector<const Key*>& probes, const std::vector<Key>& keys) {
    for (std::size_t i = 0; i < std::max(size_, probeCount); ++i) {
      probes.push_back(&keys[size_ < probeCount ? random_() % size_ : i]);
    }
  }

  std::size_t size_;
  std::mt19937_64 random_;
  std::vector<Key> members_;
  std::vector<Key> equals_;
  std::vector<Key> strangers_;
  std::vector<const Key*> hits_;
  std::vector<const Key*> misses_;
};

/// The pool of a size, made at the first use and kept for the process.
template <class Key, class MakeKey>
const KeyPool<Key>& keyPool(std::size_t size, MakeKey makeKey) {
  static auto* const pools = new std::map<std::size_t, std::unique_ptr<KeyPool<Key>>>;
  auto& pool = (*pools)[size];
  if (!pool) {
    pool = std::make_unique<KeyPool<Key>>(size, makeKey);
  }
  return *pool;
}

/// The processor time of this thread, in seconds: what others take of the machine does not count.
inline double threadSeconds() noexcept {
  timespec now{};
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
  return static_cast<double>(now.tv_sec) + 1e-9 * static_cast<double>(now.tv_nsec);
}

/// What the operations of one collection cost. `Subject` is a collection that offers
/// - `Key` and `pool(size)`;
/// - `Holder`, a handle that keeps an entity alive, and `make(key)`, which makes one;
/// - `insert(holder)`, which puts an entity into the collection that is kept by its holder;
/// - `insertNew(key)`, which makes an entity and puts it in, for the collection to keep;
/// - `erase(key)`, which takes one out;
/// - `find(key)`, which yields a pointer to the entity or null, inlined as the collection is;
/// - `mark(entity)`, which reads the entity and yields true, and `sum()`, which iterates and adds
///   the marks up;
/// - `count()`, the number of members.
template <class Subject>
class KeyedOperations {
public:
  static void add(std::size_t size) {
    operation(sized("find hit", size), [=](benchmark::State& state) {
      hits(state, size,
           [](const Subject& s, const auto& key) { return Subject::mark(*s.find(key)); });
    });
    operation(sized("find miss", size), [=](benchmark::State& state) {
      misses(state, size, [](const Subject& s, const auto& key) { return s.find(key) == nullptr; });
    });
    operation(sized("iterate", size), [=](benchmark::State& state) { iterate(state, size); });
    operation(sized("insert", size), [=](benchmark::State& state) {
      insert(state, size);
    })->UseManualTime();
    operation(sized("erase", size), [=](benchmark::State& state) {
      erase(state, size);
    })->UseManualTime();
  }

  /// Looks up all that is there, and all that is not, with `look`, which yields true each time.
  template <class Look>
  static void hits(benchmark::State& state, std::size_t size, Look look) {
    lookUps(state, filled(size), Subject::pool(size).hits(), look);
  }
  template <class Look>
  static void misses(benchmark::State& state, std::size_t size, Look look) {
    lookUps(state, filled(size), Subject::pool(size).misses(), look);
  }

private:
  template <class Key, class Look>
  static void lookUps(benchmark::State& state, const Subject& subject,
                      const std::vector<const Key*>& probes, Look look) {
    for (auto _ : state) {
      std::size_t found = 0;
      for (const Key* const key : probes) {
        found += look(subject, *key);
      }
      check(state, found == probes.size());
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(probes.size()));
  }

  static void iterate(benchmark::State& state, std::size_t size) {
    const Subject& subject = filled(size);
    for (auto _ : state) {
      check(state, subject.sum() == size);
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(size));
  }

  /// One pass goes over so many collections, of one group each, that looking at the clock does not
  /// count.
  static std::size_t collections(std::size_t size) {
    return std::max<std::size_t>(1, 1'000 / size);
  }

  /// Times `work(subject, group)` over the collections of a pass, each of which `prepare` has made
  /// ready; checks that it leaves them with `left` members.
  template <class Prepare, class Work>
  static void passes(benchmark::State& state, std::size_t size, std::size_t left, Prepare&& prepare,
                     Work&& work) {
    const std::size_t groups = Subject::pool(size).groups();
    std::size_t first = 0;
    for (auto _ : state) {
      std::vector<std::unique_ptr<Subject>> subjects;
      for (std::size_t i = 0; i < collections(size); ++i) {
        subjects.push_back(std::make_unique<Subject>());
        prepare(*subjects.back(), (first + i) % groups);
      }
      const double start = threadSeconds();
      for (std::size_t i = 0; i < subjects.size(); ++i) {
        work(*subjects[i], (first + i) % groups);
      }
      state.SetIterationTime(threadSeconds() - start);
      for (const auto& subject : subjects) {
        check(state, subject->count() == left);
      }
      first += subjects.size();
    }
    state.SetItemsProcessed(state.iterations() *
                            static_cast<std::int64_t>(collections(size) * size));
  }

  static void insert(benchmark::State& state, std::size_t size) {
    const auto& pool = Subject::pool(size);
    passes(
        state, size, size, [](Subject&, std::size_t) {},
        [&](Subject& subject, std::size_t group) {
          const auto* const keys = pool.members(group);
          for (std::size_t i = 0; i < size; ++i) {
            subject.insertNew(keys[i]);
          }
        });
  }

  static void erase(benchmark::State& state, std::size_t size) {
    const auto& pool = Subject::pool(size);
    static auto* const kept = new std::map<std::size_t, std::vector<typename Subject::Holder>>;
    auto& holders = (*kept)[size];
    if (holders.empty()) {
      for (std::size_t i = 0; i < size * pool.groups(); ++i) {
        holders.push_back(Subject::make(pool.members(0)[i]));
      }
    }
    passes(
        state, size, 0,
        [&](Subject& subject, std::size_t group) {
          for (std::size_t i = 0; i < size; ++i) {
            subject.insert(holders[group * size + i]);
          }
        },
        [&](Subject& subject, std::size_t group) {
          const auto* const keys = pool.equals(group);
          for (std::size_t i = 0; i < size; ++i) {
            subject.erase(keys[i]);
          }
        });
  }

  static void check(benchmark::State& state, bool right) {
    if (!right) {
      state.SkipWithError("wrong result");
    }
  }

  /// A collection with the members of group 0, made at the first use and kept for the process.
  static const Subject& filled(std::size_t size) {
    static auto* const all = new std::map<std::size_t, Subject*>;
    auto& subject = (*all)[size];
    if (subject == nullptr) {
      subject = new Subject;
      for (std::size_t i = 0; i < size; ++i) {
        subject->insertNew(Subject::pool(size).members(0)[i]);
      }
    }
    return *subject;
  }
};

} // namespace Bench
