#include "Samples.h"

#include <foreign/model/Values.h>

#include <Group/GroupKey>
#include <Vexil/IntfId>
#include <Zel/Format>
#include <model/MaintenanceAgentInfo.h>
#include <model/Mapping.h>
#include <model/Profile.h>
#include <model/Unit.h>

#include <cmath>
#include <initializer_list>
#include <limits>
#include <map>
#include <stdexcept>
#include <string>

namespace Conformance {

namespace {

using Registry = std::map<std::string_view, std::vector<AnyValue>>;

template <class V>
void add(Registry& registry, std::initializer_list<V> values) {
  for (const V& value : values) {
    registry[Zel::valueName<V>()].push_back(AnyValue::of(value));
  }
}

template <class E>
void addEnumeration(Registry& registry) {
  for (const Zel::Enumerator& row : enumTable(E()).rows) {
    registry[Zel::valueName<E>()].push_back(AnyValue::of(static_cast<E>(row.number)));
  }
}

Maintenance::Unit::TrafficRates rates(unsigned long long out, double time) {
  Maintenance::Unit::TrafficRates rates;
  rates.outBitsRateIs(out);
  rates.statsUpdateTimeIs(time);
  return rates;
}

Registry makeRegistry() {
  constexpr double nothing = 0.0;
  constexpr unsigned allOnes = ~0U;
  Registry all;
  add<bool>(all, {false, true});
  add<unsigned>(all, {0, 1, 77, allOnes});
  add<unsigned long long>(all, {0, 1, ~0ULL});
  add<double>(all, {nothing, 0.5, 3.0, std::numeric_limits<double>::infinity()});
  add<Zel::String8>(all, {"", "a", "b", Zel::String8(std::string_view("c\0d", 3))});
  add<Zel::Name>(all, {"", "Ethernet1", "Ethernet1/2"});

  addEnumeration<Maintenance::Profile::ProfileType>(all);
  addEnumeration<Maintenance::Unit::UnitType>(all);
  addEnumeration<Maintenance::Unit::MaintenanceOp>(all);
  addEnumeration<Maintenance::Unit::InputSrc>(all);
  addEnumeration<Maintenance::Unit::State>(all);
  using Group::GroupKey;
  add<GroupKey>(
      all, {GroupKey(), GroupKey(Group::GroupType(1), "a"), GroupKey(Group::GroupType(2), "a")});
  add<Vexil::IntfId>(all, {Vexil::IntfId(), Vexil::IntfId(0, 1), Vexil::IntfId(7, 0)});
  using namespace Maintenance::Profile;
  add<ProfileKey>(
      all, {ProfileKey(), ProfileKey(profileTypeBgp, "a"), ProfileKey(profileTypeUnit, "a")});
  using namespace Maintenance::Unit;
  add<TrafficRates>(all, {rates(0, nothing), rates(1, nothing), rates(1, 2.0)});
  add<StageMgrInstKey>(
      all, {StageMgrInstKey(), StageMgrInstKey("System#1"), StageMgrInstKey("System#2")});
  add<BuiltinUnitName>(all, {BuiltinUnitName()});
  add<MaintenanceStageClasses>(all, {MaintenanceStageClasses()});
  add<MaintenanceStageList>(all, {MaintenanceStageList()});
  using namespace Maintenance;
  addEnumeration<Group::GroupType>(all);
  addEnumeration<ProfileChangeCause>(all);
  add<GroupProfileSelKey>(all,
                          {GroupProfileSelKey(), GroupProfileSelKey(Group::GroupType(0), allOnes),
                           GroupProfileSelKey(Group::GroupType(1), 0)});
  add<UnitProfileSelKey>(all, {UnitProfileSelKey(), UnitProfileSelKey("", userConfigChange),
                               UnitProfileSelKey("a", initialCreation)});
  using Noted = Maintenance::OnBootUnitAndReason;
  add<Noted>(all,
             {Noted(), Noted("", srcCli), Noted("Linecard3", srcOnBoot), Noted("Linecard3", srcCli),
              Noted("System", srcOnBoot), Noted("System", srcOnBootCli)});

  using namespace Foreign;
  addEnumeration<Zone>(all);
  addEnumeration<Urgency>(all);
  add<SkuKey>(all, {SkuKey(), SkuKey(ambient, "milk"), SkuKey(chilled, "milk")});
  add<Limits>(all, {Limits()});
  add<TourKey>(all, {TourKey(), TourKey(ambient, allOnes), TourKey(frozen, 0)});
  add<Dimensions>(
      all, {Dimensions(), Dimensions(1, true, 2.5, frozen), Dimensions(1, true, 2.5, chilled)});
  add<SlotCode>(all, {SlotCode(), SlotCode("A:1"), SlotCode("A:2")});
  add<Alarm>(all, {Alarm(), Alarm("", express), Alarm("door", routine), Alarm("door", express),
                   Alarm("smoke", routine), Alarm("smoke", express)});
  return all;
}

} // namespace

const std::vector<AnyValue>& samplesOf(const Zel::ValueRecord& record) {
  static const Registry registry = makeRegistry();
  const auto found = registry.find(record.name);
  if (found == registry.end()) {
    throw std::logic_error("no samples of " + std::string(record.name));
  }
  return found->second;
}

AnyValue numberedKey(const Zel::ValueRecord& record, unsigned number) {
  using Make = AnyValue (*)(unsigned);
  // Enumerations have few enumerators, but any number may be a key.
  static const std::map<std::string_view, Make> makers = {
      {"F64", [](unsigned i) { return AnyValue::of(1000.25 + i); }},
      {"Zel::String", [](unsigned i) { return AnyValue::of(Zel::format("text%u", i)); }},
      {"Zel::Name", [](unsigned i) { return AnyValue::of(Zel::Name(Zel::format("name%u", i))); }},
      {"Group::GroupKey",
       [](unsigned i) {
         return AnyValue::of(Group::GroupKey(Group::GroupType(i % 3), Zel::format("group%u", i)));
       }},
      {"Vexil::IntfId", [](unsigned i) { return AnyValue::of(Vexil::IntfId(i % 4, 100 + i)); }},
      {"Maintenance::Profile::ProfileKey",
       [](unsigned i) {
         using namespace Maintenance::Profile;
         return AnyValue::of(
             ProfileKey(static_cast<ProfileType>(i % 4), Zel::format("profile%u", i)));
       }},
      {"Maintenance::Profile::ProfileType",
       [](unsigned i) {
         return AnyValue::of(static_cast<Maintenance::Profile::ProfileType>(100 + i));
       }},
      {"Maintenance::GroupProfileSelKey",
       [](unsigned i) {
         return AnyValue::of(Maintenance::GroupProfileSelKey(Group::GroupType(i % 3), 100 + i));
       }},
      {"Maintenance::UnitProfileSelKey",
       [](unsigned i) {
         return AnyValue::of(Maintenance::UnitProfileSelKey(
             Zel::format("unit%u", i), static_cast<Maintenance::ProfileChangeCause>(i % 3)));
       }},
      {"Foreign::Zone",
       [](unsigned i) { return AnyValue::of(static_cast<Foreign::Zone>(100 + i)); }},
      {"Foreign::SkuKey",
       [](unsigned i) {
         return AnyValue::of(
             Foreign::SkuKey(static_cast<Foreign::Zone>(i % 3), Zel::format("sku%u", i)));
       }},
      {"Foreign::TourKey",
       [](unsigned i) {
         return AnyValue::of(Foreign::TourKey(static_cast<Foreign::Zone>(i % 3), 100 + i));
       }},
  };
  const auto found = makers.find(record.name);
  if (found == makers.end()) {
    throw std::logic_error("no keys of " + std::string(record.name));
  }
  return found->second(number);
}

std::optional<AnyValue> nanOf(const Zel::ValueRecord& record) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  if (record.name == "F64") {
    return AnyValue::of(nan);
  }
  if (record.name == Maintenance::Unit::TrafficRates::zelTypeName) {
    return AnyValue::of(rates(0, nan));
  }
  if (record.name == Foreign::Dimensions::zelTypeName) {
    return AnyValue::of(Foreign::Dimensions(0, false, nan, Foreign::ambient));
  }
  return std::nullopt;
}

} // namespace Conformance
