#pragma once

#include "Values.h"

#include <Zel/AttrLogEntity>
#include <Zel/Attribute>
#include <Zel/Layers>

namespace Foreign {

/// The warehouse's control process.
class Depot : public Zel::AttrLogEntity<Depot> {
public:
  static constexpr std::string_view zelTypeName = "Foreign::Depot";
  static const Zel::TypeTable& zelTable();
  static const Zel::ZelType* _fwkType();
  const Zel::ZelType* fwkType() const override { return _fwkType(); }
  using _Type = Zel::TypeOf<Depot>;
  class GenericIf_;
  class ZelNboAttrLogSa;

  class NotifieeConst;
  class Notifiee;
  class ZelAlarm : public Zel::MapEntry<ZelAlarm, Zel::String8, Alarm> {
    using MapEntry::MapEntry;
  };
  using AlarmMap = Zel::HashMap<ZelAlarm, Zel::String8, Alarm>;

  struct Attr {
    static constexpr Zel::AttributeId pid = 258;
    static constexpr Zel::AttributeId restarts = 259;
    static constexpr Zel::AttributeId alarm = 260;
    static constexpr Zel::AttributeId open = 261;
  };

  explicit Depot(Zel::Name name);

  unsigned pid() const noexcept { return Zel::read(*this, pid_); }
  void pidIs(unsigned pid);

  unsigned restarts() const noexcept { return Zel::read(*this, restarts_); }
  void restartsIs(unsigned restarts);
  unsigned restartsInc(unsigned by);

  /// Alarms by their own sensor.
  Alarm alarm(Zel::String8 sensor) const;
  void alarmIs(const Alarm& alarm);
  Alarm alarmDel(Zel::String8 sensor);
  Alarm alarmDel(AlarmMap::Iterator& at);
  void alarmDelAll();
  Zel::Ptr<ZelAlarm> newAlarm(const Alarm& alarm);
  void alarmNotify(Zel::String8 sensor);
  const AlarmMap& alarmMap() const noexcept { return alarm_; }

  bool open() const noexcept { return Zel::read(*this, open_); }
  void openIs(bool open);

  void zeroReferencesIs(bool zero) override;
  Zel::String8 attributeString(Zel::AttributeId id) const override;

  Zel::ListRaw<NotifieeConst>& zelNotifieeList() const noexcept { return notifiees_; }

protected:
  ~Depot() override;

private:
  unsigned pid_ = 0;
  unsigned restarts_ = 0;
  AlarmMap alarm_;
  bool open_ = false;
  mutable Zel::ListRaw<NotifieeConst> notifiees_;
};

class Depot::NotifieeConst
    : public Zel::NotifieeOf<Depot, Depot::NotifieeConst, Zel::Entity::NotifieeConst> {
protected:
  ~NotifieeConst() override;

public:
  virtual void onPid();
  virtual void onRestarts();
  virtual void onAlarm(Zel::String8 sensor);
  virtual void onAlarmzelImmediate();
  virtual void onAlarm();
  virtual void onOpen();

  Zel::PendingKey<Zel::String8> zelPendingAlarm;
};

class Depot::Notifiee : public Depot::NotifieeConst {
protected:
  ~Notifiee() override;
};

} // namespace Foreign
