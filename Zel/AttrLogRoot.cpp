#include <Zel/AttrLogRoot>

#include <Zel/Demuxer>

namespace Zel::NboAttrLog {

Root::Root(Demuxer& demuxer, bool isImported) noexcept
    : demuxer_(&demuxer), isImported_(isImported) {}

Root::~Root() = default;

void Root::isToldOfWalksIs(bool told) {
  isToldOfWalks_ = told;
  tell();
  walkStep();
}

void Root::walkAgain() {
  if (!isWalking_) {
    isWalking_ = true;
    tell();
  }
}

void Root::walkStep() {
  if (isWalking_ && firstFlows_ == 0 && isToldOfWalks_) {
    isWalking_ = false;
    tell();
  }
}

/// Tells the peer of the walk what it does not know. Without room it waits, so that the ring does
/// not grow for a peer that asks for one walk after another and reads nothing; one that begins and
/// ends meanwhile is not told of.
void Root::tell() {
  constexpr std::size_t markSize = recordOverhead + sizeof(std::uint32_t);
  Connection* const connection = demuxer_ != nullptr ? demuxer_->connection() : nullptr;
  if (connection == nullptr || !connection->isUp() || !isToldOfWalks_) {
    return;
  }
  const Told wanted = isWalking_ ? Told::walking : Told::over;
  while (told_ != wanted) {
    const Ptr<Out>& out = connection->out();
    if (isUntold_ || out->freeSpace() < markSize) {
      if (!std::exchange(isUntold_, true)) {
        demuxer_->untold_.emplace_back(this);
      }
      return;
    }
    told_ = told_ == Told::nothing ? Told::walking : wanted;
    out->nextHeaderIs(MsgHeader::fixed(entityId_, attrIdSyncMode, sizeof(std::uint32_t)));
    out << transactBegin;
    out << unsigned{told_ == Told::walking ? StreamAdapter::syncModeResync
                                           : StreamAdapter::syncModeSynced};
    out << transactEnd;
  }
}

/// The connection lets go of the root: nobody is told of its walk any more.
void Root::demuxerDel() {
  if (demuxer_ == nullptr) {
    return;
  }
  keepsGuards_ ? guardsPrune() : guardsDel();
  while (answers_ != 0) {
    answersDec();
  }
  demuxer_ = nullptr;
}

void Root::answersInc() noexcept {
  if (demuxer_ != nullptr) {
    hasRefused_ = false;
    ++answers_;
    ++demuxer_->answering_;
  }
}

void Root::answersDec() noexcept {
  if (answers_ != 0) {
    --answers_;
    --demuxer_->answering_;
  }
}

void Root::guardIs(const Ptr<StreamAdapter>& adapter) {
  if (guards_.size() >= guardsMost_) {
    guardsPrune();
    guardsMost_ = 2 * guards_.size() + fewGuards;
  }
  adapter->isGuard_ = true;
  guards_.push_back(adapter);
}

/// Lets those go whose entities have left the tree, or have an adapter of this connection by now,
/// which refuses by itself.
void Root::guardsPrune() {
  std::vector<Ptr<StreamAdapter>> kept;
  for (const Ptr<StreamAdapter>& guard : std::exchange(guards_, {})) {
    const Ptr<const Out> out(guard->nboAttrLogOut());
    if (guard->isInTree() && !guard->zelNotifierEntity()->zelNboAttrLogSa(out)) {
      kept.push_back(guard);
    } else {
      guard->doRemountSelf(nullptr);
    }
  }
  guards_ = std::move(kept);
}

void Root::guardsDel() {
  for (const Ptr<StreamAdapter>& guard : std::exchange(guards_, {})) {
    guard->doRemountSelf(nullptr);
  }
}

void Root::guardsDel(std::unordered_set<const Entity*>& guarded) {
  std::vector<Ptr<StreamAdapter>> kept;
  for (const Ptr<StreamAdapter>& guard : std::exchange(guards_, {})) {
    if (guard->isInTree() && guarded.insert(guard->zelNotifierEntity()).second) {
      kept.push_back(guard);
    } else {
      guard->doRemountSelf(nullptr);
    }
  }
  guards_ = std::move(kept);
}

} // namespace Zel::NboAttrLog
