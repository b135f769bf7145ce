#pragma once

#include <model/Mapping/UnitProfileSelection.h>

namespace Maintenance {

/// All profile selections under way, one for each unit and cause.
///
///     Zel::Ptr<ProfileSelection> all = profileSelectionFactory();
///     Zel::ValidPtr<UnitProfileSelection> one =
///         all->unitProfileSelectionIs(UnitProfileSelKey("System", maintenanceOperation));
///     one->groupProfileSelectionInIs(GroupProfileSelKey(Group::groupTypeBgp, 1));
///
/// Working state of a process: no entity, so without counters and without attribute log.
class ZEL_API ProfileSelection : public Zel::PtrInterface {
public:
  static constexpr std::string_view zelTypeName = "Maintenance::ProfileSelection";
  static const Zel::TypeTable& zelTable();
  static const Zel::ZelType* _fwkType();
  const Zel::ZelType* fwkType() const override { return _fwkType(); }
  using _Type = Zel::TypeOf<ProfileSelection>;
  class GenericIf_;

  class NotifieeConst;
  class Notifiee;
  using UnitProfileSelectionMap =
      Zel::HashMap<UnitProfileSelection, UnitProfileSelKey, UnitProfileSelection>;

  struct Attr {
    static constexpr Zel::AttributeId unitProfileSelection = 130;
  };

  ProfileSelection();

  /// The selection of this key; null if there is none.
  Zel::Ptr<UnitProfileSelection> unitProfileSelection(const UnitProfileSelKey& key) const;
  /// Makes a member, telling nothing. Throws `Zel::NameInUseException` if the key is there.
  Zel::Ptr<UnitProfileSelection> newUnitProfileSelection(const UnitProfileSelKey& key);
  /// The member of this key, made if it is not there.
  Zel::ValidPtr<UnitProfileSelection> unitProfileSelectionIs(const UnitProfileSelKey& key);
  /// Removes a member and yields it; null if the key is not there.
  Zel::Ptr<UnitProfileSelection> unitProfileSelectionDel(const UnitProfileSelKey& key);
  /// The same for the member under the iterator, which stays on it.
  Zel::Ptr<UnitProfileSelection> unitProfileSelectionDel(UnitProfileSelectionMap::Iterator& at);
  void unitProfileSelectionDelAll();
  /// Tells the notifiees of a key without any change.
  void unitProfileSelectionNotify(const UnitProfileSelKey& key);
  /// The collection itself, for iteration.
  const UnitProfileSelectionMap& unitProfileSelectionMap() const noexcept {
    return unitProfileSelection_;
  }

  void zeroReferencesIs(bool zero) override;

  Zel::ListRaw<NotifieeConst>& zelNotifieeList() const noexcept { return notifiees_; }

protected:
  ~ProfileSelection() override;

private:
  UnitProfileSelectionMap unitProfileSelection_;
  mutable Zel::ListRaw<NotifieeConst> notifiees_;
};

/// Hears of the changes of a `ProfileSelection`.
class ZEL_API ProfileSelection::NotifieeConst
    : public Zel::NotifieeOf<ProfileSelection, ProfileSelection::NotifieeConst,
                             Zel::PtrInterface::NotifieeConst> {
protected:
  ~NotifieeConst() override;

public:
  /// A selection came or went; a look-up tells which.
  virtual void onUnitProfileSelection(const UnitProfileSelKey& key);
  /// Not called by any mutator, like the next: for reactors that work off changes later.
  virtual void onUnitProfileSelectionzelImmediate();
  virtual void onUnitProfileSelection();

  Zel::PendingKey<UnitProfileSelKey> zelPendingUnitProfileSelection;
};

/// What clients derive from; it may write to what it hears of.
class ZEL_API ProfileSelection::Notifiee : public ProfileSelection::NotifieeConst {
public:
  /// The object whose changes are heard, to be read and written; null without one.
  Zel::Ptr<ProfileSelection> notifier() const noexcept { return writableNotifier(); }

protected:
  ~Notifiee() override;
};

ZEL_API Zel::Ptr<ProfileSelection> profileSelectionFactory();

} // namespace Maintenance
