#pragma once

#include <string>
#include <string_view>
#include <vector>

/// Texts on a terminal. All texts are UTF-8; what is none, and what would act on a terminal or be
/// taken for something else there, is shown as an escape of its bytes.
namespace Maintctl {

/// The number of bytes of the character that a text begins with, if it may be shown as it is. 0 for
/// control characters, for those that reorder what stands around them, and for a byte that begins
/// no valid sequence; also for the empty text.
std::size_t shownBytes(std::string_view text);

/// Every byte of what is not to be shown as in `\x1b`. Within the quotes of a text form that reads
/// back as the byte.
std::string shown(std::string_view text);

/// Character by character. A byte that is no UTF-8 becomes one of U+DC80 to U+DCFF, which no text
/// has, and that the byte again.
std::wstring widened(std::string_view text);
std::string narrowed(std::wstring_view wide);

/// Whether bytes, of which all but the last may go on, may be the beginning of one character that
/// has more of them.
bool mayGoOn(std::string_view bytes);

/// How many columns a text takes that may be shown: wide characters two, combining ones none.
std::size_t columnsOf(std::string_view text);

/// The text in lines of at most so many columns, parted at blanks where there are some.
std::vector<std::string> wrapped(std::string_view text, std::size_t columns);

/// The text, or of a longer one as much as fits, with an ellipsis behind it.
std::string fitted(const std::string& text, std::size_t columns);

} // namespace Maintctl
