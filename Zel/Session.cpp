#include <Zel/Session>

#include <Zel/Exception>

#include <algorithm>
#include <string>

namespace Zel {

using NboAttrLog::In;
using NboAttrLog::MsgHeader;

namespace {

/// Bytes that may wait for room to be said.
constexpr std::size_t mostLater = std::size_t{1} << 20;

void recordWrite(const Ptr<NboAttrLog::Out>& out, std::string_view payload) {
  out->nextHeaderIs(MsgHeader::variable(orphanEntityId, NboAttrLog::attrIdSession));
  out << NboAttrLog::transactBegin;
  out->putBytes(payload.data(), payload.size());
  out << NboAttrLog::transactEnd;
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
  void mounted(const Ptr<Entity::ZelNboAttrLogSa>& root) override {
    if (session_ != nullptr) {
      session_->mounted(root);
    }
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
    if (mounts_->session_->isUp()) {
      throwRangeException("the mounts belong to another session");
    }
    mounts_->session_->ended(); // it has not been served since it went down
  }
  helloWrite();
  if (exports_) {
    exports_->sessions_.push_back(this);
  }
  if (mounts_) {
    mounts_->session_ = this;
  }
  next_ = first_;
  if (first_ != nullptr) {
    first_->previous_ = this;
  }
  first_ = this;
}

Session::~Session() {
  connection_->fail("closed");
  ended(false);
  policy_->sessionGone();
}

bool Session::service(double now, std::size_t budget) {
  const Ptr<Session> kept(this);
  now_ = now;
  if (helloUntil_ == never) {
    helloUntil_ = now + options_.helloTime;
  }
  laterWrite();
  bool more = connection_->service(budget);
  rightsStep();
  if (!isOpen_ && isUp()) {
    if (connection_->demuxer()->counts().records != 0) {
      connection_->fail("the peer's first record is no hello");
    } else if (now >= helloUntil_) {
      connection_->fail("no hello from the peer in time");
    }
  }
  if (isUp()) {
    digestsAsk();
    more = digestsWrite() || more;
    writesAsk();
    echoesWrite();
  }
  if (!isUp()) {
    ended();
    more = false;
  }
  return more;
}

double Session::deadline() const noexcept {
  double next = never;
  if (!isUp()) {
    return next;
  }
  if (!isOpen_) {
    next = helloUntil_;
  }
  for (const DigestOwed& digest : digestsOwed_) {
    next = std::min(next, digest.until);
  }
  for (const auto& [serial, digest] : digestsAsked_) {
    if (!digest.isSent) {
      next = std::min(next, digest.until);
    }
  }
  return next;
}

void Session::close(double now, const String8& why) {
  const Ptr<Session> kept(this);
  now_ = now;
  if (isUp()) {
    ending_ = endingOver;
  }
  connection_->fail(why);
  ended();
}

/// The connection is down: what it has carried is stale, and nobody waits for answers any more.
/// `isHeard`: whether anybody can send last words.
void Session::ended(bool isHeard) {
  if (hasEnded_) {
    return;
  }
  const Ptr<Session> kept(this); // whoever hears of it may let go of it
  hasEnded_ = true;
  connection_->close();
  if (isHeard && peer_.ending == endingUnsaid) {
    lastWordsWrite();
  }
  later_.clear();
  if (exports_) {
    std::erase(exports_->sessions_, this);
  }
  *self_ = nullptr;
  const auto exported = std::exchange(exported_, {});
  for (Session* other = first_; other != nullptr; other = other->next_) {
    other->askerGone(*this);
  }
  (previous_ != nullptr ? previous_->next_ : first_) = next_;
  if (next_ != nullptr) {
    next_->previous_ = previous_;
  }
  for (const auto& [name, of] : exported) {
    frozenUpstream(*of.entity);
  }
  mountsEnd();
  answersEnd();
  const bool isForFault = peer_.ending == endingUnsaid ? isHeard && ending_ == endingFailed
                                                       : peer_.ending != endingOver;
  log(isForFault ? LogLevel::warning : LogLevel::info,
      "session with " + (peer_.name.empty() ? String8("a peer") : peer_.name) +
          " ended: " + failure());
}

void Session::log(LogLevel level, const String8& line) const {
  try {
    if (options_.log) {
      options_.log(level, shown(line, 500));
    }
  } catch (...) { // a line that is lost ends no session, and a session that goes ends no program
  }
}

String8 Session::shown(const String8& text, std::size_t most) {
  std::string bytes(text.view().substr(0, most));
  std::replace_if(
      bytes.begin(), bytes.end(),
      [](char byte) { return static_cast<unsigned char>(byte) < ' ' || byte == 0x7f; }, '?');
  return String8(bytes);
}

std::string Session::payload(Kind kind, const Fields& fields) {
  std::uint8_t bytes[NboAttrLog::Out::maxRecordSize - NboAttrLog::recordOverhead];
  WireWriter to(bytes, sizeof bytes);
  to.put8(kind);
  fields(to);
  return {reinterpret_cast<const char*>(bytes), sizeof bytes - to.room()};
}

/// Says something, or has it wait behind what waits already.
void Session::write(Kind kind, const Fields& fields) {
  if (!isUp()) {
    return;
  }
  std::string said = payload(kind, fields);
  if (hasRoom()) {
    payloadWrite(said);
  } else {
    later({std::move(said), {}});
  }
}

bool Session::hasRoom() const noexcept {
  return later_.empty() && connection_->out()->hasRoomForRecord();
}

void Session::payloadWrite(std::string_view payload) {
  recordWrite(connection_->out(), payload);
  ++sessionRecords_;
}

void Session::syncModeWrite(const NboAttrLog::Root& root, StreamAdapter::SyncMode mode) const {
  const Ptr<NboAttrLog::Out>& out = connection_->out();
  out->nextHeaderIs(
      MsgHeader::fixed(root.entityId(), NboAttrLog::attrIdSyncMode, sizeof(std::uint32_t)));
  out << NboAttrLog::transactBegin;
  out << unsigned{mode};
  out << NboAttrLog::transactEnd;
}

std::string Session::bye(Ending ending, const String8& reason) {
  const std::string said = payload(kindBye, [&](WireWriter& to) {
    to.put8(ending);
    to.putString(shown(reason));
  });
  constexpr std::size_t enough = 1024;
  const auto out = makeObject<NboAttrLog::Out>(enough);
  recordWrite(out, said);
  const auto bytes = out->pending();
  return {bytes.begin(), bytes.end()};
}

void Session::later(Later what) {
  laterSize_ += what.size();
  later_.push_back(std::move(what));
  if (laterSize_ > mostLater) {
    connection_->fail("the peer asks for more than it reads");
  }
}

/// Says what has waited for room, as far as there is some by now.
void Session::laterWrite() {
  while (isUp() && !later_.empty() && connection_->out()->hasRoomForRecord()) {
    const Later first = std::move(later_.front());
    later_.pop_front();
    laterSize_ -= first.size();
    if (first.payload.empty()) {
      askAnswer(first.name, first.wanted);
    } else {
      payloadWrite(first.payload);
    }
  }
}

void Session::recordRead(In& in) {
  ++sessionRecordsRead_;
  const std::uint8_t kind = in.next8();
  if (kind == kindHello) {
    helloRead(in);
    return;
  }
  if (kind == kindBye) { // which may come in the place of a hello
    byeRead(in);
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
  case kindEchoAsk:
    echoAskRead(in);
    break;
  case kindEcho:
    echoRead(in);
    break;
  case kindWriteIf:
    writeIfRead(kindWriteIf, in);
    break;
  case kindWriteNew:
    writeIfRead(kindWriteNew, in);
    break;
  case kindWritten:
    writtenRead(in);
    break;
  case kindFreeze:
    freezeRead(in);
    break;
  case kindFrozen:
    frozenRead(in);
    break;
  case kindThaw:
    thawRead(in);
    break;
  default: // a newer peer's
    connection_->demuxer()->unknownAttributesInc();
  }
}

} // namespace Zel
