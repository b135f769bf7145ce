#pragma once

#include "Place.h"

#include <Places.h>
#include <gtest/gtest.h>

namespace TestNet {

/// `maintctl` with a server, as its users run it.
class Commands : public ::testing::Test, protected Place {
protected:
  /// Runs a script that may call `ctl`, which knows the socket; `briefly`, which has no patience;
  /// `behind`, for what runs in the background and is to get a signal; `serve`, which starts a
  /// server and waits for it; `stop`, which ends it; and `appears FILE TEXT`, which waits for a
  /// line.
  Support::Result run(const std::string& script) const {
    return Support::shell(
        "cd '" + (folder / ".").string() +
        "'\n"
        "ctl() { '" MAINTCTL_PROGRAM "' --socket socket --timeout 60 \"$@\"; }\n"
        "briefly() { '" MAINTCTL_PROGRAM "' --socket socket --timeout 1.5 \"$@\"; }\n"
        "behind() { exec '" MAINTCTL_PROGRAM "' --socket socket --timeout 60 \"$@\"; }\n"
        "serve() { '" MAINTCTL_PROGRAM "' --socket socket serve \"$@\" 2>>log & server=$!; "
        "ctl wait --live; }\n"
        "stop() { kill $1 $server; wait $server 2>/dev/null; }\n"
        "appears() { for i in $(seq 600); do grep -qsF -- \"$2\" \"$1\" && return; sleep 0.1; "
        "done; "
        "echo \"not in $1: $2\"; }\n" +
        script);
  }

  /// What `verify` says of all roots that are equal.
  static std::string allEqual() {
    std::string lines;
    for (const char* const root :
         {"agentInfo", "cliInput", "defaultProfile", "groupToUnit", "groups", "mergedInput",
          "onBootInput", "profiles", "status", "unitProfiles", "units"}) {
      lines += std::string("/") + root + ": equal\n";
    }
    return lines;
  }
  std::string content(const char* name) const { return Support::contentOf(folder / name); }
};

} // namespace TestNet
