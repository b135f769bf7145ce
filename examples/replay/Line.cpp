#include "Line.h"

#include <algorithm>

namespace Replay {

namespace {

bool isBlank(char c) { return c == ' ' || c == '\t'; }

bool isControl(char c) { return static_cast<unsigned char>(c) < ' ' || c == '\x7f'; }

/// Takes a word that begins with a quote off the head of `text`.
std::string takeQuoted(std::string_view& text) {
  std::string word;
  for (std::size_t i = 1; i < text.size(); ++i) {
    const char c = text[i];
    if (c == '"') {
      const std::string_view rest = text.substr(i + 1);
      if (!rest.empty() && !isBlank(rest[0])) {
        throw Mismatch{"a blank behind the closing quote", std::string(rest)};
      }
      text = rest;
      return word;
    }
    if (isControl(c)) {
      throw Mismatch{"printable characters", std::string(1, c)};
    }
    if (c == '\\') {
      if (i + 1 < text.size() && text[i + 1] != '"' && text[i + 1] != '\\') {
        throw Mismatch{"\\\" or \\\\ inside quotes", std::string(text.substr(i, 2))};
      }
      ++i;
    }
    if (i < text.size()) {
      word += text[i];
    }
  }
  throw Mismatch{"a closing quote", "end of line"};
}

/// Takes a word without quotes off the head of `text`.
std::string takePlain(std::string_view& text) {
  const auto stop = std::find_if(text.begin(), text.end(), isBlank);
  std::string word(text.begin(), stop);
  if (const auto bad = std::find_if(word.begin(), word.end(), isControl); bad != word.end()) {
    throw Mismatch{"printable characters", std::string(1, *bad)};
  }
  if (const auto quote = word.find('"'); quote != std::string::npos) {
    throw Mismatch{"quotes around the whole word", word};
  }
  text.remove_prefix(word.size());
  return word;
}

} // namespace

Line::Line(std::string_view text) {
  if (text.ends_with('\r')) { // a journal that was written on another system
    text.remove_suffix(1);
  }
  while (true) {
    while (!text.empty() && isBlank(text[0])) {
      text.remove_prefix(1);
    }
    if (text.empty() || text[0] == '#') {
      return;
    }
    words_.push_back(text[0] == '"' ? takeQuoted(text) : takePlain(text));
  }
}

const std::string& Line::word(std::string_view expected) {
  if (done()) {
    throw Mismatch{std::string(expected), "end of line"};
  }
  return words_[next_++];
}

void Line::keyword(std::string_view keyword) {
  const std::string expected = quoted(keyword);
  const std::string& got = word(expected);
  if (got != keyword) {
    throw Mismatch{expected, got};
  }
}

void Line::end() const {
  if (!done()) {
    throw Mismatch{"the end of the line", words_[next_]};
  }
}

std::string quoted(std::string_view text) {
  std::string result = "\"";
  for (const char c : text) {
    if (c == '"' || c == '\\') {
      result += '\\';
    }
    result += c;
  }
  return result + '"';
}

std::string shown(std::string_view name) {
  const bool plain = !name.empty() && name[0] != '#' && name.find_first_of(" \"") == name.npos;
  return plain ? std::string(name) : quoted(name);
}

std::string printable(std::string_view text) {
  constexpr std::string_view digits = "0123456789abcdef";
  std::string result;
  for (const char c : quoted(text)) {
    if (isControl(c)) {
      const auto byte = static_cast<unsigned char>(c);
      result += "\\x";
      result += digits[byte >> 4];
      result += digits[byte & 15];
    } else {
      result += c;
    }
  }
  return result;
}

} // namespace Replay
