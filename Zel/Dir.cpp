#include <Zel/Dir>

#include <Zel/Exception>

namespace Zel {

constinit thread_local const Dir::Active* Dir::Active::innermost_ = nullptr;

Dir::~Dir() = default;

void Dir::entityIs(const Ptr<Entity>& root) {
  if (!root || root->parent()) {
    throwRangeException(root ? "no root entity: " + root->name() : "no root entity");
  }
  const auto [at, isNew] = entities_.try_emplace(root->name(), root);
  if (!isNew && !(at->second == root)) {
    throw NameInUseException(at->first);
  }
}

Ptr<Entity> Dir::entityDel(const Name& name) {
  const auto at = entities_.find(name);
  if (at == entities_.end()) {
    return nullptr;
  }
  Ptr<Entity> root = at->second;
  entities_.erase(at);
  statuses_.erase(name);
  return root;
}

Dir::Status Dir::status(const Name& name) const {
  const auto at = statuses_.find(name);
  return at == statuses_.end() ? present : at->second;
}

void Dir::statusIs(const Name& name, Status status) {
  if (entities_.count(name) != 0) {
    statuses_.insert_or_assign(name, status);
  }
}

Ptr<Entity> Dir::entity(const Name& name) const {
  const auto at = entities_.find(name);
  return at == entities_.end() ? nullptr : at->second;
}

Ptr<Dir> Dir::active() noexcept {
  return Active::innermost_ == nullptr ? nullptr : Active::innermost_->dir_;
}

Dir::Active::Active(Ptr<Dir> dir) noexcept : dir_(std::move(dir)), outer_(innermost_) {
  innermost_ = this;
}

Dir::Active::~Active() { innermost_ = outer_; }

} // namespace Zel
