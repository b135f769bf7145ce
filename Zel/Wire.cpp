#include <Zel/Wire>

#include <Zel/Exception>
#include <Zel/Format>

#include <algorithm>
#include <string>

namespace Zel {

void WireWriter::putString(const String8& text) {
  if (text.length() > maxWholeString) {
    throwRangeException(String8("string of " + std::to_string(text.length()) +
                                " bytes where at most " + std::to_string(maxWholeString) +
                                " are sent"));
  }
  put32(text.length());
  putBytes(text.charPtr(), text.length());
}

void WireWriter::tooLarge(std::size_t count) const {
  throwRangeException(String8("record too large: " + std::to_string(count) + " bytes more where " +
                              std::to_string(room()) + " fit"));
}

namespace ByteConnection {

void In::nextBytes(std::size_t count) {
  if (count > left()) {
    throwRangeException("record too short");
  }
  position_ = advanced(position_, count);
}

void In::nextBytes(void* to, std::size_t count) {
  if (count > left()) {
    throwRangeException("record too short");
  }
  const std::size_t first = std::min(count, static_cast<std::size_t>(end_ - position_));
  std::memcpy(to, position_, first);
  std::memcpy(static_cast<std::uint8_t*>(to) + first, begin_, count - first);
  position_ = advanced(position_, count);
}

String8 In::nextString() {
  const std::uint32_t length = nextU32();
  if (length > maxWholeString || length > left()) {
    throwRangeException(length > maxWholeString ? "string too long" : "record too short");
  }
  if (static_cast<std::size_t>(end_ - position_) > length) [[likely]] {
    String8 text(std::string_view(reinterpret_cast<const char*>(position_), length));
    position_ += length;
    return text;
  }
  std::string text(length, '\0');
  nextBytes(text.data(), length);
  return String8(text);
}

void In::overwrite(const std::uint8_t* from, const void* bytes, std::size_t count) noexcept {
  auto* const at = const_cast<std::uint8_t*>(from);
  const std::size_t first = std::min(count, static_cast<std::size_t>(end_ - from));
  std::memcpy(at, bytes, first);
  std::memcpy(const_cast<std::uint8_t*>(begin_), static_cast<const std::uint8_t*>(bytes) + first,
              count - first);
}

} // namespace ByteConnection

ConnectionInSizeAnchor::ConnectionInSizeAnchor(ByteConnection::In& in, std::size_t count)
    : in_(in), saved_(in.limit()) {
  if (count > in.left()) {
    throwRangeException("record too short");
  }
  in.limitIs(in.advanced(in.position(), count));
}

} // namespace Zel
