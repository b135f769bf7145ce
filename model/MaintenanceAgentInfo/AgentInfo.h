#pragma once

#include <Zel/AttrLogEntity>
#include <Zel/Attribute>
#include <model/MaintenanceAgentInfo/OnBootUnitAndReason.h>

namespace Maintenance {

/// The record of the maintenance agent itself, the process. It decides nothing: the agent writes
/// what stands here.
class ZEL_API AgentInfo : public Zel::AttrLogEntity<AgentInfo> {
public:
  static constexpr std::string_view zelTypeName = "Maintenance::AgentInfo";
  static const Zel::TypeTable& zelTable();
  static const Zel::ZelType* _fwkType();
  const Zel::ZelType* fwkType() const override { return _fwkType(); }
  using _Type = Zel::TypeOf<AgentInfo>;
  class GenericIf_;
  class ZelNboAttrLogSa;

  class NotifieeConst;
  class Notifiee;

  class ZEL_API ZelOnBootMaintEnter
      : public Zel::MapEntry<ZelOnBootMaintEnter, Zel::String8, OnBootUnitAndReason> {
    using MapEntry::MapEntry;
  };
  using OnBootMaintEnterMap = Zel::HashMap<ZelOnBootMaintEnter, Zel::String8, OnBootUnitAndReason>;

  struct Attr {
    static constexpr Zel::AttributeId agentPid = 258;
    static constexpr Zel::AttributeId restartCount = 259;
    static constexpr Zel::AttributeId onBoot = 260;
    static constexpr Zel::AttributeId onBootMaintEnter = 261;
    static constexpr Zel::AttributeId ready = 262;
  };

  explicit AgentInfo(Zel::Name name);

  /// The agent's process id.
  unsigned agentPid() const noexcept { return Zel::read(*this, agentPid_); }
  void agentPidIs(unsigned pid);

  /// How often the agent has restarted.
  unsigned restartCount() const noexcept { return Zel::read(*this, restartCount_); }
  void restartCountIs(unsigned count);
  /// Adds and yields the new value; wraps. The version counter does not move.
  unsigned restartCountInc(unsigned by);

  /// Whether the system is in its boot phase.
  bool onBoot() const noexcept { return Zel::read(*this, onBoot_); }
  void onBootIs(bool onBoot);

  /// What is noted of the unit of this name, one of those that the agent took into maintenance on
  /// boot; a default value if there is none.
  OnBootUnitAndReason onBootMaintEnter(Zel::String8 unitName) const;
  /// Adds the value under its own name, or takes the place of the one that has that name.
  void onBootMaintEnterIs(const OnBootUnitAndReason& value);
  /// Removes what is noted of the unit and yields it; a default value if there is none.
  OnBootUnitAndReason onBootMaintEnterDel(Zel::String8 unitName);
  /// The same for the value under the iterator, which stays on it.
  OnBootUnitAndReason onBootMaintEnterDel(OnBootMaintEnterMap::Iterator& at);
  void onBootMaintEnterDelAll();
  /// Adds the value, counting and telling nothing. Throws `Zel::NameInUseException` if its name is
  /// there.
  Zel::Ptr<ZelOnBootMaintEnter> newOnBootMaintEnter(const OnBootUnitAndReason& value);
  /// Tells the notifiees of a name without any change.
  void onBootMaintEnterNotify(Zel::String8 unitName);
  /// The collection itself, for iteration.
  const OnBootMaintEnterMap& onBootMaintEnterMap() const noexcept { return onBootMaintEnter_; }

  /// Whether the agent is ready.
  bool ready() const noexcept { return Zel::read(*this, ready_); }
  void readyIs(bool ready);

  void zeroReferencesIs(bool zero) override;
  Zel::String8 attributeString(Zel::AttributeId id) const override;

  Zel::ListRaw<NotifieeConst>& zelNotifieeList() const noexcept { return notifiees_; }

protected:
  ~AgentInfo() override;

private:
  unsigned agentPid_ = 0;
  unsigned restartCount_ = 0;
  bool onBoot_ = false;
  OnBootMaintEnterMap onBootMaintEnter_;
  bool ready_ = false;
  mutable Zel::ListRaw<NotifieeConst> notifiees_;
};

/// Hears of the changes of an `AgentInfo`.
class ZEL_API AgentInfo::NotifieeConst
    : public Zel::NotifieeOf<AgentInfo, AgentInfo::NotifieeConst, Zel::Entity::NotifieeConst> {
protected:
  ~NotifieeConst() override;

public:
  virtual void onAgentPid();
  virtual void onRestartCount();
  virtual void onOnBoot();
  /// What is noted of a unit came, changed or went; a look-up tells which.
  virtual void onOnBootMaintEnter(Zel::String8 unitName);
  /// Not called by any mutator, like the next: for reactors that work off changes later.
  virtual void onOnBootMaintEnterzelImmediate();
  virtual void onOnBootMaintEnter();
  virtual void onReady();

  Zel::PendingKey<Zel::String8> zelPendingOnBootMaintEnter;
};

/// What clients derive from; it may write to what it hears of.
class ZEL_API AgentInfo::Notifiee : public AgentInfo::NotifieeConst {
public:
  /// The object whose changes are heard, to be read and written; null without one.
  Zel::Ptr<AgentInfo> notifier() const noexcept { return writableNotifier(); }

protected:
  ~Notifiee() override;
};

ZEL_API Zel::Ptr<AgentInfo> agentInfoFactory(Zel::Name name);

} // namespace Maintenance
