#include "Dump.h"

#include "CommandList.h"
#include "Output.h"
#include "Tree.h"
#include "Values.h"
#include "Walk.h"
#include "Words.h"

namespace Maintctl {

namespace {

using Zel::AttrRow;
using Zel::Entity;

/// Writes a line for each member, then one for each value that can be written.
class Lines : public Visitor {
public:
  explicit Lines(std::ostream& out) : out_(out) {}

  bool wants(const AttrRow& row) override { return row.isCollection() || row.write != nullptr; }

  void value(const std::string& path, const Zel::ValueRecord& record, const void* value) override {
    out_ << path << ' ' << textForm(record, value) << '\n';
  }

  void member(const std::string& path, const AttrRow& row, const Entity& member) override {
    out_ << path;
    const Zel::TypeTable& table = row.collection->memberTable();
    for (std::size_t at = 0; at < row.collection->arguments.size(); ++at) {
      // Behind the key, the arguments are those of the member's own constructor.
      const AttrRow* const argument = table.row(Zel::constructorArgumentName(table, at + 1));
      Zel::ValueSlot value(*argument->value, [&](void* to) { argument->read(&member, to); });
      out_ << ' ' << textForm(*argument->value, value.at());
    }
    out_ << '\n';
  }

private:
  std::ostream& out_;
};

class Dump : public Command {
public:
  void declare(Parameters& parameters) override {
    parameters.optionalWord(
        "FILE", file_, "Replaced as a whole, once all is written; the standard output without it");
  }

  int run(Context& context) override {
    if (file_.empty() || file_ == "-") {
      dump(context.device(), context.out());
      return exitDone;
    }
    Device& device = context.device(); // before a file is touched
    NewFile file(context.options().inScript ? unquoted(file_) : file_);
    dump(device, file.out());
    file.done();
    return exitDone;
  }

private:
  std::string file_;
};

} // namespace

void dump(Device& device, std::ostream& out) {
  out << "# The tree of a device: members by their paths, and values behind theirs.\n";
  Tree tree(device);
  for (const auto& [name, type] : device.roots()) {
    const std::string path = "/" + segmentOf(Zel::valueRecord<Zel::Name>, &name);
    out << "\n# " << path << ", " << type << '\n';
    Lines lines(out);
    walk(*tree.at(path, Purpose::read).owner, path + "/", lines);
  }
}

CommandEntry dumpCommand() {
  return {"dump", "Write the whole tree as text that load reads back",
          "  maintctl dump units.dump\n"
          "  maintctl dump | grep /state",
          make<Dump>};
}

} // namespace Maintctl
