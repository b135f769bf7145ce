#include <Zel/Session>

#include <Zel/Exception>

#include <algorithm>

// Who may write to a root, as docs/protocol tells it. The rules are told there by number.

namespace Zel {

using NboAttrLog::In;
using NboAttrLog::Root;

constinit thread_local Session* Session::first_ = nullptr;

void Session::rulesBroken(const char* how) {
  throw AttrLogRecordException(String8("a peer that breaks the rules of who may write: ") + how);
}

/// Visits the sessions of this thread whose peers mirror `root` from here.
template <class Visit>
void Session::forDownstream(const Entity& root, const Visit& visit) {
  for (Session* session = first_; session != nullptr; session = session->next_) {
    for (auto& [name, exported] : session->exported_) {
      if (exported.entity.ptr() == &root) {
        visit(*session, exported);
      }
    }
  }
}

/// A root of this program's that may be somebody's mirror is frozen, or is not any more.
void Session::rightChanged(const Entity& root) {
  forDownstream(root, [](Session& session, Exported& exported) { session.rightSettle(exported); });
}

/// The mirror `root` has lost its connection: what was to be taken from downstream is not, and what
/// came from there may have got lost.
void Session::cutDownstream(const Entity& root) {
  forDownstream(root, [](Session& session, Exported& exported) {
    if (exported.granted == accessReadWrite &&
        session.logRecordsRead() != session.peerLogRecords_) {
      session.peerFate_ = std::max(session.peerFate_, echoUnknown);
    }
    exported.isSoft = false;
    session.rightSettle(exported);
  });
}

bool Session::isFreezing(const Entity& root) {
  bool is = false;
  forDownstream(root, [&](const Session& /*session*/, const Exported& exported) {
    is = is || exported.right == Exported::freezing;
  });
  return is;
}

bool Session::mayPeerWrite(const Exported& exported) const {
  return exported.granted == accessReadWrite && !exported.isWithdrawn &&
         !exported.entity->zelIsFrozen();
}

/// Freezes the peer's mirror or decides to thaw it, as it may write or not (rules 4, 8, 9, 10).
void Session::rightSettle(Exported& exported) {
  const bool mayWrite = mayPeerWrite(exported);
  switch (exported.right) {
  case Exported::walked:
    break; // until the walk is over
  case Exported::freezing:
    if (!mayWrite && !exported.isSoft) {
      exported.root->inputIs(Root::Input::dropped);
    }
    break; // until the answer has come
  case Exported::held:
    if (mayWrite) {
      exported.right = Exported::thawing;
      exported.root->pendingMark();
      exported.root->sendsPlainIs(true);
      rightStep(exported);
    }
    break;
  case Exported::thawing:
    if (!mayWrite) {
      exported.right = Exported::held;
      exported.root->sendsPlainIs(false);
    }
    break;
  case Exported::thawed:
    if (!mayWrite) {
      freeze(exported, exported.isSoft);
    }
  }
}

/// Said at once, and before anything else below the root (rule 4). The ring grows for it if need
/// be: of a root no more than one thaw and one freeze are unread.
void Session::freeze(Exported& exported, bool isSoft) {
  exported.right = Exported::freezing;
  exported.isSoft = isSoft;
  exported.root->sendsPlainIs(false);
  if (!isSoft) {
    exported.root->inputIs(Root::Input::dropped);
  }
  ++exported.freezes;
  if (isUp()) {
    payloadWrite(payload(kindFreeze, [&](WireWriter& out) {
      out.putEntityId(exported.root->entityId());
      out.put32(exported.freezes);
      out.put8(isSoft ? 1 : 0);
    }));
  }
}

/// Whether one of the records here has room. It need not wait until any has, which with the rest of
/// a text before it may be when nobody asks any more.
bool Session::hasRoomForRight() const noexcept {
  constexpr std::size_t most = NboAttrLog::recordOverhead + 32;
  return isUp() && connection_->out()->freeSpace() >= most;
}

/// Says what has waited for what was pending.
void Session::rightStep(Exported& exported) {
  if ((exported.right == Exported::walked || exported.right == Exported::thawing) &&
      exported.root->isMarkedSent() && hasRoomForRight()) {
    exported.right == Exported::walked ? walkOverWrite(exported) : thawWrite(exported);
  }
}

void Session::rightsStep() {
  for (auto& [name, exported] : exported_) {
    rightStep(exported);
  }
  if (mounts_ && mounts_->session_ == this) {
    for (const auto& [name, mount] : mounts_->mounts()) {
      if (mount->isFrozenOwed_) {
        frozenWrite(*mount);
      }
    }
  }
}

void Session::walkOverWrite(Exported& exported) {
  syncModeWrite(*exported.root, StreamAdapter::syncModeSynced);
  exported.right = Exported::held;
  rightSettle(exported);
}

void Session::thawWrite(Exported& exported) {
  const std::uint64_t dropped =
      exported.root->dropped() - exported.droppedTold + std::exchange(exported.droppedUpstream, 0);
  exported.droppedTold = exported.root->dropped();
  exported.right = Exported::thawed;
  exported.root->inputIs(Root::Input::changes);
  const bool isTold = !peerDroppedTake(); // by an echo
  payloadWrite(payload(kindThaw, [&](WireWriter& out) {
    out.putEntityId(exported.root->entityId());
    out.put32(exported.freezes);
    out.put64(dropped);
    out.put8(isTold ? 1 : 0);
  }));
}

Session::Exported* Session::exportedOf(EntityId root) {
  const auto at = std::find_if(exported_.begin(), exported_.end(), [&](const auto& member) {
    return member.second.root->entityId() == root;
  });
  return at != exported_.end() ? &at->second : nullptr;
}

void Session::frozenRead(In& in) {
  Exported* const exported = exportedOf(in.nextEntityId());
  const std::uint32_t freezes = in.nextU32();
  if (exported == nullptr) {
    throwRangeException("an answer of no root"); // which has been withdrawn
  }
  if (exported->right != Exported::freezing || exported->freezes != freezes) {
    rulesBroken("an answer to no freeze");
  }
  exported->right = Exported::held;
  exported->root->inputIs(Root::Input::refused);
  frozenUpstream(*exported->entity);
  rightSettle(*exported);
}

/// Somebody downstream of a mirror has answered, or is there no more: the mirror may answer now.
void Session::frozenUpstream(const Entity& root) {
  for (Session* session = first_; session != nullptr; session = session->next_) {
    const Ptr<Mount> mount = session->mountOf(root);
    if (mount && mount->isFrozenOwed_) {
      session->frozenWrite(*mount);
    }
  }
}

void Session::freezeRead(In& in) {
  const Ptr<Mount> mount = mountOf(in.nextEntityId());
  const std::uint32_t freezes = in.nextU32();
  const bool isSoft = in.next8() != 0;
  if (!mount) {
    throwRangeException("a freeze of no mount");
  }
  if (!mount->isWritable() || freezes != mount->freezes_ + 1) {
    rulesBroken("a freeze of what is frozen");
  }
  mount->root_->inputIs(Root::Input::all);
  mount->freezes_ = freezes;
  mount->isFrozenOwed_ = true;
  mount->isSoft_ = isSoft;
  forDownstream(*mount->entity(),
                [&](const Session& /*session*/, Exported& exported) { exported.isSoft = isSoft; });
  mount->writableIs(false);
}

/// Whether anything of the peer's was dropped that it has not been told of. It is told now.
bool Session::peerDroppedTake() noexcept {
  const std::uint64_t dropped = connection_->demuxer()->counts().dropped;
  const bool isNew = std::exchange(peerDropped_, dropped) != dropped || peerFate_ == echoDropped;
  if (peerFate_ == echoDropped) {
    peerFate_ = echoApplied;
  }
  return isNew;
}

/// Behind all that was pending when the mirror was frozen; nothing has come to that since (rule 6).
/// A soft one goes behind the answers of those downstream (rule 12).
void Session::frozenWrite(Mount& mount) {
  if (owes(mount.root_) || (mount.isSoft_ && isFreezing(*mount.entity())) || !hasRoomForRight()) {
    return;
  }
  mount.isFrozenOwed_ = false;
  payloadWrite(payload(kindFrozen, [&](WireWriter& out) {
    out.putEntityId(mount.root_->entityId());
    out.put32(mount.freezes_);
  }));
}

void Session::thawRead(In& in) {
  const Ptr<Mount> mount = mountOf(in.nextEntityId());
  const std::uint32_t freezes = in.nextU32();
  const std::uint64_t dropped = in.nextU64();
  const bool isTold = in.next8() != 0;
  if (!mount) {
    throwRangeException("a thaw of no mount");
  }
  if (mount->isWritable() || mount->isFrozenOwed_ || mount->state() != Mount::live ||
      mount->access() != accessReadWrite || freezes != mount->freezes_) {
    rulesBroken("a thaw of what is not frozen");
  }
  if (!isTold) {
    fateIs(echoDropped); // of whichever root it was: the next echo does not tell of it any more
  }
  if (dropped != 0) {
    forDownstream(*mount->entity(), [&](Session& /*session*/, Exported& exported) {
      exported.droppedUpstream += dropped; // whose writes they were nobody knows (rule 11)
    });
  }
  mount->root_->inputIs(Root::Input::changes);
  mount->writableIs(true);
  mount->droppedInc(dropped);
}

/// What this program and those downstream have written to its mirrors has met with something:
/// whoever waits for an echo is told, or else who asks next.
void Session::fateIs(EchoResult result) {
  fate_ = std::max(fate_, result);
  for (EchoAsked& echo : echoesWanted_) {
    echo.fate = std::max(echo.fate, result);
  }
  for (auto& [serial, echo] : echoesAsked_) {
    echo.fate = std::max(echo.fate, result);
  }
  for (const auto& [name, mount] : mounts_ ? mounts_->mounts() : Mounts::Members{}) {
    if (mount->root_) {
      forDownstream(*mount->entity(), [&](Session& session, const Exported& exported) {
        if (exported.granted == accessReadWrite) {
          session.peerFate_ = std::max(session.peerFate_, result);
        }
      });
    }
  }
}

void Session::writableIs(const Name& name, bool writable, bool isSoft) {
  const auto at = exported_.find(name);
  if (at != exported_.end()) {
    at->second.isWithdrawn = !writable;
    if (!writable) {
      at->second.isSoft = isSoft;
    }
    rightSettle(at->second);
  }
}

bool Session::isPeerWriting(const Name& name) const {
  const auto at = exported_.find(name);
  return at != exported_.end() && at->second.root->isInputApplied();
}

} // namespace Zel
