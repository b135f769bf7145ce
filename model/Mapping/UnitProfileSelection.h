#pragma once

#include <model/Mapping/GroupProfileSelectionIn.h>
#include <model/Mapping/GroupProfileSelectionOut.h>
#include <model/Mapping/UnitProfileSelKey.h>

namespace Maintenance {

/// One profile selection of a unit, with what goes in and what came out for each kind of group and
/// request. Working state of a process: no entity, so without counters and without attribute log.
class ZEL_API UnitProfileSelection : public Zel::PtrInterface {
public:
  static constexpr std::string_view zelTypeName = "Maintenance::UnitProfileSelection";
  static const Zel::TypeTable& zelTable();
  static const Zel::ZelType* _fwkType();
  const Zel::ZelType* fwkType() const override { return _fwkType(); }
  using _Type = Zel::TypeOf<UnitProfileSelection>;
  class GenericIf_;

  class NotifieeConst;
  class Notifiee;
  using GroupProfileSelectionInMap =
      Zel::HashMap<GroupProfileSelectionIn, GroupProfileSelKey, GroupProfileSelectionIn>;
  using GroupProfileSelectionOutMap =
      Zel::HashMap<GroupProfileSelectionOut, GroupProfileSelKey, GroupProfileSelectionOut>;

  struct Attr {
    static constexpr Zel::AttributeId unitProfileSelKey = 130;
    static constexpr Zel::AttributeId genId = 131;
    static constexpr Zel::AttributeId complete = 132;
    static constexpr Zel::AttributeId considerUnitState = 133;
    static constexpr Zel::AttributeId groupProfileSelectionIn = 134;
    static constexpr Zel::AttributeId groupProfileSelectionOut = 135;
  };

  explicit UnitProfileSelection(const UnitProfileSelKey& unitProfileSelKey);

  const UnitProfileSelKey& unitProfileSelKey() const noexcept {
    return Zel::read(*this, unitProfileSelKey_);
  }
  /// The key, under the name that collections ask for.
  const UnitProfileSelKey& fwkKey() const noexcept { return Zel::read(*this, unitProfileSelKey_); }

  /// The generation of the selection.
  unsigned genId() const noexcept { return Zel::read(*this, genId_); }
  void genIdIs(unsigned id);
  /// Adds and yields the new value; wraps.
  unsigned genIdInc(unsigned by);

  /// Whether all has come out that will.
  bool complete() const noexcept { return Zel::read(*this, complete_); }
  void completeIs(bool complete);

  /// Whether the state of the unit is to have a say.
  bool considerUnitState() const noexcept { return Zel::read(*this, considerUnitState_); }
  void considerUnitStateIs(bool consider);

  /// What goes in under this key; null if there is nothing.
  Zel::Ptr<GroupProfileSelectionIn> groupProfileSelectionIn(const GroupProfileSelKey& key) const;
  /// Makes a member, telling nothing. Throws `Zel::NameInUseException` if the key is there.
  Zel::Ptr<GroupProfileSelectionIn> newGroupProfileSelectionIn(const GroupProfileSelKey& key);
  /// The member of this key, made if it is not there.
  Zel::ValidPtr<GroupProfileSelectionIn> groupProfileSelectionInIs(const GroupProfileSelKey& key);
  /// Removes a member and yields it; null if the key is not there.
  Zel::Ptr<GroupProfileSelectionIn> groupProfileSelectionInDel(const GroupProfileSelKey& key);
  /// The same for the member under the iterator, which stays on it.
  Zel::Ptr<GroupProfileSelectionIn>
  groupProfileSelectionInDel(GroupProfileSelectionInMap::Iterator& at);
  void groupProfileSelectionInDelAll();
  /// Tells the notifiees of a key without any change.
  void groupProfileSelectionInNotify(const GroupProfileSelKey& key);
  /// The collection itself, for iteration.
  const GroupProfileSelectionInMap& groupProfileSelectionInMap() const noexcept {
    return groupProfileSelectionIn_;
  }

