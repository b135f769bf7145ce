#include "support/Shell.h"
#include <Places.h>

namespace {

TEST(Poll, PrintsWhatChangesInAServer) {
  const Support::Folder folder;
  const std::string socket = folder / "socket";
  const std::string out = folder / "printed";
  // The server and the example are ended by their own numbers.
  const Support::Result result =
      Support::shell("ctl() { '" MAINTCTL_PROGRAM "' --socket '" + socket +
                     "' \"$@\"; }\n"
                     "printed() { for i in $(seq 600); do grep -qsF \"$1\" '" +
                     out +
                     "' && return; sleep 0.1; done;"
                     " echo \"never printed: $1\"; }\n"
                     "'" MAINTCTL_PROGRAM "' --socket '" +
                     socket +
                     "' serve 2>/dev/null & server=$!\n"
                     "ctl wait --live && ctl add /status/System\n"
                     "'" POLL_PROGRAM "' '" +
                     socket + "' >'" + out +
                     "' & poll=$!\n"
                     "printed 'units is live'\n"
                     "ctl set /status/System/state underMaintenance; printed \"underMaintenance\"\n"
                     "ctl add /status/Linecard3; printed 'Linecard3'\n"
                     "ctl set /status/Linecard3/historySize 7; printed 'historySize = 7'\n"
                     "ctl del /status/System; printed 'has gone'\n"
                     "kill $server; wait $server; wait $poll\n");
  EXPECT_EQ(result.out, "");
  EXPECT_EQ(result.err, "");
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(Support::contentOf(out),
            "agentInfo is live\n"
            "cliInput is live\n"
            "defaultProfile is live\n"
            "groupToUnit is live\n"
            "groups is live\n"
            "mergedInput is live\n"
            "onBootInput is live\n"
            "profiles is live\n"
            "status is live\n"
            "unitProfiles is live\n"
            "units is live\n"
            "/status/status/System/state = 'underMaintenance'\n"
            "/status/status['Linecard3'] is object(Maintenance::Unit::Status)\n"
            "/status/status/Linecard3/historySize = 7\n"
            "/status/status['System'] has gone\n"
            "the peer says: the server ends\n");
}

TEST(Poll, SaysThatThereIsNoServer) {
  const Support::Result result = Support::shell("'" POLL_PROGRAM "' /no/such/socket");
  EXPECT_EQ(result.out, "");
  EXPECT_EQ(result.err, "poll: no server at /no/such/socket: No such file or directory\n");
  EXPECT_EQ(result.status, 1);
}

} // namespace
