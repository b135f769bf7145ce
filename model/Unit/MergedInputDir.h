#pragma once

#include <model/Unit/MergedInput.h>

namespace Maintenance::Unit {

/// The directory of what the inputs come to: one entity that maps the name of each unit that
/// somebody wants in maintenance to its `MergedInput`.
///
///     Zel::Ptr<MergedInputDir> merged = mergedInputDirFactory("merged");
///     merged->unitIs("Linecard3", srcCli);
///
/// It owns its members. A handle on a member keeps it alive beyond its removal, with its parent
/// null.
class ZEL_API MergedInputDir : public Zel::AttrLogEntity<MergedInputDir> {
public:
  static constexpr std::string_view zelTypeName = "Maintenance::Unit::MergedInputDir";
  static const Zel::TypeTable& zelTable();
  static const Zel::ZelType* _fwkType();
  const Zel::ZelType* fwkType() const override { return _fwkType(); }
  using _Type = Zel::TypeOf<MergedInputDir>;
  class GenericIf_;
  class ZelNboAttrLogSa;

  class NotifieeConst;
  class Notifiee;
  using UnitMap = Zel::HashMap<MergedInput, Zel::Name, MergedInput>;

  struct Attr {
    static constexpr Zel::AttributeId unit = 258;
  };

  explicit MergedInputDir(Zel::Name name);

  /// The record of this unit; null if there is none.
  Zel::Ptr<MergedInput> unit(Zel::Name name) const;
  /// Makes a record, counting and telling nothing; for what builds on the directory. Throws
  /// `Zel::NameInUseException` if the unit is there.
  Zel::Ptr<MergedInput> newUnit(Zel::Name name, InputSrc priority);
  /// The record of this unit, made if it is not there. One that is there gets the priority, of
  /// which its own notifiees hear, and not those of the directory; the directory's version counter
  /// moves all the same.
  Zel::ValidPtr<MergedInput> unitIs(Zel::Name name, InputSrc priority);
  /// Removes a record and yields it; null if the unit is not there.
  Zel::Ptr<MergedInput> unitDel(Zel::Name name);
  /// The same for the record under the iterator, which stays on it; its next `advance()` goes on
  /// from there.
  Zel::Ptr<MergedInput> unitDel(UnitMap::Iterator& at);
  void unitDelAll();
  /// Tells the notifiees of a unit without any change.
  void unitNotify(Zel::Name name);
  /// The collection itself, for iteration.
  const UnitMap& unitMap() const noexcept { return unit_; }

  void zeroReferencesIs(bool zero) override;
  Zel::String8 attributeString(Zel::AttributeId id) const override;

  Zel::ListRaw<NotifieeConst>& zelNotifieeList() const noexcept { return notifiees_; }

protected:
  ~MergedInputDir() override;

private:
  UnitMap unit_;
  mutable Zel::ListRaw<NotifieeConst> notifiees_;
};

/// Hears of the changes of a `MergedInputDir`.
class ZEL_API MergedInputDir::NotifieeConst
    : public Zel::NotifieeOf<MergedInputDir, MergedInputDir::NotifieeConst,
                             Zel::Entity::NotifieeConst> {
protected:
  ~NotifieeConst() override;

public:
  /// A record came or went; a look-up tells which.
  virtual void onUnit(Zel::Name name);
  /// Not called by any mutator, like the next: for reactors that work off changes later.
  virtual void onUnitzelImmediate();
  virtual void onUnit();

  Zel::PendingKey<Zel::Name> zelPendingUnit;
};

/// What clients derive from; it may write to what it hears of.
class ZEL_API MergedInputDir::Notifiee : public MergedInputDir::NotifieeConst {
public:
  /// The object whose changes are heard, to be read and written; null without one.
  Zel::Ptr<MergedInputDir> notifier() const noexcept { return writableNotifier(); }

protected:
  ~Notifiee() override;
};

ZEL_API Zel::Ptr<MergedInputDir> mergedInputDirFactory(Zel::Name name);

} // namespace Maintenance::Unit