  /// What came out. The operations are those of `groupProfileSelectionIn`.
  Zel::Ptr<GroupProfileSelectionOut> groupProfileSelectionOut(const GroupProfileSelKey& key) const;
  Zel::Ptr<GroupProfileSelectionOut> newGroupProfileSelectionOut(const GroupProfileSelKey& key);
  Zel::ValidPtr<GroupProfileSelectionOut> groupProfileSelectionOutIs(const GroupProfileSelKey& key);
  Zel::Ptr<GroupProfileSelectionOut> groupProfileSelectionOutDel(const GroupProfileSelKey& key);
  Zel::Ptr<GroupProfileSelectionOut>
  groupProfileSelectionOutDel(GroupProfileSelectionOutMap::Iterator& at);
  void groupProfileSelectionOutDelAll();
  void groupProfileSelectionOutNotify(const GroupProfileSelKey& key);
  const GroupProfileSelectionOutMap& groupProfileSelectionOutMap() const noexcept {
    return groupProfileSelectionOut_;
  }

  void zeroReferencesIs(bool zero) override;

  Zel::ListRaw<NotifieeConst>& zelNotifieeList() const noexcept { return notifiees_; }
  const UnitProfileSelKey& zelKey() const noexcept { return unitProfileSelKey_; }
  static constexpr Zel::Ptr<UnitProfileSelection> UnitProfileSelection::*zelMemberNext() noexcept {
    return &UnitProfileSelection::memberNext_;
  }

protected:
  ~UnitProfileSelection() override;

private:
  const UnitProfileSelKey unitProfileSelKey_;
  unsigned genId_ = 0;
  bool complete_ = false;
  bool considerUnitState_ = false;
  GroupProfileSelectionInMap groupProfileSelectionIn_;
  GroupProfileSelectionOutMap groupProfileSelectionOut_;
  Zel::Ptr<UnitProfileSelection> memberNext_;
  mutable Zel::ListRaw<NotifieeConst> notifiees_;
};

/// Hears of the changes of a `UnitProfileSelection`. A callback of a collection names the key that
/// came or went. No mutator calls `onXzelImmediate` or the `onX` without a key of a collection:
/// they are there for reactors that work off changes later.
class ZEL_API UnitProfileSelection::NotifieeConst
    : public Zel::NotifieeOf<UnitProfileSelection, UnitProfileSelection::NotifieeConst,
                             Zel::PtrInterface::NotifieeConst> {
protected:
  ~NotifieeConst() override;

public:
  virtual void onGenId();
  virtual void onComplete();
  virtual void onConsiderUnitState();
  virtual void onGroupProfileSelectionIn(const GroupProfileSelKey& key);
  virtual void onGroupProfileSelectionInzelImmediate();
  virtual void onGroupProfileSelectionIn();
  virtual void onGroupProfileSelectionOut(const GroupProfileSelKey& key);
  virtual void onGroupProfileSelectionOutzelImmediate();
  virtual void onGroupProfileSelectionOut();

  Zel::PendingKey<GroupProfileSelKey> zelPendingGroupProfileSelectionIn;
  Zel::PendingKey<GroupProfileSelKey> zelPendingGroupProfileSelectionOut;
};

/// What clients derive from; it may write to what it hears of.
class ZEL_API UnitProfileSelection::Notifiee : public UnitProfileSelection::NotifieeConst {
public:
  /// The object whose changes are heard, to be read and written; null without one.
  Zel::Ptr<UnitProfileSelection> notifier() const noexcept { return writableNotifier(); }

protected:
  ~Notifiee() override;
};

ZEL_API Zel::Ptr<UnitProfileSelection>
unitProfileSelectionFactory(const UnitProfileSelKey& unitProfileSelKey);

} // namespace Maintenance
