#include "Commands.h"
#include "Raw.h"

#include <Places.h>
#include <cstdlib>
#include <ctime>
#include <net/Log.h>
#include <regex>

// What a server tells of itself on standard error.

namespace {

using Support::Result;
using TestNet::Raw;

/// With TIME for each time, which has to be one.
std::string withoutTimes(const std::string& log) {
  static const std::regex time(
      "(^|\\n)\\d{4}-\\d\\d-\\d\\dT\\d\\d:\\d\\d:\\d\\d\\.\\d{3}[+-]\\d\\d:\\d\\d ");
  return std::regex_replace(log, time, "$1TIME ");
}

/// And with PID for each process.
std::string withoutProcesses(const std::string& log) {
  static const std::regex process(", process \\d+");
  return std::regex_replace(log, process, ", process PID");
}

class ServerLog : public TestNet::Commands {
protected:
  /// Of a server that has had one client when it ended, and has turned another away.
  std::string ofLevel(const char* level) {
    const auto server =
        start({"--socket", socket(), "serve", "--max-clients", "1", "--log-level", level},
              MAINTCTL_PROGRAM);
    auto first = std::make_unique<Raw>(socket());
    while (!first->isUp()) { // it does not listen yet
      first = std::make_unique<Raw>(socket());
    }
    EXPECT_TRUE(first->write(TestNet::hello()));
    EXPECT_TRUE(first->hears("units")) << "what it offers";
    EXPECT_NE(Raw(socket()).rest(), "") << "why it is turned away";
    server->signal(SIGTERM);
    EXPECT_EQ(server->end(), 0);
    return withoutTimes(server->errors());
  }
};

TEST_F(ServerLog, HasOneLineForEachSessionsBeginningAndEnd) {
  const Result result = run("serve; ctl ls >listed; ctl get /nothing 2>refused; stop");
  EXPECT_EQ(result.err, "");
  std::string expected = "TIME info listening at socket\n";
  for (int number = 1; number <= 3; ++number) {
    const std::string who = "TIME info " + client(number);
    expected += who + ": session with maintctl is open\n";
    expected += who + ": session with maintctl ended: the peer says: closed\n";
  }
  EXPECT_EQ(withoutProcesses(withoutTimes(content("log"))),
            withoutProcesses(expected + "TIME info stopped by SIGTERM\n"));
}

TEST_F(ServerLog, TellsAsMuchAsItsLevelSays) {
  const std::string refusal =
      "TIME warning " + client(2) + ": turned away: there is one client already\n";
  const std::string begin = "TIME info " + client(1) + ": session with by hand is open\n";
  const std::string end = "TIME info stopped by SIGTERM\n"
                          "TIME info " +
                          client(1) + ": session with by hand ended: the server ends\n";
  const std::string listening = "TIME info listening at " + socket() + "\n";
  EXPECT_EQ(ofLevel("error"), "");
  EXPECT_EQ(ofLevel("warning"), refusal);
  EXPECT_EQ(ofLevel("info"), listening + begin + refusal + end);
  EXPECT_EQ(ofLevel("debug"),
            listening + "TIME debug " + client(1) + ": connected\n" + begin + refusal + end);
}

TEST_F(ServerLog, OfNoSuchLevelIsRefused) {
  const Result result = run("ctl serve --log-level loud");
  EXPECT_EQ(result.err, "maintctl: no level of a log: loud, it is one of error, warning, info and "
                        "debug\n");
  EXPECT_EQ(result.status, 2);
}

TEST(LogTime, IsLocalWithItsDistanceFromUtc) {
  const auto at = std::chrono::system_clock::from_time_t(1000000000) + std::chrono::milliseconds(7);
  const auto in = [&](const char* zone) {
    ::setenv("TZ", zone, 1);
    ::tzset();
    std::string text = Net::timeText(at);
    ::unsetenv("TZ");
    ::tzset();
    return text;
  };
  EXPECT_EQ(in("UTC"), "2001-09-09T01:46:40.007+00:00");
  EXPECT_EQ(in("AAA-5:45"), "2001-09-09T07:31:40.007+05:45");
  EXPECT_EQ(in("BBB3:30"), "2001-09-08T22:16:40.007-03:30");
}

} // namespace
