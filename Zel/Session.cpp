#include <Zel/Session>

#include <Zel/Exception>
#include <Zel/StateDigest>
#include <Zel/ZelType>

#include <algorithm>
#include <string>

namespace Zel {

using NboAttrLog::In;
using NboAttrLog::MsgHeader;
using NboAttrLog::Root;
using Flags = PtrInterface::NotifieeConst::Zel_BitSet;

namespace {

/// Roots that a peer may offer, all together.
constexpr std::size_t mostOffers = 1024;

/// Which way round the words of entity ids lie in memory, which both ends have to have in common.
constexpr std::uint32_t byteOrderMark = 0x01020304;

Access accessOf(std::uint32_t number) {
  return number == accessReadWrite  ? accessReadWrite
         : number == accessReadOnly ? accessReadOnly
                                    : accessNone;
}

/// A text of the peer's that is going to stand in messages: short, and with nothing in it that a
/// terminal or a log would take for more than text.
String8 shown(const String8& text) {
  constexpr std::size_t most = 200;
  std::string bytes(text.view().substr(0, most));
  std::replace_if(
      bytes.begin(), bytes.end(),
      [](char byte) { return static_cast<unsigned char>(byte) < 0x20 || byte == 0x7f; }, '?');
  return String8(bytes);
}

const char* accessName(Access access) {
  return access == accessReadWrite ? "read-write" : "read-only";
}

} // namespace

/// What the connection asks and tells, passed on as long as there is a session.
class Session::Policy : public NboAttrLog::MountPolicy {
public:
  explicit Policy(Session* session) noexcept : session_(session) {}
  void sessionGone() noexcept { session_ = nullptr; }

