#pragma once

#include <Zel/AttrLogEntity>
#include <Zel/Attribute>
#include <Zel/Layers>
#include <model/Unit/Enumerations.h>

namespace Maintenance::Unit {

/// A unit that somebody wants in maintenance, with the source that won. It lives in a
/// `MergedInputDir`, or for itself.
class ZEL_API MergedInput : public Zel::AttrLogEntity<MergedInput> {
public:
  static constexpr std::string_view zelTypeName = "Maintenance::Unit::MergedInput";
  static const Zel::TypeTable& zelTable();
  static const Zel::ZelType* _fwkType();
  const Zel::ZelType* fwkType() const override { return _fwkType(); }
  using _Type = Zel::TypeOf<MergedInput>;
  class GenericIf_;
  class ZelNboAttrLogSa;

  class NotifieeConst;
  class Notifiee;

  struct Attr {
    static constexpr Zel::AttributeId unitName = 258;
    static constexpr Zel::AttributeId priority = 259;
  };

  /// The unit's name is the entity's name.
  MergedInput(Zel::Name name, InputSrc priority);

  /// The unit's name.
  Zel::Name unitName() const;
  /// The same, under the name that collections ask for.
  Zel::Name fwkKey() const;

  /// The source that won.
  InputSrc priority() const noexcept { return Zel::read(*this, priority_); }
  /// Ranks are not compared: a lower source may take the place of a higher one.
  void priorityIs(InputSrc priority);

  void zeroReferencesIs(bool zero) override;
  Zel::String8 attributeString(Zel::AttributeId id) const override;

  Zel::ListRaw<NotifieeConst>& zelNotifieeList() const noexcept { return notifiees_; }
  Zel::Name zelKey() const { return name(); }
  static constexpr Zel::Ptr<MergedInput> MergedInput::*zelMemberNext() noexcept {
    return &MergedInput::memberNext_;
  }

protected:
  ~MergedInput() override;

private:
  InputSrc priority_;
  Zel::Ptr<MergedInput> memberNext_;
  mutable Zel::ListRaw<NotifieeConst> notifiees_;
};

/// Hears of the changes of a `MergedInput`.
class ZEL_API MergedInput::NotifieeConst
    : public Zel::NotifieeOf<MergedInput, MergedInput::NotifieeConst, Zel::Entity::NotifieeConst> {
protected:
  ~NotifieeConst() override;

public:
  virtual void onPriority();
};

/// What clients derive from; it may write to what it hears of.
class ZEL_API MergedInput::Notifiee : public MergedInput::NotifieeConst {
public:
  /// The object whose changes are heard, to be read and written; null without one.
  Zel::Ptr<MergedInput> notifier() const noexcept { return writableNotifier(); }

protected:
  ~Notifiee() override;
};

ZEL_API Zel::Ptr<MergedInput> mergedInputFactory(Zel::Name name, InputSrc priority);

} // namespace Maintenance::Unit
