#include <Zel/Text>

#include <algorithm>
#include <charconv>
#include <limits>

namespace Zel {

namespace {

using Position = String8::IteratorConst;

bool isSpace(unsigned char byte) { return byte == ' ' || (byte >= '\t' && byte <= '\r'); }

bool isDigit(unsigned char byte) { return byte >= '0' && byte <= '9'; }

int hexDigit(unsigned char byte) {
  if (isDigit(byte)) {
    return byte - '0';
  }
  if (byte >= 'a' && byte <= 'f') {
    return byte - 'a' + 10;
  }
  if (byte >= 'A' && byte <= 'F') {
    return byte - 'A' + 10;
  }
  return -1;
}

} // namespace

TextReader::TextReader(Position& first, const Position& last) noexcept
    : first_(first), begin_(reinterpret_cast<const char*>(first.data().text())) {
  // The text's own length goes above what the positions say.
  const auto inText = [&](int position) {
    return std::min(static_cast<std::size_t>(std::max(position, 0)), first.data().view().size());
  };
  at_ = begin_ + inText(first.position());
  end_ = std::max(begin_ + inText(last.position()), at_);
}

void TextReader::expected(const char* what) const {
  throwRangeException(format("expected %s at column %d", what, position()));
}

void TextReader::skipSpace() noexcept {
  while (!atEnd() && isSpace(peek())) {
    ++at_;
  }
}

void TextReader::need(std::string_view pattern) {
  for (const char byte : pattern) {
    if (byte == ' ') {
      skipSpace();
    } else if (!atEnd() && *at_ == byte) {
      ++at_;
    } else {
      expected(format("\"%.*s\"", static_cast<int>(pattern.size()), pattern.data()).charPtr());
    }
  }
}

char TextReader::escapedByte() {
  if (atEnd()) {
    expected("an escaped character");
  }
  switch (const char byte = *at_) {
  case '\\':
  case '\'':
  case '"':
    ++at_;
    return byte;
  case 'n':
    ++at_;
    return '\n';
  case 't':
    ++at_;
    return '\t';
  case 'r':
    ++at_;
    return '\r';
  case 'x': {
    ++at_;
    int value = 0;
    for (int digit = 0; digit < 2; ++digit, ++at_) {
      const int nibble = atEnd() ? -1 : hexDigit(peek());
      if (nibble < 0) {
        expected("a hexadecimal digit");
      }
      value = value * 16 + nibble;
    }
    return static_cast<char>(value);
  }
  default:
    expected("an escaped character");
  }
}

std::string_view TextReader::quoted(std::string& scratch) {
  skipSpace();
  if (atEnd() || (*at_ != '\'' && *at_ != '"')) {
    expected("a quoted text");
  }
  const char quote = *at_++;
  const char* plain = at_; // what follows the last escape
  bool escaped = false;
  while (true) {
    at_ = std::find_if(at_, end_, [quote](char byte) { return byte == quote || byte == '\\'; });
    if (atEnd()) {
      expected("the closing quote");
    }
    const std::string_view run(plain, static_cast<std::size_t>(at_ - plain));
    if (*at_++ == quote) {
      return escaped ? std::string_view(scratch.append(run)) : run;
    }
    if (!escaped) {
      scratch.clear();
      escaped = true;
    }
    scratch.append(run);
    scratch += escapedByte();
    plain = at_;
  }
}

String8 TextReader::string() {
  std::string scratch;
  return String8(quoted(scratch));
}

void TextReader::outOfRange() const {
  throwRangeException(format("number out of range at column %d", position()));
}

unsigned long long TextReader::integer() {
  skipSpace();
  const bool negative = !atEnd() && *at_ == '-';
  const char* const digits = at_ + (negative ? 1 : 0);
  if (digits >= end_ || !isDigit(static_cast<unsigned char>(*digits))) {
    expected("an integer");
  }
  unsigned long long magnitude = 0;
  const auto result = std::from_chars(digits, end_, magnitude);
  constexpr unsigned long long mostNegative = 1ULL << 63;
  if (result.ec != std::errc() || (negative && magnitude > mostNegative)) {
    outOfRange();
  }
  at_ = result.ptr;
  return negative ? 0 - magnitude : magnitude;
}

double TextReader::number() {
  skipSpace();
  const bool negative = !atEnd() && *at_ == '-';
  const std::string_view rest(at_ + (negative ? 1 : 0), end_);
  if (rest.starts_with("inf")) {
    at_ = rest.data() + 3;
    constexpr double infinity = std::numeric_limits<double>::infinity();
    return negative ? -infinity : infinity;
  }
  if (!negative && rest.starts_with("nan")) {
    at_ += 3;
    return std::numeric_limits<double>::quiet_NaN();
  }
  // The library's reader takes more spellings of infinities and of what is no number.
  if (rest.empty() || (!isDigit(static_cast<unsigned char>(rest[0])) && rest[0] != '.')) {
    expected("a number");
  }
  double number = 0.0;
  const auto result = std::from_chars(at_, end_, number);
  if (result.ec == std::errc::result_out_of_range) {
    outOfRange();
  }
  if (result.ec != std::errc()) {
    expected("a number");
  }
  at_ = result.ptr;
  return number;
}

bool TextReader::boolean() {
  skipSpace();
  const std::string_view rest(at_, end_);
  for (const bool truth : {true, false}) {
    const std::string_view word = truth ? "true" : "false";
    if (rest.starts_with(word)) {
      at_ += word.size();
      return truth;
    }
  }
  expected("true or false");
}

} // namespace Zel
