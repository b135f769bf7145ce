#pragma once

#include <Group/GroupKey>
#include <Vexil/IntfId>
#include <Zel/AttrLogEntity>
#include <Zel/Attribute>
#include <Zel/Layers>
#include <model/Unit/Enumerations.h>
#include <model/Unit/TrafficRates.h>

namespace Maintenance::Unit {

/// The record that the maintenance agent keeps for one unit: which state it is in, what put it
/// there and when, its history, the stage managers that work on it, its traffic. All of it is
/// stored state with notification: the library records what the agent writes and decides nothing.
///
/// No mutator touches another attribute, and no limit that is declared here is enforced.
class ZEL_API Status : public Zel::AttrLogEntity<Status> {
public:
  static constexpr std::string_view zelTypeName = "Maintenance::Unit::Status";
  static const Zel::TypeTable& zelTable();
  static const Zel::ZelType* _fwkType();
  const Zel::ZelType* fwkType() const override { return _fwkType(); }
  using _Type = Zel::TypeOf<Status>;
  class GenericIf_;
  class ZelNboAttrLogSa;

  class NotifieeConst;
  class Notifiee;

  // The entries of the collections.
  class ZEL_API ZelGroup : public Zel::MapEntry<ZelGroup, Group::GroupKey, bool> {
    using MapEntry::MapEntry;
  };
  class ZEL_API ZelHistory : public Zel::TreeEntry<ZelHistory, double, Zel::String8> {
    using TreeEntry::TreeEntry;
  };
  class ZEL_API ZelIntfsViolatingTrafficThreshold
      : public Zel::MapEntry<ZelIntfsViolatingTrafficThreshold, Vexil::IntfId, bool> {
    using MapEntry::MapEntry;
  };

  using GroupMap = Zel::HashMap<ZelGroup, Group::GroupKey, bool>;
  using HistoryMap = Zel::RbTreeMap<ZelHistory, double, Zel::String8>;
  using IntfsViolatingTrafficThresholdMap =
      Zel::HashMap<ZelIntfsViolatingTrafficThreshold, Vexil::IntfId, bool>;

  struct Attr {
    static constexpr Zel::AttributeId unitName = 258;
    static constexpr Zel::AttributeId unitType = 259;
    static constexpr Zel::AttributeId group = 260;
    static constexpr Zel::AttributeId profileName = 261;
    static constexpr Zel::AttributeId state = 262;
    static constexpr Zel::AttributeId reason = 263;
    static constexpr Zel::AttributeId timeOfStateChange = 264;
    static constexpr Zel::AttributeId onBootMaintExitTime = 265;
    static constexpr Zel::AttributeId defaultHistorySize = 266;
    static constexpr Zel::AttributeId historySize = 267;
    static constexpr Zel::AttributeId history = 268;
    static constexpr Zel::AttributeId maintEnterInstance = 269;
    static constexpr Zel::AttributeId maintExitInstance = 270;
    static constexpr Zel::AttributeId aggTrafficRate = 271;
    static constexpr Zel::AttributeId intfsViolatingTrafficThreshold = 272;
    static constexpr Zel::AttributeId totalIntfTrafficViolations = 273;
    static constexpr Zel::AttributeId genId = 274;
  };

  /// The unit's name is the entity's name.
  explicit Status(Zel::Name name);

  /// The unit's name.
  Zel::String8 unitName() const;
  /// The same, under the name that collections ask for.
  Zel::Name fwkKey() const;

  /// What kind of unit it is.
  UnitType unitType() const noexcept { return Zel::read(*this, unitType_); }
  void unitTypeIs(UnitType type);