  Mount mount(const Ptr<Entity>& fresh) override {
    return session_ != nullptr ? session_->mount(fresh) : Mount{};
  }
  void resyncing(const Ptr<Entity>& entity) override {
    if (session_ != nullptr) {
      session_->resyncing(entity);
    }
  }
  void synced(const Ptr<Entity>& entity) override {
    if (session_ != nullptr) {
      session_->synced(entity);
    }
  }
  bool sessionRecord(In& in) override {
    if (session_ != nullptr) {
      session_->recordRead(in);
    }
    return session_ != nullptr;
  }

private:
  Session* session_;
};

Session::Session(Connection::End end, SessionOptions options, Ptr<Exports> exports,
                 Ptr<Mounts> mounts)
    : options_(std::move(options)), exports_(std::move(exports)), mounts_(std::move(mounts)),
      policy_(makeObject<Policy>(this)),
      connection_(makeObject<Connection>(end, String8(), options_.limits, policy_)) {
  if (mounts_ && mounts_->session_ != nullptr) {
    throwRangeException("the mounts belong to another session");
  }
  helloWrite();
  if (exports_) {
    exports_->sessions_.push_back(this);
  }
  if (mounts_) {
    mounts_->session_ = this;
  }
}

Session::~Session() {
  close(now_);
  policy_->sessionGone();
}

bool Session::service(double now, std::size_t budget) {
  const Ptr<Session> kept(this);
  now_ = now;
  if (helloUntil_ == never) {
    helloUntil_ = now + options_.helloTime;
  }
  bool more = connection_->service(budget);
  if (!isOpen_ && isUp()) {
    if (connection_->demuxer()->counts().records != 0) {
      connection_->fail("the peer's first record is no hello");
    } else if (now >= helloUntil_) {
      connection_->fail("no hello from the peer in time");
    }
  }
  if (isUp() && !digestsOwed_.empty()) {
    digestsWrite();
  }
  if (isUp() && !echoesWanted_.empty()) {
    echoesWrite();
  }
  if (!isUp()) {
    ended();
    more = false;
  }
  return more;
}

double Session::deadline() const noexcept {
  double next = !isOpen_ ? helloUntil_ : never;
  for (const DigestOwed& digest : digestsOwed_) {
    next = std::min(next, digest.until);
  }
  return isUp() ? next : never;
}

void Session::close(double now, const String8& why) {
  now_ = now;
  connection_->fail(why);
  ended();
}

/// The connection is down: what it has carried is stale, and nobody waits for answers any more.
void Session::ended() {
  if (hasEnded_) {
    return;
  }
  hasEnded_ = true;
  connection_->close();
  if (exports_) {
    std::erase(exports_->sessions_, this);
  }
  exported_.clear();
  if (mounts_ && mounts_->session_ == this) {
    mounts_->session_ = nullptr;
    const Mounts::Members members = mounts_->mounts_; // notifiees may ask for more
    for (const auto& [name, mount] : members) {
      mount->rootGone();
      mount->isAsked_ = mount->isGranted_ = false;
      if (mount->state() != Mount::waiting || mount->entity()) {
        mount->stateIs(mount->entity() ? Mount::stale : Mount::waiting, now_, failure());
      }
    }
  }
  while (!digestsAsked_.empty()) {
    answer(digestsAsked_.begin()->first, digestUnknown);
  }
  for (const auto& [serial, to] : std::exchange(echoesAsked_, {})) {
    to(false);
  }
  for (const EchoAnswer& to : std::exchange(echoesWanted_, {})) {
    to(false);
  }
  log("session with " + (peer_.name.empty() ? String8("a peer") : peer_.name) +
      " ended: " + failure());
}

void Session::log(const String8& line) const {
  if (options_.log) {
    options_.log(line);
  }
}

template <class Fields>
void Session::write(Kind kind, const Fields& fields) {
  if (!isUp()) {
    return;
  }
  const Ptr<NboAttrLog::Out>& out = connection_->out();
  if (!out->hasSufficientBuffer()) {
    // The log waits for room in the ring, but this would not.
    connection_->fail("the peer asks for more than it reads");
    return;
  }
  out->nextHeaderIs(MsgHeader::variable(orphanEntityId, NboAttrLog::attrIdSession));
  out << NboAttrLog::transactBegin;
  out->put8(kind);
  fields(*out);
  out << NboAttrLog::transactEnd;
}

void Session::recordRead(In& in) {
  const std::uint8_t kind = in.next8();
  if (kind == kindHello) {
    helloRead(in);
    return;
  }
  if (!isOpen_) {
    throw AttrLogRecordException("the peer's first record is no hello");
  }
  switch (kind) {
  case kindOffer:
    offerRead(in);
    break;
  case kindWithdraw:
    withdrawRead(in);
    break;
  case kindAsk:
    askRead(in);
    break;
  case kindGrant:
    grantRead(in);
    break;
  case kindRefuse:
    refuseRead(in);
    break;
  case kindDigestAsk:
    digestAskRead(in);
    break;
  case kindDigest:
    digestRead(in);
    break;
  case kindOffersEnd:
    hasOffers_ = true;
    break;
  case kindEchoAsk: {
    const std::uint32_t serial = in.nextU32();
    write(kindEcho, [&](WireWriter& out) { out.put32(serial); });
    break;
  }
  case kindEcho:
    echoRead(in);
    break;
  default: // a newer peer's
    connection_->demuxer()->unknownAttributesInc();
  }
}

void Session::helloWrite() {
  write(kindHello, [&](WireWriter& out) {
    out.put32(magic);
    out.put32(version);
    out.putBytes(&byteOrderMark, sizeof byteOrderMark);
    out.put8(connection_->end() == Connection::End::second ? 1 : 0);
    out.putString(options_.name);
    out.put64(options_.limits.maxEntities);
    out.put64(options_.limits.maxKeys);
    out.put64(options_.limits.maxPartialText);
  });
}

void Session::helloRead(In& in) {
  const auto refused = [](const String8& why) { throw AttrLogRecordException(why); };
  if (isOpen_ || connection_->demuxer()->counts().records != 1) {
    refused("a hello that is not the first record");
  }
  // What follows the version is that version's.
  if (in.left() < 2 * sizeof(std::uint32_t) || in.nextU32() != magic) {
    refused("no hello of this protocol");
  }
  peer_.version = in.nextU32();
  if (peer_.version != version) {
    refused(String8("the peer speaks version " + std::to_string(peer_.version) +
                    " of the protocol, this end version " + std::to_string(version)));
  }
  std::uint32_t mark = 0;
  in.nextBytes(&mark, sizeof mark);
  if (mark != byteOrderMark) {
    refused("the peer has another byte order");
  }
  if ((in.next8() != 0) == (connection_->end() == Connection::End::second)) {
    refused("both ends take the same side of the connection");
  }
  peer_.name = shown(in.nextString());
  peer_.maxEntities = in.nextU64();
  peer_.maxKeys = in.nextU64();
  peer_.maxPartialText = in.nextU64();
  isOpen_ = true;
  log("session with " + peer_.name + " is open");
  if (exports_) {
    for (const auto& [name, offer] : exports_->roots()) {
      offerWrite(name);
    }
  }
  write(kindOffersEnd, [](WireWriter& /*out*/) {});
}

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
  if (mount.root_ || mount.isAsked_) {
    return;
  }
  const String8& type = offers_.at(mount.name());
  if (ZelType::type(type.view()) == nullptr) {
    refuse(mount, "unknown type: " + shown(type));
    return;
  }
  mount.isAsked_ = true;
  write(kindAsk, [&](WireWriter& out) {
    out.putString(mount.name());
    out.put32(static_cast<std::uint32_t>(mount.wanted()));
  });
}

