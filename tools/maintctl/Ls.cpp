#include "CommandList.h"
#include "Table.h"
#include "Tree.h"
#include "Values.h"

#include <Zel/ZelType>

#include <nlohmann/json.hpp>

#include <algorithm>

namespace Maintctl {

namespace {

using nlohmann::json;
using Zel::AttrKind;
using Zel::AttrRow;
using Zel::Entity;
using Zel::ValueSlot;

/// A line of the list: a name, a type, and the value or how many there are.
struct Line {
  std::string name;
  std::string type;
  std::string detail;
  json forMachines;
};

std::string counted(unsigned count, const char* one, const char* many) {
  return std::to_string(count) + " " + (count == 1 ? one : many);
}

Line lineOfValue(const std::string& name, const Zel::ValueRecord& record, const void* value,
                 bool isWritable) {
  const std::string type(record.name);
  return {name, type, textForm(record, value) + (isWritable ? "" : " (read-only)"),
          json{{"name", name},
               {"type", type},
               {"writable", isWritable},
               {"value", jsonOf(record, value)}}};
}

Line lineOfEntity(const std::string& name, const std::string& type) {
  return {name, type, "", json{{"name", name}, {"type", type}}};
}

Line lineOfCollection(const Entity& owner, const AttrRow& row) {
  const bool hasMembers = row.kind == AttrKind::instantiating;
  const std::string name = std::string(row.name) + "/";
  const std::string type(hasMembers ? row.collection->memberTable().name : row.value->name);
  const std::string key(row.key->name);
  const unsigned count = row.collection->count(&owner);
  return {name, type + " by " + key,
          hasMembers ? counted(count, "member", "members") : counted(count, "entry", "entries"),
          json{{"name", name}, {"type", type}, {"key", key}, {"count", count}}};
}

Line lineOfAttribute(const Entity& owner, const AttrRow& row) {
  ValueSlot value(*row.value, [&](void* to) { row.read(&owner, to); });
  return lineOfValue(std::string(row.name), *row.value, value.at(), row.write != nullptr);
}

void addItems(std::vector<Line>& lines, const Entity& owner, const AttrRow& row,
              const std::string& prefix) {
  for (const Item& item : itemsOf(owner, row)) {
    const std::string name = prefix + item.segment;
    if (row.kind == AttrKind::instantiating) {
      lines.push_back(lineOfEntity(name, std::string(item.held->fwkType()->fullName().view())));
    } else {
      lines.push_back(
          lineOfValue(name, *row.value, row.collection->entryValue(item.held.ptr()), true));
    }
  }
}

std::vector<Line> linesOfEntity(const Entity& entity) {
  std::vector<Line> lines;
  for (const AttrRow* const row : rowsOf(entity)) {
    if (!row->isCollection()) {
      lines.push_back(lineOfAttribute(entity, *row));
      continue;
    }
    lines.push_back(lineOfCollection(entity, *row));
    if (row->kind == AttrKind::instantiating) {
      addItems(lines, entity, *row, std::string(row->name) + "/");
    }
  }
  return lines;
}

std::vector<Line> linesOf(const Target& target, Device& device) {
  std::vector<Line> lines;
  switch (target.kind) {
  case Target::top:
    for (const auto& [name, type] : device.roots()) {
      lines.push_back(lineOfEntity("/" + segmentOf(Zel::valueRecord<Zel::Name>, &name),
                                   std::string(type.view())));
    }
    break;
  case Target::entity:
    lines = linesOfEntity(*target.owner);
    break;
  case Target::attribute:
    lines.push_back(lineOfAttribute(*target.owner, *target.row));
    break;
  case Target::collection:
    addItems(lines, *target.owner, *target.row, "");
    break;
  case Target::entry: {
    if (!target.isThere()) {
      noneThere(target);
    }
    const AttrRow& row = *target.row;
    ValueSlot key(*row.key);
    readKey(target.segment, *row.key, key.at(), "the key in " + target.path());
    const Zel::PtrInterface* const entry = row.collection->entry(target.owner.ptr(), key.at());
    lines.push_back(lineOfValue(segmentOf(*row.key, key.at()), *row.value,
                                row.collection->entryValue(entry), true));
  }
  }
  return lines;
}

void print(std::ostream& out, const std::vector<Line>& lines) {
  Table table;
  for (const Line& line : lines) {
    table.add({line.name, line.type, line.detail});
  }
  table.print(out, Screen::ofOutput());
}

class Ls : public Command {
public:
  void declare(Parameters& parameters) override {
    parameters.optionalWord("PATH", path_, "Where to look; / without it, which lists the roots");
  }

  int run(Context& context) override {
    const Target target = Tree(context.device()).at(path_, Purpose::read);
    std::vector<Line> lines = linesOf(target, context.device());
    if (!context.options().json) {
      print(context.out(), lines);
      return exitDone;
    }
    json all = json::array();
    for (Line& line : lines) {
      all.push_back(std::move(line.forMachines));
    }
    context.out() << lineOf(all) << '\n';
    return exitDone;
  }

private:
  std::string path_ = "/";
};

} // namespace

CommandEntry lsCommand() {
  return {"ls", "List roots, members, and attributes with type and value",
          "  maintctl ls\n"
          "  maintctl ls /status\n"
          "  maintctl ls /status/System",
          make<Ls>};
}

} // namespace Maintctl
