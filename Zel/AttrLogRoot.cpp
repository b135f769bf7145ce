#include <Zel/AttrLogRoot>

#include <Zel/Demuxer>

namespace Zel::NboAttrLog {

Root::Root(Demuxer& demuxer, bool isImported) noexcept
    : demuxer_(&demuxer), isImported_(isImported) {}

Root::~Root() = default;

void Root::inputIs(Input input) {
  const bool wasDropping = input_ == Input::dropped;
  input_ = input;
  if (demuxer_ == nullptr) {
    return;
  }
  const bool isDropping = input == Input::dropped;
  demuxer_->droppingRoots_ +=
      static_cast<unsigned>(isDropping) - static_cast<unsigned>(wasDropping);
  if (isDropping && !wasDropping) {
    demuxer_->flowInsDel(*this);
  }
}

void Root::pendingMark() noexcept {
  ++mark_;
  marked_ = owed_;
}

bool Root::isMarked(const FlowOut& flow) const noexcept { return flow.isMarked(mark_); }

void Root::flowCome(const FlowOut& flow) noexcept {
  ++owed_;
  marked_ += flow.isMarked(mark_) ? 1 : 0;
}

void Root::flowGone(const FlowOut& flow) noexcept {
  --owed_;
  marked_ -= flow.isMarked(mark_) ? 1 : 0;
}

void Root::demuxerDel() noexcept {
  if (demuxer_ != nullptr && input_ == Input::dropped) {
    --demuxer_->droppingRoots_;
  }
  demuxer_ = nullptr;
}

} // namespace Zel::NboAttrLog
