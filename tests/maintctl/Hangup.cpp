#include "Run.h"
#include "Terminal.h"
#include <Places.h>

namespace Maintctl::Test {

namespace {

TEST(Hangup, OfItsTerminalEndsAServerCleanly) {
  const Folder folder;
  const std::string socket = folder / "socket";
  Terminal terminal({MAINTCTL_PROGRAM, "--socket", socket, "serve"});
  ASSERT_TRUE(terminal.shows("listening at")) << terminal.shown();
  ASSERT_TRUE(std::filesystem::exists(socket));
  EXPECT_EQ(terminal.hangUp(), 0);
  EXPECT_FALSE(std::filesystem::exists(socket));
  EXPECT_FALSE(std::filesystem::exists(socket + ".lock"));
}

} // namespace

} // namespace Maintctl::Test
