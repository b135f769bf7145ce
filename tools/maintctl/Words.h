#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace Maintctl {

/// The words of a line, between blanks. Blanks within quotes or brackets part nothing, so the text
/// form of a value is one word, and it keeps its quotes. `#` at the beginning of a word begins a
/// comment. Throws `Failure` with `exitUsage` on a quote or a bracket that has no end.
std::vector<std::string> wordsOf(std::string_view line);

/// The words of a line that goes on: the last is empty if the line ends behind a blank, and may
/// lack its closing quote or bracket.
std::vector<std::string> wordsSoFar(std::string_view line);

/// A word without the quotes that it may stand in. Throws `Failure` on bad escapes in them.
std::string unquoted(const std::string& word);

/// The same of one whose closing quote may be missing; nothing is thrown.
std::string unquotedSoFar(const std::string& word);

/// A text in quotes, if a word cannot hold it without; unless that is all of it, without the
/// closing one.
std::string inQuotes(const std::string& text, bool isWhole);

/// A text for a message: what is not to be shown escaped, and of a long one the beginning.
std::string printable(std::string_view text);

} // namespace Maintctl
