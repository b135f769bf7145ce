#include <text/Value.h>

#include <model/MaintenanceAgentInfo/OnBootUnitAndReason.h>

namespace Maintenance {

OnBootUnitAndReason::OnBootUnitAndReason(Zel::String8::IteratorConst& first,
                                         const Zel::String8::IteratorConst& last) {
  Zel::readInto(first, last, *this);
}

Zel::String8 valueToStrep(const OnBootUnitAndReason& value) { return Zel::textOf(value); }

std::ostream& operator<<(std::ostream& out, const OnBootUnitAndReason& value) {
  return Zel::printText(out, value);
}

} // namespace Maintenance
