#include "Run.h"

#include <Dump.h>
#include <Load.h>
#include <LocalDevice.h>
#include <Places.h>

#include <Zel/StateDigest>

#include <sys/stat.h>

#include <random>

namespace Maintctl::Test {

namespace {

constexpr const char* someUnit = "add /status/System\n"
                                 "add /status/System/group/groupTypeBgp,peers\n"
                                 "add /status/System/history/12.5 'drain\\nbegun'\n"
                                 "add /profiles/profileTypeBgp,drain\n"
                                 "set /defaultProfile/profileName drain\n";

constexpr const char* itsDump =
    "# The tree of a device: members by their paths, and values behind theirs.\n"
    "\n"
    "# /agentInfo, Maintenance::AgentInfo\n"
    "/agentInfo/agentPid 0\n"
    "/agentInfo/restartCount 0\n"
    "/agentInfo/onBoot false\n"
    "/agentInfo/ready false\n"
    "\n"
    "# /cliInput, Maintenance::Unit::Input\n"
    "/cliInput/priority 'srcCli'\n"
    "\n"
    "# /defaultProfile, Maintenance::Profile::DefaultProfile\n"
    "/defaultProfile/profileName 'drain'\n"
    "\n"
    "# /groupToUnit, Maintenance::GroupToUnitDir\n"
    "\n"
    "# /groups, Maintenance::MaintenanceGroup::ConfigDir\n"
    "\n"
    "# /mergedInput, Maintenance::Unit::MergedInputDir\n"
    "\n"
    "# /onBootInput, Maintenance::Unit::Input\n"
    "/onBootInput/priority 'srcOnBoot'\n"
    "\n"
    "# /profiles, Maintenance::Profile::ConfigDir\n"
    "/profiles/config/profileTypeBgp,drain\n"
    "\n"
    "# /status, Maintenance::Unit::StatusDir\n"
    "/status/status/System\n"
    "/status/status/System/unitType 'userConfigured'\n"
    "/status/status/System/group/groupTypeBgp,peers true\n"
    "/status/status/System/profileName ''\n"
    "/status/status/System/state 'init'\n"
    "/status/status/System/reason 'srcUnknown'\n"
    "/status/status/System/timeOfStateChange 0\n"
    "/status/status/System/onBootMaintExitTime 0\n"
    "/status/status/System/historySize 12\n"
    "/status/status/System/history/12.5 'drain\\nbegun'\n"
    "/status/status/System/maintEnterInstance ''\n"
    "/status/status/System/maintExitInstance ''\n"
    "/status/status/System/aggTrafficRate Value('Maintenance::Unit::TrafficRates', ** "
    "{'outBitsRate': 0, 'inBitsRate': 0, 'statsUpdateTime': 0})\n"
    "/status/status/System/totalIntfTrafficViolations 0\n"
    "/status/status/System/genId 0\n"
    "\n"
    "# /unitProfiles, MaintenanceUnitProfile::ConfigDir\n"
    "\n"
    "# /units, Maintenance::Unit::ConfigDir\n";

mode_t modeOf(const std::string& file) {
  struct stat status = {};
  EXPECT_EQ(stat(file.c_str(), &status), 0) << file;
  return status.st_mode & mode_t{07777};
}

std::size_t filesIn(const Folder& folder) {
  std::size_t count = 0;
  for (const auto& file : std::filesystem::directory_iterator(folder / "")) {
    count += file.is_regular_file() ? 1 : 0;
  }
  return count;
}

TEST(Dump, WritesOneValueALine) { EXPECT_EQ(printed(std::string(someUnit) + "dump\n"), itsDump); }

TEST(Dump, WritesAFileThatLoadReadsBack) {
  const Folder folder;
  const std::string file = folder / "the tree";
  EXPECT_EQ(printed(std::string(someUnit) + "dump '" + file + "'\n"), "");
  EXPECT_EQ(Support::contentOf(file), itsDump);
  EXPECT_EQ(printed("load '" + file + "'\ndump -\n"), itsDump);
  EXPECT_EQ(maintctl("load '" + file + "'").status, 0);
  EXPECT_EQ(maintctl("load -", itsDump).status, 0);
}

TEST(Dump, ReplacesAFileAndKeepsItsMode) {
  const Folder folder;
  const std::string file = folder.write("tree", "old");
  ASSERT_EQ(chmod(file.c_str(), 0640), 0);
  EXPECT_EQ(maintctl("dump '" + file + "'").status, 0);
  EXPECT_TRUE(Support::contentOf(file).starts_with("# The tree of a device"));
  EXPECT_EQ(modeOf(file), 0640);
  EXPECT_EQ(filesIn(folder), 1U);
  const std::string fresh = folder / "fresh";
  EXPECT_EQ(Support::shell("umask 027; " + program + "--local dump '" + fresh + "'").status, 0);
  EXPECT_EQ(modeOf(fresh), 0640);
}

TEST(Dump, ReplacesWhatASymbolicLinkPointsAt) {
  const Folder folder;
  const std::string file = folder.write("tree", "old");
  std::filesystem::create_symlink(file, folder / "link");
  EXPECT_EQ(maintctl("dump '" + (folder / "link").string() + "'").status, 0);
  EXPECT_TRUE(std::filesystem::is_symlink(folder / "link"));
  EXPECT_TRUE(Support::contentOf(file).starts_with("# The tree of a device"));
}

TEST(Dump, TellsOfAFullDiskAndLeavesWhatWasThere) {
  EXPECT_EQ(refusal(9, "dump /dev/full"),
            "maintctl: cannot write /dev/full: No space left on device\n");
  const Folder folder;
  const std::string file = folder.write("tree", "old");
  // A limit on the size of files acts as a full disk does, later than at the first byte.
  std::string lines;
  for (int unit = 0; unit < 20; ++unit) {
    lines += "add /status/unit" + std::to_string(unit) + "\n";
  }
  const Result result = Support::shell("trap '' XFSZ; ulimit -f 8; " + program + "run",
                                       lines + "dump '" + file + "'\n");
  EXPECT_EQ(result.err, "<stdin>:21: cannot write " + file + ": File too large\n");
  EXPECT_EQ(result.status, 9);
  EXPECT_EQ(Support::contentOf(file), "old");
  EXPECT_EQ(filesIn(folder), 1U);
}

TEST(Dump, TellsOfAFolderThatIsNotThere) {
  EXPECT_EQ(refusal(9, "dump /nowhere/tree"),
            "maintctl: cannot write /nowhere/tree: No such file or directory\n");
}

/// A tree in this process, with whatever a device may hold.
class RandomTree {
public:
  explicit RandomTree(unsigned seed) : random_(seed) {}

