#include <Zel/Assert>

#include <cstdio>
#include <cstdlib>

namespace Zel {

void assertionFailed(const char* text, const char* file, int line) noexcept {
  std::fprintf(stderr, "%s:%d: assertion \"%s\" failed\n", file, line, text);
  std::abort();
}

} // namespace Zel
