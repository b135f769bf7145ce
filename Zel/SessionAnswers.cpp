#include <Zel/Session>

#include <Zel/Exception>
#include <Zel/StateDigest>

#include <algorithm>
#include <memory>

// What the ends of a session ask each other about what they mirror.

namespace Zel {

using NboAttrLog::In;
using NboAttrLog::Root;

bool Session::owes(const Ptr<Root>& root) const noexcept { return root && root->owed() != 0; }

bool Session::owesAnything() const noexcept {
  const bool isMirrorOwing =
      mounts_ && std::any_of(mounts_->mounts().begin(), mounts_->mounts().end(),
                             [&](const auto& member) { return owes(member.second->root_); });
  return isMirrorOwing || std::any_of(exported_.begin(), exported_.end(),
                                      [&](const auto& member) { return owes(member.second.root); });
}

std::uint64_t Session::logRecords() const noexcept {
  return connection_->out()->recordsWritten() - sessionRecords_;
}

std::uint64_t Session::logRecordsRead() const noexcept {
  return connection_->demuxer()->counts().records - sessionRecordsRead_;
}

void Session::digestAsk(const Name& name, DigestAnswer answerTo) {
  if (digestsAsked_.size() >= maxDigests) {
    throwRangeException("too many digests at a time");
  }
  const std::uint32_t serial = ++lastSerial_;
  digestsAsked_.emplace(serial, DigestAsked{name, std::move(answerTo), now_ + options_.digestTime});
  const Ptr<Mount> mount = mounts_ ? mounts_->mount(name) : nullptr;
  if (!isUp() || !mount || !mount->root_) {
    answer(serial, digestUnknown);
  }
}

/// Asks for those digests of whose roots this end owes nothing.
void Session::digestsAsk() {
  std::vector<std::uint32_t> late;
  for (auto& [serial, asked] : digestsAsked_) {
    if (asked.isSent) {
      continue;
    }
    const Ptr<Mount> mount = mounts_->mount(asked.name);
    if (!owes(mount->root_)) {
      asked.isSent = true;
      asked.logRecords = logRecords();
      write(kindDigestAsk, [&number = serial, &name = asked.name](WireWriter& out) {
        out.put32(number);
        out.putString(name);
      });
    } else if (now_ >= asked.until) {
      late.push_back(serial);
    }
  }
  for (const std::uint32_t serial : late) {
    answer(serial, digestBusy);
  }
}

void Session::digestAskRead(In& in) {
  const std::uint32_t serial = in.nextU32();
  const Name name(in.nextString());
  if (digestsOwed_.size() >= maxDigests) {
    throw AttrLogRecordException("the peer asks for too many digests at a time");
  }
  digestsOwed_.push_back({serial, name, now_ + options_.digestTime});
}

/// Answers one of those that wait, since each takes as long as the state is large. Whether another
/// can be answered right now.
bool Session::digestsWrite() {
  const auto exported = [this](const DigestOwed& owed) -> const Exported* {
    const auto at = exported_.find(owed.name);
    return at != exported_.end() ? &at->second : nullptr;
  };
  const auto isQuiet = [](const Exported& of) {
    return of.right != Exported::walked && of.root->owed() == 0;
  };
  const auto ready = [&](const DigestOwed& owed) {
    const Exported* const of = exported(owed);
    return of == nullptr || isQuiet(*of) || now_ >= owed.until;
  };
  const auto at = std::find_if(digestsOwed_.begin(), digestsOwed_.end(), ready);
  if (at == digestsOwed_.end() || !hasRoom()) {
    return false; // the ring drains first
  }
  const DigestOwed digest = *at;
  digestsOwed_.erase(at);
  const Exported* const of = exported(digest);
  const DigestResult result = of == nullptr  ? digestUnknown
                              : isQuiet(*of) ? digestEqual
                                             : digestBusy;
  const std::uint64_t ours = result == digestEqual ? stateDigest(*of->entity) : 0;
  write(kindDigest, [&](WireWriter& out) {
    out.put32(digest.serial);
    out.put8(static_cast<std::uint8_t>(result));
    out.put64(ours);
  });
  return hasRoom() && std::any_of(digestsOwed_.begin(), digestsOwed_.end(), ready);
}

void Session::digestRead(In& in) {
  const std::uint32_t serial = in.nextU32();
  const std::uint8_t result = in.next8();
  const std::uint64_t theirs = in.nextU64();
  const auto at = digestsAsked_.find(serial);
  if (at == digestsAsked_.end() || !at->second.isSent || result > digestUnknown ||
      result == digestDiffers) {
    throwRangeException("a digest that was not asked for");
  }
  const Ptr<Mount> mount = mounts_ ? mounts_->mount(at->second.name) : nullptr;
  if (result != digestEqual) {
    answer(serial, static_cast<DigestResult>(result));
  } else if (!mount || !mount->root_) {
    answer(serial, digestUnknown);
  } else if (stateDigest(*mount->entity()) == theirs) {
    answer(serial, digestEqual);
  } else {
    // What was written here since may have come too late for the peer's digest.
    const bool mayWrite = mount->access() == accessReadWrite;
    const bool hasWritten = owes(mount->root_) || logRecords() != at->second.logRecords;
    answer(serial, mayWrite && hasWritten ? digestBusy : digestDiffers);
  }
}

void Session::answer(std::uint32_t serial, DigestResult result) {
  const auto at = digestsAsked_.find(serial);
  if (at == digestsAsked_.end()) {
    return; // answered, when whoever heard of another closed the session
  }
  const DigestAnswer to = std::move(at->second.to);
  digestsAsked_.erase(at);
  tell(to, result);
}

void Session::echoAsk(EchoAnswer answerTo) {
  if (isUp()) {
    echoesWanted_.push_back({std::move(answerTo), nullptr, fate_});
  } else {
    tell(answerTo, echoUnknown);
  }
}

/// Asks for the echoes, behind what was pending when they were wanted. What this end exports has
/// marks of another kind, so that is waited for until nothing is pending.
void Session::echoesWrite() {
  const auto forRoots = [this](const auto& visit) {
    if (mounts_) {
      for (const auto& [name, mount] : mounts_->mounts()) {
        if (mount->root_) {
          visit(*mount->root_);
        }
      }
    }
  };
  if (!isOpen_ || echoesWanted_.empty()) {
    return;
  }
  if (echoesMarked_ == 0) {
    forRoots([](Root& root) { root.pendingMark(); });
    echoesMarked_ = echoesWanted_.size();
  }
  bool isSent = std::none_of(exported_.begin(), exported_.end(),
                             [&](const auto& member) { return owes(member.second.root); });
  forRoots([&](const Root& root) { isSent = isSent && root.isMarkedSent(); });
  while (isSent && echoesMarked_ != 0 && hasRoom()) {
    EchoAsked echo = std::move(echoesWanted_.front());
    echoesWanted_.pop_front();
    --echoesMarked_;
    const std::uint32_t serial = ++lastSerial_;
    echoesAsked_.emplace(serial, std::move(echo));
    write(kindEchoAsk, [&](WireWriter& out) { out.put32(serial); });
  }
}

/// Forgets what is to be asked for somebody downstream who has gone.
void Session::askerGone(const Session& asker) {
  for (std::size_t at = echoesWanted_.size(); at-- != 0;) {
    if (echoesWanted_[at].asker == &asker) {
      echoesWanted_.erase(echoesWanted_.begin() + static_cast<std::ptrdiff_t>(at));
      echoesMarked_ -= at < echoesMarked_ ? 1 : 0;
    }
  }
}

/// A question of the peer's: of whom this end mirrors what the peer may write is asked first.
void Session::echoAskRead(In& in) {
  const std::uint32_t serial = in.nextU32();
  if (++echoesOwed_ > maxEchoes) {
    throw AttrLogRecordException("the peer asks for too many echoes at a time");
  }
  peerLogRecords_ = logRecordsRead();
  const auto open = std::make_shared<std::size_t>(1);
  const auto came = [self = self_, serial, open](EchoResult result) {
    const Ptr<Session> asked(*self);
    if (!asked) {
      return; // nobody waits any more
    }
    asked->peerFate_ = std::max(asked->peerFate_, result);
    if (--*open == 0) {
      asked->echoWrite(serial);
    }
  };
  for (Session* upstream = first_; upstream != nullptr; upstream = upstream->next_) {
    const bool isUpstream =
        upstream != this &&
        std::any_of(exported_.begin(), exported_.end(), [&](const auto& member) {
          return member.second.granted == accessReadWrite &&
                 upstream->mountOf(*member.second.entity);
        });
    if (isUpstream && upstream->isUp()) {
      ++*open;
      upstream->echoesWanted_.push_back({came, this, echoApplied});
    } else if (isUpstream) {
      peerFate_ =
          std::max(peerFate_, echoUnknown); // it has gone, and nobody has told its mounts yet
    }
  }
  came(echoApplied);
}

/// All that the peer had written when it asked has met its fate.
void Session::echoWrite(std::uint32_t serial) {
  const auto answer = [self = self_, serial] {
    const Ptr<Session> asked(*self);
    if (!asked) {
      return;
    }
    const EchoResult met = asked->peerFate_;
    const EchoResult result = asked->peerDroppedTake() ? echoDropped : met;
    asked->peerFate_ = echoApplied;
    --asked->echoesOwed_;
    asked->write(kindEcho, [&](WireWriter& out) {
      out.put32(serial);
      out.put8(result);
    });
  };
  exports_ ? exports_->echo(*this, answer) : answer();
}

void Session::echoRead(In& in) {
  const std::uint32_t serial = in.nextU32();
  const std::uint8_t result = in.next8();
  const auto at = echoesAsked_.find(serial);
  if (at == echoesAsked_.end() || result > echoDropped) {
    throwRangeException("an echo that was not asked for");
  }
  if (result != echoApplied) {
    fateIs(static_cast<EchoResult>(result));
  }
  const EchoAsked echo = std::move(at->second);
  echoesAsked_.erase(at);
  if (echo.asker == nullptr && echo.fate != echoApplied) {
    fate_ = echoApplied; // which this answer tells
  }
  tell(echo.to, echo.fate);
}

void Session::answersEnd() {
  while (!digestsAsked_.empty()) {
    answer(digestsAsked_.begin()->first, digestUnknown);
  }
  for (const auto& [serial, echo] : std::exchange(echoesAsked_, {})) {
    tell(echo.to, echoUnknown);
  }
  echoesMarked_ = 0;
  for (const EchoAsked& echo : std::exchange(echoesWanted_, {})) {
    tell(echo.to, echoUnknown);
  }
  writesEnd();
}

} // namespace Zel
