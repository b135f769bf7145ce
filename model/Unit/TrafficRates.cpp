#include <model/Unit/TrafficRates.h>

namespace Maintenance::Unit {

namespace {

using Attr = TrafficRates::Attr;
using Row = Zel::Rows<TrafficRates>;

constexpr Zel::AttrRow rows[] = {
    Row::valueMember<&TrafficRates::outBitsRate, &TrafficRates::outBitsRateIs>(Attr::outBitsRate,
                                                                               "outBitsRate"),
    Row::valueMember<&TrafficRates::inBitsRate, &TrafficRates::inBitsRateIs>(Attr::inBitsRate,
                                                                             "inBitsRate"),
    Row::valueMember<&TrafficRates::statsUpdateTime, &TrafficRates::statsUpdateTimeIs>(
        Attr::statsUpdateTime, "statsUpdateTime"),
};
static_assert(Zel::rowsAreInOrder(rows, Zel::firstValueAttributeId));

constexpr Zel::TypeTable table = Zel::tableOf<TrafficRates>(rows);

} // namespace

const Zel::TypeTable& TrafficRates::zelTable() { return table; }

} // namespace Maintenance::Unit
