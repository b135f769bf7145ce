#include "Run.h"

namespace Replay::Test {

namespace {

/// What is printed behind the notifications.
std::string tables(const std::string& journal) {
  const Result result = replay(journal);
  EXPECT_EQ(result.err, "");
  EXPECT_EQ(result.status, 0);
  return result.out.substr(result.out.find("\nUnits\n"));
}

TEST(Tables, ShowEveryColumnOfAUnit) {
  EXPECT_EQ(
      tables("2026-03-14T22:00:00 unit A add builtin\n"
             "2026-03-14T22:00:01 unit A state underMaintenance by srcCli\n"
             "2026-03-14T22:00:01 unit A on-boot-exit 2026-03-15T00:00:00\n"
             "2026-03-14T22:00:01 unit A profile p\n"
             "2026-03-14T22:00:01 unit A group groupTypeInterface \"y z\" add\n"
             "2026-03-14T22:00:01 unit A group groupTypeBgp x add\n"
             "2026-03-14T22:00:01 unit A rates in 18446744073709551615 out 999\n"
             "2026-03-14T22:00:01 unit A violation Port-Channel10 begin\n"
             "2026-03-14T22:00:01 unit A violation Ethernet10/1 begin\n"
             "2026-03-14T22:00:01 unit A violation Ethernet9/1 begin\n"
             "2026-03-14T22:00:01 unit A history text\n"
             "2026-03-14T22:00:01 unit A generation 3\n"),
      "\nUnits\n"
      "UNIT  TYPE     STATE             REASON  SINCE                ON-BOOT EXIT         "
      "PROFILE  GROUPS                    RATES (b/s)                    OVER THRESHOLD  "
      "VIOLATIONS  HISTORY  GENERATION\n"
      "A     builtin  underMaintenance  srcCli  2026-03-14T22:00:01  2026-03-15T00:00:00  "
      "p        groupTypeBgp x            in 18,446,744,073,709,551,615  Ethernet9/1     "
      "3           1        3\n" +
          std::string(83, ' ') +
          "         groupTypeInterface \"y z\"  out 999                        Ethernet10/1\n" +
          std::string(149, ' ') +
          "Port-Channel10\n"
          "\nProfiles (default: -)\n"
          "TYPE  PROFILE\n"
          "\nHistory of A\n"
          "2026-03-14T22:00:01  text\n");
}

TEST(Tables, SortUnitsAndProfilesAsPeopleLookForThem) {
  std::string journal;
  for (const char* const unit : {"Linecard10", "Linecard9", "b", "Linecard", "Linecard09", "a1b2",
                                 "a1b10", "\"\xc3\xa9 x\"", "Linecard9/2"}) {
    journal += "2026-03-14T22:00:00 unit " + std::string(unit) + " add dynamic\n";
  }
  for (const char* const profile :
       {"profileTypeUnit p2", "profileTypeBgp p10", "profileTypeNone z", "profileTypeBgp p9"}) {
    journal += "2026-03-14T22:00:00 profile " + std::string(profile) + " add\n";
  }
  journal += "2026-03-14T22:00:00 default-profile p9\n";
  const std::string rest = "  dynamic  init   srcUnknown  -      -             -        -       "
                           "-            -               0           0        0\n";
  std::string expected = "\nUnits\n"
                         "UNIT         TYPE     STATE  REASON      SINCE  ON-BOOT EXIT  PROFILE  "
                         "GROUPS  RATES (b/s)  OVER THRESHOLD  VIOLATIONS  HISTORY  GENERATION\n";
  std::string histories;
  for (const auto& [unit, blanks] :
       std::initializer_list<std::pair<std::string, unsigned>>{{"Linecard", 3},
                                                               {"Linecard09", 1},
                                                               {"Linecard9", 2},
                                                               {"Linecard9/2", 0},
                                                               {"Linecard10", 1},
                                                               {"a1b2", 7},
                                                               {"a1b10", 6},
                                                               {"b", 10},
                                                               {"\"\xc3\xa9 x\"", 6}}) {
    expected += unit + std::string(blanks, ' ') + rest;
    histories += "\nHistory of " + unit + "\n-\n";
  }
  EXPECT_EQ(tables(journal), expected +
                                 "\nProfiles (default: p9)\n"
                                 "TYPE             PROFILE\n"
                                 "profileTypeNone  z\n"
                                 "profileTypeBgp   p9\n"
                                 "profileTypeBgp   p10\n"
                                 "profileTypeUnit  p2\n" +
                                 histories);
}

TEST(Tables, ShowHistoryInAscendingTimeWhateverTheOrderOfTheJournal) {
  const std::string out = tables("2026-03-14T22:00:00 unit A add builtin\n"
                                 "2026-03-15T00:00:00 unit A history last\n"
                                 "1969-12-31T23:59:59.999 unit A history \"long ago\"\n"
                                 "2024-02-29T12:00:00.001 unit A history leap\n"
                                 "2024-02-29T12:00:00 unit A history \"leap day\"\n");
  EXPECT_EQ(out.substr(out.find("\nHistory")), "\nHistory of A\n"
                                               "1969-12-31T23:59:59.999  long ago\n"
                                               "2024-02-29T12:00:00  leap day\n"
                                               "2024-02-29T12:00:00.001  leap\n"
                                               "2026-03-15T00:00:00  last\n");
}

TEST(Tables, DoNotShowWhatWasRemoved) {
  EXPECT_EQ(tables("2026-03-14T22:00:00 unit A add builtin\n"
                   "2026-03-14T22:00:00 profile profileTypeBgp p add\n"
                   "2026-03-14T22:00:00 unit A remove\n"
                   "2026-03-14T22:00:00 profile profileTypeBgp p remove\n"),
            tables(""));
}

} // namespace

} // namespace Replay::Test