void Session::askRead(In& in) {
  const Name name(in.nextString());
  const Access wanted = accessOf(in.nextU32());
  String8 reason;
  Access granted = accessNone;
  if (!exports_ || exports_->roots().count(name) == 0) {
    reason = "no such root";
  } else if (exported_.count(name) != 0) {
    reason = "mounted already";
  } else if (granted = exports_->grant(*this, name, wanted); granted == accessNone) {
    reason = "not granted";
  }
  if (!reason.empty()) {
    log("refused " + peer_.name + " the root " + shown(name) + ": " + reason);
    write(kindRefuse, [&](WireWriter& out) {
      out.putString(name);
      out.putString(reason);
    });
    return;
  }
  write(kindGrant, [&](WireWriter& out) {
    out.putString(name);
    out.put32(static_cast<std::uint32_t>(granted));
  });
  if (!isUp()) {
    return;
  }
  Flags flags;
  flags.bitsIs(StreamAdapter::flagRemoteReadOnly, granted != accessReadWrite);
  const Ptr<Entity> root = exports_->roots().at(name).entity;
  const Ptr<Root> shared = connection_->demuxer()->exportIs(root, flags)->root();
  exported_.emplace(name, shared);
  shared->isToldOfWalksIs(true);
  log(peer_.name + " mounts " + name + ", " + accessName(granted));
}

void Session::grantRead(In& in) {
  const Name name(in.nextString());
  const Access access = accessOf(in.nextU32());
  const Ptr<Mount> mount = mounts_ ? mounts_->mount(name) : nullptr;
  if (!mount || !mount->isAsked_ || access == accessNone || access > mount->wanted()) {
    throwRangeException("a grant that was not asked for");
  }
  mount->isGranted_ = true;
  mount->access_ = access;
}

void Session::refuseRead(In& in) {
  const Name name(in.nextString());
  const String8 reason = shown(in.nextString());
  const Ptr<Mount> mount = mounts_ ? mounts_->mount(name) : nullptr;
  if (!mount || !mount->isAsked_ || mount->root_) {
    throwRangeException("a refusal of what was not asked for");
  }
  refuse(*mount, reason);
}

void Session::refuse(Mount& mount, String8 reason) {
  mount.isAsked_ = mount.isGranted_ = false;
  log("the root " + mount.name() + " is refused: " + reason);
  mount.stateIs(Mount::refused, now_, std::move(reason));
}

void Session::withdraw(const Name& name) {
  const auto at = exported_.find(name);
  if (at != exported_.end()) {
    connection_->demuxer()->rootDel(*at->second);
    exported_.erase(at);
  }
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
  mount->isAsked_ = mount->isGranted_ = false;
  if (const Ptr<Root> root = mount->root_) {
    connection_->demuxer()->rootDel(*root);
    mount->rootGone();
  }
  mount->stateIs(mount->entity() ? Mount::stale : Mount::waiting, now_,
                 "withdrawn by " + peer_.name);
}

NboAttrLog::MountPolicy::Mount Session::mount(const Ptr<Entity>& fresh) {
  const Ptr<Mount> mount = mounts_ ? mounts_->mount(fresh->name()) : nullptr;
  if (!mount || !mount->isGranted_) {
    return {};
  }
  mount->isGranted_ = false;
  if (!mount->entity() || mount->entity()->fwkType() != fresh->fwkType()) {
    if (const Ptr<Dir>& dir = mounts_->dir_) {
      const Ptr<Entity> there = dir->entity(fresh->name());
      if (there && there != mount->entity()) {
        refuse(*mount, "another root of this program has the name");
        return {};
      }
      dir->entityDel(fresh->name());
      dir->entityIs(fresh);
    }
    mount->guardsDel();
    mount->entityIs(fresh);
  }
  for (const Ptr<Root>& guards : mount->guards_) {
    guards->resyncedByIs(connection_->demuxer().ptr());
  }
  Flags flags; // even where the peer grants writing: not while the mirror is not in step
  flags.bitsIs(StreamAdapter::flagReadOnly, true);
  return {mount->entity(), flags};
}

Ptr<Mount> Session::mountOf(const Ptr<Entity>& entity) const {
  const Ptr<Mount> mount = mounts_ ? mounts_->mount(entity->name()) : nullptr;
  return mount && mount->entity() == entity ? mount : nullptr;
}

void Session::resyncing(const Ptr<Entity>& entity) {
  const Ptr<Mount> mount = mountOf(entity);
  const Ptr<Entity::ZelNboAttrLogSa> adapter =
      mount ? entity->zelNboAttrLogSa(Ptr<const NboAttrLog::Out>(connection_->out())) : nullptr;
  if (!adapter || !adapter->root() || !adapter->root()->isImported()) {
    return;
  }
  mount->root_ = adapter->root();
  mount->root_->keepsGuardsIs(true);
  mount->stateIs(Mount::resyncing, now_);
}

