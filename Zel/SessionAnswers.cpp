#include <Zel/Session>

#include <Zel/Exception>
#include <Zel/StateDigest>

#include <algorithm>

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
                                      [&](const auto& member) { return owes(member.second); });
}

std::uint64_t Session::logRecords() const noexcept {
  return connection_->out()->recordsWritten() - sessionRecords_;
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
  const auto ready = [this](const DigestOwed& owed) {
    const Ptr<Root> root = exported(owed.name);
    return !root || (!root->isWalking() && root->owed() == 0) || now_ >= owed.until;
  };
  const auto at = std::find_if(digestsOwed_.begin(), digestsOwed_.end(), ready);
  if (at == digestsOwed_.end() || !hasRoom()) {
    return false; // the ring drains first
  }
  const DigestOwed digest = *at;
  digestsOwed_.erase(at);
  const Ptr<Root> root = exported(digest.name);
  const bool isQuiet = root && !root->isWalking() && root->owed() == 0;
  const DigestResult result = !root ? digestUnknown : isQuiet ? digestEqual : digestBusy;
  const std::uint64_t ours = isQuiet ? stateDigest(*exports_->roots().at(digest.name).entity) : 0;
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
  const DigestAnswer to = std::move(at->second.to);
  digestsAsked_.erase(at);
  tell(to, result);
}

void Session::echoAsk(EchoAnswer answerTo) {
  if (isUp()) {
    echoesWanted_.push_back({std::move(answerTo), nullptr});
  } else {
    tell(answerTo, false);
  }
}

/// Asks for the echoes that are not to wait for anything more that is owed.
void Session::echoesWrite() {
  if (!isOpen_ || echoesWanted_.empty()) {
    return;
  }
  const bool isOwing = owesAnything();
  std::vector<EchoAsked> waiting;
  for (EchoAsked& echo : std::exchange(echoesWanted_, {})) {
    if (!hasRoom() || (echo.repaired ? owes(echo.repaired) : isOwing)) {
      waiting.push_back(std::move(echo));
      continue;
    }
    if (const Ptr<Mount> mount = mountOf(echo.repaired)) {
      mount->isRepairOwed_ = false;
    }
    const std::uint32_t serial = ++lastSerial_;
    echoesAsked_.emplace(serial, std::move(echo));
    write(kindEchoAsk, [&](WireWriter& out) { out.put32(serial); });
  }
  echoesWanted_ = std::move(waiting);
}

void Session::echoRead(In& in) {
  const auto at = echoesAsked_.find(in.nextU32());
  if (at == echoesAsked_.end()) {
    throwRangeException("an echo that was not asked for");
  }
  const EchoAsked echo = std::move(at->second);
  echoesAsked_.erase(at);
  echoed(echo, true);
}

void Session::echoed(const EchoAsked& echo, bool came) {
  if (!echo.repaired) {
    tell(echo.to, came);
  } else if (const Ptr<Mount> mount = mountOf(echo.repaired)) {
    --mount->repairs_;
    liveIf(*mount);
  } else {
    echo.repaired->answersDec(); // of a root of this end's, or of a mount that has it no more
  }
}

void Session::answersEnd() {
  while (!digestsAsked_.empty()) {
    answer(digestsAsked_.begin()->first, digestUnknown);
  }
  for (const auto& [serial, echo] : std::exchange(echoesAsked_, {})) {
    echoed(echo, false);
  }
  for (const EchoAsked& echo : std::exchange(echoesWanted_, {})) {
    echoed(echo, false);
  }
  writesEnd();
}

} // namespace Zel
