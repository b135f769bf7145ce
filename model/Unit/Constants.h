#pragma once

#include <Zel/TypeTable>

/// Values that hold nothing: their attributes are constants of the type, and any two are equal.
namespace Maintenance::Unit {

/// The names of the two built-in units.
class ZEL_API BuiltinUnitName {
public:
  static constexpr std::string_view zelTypeName = "Maintenance::Unit::BuiltinUnitName";
  static const Zel::TypeTable& zelTable();

  struct Attr {
    static constexpr Zel::AttributeId system = 2;
    static constexpr Zel::AttributeId linecard = 3;
  };

  Zel::Name system() const { return "System"; }
  Zel::Name linecard() const { return "Linecard"; }

  friend bool operator==(const BuiltinUnitName&, const BuiltinUnitName&) noexcept { return true; }
};

/// The two classes of maintenance stages, one for entering and one for leaving maintenance.
class ZEL_API MaintenanceStageClasses {
public:
  static constexpr std::string_view zelTypeName = "Maintenance::Unit::MaintenanceStageClasses";
  static const Zel::TypeTable& zelTable();

  struct Attr {
    static constexpr Zel::AttributeId maintEnterClass = 2;
    static constexpr Zel::AttributeId maintExitClass = 3;
  };

  Zel::Name maintEnterClass() const { return "maintEnter"; }
  Zel::Name maintExitClass() const { return "maintExit"; }

  friend bool operator==(const MaintenanceStageClasses&, const MaintenanceStageClasses&) noexcept {
    return true;
  }
};

/// The stages known here: the BGP stage and the traffic rate monitor stage.
class ZEL_API MaintenanceStageList {
public:
  static constexpr std::string_view zelTypeName = "Maintenance::Unit::MaintenanceStageList";
  static const Zel::TypeTable& zelTable();

  struct Attr {
    static constexpr Zel::AttributeId bgpStage = 2;
    static constexpr Zel::AttributeId rateMonStage = 3;
  };

  Zel::String8 bgpStage() const { return "bgp"; }
  Zel::String8 rateMonStage() const { return "ratemon"; }

  friend bool operator==(const MaintenanceStageList&, const MaintenanceStageList&) noexcept {
    return true;
  }
};

} // namespace Maintenance::Unit
