#include "support/Shell.h"

namespace {

TEST(Fan, IsListedWrittenHeardWalkedAndRefusedByItsNamesAlone) {
  const Support::Result result = Support::shell("'" FAN_PROGRAM "'");
  EXPECT_EQ(result.out, "130 name\n"
                        "155 zelNboAttrLogSaForMsgChannel\n"
                        "154 zelHasAttrLogInterface\n"
                        "258 speed\n"
                        "259 alarm\n"
                        "speed = 4200\n"
                        "alarm['blocked'] = true\n"
                        "alarm['hot'] = false\n"
                        "'blocked': true\n"
                        "'hot': false\n"
                        "speed: expected an integer at column 0\n");
  EXPECT_EQ(result.err, "");
  EXPECT_EQ(result.status, 0);
}

} // namespace
