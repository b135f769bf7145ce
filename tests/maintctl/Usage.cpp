#include "Run.h"

#include <Places.h>
#include <fstream>

namespace Maintctl::Test {

namespace {

TEST(Help, ListsTheCommandsTheOptionsAndTheExitStatus) {
  const Result result = maintctl("--help");
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.err, "");
  for (const char* const part :
       {"  ls       ", "  get      ", "  set      ", "  add      ", "  del      ", "  dump     ",
        "  load     ", "  run      ", "  --socket PATH", "  --json", "  --timeout SECONDS",
        "Exit status:\n  0    done\n", "\n  141  whoever read the output has gone\n",
        "Examples:\n  maintctl ls /status\n", "Usage: maintctl"}) {
    EXPECT_NE(result.out.find(part), std::string::npos) << part << "\n" << result.out;
  }
  EXPECT_EQ(result.out.find("complete"), std::string::npos);
  EXPECT_EQ(maintctl("-h").out, result.out);
}

TEST(Help, IsACommandToo) {
  EXPECT_EQ(maintctl("help").out, maintctl("--help").out);
  EXPECT_EQ(maintctl("help").status, 0);
  EXPECT_EQ(maintctl("help set").out, maintctl("set --help").out);
  EXPECT_EQ(refusal(2, "help sett"), "maintctl: no command sett, did you mean set?\n");
  EXPECT_EQ(refusal(2, "help set x"), "maintctl: help takes no x, see 'maintctl help --help'\n");
  EXPECT_EQ(printed("help get"), printed("get --help"));
}

TEST(Help, OfEachCommandHasAnExampleOfIt) {
  for (const std::string command :
       {"ls", "get", "set", "add", "del", "dump", "load", "run", "help", "complete"}) {
    const Result result = maintctl(command + " --help");
    EXPECT_EQ(result.status, 0) << command;
    EXPECT_TRUE(result.out.find("Usage: maintctl " + command) != std::string::npos) << result.out;
    const std::size_t examples = result.out.find("\nExamples:\n  maintctl ");
    ASSERT_NE(examples, std::string::npos) << result.out;
    EXPECT_NE(result.out.find(" " + command, examples), std::string::npos) << result.out;
  }
}

TEST(Help, OfOneCommandSaysWhatItTakes) {
  EXPECT_EQ(
      maintctl("set --help").out,
      "Change a value\n"
      "Usage: maintctl set [OPTIONS] PATH VALUE\n"
      "\n"
      "Positionals:\n"
      "  PATH REQUIRED               Of an attribute, or of an entry that is there\n"
      "  VALUE REQUIRED              In its text form, whose quotes may be left out: active "
      "for 'active'\n"
      "\n"
      "Options:\n"
      "  -h,--help                   Print this help\n"
      "  --if OLD                    Only if this is the value, which the server decides\n"
      "\n"
      "Examples:\n"
      "  maintctl set /status/System/state underMaintenance\n"
      "  maintctl set --if active /status/System/state maintenanceModeEnter || echo too late\n"
      "  maintctl set /status/System/aggTrafficRate 1000,2000,12.5\n"
      "  maintctl set /defaultProfile/profileName "
      "\"'drain slowly'\"\n");
}

TEST(Usage, ThatMakesNoSenseIsRefusedWithWhatToDoNext) {
  EXPECT_EQ(refusal(2, ""), "maintctl: no command given, see 'maintctl --help'\n");
  EXPECT_EQ(refusal(2, "gt /x"), "maintctl: no command gt, did you mean get?\n");
  EXPECT_EQ(refusal(2, "get"), "maintctl: PATH is required, see 'maintctl get --help'\n");
  EXPECT_EQ(refusal(2, "get --jsn /"), "maintctl: no option --jsn, did you mean --json?\n");
  EXPECT_EQ(refusal(2, "--soket x ls"), "maintctl: no option --soket, did you mean --socket?\n");
  EXPECT_EQ(refusal(2, "get --bogus /"),
            "maintctl: no option --bogus, see 'maintctl get --help'\n");
  EXPECT_EQ(refusal(2, "get / b c"), "maintctl: get takes no b, see 'maintctl get --help'\n");
  EXPECT_EQ(refusal(2, "--timeout soon ls"),
            "maintctl: --timeout: soon is no number of seconds, see 'maintctl ls --help'\n");
  EXPECT_EQ(refusal(2, "--timeout -1 ls"),
            "maintctl: --timeout: -1 is no number of seconds, see 'maintctl ls --help'\n");
  for (const std::string number : {"0", "-1", "many", "1.5", "99999999999999999999"}) {
    EXPECT_EQ(refusal(2, "--socket /nowhere/socket serve --max-clients " + number),
              "maintctl: --max-clients: " + number +
                  " is no whole number above 0, see 'maintctl serve --help'\n");
  }
}

TEST(Usage, TellsTheVersion) {
  const Result result = maintctl("--version");
  EXPECT_EQ(result.out, "maintctl " MAINTCTL_VERSION "\n");
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(maintctl("-V").out, result.out);
}

TEST(Output, ThatCannotBeWrittenIsToldOf) {
  const Result result = Support::shell(program + "--local ls >/dev/full");
  EXPECT_EQ(result.err, "maintctl: cannot write the output: No space left on device\n");
  EXPECT_EQ(result.status, 9);
}

TEST(Output, ThatNobodyReadsEndsTheProgramQuietly) {
  // More than a pipe holds, so that the end of the reader is sure to be met.
  const Folder folder;
  const std::string file = folder / "status";
  std::string lines;
  for (int unit = 0; unit < 3000; ++unit) {
    lines += "/status/unit" + std::to_string(unit) + "\n";
  }
  const std::string tree = folder.write("tree", lines);
  const Result result =
      Support::shell("{ " + program + "run; echo $? >'" + file + "'; } | head -n 1",
                     "load '" + tree + "'\ndump\nls\n");
  EXPECT_EQ(result.out,
            "# The tree of a device: members by their paths, and values behind theirs.\n");
  EXPECT_EQ(result.err, "");
  EXPECT_EQ(Support::contentOf(file), "141\n");
}

TEST(ManualPage, NamesEachCommandAndEachExitStatusOfTheHelp) {
  const std::string page = Support::contentOf(MAINTCTL_SOURCES "/maintctl.1.scd");
  std::istringstream help(maintctl("--help").out);
  int commands = 0;
  int statuses = 0;
  std::string section;
  for (std::string line; std::getline(help, line);) {
    if (!line.starts_with(" ")) {
      section = line;
      continue;
    }
    std::string word;
    std::string rest;
    std::istringstream(line) >> word;
    rest = line.substr(line.find_first_not_of(' ', line.find(word) + word.size()));
    if (section == "Commands:") {
      EXPECT_NE(page.find("\n*" + word + "* "), std::string::npos) << line;
      ++commands;
    } else if (section == "Exit status:") {
      EXPECT_NE(page.find(" *" + word + "*\n:- " + rest), std::string::npos) << line;
      ++statuses;
    }
  }
  EXPECT_GE(commands, 8);
  EXPECT_EQ(statuses, 12);
}

} // namespace

} // namespace Maintctl::Test
