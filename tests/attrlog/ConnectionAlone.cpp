#include <Zel/Connection>

#include <gtest/gtest.h>

namespace {

TEST(ConnectionHeader, SufficesToMakeAConnection) {
  const auto plain = Zel::makeObject<Zel::Connection>(Zel::Connection::End::first);
  EXPECT_TRUE(plain->isUp());
  Zel::ConnectionLimits limits;
  limits.outCapacity = Zel::ConnectionLimits::smallestRing;
  const auto full =
      Zel::makeObject<Zel::Connection>(Zel::Connection::End::second, "peer", limits, nullptr);
  EXPECT_EQ(full->peerName(), Zel::String8("peer"));
  EXPECT_FALSE(full->wantsWrite());
}

} // namespace
