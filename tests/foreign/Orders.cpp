#include "Recorder.h"

#include <foreign/model/Order.h>

#include <gmock/gmock.h>

namespace Foreign {

namespace {

using testing::ElementsAre;

struct DirRecorder : OrderDir::Notifiee {
  void onOrder(Zel::Name name) override { heard.push_back(word("order", name)); }
  Words heard;
};

struct OrderRecorder : Order::Notifiee {
  void onUrgency() override { heard.push_back(notifier()->urgency()); }
  std::vector<Urgency> heard;
};

TEST(ForeignOrder, TakesItsUrgencyFromTheConstructorAndLetsItBeChanged) {
  const auto order = Zel::makeObject<Order>("o1", express);
  const auto recorder = listen<OrderRecorder>(order);
  EXPECT_EQ(order->urgency(), express);
  EXPECT_EQ(order->versionCounter(), 0U);
  order->urgencyIs(express);
  order->urgencyIs(routine);
  EXPECT_THAT(recorder->heard, ElementsAre(routine));
  EXPECT_EQ(order->versionCounter(), 1U);
}

TEST(ForeignOrder, AddsAnAbsentItemWithZeroPieces) {
  const auto order = Zel::makeObject<Order>("o1", express);
  order->itemIs("peas", 0);
  EXPECT_EQ(order->itemMap().count(), 1U);
  EXPECT_EQ(order->versionCounter(), 1U);
}

TEST(ForeignOrderDir, AHitSetsTheArgumentOnTheMemberAndStaysSilentItself) {
  const auto dir = Zel::makeObject<OrderDir>("dir");
  const auto recorder = listen<DirRecorder>(dir);
  const auto order = dir->orderIs("a", express);
  EXPECT_EQ(order->urgency(), express);
  EXPECT_EQ(dir->versionCounter(), 1U);
  const auto member = listen<OrderRecorder>(order);
  const unsigned memberVersion = order->versionCounter();

  EXPECT_EQ(dir->orderIs("a", routine), order);

  EXPECT_EQ(order->urgency(), routine);
  EXPECT_THAT(recorder->heard, ElementsAre("order a"));
  EXPECT_THAT(member->heard, ElementsAre(routine));
  EXPECT_EQ(dir->versionCounter(), 2U);
  EXPECT_EQ(order->versionCounter(), memberVersion + 1);
}

TEST(ForeignOrderDir, AHitWithTheSameArgumentCountsOnTheDirectoryAlone) {
  const auto dir = Zel::makeObject<OrderDir>("dir");
  const auto order = dir->orderIs("a", express);
  const auto member = listen<OrderRecorder>(order);
  const unsigned memberVersion = order->versionCounter();
  dir->orderIs("a", express);
  EXPECT_EQ(dir->versionCounter(), 2U);
  EXPECT_EQ(order->versionCounter(), memberVersion);
  EXPECT_TRUE(member->heard.empty());
}

TEST(ForeignOrderDir, TellsThePathOfAMember) {
  const auto dir = Zel::makeObject<OrderDir>("dir");
  const auto order = dir->orderIs("a/b", express);
  EXPECT_EQ(order->fullName(), "dir/a/b");
  EXPECT_EQ(order->uriPath().text(), "/dir/order/a%2Fb");
}

TEST(ForeignOrderDir, AMemberMayBeTakenOutFromInsideACallback) {
  struct Remover : OrderDir::Notifiee {
    void onOrder(Zel::Name name) override {
      ++calls;
      if (dir->order(name)) {
        dir->orderDel(name);
      }
    }
    OrderDir* dir = nullptr;
    int calls = 0;
  };
  const auto dir = Zel::makeObject<OrderDir>("dir");
  const auto remover = listen<Remover>(dir);
  remover->dir = dir.ptr();
  const auto order = dir->orderIs("a", routine);
  EXPECT_EQ(order->name(), "a");
  EXPECT_EQ(order->parent(), nullptr);
  EXPECT_EQ(dir->orderMap().count(), 0U);
  EXPECT_EQ(remover->calls, 2);
  EXPECT_EQ(dir->versionCounter(), 2U);
}

} // namespace

} // namespace Foreign
