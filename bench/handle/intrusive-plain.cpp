#include "handle/Handle.h"

#include <boost/smart_ptr/intrusive_ptr.hpp>
#include <boost/smart_ptr/intrusive_ref_counter.hpp>

namespace {

struct Object : boost::intrusive_ref_counter<Object, boost::thread_unsafe_counter> {
  virtual ~Object() = default;
  long payload = 1;
};

boost::intrusive_ptr<Object> make() { return new Object; }

} // namespace

void Bench::registerAll() {
  handleOperations("off", make, [] { return 0; });
}
