#include "CommandList.h"
#include "EntityJson.h"
#include "Failure.h"
#include "Members.h"
#include "Plain.h"
#include "Tree.h"
#include "Values.h"
#include "Words.h"

#include <nlohmann/json.hpp>

namespace Maintctl {

namespace {

using Zel::AttrRow;
using Zel::Entity;

/// The attribute of a name, if the entity has it.
const AttrRow* rowOf(const Entity& entity, std::string_view name) {
  for (const AttrRow* const row : rowsOf(entity)) {
    if (row->name == name) {
      return row;
    }
  }
  return nullptr;
}

std::string textOf(const Entity& entity, const char* name) {
  const AttrRow* const row = rowOf(entity, name);
  return row == nullptr || row->isCollection() ? "" : plainText(&entity, *row);
}

/// One field of an attribute that is a value with attributes.
std::string fieldOf(const Entity& entity, const char* name, const char* field) {
  const AttrRow* const row = rowOf(entity, name);
  if (row == nullptr || row->isCollection() || row->value->table == nullptr) {
    return "";
  }
  Zel::ValueSlot value(*row->value, [&](void* to) { row->read(&entity, to); });
  const AttrRow* const one = row->value->table().row(field);
  return one == nullptr ? "" : plainText(value.at(), *one);
}

std::string keyOf(const AttrRow& row, const Item& item) {
  Zel::ValueSlot key(*row.key);
  readKey(item.segment, *row.key, key.at(), std::string(row.name));
  return plainKey(*row.key, key.at());
}

bool isFalse(const AttrRow& row, const Item& item) {
  return row.value != nullptr && row.value->name == Zel::valueName<bool>() &&
         !*static_cast<const bool*>(row.collection->entryValue(item.held.ptr()));
}

/// The keys of a set that are in it.
std::string membersOf(const Entity& entity, const char* name) {
  const AttrRow* const row = rowOf(entity, name);
  std::string text;
  if (row != nullptr && row->isCollection()) {
    for (const Item& item : itemsOf(entity, *row)) {
      if (!isFalse(*row, item)) {
        text.append(text.empty() ? "" : " ").append(keyOf(*row, item));
      }
    }
  }
  return text;
}

/// A line for each unit.
void printUnits(const std::vector<Member>& units, Context& context) {
  Table table;
  std::vector<Cell> head;
  for (const char* const name :
       {"UNIT", "STATE", "SINCE", "REASON", "GROUPS", "OUT", "IN", "VIOLATIONS", "OVER LIMIT"}) {
    head.emplace_back(name, Cell::bold);
  }
  table.add(std::move(head));
  for (const Member& unit : units) {
    const Entity& entity = *unit.entity;
    const std::string state = textOf(entity, "state");
    table.add({unit.name,
               {state, colourOf(state)},
               textOf(entity, "timeOfStateChange"),
               textOf(entity, "reason"),
               membersOf(entity, "group"),
               fieldOf(entity, "aggTrafficRate", "outBitsRate"),
               fieldOf(entity, "aggTrafficRate", "inBitsRate"),
               textOf(entity, "totalIntfTrafficViolations"),
               {membersOf(entity, "intfsViolatingTrafficThreshold"), Cell::red}});
  }
  table.print(context.out(), Screen::ofOutput());
}

/// What is in a collection, a line each; what is in a set, on one.
void addCollection(Table& table, const Entity& entity, const AttrRow& row) {
  std::string label(row.name);
  std::string set;
  const bool isSet = row.value == nullptr || row.value->name == Zel::valueName<bool>();
  for (const Item& item : itemsOf(entity, row)) {
    const std::string key = keyOf(row, item);
    if (isSet) {
      set.append(set.empty() ? "" : ", ").append(key).append(isFalse(row, item) ? " (false)" : "");
    } else {
      const void* const value = row.collection->entryValue(item.held.ptr());
      table.add({"  " + std::exchange(label, ""), key + "  " + plainText(*row.value, value)});
    }
  }
  if (!label.empty()) {
    table.add({"  " + label, set});
  }
}

/// All attributes, a line each.
void printWhole(const Member& one, Context& context) {
  const Screen screen = Screen::ofOutput();
  context.out() << Cell(one.path, Cell::bold).onScreen(screen) << '\n';
  Table table(Table::goesOn);
  for (const AttrRow* const row : rowsOf(*one.entity)) {
    if (row->isCollection()) {
      addCollection(table, *one.entity, *row);
    } else {
      const std::string text = plainText(one.entity.ptr(), *row);
      table.add({"  " + std::string(row->name),
                 {text, row->value->enumeration != nullptr ? colourOf(text) : Cell::plain}});
    }
  }
  table.print(context.out(), screen);
}

class Show : public Command {
public:
  void declare(Parameters& parameters) override {
    parameters.words("UNIT", units_,
                     "Of which to show all, by name or path; a line for each unit without it");
  }

  int run(Context& context) override {
    const std::vector<Member> units = membersAt(context.device(), units_);
    if (context.options().json) {
      nlohmann::json all = nlohmann::json::array();
      for (const Member& unit : units) {
        nlohmann::json one = jsonOf(*unit.entity);
        one["path"] = unit.path;
        all.push_back(std::move(one));
      }
      context.out() << lineOf(all) << '\n';
    } else if (units_.empty()) {
      printUnits(units, context);
    } else {
      for (const Member& unit : units) {
        printWhole(unit, context);
      }
    }
    return exitDone;
  }

private:
  std::vector<std::string> units_;
};

} // namespace

CommandEntry showCommand() {
  return {"show", "Show units as people read them: state, since when, why, traffic",
          "  maintctl show\n"
          "  maintctl show System Linecard3\n"
          "  maintctl --json show | jq '.[].state'\n"
          "  maintctl --types libfan.so show /fans/left\n"
          "\nTimes are local. What is printed is not read back, see ls and get for that.",
          make<Show>};
}

} // namespace Maintctl
