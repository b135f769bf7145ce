#include "Run.h"

#include <gmock/gmock.h>

namespace Replay::Test {

namespace {

using testing::HasSubstr;

/// What is printed for a journal in front of the tables.
std::string notifications(const std::string& journal) {
  const Result result = replay(journal);
  EXPECT_EQ(result.err, "");
  EXPECT_EQ(result.status, 0);
  return result.out.substr(0, result.out.find("\nUnits\n"));
}

constexpr const char* unit = "2026-03-14T22:00:00 unit System add userConfigured\n";
constexpr const char* added = "2026-03-14T22:00:00 unit System: added\n";

TEST(Notifications, TellEachAttributeWithItsNewValue) {
  EXPECT_EQ(
      notifications("2026-03-14T22:00:00 unit \"Line card\" add dynamic\n"
                    "2026-03-14T22:00:01 unit \"Line card\" profile \"drain all\"\n"
                    "2026-03-14T22:00:02 unit \"Line card\" state failedExit by srcOnBootCli\n"
                    "2026-03-14T22:00:03.050 unit \"Line card\" rates in 7 out 0\n"
                    "2026-03-14T22:00:04 unit \"Line card\" on-boot-exit 1970-01-02T00:00:00\n"
                    "2026-03-14T22:00:05 unit \"Line card\" history-size 3\n"
                    "2026-03-14T22:00:06 unit \"Line card\" generation 4294967295\n"
                    "2026-03-14T22:00:07 unit \"Line card\" stage-manager enter 1\n"
                    "2026-03-14T22:00:08 unit \"Line card\" stage-manager exit 2\n"),
      "2026-03-14T22:00:00 unit \"Line card\": added\n"
      "2026-03-14T22:00:00 unit \"Line card\": unitType = dynamic\n"
      "2026-03-14T22:00:01 unit \"Line card\": profileName = \"drain all\"\n"
      "2026-03-14T22:00:02 unit \"Line card\": state = failedExit\n"
      "2026-03-14T22:00:02 unit \"Line card\": reason = srcOnBootCli\n"
      "2026-03-14T22:00:02 unit \"Line card\": timeOfStateChange = 2026-03-14T22:00:02\n"
      "2026-03-14T22:00:03.050 unit \"Line card\": "
      "aggTrafficRate = in 7 out 0 at 2026-03-14T22:00:03.050\n"
      "2026-03-14T22:00:04 unit \"Line card\": onBootMaintExitTime = 1970-01-02T00:00:00\n"
      "2026-03-14T22:00:05 unit \"Line card\": historySize = 3\n"
      "2026-03-14T22:00:06 unit \"Line card\": genId = 4294967295\n"
      "2026-03-14T22:00:07 unit \"Line card\": maintEnterInstance = \"Line card#1\"\n"
      "2026-03-14T22:00:08 unit \"Line card\": maintExitInstance = \"Line card#2\"\n");
}

TEST(Notifications, TellKeysAddedChangedAndRemoved) {
  EXPECT_EQ(notifications(std::string(unit) +
                          "2026-03-14T22:00:01 unit System group groupTypeBgp \"#1\" add\n"
                          "2026-03-14T22:00:02 unit System violation Ethernet3/1 begin\n"
                          "2026-03-14T22:00:03 unit System history old\n"
                          "2026-03-14T22:00:03 unit System history \"say \\\"new\\\"\"\n"
                          "2026-03-14T22:00:04 unit System violation Ethernet3/1 end\n"
                          "2026-03-14T22:00:05 unit System group groupTypeBgp \"#1\" remove\n"
                          "2026-03-14T22:00:06 unit System violation Ethernet3/1 begin\n"
                          "2026-03-14T22:00:07 unit System history-size 0\n"),
            std::string(added) +
                "2026-03-14T22:00:01 unit System: group groupTypeBgp \"#1\" added\n"
                "2026-03-14T22:00:02 unit System: "
                "intfsViolatingTrafficThreshold Ethernet3/1 added\n"
                "2026-03-14T22:00:02 unit System: totalIntfTrafficViolations = 1\n"
                "2026-03-14T22:00:03 unit System: history 2026-03-14T22:00:03 added \"old\"\n"
                "2026-03-14T22:00:03 unit System: "
                "history 2026-03-14T22:00:03 changed \"say \\\"new\\\"\"\n"
                "2026-03-14T22:00:04 unit System: "
                "intfsViolatingTrafficThreshold Ethernet3/1 removed\n"
                "2026-03-14T22:00:05 unit System: group groupTypeBgp \"#1\" removed\n"
                "2026-03-14T22:00:06 unit System: "
                "intfsViolatingTrafficThreshold Ethernet3/1 added\n"
                "2026-03-14T22:00:06 unit System: totalIntfTrafficViolations = 2\n"
                "2026-03-14T22:00:07 unit System: historySize = 0\n"
                "2026-03-14T22:00:07 unit System: history 2026-03-14T22:00:03 removed\n");
}

TEST(Notifications, TellProfilesAndTheDefaultOne) {
  EXPECT_EQ(notifications("2026-03-14T22:00:00 profile profileTypeBgp slow add\n"
                          "2026-03-14T22:00:01 profile profileTypeUnit slow add\n"
                          "2026-03-14T22:00:02 default-profile slow\n"
                          "2026-03-14T22:00:03 default-profile slow\n"
                          "2026-03-14T22:00:04 default-profile \"very slow\"\n"
                          "2026-03-14T22:00:05 profile profileTypeBgp slow remove\n"),
            "2026-03-14T22:00:00 profile profileTypeBgp slow: added\n"
            "2026-03-14T22:00:01 profile profileTypeUnit slow: added\n"
            "2026-03-14T22:00:02 default profile: profileName = slow\n"
            "2026-03-14T22:00:04 default profile: profileName = \"very slow\"\n"
            "2026-03-14T22:00:05 profile profileTypeBgp slow: removed\n");
}

TEST(Notifications, TellNothingWhereNothingChanges) {
  EXPECT_EQ(notifications(std::string(unit) + "2026-03-14T22:00:01 unit System state init\n"
                                              "2026-03-14T22:00:01 unit System generation 0\n"
                                              "2026-03-14T22:00:01 unit System history-size 12\n"),
            added);
}

TEST(Notifications, TellAReasonAloneWithoutANewTime) {
  EXPECT_EQ(notifications(std::string(unit) +
                          "2026-03-14T22:00:01 unit System state active\n"
                          "2026-03-14T22:00:02 unit System state active by srcCli\n"),
            std::string(added) + "2026-03-14T22:00:01 unit System: state = active\n"
                                 "2026-03-14T22:00:01 unit System: "
                                 "timeOfStateChange = 2026-03-14T22:00:01\n"
                                 "2026-03-14T22:00:02 unit System: reason = srcCli\n");
}

TEST(Notifications, TellOnceOfAUnitThatCameBack) {
  EXPECT_EQ(notifications("2026-03-14T22:00:00 unit System add builtin\n"
                          "2026-03-14T22:00:01 unit System history gone\n"
                          "2026-03-14T22:00:02 unit System remove\n"
                          "2026-03-14T22:00:03 unit System add dynamic\n"
                          "2026-03-14T22:00:01 unit System history here\n"
                          "2026-03-14T22:00:05 unit System generation 2\n"),
            "2026-03-14T22:00:00 unit System: added\n"
            "2026-03-14T22:00:00 unit System: unitType = builtin\n"
            "2026-03-14T22:00:01 unit System: history 2026-03-14T22:00:01 added \"gone\"\n"
            "2026-03-14T22:00:02 unit System: removed\n"
            "2026-03-14T22:00:03 unit System: added\n"
            "2026-03-14T22:00:03 unit System: unitType = dynamic\n"
            "2026-03-14T22:00:01 unit System: history 2026-03-14T22:00:01 added \"here\"\n"
            "2026-03-14T22:00:05 unit System: genId = 2\n");
}

TEST(History, KeepsAsManyLinesAsTheUnitSaysAndDropsTheOldest) {
  std::string journal = unit;
  for (int second = 10; second < 23; ++second) { // one more than the size that a unit begins with
    const auto text = std::to_string(second);
    journal += "2026-03-14T22:00:" + text + " unit System history line" + text + "\n";
  }
  EXPECT_THAT(notifications(journal),
              HasSubstr("2026-03-14T22:00:22 unit System: "
                        "history 2026-03-14T22:00:22 added \"line22\"\n"
                        "2026-03-14T22:00:22 unit System: history 2026-03-14T22:00:10 removed"));
  journal += "2026-03-14T23:00:00 unit System history-size 2\n";
  EXPECT_THAT(replay(journal).out, HasSubstr("\nHistory of System\n"
                                             "2026-03-14T22:00:21  line21\n"
                                             "2026-03-14T22:00:22  line22\n"));
}

} // namespace

} // namespace Replay::Test
