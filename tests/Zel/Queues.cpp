#include <Zel/LinkQueue>
#include <Zel/LinkedQueue>

#include <gtest/gtest.h>

#include <limits>
#include <vector>

namespace {

using Zel::Ptr;

struct Value : Zel::PtrInterface {
  explicit Value(int n) : number(n) {}
  const int number;
};

class Entry : public Zel::QueueEntry<Entry, Ptr<Value>> {
  using QueueEntry::QueueEntry;
};

struct Queue : Zel::LinkedQueue<Entry, Value, Ptr<Value>> {
  void onDeleteMemberNotFound() override { ++notFound; }
  std::vector<int> numbers() const {
    std::vector<int> all;
    for (const Entry* at = head().ptr(); at != nullptr; at = at->zelNext().ptr()) {
      all.push_back(at->zelValue()->number);
    }
    return all;
  }
  int notFound = 0;
};

Ptr<Value> value(int number) { return Zel::makeObject<Value>(number); }

TEST(LinkedQueue, KeepsValuesInTheirOrder) {
  Queue queue;
  EXPECT_FALSE(queue.deq());
  for (int i = 1; i <= 3; ++i) {
    queue.enq(value(i));
  }
  EXPECT_EQ(queue.numbers(), (std::vector<int>{1, 2, 3}));
  EXPECT_EQ(queue.count(), 3U);
  EXPECT_EQ(queue.version(), 3U);
  EXPECT_EQ(queue.deq()->number, 1);
  EXPECT_EQ(queue.deq()->number, 2);
  EXPECT_EQ(queue.deq()->number, 3);
  EXPECT_EQ(queue.tail(), nullptr);
  EXPECT_EQ(queue.version(), 6U);
}

TEST(LinkedQueue, ACopyHasTheMembersAndTheOldVersionPlusOne) {
  Queue source;
  source.enq(value(1));
  source.enq(value(2));
  Queue target;
  target.enq(value(9));
  target.enq(value(9));
  target.enq(value(9));
  target = source;
  EXPECT_EQ(target.numbers(), (std::vector<int>{1, 2}));
  EXPECT_EQ(target.version(), 4U);
  EXPECT_EQ(source.numbers(), (std::vector<int>{1, 2}));
  EXPECT_NE(target.head(), source.head());
  EXPECT_EQ(target.head()->zelValue(), source.head()->zelValue());
}

TEST(LinkedQueue, DeletingAllEmptiesItAndUnlinksTheEntries) {
  Queue queue;
  for (int i = 0; i < 3; ++i) {
    queue.enq(value(i));
  }
  const Ptr<Entry> kept = queue.head();
  queue.deleteAll();
  EXPECT_EQ(queue.count(), 0U);
  EXPECT_EQ(queue.tail(), nullptr);
  EXPECT_EQ(queue.version(), 4U);
  EXPECT_FALSE(kept->zelNext());
  queue.deleteAll();
  EXPECT_EQ(queue.version(), 5U);
}

TEST(LinkedQueue, DeletesAMemberByValueAndTellsWhenThereIsNone) {
  Queue queue;
  std::vector<Ptr<Value>> values;
  for (int i = 0; i < 3; ++i) {
    values.push_back(value(i));
    queue.enq(values.back());
  }
  queue.deleteMember(values[2]);
  queue.deleteMember(values[0]);
  EXPECT_EQ(queue.numbers(), (std::vector<int>{1}));
  queue.enq(value(7));
  EXPECT_EQ(queue.numbers(), (std::vector<int>{1, 7}));
  queue.deleteMember(values[0]);
  EXPECT_EQ(queue.notFound, 1);
  EXPECT_EQ(queue.count(), 2U);
}

class Member : public Zel::LinkQueueEntry<Member, unsigned, Value> {
  using LinkQueueEntry::LinkQueueEntry;
};
using Keyed = Zel::LinkQueue<Member, unsigned, Value>;
constexpr unsigned top = std::numeric_limits<unsigned>::max();

std::vector<int> walk(const Keyed& queue) {
  std::vector<int> all;
  for (Keyed::IteratorConst at(queue); at; at.advance()) {
    all.push_back(at->number);
  }
  return all;
}

TEST(LinkQueue, KeysIncreaseFromHeadToTailAndWrap) {
  Keyed queue(top - 1);
  for (int i = 0; i < 4; ++i) {
    EXPECT_EQ(queue.enq(value(i)), top - 1 + static_cast<unsigned>(i));
  }
  EXPECT_EQ(queue.head()->fwkQkey(), top - 1);
  EXPECT_EQ(queue.tail()->fwkQkey(), 1U);
  EXPECT_EQ(walk(queue), (std::vector<int>{0, 1, 2, 3}));
}

TEST(LinkQueue, AnIteratorFindsItsPlaceAgainWhereverTheKeysWrap) {
  // Every start of the keys around the wrap point, every member under the iterator, every member
  // deleted meanwhile.
  constexpr int size = 5;
  for (unsigned first = top - size; first != 3; ++first) {
    for (int stand = 0; stand < size; ++stand) {
      for (int victim = 0; victim < size; ++victim) {
        Keyed queue(first);
        for (int i = 0; i < size; ++i) {
          queue.enq(value(i));
        }
        Keyed::IteratorConst at(queue);
        for (int i = 0; i < stand; ++i) {
          at.advance();
        }
        EXPECT_TRUE(queue.memberDel(first + static_cast<unsigned>(victim)));
        at.advance();
        // A key outside of a range that does not wrap has no place in it: where the first member
        // left such a range from under the iterator, the walk is at its end.
        int expected = stand + 1 == victim ? stand + 2 : stand + 1;
        const bool wraps = first + 1 > first + size - 1;
        if (victim == stand && stand == 0 && !wraps) {
          expected = size;
        }
        ASSERT_EQ(at ? at->number : size, expected)
            << "first " << first << " stand " << stand << " victim " << victim;
      }
    }
  }
}

TEST(LinkQueue, AMemberAddedMeanwhileIsSeen) {
  Keyed queue(top);
  queue.enq(value(0));
  Keyed::IteratorConst at(queue);
  EXPECT_FALSE(at.hasBookmark());
  at.hasBookmarkIs(true);
  EXPECT_TRUE(at.hasBookmark());
  queue.enq(value(1));
  at.advance();
  EXPECT_EQ(at->number, 1);
  EXPECT_EQ(at.key(), 0U);
}

TEST(LinkQueue, AnIteratorOnAQueueThatEmptiedIsAtTheEnd) {
  Keyed queue;
  queue.enq(value(0));
  Keyed::IteratorConst at(queue);
  EXPECT_EQ(queue.deq()->number, 0);
  EXPECT_FALSE(queue.deq());
  at.advance();
  EXPECT_FALSE(at);
  EXPECT_FALSE(queue.memberDel(0));
}

} // namespace
