#pragma once

#include <Zel/Layers>

namespace Maintenance::Unit {

/// Names one instance of a stage manager: the unit that it works for, and a generation. Both are
/// packed into one text, `<unitName>#<genId>`, which is never stored: it is built at each read, so
/// the text and the parts cannot disagree.
class ZEL_API StageMgrInstKey {
public:
  static constexpr std::string_view zelTypeName = "Maintenance::Unit::StageMgrInstKey";
  static const Zel::TypeTable& zelTable();
  static const Zel::ZelType* _fwkType();
  const Zel::ZelType* fwkType() const { return _fwkType(); }
  using _Type = Zel::TypeOf<StageMgrInstKey>;
  using GenericIf_ = Zel::ValueGenericIf<StageMgrInstKey>;

  struct Attr {
    static constexpr Zel::AttributeId instanceName = 2;
    static constexpr Zel::AttributeId unitName = 3;
    static constexpr Zel::AttributeId genId = 4;
  };

  /// Reads the text form. Throws `Zel::RangeException`.
  StageMgrInstKey(Zel::String8::IteratorConst& first, const Zel::String8::IteratorConst& last);

  /// Reads the fields from the attribute log. Throws `Zel::RangeException`.
  StageMgrInstKey(Zel::NboAttrLog::In* in, Zel::StreamBogon stream);

  StageMgrInstKey() noexcept = default;
  /// As `instanceNameIs` on a default key.
  explicit StageMgrInstKey(Zel::String8 instanceName);

  /// The unit's name, "#" and the generation in decimal. The text of a key with generation 0 is not
  /// accepted by `instanceNameIs`.
  Zel::String8 instanceName() const;

  /// Takes a text apart at its first "#". The empty text changes nothing. What follows the "#" is
  /// read like an unsigned number from a stream: leading white space is skipped, and what follows
  /// the number is ignored.
  ///
  /// Throws `Zel::InternalException` if there is no "#", no unit name before it, nothing behind it,
  /// or no number but 0. In the last two cases the unit name has been set already; the generation
  /// stays as it was.
  void instanceNameIs(Zel::String8 text);

  Zel::String8 unitName() const noexcept { return unitName_; }
  void unitNameIs(Zel::String8 name) noexcept { unitName_ = std::move(name); }

  unsigned genId() const noexcept { return genId_; }
  void genIdIs(unsigned id) noexcept { genId_ = id; }

  friend bool operator==(const StageMgrInstKey& a, const StageMgrInstKey& b) noexcept {
    return a.unitName_ == b.unitName_ && a.genId_ == b.genId_;
  }

private:
  Zel::String8 unitName_;
  unsigned genId_ = 0;
};

ZEL_API Zel::String8 valueToStrep(const StageMgrInstKey& value);
ZEL_API std::ostream& operator<<(std::ostream& out, const StageMgrInstKey& value);
ZEL_API void operator<<(const Zel::Ptr<Zel::NboAttrLog::Out>& out, const StageMgrInstKey& value);

} // namespace Maintenance::Unit
