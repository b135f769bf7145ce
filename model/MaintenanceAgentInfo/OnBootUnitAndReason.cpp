#include <model/MaintenanceAgentInfo/OnBootUnitAndReason.h>

namespace Maintenance {

namespace {

using Attr = OnBootUnitAndReason::Attr;
using Row = Zel::Rows<OnBootUnitAndReason>;

constexpr Zel::AttrRow rows[] = {
    Row::key<&OnBootUnitAndReason::unitName>(Attr::unitName, "unitName"),
    Row::key<&OnBootUnitAndReason::reason>(Attr::reason, "reason"),
};
static_assert(Zel::rowsAreInOrder(rows, Zel::firstValueAttributeId));

constexpr Zel::TypeTable table =
    Zel::tableOf<OnBootUnitAndReason, Zel::String8, Unit::InputSrc>(rows);

} // namespace

const Zel::TypeTable& OnBootUnitAndReason::zelTable() { return table; }

} // namespace Maintenance