void Session::synced(const Ptr<Entity>& entity) {
  const Ptr<Mount> mount = mountOf(entity);
  if (!mount || !mount->root_ || mount->state() != Mount::resyncing) {
    return;
  }
  mount->guardsDel();
  if (mounts_->dir_) {
    mounts_->dir_->statusIs(mount->name(), Dir::loaded);
  }
  mount->stateIs(Mount::live, now_);
}

Ptr<Root> Session::exported(const Name& name) const {
  const auto at = exported_.find(name);
  return at != exported_.end() ? at->second : nullptr;
}

void Session::digestAsk(const Name& name, DigestAnswer answerTo) {
  if (digestsAsked_.size() >= maxDigests) {
    throwRangeException("too many digests at a time");
  }
  const std::uint32_t serial = ++lastSerial_;
  digestsAsked_.emplace(serial, std::pair(name, std::move(answerTo)));
  if (!isUp() || !isOpen_) {
    answer(serial, digestUnknown);
    return;
  }
  write(kindDigestAsk, [&](WireWriter& out) {
    out.put32(serial);
    out.putString(name);
  });
}

void Session::digestAskRead(In& in) {
  const std::uint32_t serial = in.nextU32();
  const Name name(in.nextString());
  if (digestsOwed_.size() >= maxDigests) {
    throw AttrLogRecordException("the peer asks for too many digests at a time");
  }
  digestsOwed_.push_back({serial, name, now_ + options_.digestTime});
}

/// Answers one of those that wait, since each takes as long as the state is large.
void Session::digestsWrite() {
  for (auto at = digestsOwed_.begin(); at != digestsOwed_.end(); ++at) {
    const Ptr<Root> root = exported(at->name);
    const bool isQuiet = root && !root->isWalking() && root->owed() == 0;
    if (root && !isQuiet && now_ < at->until) {
      continue;
    }
    if (!connection_->out()->hasSufficientBuffer()) {
      return; // the ring drains first
    }
    const DigestOwed digest = *at;
    digestsOwed_.erase(at);
    const DigestResult result = !root ? digestUnknown : isQuiet ? digestEqual : digestBusy;
    const std::uint64_t ours = isQuiet ? stateDigest(*exports_->roots().at(digest.name).entity) : 0;
    write(kindDigest, [&](WireWriter& out) {
      out.put32(digest.serial);
      out.put8(static_cast<std::uint8_t>(result));
      out.put64(ours);
    });
    return;
  }
}

void Session::digestRead(In& in) {
  const std::uint32_t serial = in.nextU32();
  const std::uint8_t result = in.next8();
  const std::uint64_t theirs = in.nextU64();
  const auto at = digestsAsked_.find(serial);
  if (at == digestsAsked_.end() || result > digestUnknown) {
    throwRangeException("a digest that was not asked for");
  }
  const Ptr<Mount> mount = mounts_ ? mounts_->mount(at->second.first) : nullptr;
  if (result == digestBusy || result == digestUnknown) {
    answer(serial, static_cast<DigestResult>(result));
  } else if (!mount || !mount->root_) {
    answer(serial, digestUnknown);
  } else if (mount->root_->owed() != 0) {
    answer(serial, digestBusy);
  } else {
    answer(serial, stateDigest(*mount->entity()) == theirs ? digestEqual : digestDiffers);
  }
}

void Session::answer(std::uint32_t serial, DigestResult result) {
  const auto at = digestsAsked_.find(serial);
  const DigestAnswer to = std::move(at->second.second);
  digestsAsked_.erase(at);
  if (to) {
    to(result);
  }
}

void Session::echoAsk(EchoAnswer answerTo) {
  if (!isUp()) {
    answerTo(false);
    return;
  }
  echoesWanted_.push_back(std::move(answerTo));
}

void Session::echoesWrite() {
  const auto owes = [](const Ptr<Root>& root) { return root && root->owed() != 0; };
  bool isOwing = !isOpen_;
  for (const auto& [name, root] : exported_) {
    isOwing = isOwing || owes(root);
  }
  if (mounts_) {
    for (const auto& [name, mount] : mounts_->mounts()) {
      isOwing = isOwing || owes(mount->root_);
    }
  }
  if (isOwing || !connection_->out()->hasSufficientBuffer()) {
    return;
  }
  const std::uint32_t serial = ++lastSerial_;
  echoesAsked_.emplace(serial, std::move(echoesWanted_.front()));
  echoesWanted_.erase(echoesWanted_.begin());
  write(kindEchoAsk, [&](WireWriter& out) { out.put32(serial); });
}

void Session::echoRead(In& in) {
  const auto at = echoesAsked_.find(in.nextU32());
  if (at == echoesAsked_.end()) {
    throwRangeException("an echo that was not asked for");
  }
  const EchoAnswer to = std::move(at->second);
  echoesAsked_.erase(at);
  to(true);
}

} // namespace Zel
