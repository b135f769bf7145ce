#include "handle/Handle.h"
#include "handle/Switch.h"

#include <Zel/Ptr>

namespace {

struct Object : Zel::PtrInterface {
  long payload = 1;
};

Zel::Ptr<Object> make() { return Zel::makeObject<Object>(); }

} // namespace

void Bench::registerAll() {
  handleOperations("off", make, [] { return Switch(false); });
  handleOperations("on", make, [] { return Switch(true); });
}
