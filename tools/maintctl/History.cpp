#include "CommandList.h"
#include "Failure.h"
#include "Members.h"
#include "Plain.h"
#include "Tree.h"
#include "Values.h"

#include <nlohmann/json.hpp>

namespace Maintctl {

namespace {

using nlohmann::json;
using Zel::AttrRow;

/// The lines of an entity's history: the collection of that name, by time.
const AttrRow& historyOf(const Member& unit) {
  for (const AttrRow* const row : rowsOf(*unit.entity)) {
    if (row->name == "history" && row->kind == Zel::AttrKind::ordered &&
        row->key->name == Zel::valueName<double>()) {
      return *row;
    }
  }
  throw Failure(exitNotFound,
                unit.path + " has no history, 'ls " + unit.path + "' lists what it has");
}

class History : public Command {
public:
  void declare(Parameters& parameters) override {
    parameters.word("UNIT", unit_, "Its name or path");
  }

  int run(Context& context) override {
    const Member unit = membersAt(context.device(), {unit_}).front();
    const AttrRow& row = historyOf(unit);
    Table table(Table::goesOn);
    json all = json::array();
    for (const Item& item : itemsOf(*unit.entity, row)) {
      Zel::ValueSlot time(*row.key);
      readKey(item.segment, *row.key, time.at(), unit.path);
      const void* const value = row.collection->entryValue(item.held.ptr());
      if (context.options().json) {
        all.push_back(json{{"time", jsonOf(*row.key, time.at())},
                           {std::string("text"), jsonOf(*row.value, value)}});
      } else {
        table.add({{plainKey(*row.key, time.at()), Cell::faint}, plainText(*row.value, value)});
      }
    }
    if (context.options().json) {
      context.out() << lineOf(all) << '\n';
    } else {
      table.print(context.out(), Screen::ofOutput());
    }
    return exitDone;
  }

private:
  std::string unit_;
};

} // namespace

CommandEntry historyCommand() {
  return {"history", "Print what has happened to a unit, and when",
          "  maintctl history System\n"
          "  maintctl --json history Linecard3 | jq '.[-1]'",
          make<History>};
}

} // namespace Maintctl
