#pragma once

#include "Carrier.h"
#include "Rack.h"

#include <generic/Reactor.h>

/// The generic objects of racks and carriers.
namespace Foreign {

class Rack::GenericIf_ : public Zel::EntityGenericIf<Rack> {
public:
  class GenericIf_Adapter_;
  GenericIf_(const Zel::Ptr<Rack>& object, bool isConst);

  void onZone() { zelOnSingular(Attr::zone); }
  void onAllowedZone(Zone zone) { zelOnMember(Attr::allowedZone, &zone); }
  void onReservation(Zel::String8 customer) { zelOnMember(Attr::reservation, &customer); }
  void onLabel(Zel::Name language) { zelOnMember(Attr::label, &language); }
  void onFootprint() { zelOnSingular(Attr::footprint); }
  void onSpace(Zone zone) { zelOnMember(Attr::space, &zone); }
  void onTemperature() { zelOnSingular(Attr::temperature); }
  void onNote(const double& time) { zelOnMember(Attr::note, &time); }
  void onReading(const double& time) { zelOnMember(Attr::reading, &time); }
  void onSerial() { zelOnSingular(Attr::serial); }
  void onSlot() { zelOnSingular(Attr::slot); }
  void onPicks() { zelOnSingular(Attr::picks); }

protected:
  ~GenericIf_() override;
};

class Rack::GenericIf_::GenericIf_Adapter_ : public Zel::GenericAdapter<Rack, Rack::GenericIf_> {
public:
  using GenericAdapter::GenericAdapter;

  void onZone() override { zelForward(&GenericIf_::onZone); }
  void onAllowedZone(Zone zone) override { zelForward(&GenericIf_::onAllowedZone, zone); }
  void onAllowedZone() override { zelForwardCollection(Attr::allowedZone); }
  void onReservation(Zel::String8 customer) override {
    zelForward(&GenericIf_::onReservation, customer);
  }
  void onReservation() override { zelForwardCollection(Attr::reservation); }
  void onLabel(Zel::Name language) override { zelForward(&GenericIf_::onLabel, language); }
  void onLabel() override { zelForwardCollection(Attr::label); }
  void onFootprint() override { zelForward(&GenericIf_::onFootprint); }
  void onSpace(Zone zone) override { zelForward(&GenericIf_::onSpace, zone); }
  void onSpace() override { zelForwardCollection(Attr::space); }
  void onTemperature() override { zelForward(&GenericIf_::onTemperature); }
  void onNote(const double& time) override { zelForward(&GenericIf_::onNote, time); }
  void onNote() override { zelForwardCollection(Attr::note); }
  void onReading(const double& time) override { zelForward(&GenericIf_::onReading, time); }
  void onReading() override { zelForwardCollection(Attr::reading); }
  void onSerial() override { zelForward(&GenericIf_::onSerial); }
  void onSlot() override { zelForward(&GenericIf_::onSlot); }
  void onPicks() override { zelForward(&GenericIf_::onPicks); }

protected:
  ~GenericIf_Adapter_() override;
};

class Carrier::GenericIf_ : public Zel::EntityGenericIf<Carrier> {
public:
  class GenericIf_Adapter_;
  GenericIf_(const Zel::Ptr<Carrier>& object, bool isConst);

  void onLoad(const SkuKey& key) { zelOnMember(Attr::load, &key); }
  void onTarget(Zone zone) { zelOnMember(Attr::target, &zone); }
  void onUrgency() { zelOnSingular(Attr::urgency); }
  void onIdle() { zelOnSingular(Attr::idle); }

protected:
  ~GenericIf_() override;
};

class Carrier::GenericIf_::GenericIf_Adapter_
    : public Zel::GenericAdapter<Carrier, Carrier::GenericIf_> {
public:
  using GenericAdapter::GenericAdapter;

  void onLoad(const SkuKey& key) override { zelForward(&GenericIf_::onLoad, key); }
  void onLoad() override { zelForwardCollection(Attr::load); }
  void onTarget(Zone zone) override { zelForward(&GenericIf_::onTarget, zone); }
  void onTarget() override { zelForwardCollection(Attr::target); }
  void onUrgency() override { zelForward(&GenericIf_::onUrgency); }
  void onIdle() override { zelForward(&GenericIf_::onIdle); }

protected:
  ~GenericIf_Adapter_() override;
};

} // namespace Foreign
