// replay: reads a journal of a device's maintenance into the model, and prints what the model tells
// its notifiees. Begin with Model.h and Watch.h to learn the library; UnitCommands.cpp writes, and
// UnitWatch.cpp and Report.cpp read.

#include "Journal.h"
#include "Report.h"

#include <cerrno>
#include <csignal>
#include <fstream>
#include <iostream>
#include <system_error>

namespace {

constexpr std::string_view help = R"(usage: replay FILE
       replay -
       replay --help

Replays a journal of a device's maintenance, from FILE or from standard input,
and prints each change as the model tells it; at the end, the units and the
profiles in tables, and the history of each unit.

One line is one command, a time first. # begins a comment. What holds blanks
stands in "quotes", with \" and \\ inside. Lines are replayed in the order in
which they stand, whatever their times. Of a unit's history the newest lines
are kept, 12 unless it says otherwise, and one for each time.

  TIME profile TYPE NAME add|remove
  TIME default-profile NAME
  TIME unit NAME add TYPE
  TIME unit NAME remove
  TIME unit NAME state STATE [by REASON]
  TIME unit NAME profile NAME
  TIME unit NAME group TYPE NAME add|remove
  TIME unit NAME rates in BITS-PER-SECOND out BITS-PER-SECOND
  TIME unit NAME violation INTERFACE begin|end
  TIME unit NAME history TEXT
  TIME unit NAME history-size LINES
  TIME unit NAME generation NUMBER
  TIME unit NAME on-boot-exit TIME
  TIME unit NAME stage-manager enter|exit GENERATION

Example:

  2026-03-14T22:00:00 unit Linecard3 add dynamic
  2026-03-14T22:00:05 unit Linecard3 state maintenanceModeEnter by srcCli
  2026-03-14T22:00:05 unit Linecard3 history "drain for fan tray swap"  # by hand

Exit status:
  0  every line was replayed
  1  wrong usage, the journal could not be read, or the output not written
  2  a line is bad: the lines before it were replayed, those after it were not
)";

/// Replays all lines, or those before the first bad one. Yields the exit status.
int replayAll(std::istream& in, const std::string& name, Replay::Journal& journal) {
  std::string line;
  // There is no use in going on once the output is gone.
  for (unsigned long number = 1; std::cout && std::getline(in, line); ++number) {
    try {
      journal.replay(line);
    } catch (const Replay::Mismatch& mismatch) {
      std::cout.flush(); // what was printed comes before the complaint
      std::cerr << name << ':' << number << ": expected " << mismatch.expected << ", got "
                << Replay::printable(mismatch.got) << '\n';
      return 2;
    }
  }
  if (in.bad()) {
    std::cout.flush();
    std::cerr << "replay: cannot read " << name << '\n';
    return 1;
  }
  return 0;
}

int replayFile(const std::string& file) {
  std::ifstream input;
  if (file != "-") {
    errno = 0;
    input.open(file, std::ios::binary);
    if (!input) {
      std::cerr << "replay: cannot open " << file << ": " << std::generic_category().message(errno)
                << '\n';
      return 1;
    }
  }
  Replay::Journal journal(std::cout);
  const int status =
      file == "-" ? replayAll(std::cin, "<stdin>", journal) : replayAll(input, file, journal);
  Replay::report(std::cout, journal.model());
  return status;
}

int run(int argc, char** argv) {
  const std::string argument = argc == 2 ? argv[1] : "";
  if (argument == "--help" || argument == "-h") {
    std::cout << help;
    return 0;
  }
  if (argument.empty() || (argument[0] == '-' && argument != "-")) {
    std::cerr << "replay: expected one FILE, - or --help\n";
    return 1;
  }
  return replayFile(argument);
}

} // namespace

int main(int argc, char** argv) {
  // A reader that goes away shows as a failed write, told below.
  std::signal(SIGPIPE, SIG_IGN);
  std::ios::sync_with_stdio(false);
  try {
    const int status = run(argc, argv);
    if (!std::cout.flush()) {
      std::cerr << "replay: cannot write the output\n";
      return 1;
    }
    return status;
  } catch (const std::exception& failure) {
    std::cerr << "replay: " << failure.what() << '\n';
    return 1;
  }
}