  std::string lines(int count) {
    std::string text;
    for (int line = 0; line < count; ++line) {
      const std::string unit = "/status/status/unit%20" + std::to_string(upTo(4));
      text += unit + "\n" + unit + oneValue() + "\n";
      text += "/profiles/config/profileTypeUnit,p" + std::to_string(upTo(9)) + "\n";
      text += elsewhere();
    }
    return text;
  }

  LocalDevice device;

private:
  unsigned upTo(unsigned most) { return std::uniform_int_distribution<unsigned>(0, most)(random_); }

  std::string text() {
    std::string bytes = "'";
    for (unsigned left = upTo(6); left > 0; --left) {
      static const char* const pieces[] = {"a", " ", "\\n", "\\x00", "#", "\\'", "\xff", "/%"};
      bytes += pieces[upTo(7)];
    }
    return bytes + "'";
  }

  std::string oneValue() {
    static const char* const times[] = {"-inf", "0", "-3", "1e-300", "7.25", "12.5", "nan"};
    switch (upTo(6)) {
    case 0:
      return std::string("/timeOfStateChange ") + times[upTo(6)];
    case 1:
      return std::string("/history/") + times[upTo(5)] + " " + text();
    case 2:
      return "/group/groupTypeBgp,g%2C%20" + std::to_string(upTo(20)) +
             (upTo(1) != 0 ? "" : " false");
    case 3:
      return "/intfsViolatingTrafficThreshold/Ethernet3/" + std::to_string(1 + upTo(40));
    case 4:
      return "/profileName " + text();
    case 5:
      return "/aggTrafficRate 18446744073709551615," + std::to_string(upTo(9)) + "," +
             times[upTo(6)];
    default:
      return "/genId " + std::to_string(upTo(4000000000U));
    }
  }

