#include <Zel/Format>

#include <cstdarg>
#include <cstdio>
#include <string>

namespace Zel {

String8 format(const char* pattern, ...) {
  std::va_list arguments;
  va_start(arguments, pattern);
  std::va_list again;
  va_copy(again, arguments);
  const int length = std::vsnprintf(nullptr, 0, pattern, arguments);
  va_end(arguments);
  // A negative length is an encoding error, which needs a wide character in the arguments.
  std::string text(length > 0 ? static_cast<std::size_t>(length) : 0, '\0');
  std::vsnprintf(text.data(), text.size() + 1, pattern, again);
  va_end(again);
  return String8(std::string_view(text));
}

} // namespace Zel
