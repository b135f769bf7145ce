#include <Zel/MsgChannel>

namespace Zel {

namespace {
Ptr<MsgChannel::Constrainer>& installed() {
  static thread_local Ptr<MsgChannel::Constrainer> constrainer;
  return constrainer;
}
} // namespace

MsgChannel::Constrainer* MsgChannel::constrainer() noexcept { return installed().ptr(); }

void MsgChannel::constrainerIs(const Ptr<Constrainer>& constrainer) { installed() = constrainer; }

DeserializingEidAnchor::DeserializingEidAnchor(const EntityId& id, Entity* parent)
    : constrainer_(MsgChannel::constrainer()) {
  if (constrainer_) {
    savedId_ = constrainer_->deserializingEid();
    savedParent_ = constrainer_->deserializingInParent();
    constrainer_->deserializingEidIs(id);
    constrainer_->deserializingInParentIs(parent);
  }
}

DeserializingEidAnchor::~DeserializingEidAnchor() {
  if (constrainer_) {
    constrainer_->deserializingEidIs(savedId_);
    constrainer_->deserializingInParentIs(savedParent_);
  }
}

} // namespace Zel
