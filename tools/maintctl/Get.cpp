#include "CommandList.h"
#include "Commands.h"
#include "EntityJson.h"
#include "Tree.h"
#include "Values.h"
#include "Walk.h"

#include <nlohmann/json.hpp>

namespace Maintctl {

namespace {

using nlohmann::json;
using Zel::AttrRow;
using Zel::Entity;
using Zel::ValueSlot;

class GetLines : public Visitor {
public:
  explicit GetLines(std::ostream& out) : out_(out) {}

  bool wants(const AttrRow& /*row*/) override { return true; }
  void value(const std::string& path, const Zel::ValueRecord& record, const void* value) override {
    out_ << path << " = " << textForm(record, value) << '\n';
  }
  void member(const std::string& /*path*/, const AttrRow& /*row*/,
              const Entity& /*member*/) override {}

private:
  std::ostream& out_;
};

/// What is under the key of an entry, in a slot.
template <class Use>
void withEntry(const Target& target, const Use& use) {
  if (!target.isThere()) {
    noneThere(target);
  }
  const AttrRow& row = *target.row;
  ValueSlot key(*row.key);
  readKey(target.segment, *row.key, key.at(), "the key in " + target.path());
  ValueSlot value(*row.value,
                  [&](void* to) { row.collection->read(target.owner.ptr(), key.at(), to); });
  use(*row.value, value.at());
}

class Get : public Command {
public:
  void declare(Parameters& parameters) override {
    parameters.word("PATH", path_, "Of a value, a collection, a member or a root");
  }

  int run(Context& context) override {
    Tree tree(context.device());
    const Target target = tree.at(path_, Purpose::read);
    if (context.options().json) {
      context.out() << lineOf(whole(target, tree, context.device())) << '\n';
    } else {
      print(target, tree, context);
    }
    return exitDone;
  }

private:
  /// Every root's name, once it is in step.
  static std::vector<std::pair<std::string, Zel::Ptr<Entity>>> roots(Tree& tree, Device& device) {
    std::vector<std::pair<std::string, Zel::Ptr<Entity>>> found;
    for (const auto& [name, type] : device.roots()) {
      const std::string segment = segmentOf(Zel::valueRecord<Zel::Name>, &name);
      found.emplace_back(segment, tree.at("/" + segment, Purpose::read).owner);
    }
    return found;
  }

  static json whole(const Target& target, Tree& tree, Device& device) {
    json result;
    switch (target.kind) {
    case Target::top:
      result = json::object();
      for (const auto& [segment, root] : roots(tree, device)) {
        result[segment] = jsonOf(*root);
      }
      break;
    case Target::entity:
      result = jsonOf(*target.owner);
      break;
    case Target::entry:
      withEntry(target, [&](const Zel::ValueRecord& record, const void* value) {
        result = Maintctl::jsonOf(record, value);
      });
      break;
    default:
      result = jsonOf(*target.owner, *target.row);
    }
    return result;
  }

  static void print(const Target& target, Tree& tree, Context& context) {
    GetLines lines(context.out());
    const auto printValue = [&](const Zel::ValueRecord& record, const void* value) {
      context.out() << textForm(record, value) << '\n';
    };
    switch (target.kind) {
    case Target::top:
      for (const auto& [segment, root] : roots(tree, context.device())) {
        walk(*root, segment + "/", lines);
      }
      break;
    case Target::entity:
      walk(*target.owner, "", lines);
      break;
    case Target::collection:
      walk(*target.owner, *target.row, "", lines);
      break;
    case Target::entry:
      withEntry(target, printValue);
      break;
    case Target::attribute: {
      const AttrRow& row = *target.row;
      ValueSlot value(*row.value, [&](void* to) { row.read(target.owner.ptr(), to); });
      printValue(*row.value, value.at());
    }
    }
  }

  std::string path_;
};

} // namespace

CommandEntry getCommand() {
  return {"get", "Print a value, or all values of an entity",
          "  maintctl get /status/System/state\n"
          "  maintctl get /status/System\n"
          "  maintctl get --json /status",
          make<Get>};
}

} // namespace Maintctl
