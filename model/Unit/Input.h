#pragma once

#include <Zel/AttrLogEntity>
#include <Zel/Attribute>
#include <Zel/Layers>
#include <model/Unit/Enumerations.h>

namespace Maintenance::Unit {

/// What one source asks for: its rank, and the names of the units that it wants in maintenance.
/// Whoever combines inputs writes the result into a `MergedInputDir`; nothing here does.
class ZEL_API Input : public Zel::AttrLogEntity<Input> {
public:
  static constexpr std::string_view zelTypeName = "Maintenance::Unit::Input";
  static const Zel::TypeTable& zelTable();
  static const Zel::ZelType* _fwkType();
  const Zel::ZelType* fwkType() const override { return _fwkType(); }
  using _Type = Zel::TypeOf<Input>;
  class GenericIf_;
  class ZelNboAttrLogSa;

  class NotifieeConst;
  class Notifiee;

  /// The entries of the collection.
  class ZEL_API ZelUnit : public Zel::MapEntry<ZelUnit, Zel::String8, bool> {
    using MapEntry::MapEntry;
  };
  using UnitMap = Zel::HashMap<ZelUnit, Zel::String8, bool>;

  struct Attr {
    static constexpr Zel::AttributeId priority = 258;
    static constexpr Zel::AttributeId unit = 259;
  };

  explicit Input(Zel::Name name);

  /// The source.
  InputSrc priority() const noexcept { return Zel::read(*this, priority_); }
  void priorityIs(InputSrc priority);

  /// The units, by name. A name that is there may hold true or false; reading one that is not
  /// yields false.
  bool unit(Zel::String8 unitName) const;
  /// Adds the name or changes its value.
  void unitIs(Zel::String8 unitName, bool value);
  /// Removes the name and yields the value that it held; false if it is not there.
  bool unitDel(Zel::String8 unitName);
  /// The same for the name under the iterator, which stays on it.
  bool unitDel(UnitMap::Iterator& at);
  void unitDelAll();
  /// Adds the name, counting and telling nothing. Throws `Zel::NameInUseException` if it is there.
  Zel::Ptr<ZelUnit> newUnit(Zel::String8 unitName, bool value);
  /// Tells the notifiees of a name without any change.
  void unitNotify(Zel::String8 unitName);
  /// The collection itself, for iteration.
  const UnitMap& unitMap() const noexcept { return unit_; }

  void zeroReferencesIs(bool zero) override;
  Zel::String8 attributeString(Zel::AttributeId id) const override;

  Zel::ListRaw<NotifieeConst>& zelNotifieeList() const noexcept { return notifiees_; }

protected:
  ~Input() override;

private:
  InputSrc priority_ = srcUnknown;
  UnitMap unit_;
  mutable Zel::ListRaw<NotifieeConst> notifiees_;
};

/// Hears of the changes of an `Input`. The callback of the collection names the unit that changed;
/// a look-up tells whether it came, changed or went.
class ZEL_API Input::NotifieeConst
    : public Zel::NotifieeOf<Input, Input::NotifieeConst, Zel::Entity::NotifieeConst> {
protected:
  ~NotifieeConst() override;

public:
  virtual void onPriority();
  virtual void onUnit(Zel::String8 unitName);
  /// Not called by any mutator, like the next: for reactors that work off changes later.
  virtual void onUnitzelImmediate();
  virtual void onUnit();

  Zel::PendingKey<Zel::String8> zelPendingUnit;
};

/// What clients derive from; it may write to what it hears of.
class ZEL_API Input::Notifiee : public Input::NotifieeConst {
public:
  /// The object whose changes are heard, to be read and written; null without one.
  Zel::Ptr<Input> notifier() const noexcept { return writableNotifier(); }

protected:
  ~Notifiee() override;
};

ZEL_API Zel::Ptr<Input> inputFactory(Zel::Name name);

} // namespace Maintenance::Unit