  /// The groups that the unit covers. A key that is there may hold true or false; reading one that
  /// is not yields false.
  bool group(const Group::GroupKey& key) const;
  /// Adds the key or changes its value.
  void groupIs(const Group::GroupKey& key, bool value);
  /// Removes the key and yields the value that it held; false if it is not there.
  bool groupDel(const Group::GroupKey& key);
  /// The same for the key under the iterator, which stays on it.
  bool groupDel(GroupMap::Iterator& at);
  void groupDelAll();
  /// Adds the key, counting and telling nothing. Throws `Zel::NameInUseException` if it is there.
  Zel::Ptr<ZelGroup> newGroup(const Group::GroupKey& key, bool value);
  /// Tells the notifiees of a key without any change. The key must outlive the call.
  void groupNotify(const Group::GroupKey& key);
  /// The collection itself, for iteration.
  const GroupMap& groupMap() const noexcept { return group_; }

  /// The unit profile in force.
  Zel::String8 profileName() const noexcept { return Zel::read(*this, profileName_); }
  void profileNameIs(Zel::String8 name);

  /// Any state may follow any other.
  State state() const noexcept { return Zel::read(*this, state_); }
  void stateIs(State state);

  /// What put the unit into its state.
  InputSrc reason() const noexcept { return Zel::read(*this, reason_); }
  void reasonIs(InputSrc reason);

  /// When the state last changed, in seconds since 1970 UTC, as are all times here.
  double timeOfStateChange() const noexcept { return Zel::read(*this, timeOfStateChange_); }
  void timeOfStateChangeIs(double time);

  /// When a unit that entered maintenance on boot is due to leave it, in seconds.
  double onBootMaintExitTime() const noexcept { return Zel::read(*this, onBootMaintExitTime_); }
  void onBootMaintExitTimeIs(double time);

  /// What `historySize` starts with: 12.
  unsigned defaultHistorySize() const noexcept;

  /// How many lines of history the writer is to keep.
  unsigned historySize() const noexcept { return Zel::read(*this, historySize_); }
  void historySizeIs(unsigned size);

  /// Lines of text about events, by time in seconds, in ascending time. The operations are those of
  /// `group`; a line that is not there reads as the empty text.
  Zel::String8 history(const double& time) const;
  void historyIs(const double& time, Zel::String8 text);
  Zel::String8 historyDel(const double& time);
  Zel::String8 historyDel(HistoryMap::Iterator& at);
  void historyDelAll();
  /// Adds a line; it takes the place of one of the same time. Counts and tells nothing.
  Zel::Ptr<ZelHistory> newHistory(const double& time, Zel::String8 text);
  void historyNotify(const double& time);
  const HistoryMap& historyMap() const noexcept { return history_; }

  /// Instance names of the stage managers, text that is not interpreted (compare
  /// `StageMgrInstKey`).
  Zel::String8 maintEnterInstance() const noexcept { return Zel::read(*this, maintEnterInstance_); }
  void maintEnterInstanceIs(Zel::String8 name);
  Zel::String8 maintExitInstance() const noexcept { return Zel::read(*this, maintExitInstance_); }
  void maintExitInstanceIs(Zel::String8 name);

  /// The aggregate traffic rate. A new sample with only a new time is a change.
  const TrafficRates& aggTrafficRate() const noexcept { return Zel::read(*this, aggTrafficRate_); }
  void aggTrafficRateIs(const TrafficRates& rates);

  /// The interfaces over the traffic limit. A key that is there may hold true or false. The
  /// operations are those of `group`.
  bool intfsViolatingTrafficThreshold(Vexil::IntfId key) const;
  void intfsViolatingTrafficThresholdIs(Vexil::IntfId key, bool value);
  bool intfsViolatingTrafficThresholdDel(Vexil::IntfId key);
  bool intfsViolatingTrafficThresholdDel(IntfsViolatingTrafficThresholdMap::Iterator& at);
  void intfsViolatingTrafficThresholdDelAll();
  Zel::Ptr<ZelIntfsViolatingTrafficThreshold> newIntfsViolatingTrafficThreshold(Vexil::IntfId key,
                                                                                bool value);
  void intfsViolatingTrafficThresholdNotify(Vexil::IntfId key);
  const IntfsViolatingTrafficThresholdMap& intfsViolatingTrafficThresholdMap() const noexcept {
    return intfsViolatingTrafficThreshold_;
  }

