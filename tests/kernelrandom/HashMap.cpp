#include "HashMapRun.h"

#include <algorithm>

namespace {

using namespace KernelRandom;

template <class Member>
void runMaps(Hashing hashing, unsigned keys, unsigned operations, std::uint64_t seed) {
  SCOPED_TRACE(testing::Message() << "seed " << seed << " hashing " << static_cast<int>(hashing)
                                  << " keys " << keys);
  HashMapRun<Member> run(seed, hashing, keys);
  for (unsigned i = 0; i < operations && !testing::Test::HasFatalFailure(); ++i) {
    run.step();
    if (i % 512 == 0 && !testing::Test::HasFatalFailure()) {
      run.check();
    }
  }
  if (!testing::Test::HasFatalFailure()) {
    run.check();
  }
  if (!testing::Test::HasFatalFailure()) {
    run.end();
  }
}

class HashMapHistories : public testing::TestWithParam<Hashing> {};

TEST_P(HashMapHistories, OfEntitiesKeepOrderVersionsLinksAndCounts) {
  const bool chained = GetParam() != Hashing::scattered && GetParam() != Hashing::sequence;
  for (std::uint64_t seed = 1; seed <= 5; ++seed) {
    runMaps<EntityMember>(GetParam(), 20, scaled(10'000), seed);
    runMaps<EntityMember>(GetParam(), chained ? 150 : 1500, scaled(60'000), seed);
    if (HasFatalFailure()) {
      return;
    }
  }
}

TEST_P(HashMapHistories, OfPlainMembersKeepOrderVersionsAndCounts) {
  const bool chained = GetParam() != Hashing::scattered && GetParam() != Hashing::sequence;
  for (std::uint64_t seed = 101; seed <= 105; ++seed) {
    runMaps<PlainMember>(GetParam(), chained ? 60 : 600, scaled(40'000), seed);
    if (HasFatalFailure()) {
      return;
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Kernel, HashMapHistories,
                         testing::Values(Hashing::scattered, Hashing::sequence, Hashing::few,
                                         Hashing::sparse, Hashing::equal));

std::vector<unsigned> orderOf(const ChosenMap<EntityMember>& map) {
  std::vector<unsigned> numbers;
  for (ChosenMap<EntityMember>::IteratorConst at(map); at; at.advance()) {
    numbers.push_back(at->zelKey().number);
  }
  return numbers;
}

class HashMapOrder : public testing::TestWithParam<Hashing> {};

TEST_P(HashMapOrder, IsThatOfReversedHashAndKeyWhateverTheHistory) {
  const auto insert = [](ChosenMap<EntityMember>& map, const ChosenKey& key) {
    map.newMemberG(Zel::makeObject<EntityMember>(key), &key);
  };
  for (std::uint64_t seed = 1; seed <= scaled(40); ++seed) {
    SCOPED_TRACE(testing::Message() << "seed " << seed);
    Random random(seed);
    std::vector<ChosenKey> keys;
    for (unsigned number = 0; number < 1 + random.below(300); ++number) {
      keys.push_back(chosenKey(GetParam(), number * 3));
    }
    ChosenMap<EntityMember> small;
    for (const ChosenKey& key : keys) {
      insert(small, key);
    }
    // The other one has been larger, and got its members in another order.
    ChosenMap<EntityMember> large;
    for (unsigned number = 0; number < 400; ++number) {
      insert(large, chosenKey(GetParam(), number * 3 + 1));
    }
    for (std::size_t left = keys.size(); left > 1; --left) {
      std::swap(keys[left - 1], keys[random.below(static_cast<unsigned>(left))]);
    }
    for (const ChosenKey& key : keys) {
      insert(large, key);
    }
    for (unsigned number = 0; number < 400; ++number) {
      ASSERT_TRUE(large.deleteKey(chosenKey(GetParam(), number * 3 + 1)));
    }
    std::sort(keys.begin(), keys.end(), [](const ChosenKey& a, const ChosenKey& b) {
      return HashModel<ChosenKey>::place(a) < HashModel<ChosenKey>::place(b);
    });
    std::vector<unsigned> expected;
    for (const ChosenKey& key : keys) {
      expected.push_back(key.number);
    }
    ASSERT_LT(small.buckets(), large.buckets());
    ASSERT_EQ(orderOf(small), expected);
    ASSERT_EQ(orderOf(large), expected);
  }
}

INSTANTIATE_TEST_SUITE_P(Kernel, HashMapOrder,
                         testing::Values(Hashing::scattered, Hashing::sequence, Hashing::few,
                                         Hashing::sparse, Hashing::equal));

TEST(HashMapCollisions, TenThousandKeysOfOneHashGiveRightAnswers) {
  constexpr unsigned size = scaled(10'000, 4);
  ChosenMap<EntityMember> map;
  // Backwards, so that each insertion finds its place at the head of the chain.
  for (unsigned number = size; number-- > 0;) {
    const auto key = chosenKey(Hashing::equal, 2 * number);
    map.newMemberG(Zel::makeObject<EntityMember>(key), &key);
  }
  ASSERT_EQ(map.count(), size);
  unsigned number = 0;
  for (ChosenMap<EntityMember>::IteratorConst at(map); at; at.advance(), ++number) {
    ASSERT_EQ(at->zelKey().number, 2 * number);
  }
  ASSERT_EQ(number, size);
  for (unsigned probe = 0; probe < 2 * size; probe += probe < 64 ? 1 : 37) {
    const auto key = chosenKey(Hashing::equal, probe);
    const EntityMember* const found = map[key];
    ASSERT_EQ(found != nullptr, probe % 2 == 0) << probe;
    ASSERT_TRUE(found == nullptr || found->zelKey().number == probe);
    const ChosenMap<EntityMember>::IteratorConst from(map, key);
    ASSERT_EQ(static_cast<bool>(from), probe <= 2 * size - 2);
    ASSERT_TRUE(!from || from->zelKey().number == (probe + 1) / 2 * 2);
  }
  for (unsigned odd = 1; odd < size; odd += 2) {
    ASSERT_EQ(map.deleteKey(chosenKey(Hashing::equal, 2 * odd))->zelKey().number, 2 * odd);
  }
  ASSERT_EQ(map.count(), (size + 1) / 2);
  ASSERT_EQ(EntityMember::living, static_cast<int>((size + 1) / 2));
  number = 0;
  for (ChosenMap<EntityMember>::IteratorConst at(map); at; at.advance(), ++number) {
    ASSERT_EQ(at->zelKey().number, 4 * number);
  }
}

} // namespace
