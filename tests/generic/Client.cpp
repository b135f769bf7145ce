#include "GenericFixture.h"

#include <memory>
#include <thread>
#include <vector>

namespace {

using namespace TestGeneric;
using namespace Maintenance;
using Unit::Status;

TEST(Client, WrapsValuesAndTexts) {
  EXPECT_TRUE(Zel::generic(7U)->isConst());
  EXPECT_FALSE(Zel::generic(7U, false)->isConst());
  EXPECT_EQ(Zel::generic("text")->type(), typeOf<Zel::String8>());
  EXPECT_EQ(Zel::generic(Zel::Name("text"))->type(), typeOf<Zel::Name>());
  EXPECT_EQ(Zel::generic(nullptr), nullptr);
}

TEST(Client, WrapsObjectsAsTheHandleSays) {
  const Ptr<Status> unit = Unit::statusFactory("System");
  EXPECT_FALSE(Zel::generic(unit)->isConst());
  EXPECT_TRUE(Zel::generic(unit, true)->isConst());
  EXPECT_TRUE(Zel::generic(Ptr<const Status>(unit))->isConst());
  EXPECT_TRUE(Zel::generic(Ptr<const Status>(unit), false)->isConst())
      << "a handle for reading does not become one for writing";
  EXPECT_EQ(Zel::generic(Ptr<Zel::Entity>(unit))->type(), typeOf<Status>());
  EXPECT_EQ(Zel::generic(Ptr<Status>()), nullptr);
  const auto dir = Unit::statusDirFactory("units");
  EXPECT_EQ(Zel::generic(dir->statusIs("System"))->type(), typeOf<Status>());
}

TEST(Client, LeavesGenericObjectsAsTheyAre) {
  const Handle wrapper = Zel::generic(7U);
  EXPECT_EQ(Zel::generic(wrapper), wrapper);
  EXPECT_EQ(Zel::generic(Unit::State_GenericIf_Is(Unit::active, false))->type(),
            typeOf<Unit::State>());
}

TEST(Client, YieldsTheValueOfAWrapper) {
  const Handle wrapper = Zel::generic(Zel::String8("text"));
  EXPECT_EQ(&Zel::value<Zel::String8>(wrapper), &Zel::value<Zel::String8>(wrapper));
  EXPECT_EQ(messageOf<Zel::TypeException>([&] { Zel::value<Zel::Name>(wrapper); }),
            "argument missing or of the wrong type: String");
  EXPECT_EQ(messageOf<Zel::TypeException>([] { Zel::value<unsigned>(nullptr); }),
            "argument missing or of the wrong type: U32");
}

TEST(Client, ListsValuesObjectsAndNothing) {
  const auto unit = Unit::statusFactory("System");
  const Handle list = Zel::arguments(1U, "text", unit, Zel::generic(true), nullptr);
  EXPECT_EQ(textOf(list), "[1, 'text', object(Maintenance::Unit::Status), true, null]");
  EXPECT_TRUE(list->hasNotificationActive());
}

TEST(WrapperStorage, IsReusedByTheThreadAndKeepsValuesApart) {
  std::vector<Handle> wrappers;
  for (int round = 0; round < 3; ++round) {
    for (unsigned number = 0; number < 100; ++number) {
      wrappers.push_back(Zel::generic(number));
    }
    for (unsigned number = 0; number < 100; ++number) {
      EXPECT_EQ(Zel::value<unsigned>(wrappers[number]), number);
    }
    wrappers.clear();
  }
}

TEST(WrapperStorage, MayBeGivenBackByAnotherThread) {
  std::vector<Handle> wrappers;
  for (unsigned number = 0; number < 100; ++number) {
    wrappers.push_back(Zel::generic(number));
  }
  std::thread([&] { wrappers.clear(); }).join();
  std::thread([&] { wrappers.push_back(Zel::generic(7U)); }).join();
  EXPECT_EQ(Zel::value<unsigned>(wrappers[0]), 7U) << "the thread that made it is gone";
}

/// Lets go of a wrapper when its thread has ended for most others.
struct Late {
  Handle wrapper;
  ~Late() { wrapper = nullptr; }
};

TEST(WrapperStorage, MayBeGivenBackWhileTheThreadEnds) {
  std::thread([] {
    static thread_local Late late; // made before the storage is opened, so it goes after that
    late.wrapper = Zel::generic(1U);
    Zel::generic(2U);
    EXPECT_EQ(Zel::value<unsigned>(late.wrapper), 1U);
  }).join();
}

TEST(WrapperStorage, IsFollowedWhereObjectsAre) {
  const std::size_t before = Zel::PtrTrack::count();
  Zel::ptrifTrackOn_ = true;
  {
    const Handle wrapper = Zel::generic(1U);
    EXPECT_EQ(Zel::PtrTrack::count(), before + 1);
  }
  EXPECT_EQ(Zel::PtrTrack::count(), before);
  Zel::ptrifTrackOn_ = false;
}

TEST(WrapperStorage, HoldsLargeValuesToo) {
  Unit::TrafficRates rates;
  rates.inBitsRateIs(5);
  const Handle wrapper = Zel::generic(rates);
  const Handle second = wrapper->clone();
  EXPECT_EQ(Zel::value<Unit::TrafficRates>(second), rates);
  EXPECT_GT(sizeof(Zel::ValueGenericIf<Unit::TrafficRates>), sizeof(Zel::ValueGenericIf<unsigned>));
}

} // namespace
