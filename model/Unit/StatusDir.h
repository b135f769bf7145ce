#pragma once

#include <model/Unit/Status.h>

namespace Maintenance::Unit {

/// The directory of unit status records: one entity that maps each unit's name to its `Status`.
///
///     Zel::Ptr<StatusDir> units = statusDirFactory("units");
///     units->statusIs("Linecard3")->stateIs(active);
///
/// It owns its members. A handle on a member keeps it alive beyond its removal, with its parent
/// null.
class ZEL_API StatusDir : public Zel::AttrLogEntity<StatusDir> {
public:
  static constexpr std::string_view zelTypeName = "Maintenance::Unit::StatusDir";
  static const Zel::TypeTable& zelTable();
  static const Zel::ZelType* _fwkType();
  const Zel::ZelType* fwkType() const override { return _fwkType(); }
  using _Type = Zel::TypeOf<StatusDir>;
  class GenericIf_;
  class ZelNboAttrLogSa;

  class NotifieeConst;
  class Notifiee;
  using StatusMap = Zel::HashMap<Status, Zel::Name, Status>;

  struct Attr {
    static constexpr Zel::AttributeId status = 258;
  };

  explicit StatusDir(Zel::Name name);

  /// The record of this unit; null if there is none.
  Zel::Ptr<Status> status(Zel::Name unit) const;
  /// Makes a record, counting and telling nothing; for what builds on the directory. Throws
  /// `Zel::NameInUseException` if the unit is there.
  Zel::Ptr<Status> newStatus(Zel::Name unit);
  /// The record of this unit, made if it is not there. A hit moves the version counter too.
  Zel::ValidPtr<Status> statusIs(Zel::Name unit);
  /// Removes a record and yields it; null if the unit is not there.
  Zel::Ptr<Status> statusDel(Zel::Name unit);
  /// The same for the record under the iterator, which stays on it; its next `advance()` goes on
  /// from there.
  Zel::Ptr<Status> statusDel(StatusMap::Iterator& at);
  void statusDelAll();
  /// Tells the notifiees of a unit without any change.
  void statusNotify(Zel::Name unit);
  /// The collection itself, for iteration.
  const StatusMap& statusMap() const noexcept { return status_; }

  void zeroReferencesIs(bool zero) override;
  Zel::String8 attributeString(Zel::AttributeId id) const override;

  Zel::ListRaw<NotifieeConst>& zelNotifieeList() const noexcept { return notifiees_; }

protected:
  ~StatusDir() override;

private:
  StatusMap status_;
  mutable Zel::ListRaw<NotifieeConst> notifiees_;
};

/// Hears of the changes of a `StatusDir`.
class ZEL_API StatusDir::NotifieeConst
    : public Zel::NotifieeOf<StatusDir, StatusDir::NotifieeConst, Zel::Entity::NotifieeConst> {
protected:
  ~NotifieeConst() override;

public:
  /// A record came or went; a look-up tells which.
  virtual void onStatus(Zel::Name unit);
  /// Not called by any mutator, like the next: for reactors that work off changes later.
  virtual void onStatuszelImmediate();
  virtual void onStatus();

  Zel::PendingKey<Zel::Name> zelPendingStatus;
};

/// What clients derive from; it may write to what it hears of.
class ZEL_API StatusDir::Notifiee : public StatusDir::NotifieeConst {
public:
  /// The object whose changes are heard, to be read and written; null without one.
  Zel::Ptr<StatusDir> notifier() const noexcept { return writableNotifier(); }

protected:
  ~Notifiee() override;
};

ZEL_API Zel::Ptr<StatusDir> statusDirFactory(Zel::Name name);

} // namespace Maintenance::Unit
