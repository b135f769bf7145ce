#pragma once

#include "Values.h"

#include <Zel/AttrLogEntity>
#include <Zel/Attribute>
#include <Zel/Layers>

namespace Foreign {

/// One rack, with a collection of each shape.
class Rack : public Zel::AttrLogEntity<Rack> {
public:
  static constexpr std::string_view zelTypeName = "Foreign::Rack";
  static const Zel::TypeTable& zelTable();
  static const Zel::ZelType* _fwkType();
  const Zel::ZelType* fwkType() const override { return _fwkType(); }
  using _Type = Zel::TypeOf<Rack>;
  class GenericIf_;
  class ZelNboAttrLogSa;

  class NotifieeConst;
  class Notifiee;

  class ZelAllowedZone : public Zel::MapEntry<ZelAllowedZone, Zone, bool> {
    using MapEntry::MapEntry;
  };
  class ZelReservation : public Zel::MapEntry<ZelReservation, Zel::String8, bool> {
    using MapEntry::MapEntry;
  };
  class ZelLabel : public Zel::MapEntry<ZelLabel, Zel::Name, Zel::String8> {
    using MapEntry::MapEntry;
  };
  class ZelSpace : public Zel::MapEntry<ZelSpace, Zone, Dimensions> {
    using MapEntry::MapEntry;
  };
  class ZelNote : public Zel::TreeEntry<ZelNote, double, Zel::String8> {
    using TreeEntry::TreeEntry;
  };
  class ZelReading : public Zel::TreeEntry<ZelReading, double, double> {
    using TreeEntry::TreeEntry;
  };

  using AllowedZoneMap = Zel::HashMap<ZelAllowedZone, Zone, bool>;
  using ReservationMap = Zel::HashMap<ZelReservation, Zel::String8, bool>;
  using LabelMap = Zel::HashMap<ZelLabel, Zel::Name, Zel::String8>;
  using SpaceMap = Zel::HashMap<ZelSpace, Zone, Dimensions>;
  using NoteMap = Zel::RbTreeMap<ZelNote, double, Zel::String8>;
  using ReadingMap = Zel::RbTreeMap<ZelReading, double, double>;

  struct Attr {
    static constexpr Zel::AttributeId rackName = 258;
    static constexpr Zel::AttributeId zone = 259;
    static constexpr Zel::AttributeId allowedZone = 260;
    static constexpr Zel::AttributeId reservation = 261;
    static constexpr Zel::AttributeId label = 262;
    static constexpr Zel::AttributeId footprint = 263;
    static constexpr Zel::AttributeId space = 264;
    static constexpr Zel::AttributeId capacity = 265;
    static constexpr Zel::AttributeId temperature = 266;
    static constexpr Zel::AttributeId note = 267;
    static constexpr Zel::AttributeId reading = 268;
    static constexpr Zel::AttributeId serial = 269;
    static constexpr Zel::AttributeId slot = 270;
    static constexpr Zel::AttributeId picks = 271;
  };

  explicit Rack(Zel::Name name);

  Zel::String8 rackName() const;
  Zel::Name fwkKey() const;

  Zone zone() const noexcept { return Zel::read(*this, zone_); }
  void zoneIs(Zone zone);

  bool allowedZone(Zone zone) const;
  void allowedZoneIs(Zone zone, bool value);
  bool allowedZoneDel(Zone zone);
  bool allowedZoneDel(AllowedZoneMap::Iterator& at);
  void allowedZoneDelAll();
  Zel::Ptr<ZelAllowedZone> newAllowedZone(Zone zone, bool value);
  void allowedZoneNotify(Zone zone);
  const AllowedZoneMap& allowedZoneMap() const noexcept { return allowedZone_; }

  bool reservation(Zel::String8 customer) const;
  void reservationIs(Zel::String8 customer, bool value);
  bool reservationDel(Zel::String8 customer);
  bool reservationDel(ReservationMap::Iterator& at);
  void reservationDelAll();
  Zel::Ptr<ZelReservation> newReservation(Zel::String8 customer, bool value);
  void reservationNotify(Zel::String8 customer);
  const ReservationMap& reservationMap() const noexcept { return reservation_; }

  Zel::String8 label(Zel::Name language) const;
  void labelIs(Zel::Name language, Zel::String8 text);
  Zel::String8 labelDel(Zel::Name language);
  Zel::String8 labelDel(LabelMap::Iterator& at);
  void labelDelAll();
  Zel::Ptr<ZelLabel> newLabel(Zel::Name language, Zel::String8 text);
  void labelNotify(Zel::Name language);
  const LabelMap& labelMap() const noexcept { return label_; }