  /// Violations overall.
  unsigned totalIntfTrafficViolations() const noexcept {
    return Zel::read(*this, totalIntfTrafficViolations_);
  }
  void totalIntfTrafficViolationsIs(unsigned total);
  /// Adds and yields the new value; wraps. The version counter does not move.
  unsigned totalIntfTrafficViolationsInc(unsigned by);

  /// The generation of the unit's status.
  unsigned genId() const noexcept { return Zel::read(*this, genId_); }
  void genIdIs(unsigned id);
  /// Adds and yields the new value; wraps. The version counter does not move.
  unsigned genIdInc(unsigned by);

  void zeroReferencesIs(bool zero) override;
  Zel::String8 attributeString(Zel::AttributeId id) const override;

  Zel::ListRaw<NotifieeConst>& zelNotifieeList() const noexcept { return notifiees_; }
  Zel::Name zelKey() const { return name(); }
  static constexpr Zel::Ptr<Status> Status::*zelMemberNext() noexcept {
    return &Status::memberNext_;
  }

protected:
  ~Status() override;

private:
  static constexpr unsigned defaultHistorySize_ = 12;

  UnitType unitType_ = userConfigured;
  GroupMap group_;
  Zel::String8 profileName_;
  State state_ = init;
  InputSrc reason_ = srcUnknown;
  double timeOfStateChange_ = 0.0;
  double onBootMaintExitTime_ = 0.0;
  unsigned historySize_ = defaultHistorySize_;
  HistoryMap history_;
  Zel::String8 maintEnterInstance_;
  Zel::String8 maintExitInstance_;
  TrafficRates aggTrafficRate_;
  IntfsViolatingTrafficThresholdMap intfsViolatingTrafficThreshold_;
  unsigned totalIntfTrafficViolations_ = 0;
  unsigned genId_ = 0;
  Zel::Ptr<Status> memberNext_;
  mutable Zel::ListRaw<NotifieeConst> notifiees_;
};

/// Hears of the changes of a `Status`. A callback of a collection names the key that changed; a
/// look-up tells whether it came, changed or went. No mutator calls `onXzelImmediate` or the `onX`
/// without a key of a collection: they are there for reactors that work off changes later, as are
/// the pending keys, which belong to those.
class ZEL_API Status::NotifieeConst
    : public Zel::NotifieeOf<Status, Status::NotifieeConst, Zel::Entity::NotifieeConst> {
protected:
  ~NotifieeConst() override;

public:
  virtual void onUnitType();
  virtual void onGroup(const Group::GroupKey& key);
  virtual void onGroupzelImmediate();
  virtual void onGroup();
  virtual void onProfileName();
  virtual void onState();
  virtual void onReason();
  virtual void onTimeOfStateChange();
  virtual void onOnBootMaintExitTime();
  virtual void onHistorySize();
  virtual void onHistory(const double& time);
  virtual void onHistoryzelImmediate();
  virtual void onHistory();
  virtual void onMaintEnterInstance();
  virtual void onMaintExitInstance();
  virtual void onAggTrafficRate();
  virtual void onIntfsViolatingTrafficThreshold(Vexil::IntfId key);
  virtual void onIntfsViolatingTrafficThresholdzelImmediate();
  virtual void onIntfsViolatingTrafficThreshold();
  virtual void onTotalIntfTrafficViolations();
  virtual void onGenId();

  Zel::PendingKey<Group::GroupKey> zelPendingGroup;
  Zel::PendingKey<double> zelPendingHistory;
  Zel::PendingKey<Vexil::IntfId> zelPendingIntfsViolatingTrafficThreshold;
};

/// What clients derive from; it may write to what it hears of.
class ZEL_API Status::Notifiee : public Status::NotifieeConst {
public:
  /// The object whose changes are heard, to be read and written; null without one.
  Zel::Ptr<Status> notifier() const noexcept { return writableNotifier(); }

protected:
  ~Notifiee() override;
};

ZEL_API Zel::Ptr<Status> statusFactory(Zel::Name name);

} // namespace Maintenance::Unit
