#include "peers/ProtobufChange.h"

#include <text.pb.h>

namespace Bench {

struct ProtobufChange::State {
  BenchProtobuf::Change written;
  BenchProtobuf::Change read;
  std::uint8_t bytes[64] = {};
  std::size_t size = 0;
};

ProtobufChange::ProtobufChange() : state_(std::make_unique<State>()) {
  state_->written.set_entity(0x1122334455667788);
  state_->written.set_attribute(274);
}
ProtobufChange::~ProtobufChange() = default;

std::size_t ProtobufChange::encode(std::uint32_t value) {
  state_->written.set_value(value);
  state_->size = state_->written.ByteSizeLong();
  state_->written.SerializeWithCachedSizesToArray(state_->bytes);
  return state_->size;
}

std::uint32_t ProtobufChange::decode() {
  state_->read.ParseFromArray(state_->bytes, static_cast<int>(state_->size));
  return state_->read.value();
}

} // namespace Bench
