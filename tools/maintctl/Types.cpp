#include "Types.h"

#include "Failure.h"

#include <Zel/ZelType>

#include <dlfcn.h>

#include <filesystem>

namespace Maintctl {

void loadTypes(const std::string& file) {
  const std::size_t before = Zel::ZelType::types().size();
  // A file, and not a name to be looked for. Its types register themselves.
  const std::filesystem::path path = std::filesystem::absolute(file);
  if (dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL) == nullptr) {
    throw Failure(exitFile, std::string("cannot load types: ") + dlerror());
  }
  if (Zel::ZelType::types().size() == before) {
    throw Failure(exitUsage, file + " brings no types, or has the model's own library within it");
  }
}

} // namespace Maintctl
