#include <Zel/Dir>

#include <Zel/Exception>

namespace Zel {

constinit thread_local const Dir::Active* Dir::Active::innermost_ = nullptr;

Dir::~Dir() {
  for (const auto& [name, entry] : entries_) {
    entry->entity_ = nullptr;
  }
}

Dir::Entry::~Entry() = default;

void Dir::entityIs(const Ptr<Entity>& root) {
  if (!root || root->parent()) {
    throwRangeException(root ? "no root entity: " + root->name() : "no root entity");
  }
  const auto [at, isNew] = entities_.try_emplace(root->name(), root);
  if (isNew) {
    try {
      entries_.insert_or_assign(at->first, makeObject<Entry>(root.ptr()));
    } catch (...) {
      entities_.erase(at);
      throw;
    }
  } else if (!(at->second == root)) {
    throw NameInUseException(at->first);
  }
}

Ptr<Entity> Dir::entityDel(const Name& name) {
  const auto at = entities_.find(name);
  if (at == entities_.end()) {
    return nullptr;
  }
  Ptr<Entity> root = at->second;
  const auto entry = entries_.find(name);
  entry->second->entity_ = nullptr;
  entries_.erase(entry);
  entities_.erase(at); // and with it maybe the name
  return root;
}

Ptr<Entity> Dir::entity(const Name& name) const {
  const auto at = entities_.find(name);
  return at == entities_.end() ? nullptr : at->second;
}

Ptr<Dir::Entry> Dir::entry(Name name) const {
  const auto at = entries_.find(name);
  return at == entries_.end() ? nullptr : at->second;
}

Ptr<Dir> Dir::active() noexcept {
  return Active::innermost_ == nullptr ? nullptr : Active::innermost_->dir_;
}

Dir::Active::Active(Ptr<Dir> dir) noexcept : dir_(std::move(dir)), outer_(innermost_) {
  innermost_ = this;
}

Dir::Active::~Active() { innermost_ = outer_; }

} // namespace Zel
