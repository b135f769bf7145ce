#include "Commands.h"
#include "Untimed.h"

#include <Places.h>
#include <algorithm>

namespace {

using Support::Result;
using TestNet::Commands;
using TestNet::untimed;

/// Whether a program says a line, behind others of which there are not too many.
bool hears(TestNet::Process& program, const std::string& line) {
  for (int passed = 0; passed < 30; ++passed) {
    if (untimed(program.hear()) == line) {
      return true;
    }
  }
  return false;
}

TEST_F(Commands, AServerIsChangedAndRead) {
  const Result result = run("serve && ctl ls && ctl add /status/System &&"
                            "ctl set /status/System/state underMaintenance &&"
                            "ctl get /status/System/state && ctl verify && stop");
  EXPECT_EQ(result.out, "/agentInfo       Maintenance::AgentInfo\n"
                        "/cliInput        Maintenance::Unit::Input\n"
                        "/defaultProfile  Maintenance::Profile::DefaultProfile\n"
                        "/groupToUnit     Maintenance::GroupToUnitDir\n"
                        "/groups          Maintenance::MaintenanceGroup::ConfigDir\n"
                        "/mergedInput     Maintenance::Unit::MergedInputDir\n"
                        "/onBootInput     Maintenance::Unit::Input\n"
                        "/profiles        Maintenance::Profile::ConfigDir\n"
                        "/status          Maintenance::Unit::StatusDir\n"
                        "/unitProfiles    MaintenanceUnitProfile::ConfigDir\n"
                        "/units           Maintenance::Unit::ConfigDir\n"
                        "'underMaintenance'\n" +
                            allEqual());
  EXPECT_EQ(result.err, "");
  EXPECT_EQ(result.status, 0);
}

TEST_F(Commands, AServerEndsCleanlyOnASignal) {
  const Result result = run("serve; stop -INT; echo $?; serve; stop -TERM; echo $?; ls");
  EXPECT_EQ(result.out, "0\n0\nlog\n");
  EXPECT_EQ(result.err, "");
  const std::string log = content("log");
  EXPECT_NE(log.find(" info stopped by Ctrl-C\n"), std::string::npos) << log;
  EXPECT_NE(log.find(" info stopped by SIGTERM\n"), std::string::npos) << log;
}

TEST_F(Commands, NoServerIsSaidSo) {
  const Result result = run("ctl get /status/System/state; echo $?; ctl watch; echo $?");
  EXPECT_EQ(result.out, "6\n6\n");
  EXPECT_EQ(result.err, "maintctl: no server at socket: start one with 'maintctl serve'\n"
                        "maintctl: no server at socket: start one with 'maintctl serve'\n");
}

TEST_F(Commands, ASecondServerOnOnePathIsSaidSo) {
  const Result result = run("serve; ctl serve; echo $?; ctl verify /status; stop");
  EXPECT_EQ(result.out, "1\n/status: equal\n");
  EXPECT_EQ(result.err, "maintctl: a server is running at socket\n");
}

TEST_F(Commands, FindTheServerThatTheEnvironmentNames) {
  const Result result = run("export MAINTCTL_SOCKET=socket\n'" MAINTCTL_PROGRAM
                            "' serve 2>log & server=$!; own() { '" MAINTCTL_PROGRAM "' \"$@\"; }\n"
                            "own wait --live; own add /status/System; own ls /status/status\n"
                            "echo 'ls /status/status' | own run; ctl ls /status/status; "
                            "own --local ls /status/status; stop");
  EXPECT_EQ(result.out, "System  Maintenance::Unit::Status\n"
                        "System  Maintenance::Unit::Status\n"
                        "System  Maintenance::Unit::Status\n");
  EXPECT_EQ(result.err, "");
}

TEST_F(Commands, FindTheUsersOwnServerWithoutAWord) {
  // In the folder of the user, as whom the server runs; of root it is the device's, which a test
  // leaves alone.
  const bool isRoot = ::geteuid() == 0;
  const std::string as = isRoot ? "setpriv --reuid 65534 --regid 65534 --clear-groups " : "";
  if (Support::shell(as + "'" MAINTCTL_PROGRAM "' --version").status != 0) {
    GTEST_SKIP() << "no other user can run " MAINTCTL_PROGRAM;
  }
  const Result result = run(
      "chmod 777 .; export MAINTCTL_SOCKET= XDG_RUNTIME_DIR=\"$PWD\"\n" + as +
      "'" MAINTCTL_PROGRAM "' serve 2>log & server=$!; own() { '" MAINTCTL_PROGRAM "' \"$@\"; }\n"
      "appears log listening; own add /status/System; own ls /status/status; ls *.sock\n"
      "echo 'ls /status/status' | own run; stop");
  EXPECT_EQ(result.out, "System  Maintenance::Unit::Status\nmaintctl.sock\n");
  EXPECT_EQ(result.err, "");
}

TEST_F(Commands, OfSeveralThatSetAValueIfItIsAnotherOneSucceeds) {
  const Result result =
      run("serve; ctl add /status/System\n"
          "for i in 1 2 3 4 5 6; do\n"
          "  { ctl set --if init /status/System/state active 2>err$i; echo $? >status$i; } &\n"
          "  all=\"$all $!\"; done; wait $all\n"
          "cat status? | sort | uniq -c | sed 's/^ *//'; sort -u err?\n"
          "ctl set --if active /status/System/state init; ctl get /status/System/state; stop");
  EXPECT_EQ(result.out,
            "1 0\n5 8\n"
            "maintctl: /status/status/System/state is another than 'init', nothing was written\n"
            "'init'\n");
  EXPECT_EQ(result.err, "");
}

TEST_F(Commands, AValueIsSetIfItIsAnotherOnlyWhereTheServerMayBeWrittenTo) {
  const Result result = run("echo /status/System >tree; serve --read-only --load tree\n"
                            "ctl set --if init /status/System/state active; echo $?\n"
                            "head -c 16001 /dev/zero | tr '\\0' a >long\n"
                            "stop; serve --load tree\n"
                            "ctl set --if '' /status/System/profileName $(cat long); echo $?\n"
                            "ctl get /status/System/profileName; stop");
  EXPECT_EQ(result.out, "5\n4\n''\n");
  EXPECT_EQ(result.err, "maintctl: the server lets /status be read only\n"
                        "maintctl: string of 16001 bytes where at most 16000 are sent\n");
}

TEST_F(Commands, AWaitHearsAtOnceOfWhatItIsNotToBe) {
  const Result result =
      run("serve; ctl add /status/System; ctl set /status/System/state maintenanceModeEnter\n"
          "ctl wait /status/System/state underMaintenance --unless failedEnter & waiting=$!\n"
          "ctl wait /status/System --gone & other=$!\n"
          "ctl set /status/System/state failedEnter; wait $waiting; echo $?\n"
          "ctl del /status/System; wait $other; echo $?; stop");
  EXPECT_EQ(result.out, "1\n0\n");
  EXPECT_EQ(result.err, "maintctl: /status/status/System/state is 'failedEnter'\n");
}

TEST_F(Commands, ServeNeedsASocketAndSensibleOptions) {
  const Result result =
      run("'" MAINTCTL_PROGRAM "' --local serve; echo $?; ctl serve --mode 999; echo $?;"
          "ctl serve --group nobody-at-all; echo $?;"
          "echo nonsense > state; ctl serve --load state; echo $?; ls");
  EXPECT_EQ(result.out, "2\n2\n1\n4\nstate\n");
  EXPECT_EQ(result.err,
            "maintctl: serve needs a socket, leave out --local\n"
            "maintctl: no mode of a file: 999, such as 660\n"
            "maintctl: no group nobody-at-all\n"
            "maintctl: state:1: a line begins with a path or, as a comment, with #, got nonsense; "
            "nothing was loaded\n");
}

TEST_F(Commands, AServerThatIsReadOnlyRefusesBeforeAnythingIsWritten) {
  const Result result = run("serve --read-only; ctl add /status/System; echo $?;"
                            "ctl ls /status/status; stop");
  EXPECT_EQ(result.out, "5\n");
  EXPECT_EQ(result.err, "maintctl: the server lets /status be read only\n");
}

TEST_F(Commands, ADumpLoadedIntoAnotherServerIsEqual) {
  const Result result =
      run("serve; ctl add /status/System; ctl set /status/System/historySize 7;"
          "ctl add /status/System/history/1.5 'a line'; ctl dump state; stop;"
          "serve --load state; ctl dump again; cmp state again; ctl verify /status; stop;"
          "serve; ctl load state; ctl dump third; cmp state third; ctl verify /status; stop");
  EXPECT_EQ(result.out, "/status: equal\n/status: equal\n");
  EXPECT_EQ(result.err, "");
}

TEST_F(Commands, AWatchFollowsOverARestartWithOtherContents) {
  const Result result =
      run("serve; ctl add /status/System; ctl add /status/Linecard3; ctl dump before\n"
          "behind watch /status >watched 2>&1 & watch=$!\n"
          "appears watched 'is live'\n"
          "ctl set /status/System/state underMaintenance; appears watched 'underMaintenance'\n"
          "ctl add /status/Linecard4; appears watched 'Linecard4 added'\n"
          "ctl del /status/Linecard4; appears watched 'Linecard4 deleted'\n"
          "stop -KILL; appears watched 'is stale'\n"
          "grep -v Linecard3 before >after\n"
          "serve --load after; appears watched 'live again'\n"
          "kill -INT $watch; wait $watch; echo $?; stop");
  EXPECT_EQ(result.out, "130\n");
  EXPECT_EQ(result.err, "");
  EXPECT_EQ(untimed(content("watched")),
            "# /status is live\n"
            "/status/status/System/state = 'underMaintenance' (was 'init')\n"
            "/status/status/Linecard4 added\n"
            "/status/status/Linecard4 deleted\n"
            "# /status is stale: the peer has gone\n"
            "/status/status/Linecard3 deleted\n"
            "/status/status/System/state = 'init' (was 'underMaintenance')\n"
            "# /status is live again\n"
            "maintctl: stopped\n");
}

TEST_F(Commands, AWatchTakesInWhatIsOfferedLater) {
  const auto server = TestNet::Place::serve();
  const auto all = maintctl({"watch"});
  ASSERT_TRUE(hears(*all, "# /units is live")) << "the last";
  const auto units = maintctl({"watch", "/units"});
  EXPECT_EQ(untimed(units->hear()), "# /units is live");
  ASSERT_EQ(server->ask("offer later"), "offered");
  EXPECT_EQ(untimed(all->hear()), "# /later is live");
  ASSERT_EQ(server->ask("withdraw later"), "withdrawn");
  EXPECT_EQ(untimed(all->hear()), "# /later is stale: withdrawn by server");
  ASSERT_EQ(server->ask("offer later"), "offered");
  EXPECT_EQ(untimed(all->hear()), "# /later is live again");
  ASSERT_EQ(server->ask("set unit-a 17"), "set");
  EXPECT_EQ(untimed(all->hear()), "/units/status/unit-a added");
  EXPECT_EQ(untimed(units->hear()), "/units/status/unit-a added")
      << "and nothing of what it did not ask for";
}

TEST_F(Commands, AWatchTakesInWhatTheNextServerHas) {
  auto server = start({"--socket", socket(), "serve"}, MAINTCTL_PROGRAM);
  ASSERT_TRUE(server->complains("listening"));
  const Result roots = Support::shell("'" MAINTCTL_PROGRAM "' --socket '" + socket() + "' ls");
  const auto count = std::count(roots.out.begin(), roots.out.end(), '\n');
  ASSERT_GT(count, 1);
  const auto watch = maintctl({"watch"});
  const auto hearOfAll = [&](const std::string& what) {
    for (std::ptrdiff_t heard = 0; heard < count; ++heard) {
      const std::string line = watch->hear();
      ASSERT_TRUE(line.ends_with(what)) << line;
    }
  };
  hearOfAll(" is live");
  server->kill();
  hearOfAll(" is stale: the peer has gone");
  server = TestNet::Place::serve();
  EXPECT_TRUE(hears(*watch, "# /inputs is live"));
}

TEST_F(Commands, AWatchTellsOfItsPathsAloneAndInJson) {
  const Result result = run(
      "serve; ctl add /status/a; ctl add /status/b\n"
      "behind --json watch --initial /status/a/historySize /status/c/group >watched & watch=$!\n"
      "appears watched historySize\n"
      "ctl set /status/b/historySize 5; ctl set /status/a/state active\n"
      "ctl set /status/a/historySize 6; ctl add /status/c; ctl add /status/c/group/groupTypeBgp,x\n"
      "appears watched groupTypeBgp; ctl del /status/a; appears watched deleted\n"
      "kill -INT $watch; wait $watch 2>/dev/null; stop");
  EXPECT_EQ(result.out, "");
  EXPECT_EQ(untimed(content("watched")),
            "{\"path\":\"/status\",\"state\":\"live\"}\n"
            "{\"path\":\"/status/status/a/historySize\",\"value\":12}\n"
            "{\"old\":12,\"path\":\"/status/status/a/historySize\",\"value\":6}\n"
            "{\"added\":true,\"path\":\"/status/status/c\"}\n"
            "{\"path\":\"/status/status/c/group/groupTypeBgp,x\",\"value\":true}\n"
            "{\"deleted\":true,\"path\":\"/status/status/a\"}\n");
}

TEST_F(Commands, AWatchOfWhatCannotBeIsSaidSo) {
  const Result result = run("serve; ctl watch /status/System/stat; echo $?; ctl watch /nothing;"
                            "echo $?; '" MAINTCTL_PROGRAM "' --local watch; echo $?; stop");
  EXPECT_EQ(result.out, "3\n3\n2\n");
  EXPECT_EQ(result.err,
            "maintctl: no attribute stat of /status/status/System, did you mean state?\n"
            "maintctl: no root nothing, 'ls /' lists all\n"
            "maintctl: watch needs a server: nobody else changes a tree of its own\n");
}

TEST_F(Commands, AWaitEndsWhenTheValueIsThere) {
  const Result result =
      run("serve; ctl wait /status/System/state underMaintenance & waiting=$!\n"
          "ctl add /status/System; ctl set /status/System/state active\n"
          "ctl set /status/System/state underMaintenance; wait $waiting; echo $?\n"
          "briefly wait /status/System/state active; echo $?\n"
          "briefly wait /status/Linecard3/historySize 7; echo $?\n"
          "ctl wait /status/System/state asleep; echo $?; ctl wait /status/System active; echo $?\n"
          "ctl wait /status; echo $?; stop");
  EXPECT_EQ(result.out, "0\n7\n7\n4\n2\n2\n");
  EXPECT_EQ(result.err.substr(0, result.err.find("maintctl: bad")),
            "maintctl: /status/status/System/state is 'underMaintenance', not 'active'\n"
            "maintctl: /status/status/Linecard3/historySize is not there, not 7\n");
  EXPECT_NE(result.err.find("maintctl: /status/status/System is no value, 'ls "
                            "/status/status/System' lists what it has\n"
                            "maintctl: wait needs a path and a value, or --gone, or --live\n"),
            std::string::npos)
      << result.err;
}

TEST_F(Commands, AWaitOutlastsAServerThatIsNotThereYet) {
  const Result result =
      run("ctl wait /status/System/historySize 7 & waiting=$!\n"
          "serve; ctl add /status/System; stop -KILL; serve; ctl add /status/System\n"
          "ctl set /status/System/historySize 7; wait $waiting; echo $?; stop\n"
          "briefly wait --live; echo $?");
  EXPECT_EQ(result.out, "0\n7\n");
  EXPECT_EQ(result.err, "maintctl: no server at socket: start one with 'maintctl serve'\n");
}

TEST_F(Commands, ALoadSaysHowFarItCame) {
  const Result result = run("serve; printf '/status/System\\n/status/System/historySize x\\n' >bad;"
                            "ctl load bad; echo $?; ctl ls /status/status; stop");
  EXPECT_EQ(result.out, "4\nSystem  Maintenance::Unit::Status\n");
  EXPECT_EQ(result.err.rfind("maintctl: bad:2: ", 0), 0U) << result.err;
  EXPECT_NE(result.err.find("1 line before it was loaded"), std::string::npos) << result.err;
}

TEST_F(Commands, AScriptOverASocketReadsAndThenWrites) {
  const Result result = run("serve; printf 'add /status/a\\nget /status/a/historySize\\n"
                            "set /status/a/historySize 3\\nget /status/a/historySize\\nverify\\n'"
                            "| ctl run; stop");
  EXPECT_EQ(result.out, "12\n3\n" + allEqual());
  EXPECT_EQ(result.err, "");
}

TEST_F(Commands, AScriptThatGoesOnEndsWhenTheServerHasGone) {
  const Result result =
      run("serve; mkfifo lines; ctl run --keep-going <lines >out 2>err & running=$!\n"
          "exec 3>lines; echo 'get /nowhere' >&3; appears err 'no root nowhere'\n"
          "stop -KILL; serve; printf 'add /status/System\\nadd /status/Linecard3\\n' >&3\n"
          "exec 3>&-; wait $running; echo $?; cat out; ctl ls /status/status; stop");
  EXPECT_EQ(result.out, "6\n");
  EXPECT_EQ(result.err, "");
  const std::string told = content("err");
  EXPECT_TRUE(told.starts_with("<stdin>:1: no root nowhere, ")) << told;
  EXPECT_NE(told.find("\n<stdin>:2: the connection to the server at socket has ended: "),
            std::string::npos)
      << told;
  EXPECT_EQ(std::count(told.begin(), told.end(), '\n'), 2) << told;
}

TEST_F(Commands, ABrokenPipeEndsAWatchQuietly) {
  const Result result = run("serve; ctl add /status/System\n"
                            "mkfifo pipe; behind watch --initial /status >pipe & watch=$!\n"
                            "head -n 1 pipe; ctl set /status/System/historySize 7\n"
                            "wait $watch; echo $?; stop");
  EXPECT_EQ(untimed(result.out), "# /status is live\n141\n");
  EXPECT_EQ(result.err, "");
}

TEST_F(Commands, OfTwoThatAddTheSameEntriesEachIsOfOne) {
  const Result result =
      run("serve; ctl add /status/System\n"
          "seq 300 | sed 's/.*/add \\/status\\/System\\/group\\/groupTypeBgp,& true/' >lines\n"
          "behind run --keep-going lines 2>first & first=$!\n"
          "behind run --keep-going lines 2>second & second=$!\n"
          "wait $first; wait $second; cat first second | grep -c ' is there already$'\n"
          "cat first second | wc -l; ctl get /status/System/group | wc -l\n"
          "ctl add /status/System/group/groupTypeBgp,1 true; echo $?\n"
          "ctl add --may-exist /status/System/group/groupTypeBgp,1 false; echo $?\n"
          "ctl get /status/System/group/groupTypeBgp,1; stop");
  EXPECT_EQ(result.out, "300\n300\n300\n1\n0\ntrue\n");
  EXPECT_EQ(result.err, "maintctl: /status/status/System/group/groupTypeBgp,1 is there already\n");
}

TEST_F(Commands, AServerKilledInTheMidstOfACommandIsSaidSo) {
  // One that does not answer, since it is stopped, and then is no more. The kernel lists those that
  // it has not let in yet under its path, which is this test's alone if it is whole.
  const Result result =
      run("all=$PWD/socket; queued() { grep -cF \" $all\" /proc/net/unix; }\n"
          "'" MAINTCTL_PROGRAM "' --socket $all serve 2>>log & server=$!; ctl wait --live\n"
          "kill -STOP $server; briefly get /status; echo $?; before=$(queued)\n"
          "behind get /status & asking=$!\n"
          "while [ $(queued) -le $before ] && kill -0 $asking; do :; done\n"
          "stop -KILL; wait $asking; echo $?");
  EXPECT_EQ(result.out, "7\n6\n");
  EXPECT_EQ(result.err,
            "maintctl: the server at socket took too long: it has not said what it has, see "
            "--timeout\n"
            "maintctl: the connection to the server at socket has ended: the peer has gone\n");
}

TEST_F(Commands, AServerKilledInMidWalkIsSaidSo) {
  // The walk is longer than what is under way to a client that has been stopped.
  const Result result =
      run("seq 100000 | sed 's,.*,/status/status/unit&,' >state; serve --load state "
          "--log-level debug\n"
          "behind get /status >got & asking=$!\n"
          "until grep -q 'client 2, .*: maintctl mounts status' log; do :; done\n"
          "kill -STOP $asking; stop -KILL; kill -CONT $asking; wait $asking; echo $?\n"
          "ctl get /status; echo $?; cat got");
  EXPECT_EQ(result.out, "6\n6\n");
  EXPECT_EQ(result.err,
            "maintctl: the connection to the server at socket has ended: the peer has gone\n"
            "maintctl: no server at socket: start one with 'maintctl serve'\n");
}

TEST_F(Commands, TheDemonstrationShowsAMirrorThatFollows) {
  const Result result =
      Support::shell("cd \"$(dirname '" MAINTCTL_PROGRAM "')\" && '" DEMO_PROGRAM "' ./maintctl");
  EXPECT_EQ(result.out,
            "$ maintctl serve --load before.state &\n"
            "$ maintctl ls\n"
            "/agentInfo       Maintenance::AgentInfo\n"
            "/cliInput        Maintenance::Unit::Input\n"
            "/defaultProfile  Maintenance::Profile::DefaultProfile\n"
            "/groupToUnit     Maintenance::GroupToUnitDir\n"
            "/groups          Maintenance::MaintenanceGroup::ConfigDir\n"
            "/mergedInput     Maintenance::Unit::MergedInputDir\n"
            "/onBootInput     Maintenance::Unit::Input\n"
            "/profiles        Maintenance::Profile::ConfigDir\n"
            "/status          Maintenance::Unit::StatusDir\n"
            "/unitProfiles    MaintenanceUnitProfile::ConfigDir\n"
            "/units           Maintenance::Unit::ConfigDir\n"
            "$ maintctl ls /status/status\n"
            "Linecard10  Maintenance::Unit::Status\n"
            "Linecard3   Maintenance::Unit::Status\n"
            "System      Maintenance::Unit::Status\n"
            "$ maintctl watch /status &\n"
            "    # /status is live\n"
            "$ maintctl set /status/Linecard3/state maintenanceModeEnter\n"
            "    /status/status/Linecard3/state = 'maintenanceModeEnter' (was 'active')\n"
            "$ maintctl add /status/Linecard11\n"
            "    /status/status/Linecard11 added\n"
            "$ kill -9 SERVER\n"
            "    # /status is stale: the peer has gone\n"
            "$ maintctl serve --load after.state &\n"
            "    /status/status/Linecard11 deleted\n"
            "    /status/status/Linecard10 deleted\n"
            "    /status/status/Linecard3/state = 'underMaintenance' (was 'maintenanceModeEnter')\n"
            "    # /status is live again\n"
            "$ maintctl ls /status/status\n"
            "Linecard3  Maintenance::Unit::Status\n"
            "System     Maintenance::Unit::Status\n"
            "$ maintctl verify /status\n"
            "/status: equal\n"
            "$ maintctl --local run drain.commands\n"
            "'underMaintenance'\n"
            "1  Zel::String  'maintenance asked for by operator \\'mkr\\''\n"
            "Linecard3  Maintenance::Unit::Status\n"
            "System     Maintenance::Unit::Status\n");
  EXPECT_EQ(result.err, "");
  EXPECT_EQ(result.status, 0);
}

} // namespace
