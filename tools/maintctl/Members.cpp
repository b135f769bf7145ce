#include "Members.h"

#include "Failure.h"
#include "Tree.h"
#include "Words.h"

namespace Maintctl {

namespace {

constexpr const char* unitsPath = "/status";

} // namespace

std::vector<Member> membersAt(Device& device, const std::vector<std::string>& words) {
  std::vector<Member> found;
  Tree tree(device);
  for (const std::string& word : words) {
    const std::string name = unquoted(word);
    if (name.empty()) { // a variable of a script that is not set, perhaps
      throw Failure(exitUsage, "an empty name of a unit, 'ls /status' lists them");
    }
    const std::string path = name.starts_with('/') ? name : unitsPath + ("/" + name);
    const Target target = tree.at(path, Purpose::read);
    if (target.kind != Target::entity) {
      throw Failure(exitUsage,
                    target.path() + " is no unit, 'get " + target.path() + "' prints it");
    }
    found.push_back({name, target.path(), target.owner});
  }
  if (words.empty()) {
    const Target target = tree.at(unitsPath, Purpose::read);
    if (const Zel::AttrRow* const members = onlyCollection(*target.owner)) {
      for (const Item& item : itemsOf(*target.owner, *members)) {
        const auto entity = Zel::ptrCast<Zel::Entity>(item.held);
        found.push_back({item.segment, pathOf(*entity), entity});
      }
    }
  }
  return found;
}

} // namespace Maintctl
