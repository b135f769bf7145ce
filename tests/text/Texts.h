#pragma once

#include "support/Failure.h"

#include <Group/GroupKey>
#include <Vexil/IntfId>
#include <Zel/Text>
#include <model/MaintenanceAgentInfo/OnBootUnitAndReason.h>
#include <model/Mapping.h>
#include <model/Profile/ProfileKey.h>
#include <model/Unit.h>
#include <model/Unit/Constants.h>
#include <model/Unit/StageMgrInstKey.h>

#include <bit>
#include <climits>
#include <random>
#include <sstream>

namespace TestText {

using Group::GroupKey;
using Group::GroupType;
using Maintenance::GroupProfileSelKey;
using Maintenance::OnBootUnitAndReason;
using Maintenance::ProfileChangeCause;
using Maintenance::UnitProfileSelKey;
using Maintenance::Profile::ProfileKey;
using Maintenance::Profile::ProfileType;
using Maintenance::Unit::BuiltinUnitName;
using Maintenance::Unit::InputSrc;
using Maintenance::Unit::MaintenanceOp;
using Maintenance::Unit::MaintenanceStageClasses;
using Maintenance::Unit::MaintenanceStageList;
using Maintenance::Unit::StageMgrInstKey;
using Maintenance::Unit::State;
using Maintenance::Unit::TrafficRates;
using Maintenance::Unit::UnitType;
using Vexil::IntfId;
using Zel::String8;

using Random = std::mt19937_64;

/// Reads the whole text.
template <class V>
V read(const std::string& text) {
  return Zel::strepToValue<V>(String8(text));
}

/// The message of the `RangeException` with which the text is refused.
template <class V>
std::string refusal(const std::string& text) {
  return Support::rangeFailure([&] { read<V>(text); });
}

/// The text of a value of type `V` with these attributes.
template <class V>
std::string framed(const std::string& attributes) {
  return "Value('" + std::string(V::zelTypeName) + "', ** {" + attributes + "})";
}

template <class V>
std::string print(const V& value) {
  using Zel::valueToStrep;
  return std::string(valueToStrep(value).view());
}

/// What the type's inserter writes.
template <class V>
std::string written(const V& value) {
  std::ostringstream out;
  out.width(200);
  out.fill('*');
  out << value;
  return out.str();
}

inline String8 randomString(Random& random) {
  constexpr std::string_view hard("'\"\\\0\n\t\r{},:)(x%/# ", 19);
  std::string text(random() % 40, '\0');
  for (char& byte : text) {
    byte = random() % 2 == 0 ? hard[random() % hard.size()] : static_cast<char>(random());
  }
  return String8(text);
}

inline unsigned long long randomNumber(Random& random) {
  constexpr unsigned long long edges[] = {0,          1,           0x7fffffff,         0x80000000,
                                          0xffffffff, 0x100000000, 0x7fffffffffffffff, 1ULL << 63U,
                                          ~0ULL};
  return random() % 2 == 0 ? edges[random() % std::size(edges)] : random() >> random() % 64;
}

/// Any bits, not a number included.
inline double randomDouble(Random& random) { return std::bit_cast<double>(random()); }

/// An enumerator; of other types see the specialisations.
template <class V>
V randomValue(Random& random) {
  const auto& rows = Zel::enumTableOf<V>.rows;
  return static_cast<V>(rows[random() % rows.size()].number);
}

template <>
inline ProfileKey randomValue<ProfileKey>(Random& random) {
  return {randomValue<ProfileType>(random), randomString(random)};
}

template <>
inline GroupKey randomValue<GroupKey>(Random& random) {
  return {randomValue<GroupType>(random), randomString(random)};
}

template <>
inline TrafficRates randomValue<TrafficRates>(Random& random) {
  TrafficRates rates;
  rates.outBitsRateIs(randomNumber(random));
  rates.inBitsRateIs(randomNumber(random));
  rates.statsUpdateTimeIs(randomDouble(random));
  return rates;
}

template <>
inline StageMgrInstKey randomValue<StageMgrInstKey>(Random& random) {
  StageMgrInstKey key;
  key.unitNameIs(randomString(random));
  key.genIdIs(static_cast<unsigned>(randomNumber(random)));
  return key;
}

template <>
inline GroupProfileSelKey randomValue<GroupProfileSelKey>(Random& random) {
  return {randomValue<GroupType>(random), static_cast<unsigned>(randomNumber(random))};
}

template <>
inline UnitProfileSelKey randomValue<UnitProfileSelKey>(Random& random) {
  return {randomString(random), randomValue<ProfileChangeCause>(random)};
}

template <>
inline OnBootUnitAndReason randomValue<OnBootUnitAndReason>(Random& random) {
  return {randomString(random), randomValue<InputSrc>(random)};
}

template <>
inline IntfId randomValue<IntfId>(Random& random) {
  return {static_cast<std::uint32_t>(random()), static_cast<std::uint32_t>(random())};
}

} // namespace TestText
