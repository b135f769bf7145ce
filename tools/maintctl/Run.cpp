#include "CommandLine.h"
#include "CommandList.h"
#include "Complete.h"
#include "Editor.h"
#include "Guard.h"
#include "Input.h"
#include "Lines.h"
#include "Utf8.h"
#include "WholeContext.h"
#include "Words.h"

#include <unistd.h>

#include <functional>
#include <iostream>

namespace Maintctl {

namespace {

/// A line's command runs with the line's own options.
class LineContext : public Context {
public:
  LineContext(const Options& options, Context& outer)
      : Context(options, outer.out()), outer_(outer) {}
  Device& device() override { return outer_.device(); }

private:
  Context& outer_;
};

bool isTerminal() { return isatty(STDIN_FILENO) != 0 && isatty(STDOUT_FILENO) != 0; }

class Run : public Command {
public:
  void declare(Parameters& parameters) override {
    parameters.optionalWord("FILE", file_,
                            "One command a line; the standard input without it, or for -");
    parameters.flag("keep-going", keepGoing_, "Go on behind a line that fails");
  }

  int run(Context& context) override {
    if (file_.empty() && isTerminal()) {
      isTyped_ = true;
      Options options = context.options();
      options.isTyped = true;
      WholeContext renewed(options, context.out(), WholeContext::renewed);
      const bool isOwn = context.options().socket.empty();
      Editor editor(
          isOwn ? "maintctl (local)> " : "maintctl> ", [&](const std::vector<std::string>& words) {
            return completions(words, true, [&]() -> Device& { return renewed.device(); });
          });
      runAll(editor, renewed, [&] {
        if (renewed.takeRenewed()) {
          std::cerr << "connected again to " + shown(options.socket) + "\n";
        }
      });
      return exitDone; // each failure has been seen
    }
    if (file_.empty() || file_ == "-") {
      FileLines lines(std::cin, "<stdin>");
      return runAll(lines, context);
    }
    std::ifstream in = openedFile(file_);
    FileLines lines(in, file_);
    return runAll(lines, context);
  }

private:
  /// The status of the first line that failed; of one that found no server, where nobody is there
  /// to start one. What `after` says of a line comes before what the line has printed.
  int runAll(Lines& lines, Context& context, const std::function<void()>& after = {}) {
    int status = exitDone;
    for (std::string line; lines.next(line);) {
      const int code = runGuarded(line, lines, context, after);
      if (code == quit) {
        break;
      }
      if (code != exitDone) {
        status = status == exitDone || code == exitNoServer ? code : status;
        if (!isTyped_ && (!keepGoing_ || code == exitNoServer)) {
          break;
        }
      }
    }
    return status;
  }

  /// One line, with its complaint if there is one.
  int runGuarded(const std::string& line, const Lines& lines, Context& context,
                 const std::function<void()>& after) {
    int code = exitDone;
    std::string complaint;
    try {
      code = runLine(line, context);
      if (code != exitDone && code != quit) {
        complaint = "ended with status " + std::to_string(code);
      }
    } catch (...) {
      const Failure failure = currentFailure();
      if (failure.code() == exitPipe) {
        throw;
      }
      code = failure.code();
      complaint = failure.what();
    }
    if (after) {
      after();
    }
    context.out().flush(); // what was printed comes before the complaint
    if (isTyped_ && code == exitStopped) {
      std::cerr << '\n'; // behind what the terminal shows of Ctrl-C
    } else if (!complaint.empty()) {
      std::cerr << shown(lines.where() + complaint) << '\n';
    }
    return code;
  }

  int runLine(const std::string& line, Context& context) const {
    const std::vector<std::string> words = wordsOf(line);
    if (words.empty()) {
      return exitDone;
    }
    if (isTyped_ && (words[0] == "quit" || words[0] == "exit")) {
      return quit;
    }
    Options options = context.options();
    options.inScript = true;
    const auto command = commandOf(words, options, context.out());
    if (command == nullptr) {
      return exitDone;
    }
    LineContext own(options, context);
    return command->run(own);
  }

  static constexpr int quit = -1;

  std::string file_;
  bool keepGoing_ = false;
  bool isTyped_ = false;
};

} // namespace

bool FileLines::next(std::string& line) {
  ++number_;
  if (std::getline(in_, line)) {
    return true;
  }
  if (in_.bad()) {
    throw Failure(exitFile, "cannot read " + name_ + " to its end");
  }
  return false;
}

CommandEntry runCommand() {
  return {"run",
          "Run commands, one a line, from a file, a pipe or a terminal",
          "  maintctl run commands.txt\n"
          "  maintctl run --keep-going < commands.txt\n"
          "  maintctl run",
          make<Run>,
          false,
          true,
          DefaultTree::own};
}

} // namespace Maintctl