  /// A line of another root, behind that of its member if it is of one.
  std::string elsewhere() {
    static const char* const sources[] = {"srcUnknown", "srcOnBoot", "srcOnBootCli", "srcCli"};
    const std::string number = std::to_string(upTo(5));
    const std::string key = "groupTypeInterface,g%2C%2F" + number;
    const std::string truth = upTo(1) != 0 ? " true\n" : " false\n";
    const std::string unit = "/units/config/u%2F" + number + "\n";
    const std::string group = "/groups/maintenanceGroup/" + key + "\n";
    const std::string mapped = "/groupToUnit/groupToUnit/" + key + "\n";
    const std::string profile = "/unitProfiles/config/p%23" + number + "\n";
    const auto below = [](const std::string& member, const std::string& rest) {
      return member + member.substr(0, member.size() - 1) + rest;
    };
    switch (upTo(12)) {
    case 0:
      return below(unit, "/profileName " + text() + "\n");
    case 1:
      return below(unit, "/group/" + key + truth);
    case 2:
      return below(group, "/profile/profileTypeBgp,p%2C" + number + truth);
    case 3:
      return below(mapped, "/unitName/u%2F" + number + truth);
    case 4:
      return below(profile, "/onBootDuration 30" + number + "\n");
    case 5:
      return below(profile, "/onBootEnabled" + truth);
    case 6:
      return "/mergedInput/unit/u" + number + " " + sources[upTo(3)] + "\n";
    case 7:
      return "/cliInput/unit/u%25" + number + truth;
    case 8:
      return std::string("/onBootInput/priority ") + sources[upTo(3)] + "\n";
    case 9:
      return "/agentInfo/onBootMaintEnter/u" + number + " u" + number + "," + sources[upTo(3)] +
             "\n";
    case 10:
      return "/agentInfo/restartCount " + number + "\n/agentInfo/ready" + truth;
    case 11:
      return "/defaultProfile/profileName " + text() + "\n";
    default:
      return "/onBootInput/unit/" + number + truth;
    }
  }

  std::mt19937 random_;
};

std::map<std::string, std::uint64_t> digests(const Zel::Ptr<Zel::Dir>& dir) {
  std::map<std::string, std::uint64_t> all;
  for (const auto& [name, root] : dir->entities()) {
    all[name.charPtr()] = Zel::stateDigest(*root);
  }
  return all;
}

TEST(Dump, LoadedIntoAnEmptyTreeHasTheSameDigest) {
  for (unsigned seed = 1; seed <= 20; ++seed) {
    RandomTree tree(seed);
    std::istringstream made(tree.lines(60));
    ASSERT_GT(load(tree.device, made, "made"), 0U);
    std::ostringstream dumped;
    dump(tree.device, dumped);
    LocalDevice other;
    ASSERT_NE(digests(other.dir()), digests(tree.device.dir()));
    std::istringstream in(dumped.str());
    EXPECT_GT(load(other, in, "dumped"), 0U);
    EXPECT_EQ(digests(other.dir()), digests(tree.device.dir())) << seed;
    std::ostringstream again;
    dump(other, again);
    EXPECT_TRUE(again.str() == dumped.str()) << seed; // too long to be shown
  }
}

TEST(Dump, InJsonIsAnObjectALine) {
  const Result result =
      Support::shell(program + "--json run", "add /status/System\n"
                                             "set /status/System/timeOfStateChange inf\n"
                                             "add /mergedInput/System srcCli\ndump\n");
  EXPECT_EQ(result.err, "");
  EXPECT_TRUE(result.out.starts_with("{\"path\":\"/agentInfo/agentPid\",\"value\":0}\n"));
  for (const char* const line :
       {"{\"member\":[],\"path\":\"/status/status/System\"}\n",
        "{\"member\":[\"srcCli\"],\"path\":\"/mergedInput/unit/System\"}\n",
        "{\"path\":\"/status/status/System/state\",\"value\":\"init\"}\n",
        "{\"path\":\"/status/status/System/timeOfStateChange\",\"value\":\"inf\"}\n",
        "{\"path\":\"/status/status/System/aggTrafficRate\",\"value\":{\"inBitsRate\":0,"
        "\"outBitsRate\":0,\"statsUpdateTime\":0.0}}\n"}) {
    EXPECT_NE(result.out.find(line), std::string::npos) << line << result.out;
  }
  const auto lines = std::count(result.out.begin(), result.out.end(), '\n');
  const std::string text = printed("add /status/System\nadd /mergedInput/System srcCli\ndump\n");
  std::istringstream in(text);
  std::ptrdiff_t values = 0;
  for (std::string line; std::getline(in, line);) {
    values += line.starts_with('/') ? 1 : 0;
  }
  EXPECT_EQ(lines, values) << "the same as in text";
}

} // namespace

} // namespace Maintctl::Test
