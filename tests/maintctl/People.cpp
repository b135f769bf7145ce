#include "Run.h"
#include "Terminal.h"
#include "Variable.h"

#include <Plain.h>
#include <Times.h>
#include <Utf8.h>

#include <limits>

namespace Maintctl::Test {

namespace {

TEST(Times, AreLocalWithTheirZone) {
  const Variable zone("TZ");
  zone = "CET-1CEST,M3.5.0,M10.5.0/3";
  EXPECT_EQ(timeText(1773522005), "2026-03-14 22:00:05 CET");
  EXPECT_EQ(timeText(1783522005), "2026-07-08 16:46:45 CEST");
  EXPECT_EQ(timeText(1773522005.25), "2026-03-14 22:00:05.250 CET");
  EXPECT_EQ(timeText(1773522004.9996), "2026-03-14 22:00:05.000 CET");
  zone = "UTC0";
  EXPECT_EQ(timeText(1773522005), "2026-03-14 21:00:05 UTC");
}

TEST(Times, ThatCountFromElsewhereAreNumbers) {
  const Variable zone("TZ");
  zone = "UTC0";
  EXPECT_EQ(timeText(0), "0");
  EXPECT_EQ(timeText(12.5), "12.5");
  EXPECT_EQ(timeText(99999999), "99999999");
  EXPECT_EQ(timeText(1e8), "1973-03-03 09:46:40 UTC");
  EXPECT_EQ(timeText(-1773522005), "-1773522005");
  EXPECT_EQ(timeText(253402300799), "253402300799") << "of five digits";
  EXPECT_EQ(timeText(std::numeric_limits<double>::infinity()), "inf");
  EXPECT_EQ(timeText(std::numeric_limits<double>::quiet_NaN()), "nan");
}

TEST(Rates, HaveTheirUnit) {
  EXPECT_EQ(rateText(0), "0 bit/s");
  EXPECT_EQ(rateText(999), "999 bit/s");
  EXPECT_EQ(rateText(1000), "1 kbit/s");
  EXPECT_EQ(rateText(1500000000), "1.5 Gbit/s");
  EXPECT_EQ(rateText(999999), "1 Mbit/s");
  EXPECT_EQ(rateText(std::numeric_limits<unsigned long long>::max()), "1.84e+04 Pbit/s");
}

constexpr const char* units =
    "add /status/System\n"
    "set /status/System/state underMaintenance\n"
    "set /status/System/timeOfStateChange 1773522005\n"
    "set /status/System/reason srcCli\n"
    "add /status/System/group/groupTypeBgp,transit\n"
    "add /status/System/group/groupTypeBgp,gone false\n"
    "set /status/System/aggTrafficRate 1500000000,2000,1773522000.5\n"
    "add /status/System/intfsViolatingTrafficThreshold/Ethernet3/1\n"
    "add /status/System/intfsViolatingTrafficThreshold/Ethernet3/2 false\n"
    "set /status/System/totalIntfTrafficViolations 3\n"
    "add /status/System/history/1773522005 'drain begun by \"mkr\"'\n"
    "add /status/System/history/7 'an earlier clock'\n"
    "add /status/Zürich\n"
    "set /status/Zürich/state failedEnter\n";

/// What a command shows of these units, in the zone of a device.
Result shownOf(const std::string& command) {
  return Support::shell("unset MAINTCTL_SOCKET; TZ=CET-1 '" MAINTCTL_PROGRAM "' run",
                        units + command + "\n");
}

TEST(Show, ListsUnitsForPeople) {
  const Result result = shownOf("show");
  EXPECT_EQ(result.out,
            "UNIT    STATE             SINCE                    REASON      GROUPS                "
            "OUT         IN        VIOLATIONS  OVER LIMIT\n"
            "System  underMaintenance  2026-03-14 22:00:05 CET  srcCli      groupTypeBgp,transit  "
            "1.5 Gbit/s  2 kbit/s  3           Ethernet3/1\n"
            "Zürich  failedEnter       0                        srcUnknown                        "
            "0 bit/s     0 bit/s   0\n");
  EXPECT_EQ(result.err, "");
}

TEST(Show, TellsAllOfAUnit) {
  const Result result = shownOf("show System");
  EXPECT_EQ(result.out,
            "/status/status/System\n"
            "  unitName                        System\n"
            "  unitType                        userConfigured\n"
            "  group                           groupTypeBgp,gone (false), groupTypeBgp,transit\n"
            "  profileName\n"
            "  state                           underMaintenance\n"
            "  reason                          srcCli\n"
            "  timeOfStateChange               2026-03-14 22:00:05 CET\n"
            "  onBootMaintExitTime             0\n"
            "  defaultHistorySize              12\n"
            "  historySize                     12\n"
            "  history                         7  an earlier clock\n"
            "                                  2026-03-14 22:00:05 CET  drain begun by \"mkr\"\n"
            "  maintEnterInstance\n"
            "  maintExitInstance\n"
            "  aggTrafficRate                  outBitsRate 1.5 Gbit/s, inBitsRate 2 kbit/s, "
            "statsUpdateTime 2026-03-14 22:00:00.500 CET\n"
            "  intfsViolatingTrafficThreshold  Ethernet3/1, Ethernet3/2 (false)\n"
            "  totalIntfTrafficViolations      3\n"
            "  genId                           0\n");
  EXPECT_EQ(shownOf("show /status/System").out, result.out);
}

TEST(Show, TellsOfEntitiesThatAreNoUnits) {
  EXPECT_EQ(shownOf("show /cliInput").out, "/cliInput\n"
                                           "  priority  srcCli\n"
                                           "  unit\n");
  EXPECT_EQ(shownOf("show /status").out, "/status\n"
                                         "  status  System, Zürich\n");
  const Result none = shownOf("show Sytem");
  EXPECT_EQ(none.err, "<stdin>:15: no status Sytem in /status, did you mean System?\n");
  EXPECT_EQ(none.status, 3);
  EXPECT_EQ(shownOf("show /status/System/state").err,
            "<stdin>:15: /status/status/System/state is no unit, 'get "
            "/status/status/System/state' prints it\n");
}

TEST(Show, PrintsJson) {
  const Result result = shownOf("show --json /cliInput");
  EXPECT_EQ(result.out, "[{\"path\":\"/cliInput\",\"priority\":\"srcCli\",\"unit\":{}}]\n");
  const std::string all = shownOf("show --json").out;
  EXPECT_NE(all.find("\"timeOfStateChange\":1773522005.0"), all.npos) << all;
  EXPECT_NE(all.find("\"path\":\"/status/status/Zürich\""), all.npos) << all;
}

TEST(HistoryOfAUnit, IsPrintedWithItsTimes) {
  EXPECT_EQ(shownOf("history System").out, "7                        an earlier clock\n"
                                           "2026-03-14 22:00:05 CET  drain begun by \"mkr\"\n");
  EXPECT_EQ(shownOf("history --json System").out,
            "[{\"text\":\"an earlier clock\",\"time\":7.0},"
            "{\"text\":\"drain begun by \\\"mkr\\\"\",\"time\":1773522005.0}]\n");
  EXPECT_EQ(shownOf("history Zürich").out, "");
  const Result none = shownOf("history /cliInput");
  EXPECT_EQ(none.err, "<stdin>:15: /cliInput has no history, 'ls /cliInput' lists what it has\n");
  EXPECT_EQ(none.status, 3);
}

/// The same on a terminal.
std::string onTerminal(const std::string& command, std::vector<std::string> environment,
                       unsigned short columns = 200) {
  const Folder folder;
  const std::string lines = folder.write("lines", units + command + "\n");
  environment.emplace_back("TZ=CET-1");
  Terminal terminal({MAINTCTL_PROGRAM, "run", lines}, std::move(environment), columns);
  EXPECT_EQ(terminal.status(), 0);
  return terminal.shown();
}

TEST(Colours, AreOnATerminalAlone) {
  const std::string shown = onTerminal("show", {});
  EXPECT_NE(shown.find("\x1b[33munderMaintenance\x1b[0m  2026"), shown.npos) << shown;
  EXPECT_NE(shown.find("\x1b[31mfailedEnter\x1b[0m       0"), shown.npos) << shown;
  const std::string without = onTerminal("show", {"NO_COLOR=1"});
  EXPECT_EQ(without.find('\x1b'), without.npos) << without;
  EXPECT_EQ(onTerminal("show", {"TERM=dumb"}), without);
  EXPECT_EQ(onTerminal("show", {"NO_COLOR="}), shown) << "which is as if it were not set";
  EXPECT_EQ(shownOf("show").out.find('\x1b'), std::string::npos);
}

TEST(Columns, FitTheTerminal) {
  const std::string shown = onTerminal("show", {"NO_COLOR=1"}, 100);
  std::istringstream lines(shown);
  std::size_t longest = 0;
  for (std::string line; std::getline(lines, line);) {
    longest = std::max(longest, columnsOf(line.substr(0, line.find('\r'))));
  }
  EXPECT_EQ(longest, 100U) << shown;
  EXPECT_TRUE(shown.starts_with("UNIT    STATE")) << shown;
  EXPECT_NE(shown.find("\nSystem  underMai"), shown.npos) << shown;
  EXPECT_EQ(onTerminal("history System", {"NO_COLOR=1"}, 40),
            "7                        an earlier\r\n"
            "                         clock\r\n"
            "2026-03-14 22:00:05 CET  drain begun by\r\n"
            "                         \"mkr\"\r\n");
}

} // namespace

} // namespace Maintctl::Test
