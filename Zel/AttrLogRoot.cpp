#include <Zel/AttrLogRoot>

#include <Zel/Demuxer>

namespace Zel::NboAttrLog {

Root::~Root() = default;

void Root::isToldOfWalksIs(bool told) {
  isToldOfWalks_ = told;
  if (told && isWalking_) {
    syncModeWrite(StreamAdapter::syncModeResync);
    walkStep();
  }
}

void Root::walkAgain() {
  if (!isWalking_) {
    isWalking_ = true;
    syncModeWrite(StreamAdapter::syncModeResync);
  }
}

void Root::walkStep() {
  if (isWalking_ && firstFlows_ == 0 && isToldOfWalks_) {
    isWalking_ = false;
    syncModeWrite(StreamAdapter::syncModeSynced);
  }
}

void Root::syncModeWrite(unsigned mode) const {
  Connection* const connection = demuxer_ != nullptr ? demuxer_->connection() : nullptr;
  if (connection == nullptr || !connection->isUp() || !isToldOfWalks_) {
    return;
  }
  const Ptr<Out>& out = connection->out();
  out->nextHeaderIs(MsgHeader::fixed(entityId_, attrIdSyncMode, sizeof(std::uint32_t)));
  out << transactBegin;
  out << mode;
  out << transactEnd;
}

void Root::guardsDel() {
  const std::vector<Ptr<StreamAdapter>> guards = std::move(guards_);
  guards_.clear();
  for (const Ptr<StreamAdapter>& guard : guards) {
    guard->doRemountSelf(nullptr);
  }
}

void Root::guardsDel(const Root& older) {
  if (older.guards_.empty()) {
    return;
  }
  const Ptr<const Out> out(older.guards_.front()->nboAttrLogOut());
  std::vector<Ptr<StreamAdapter>> kept;
  for (const Ptr<StreamAdapter>& guard : std::exchange(guards_, {})) {
    Entity* const entity = guard->zelNotifierEntity();
    if (entity != nullptr && !entity->zelNboAttrLogSa(out)) {
      kept.push_back(guard);
    } else {
      guard->doRemountSelf(nullptr);
    }
  }
  guards_ = std::move(kept);
}

} // namespace Zel::NboAttrLog
