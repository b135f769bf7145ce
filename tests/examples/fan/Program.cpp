#include "support/Shell.h"
#include <Places.h>

namespace {

TEST(Fan, IsListedWrittenHeardAndWalkedByItsNamesAloneAndMirrored) {
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
                        "speed: expected an integer at column 0\n"
                        "the mirror says 4200, 2 alarms\n"
                        "speed = 5000\n"
                        "and now 5000\n"
                        "read-only attribute: speed of fan1\n");
  EXPECT_EQ(result.err, "");
  EXPECT_EQ(result.status, 0);
}

} // namespace
