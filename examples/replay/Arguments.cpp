#include "Arguments.h"

#include "Time.h"

#include <charconv>
#include <limits>

namespace Replay {

namespace {

/// `from_chars` takes no sign and no blank in front of an unsigned number; that nothing is left
/// behind the number is ours to check.
template <class Number>
Number takeDecimal(Line& line, std::string_view what, Number least) {
  const std::string expected = std::string(what) + " from " + std::to_string(least) + " to " +
                               std::to_string(std::numeric_limits<Number>::max());
  const std::string& word = line.word(expected);
  Number number = 0;
  const char* const end = word.data() + word.size();
  const auto [stop, failure] = std::from_chars(word.data(), end, number);
  if (failure != std::errc() || stop != end || number < least) {
    throw Mismatch{expected, word};
  }
  return number;
}

} // namespace

double takeTime(Line& line) {
  constexpr const char* expected = "a time such as 2026-03-14T22:00:05";
  const std::string& word = line.word(expected);
  if (const auto time = timeOfText(word)) {
    return *time;
  }
  throw Mismatch{expected, word};
}

Zel::String8 takeName(Line& line, std::string_view what) {
  const std::string& word = line.word(what);
  if (word.empty()) {
    throw Mismatch{std::string(what), word};
  }
  return Zel::String8(std::string_view(word));
}

unsigned takeNumber(Line& line, std::string_view what, unsigned least) {
  return takeDecimal(line, what, least);
}

unsigned long long takeRate(Line& line) {
  return takeDecimal(line, "a rate in bits per second", 0ULL);
}

Vexil::IntfId takeInterface(Line& line) {
  constexpr const char* expected = "an interface such as Ethernet3/1, Port-Channel10 or Vlan100";
  const std::string& word = line.word(expected);
  try {
    const Vexil::IntfId interface { Zel::String8(std::string_view(word)) };
    if (!(interface == Vexil::IntfId())) { // "none" reads too, but names no interface
      return interface;
    }
  } catch (const Zel::RangeException&) {
    // Told below, in the journal's terms.
  }
  throw Mismatch{expected, word};
}

bool takeChange(Line& line, std::string_view in, std::string_view out, std::string_view what,
                bool isThere) {
  const std::string either = quoted(in) + " or " + quoted(out);
  const std::string& word = line.word(either);
  if (word != in && word != out) {
    throw Mismatch{either, word};
  }
  if (isThere && word == in) {
    throw Mismatch{quoted(out) + " for " + std::string(what) + " that is there", word};
  }
  if (!isThere && word == out) {
    throw Mismatch{quoted(in) + " for " + std::string(what) + " that is not there", word};
  }
  return word == in;
}

std::string oneOf(std::string_view what, const Zel::EnumTable& table) {
  std::string text(what);
  for (std::size_t i = 0; i < table.rows.size(); ++i) {
    text += i == 0 ? " (" : i + 1 == table.rows.size() ? " or " : ", ";
    text += table.rows[i].name;
  }
  return text + ")";
}

} // namespace Replay
