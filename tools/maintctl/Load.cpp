#include "Load.h"

#include "Change.h"
#include "CommandList.h"
#include "Guard.h"
#include "Input.h"
#include "LocalDevice.h"
#include "Progress.h"
#include "Words.h"

#include <iostream>
#include <sstream>

namespace Maintctl {

namespace {

constexpr std::string_view separators = " \t\r";

std::string_view trimmed(std::string_view text) {
  const std::size_t first = text.find_first_not_of(separators);
  return first == text.npos ? std::string_view()
                            : text.substr(first, text.find_last_not_of(separators) + 1 - first);
}

/// Whether what stands behind a path is a list of arguments; else it is one value, blanks and all.
bool takesArguments(const Target& target) {
  return target.kind == Target::entity ||
         (target.kind == Target::entry && target.row->kind == Zel::AttrKind::instantiating);
}

void apply(Tree& tree, std::string_view line) {
  if (!line.starts_with('/')) {
    throw Failure(exitBadValue,
                  "a line begins with a path or, as a comment, with #, got " + printable(line));
  }
  const std::string_view path = line.substr(0, line.find_first_of(separators));
  const std::string_view rest = trimmed(line.substr(path.size()));
  const Target target = tree.at(std::string(path), Purpose::add);
  std::vector<std::string> arguments;
  if (takesArguments(target)) {
    arguments = wordsOf(rest);
  } else if (!rest.empty()) {
    arguments.emplace_back(rest);
  }
  put(target, arguments);
}

std::string howFar(std::size_t applied) {
  return applied == 0 ? "nothing was loaded"
                      : std::to_string(applied) + (applied == 1 ? " line" : " lines") +
                            " before it " + (applied == 1 ? "was" : "were") + " loaded";
}

/// Bad lines, and lines that do not fit the tree, are all bad lines of the file.
ExitCode codeFor(ExitCode code) {
  return code == exitUsage || code == exitNotFound ? exitBadValue : code;
}

/// Applies the lines that are left, and counts those that it has applied. A `Failure` says where it
/// stopped.
void applyAll(Device& device, std::istream& in, const std::string& name, std::size_t size,
              std::size_t& applied) {
  Tree tree(device);
  Progress progress("loading " + name, size);
  std::size_t number = 0;
  try {
    for (std::string text; std::getline(in, text);) {
      ++number;
      progress.add(text.size() + 1);
      const std::string_view line = trimmed(text);
      if (!line.empty() && !line.starts_with('#')) {
        apply(tree, line);
        ++applied;
      }
    }
  } catch (...) {
    const Failure failure = currentFailure();
    throw Failure(codeFor(failure.code()),
                  name + ":" + std::to_string(number) + ": " + failure.what());
  }
  if (in.bad()) {
    throw Failure(exitFile, "cannot read " + name + " to its end");
  }
}

class Load : public Command {
public:
  void declare(Parameters& parameters) override {
    parameters.word("FILE", file_, "What dump has written; - for the standard input");
  }

  int run(Context& context) override {
    loadFile(context.device(), context.options().inScript ? unquoted(file_) : file_);
    return exitDone;
  }

private:
  std::string file_;
};

} // namespace

std::size_t load(Device& device, std::istream& in, const std::string& name, std::size_t size) {
  std::size_t applied = 0;
  try {
    applyAll(device, in, name, size, applied);
  } catch (const Failure& failure) {
    try {
      device.flush(); // so that what is said to be loaded is
    } catch (const std::exception&) {
      applied = 0; // nobody knows
    }
    throw Failure(failure.code(), failure.what() + ("; " + howFar(applied)));
  }
  device.flush();
  return applied;
}

std::size_t loadFile(Device& device, const std::string& name) {
  if (name == "-") {
    return load(device, std::cin, "<stdin>");
  }
  std::ifstream in = openedFile(name);
  in.seekg(0, std::ios::end);
  const std::streamoff size = in.tellg(); // -1 of a pipe
  in.clear();
  in.seekg(0);
  in.clear();
  return load(device, in, name, size > 0 ? static_cast<std::size_t>(size) : 0);
}

std::size_t loadAllOrNothing(Device& device, const std::string& name) {
  std::stringstream content;
  {
    const std::ifstream in = openedFile(name);
    content << in.rdbuf();
    if (in.bad() || content.bad()) {
      throw Failure(exitFile, "cannot read " + name + " to its end; " + howFar(0));
    }
  }
  try {
    LocalDevice trial;
    const Zel::Dir::Active references(trial.dir());
    std::size_t applied = 0;
    applyAll(trial, content, name, 0, applied);
  } catch (const Failure& failure) {
    throw Failure(failure.code(), failure.what() + ("; " + howFar(0)));
  }
  content.clear();
  content.seekg(0);
  return load(device, content, name);
}

CommandEntry loadCommand() {
  return {"load", "Read what dump has written into the tree, on top of what is there",
          "  maintctl load units.dump\n"
          "  maintctl --socket /run/other.sock dump | maintctl load -",
          make<Load>};
}

} // namespace Maintctl
