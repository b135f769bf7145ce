#include <Zel/Text>

#include <charconv>
#include <cstdlib>
#include <cxxabi.h>
#include <memory>

namespace Zel {

namespace {

using Position = String8::IteratorConst;

/// Whether a byte does not stand for itself inside quotes.
constexpr bool isEscaped(unsigned char byte) {
  return byte < 0x20 || byte == 0x7f || byte == '\'' || byte == '\\';
}

void appendEscape(TextBuffer& out, unsigned char byte) {
  static constexpr char digits[] = "0123456789abcdef";
  out.append('\\');
  switch (byte) {
  case '\n':
    out.append('n');
    break;
  case '\t':
    out.append('t');
    break;
  case '\r':
    out.append('r');
    break;
  case '\'':
  case '\\':
    out.append(static_cast<char>(byte));
    break;
  default:
    out.append('x');
    out.append(digits[byte >> 4]);
    out.append(digits[byte & 15]);
  }
}

/// A number that `std::to_chars` writes.
template <class Number>
void appendNumber(TextBuffer& out, Number number) {
  std::array<char, 32> digits; // the longest shortest double has 24
  const auto result = std::to_chars(digits.data(), digits.data() + digits.size(), number);
  out.append(std::string_view(digits.data(), static_cast<std::size_t>(result.ptr - digits.data())));
}

template <class Value>
String8 textOfPrimitive(const Value& value) {
  TextBuffer out;
  appendStrep(out, value);
  return out.text();
}

} // namespace

void TextBuffer::spill(std::string_view text) {
  if (overflow_.empty()) {
    overflow_.reserve(2 * (size_ + text.size()));
    overflow_.assign(inline_.data(), size_);
  }
  overflow_.append(text);
}

void appendStrep(TextBuffer& out, const String8& text) {
  const std::string_view bytes = text.view();
  out.append('\'');
  std::size_t plain = 0; // what follows the last escape
  for (std::size_t at = 0; at < bytes.size(); ++at) {
    const auto byte = static_cast<unsigned char>(bytes[at]);
    if (isEscaped(byte)) [[unlikely]] {
      out.append(bytes.substr(plain, at - plain));
      appendEscape(out, byte);
      plain = at + 1;
    }
  }
  out.append(bytes.substr(plain));
  out.append('\'');
}

void appendStrep(TextBuffer& out, unsigned long long number) { appendNumber(out, number); }
void appendStrep(TextBuffer& out, unsigned number) { appendNumber(out, number); }

void appendStrep(TextBuffer& out, double number) {
  if (number != number) {
    out.append("nan"); // of either sign
  } else {
    appendNumber(out, number);
  }
}

void readStrep(TextReader& in, String8& text) { text = in.string(); }
void readStrep(TextReader& in, unsigned long long& number) { number = in.integer(); }
void readStrep(TextReader& in, double& number) { number = in.number(); }
void readStrep(TextReader& in, unsigned& number) { number = static_cast<unsigned>(in.integer()); }
void readStrep(TextReader& in, bool& truth) { truth = in.boolean(); }

String8 valueToStrep(const String8& text) { return textOfPrimitive(text); }
String8 valueToStrep(unsigned long long number) { return textOfPrimitive(number); }
String8 valueToStrep(double number) { return textOfPrimitive(number); }
String8 sequenceToValue(Position& first, const Position& last, String8* /*selector*/) {
  return TextReader(first, last).string();
}

long long sequenceToValue(Position& first, const Position& last, long long* /*selector*/) {
  return static_cast<long long>(TextReader(first, last).integer());
}

long double sequenceToValue(Position& first, const Position& last, long double* /*selector*/) {
  return TextReader(first, last).number();
}

bool sequenceToValue(Position& first, const Position& last, bool* /*selector*/) {
  return TextReader(first, last).boolean();
}

void needString(Position& first, const Position& last, const char* pattern) {
  TextReader(first, last).need(pattern);
}

void rethrowFromDeserializeAttr(const RangeException& failure, const String8& attributeName) {
  throw RangeException(attributeName + ": " + failure.message(), failure.ids());
}

void cannotConvert(const Position& first, const Position& /*last*/, const std::type_info& wanted) {
  const std::unique_ptr<char, void (*)(void*)> name(
      abi::__cxa_demangle(wanted.name(), nullptr, nullptr, nullptr), &std::free);
  throwRangeException(
      format("object is no %s at column %d", name ? name.get() : wanted.name(), first.position()));
}

void throwJunk(const Position& first, const String8& text) {
  throw RangeException(format("junk at column %lld deserializing %s",
                              static_cast<long long>(first.position()), text.charPtr()));
}

} // namespace Zel
