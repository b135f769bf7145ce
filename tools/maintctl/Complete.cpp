#include "Complete.h"

#include "CommandLine.h"
#include "CommandList.h"
#include "Members.h"
#include "Tree.h"
#include "Values.h"
#include "Words.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <filesystem>

namespace Maintctl {

namespace {

using Zel::AttrKind;
using Zel::AttrRow;

using Names = std::vector<std::string>;

void addItems(Names& names, const Zel::Entity& owner, const AttrRow& row) {
  for (const Item& item : itemsOf(owner, row)) {
    if (!item.segment.empty()) { // which would look as if the path ended
      names.push_back(item.segment + (row.kind == AttrKind::instantiating ? "/" : ""));
    }
  }
}

/// What may follow a path that ends in "/".
Names below(Tree& tree, const std::string& path, Device& device) {
  Names names;
  if (path == "/") {
    for (const auto& [name, type] : device.roots()) {
      names.push_back(segmentOf(Zel::valueRecord<Zel::Name>, &name) + "/");
    }
    return names;
  }
  // With the "/" it would be that of a member without a name.
  const Target target = tree.at(path.substr(0, path.size() - 1), Purpose::read);
  if (target.kind == Target::collection) {
    addItems(names, *target.owner, *target.row);
  } else if (target.kind == Target::entity) {
    for (const AttrRow* const row : rowsOf(*target.owner)) {
      names.push_back(std::string(row->name) + (row->isCollection() ? "/" : ""));
    }
    if (const AttrRow* const only = onlyCollection(*target.owner)) {
      addItems(names, *target.owner, *only);
    }
  }
  return names;
}

/// Files, as far as they go on from `start`; what begins with a dot only for one that does.
Names filesAt(const std::string& start) {
  const std::size_t slash = start.rfind('/');
  const std::string folder = slash == start.npos ? "" : start.substr(0, slash + 1);
  const std::string name = start.substr(folder.size());
  Names names;
  for (const auto& entry : std::filesystem::directory_iterator(folder.empty() ? "." : folder)) {
    const std::string found = entry.path().filename();
    std::error_code none;
    if (found.starts_with(name) && (name.starts_with('.') || !found.starts_with('.'))) {
      names.push_back(folder + found + (entry.is_directory(none) ? "/" : ""));
    }
  }
  std::sort(names.begin(), names.end());
  return names;
}

/// The names of a value, where it has some.
Names valuesAt(Tree& tree, const std::string& path) {
  const Target target = tree.at(path, Purpose::read);
  return target.row != nullptr && target.row->value != nullptr ? namesOf(*target.row->value)
                                                               : Names();
}

bool takesUnits(const std::string& command) { return command == "show" || command == "history"; }

/// The names of units, which some commands take without the path.
Names unitNames(Device& device) {
  Names names;
  for (const Member& unit : membersAt(device, {})) {
    names.push_back(unit.name);
  }
  return names;
}

Names startingWith(const std::string& start, const Names& names, const std::string& lead = "") {
  Names found;
  for (const std::string& name : names) {
    if (std::string_view(lead + name).starts_with(start)) {
      found.push_back(lead + name);
    }
  }
  return found;
}

class Complete : public Command {
public:
  void declare(Parameters& parameters) override {
    parameters.words("WORD", words_, "The words of a command line, the last to be completed");
  }

  int run(Context& context) override {
    if (words_.empty()) {
      words_.emplace_back();
    } else if (context.options().inScript) {
      words_.back() = unquoted(words_.back());
    }
    const Names names = completions(words_, false, [&]() -> Device& { return context.device(); });
    if (context.options().json) {
      context.out() << lineOf(names) << '\n';
      return exitDone;
    }
    for (const std::string& name : names) {
      context.out() << name << '\n';
    }
    return exitDone;
  }

private:
  Names words_;
};

} // namespace

Names completions(const Names& words, bool inScript, const std::function<Device&()>& device) {
  const std::string& start = words.back();
  const Names before(words.begin(), words.end() - 1);
  const std::size_t place = placeOfCommand(before);
  const std::string command = place < before.size() ? before[place] : "";
  if (start.starts_with('-')) {
    return startingWith(start, optionNames(command, inScript));
  }
  try {
    if (inScript && (command == "load" || command == "dump")) { // a shell completes them itself
      return filesAt(start);
    }
    if (takesUnits(command) && !start.starts_with('/')) {
      return startingWith(start, unitNames(device()));
    }
    if (start.starts_with('/')) {
      Tree tree(device());
      const std::string path = start.substr(0, start.rfind('/') + 1);
      return startingWith(start, below(tree, path, device()), path);
    }
    const auto path = std::find_if(before.begin(), before.end(),
                                   [](const std::string& word) { return word.starts_with('/'); });
    const bool takesValue =
        path != before.end() &&
        (command == "wait" ||
         (command == "set" && (path + 1 == before.end() || before.back() == "--if")));
    if (takesValue) {
      Tree tree(device());
      return startingWith(start, valuesAt(tree, *path));
    }
  } catch (const std::exception&) {
    return {}; // nobody wants to read it in the midst of a line
  }
  if (command.empty() || (command == "help" && before.size() == place + 1)) {
    return startingWith(start, commandNames(inScript));
  }
  return start.empty() && entryOf(command, inScript) != nullptr ? Names{"/"} : Names();
}

CommandEntry completeCommand() {
  return {"complete",
          "Print what the last of some words could become",
          "  maintctl complete /sta\n"
          "  maintctl complete -- set /status/System/state u",
          make<Complete>,
          true,
          false};
}

} // namespace Maintctl
