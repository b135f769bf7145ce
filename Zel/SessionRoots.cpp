#include <Zel/Session>

#include <Zel/Exception>
#include <Zel/ZelType>

#include <algorithm>

// What the ends of a session offer each other, and what becomes of it.

namespace Zel {

using NboAttrLog::In;
using NboAttrLog::Root;

namespace {

/// Roots that a peer may offer, all together.
constexpr std::size_t mostOffers = 1024;

constexpr const char* nameInUse = "another root of this program has the name";

Access accessOf(std::uint32_t number) {
  return number == accessReadWrite  ? accessReadWrite
         : number == accessReadOnly ? accessReadOnly
                                    : accessNone;
}

const char* accessName(Access access) {
  return access == accessReadWrite ? "read-write" : "read-only";
}

} // namespace

void Session::offerWrite(const Name& name) {
  if (!isOpen_) {
    return;
  }
  const Exports::Export& offer = exports_->roots().at(name);
  const ZelType* const type = offer.entity->fwkType();
  write(kindOffer, [&](WireWriter& out) {
    out.putString(name);
    out.putString(type != nullptr ? String8(type->fullName()) : String8());
    out.put32(static_cast<std::uint32_t>(offer.most));
  });
}

void Session::offerRead(In& in) {
  const Name name(in.nextString());
  const String8 type = in.nextString();
  const Access most = accessOf(in.nextU32());
  if (name.empty() || most == accessNone) {
    throwRangeException("an offer of nothing");
  }
  if (offers_.size() >= mostOffers && offers_.count(name) == 0) {
    throw AttrLogRecordException("the peer offers more roots than are kept");
  }
  offers_.insert_or_assign(name, type);
  if (mounts_) {
    if (const Ptr<Mount> mount = mounts_->offered(name)) {
      ask(*mount);
    }
  }
}

void Session::askAll() {
  for (const auto& [name, type] : std::map<Name, String8>(offers_)) {
    if (const Ptr<Mount> mount = mounts_->offered(name)) {
      ask(*mount);
    }
  }
}

void Session::ask(Mount& mount) {
  if (mount.asked_ != Mount::Asked::no) {
    return;
  }
  const String8& type = offers_.at(mount.name());
  const ZelType* const known = ZelType::type(type.view());
  if (known == nullptr || !known->isEntity()) {
    refuse(mount, "unknown type: " + shown(type));
    return;
  }
  if (mounts_->isNameInUse(mount)) {
    refuse(mount, nameInUse);
    return;
  }
  mount.asked_ = Mount::Asked::asked;
  write(kindAsk, [&](WireWriter& out) {
    out.putString(mount.name());
    out.put32(static_cast<std::uint32_t>(mount.wanted()));
  });
}

void Session::askRead(In& in) {
  const Name name(in.nextString());
  const Access wanted = accessOf(in.nextU32());
  if (hasRoom()) {
    askAnswer(name, wanted);
  } else {
    later({{}, name, wanted});
  }
}

/// Grants a root and exports it, or refuses it. There is room.
void Session::askAnswer(const Name& name, Access wanted) {
  const auto at = exports_ ? exports_->roots().find(name) : Exports::Roots::const_iterator();
  const Ptr<Entity> root = exports_ && at != exports_->roots().end() ? at->second.entity : nullptr;
  String8 reason;
  Access granted = accessNone;
  if (!root) {
    reason = "no such root";
  } else if (exported_.count(name) != 0) {
    return; // its question has crossed a withdrawal and an offer, and been answered behind them
  } else if (root->zelNboAttrLogSa(Ptr<const NboAttrLog::Out>(connection_->out()))) {
    reason = "mirrors a root of yours";
  } else {
    granted = std::min(exports_->grant(*this, name, wanted), wanted);
    reason = granted == accessNone ? "not granted" : "";
  }
  if (!isUp()) {
    return; // the program has closed it when it was asked
  }
  const auto still = exports_ ? exports_->roots().find(name) : Exports::Roots::const_iterator();
  if (reason.empty() && (still == exports_->roots().end() || still->second.entity != root)) {
    reason = "no such root"; // any more
  }
  if (!reason.empty()) {
    payloadWrite(payload(kindRefuse, [&](WireWriter& out) {
      out.putString(name);
      out.putString(reason);
    }));
    log(LogLevel::warning, "refused " + peer_.name + " the root " + name + ": " + reason);
    return;
  }
  payloadWrite(payload(kindGrant, [&](WireWriter& out) {
    out.putString(name);
    out.put32(static_cast<std::uint32_t>(granted));
  }));
  Exported exported;
  exported.entity = root;
  exported.root = connection_->demuxer()->exportIs(root)->root();
  exported.granted = granted;
  exported.isWithdrawn = still->second.isWithdrawn;
  exported.root->inputIs(Root::Input::refused);
  exported.root->pendingMark();
  syncModeWrite(*exported.root, StreamAdapter::syncModeResync);
  exported_.emplace(name, exported);
  log(LogLevel::debug, peer_.name + " mounts " + name + ", " + accessName(granted));
}

void Session::grantRead(In& in) {
  const Name name(in.nextString());
  const Access access = accessOf(in.nextU32());
  const Ptr<Mount> mount = mounts_ ? mounts_->mount(name) : nullptr;
  if (!mount || mount->asked_ != Mount::Asked::asked || access == accessNone ||
      access > mount->wanted()) {
    throwRangeException("a grant that was not asked for");
  }
  mount->asked_ = Mount::Asked::granted;
  mount->access_ = access;
}

void Session::refuseRead(In& in) {
  const Name name(in.nextString());
  const String8 reason = shown(in.nextString());
  const Ptr<Mount> mount = mounts_ ? mounts_->mount(name) : nullptr;
  if (!mount || mount->asked_ != Mount::Asked::asked) {
    throwRangeException("a refusal of what was not asked for");
  }
  refuse(*mount, reason);
}

void Session::refuse(Mount& mount, String8 reason) {
  mount.asked_ = Mount::Asked::no;
  log(LogLevel::warning, "the root " + mount.name() + " is refused: " + reason);
  mount.stateIs(Mount::refused, now_, std::move(reason));
}

void Session::withdraw(const Name& name) {
  const auto at = exported_.find(name);
  if (at != exported_.end()) {
    const Ptr<Entity> entity = at->second.entity;
    connection_->demuxer()->rootDel(*at->second.root);
    exported_.erase(at);
    frozenUpstream(*entity);
  }
  // A question that waits for room would be answered before this is said, with what is offered
  // then.
  std::erase_if(later_, [&](const Later& what) {
    const bool isAsk = what.payload.empty() && what.name == name;
    laterSize_ -= isAsk ? what.size() : 0;
    return isAsk;
  });
  if (isOpen_) {
    write(kindWithdraw, [&](WireWriter& out) { out.putString(name); });
  }
}

void Session::withdrawRead(In& in) {
  const Name name(in.nextString());
  offers_.erase(name);
  const Ptr<Mount> mount = mounts_ ? mounts_->mount(name) : nullptr;
  if (!mount) {
    return;
  }
  mount->asked_ = Mount::Asked::no;
  if (const Ptr<Root> root = mount->root_) {
    connection_->demuxer()->rootDel(*root);
    mount->rootGone();
  }
  mount->stateIs(mount->entity() ? Mount::stale : Mount::waiting, now_,
                 "withdrawn by " + peer_.name);
}

NboAttrLog::MountPolicy::Mount Session::mount(const Ptr<Entity>& fresh) {
  const Ptr<Mount> mount = mounts_ ? mounts_->mount(fresh->name()) : nullptr;
  if (!mount || mount->asked_ != Mount::Asked::granted) {
    return {};
  }
  if (mounts_->isNameInUse(*mount)) { // by now
    refuse(*mount, nameInUse);
    return {};
  }
  mount->asked_ = Mount::Asked::mounted;
  if (!mount->entity() || mount->entity()->fwkType() != fresh->fwkType()) {
    if (mounts_->dir_) {
      mounts_->dir_->entityDel(fresh->name());
      mounts_->dir_->entityIs(fresh);
    }
    mount->entityIs(fresh);
  }
  return {mount->entity()};
}

void Session::mounted(const Ptr<Entity::ZelNboAttrLogSa>& root) {
  const Ptr<Mount> mount = mountOf(*root->zelNotifierEntity());
  if (mount) {
    mount->root_ = root->root();
    mount->root_->sendsPlainIs(true);
    mount->stateIs(Mount::resyncing, now_);
  }
}

Ptr<Mount> Session::mountOf(const Entity& entity) const {
  const Ptr<Mount> mount = mounts_ ? mounts_->mount(entity.name()) : nullptr;
  return mount && mount->entity().ptr() == &entity ? mount : nullptr;
}

Ptr<Mount> Session::mountOf(EntityId root) const {
  if (mounts_) {
    for (const auto& [name, mount] : mounts_->mounts()) {
      if (mount->root_ && mount->root_->entityId() == root) {
        return mount;
      }
    }
  }
  return nullptr;
}

void Session::resyncing(const Ptr<Entity>& entity) {
  const Ptr<Mount> mount = mountOf(*entity);
  if (mount && mount->isWritable()) {
    rulesBroken("a walk of what is thawed");
  }
  if (mount && mount->root_) {
    mount->stateIs(Mount::resyncing, now_);
  }
}

void Session::synced(const Ptr<Entity>& entity) {
  const Ptr<Mount> mount = mountOf(*entity);
  if (!mount || !mount->root_ || mount->state() != Mount::resyncing) {
    return;
  }
  const Ptr<Dir::Entry> entry = mounts_->dir_ ? mounts_->dir_->entry(mount->name()) : nullptr;
  if (entry) {
    entry->statusIs(Dir::loaded);
  }
  mount->stateIs(Mount::live, now_);
}

void Session::mountsEnd() {
  if (!mounts_ || mounts_->session_ != this) {
    return;
  }
  mounts_->session_ = nullptr;
  const Mounts::Members members = mounts_->mounts(); // notifiees may ask for more
  for (const auto& [name, mount] : members) {
    mount->rootGone();
    mount->asked_ = Mount::Asked::no;
    mount->stateIs(mount->entity() ? Mount::stale : Mount::waiting, now_, failure());
  }
}

Ptr<Root> Session::exported(const Name& name) const {
  const auto at = exported_.find(name);
  return at != exported_.end() ? at->second.root : nullptr;
}

} // namespace Zel
