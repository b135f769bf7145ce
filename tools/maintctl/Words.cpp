#include "Words.h"

#include "Failure.h"
#include "Utf8.h"

#include <Zel/Text>

namespace Maintctl {

namespace {

constexpr std::string_view blanks = " \t\r\n\v\f";
constexpr std::string_view openings = "([{";
constexpr std::string_view closings = ")]}";

bool isBlank(char byte) { return blanks.find(byte) != std::string_view::npos; }

/// Behind the quote that ends what begins with one at `at`.
std::size_t endOfQuoted(std::string_view line, std::size_t at) {
  const char quote = line[at];
  for (++at; at < line.size(); ++at) {
    if (line[at] == quote) {
      return at + 1;
    }
    if (line[at] == '\\') {
      ++at;
    }
  }
  throw Failure(exitUsage, std::string("a text has no closing ") + quote);
}

std::size_t endOfWord(std::string_view line, std::size_t at) {
  std::string expected; // the closing brackets, the innermost last
  while (at < line.size() && !(expected.empty() && isBlank(line[at]))) {
    if (line[at] == '\'' || line[at] == '"') {
      at = endOfQuoted(line, at);
      continue;
    }
    if (const std::size_t bracket = openings.find(line[at]); bracket != std::string_view::npos) {
      expected += closings[bracket];
    } else if (!expected.empty() && line[at] == expected.back()) {
      expected.pop_back();
    }
    ++at;
  }
  if (!expected.empty()) {
    throw Failure(exitUsage, std::string("a bracket has no closing ") + expected.back());
  }
  return at;
}

} // namespace

std::vector<std::string> wordsOf(std::string_view line) {
  std::vector<std::string> words;
  std::size_t at = 0;
  while ((at = line.find_first_not_of(blanks, at)) != std::string_view::npos && line[at] != '#') {
    const std::size_t end = endOfWord(line, at);
    words.emplace_back(line.substr(at, end - at));
    at = end;
  }
  return words;
}

std::vector<std::string> wordsSoFar(std::string_view line) {
  std::vector<std::string> words;
  std::size_t at = 0;
  bool isBehindBlank = true;
  while ((at = line.find_first_not_of(blanks, at)) != std::string_view::npos) {
    std::size_t end = line.size();
    try {
      end = endOfWord(line, at);
    } catch (const Failure&) { // it has not been closed yet
    }
    words.emplace_back(line.substr(at, end - at));
    isBehindBlank = end < line.size();
    at = end;
  }
  if (isBehindBlank) {
    words.emplace_back();
  }
  return words;
}

std::string unquoted(const std::string& word) {
  if (!word.starts_with('\'') && !word.starts_with('"')) {
    return word;
  }
  try {
    return std::string(Zel::strepToValue<Zel::String8>(Zel::String8(word)).view());
  } catch (const Zel::RangeException& failure) {
    throw Failure(exitUsage, "bad quotes in " + printable(word) + ": " + failure.what());
  }
}

std::string unquotedSoFar(const std::string& word) {
  try {
    return unquoted(word);
  } catch (const Failure&) {
    try {
      return unquoted(word + word.front());
    } catch (const Failure&) {
      return word.substr(1);
    }
  }
}

std::string inQuotes(const std::string& text, bool isWhole) {
  const std::string quoted(Zel::valueToStrep(Zel::String8(text)).view());
  const bool isPlain =
      quoted.size() == text.size() + 2 && text.find_first_of(" #\"()[]{}") == text.npos;
  return isPlain ? text : quoted.substr(0, quoted.size() - (isWhole ? 0 : 1));
}

std::string printable(std::string_view text) {
  constexpr std::size_t longest = 60;
  const std::string_view whole = text;
  text = text.substr(0, longest);
  for (int bytes = 1; text.size() < whole.size() && bytes < 4; ++bytes) { // no half of a character
    text.remove_suffix((whole[text.size()] & 0xc0) == 0x80 ? 1 : 0);
  }
  const bool isLong = text.size() < whole.size();
  const std::string quoted = shown(Zel::valueToStrep(Zel::String8(text)).view());
  // Quotes only where something shows that they are needed.
  const bool isPlain = !text.empty() && quoted.size() == text.size() + 2 &&
                       text.find_first_of(blanks) == std::string_view::npos;
  return (isPlain ? quoted.substr(1, quoted.size() - 2) : quoted) + (isLong ? "..." : "");
}

} // namespace Maintctl
