#include <Zel/Exports>

#include <Zel/Exception>
#include <Zel/Session>

#include <algorithm>
#include <string>

namespace Zel {

Exports::~Exports() = default;

void Exports::entityIs(const Ptr<Entity>& root, Access most) {
  if (!root || root->parent() || root->name().empty()) {
    throwRangeException(root ? "no root entity: " + root->name() : "no root entity");
  }
  if (most != accessReadOnly && most != accessReadWrite) {
    throwRangeException("no access: " + root->name());
  }
  if (root->name().length() > maxWholeString) {
    throwRangeException("name of " + String8(std::to_string(root->name().length())) +
                        " bytes is too long for a peer");
  }
  if (!root->zelHasAttrLogInterface()) {
    throwRangeException("no attribute log: " + root->name());
  }
  const auto [at, isNew] = roots_.try_emplace(root->name(), Export{root, most});
  if (!isNew) {
    throw NameInUseException(at->first);
  }
  for (Session* const session : sessions_) {
    session->offerWrite(at->first);
  }
}

Ptr<Entity> Exports::entityDel(const Name& name) {
  const auto at = roots_.find(name);
  if (at == roots_.end()) {
    return nullptr;
  }
  const Name kept = at->first;
  Ptr<Entity> root = std::move(at->second.entity);
  roots_.erase(at);
  for (Session* const session : sessions_) {
    session->withdraw(kept);
  }
  return root;
}

void Exports::writableIs(const Name& name, bool writable, bool isSoft) {
  const auto at = roots_.find(name);
  if (at == roots_.end()) {
    return;
  }
  at->second.isWithdrawn = !writable;
  for (Session* const session : sessions_) {
    session->writableIs(name, writable, isSoft);
  }
}

void Exports::echo(const Session& /*session*/, std::function<void()> answer) const { answer(); }

Access Exports::grant(const Session& /*session*/, const Name& name, Access wanted) const {
  const auto at = roots_.find(name);
  return at != roots_.end() ? std::min(wanted, at->second.most) : accessNone;
}

bool Exports::mayWriteIf(const Session& /*session*/, const Entity& /*entity*/,
                         AttributeId /*attribute*/) const {
  return true;
}

} // namespace Zel
