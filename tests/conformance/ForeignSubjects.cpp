#include "Subject.h"

#include <foreign/model/Carrier.h>
#include <foreign/model/Depot.h>
#include <foreign/model/Order.h>
#include <foreign/model/Perishable.h>
#include <foreign/model/PickPlan.h>
#include <foreign/model/Rack.h>

namespace Conformance {

namespace {

using namespace Foreign;

class ProductRecorder : public Recorder<Product> {
  void onPrice() override { hear(Product::Attr::price); }
  void onSupplier(Zel::Name name) override { hear(Product::Attr::supplier, name); }
  void onSupplier() override { hear(Product::Attr::supplier); }
};

class ProductDirRecorder : public Recorder<ProductDir> {
  void onProduct(const SkuKey& key) override { hear(ProductDir::Attr::product, key); }
  void onProduct() override { hear(ProductDir::Attr::product); }
};

class PerishableRecorder : public Recorder<Perishable> {
  void onPrice() override { hear(Product::Attr::price); }
  void onSupplier(Zel::Name name) override { hear(Product::Attr::supplier, name); }
  void onSupplier() override { hear(Product::Attr::supplier); }
  void onShelfLife() override { hear(Perishable::Attr::shelfLife); }
  void onBatch(Zel::String8 name) override { hear(Perishable::Attr::batch, name); }
  void onBatch() override { hear(Perishable::Attr::batch); }
  void onRecalled() override { hear(Perishable::Attr::recalled); }
  void onSold() override { hear(Perishable::Attr::sold); }
};

class PerishableDirRecorder : public Recorder<PerishableDir> {
  void onPerishable(Zel::String8 sku) override { hear(PerishableDir::Attr::perishable, sku); }
  void onPerishable() override { hear(PerishableDir::Attr::perishable); }
};

class RackRecorder : public Recorder<Rack> {
  using Attr = Rack::Attr;
  void onZone() override { hear(Attr::zone); }
  void onAllowedZone(Zone zone) override { hear(Attr::allowedZone, zone); }
  void onAllowedZone() override { hear(Attr::allowedZone); }
  void onReservation(Zel::String8 customer) override { hear(Attr::reservation, customer); }
  void onReservation() override { hear(Attr::reservation); }
  void onLabel(Zel::Name language) override { hear(Attr::label, language); }
  void onLabel() override { hear(Attr::label); }
  void onFootprint() override { hear(Attr::footprint); }
  void onSpace(Zone zone) override { hear(Attr::space, zone); }
  void onSpace() override { hear(Attr::space); }
  void onTemperature() override { hear(Attr::temperature); }
  void onNote(const double& time) override { hear(Attr::note, time); }
  void onNote() override { hear(Attr::note); }
  void onReading(const double& time) override { hear(Attr::reading, time); }
  void onReading() override { hear(Attr::reading); }
  void onSerial() override { hear(Attr::serial); }
  void onSlot() override { hear(Attr::slot); }
  void onPicks() override { hear(Attr::picks); }
};

class CarrierRecorder : public Recorder<Carrier> {
  void onLoad(const SkuKey& key) override { hear(Carrier::Attr::load, key); }
  void onLoad() override { hear(Carrier::Attr::load); }
  void onTarget(Zone zone) override { hear(Carrier::Attr::target, zone); }
  void onTarget() override { hear(Carrier::Attr::target); }
  void onUrgency() override { hear(Carrier::Attr::urgency); }
  void onIdle() override { hear(Carrier::Attr::idle); }
};

class OrderRecorder : public Recorder<Order> {
  void onUrgency() override { hear(Order::Attr::urgency); }
  void onItem(Zel::String8 sku) override { hear(Order::Attr::item, sku); }
  void onItem() override { hear(Order::Attr::item); }
};

class OrderDirRecorder : public Recorder<OrderDir> {
  void onOrder(Zel::Name name) override { hear(OrderDir::Attr::order, name); }
  void onOrder() override { hear(OrderDir::Attr::order); }
};

class DepotRecorder : public Recorder<Depot> {
  void onPid() override { hear(Depot::Attr::pid); }
  void onRestarts() override { hear(Depot::Attr::restarts); }
  void onAlarm(Zel::String8 sensor) override { hear(Depot::Attr::alarm, sensor); }
  void onAlarm() override { hear(Depot::Attr::alarm); }
  void onOpen() override { hear(Depot::Attr::open); }
};

class StopRecorder : public Recorder<Stop> {
  void onUrgent() override { hear(Stop::Attr::urgent); }
};

class TourRecorder : public Recorder<Tour> {
  void onMetres() override { hear(Tour::Attr::metres); }
  void onComplete() override { hear(Tour::Attr::complete); }
  void onHelper(Zel::String8 name) override { hear(Tour::Attr::helper, name); }
  void onHelper() override { hear(Tour::Attr::helper); }
  void onStop(const SkuKey& key) override { hear(Tour::Attr::stop, key); }
  void onStop() override { hear(Tour::Attr::stop); }
  void onMark(const SkuKey& key) override { hear(Tour::Attr::mark, key); }
  void onMark() override { hear(Tour::Attr::mark); }
};

class PickPlanRecorder : public Recorder<PickPlan> {
  void onTour(const TourKey& key) override { hear(PickPlan::Attr::tour, key); }
  void onTour() override { hear(PickPlan::Attr::tour); }
};

void addValues(std::vector<Subject>& all) {
  const SkuKey sku(frozen, "peas");
  all.push_back(SubjectOf<SkuKey>("SkuKey", [sku] { return sku; })
                    .reads<&SkuKey::zone>(SkuKey::Attr::zone, frozen)
                    .reads<&SkuKey::sku>(SkuKey::Attr::sku, "peas")
                    .reads<&SkuKey::hash>(SkuKey::Attr::hash, sku.hash()));
  all.push_back(SubjectOf<Dimensions>("Dimensions", [] { return Dimensions(); })
                    .reads<&Dimensions::width>(Dimensions::Attr::width, 0)
                    .reads<&Dimensions::fragile>(Dimensions::Attr::fragile, false)
                    .reads<&Dimensions::weight>(Dimensions::Attr::weight, 0.0)
                    .reads<&Dimensions::zone>(Dimensions::Attr::zone, ambient));
  all.push_back(SubjectOf<SlotCode>("SlotCode", [] { return SlotCode(); })
                    .reads<&SlotCode::code>(SlotCode::Attr::code, ":0", {":1", "B:7"})
                    .reads<&SlotCode::aisle>(SlotCode::Attr::aisle, "")
                    .reads<&SlotCode::shelf>(SlotCode::Attr::shelf, 0));
  all.push_back(SubjectOf<Alarm>("Alarm", [] { return Alarm("door", express); })
                    .reads<&Alarm::sensor>(Alarm::Attr::sensor, "door")
                    .reads<&Alarm::urgency>(Alarm::Attr::urgency, express));
  const TourKey tour(chilled, 5);
  all.push_back(SubjectOf<TourKey>("TourKey", [tour] { return tour; })
                    .reads<&TourKey::zone>(TourKey::Attr::zone, chilled)
                    .reads<&TourKey::round>(TourKey::Attr::round, 5)
                    .reads<&TourKey::hash>(TourKey::Attr::hash, tour.hash()));
  all.push_back(SubjectOf<Limits>("Limits", [] { return Limits(); })
                    .reads<&Limits::maxShelf>(Limits::Attr::maxShelf, 40)
                    .reads<&Limits::homeAisle>(Limits::Attr::homeAisle, "A"));
}

void addProducts(std::vector<Subject>& all) {
  const SkuKey sku(frozen, "peas");
  all.push_back(SubjectOf<Product, ProductRecorder>("Product",
                                                    [sku] { return Zel::makeObject<Product>(sku); })
                    .reads<&Product::key>(Product::Attr::key, sku)
                    .reads<&Product::price>(Product::Attr::price, 0.0)
                    .looksUp<&Product::supplier, &Product::supplierMap>(Product::Attr::supplier)
                    .reads<&Product::fwkKey>(Zel::fwkKeyId, sku));
  all.push_back(SubjectOf<ProductDir, ProductDirRecorder>("ProductDir", [] {
                  return Zel::makeObject<ProductDir>("dir");
                }).finds<&ProductDir::product, &ProductDir::productMap>(ProductDir::Attr::product));
  const SkuKey milk(chilled, "milk");
  all.push_back(SubjectOf<Perishable, PerishableRecorder>(
                    "Perishable", [] { return Zel::makeObject<Perishable>("milk"); })
                    .derivedFrom(Product::zelTypeName)
                    .reads<&Product::key>(Product::Attr::key, milk)
                    .reads<&Product::price>(Product::Attr::price, 0.0)
                    .looksUp<&Product::supplier, &Product::supplierMap>(Product::Attr::supplier)
                    .reads<&Product::fwkKey>(Zel::fwkKeyId, milk)
                    .reads<&Perishable::sku>(Perishable::Attr::sku, "milk")
                    .reads<&Perishable::shelfLife>(Perishable::Attr::shelfLife, 30)
                    .reads<&Perishable::minShelfLife>(Perishable::Attr::minShelfLife, 3)
                    .looksUp<&Perishable::batch, &Perishable::batchMap>(Perishable::Attr::batch)
                    .reads<&Perishable::recalled>(Perishable::Attr::recalled, false)
                    .reads<&Perishable::sold>(Perishable::Attr::sold, 0));
  all.push_back(SubjectOf<PerishableDir, PerishableDirRecorder>(
                    "PerishableDir", [] { return Zel::makeObject<PerishableDir>("dir"); })
                    .finds<&PerishableDir::perishable, &PerishableDir::perishableMap>(
                        PerishableDir::Attr::perishable));
}

Subject rackSubject() {
  using Attr = Rack::Attr;
  return SubjectOf<Rack, RackRecorder>("Rack", [] { return Zel::makeObject<Rack>("north"); })
      .reads<&Rack::rackName>(Attr::rackName, "north")
      .reads<&Rack::zone>(Attr::zone, ambient)
      .looksUp<&Rack::allowedZone, &Rack::allowedZoneMap>(Attr::allowedZone)
      .looksUp<&Rack::reservation, &Rack::reservationMap>(Attr::reservation)
      .looksUp<&Rack::label, &Rack::labelMap>(Attr::label)
      .reads<&Rack::footprint>(Attr::footprint, Dimensions())
      .looksUp<&Rack::space, &Rack::spaceMap>(Attr::space)
      .reads<&Rack::capacity>(Attr::capacity, 48)
      .reads<&Rack::temperature>(Attr::temperature, 18.5)
      .looksUp<&Rack::note, &Rack::noteMap>(Attr::note)
      .looksUp<&Rack::reading, &Rack::readingMap>(Attr::reading)
      .reads<&Rack::serial>(Attr::serial, 0)
      .reads<&Rack::slot>(Attr::slot, SlotCode())
      .reads<&Rack::picks>(Attr::picks, 0)
      .reads<&Rack::fwkKey>(Zel::fwkKeyId, "north");
}

void addEntities(std::vector<Subject>& all) {
  all.push_back(SubjectOf<Carrier, CarrierRecorder>("Carrier",
                                                    [] { return Zel::makeObject<Carrier>("fork"); })
                    .looksUp<&Carrier::load, &Carrier::loadMap>(Carrier::Attr::load)
                    .looksUp<&Carrier::target, &Carrier::targetMap>(Carrier::Attr::target)
                    .reads<&Carrier::urgency>(Carrier::Attr::urgency, urgencyUnknown)
                    .reads<&Carrier::idle>(Carrier::Attr::idle, true));
  all.push_back(
      SubjectOf<Order, OrderRecorder>("Order", [] { return Zel::makeObject<Order>("o1", express); })
          .reads<&Order::orderName>(Order::Attr::orderName, "o1")
          .reads<&Order::urgency>(Order::Attr::urgency, express)
          .looksUp<&Order::item, &Order::itemMap>(Order::Attr::item)
          .reads<&Order::fwkKey>(Zel::fwkKeyId, "o1"));
  all.push_back(SubjectOf<OrderDir, OrderDirRecorder>("OrderDir", [] {
                  return Zel::makeObject<OrderDir>("dir");
                }).finds<&OrderDir::order, &OrderDir::orderMap>(OrderDir::Attr::order));
  all.push_back(
      SubjectOf<Depot, DepotRecorder>("Depot", [] { return Zel::makeObject<Depot>("depot"); })
          .reads<&Depot::pid>(Depot::Attr::pid, 0)
          .reads<&Depot::restarts>(Depot::Attr::restarts, 0)
          .looksUpOwn<&Depot::alarm, &Depot::alarmMap, &Alarm::sensor>(Depot::Attr::alarm)
          .reads<&Depot::open>(Depot::Attr::open, false));
}

void addObjects(std::vector<Subject>& all) {
  const SkuKey sku(frozen, "peas");
  all.push_back(SubjectOf<Stop, StopRecorder>("Stop", [sku] { return Zel::makeObject<Stop>(sku); })
                    .reads<&Stop::urgent>(Stop::Attr::urgent, false)
                    .reads<&Stop::key>(Stop::Attr::key, sku)
                    .reads<&Stop::fwkKey>(Zel::fwkKeyId, sku));
  all.push_back(SubjectOf<Mark>("Mark", [sku] { return Zel::makeObject<Mark>(sku); })
                    .reads<&Mark::key>(Mark::Attr::key, sku)
                    .reads<&Mark::fwkKey>(Zel::fwkKeyId, sku));
  const TourKey key(chilled, 5);
  all.push_back(SubjectOf<Tour, TourRecorder>("Tour", [key] { return Zel::makeObject<Tour>(key); })
                    .reads<&Tour::key>(Tour::Attr::key, key)
                    .reads<&Tour::metres>(Tour::Attr::metres, 0)
                    .reads<&Tour::complete>(Tour::Attr::complete, false)
                    .looksUp<&Tour::helper, &Tour::helperMap>(Tour::Attr::helper)
                    .finds<&Tour::stop, &Tour::stopMap>(Tour::Attr::stop)
                    .finds<&Tour::mark, &Tour::markMap>(Tour::Attr::mark)
                    .reads<&Tour::fwkKey>(Zel::fwkKeyId, key));
  all.push_back(SubjectOf<PickPlan, PickPlanRecorder>("PickPlan", [] {
                  return Zel::makeObject<PickPlan>();
                }).finds<&PickPlan::tour, &PickPlan::tourMap>(PickPlan::Attr::tour));
  all.push_back(SubjectOf<PickSet>("PickSet", [] { return Zel::makeObject<PickSet>(); })
                    .looksUp<&PickSet::candidate, &PickSet::candidateMap>(PickSet::Attr::candidate)
                    .reads<&PickSet::winner>(PickSet::Attr::winner, SkuKey()));
}

} // namespace

void addForeignSubjects(std::vector<Subject>& all) {
  addValues(all);
  addProducts(all);
  all.push_back(rackSubject());
  addEntities(all);
  addObjects(all);
}

} // namespace Conformance
