#include "Run.h"

#include <vector>

namespace Replay::Test {

namespace {

/// A line that is refused, and what the message says stands there.
struct Bad {
  std::string line;
  std::string got;
};

constexpr const char* before = "2026-03-14T22:00:00 unit A add builtin\n"
                               "2026-03-14T22:00:00 unit A group groupTypeBgp g add\n"
                               "2026-03-14T22:00:00 unit A violation Ethernet1 begin\n"
                               "2026-03-14T22:00:00 profile profileTypeBgp p add\n";

/// Checks for each line that it is refused with this message, that those before it were replayed
/// and told and stand in the tables, and that neither it nor those after it did anything.
void expectRefused(const std::string& expected, const std::vector<Bad>& lines) {
  const Result good = replay(before);
  ASSERT_EQ(good.err, "");
  ASSERT_EQ(good.status, 0);
  for (const Bad& bad : lines) {
    SCOPED_TRACE(bad.line);
    const Result result =
        replay(before + bad.line + "\n2026-03-14T22:00:00 unit B add builtin\nnor this\n");
    EXPECT_EQ(result.err, "<stdin>:5: expected " + expected + ", got \"" + bad.got + "\"\n");
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.out, good.out);
  }
}

/// The same for what stands behind a good time.
void expectRefusedAt(const std::string& expected, std::vector<Bad> commands) {
  for (Bad& bad : commands) {
    bad.line = "2026-03-14T22:00:01 " + bad.line;
  }
  expectRefused(expected, commands);
}

TEST(BadLines, BeginWithoutATime) {
  expectRefused("a time such as 2026-03-14T22:00:05",
                {{"unit A remove", "unit"},
                 {"\"\" unit A remove", ""},
                 {"22:00:00 unit A remove", "22:00:00"},
                 {"2026-03-14 22:00:00 unit A remove", "2026-03-14"},
                 {"2026-03-14T22:00 unit A remove", "2026-03-14T22:00"},
                 {"2026-03-14t22:00:00 unit A remove", "2026-03-14t22:00:00"},
                 {"2026-03-14T22:00:00Z unit A remove", "2026-03-14T22:00:00Z"},
                 {"2026-03-14T22:00:00.5 unit A remove", "2026-03-14T22:00:00.5"},
                 {"2026-03-14T22:00:00.0001 unit A remove", "2026-03-14T22:00:00.0001"},
                 {"2026-02-29T22:00:00 unit A remove", "2026-02-29T22:00:00"},
                 {"2026-13-01T22:00:00 unit A remove", "2026-13-01T22:00:00"},
                 {"2026-00-01T22:00:00 unit A remove", "2026-00-01T22:00:00"},
                 {"2026-03-14T24:00:00 unit A remove", "2026-03-14T24:00:00"},
                 {"2026-03-14T22:60:00 unit A remove", "2026-03-14T22:60:00"},
                 {"2026-03-14T22:00:60 unit A remove", "2026-03-14T22:00:60"},
                 {"-026-03-14T22:00:00 unit A remove", "-026-03-14T22:00:00"},
                 {"2026-03-14T22:00:00 unit A on-boot-exit 22:41", "22:41"},
                 {"2026-03-14T22:00:00 unit A on-boot-exit", "end of line"}});
}

TEST(BadLines, AreNoWords) {
  expectRefusedAt("a closing quote", {{"unit A history \"open", "end of line"},
                                      {"unit A history \"open\\", "end of line"},
                                      {"unit A history \"open\\\"", "end of line"}});
  expectRefusedAt("a blank behind the closing quote", {{"unit A history \"a\"b c", "b c"}});
  expectRefusedAt("quotes around the whole word", {{"unit A history a\"b\"", "a\\\"b\\\""}});
  expectRefusedAt("\\\" or \\\\ inside quotes", {{"unit A history \"a\\n\"", "\\\\n"}});
  expectRefusedAt("printable characters", {{"unit A history a\x1b[2J", "\\x1b"},
                                           {"unit A history \"a\tb\"", "\\x09"},
                                           {"unit A history a\x7f", "\\x7f"},
                                           {std::string("unit A\0", 7), "\\x00"}});
}

TEST(BadLines, GoOnBehindTheirCommand) {
  expectRefusedAt("the end of the line", {{"profile profileTypeBgp q add now", "now"},
                                          {"profile profileTypeBgp p remove now", "now"},
                                          {"default-profile p now", "now"},
                                          {"unit C add builtin now", "now"},
                                          {"unit A remove now", "now"},
                                          {"unit A state active by srcCli now", "now"},
                                          {"unit A profile p now", "now"},
                                          {"unit A group groupTypeBgp h add now", "now"},
                                          {"unit A group groupTypeBgp g remove now", "now"},
                                          {"unit A rates in 5 out 6 now", "now"},
                                          {"unit A violation Ethernet2 begin now", "now"},
                                          {"unit A violation Ethernet1 end now", "now"},
                                          {"unit A history two words", "words"},
                                          {"unit A history-size 1 2", "2"},
                                          {"unit A generation 1 \"\"", ""},
                                          {"unit A on-boot-exit 2026-03-14T22:41:10 now", "now"},
                                          {"unit A stage-manager exit 1 2", "2"}});
}

TEST(BadLines, NameNoCommand) {
  expectRefusedAt("\"profile\", \"default-profile\" or \"unit\"",
                  {{"", "end of line"}, {"# unit A remove", "end of line"}, {"Unit A", "Unit"}});
  expectRefusedAt("\"add\", \"remove\", \"state\", \"profile\", \"group\", \"rates\", "
                  "\"violation\", \"history\", \"history-size\", \"generation\", "
                  "\"on-boot-exit\" or \"stage-manager\"",
                  {{"unit A", "end of line"}, {"unit C delete", "delete"}, {"unit A Add", "Add"}});
  expectRefusedAt("\"add\" or \"remove\"", {{"profile profileTypeBgp q", "end of line"},
                                            {"profile profileTypeBgp q del", "del"},
                                            {"unit A group groupTypeBgp h", "end of line"},
                                            {"unit A group groupTypeBgp h begin", "begin"}});
  expectRefusedAt("\"begin\" or \"end\"", {{"unit A violation Ethernet2", "end of line"},
                                           {"unit A violation Ethernet2 add", "add"}});
  expectRefusedAt("\"enter\" or \"exit\"",
                  {{"unit A stage-manager", "end of line"}, {"unit A stage-manager 1", "1"}});
  expectRefusedAt("\"by\"", {{"unit A state active srcCli", "srcCli"}});
  expectRefusedAt("\"in\"", {{"unit A rates", "end of line"}, {"unit A rates 5 out 6", "5"}});
  expectRefusedAt("\"out\"", {{"unit A rates in 5", "end of line"}, {"unit A rates in 5 6", "6"}});
}

TEST(BadLines, NameNothing) {
  expectRefusedAt("the name of a unit", {{"unit", "end of line"}, {"unit \"\" add builtin", ""}});
  expectRefusedAt("the name of a profile", {{"profile profileTypeBgp", "end of line"},
                                            {"profile profileTypeBgp \"\" add", ""},
                                            {"default-profile", "end of line"},
                                            {"default-profile \"\"", ""},
                                            {"unit A profile", "end of line"},
                                            {"unit A profile \"\"", ""}});
  expectRefusedAt("the name of a group", {{"unit A group groupTypeBgp", "end of line"},
                                          {"unit A group groupTypeBgp \"\" add", ""}});
  expectRefusedAt("a text in quotes", {{"unit A history", "end of line"}});
}

TEST(BadLines, NameWhatIsNotThereOrAddWhatIs) {
  expectRefusedAt("a unit that is there", {{"unit C remove", "C"},
                                           {"unit C state active", "C"},
                                           {"unit a generation 1", "a"},
                                           {"unit \"A B\" generation 1", "A B"}});
  expectRefusedAt("a unit that is not there yet", {{"unit A add builtin", "A"}});
  expectRefusedAt("\"remove\" for a profile that is there",
                  {{"profile profileTypeBgp p add", "add"}});
  expectRefusedAt("\"add\" for a profile that is not there",
                  {{"profile profileTypeUnit p remove", "remove"}});
  expectRefusedAt("\"remove\" for a group that is there",
                  {{"unit A group groupTypeBgp g add", "add"}});
  expectRefusedAt("\"add\" for a group that is not there",
                  {{"unit A group groupTypeInterface g remove", "remove"}});
  expectRefusedAt("\"end\" for a violation that is there",
                  {{"unit A violation Ethernet1 begin", "begin"}});
  expectRefusedAt("\"begin\" for a violation that is not there",
                  {{"unit A violation Ethernet2 end", "end"}});
}

TEST(BadLines, HoldNoEnumerator) {
  expectRefusedAt(
      "a profile type (profileTypeNone, profileTypeBgp, profileTypeInterface or profileTypeUnit)",
      {{"profile", "end of line"}, {"profile Bgp q add", "Bgp"}, {"profile 1 q add", "1"}});
  expectRefusedAt("a unit type (userConfigured, dynamic or builtin)",
                  {{"unit C add", "end of line"}, {"unit C add linecard", "linecard"}});
  expectRefusedAt("a state (init, active, maintenanceModeEnter, underMaintenance, failedEnter, "
                  "maintenanceModeExit or failedExit)",
                  {{"unit A state", "end of line"},
                   {"unit A state undermaintenance", "undermaintenance"},
                   {"unit A state \"active \"", "active "},
                   {"unit A state 3", "3"}});
  expectRefusedAt("a reason (srcUnknown, srcOnBoot, srcOnBootCli or srcCli)",
                  {{"unit A state active by", "end of line"}, {"unit A state active by me", "me"}});
  expectRefusedAt("a group type (groupTypeUnknown, groupTypeBgp or groupTypeInterface)",
                  {{"unit A group", "end of line"}, {"unit A group bgp h add", "bgp"}});
}

TEST(BadLines, HoldNoInterface) {
  expectRefusedAt("an interface such as Ethernet3/1, Port-Channel10 or Vlan100",
                  {{"unit A violation", "end of line"},
                   {"unit A violation Ether1 begin", "Ether1"},
                   {"unit A violation ethernet1 end", "ethernet1"},
                   {"unit A violation Ethernet begin", "Ethernet"},
                   {"unit A violation Ethernet3/01 begin", "Ethernet3/01"},
                   {"unit A violation Ethernet3/1x begin", "Ethernet3/1x"},
                   {"unit A violation none begin", "none"}});
}

TEST(BadLines, HoldNoNumberInRange) {
  expectRefusedAt("a rate in bits per second from 0 to 18446744073709551615",
                  {{"unit A rates in", "end of line"},
                   {"unit A rates in -5 out 6", "-5"},
                   {"unit A rates in +5 out 6", "+5"},
                   {"unit A rates in 5G out 6", "5G"},
                   {"unit A rates in 5.5 out 6", "5.5"},
                   {"unit A rates in 0x5 out 6", "0x5"},
                   {"unit A rates in \" 5\" out 6", " 5"},
                   {"unit A rates in \"\" out 6", ""},
                   {"unit A rates in 18446744073709551616 out 6", "18446744073709551616"},
                   {"unit A rates in 5 out -6", "-6"},
                   {"unit A rates in 5 out", "end of line"}});
  expectRefusedAt("a number of history lines from 0 to 4294967295",
                  {{"unit A history-size", "end of line"}, {"unit A history-size -1", "-1"}});
  expectRefusedAt("a generation from 0 to 4294967295",
                  {{"unit A generation", "end of line"},
                   {"unit A generation next", "next"},
                   {"unit A generation 4294967296", "4294967296"}});
  expectRefusedAt("a generation from 1 to 4294967295",
                  {{"unit A stage-manager enter", "end of line"},
                   {"unit A stage-manager enter 0", "0"},
                   {"unit A stage-manager enter A#1", "A#1"}});
}

TEST(BadLines, AtTheVeryBeginningLeaveEmptyTables) {
  const Result result = replay("maintenance\n");
  EXPECT_EQ(result.out, replay("").out);
  EXPECT_EQ(result.err, "<stdin>:1: expected a time such as 2026-03-14T22:00:05, "
                        "got \"maintenance\"\n");
  EXPECT_EQ(result.status, 2);
}

} // namespace

} // namespace Replay::Test
