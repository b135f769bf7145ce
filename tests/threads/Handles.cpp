#include <Zel/Ptr>
#include <Zel/String>
#include <generic/Client.h>
#include <model/Unit.h>

#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <vector>

namespace {

using Zel::Ptr;

constexpr int threadCount = 4;

struct Counted : Zel::PtrInterface {
  explicit Counted(std::atomic<int>& ends) : ends_(ends) {}
  void zeroReferencesIs(bool /*zero*/) override { ++zeros; }
  int zeros = 0; // plain: exactly one thread may come here

protected:
  ~Counted() override {
    EXPECT_EQ(zeros, 1);
    ++ends_;
  }

private:
  std::atomic<int>& ends_;
};

struct ThreadSafeHandles : testing::Test {
  ThreadSafeHandles() { Zel::VFPtrInterface::enableThreadSafePointers = true; }
  ~ThreadSafeHandles() override { Zel::VFPtrInterface::enableThreadSafePointers = false; }

  template <class Work>
  static void inThreads(Work work) {
    std::vector<std::thread> threads;
    for (int i = 0; i < threadCount; ++i) {
      threads.emplace_back(work);
    }
    for (std::thread& thread : threads) {
      thread.join();
    }
  }
};

TEST_F(ThreadSafeHandles, WeakReferencesOutsideTheListOfATreeOfItsOwnConcernNoOtherThread) {
  using Maintenance::Unit::Status;
  inThreads([] {
    for (int i = 0; i < 2000; ++i) {
      Ptr<Status> unit = Maintenance::Unit::statusFactory("unit");
      const auto notifiee = Zel::makeObject<Status::Notifiee>();
      notifiee->isRegisteredNotifieeIs(true);
      notifiee->notifierIs(unit);
      notifiee->isWeakReferenceIs(true);
      notifiee->hasNotificationActiveIs(false);
      unit = nullptr;
      ASSERT_FALSE(notifiee->notifier());
    }
  });
}

TEST_F(ThreadSafeHandles, AWeakReferenceOutsideTheListIsHandedOverWithItsNotifier) {
  using Maintenance::Unit::Status;
  Ptr<Status> unit = Maintenance::Unit::statusFactory("unit");
  const auto notifiee = Zel::makeObject<Status::Notifiee>();
  notifiee->notifierIs(unit);
  notifiee->isWeakReferenceIs(true);
  std::thread([&unit] { unit = nullptr; }).join();
  EXPECT_FALSE(notifiee->notifier());
}

TEST_F(ThreadSafeHandles, CopiedAndDroppedByManyTheCountIsExact) {
  std::atomic<int> ends = 0;
  const auto object = Zel::makeObject<Counted>(ends);
  inThreads([&object] {
    for (int i = 0; i < 50000; ++i) {
      const Ptr<Counted> copy = object;
      const Ptr<Zel::PtrInterface> other = copy;
    }
  });
  EXPECT_EQ(object->references(), 1U);
  EXPECT_EQ(ends, 0);
}

TEST_F(ThreadSafeHandles, DescriptorsSharedByThreadsCountTheirLooks) {
  const Zel::ZelAttr* const attr = Maintenance::Unit::Status::_fwkType()->attr("state");
  const unsigned before = attr->readCounter();
  inThreads([] {
    const auto unit = Zel::generic(Maintenance::Unit::statusFactory("System"));
    for (int i = 0; i < 10000; ++i) {
      unit->attributeId("state");
    }
  });
  EXPECT_EQ(attr->readCounter() - before, threadCount * 10000U);
}

TEST_F(ThreadSafeHandles, ExactlyOneThreadSeesZero) {
  std::atomic<int> ends = 0;
  constexpr int rounds = 2000;
  for (int round = 0; round < rounds; ++round) {
    std::vector<Ptr<Counted>> handles(threadCount, Zel::makeObject<Counted>(ends));
    std::atomic<int> next = 0;
    inThreads([&handles, &next] { handles[static_cast<std::size_t>(next++)] = nullptr; });
    ASSERT_EQ(ends, round + 1);
  }
}

TEST_F(ThreadSafeHandles, StringsPassBetweenThreads) {
  const Zel::String8 text("shared between threads");
  inThreads([&text] {
    for (int i = 0; i < 20000; ++i) {
      Zel::String8 copy = text;
      Zel::String8 empty;
      copy = empty;
    }
  });
  EXPECT_EQ(text.data().references(), 1U);
}

TEST_F(ThreadSafeHandles, FlagsAndCountsOfOneWordDoNotDisturbEachOther) {
  std::atomic<int> ends = 0;
  const auto object = Zel::makeObject<Counted>(ends);
  std::atomic<bool> done = false;
  std::thread marker([&] {
    while (!done) {
      object->zelMarkedForDeletionIs(true);
      object->zelMarkedForDeletionIs(false);
    }
  });
  inThreads([&object] {
    for (int i = 0; i < 20000; ++i) {
      const Ptr<Counted> copy = object;
    }
  });
  done = true;
  marker.join();
  EXPECT_EQ(object->referenceWord(), 1U);
}

} // namespace