  const Dimensions& footprint() const noexcept { return Zel::read(*this, footprint_); }
  void footprintIs(const Dimensions& footprint);

  /// Free space by zone.
  Dimensions space(Zone zone) const;
  void spaceIs(Zone zone, const Dimensions& free);
  Dimensions spaceDel(Zone zone);
  Dimensions spaceDel(SpaceMap::Iterator& at);
  void spaceDelAll();
  Zel::Ptr<ZelSpace> newSpace(Zone zone, const Dimensions& free);
  void spaceNotify(Zone zone);
  const SpaceMap& spaceMap() const noexcept { return space_; }

  unsigned capacity() const noexcept;

  double temperature() const noexcept { return Zel::read(*this, temperature_); }
  void temperatureIs(double temperature);

  /// Notes by time, in ascending time.
  Zel::String8 note(const double& time) const;
  void noteIs(const double& time, Zel::String8 text);
  Zel::String8 noteDel(const double& time);
  Zel::String8 noteDel(NoteMap::Iterator& at);
  void noteDelAll();
  Zel::Ptr<ZelNote> newNote(const double& time, Zel::String8 text);
  void noteNotify(const double& time);
  const NoteMap& noteMap() const noexcept { return note_; }

  /// Temperatures by time, in ascending time.
  double reading(const double& time) const;
  void readingIs(const double& time, double temperature);
  double readingDel(const double& time);
  double readingDel(ReadingMap::Iterator& at);
  void readingDelAll();
  Zel::Ptr<ZelReading> newReading(const double& time, double temperature);
  void readingNotify(const double& time);
  const ReadingMap& readingMap() const noexcept { return reading_; }

  unsigned long long serial() const noexcept { return Zel::read(*this, serial_); }
  void serialIs(unsigned long long serial);

  const SlotCode& slot() const noexcept { return Zel::read(*this, slot_); }
  void slotIs(const SlotCode& slot);

  unsigned picks() const noexcept { return Zel::read(*this, picks_); }
  void picksIs(unsigned picks);
  unsigned picksInc(unsigned by);

  void zeroReferencesIs(bool zero) override;
  Zel::String8 attributeString(Zel::AttributeId id) const override;

  Zel::ListRaw<NotifieeConst>& zelNotifieeList() const noexcept { return notifiees_; }

protected:
  ~Rack() override;

private:
  Zone zone_ = ambient;
  AllowedZoneMap allowedZone_;
  ReservationMap reservation_;
  LabelMap label_;
  Dimensions footprint_;
  SpaceMap space_;
  double temperature_ = 18.5;
  NoteMap note_;
  ReadingMap reading_;
  unsigned long long serial_ = 0;
  SlotCode slot_;
  unsigned picks_ = 0;
  mutable Zel::ListRaw<NotifieeConst> notifiees_;
};

class Rack::NotifieeConst
    : public Zel::NotifieeOf<Rack, Rack::NotifieeConst, Zel::Entity::NotifieeConst> {
protected:
  ~NotifieeConst() override;

public:
  virtual void onZone();
  virtual void onAllowedZone(Zone zone);
  virtual void onAllowedZonezelImmediate();
  virtual void onAllowedZone();
  virtual void onReservation(Zel::String8 customer);
  virtual void onReservationzelImmediate();
  virtual void onReservation();
  virtual void onLabel(Zel::Name language);
  virtual void onLabelzelImmediate();
  virtual void onLabel();
  virtual void onFootprint();
  virtual void onSpace(Zone zone);
  virtual void onSpacezelImmediate();
  virtual void onSpace();
  virtual void onTemperature();
  virtual void onNote(const double& time);
  virtual void onNotezelImmediate();
  virtual void onNote();
  virtual void onReading(const double& time);
  virtual void onReadingzelImmediate();
  virtual void onReading();
  virtual void onSerial();
  virtual void onSlot();
  virtual void onPicks();

  Zel::PendingKey<Zone> zelPendingAllowedZone;
  Zel::PendingKey<Zel::String8> zelPendingReservation;
  Zel::PendingKey<Zel::Name> zelPendingLabel;
  Zel::PendingKey<Zone> zelPendingSpace;
  Zel::PendingKey<double> zelPendingNote;
  Zel::PendingKey<double> zelPendingReading;
};

class Rack::Notifiee : public Rack::NotifieeConst {
protected:
  ~Notifiee() override;
};

} // namespace Foreign
