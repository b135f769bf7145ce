#pragma once

#include "Values.h"

#include <Zel/AttrLogEntity>
#include <Zel/Attribute>
#include <Zel/Layers>

namespace Foreign {

/// A vehicle. Its mutators are virtual, so that a derived class may intercept them.
class Carrier : public Zel::AttrLogEntity<Carrier> {
public:
  static constexpr std::string_view zelTypeName = "Foreign::Carrier";
  static const Zel::TypeTable& zelTable();
  static const Zel::ZelType* _fwkType();
  const Zel::ZelType* fwkType() const override { return _fwkType(); }
  using _Type = Zel::TypeOf<Carrier>;
  class GenericIf_;
  class ZelNboAttrLogSa;

  class NotifieeConst;
  class Notifiee;
  class ZelLoad : public Zel::MapEntry<ZelLoad, SkuKey, bool> {
    using MapEntry::MapEntry;
  };
  class ZelTarget : public Zel::MapEntry<ZelTarget, Zone, SlotCode> {
    using MapEntry::MapEntry;
  };
  using LoadMap = Zel::HashMap<ZelLoad, SkuKey, bool>;
  using TargetMap = Zel::HashMap<ZelTarget, Zone, SlotCode>;

  struct Attr {
    static constexpr Zel::AttributeId load = 258;
    static constexpr Zel::AttributeId target = 259;
    static constexpr Zel::AttributeId urgency = 260;
    static constexpr Zel::AttributeId idle = 261;
  };

  explicit Carrier(Zel::Name name);

  bool load(const SkuKey& key) const;
  virtual bool loadDel(const SkuKey& key);
  virtual bool loadDel(LoadMap::Iterator& at);
  virtual void loadNotify(const SkuKey& key);
  virtual void loadIs(const SkuKey& key, bool value);
  void loadDelAll();
  Zel::Ptr<ZelLoad> newLoad(const SkuKey& key, bool value);
  const LoadMap& loadMap() const noexcept { return load_; }

  /// Where to go, one slot for each zone.
  SlotCode target(Zone zone) const;
  virtual SlotCode targetDel(Zone zone);
  virtual SlotCode targetDel(TargetMap::Iterator& at);
  virtual void targetNotify(Zone zone);
  virtual void targetIs(Zone zone, const SlotCode& slot);
  void targetDelAll();
  Zel::Ptr<ZelTarget> newTarget(Zone zone, const SlotCode& slot);
  const TargetMap& targetMap() const noexcept { return target_; }

  Urgency urgency() const noexcept { return Zel::read(*this, urgency_); }
  virtual void urgencyIs(Urgency urgency);

  bool idle() const noexcept { return Zel::read(*this, idle_); }
  virtual void idleIs(bool idle);

  void zeroReferencesIs(bool zero) override;
  Zel::String8 attributeString(Zel::AttributeId id) const override;

  Zel::ListRaw<NotifieeConst>& zelNotifieeList() const noexcept { return notifiees_; }

protected:
  ~Carrier() override;

private:
  LoadMap load_;
  TargetMap target_;
  Urgency urgency_ = urgencyUnknown;
  bool idle_ = true;
  mutable Zel::ListRaw<NotifieeConst> notifiees_;
};

class Carrier::NotifieeConst
    : public Zel::NotifieeOf<Carrier, Carrier::NotifieeConst, Zel::Entity::NotifieeConst> {
protected:
  ~NotifieeConst() override;

public:
  virtual void onLoad(const SkuKey& key);
  virtual void onLoadzelImmediate();
  virtual void onLoad();
  virtual void onTarget(Zone zone);
  virtual void onTargetzelImmediate();
  virtual void onTarget();
  virtual void onUrgency();
  virtual void onIdle();

  Zel::PendingKey<SkuKey> zelPendingLoad;
  Zel::PendingKey<Zone> zelPendingTarget;
};

class Carrier::Notifiee : public Carrier::NotifieeConst {
protected:
  ~Notifiee() override;
};

} // namespace Foreign
