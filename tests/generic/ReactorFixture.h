#pragma once

#include "GenericFixture.h"

#include <stdexcept>

namespace TestGeneric {

class Reactor : public testing::Test {
protected:
  using Adapter = Maintenance::Unit::Status::GenericIf_::GenericIf_Adapter_;

  const Ptr<Maintenance::Unit::Status> unit = Maintenance::Unit::statusFactory("System");
  Log log;
  Listener listener{log};
  Handle object = told(Zel::generic(unit), listener);

  /// The adapter of the first generic object in the list, which there must be.
  Ptr<Adapter> adapter() const {
    auto* const first = dynamic_cast<Adapter*>(unit->zelNotifieeList().head());
    if (first == nullptr) {
      throw std::logic_error("no adapter in the list");
    }
    return Ptr<Adapter>(first);
  }
  unsigned listed() const { return unit->zelNotifieeList().count(); }
};

} // namespace TestGeneric
