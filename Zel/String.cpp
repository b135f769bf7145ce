#include <Zel/String>

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstring>
#include <limits>
#include <new>
#include <ostream>
#include <stdexcept>

namespace Zel {

namespace {

std::uint64_t littleEndian(std::uint64_t word) {
  return std::endian::native == std::endian::big ? __builtin_bswap64(word) : word;
}

std::uint64_t load64(const unsigned char* bytes) {
  std::uint64_t word;
  std::memcpy(&word, bytes, sizeof word);
  return littleEndian(word);
}

std::uint64_t load32(const unsigned char* bytes) {
  std::uint32_t word;
  std::memcpy(&word, bytes, sizeof word);
  return std::endian::native == std::endian::big ? __builtin_bswap32(word) : word;
}

/// The last eight bytes of a text that is not empty, or all of a shorter one, as one word. Two
/// overlapping reads take the place of a loop; the length, mixed in elsewhere, keeps texts of
/// different length apart.
std::uint64_t loadTail(const unsigned char* text, std::size_t length) {
  if (length >= 8) {
    return load64(text + length - 8);
  }
  if (length >= 4) {
    return load32(text) << 32 | load32(text + length - 4);
  }
  return std::uint64_t{text[0]} << 16 | std::uint64_t{text[length / 2]} << 8 | text[length - 1];
}

constexpr std::uint64_t hashMultiplier = 0x9fb21c651e98df25;
constexpr std::uint64_t hashFinalizer = 0xd6e8feb86659fd93;

std::uint64_t hashStep(std::uint64_t state, std::uint64_t word) {
  state = (state ^ word) * hashMultiplier;
  return state ^ state >> 32;
}

} // namespace

constinit StringN<unsigned char>::Data StringN<unsigned char>::nullStringData_{0};

void StringN<unsigned char>::Data::storageFree() const noexcept {
  ::operator delete(const_cast<Data*>(this));
}

StringN<unsigned char>::Data* StringN<unsigned char>::Data::make(std::size_t length) {
  if (length >= std::numeric_limits<std::uint32_t>::max()) {
    throw std::length_error("a string of 4 GiB or more");
  }
  const std::size_t size = sizeof(Data) - sizeof text_ + length + 1;
  void* const storage = ::operator new(size < sizeof(Data) ? sizeof(Data) : size);
  static_assert(sizeof(Data) == 2 * sizeof(unsigned) + sizeof text_, "the text follows the length");
  auto* const record = ::new (storage) Data(static_cast<unsigned>(length));
  unsigned char* const text = record->text_; // which runs on behind its array
  text[length] = 0;
  return record;
}

void StringN<unsigned char>::init(const char* text, unsigned start, std::size_t length) {
  init(length == 0 ? std::string_view{} : std::string_view{text + start, length}, {});
}

void StringN<unsigned char>::init(std::string_view head, std::string_view tail) {
  const std::size_t length = head.size() + tail.size();
  if (length == 0) {
    data_.ptrAssign(&nullStringData_);
    return;
  }
  Data* const record = Data::make(length);
  unsigned char* const text = record->text_;
  if (!head.empty()) {
    std::memcpy(text, head.data(), head.size());
  }
  if (!tail.empty()) {
    std::memcpy(text + head.size(), tail.data(), tail.size());
  }
  data_ = Ptr<const Data>::adopt(record);
}

void StringN<unsigned char>::recordAppend(Ptr<const Data>& record, unsigned& capacity,
                                          std::string_view tail) {
  if (tail.empty()) {
    return;
  }
  const std::size_t old = record->length();
  const std::size_t length = old + tail.size();
  if (length > capacity || record->references() != 1) {
    const std::size_t room = length > capacity ? std::max(length, 2 * old) : capacity;
    Data* const larger = Data::make(room);
    unsigned char* const copy = larger->text_;
    std::memcpy(copy, record->text(), old);
    capacity = static_cast<unsigned>(room);
    record = Ptr<const Data>::adopt(larger);
  }
  auto* const own = const_cast<Data*>(record.ptr());
  unsigned char* const text = own->text_; // which runs on behind its array
  std::memcpy(text + old, tail.data(), tail.size());
  text[length] = 0;
  own->length_ = static_cast<unsigned>(length);
}

unsigned StringN<unsigned char>::pos(unsigned start, const unsigned char* text,
                                     unsigned textLength) const noexcept {
  const std::string_view wanted(reinterpret_cast<const char*>(text), textLength);
  const std::size_t at = view().find(wanted, start);
  return at == std::string_view::npos ? npos : static_cast<unsigned>(at);
}

// A multiply-and-fold hash over little-endian 64-bit words: each word is combined by exclusive or,
// multiplied by an odd constant and folded onto the low half. Two more multiplications bring every
// bit of the last word into every bit of the upper half, which is the result.
unsigned StringN<unsigned char>::hash() const noexcept {
  const unsigned char* const text = data_->text();
  const std::size_t length = data_->length();
  std::uint64_t state = hashStep(hashFinalizer, length);
  if (length != 0) {
    for (std::size_t at = 0; at + 8 < length; at += 8) {
      state = hashStep(state, load64(text + at));
    }
    state = hashStep(state, loadTail(text, length));
  }
  state *= hashFinalizer;
  state ^= state >> 32;
  return static_cast<unsigned>(state * hashFinalizer >> 32);
}

std::string_view StringN<unsigned char>::IteratorBase::rest() const noexcept {
  const std::size_t from = position_ < 0 ? 0 : static_cast<std::size_t>(position_);
  return from >= record_->length() ? std::string_view{} : record_->view().substr(from);
}

String8::String8(const char* text) { init(text, 0, text != nullptr ? std::strlen(text) : 0); }

String8::String8(std::string_view text) { init(text.data(), 0, text.size()); }

String8::String8(const IteratorConst& from) {
  const std::string_view rest = from.rest();
  init(rest.data(), 0, rest.size());
}

String8 String8::substr(long long position, unsigned length) const {
  const std::size_t from = position < 0 ? 0 : static_cast<std::size_t>(position);
  if (from >= this->length()) {
    return {};
  }
  return String8(view().substr(from, length == npos ? std::string_view::npos : length));
}

String8& String8::operator=(const char* text) { return *this = String8(text); }

String8& String8::operator+=(const String8& tail) {
  init(view(), tail.view());
  return *this;
}

String8& String8::operator+=(const char* tail) {
  init(view(), tail != nullptr ? std::string_view(tail) : std::string_view{});
  return *this;
}

String8 String8::operator+(const String8& tail) const { return String8(*this) += tail; }

String8 String8::operator+(const char* tail) const { return String8(*this) += tail; }

String8 operator+(const char* head, const String8& tail) { return String8(head) += tail; }

std::ostream& operator<<(std::ostream& out, const String8& text) {
  return out.write(text.charPtr(), static_cast<std::streamsize>(text.length()));
}

} // namespace Zel
