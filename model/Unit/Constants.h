#pragma once

#include <Zel/Layers>

/// Values that hold nothing: their attributes are constants of the type, and any two are equal.
namespace Maintenance::Unit {

/// The names of the two built-in units.
class ZEL_API BuiltinUnitName {
public:
  static constexpr std::string_view zelTypeName = "Maintenance::Unit::BuiltinUnitName";
  static const Zel::TypeTable& zelTable();
  static const Zel::ZelType* _fwkType();
  const Zel::ZelType* fwkType() const { return _fwkType(); }
  using _Type = Zel::TypeOf<BuiltinUnitName>;
  using GenericIf_ = Zel::ValueGenericIf<BuiltinUnitName>;

  struct Attr {
    static constexpr Zel::AttributeId system = 2;
    static constexpr Zel::AttributeId linecard = 3;
  };

  BuiltinUnitName() noexcept = default;
  /// Reads the text form, an empty frame. Throws `Zel::RangeException`.
  BuiltinUnitName(Zel::String8::IteratorConst& first, const Zel::String8::IteratorConst& last);

  /// Reads the fields from the attribute log. Throws `Zel::RangeException`.
  BuiltinUnitName(Zel::NboAttrLog::In* in, Zel::StreamBogon stream);

  Zel::Name system() const { return "System"; }
  Zel::Name linecard() const { return "Linecard"; }

  friend bool operator==(const BuiltinUnitName&, const BuiltinUnitName&) noexcept { return true; }
};

ZEL_API Zel::String8 valueToStrep(const BuiltinUnitName& value);
ZEL_API std::ostream& operator<<(std::ostream& out, const BuiltinUnitName& value);
ZEL_API void operator<<(const Zel::Ptr<Zel::NboAttrLog::Out>& out, const BuiltinUnitName& value);

/// The two classes of maintenance stages, one for entering and one for leaving maintenance.
class ZEL_API MaintenanceStageClasses {
public:
  static constexpr std::string_view zelTypeName = "Maintenance::Unit::MaintenanceStageClasses";
  static const Zel::TypeTable& zelTable();
  static const Zel::ZelType* _fwkType();
  const Zel::ZelType* fwkType() const { return _fwkType(); }
  using _Type = Zel::TypeOf<MaintenanceStageClasses>;
  using GenericIf_ = Zel::ValueGenericIf<MaintenanceStageClasses>;

  struct Attr {
    static constexpr Zel::AttributeId maintEnterClass = 2;
    static constexpr Zel::AttributeId maintExitClass = 3;
  };

  MaintenanceStageClasses() noexcept = default;
  /// Reads the text form, an empty frame. Throws `Zel::RangeException`.
  MaintenanceStageClasses(Zel::String8::IteratorConst& first,
                          const Zel::String8::IteratorConst& last);

  /// Reads the fields from the attribute log. Throws `Zel::RangeException`.
  MaintenanceStageClasses(Zel::NboAttrLog::In* in, Zel::StreamBogon stream);

  Zel::Name maintEnterClass() const { return "maintEnter"; }
  Zel::Name maintExitClass() const { return "maintExit"; }

  friend bool operator==(const MaintenanceStageClasses&, const MaintenanceStageClasses&) noexcept {
    return true;
  }
};

ZEL_API Zel::String8 valueToStrep(const MaintenanceStageClasses& value);
ZEL_API std::ostream& operator<<(std::ostream& out, const MaintenanceStageClasses& value);
ZEL_API void operator<<(const Zel::Ptr<Zel::NboAttrLog::Out>& out,
                        const MaintenanceStageClasses& value);

/// The stages known here: the BGP stage and the traffic rate monitor stage.
class ZEL_API MaintenanceStageList {
public:
  static constexpr std::string_view zelTypeName = "Maintenance::Unit::MaintenanceStageList";
  static const Zel::TypeTable& zelTable();
  static const Zel::ZelType* _fwkType();
  const Zel::ZelType* fwkType() const { return _fwkType(); }
  using _Type = Zel::TypeOf<MaintenanceStageList>;
  using GenericIf_ = Zel::ValueGenericIf<MaintenanceStageList>;

  struct Attr {
    static constexpr Zel::AttributeId bgpStage = 2;
    static constexpr Zel::AttributeId rateMonStage = 3;
  };

  MaintenanceStageList() noexcept = default;
  /// Reads the text form, an empty frame. Throws `Zel::RangeException`.
  MaintenanceStageList(Zel::String8::IteratorConst& first, const Zel::String8::IteratorConst& last);

  /// Reads the fields from the attribute log. Throws `Zel::RangeException`.
  MaintenanceStageList(Zel::NboAttrLog::In* in, Zel::StreamBogon stream);

  Zel::String8 bgpStage() const { return "bgp"; }
  Zel::String8 rateMonStage() const { return "ratemon"; }

  friend bool operator==(const MaintenanceStageList&, const MaintenanceStageList&) noexcept {
    return true;
  }
};

ZEL_API Zel::String8 valueToStrep(const MaintenanceStageList& value);
ZEL_API std::ostream& operator<<(std::ostream& out, const MaintenanceStageList& value);
ZEL_API void operator<<(const Zel::Ptr<Zel::NboAttrLog::Out>& out,
                        const MaintenanceStageList& value);

} // namespace Maintenance::Unit
