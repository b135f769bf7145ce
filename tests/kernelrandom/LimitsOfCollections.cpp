#include "ChosenHash.h"
#include "SmallStack.h"

#include <Zel/LinkQueue>
#include <Zel/LinkedQueue>
#include <Zel/RbTreeMap>

#include <memory>

namespace {

using namespace KernelRandom;

/// Which member is held beyond the end of its collection.
enum class Held { none, first, middle };

class LimitsOfCollections : public testing::TestWithParam<Held> {
protected:
  /// Whether the member at this place is the one to hold.
  bool holds(unsigned place) const {
    return GetParam() != Held::none && place == (GetParam() == Held::first ? 0 : million / 2);
  }

  /// Destroys the collection in little stack; of its members only the one that is held is left.
  template <class Collection, class Member>
  void endsWithin(std::unique_ptr<Collection> collection, Zel::Ptr<Member> held) {
    ASSERT_EQ(static_cast<bool>(held), GetParam() != Held::none);
    ASSERT_EQ(Member::living, static_cast<int>(million));
    onSmallStack([&] { collection.reset(); });
    ASSERT_EQ(Member::living, held ? 1 : 0);
    ASSERT_TRUE(!held || held->references() == 1);
    onSmallStack([&] { held = nullptr; });
    ASSERT_EQ(Member::living, 0);
  }
};

template <class Member>
std::unique_ptr<ChosenMap<Member>> chainOfEqualHashes() {
  auto map = std::make_unique<ChosenMap<Member>>();
  for (unsigned number = million; number-- > 0;) { // each is the new first of the chain
    const auto key = chosenKey(Hashing::equal, number);
    map->newMemberG(Zel::makeObject<Member>(key), &key);
  }
  return map;
}

TEST_P(LimitsOfCollections, AChainOfEntitiesEndsWithoutRecursion) {
  auto map = chainOfEqualHashes<EntityMember>();
  Zel::Ptr<EntityMember> held;
  unsigned place = 0;
  for (ChosenMap<EntityMember>::Iterator at(*map); at; at.advance(), ++place) {
    ASSERT_EQ(at->zelKey().number, place);
    if (holds(place)) {
      held = at.ptr();
    }
  }
  ASSERT_EQ(place, million);
  endsWithin(std::move(map), std::move(held));
}

TEST_P(LimitsOfCollections, AChainOfPlainMembersEndsWithoutRecursion) {
  auto map = chainOfEqualHashes<PlainMember>();
  Zel::Ptr<PlainMember> held;
  unsigned place = 0;
  for (ChosenMap<PlainMember>::Iterator at(*map); at; at.advance(), ++place) {
    if (holds(place)) {
      held = at.ptr();
    }
  }
  endsWithin(std::move(map), std::move(held));
}

TEST_P(LimitsOfCollections, AChainIsDeletedUnderAWalkWithoutRecursion) {
  auto map = chainOfEqualHashes<PlainMember>();
  Zel::Ptr<PlainMember> held;
  onSmallStack([&] {
    unsigned place = 0;
    for (ChosenMap<PlainMember>::Iterator at(*map); at; at.advance(), ++place) {
      if (holds(place)) {
        held = at.ptr();
      }
      map->deleteMember(at.ptr());
    }
    EXPECT_EQ(place, million);
  });
  EXPECT_EQ(map->count(), 0U);
  EXPECT_EQ(PlainMember::living, held ? 1 : 0);
}

class Node : public Zel::TreeEntry<Node, unsigned, bool> {
public:
  inline static int living = 0;
  explicit Node(unsigned key) : TreeEntry(key, true) { ++living; }

protected:
  ~Node() override { --living; }
};

TEST_P(LimitsOfCollections, ATreeEndsWithoutRecursion) {
  using Tree = Zel::RbTreeMap<Node, unsigned, bool>;
  auto tree = std::make_unique<Tree>();
  for (unsigned number = 0; number < million; ++number) {
    tree->newMember(Zel::makeObject<Node>(number));
  }
  Zel::Ptr<Node> held;
  if (GetParam() == Held::first) { // that owns all others
    held = Zel::ptrCast<Node>(tree->root());
  } else if (GetParam() == Held::middle) {
    held = Zel::Ptr<Node>((*tree)[million / 4]);
  }
  endsWithin(std::move(tree), std::move(held));
}

class Value : public Zel::PtrInterface {};

class Link : public Zel::QueueEntry<Link, Zel::Ptr<Value>> {
public:
  inline static int living = 0;
  explicit Link(const Zel::Ptr<Value>& value) : QueueEntry(value) { ++living; }

protected:
  ~Link() override { --living; }
};

TEST_P(LimitsOfCollections, ALinkedQueueEndsWithoutRecursion) {
  using Queue = Zel::LinkedQueue<Link, Value, Zel::Ptr<Value>>;
  auto queue = std::make_unique<Queue>();
  const auto value = Zel::makeObject<Value>();
  Zel::Ptr<Link> held;
  for (unsigned place = 0; place < million; ++place) {
    queue->enq(value);
    if (holds(place)) {
      held = Zel::Ptr<Link>(queue->tail());
    }
  }
  ASSERT_EQ(value->references(), million + 1);
  endsWithin(std::move(queue), std::move(held));
  EXPECT_EQ(value->references(), 1U);
}

class Keyed : public Zel::LinkQueueEntry<Keyed, unsigned, Value> {
public:
  inline static int living = 0;
  Keyed(unsigned key, const Zel::Ptr<Value>& value) : LinkQueueEntry(key, value) { ++living; }

protected:
  ~Keyed() override { --living; }
};

TEST_P(LimitsOfCollections, ALinkQueueEndsWithoutRecursion) {
  using Queue = Zel::LinkQueue<Keyed, unsigned, Value>;
  // The keys wrap in the middle.
  auto queue = std::make_unique<Queue>(0U - million / 2);
  const auto value = Zel::makeObject<Value>();
  Zel::Ptr<Keyed> held;
  for (unsigned place = 0; place < million; ++place) {
    ASSERT_EQ(queue->enq(value), place - million / 2);
    if (holds(place)) {
      held = Zel::Ptr<Keyed>(queue->tail());
    }
  }
  endsWithin(std::move(queue), std::move(held));
  EXPECT_EQ(value->references(), 1U);
}

INSTANTIATE_TEST_SUITE_P(Kernel, LimitsOfCollections,
                         testing::Values(Held::none, Held::first, Held::middle));

} // namespace
