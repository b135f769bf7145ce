#include "handle/Handle.h"
#include "handle/Switch.h"

#include <Zel/String>

namespace {

Zel::String8 make() { return "profile-0001234-p001"; }

} // namespace

void Bench::registerAll() {
  handleOperations("off", make, [] { return Switch(false); });
  handleOperations("on", make, [] { return Switch(true); });
}
