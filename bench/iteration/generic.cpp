#include "iteration/Collections.h"

#include <generic/Client.h>

namespace {

using Zel::GenericIf;

Zel::Ptr<const GenericIf> generic(Zel::PtrInterface& object) {
  return object.fwkType()->genericIf(&object, true);
}

void add(const char* name, Zel::AttributeId id, Zel::PtrInterface& (*object)()) {
  Bench::walkOperation(std::string("step ") + name, [=] {
    unsigned met = 0;
    for (auto at = generic(object())->attributeIteratorConst(id); at; ++at) {
      ++met;
    }
    return met;
  });
  Bench::walkOperation(std::string("key ") + name, [=] {
    unsigned met = 0;
    for (auto at = generic(object())->attributeIteratorConst(id); at; ++at) {
      met += static_cast<bool>(at.key());
    }
    return met;
  });
  Bench::walkOperation(std::string("member ") + name, [=] {
    unsigned met = 0;
    for (auto at = generic(object())->attributeIteratorConst(id); at; ++at) {
      const Zel::Ptr<const GenericIf> key = at.key();
      const Zel::Ptr<const GenericIf> member = at.obj();
      met += key && member;
    }
    return met;
  });
}

} // namespace

void Bench::registerAll() {
  add("groups", Maintenance::Unit::Status::Attr::group,
      []() -> Zel::PtrInterface& { return groups(); });
  add("profiles", Maintenance::Profile::ConfigDir::Attr::config,
      []() -> Zel::PtrInterface& { return profiles(); });
}
