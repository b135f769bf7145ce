#include <Zel/Connection>

#include <Zel/Demuxer>
#include <Zel/Exception>

#include <algorithm>
#include <new>
#include <string>

namespace Zel {

namespace {

std::size_t checkedCapacity(std::size_t capacity) {
  if (capacity < ConnectionLimits::smallestRing) {
    throwRangeException(String8("ring of " + std::to_string(capacity) + " bytes, smallest is " +
                                std::to_string(ConnectionLimits::smallestRing)));
  }
  return capacity;
}

} // namespace

Connection::Connection(End end, String8 peerName, const ConnectionLimits& limits,
                       Ptr<NboAttrLog::MountPolicy> policy)
    : end_(end), peerName_(std::move(peerName)), limits_(limits),
      out_(makeObject<NboAttrLog::Out>(this, checkedCapacity(limits.outCapacity))),
      in_(makeObject<NboAttrLog::In>(this, checkedCapacity(limits.inCapacity))),
      demuxer_(makeObject<NboAttrLog::Demuxer>(*this, std::move(policy))) {}

Connection::~Connection() {
  close();
  // Adapters that somebody holds may outlive the connection, and their halves with them; its ring
  // is of no use to them.
  out_->connection_ = nullptr;
  try {
    out_->ring_ = std::make_unique_for_overwrite<std::uint8_t[]>(Out::maxRecordSize);
    out_->record_ = nullptr;
    out_->capacity_ = out_->begin_ = out_->end_ = out_->size_ = 0;
  } catch (const std::bad_alloc&) { // then it goes with the last adapter
  }
  static_cast<Connection::In&>(*in_).connection_ = nullptr;
  demuxer_->connection_ = nullptr;
}

void Connection::fail(const String8& why) {
  if (isUp_) {
    failure_ = why;
    isUp_ = false;
    out_->isUp_ = false;
  }
}

void Connection::close(const String8& why) {
  fail(why);
  demuxer_->close();
}

std::span<const std::uint8_t> Connection::pendingOutput() const noexcept {
  return isUp_ ? out_->pending() : std::span<const std::uint8_t>();
}

void Connection::outputConsumed(std::size_t count) noexcept { out_->consumed(count); }

std::span<std::uint8_t> Connection::inputSpace() noexcept {
  return isUp_ ? in_->space() : std::span<std::uint8_t>();
}

void Connection::inputReceived(std::size_t count) noexcept { in_->received(count); }

bool Connection::service(std::size_t budget) {
  const Ptr<Connection> kept(this);
  if (!isUp_) {
    close();
    return false;
  }
  const bool moreInput = isUp_ && demuxer_->inputApply(budget);
  const bool moreOutput = isUp_ && demuxer_->outputWrite(budget);
  return isUp_ && (moreInput || moreOutput);
}

Connection::Out::Out(Connection* connection, std::size_t capacity)
    : connection_(connection), capacity_(capacity),
      ring_(std::make_unique_for_overwrite<std::uint8_t[]>(capacity + maxRecordSize)) {}

Connection::Out::~Out() = default;

Ptr<Connection::In> Connection::Out::reverse() const {
  return connection_ != nullptr ? Ptr<Connection::In>(connection_->in()) : nullptr;
}

std::span<const std::uint8_t> Connection::Out::pending() const noexcept {
  return {ring_.get() + begin_, std::min(size_, capacity_ - begin_)};
}

void Connection::Out::consumed(std::size_t count) noexcept {
  begin_ += count;
  begin_ -= begin_ >= capacity_ ? capacity_ : 0;
  size_ -= count;
  if (size_ == 0) {
    begin_ = end_ = 0;
  }
}

/// Brings a record into the ring that was not written there in one piece.
void Connection::Out::recordFold(std::size_t length) {
  const bool isBehind = record_ == ring_.get() + capacity_;
  if (isBehind && length > freeSpace()) {
    grow(size_ + length);
  }
  const std::size_t first = std::min(length, capacity_ - end_);
  const std::uint8_t* const from = ring_.get() + (isBehind ? capacity_ : end_);
  if (isBehind) {
    std::memcpy(ring_.get() + end_, from, first);
  }
  std::memcpy(ring_.get(), from + first, length - first);
  end_ = (end_ + length) % capacity_;
}

void Connection::Out::grow(std::size_t wanted) {
  const std::size_t larger = wanted + maxRecordSize;
  auto ring = std::make_unique_for_overwrite<std::uint8_t[]>(larger + maxRecordSize);
  const std::size_t first = std::min(size_, capacity_ - begin_);
  std::memcpy(ring.get(), ring_.get() + begin_, first);
  std::memcpy(ring.get() + first, ring_.get(), size_ - first);
  std::memcpy(ring.get() + larger, ring_.get() + capacity_, maxRecordSize); // the open record
  ring_ = std::move(ring);
  begin_ = 0;
  end_ = size_;
  capacity_ = larger;
}

void Connection::Out::putChunk(String8::IteratorConst& text) {
  const std::string_view rest = text.rest();
  // The record's closing token is still to come.
  constexpr std::size_t least = sizeof(std::uint32_t) + 1;
  const std::size_t most =
      std::max(std::min(chunkLimit_, room() - 1), least) - sizeof(std::uint32_t);
  const std::size_t count = std::min(rest.size(), most);
  put32(static_cast<std::uint32_t>(count));
  putBytes(rest.data(), count);
  text.positionIs((text.position() < 0 ? 0 : text.position()) + static_cast<int>(count));
  chunkFollows_ = count < rest.size();
}

Connection::In::~In() = default;

} // namespace Zel
