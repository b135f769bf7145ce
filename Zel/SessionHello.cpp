#include <Zel/Session>

#include <Zel/Exception>

#include <string>

// What the ends of a session say first and last.

namespace Zel {

using NboAttrLog::In;

namespace {

/// Which way round the words of entity ids lie in memory, which both ends have to have in common.
constexpr std::uint32_t byteOrderMark = 0x01020304;

} // namespace

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
    for (const std::uint64_t word : mounts_ ? mounts_->instance() : Mounts::Instance{}) {
      out.put64(word);
    }
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
  connection_->peerNameIs(peer_.name);
  peer_.maxEntities = in.nextU64();
  peer_.maxKeys = in.nextU64();
  peer_.maxPartialText = in.nextU64();
  for (std::uint64_t& word : peerInstance_) {
    word = in.nextU64();
  }
  formerEnd();
  isOpen_ = true;
  log(LogLevel::info, "session with " + peer_.name + " is open");
  if (exports_) {
    for (const auto& [name, offer] : exports_->roots()) {
      offerWrite(name);
    }
  }
  write(kindOffersEnd, [](WireWriter& /*out*/) {});
}

/// The peer has come anew: its former session is over, and what it has said there is not read any
/// more. It would cross what is said here.
void Session::formerEnd() {
  if (!exports_ || peerInstance_ == Mounts::Instance{}) {
    return;
  }
  std::vector<Ptr<Session>> formers; // held, for whoever hears of it may let go of any
  for (Session* session = first_; session != nullptr; session = session->next_) {
    if (session != this && session->exports_ && session->peerInstance_ == peerInstance_) {
      formers.emplace_back(session);
    }
  }
  for (const Ptr<Session>& former : formers) {
    former->close(now_, "the peer has come anew");
  }
}

void Session::byeRead(In& in) {
  const std::uint8_t ending = in.next8();
  peer_.reason = shown(in.nextString());
  const bool isKnown = ending >= endingOver && ending <= endingBusy;
  peer_.ending = isKnown ? static_cast<Ending>(ending) : endingOver;
  connection_->fail(peer_.reason.empty() ? String8("the peer has ended the session")
                                         : "the peer says: " + peer_.reason);
}

/// A part of the first record may have gone, so the bye stands behind all that the ring holds.
void Session::lastWordsWrite() {
  NboAttrLog::Out& out = *connection_->out();
  for (auto left = out.pending(); !left.empty(); left = out.pending()) {
    lastWords_.append(reinterpret_cast<const char*>(left.data()), left.size());
    out.consumed(left.size());
  }
  lastWords_ += bye(ending_, failure());
}

} // namespace Zel
