#include <model/Unit/Constants.h>

namespace Maintenance::Unit {

namespace {

constexpr Zel::AttrRow builtinUnitNameRows[] = {
    Zel::Rows<BuiltinUnitName>::constant<&BuiltinUnitName::system>(BuiltinUnitName::Attr::system,
                                                                   "system"),
    Zel::Rows<BuiltinUnitName>::constant<&BuiltinUnitName::linecard>(
        BuiltinUnitName::Attr::linecard, "linecard"),
};
static_assert(Zel::rowsAreInOrder(builtinUnitNameRows, Zel::firstValueAttributeId));

constexpr Zel::TypeTable builtinUnitNameTable = Zel::tableOf<BuiltinUnitName>(builtinUnitNameRows);

using Classes = MaintenanceStageClasses;

constexpr Zel::AttrRow stageClassesRows[] = {
    Zel::Rows<Classes>::constant<&Classes::maintEnterClass>(Classes::Attr::maintEnterClass,
                                                            "maintEnterClass"),
    Zel::Rows<Classes>::constant<&Classes::maintExitClass>(Classes::Attr::maintExitClass,
                                                           "maintExitClass"),
};
static_assert(Zel::rowsAreInOrder(stageClassesRows, Zel::firstValueAttributeId));

constexpr Zel::TypeTable stageClassesTable = Zel::tableOf<Classes>(stageClassesRows);

using List = MaintenanceStageList;

constexpr Zel::AttrRow stageListRows[] = {
    Zel::Rows<List>::constant<&List::bgpStage>(List::Attr::bgpStage, "bgpStage"),
    Zel::Rows<List>::constant<&List::rateMonStage>(List::Attr::rateMonStage, "rateMonStage"),
};
static_assert(Zel::rowsAreInOrder(stageListRows, Zel::firstValueAttributeId));

constexpr Zel::TypeTable stageListTable = Zel::tableOf<List>(stageListRows);

} // namespace

const Zel::TypeTable& BuiltinUnitName::zelTable() { return builtinUnitNameTable; }
const Zel::TypeTable& MaintenanceStageClasses::zelTable() { return stageClassesTable; }
const Zel::TypeTable& MaintenanceStageList::zelTable() { return stageListTable; }

} // namespace Maintenance::Unit
