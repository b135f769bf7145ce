// Who hears that a write was refused may close connections: whoever is at work finds what he works
// on.

#include "Ear.h"
#include "Pair.h"

#include "support/Failure.h"

#include <Zel/Exception>

#include <gtest/gtest.h>

namespace {

using namespace Maintenance::Unit;
using Zel::Connection;
using Zel::Ptr;
using Zel::StreamAdapter;
using Flags = Zel::PtrInterface::NotifieeConst::Zel_BitSet;

/// Does something about a refusal.
struct Answering : Zel::NboAttrLog::DirMounts {
  using DirMounts::DirMounts;
  void diverged(const StreamAdapter& /*adapter*/) override { answer(); }
  std::function<void()> answer = [] {};
};

/// A mirror at `there`, of what `here` exports.
struct Ends {
  explicit Ends(const Ptr<Zel::Dir>& roots)
      : policy(Zel::makeObject<Answering>(roots, Flags(StreamAdapter::flagReadOnly))),
        there(Zel::makeObject<Connection>(Connection::End::second, "here", Zel::ConnectionLimits(),
                                          policy)) {}
  ~Ends() {
    here->close();
    if (there) {
      there->close();
    }
  }
  Ends(const Ends&) = delete;
  Ends& operator=(const Ends&) = delete;

  void share(const Ptr<StatusDir>& dir) {
    here->demuxer()->exportIs(dir);
    while (here->service() || there->service() || Pair::move(*here, *there) != 0 ||
           Pair::move(*there, *here) != 0) {
    }
  }

  const Ptr<Connection> here = Zel::makeObject<Connection>(Connection::End::first);
  const Ptr<Answering> policy;
  Ptr<Connection> there;
};

struct RefusalsThatClose : testing::Test {
  RefusalsThatClose() {
    unit->stateIs(active);
    one.share(units);
    mirror = Zel::ptrCast<StatusDir>(roots->entity("units"))->status("System");
  }
  std::string refusal() const {
    return Support::messageOf<Zel::ReadOnlyException>([&] { mirror->stateIs(failedExit); });
  }

  const Ptr<StatusDir> units = statusDirFactory("units");
  const Ptr<Status> unit = units->statusIs("System");
  const Ptr<Zel::Dir> roots = Zel::makeObject<Zel::Dir>();
  Ends one{roots};
  Ptr<Status> mirror;
};

constexpr const char* refused = "read-only attribute: state of units/System";

TEST_F(RefusalsThatClose, TheConnection) {
  one.policy->answer = [&] { one.there->close("enough"); };
  EXPECT_EQ(refusal(), refused);
  EXPECT_STREQ(one.there->failure().charPtr(), "enough");
  EXPECT_EQ(one.there->demuxer()->adapters(), 0U);
  EXPECT_EQ(mirror->zelNotifieeList().count(), 0U);
  EXPECT_NO_THROW(mirror->stateIs(active));
}

TEST_F(RefusalsThatClose, TheConnectionForGood) {
  one.policy->answer = [&] {
    one.there->close("enough");
    one.there = nullptr;
  };
  EXPECT_EQ(refusal(), refused);
  EXPECT_EQ(mirror->zelNotifieeList().count(), 0U);
}

TEST_F(RefusalsThatClose, TheConnectionToAMirrorBehind) {
  const auto further = Zel::makeObject<Zel::Dir>();
  Ends behind(further);
  behind.share(Zel::ptrCast<StatusDir>(roots->entity("units")));
  one.policy->answer = [&] {
    behind.here->close("enough");
    behind.there = nullptr;
  };
  EXPECT_EQ(refusal(), refused);
  EXPECT_STREQ(behind.here->failure().charPtr(), "enough");
  EXPECT_EQ(mirror->zelNotifieeList().count(), 1U);
}

// The mirror is one of two exporters, each of which is asked to repair it.
TEST_F(RefusalsThatClose, AllConnectionsAsTheyAreTold) {
  const auto others = statusDirFactory("units");
  others->statusIs("System");
  Ends two(roots);
  Ends three(roots);
  two.share(others);
  three.share(others);
  ASSERT_EQ(mirror->zelNotifieeList().count(), 3U);
  unsigned told = 0;
  const auto answer = [&] {
    ++told;
    one.there = two.there = three.there = nullptr;
  };
  one.policy->answer = [&] { ++told; };
  two.policy->answer = three.policy->answer = answer;
  EXPECT_EQ(refusal(), refused);
  EXPECT_GE(told, 1U);
  EXPECT_EQ(mirror->zelNotifieeList().count(), 0U);
}

} // namespace
