#pragma once

#include <Zel/Attribute>
#include <model/Mapping/GroupProfileSelKey.h>

namespace Maintenance {

/// What goes into a profile selection for one kind of group under one request: the names of the
/// groups. Working state of a process: no entity, so without counters and without attribute log.
class ZEL_API GroupProfileSelectionIn : public Zel::PtrInterface {
public:
  static constexpr std::string_view zelTypeName = "Maintenance::GroupProfileSelectionIn";
  static const Zel::TypeTable& zelTable();
  static const Zel::ZelType* _fwkType();
  const Zel::ZelType* fwkType() const override { return _fwkType(); }
  using _Type = Zel::TypeOf<GroupProfileSelectionIn>;
  class GenericIf_;

  class NotifieeConst;
  class Notifiee;

  class ZEL_API ZelGroupName : public Zel::MapEntry<ZelGroupName, Zel::String8, bool> {
    using MapEntry::MapEntry;
  };
  using GroupNameMap = Zel::HashMap<ZelGroupName, Zel::String8, bool>;

  struct Attr {
    static constexpr Zel::AttributeId trigger = 130;
    static constexpr Zel::AttributeId groupProfileSelKey = 131;
    static constexpr Zel::AttributeId groupName = 132;
  };

  explicit GroupProfileSelectionIn(const GroupProfileSelKey& groupProfileSelKey);

  /// Set by who asks, for who works it out.
  bool trigger() const noexcept { return Zel::read(*this, trigger_); }
  void triggerIs(bool trigger);

  const GroupProfileSelKey& groupProfileSelKey() const noexcept {
    return Zel::read(*this, groupProfileSelKey_);
  }
  /// The key, under the name that collections ask for.
  const GroupProfileSelKey& fwkKey() const noexcept {
    return Zel::read(*this, groupProfileSelKey_);
  }

  /// The groups. A name that is there may hold true or false; reading one that is not yields false.
  bool groupName(Zel::String8 name) const;
  /// Adds the name or changes its value.
  void groupNameIs(Zel::String8 name, bool value);
  /// Removes the name and yields the value that it held; false if it is not there.
  bool groupNameDel(Zel::String8 name);
  /// The same for the name under the iterator, which stays on it.
  bool groupNameDel(GroupNameMap::Iterator& at);
  void groupNameDelAll();
  /// Adds the name, telling nothing. Throws `Zel::NameInUseException` if it is there.
  Zel::Ptr<ZelGroupName> newGroupName(Zel::String8 name, bool value);
  /// Tells the notifiees of a name without any change.
  void groupNameNotify(Zel::String8 name);
  /// The collection itself, for iteration.
  const GroupNameMap& groupNameMap() const noexcept { return groupName_; }

  void zeroReferencesIs(bool zero) override;

  Zel::ListRaw<NotifieeConst>& zelNotifieeList() const noexcept { return notifiees_; }
  const GroupProfileSelKey& zelKey() const noexcept { return groupProfileSelKey_; }
  static constexpr Zel::Ptr<GroupProfileSelectionIn> GroupProfileSelectionIn::*
  zelMemberNext() noexcept {
    return &GroupProfileSelectionIn::memberNext_;
  }

protected:
  ~GroupProfileSelectionIn() override;

private:
  bool trigger_ = false;
  const GroupProfileSelKey groupProfileSelKey_;
  GroupNameMap groupName_;
  Zel::Ptr<GroupProfileSelectionIn> memberNext_;
  mutable Zel::ListRaw<NotifieeConst> notifiees_;
};

/// Hears of the changes of a `GroupProfileSelectionIn`.
class ZEL_API GroupProfileSelectionIn::NotifieeConst
    : public Zel::NotifieeOf<GroupProfileSelectionIn, GroupProfileSelectionIn::NotifieeConst,
                             Zel::PtrInterface::NotifieeConst> {
protected:
  ~NotifieeConst() override;

public:
  virtual void onTrigger();
  /// A group came, changed or went; a look-up tells which.
  virtual void onGroupName(Zel::String8 name);
  /// Not called by any mutator, like the next: for reactors that work off changes later.
  virtual void onGroupNamezelImmediate();
  virtual void onGroupName();

  Zel::PendingKey<Zel::String8> zelPendingGroupName;
};

/// What clients derive from; it may write to what it hears of.
class ZEL_API GroupProfileSelectionIn::Notifiee : public GroupProfileSelectionIn::NotifieeConst {
public:
  /// The object whose changes are heard, to be read and written; null without one.
  Zel::Ptr<GroupProfileSelectionIn> notifier() const noexcept { return writableNotifier(); }

protected:
  ~Notifiee() override;
};

ZEL_API Zel::Ptr<GroupProfileSelectionIn>
groupProfileSelectionInFactory(const GroupProfileSelKey& groupProfileSelKey);

} // namespace Maintenance
