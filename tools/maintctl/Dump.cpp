#include "Dump.h"

#include "CommandList.h"
#include "Output.h"
#include "Tree.h"
#include "Values.h"
#include "Walk.h"
#include "Words.h"

#include <nlohmann/json.hpp>

namespace Maintctl {

namespace {

using Zel::AttrRow;
using Zel::Entity;

/// Writes a line for each member, then one for each value that can be written.
class DumpLines : public Visitor {
public:
  DumpLines(std::ostream& out, bool isJson) : out_(out), isJson_(isJson) {}

  bool wants(const AttrRow& row) override { return row.isCollection() || row.write != nullptr; }

  void value(const std::string& path, const Zel::ValueRecord& record, const void* value) override {
    if (isJson_) {
      out_ << lineOf({{"path", path}, {"value", jsonOf(record, value)}}) << '\n';
    } else {
      out_ << path << ' ' << textForm(record, value) << '\n';
    }
  }

  void member(const std::string& path, const AttrRow& row, const Entity& member) override {
    std::string texts;
    nlohmann::json values = nlohmann::json::array();
    const Zel::TypeTable& table = row.collection->memberTable();
    for (std::size_t at = 0; at < row.collection->arguments.size(); ++at) {
      // Behind the key, the arguments are those of the member's own constructor.
      const AttrRow* const argument = table.row(Zel::constructorArgumentName(table, at + 1));
      Zel::ValueSlot value(*argument->value, [&](void* to) { argument->read(&member, to); });
      texts += " " + textForm(*argument->value, value.at());
      values.push_back(jsonOf(*argument->value, value.at()));
    }
    out_ << (isJson_ ? lineOf({{"path", path}, {"member", values}}) : path + texts) << '\n';
  }

private:
  std::ostream& out_;
  const bool isJson_;
};

class Dump : public Command {
public:
  void declare(Parameters& parameters) override {
    parameters.optionalWord(
        "FILE", file_, "Replaced as a whole, once all is written; the standard output without it");
  }

  int run(Context& context) override {
    const bool isJson = context.options().json;
    if (file_.empty() || file_ == "-") {
      dump(context.device(), context.out(), isJson);
      return exitDone;
    }
    Device& device = context.device(); // before a file is touched
    NewFile file(context.options().inScript ? unquoted(file_) : file_);
    dump(device, file.out(), isJson);
    file.done();
    return exitDone;
  }

private:
  std::string file_;
};

} // namespace

void dump(Device& device, std::ostream& out, bool isJson) {
  out << (isJson ? ""
                 : "# The tree of a device: members by their paths, and values behind theirs.\n");
  Tree tree(device);
  for (const auto& [name, type] : device.roots()) {
    const std::string path = "/" + segmentOf(Zel::valueRecord<Zel::Name>, &name);
    if (!isJson) {
      out << "\n# " << path << ", " << type << '\n';
    }
    DumpLines lines(out, isJson);
    walk(*tree.at(path, Purpose::read).owner, path + "/", lines);
  }
}

CommandEntry dumpCommand() {
  return {"dump", "Write the whole tree as text that load reads back",
          "  maintctl dump units.dump\n"
          "  maintctl dump | grep /state\n"
          "  maintctl --json dump | jq 'select(.value == \"active\")'\n"
          "\nWith --json it is one object a line, which load does not read.",
          make<Dump>};
}

} // namespace Maintctl
