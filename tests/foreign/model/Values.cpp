#include "Values.h"

#include <Zel/Exception>
#include <Zel/Format>
#include <Zel/Hash>

#include <charconv>

namespace Foreign {

namespace {

constexpr Zel::AttrRow skuKeyRows[] = {
    Zel::Rows<SkuKey>::key<&SkuKey::zone>(SkuKey::Attr::zone, "zone"),
    Zel::Rows<SkuKey>::key<&SkuKey::sku>(SkuKey::Attr::sku, "sku"),
    Zel::Rows<SkuKey>::computed<&SkuKey::hash>(SkuKey::Attr::hash, "hash"),
};
static_assert(Zel::rowsAreInOrder(skuKeyRows, Zel::firstValueAttributeId));
constexpr Zel::TypeTable skuKeyTable = Zel::tableOf<SkuKey, Zone, Zel::String8>(skuKeyRows);

constexpr Zel::AttrRow dimensionsRows[] = {
    Zel::Rows<Dimensions>::valueMember<&Dimensions::width, &Dimensions::widthIs>(
        Dimensions::Attr::width, "width"),
    Zel::Rows<Dimensions>::valueMember<&Dimensions::fragile, &Dimensions::fragileIs>(
        Dimensions::Attr::fragile, "fragile"),
    Zel::Rows<Dimensions>::valueMember<&Dimensions::weight, &Dimensions::weightIs>(
        Dimensions::Attr::weight, "weight"),
    Zel::Rows<Dimensions>::valueMember<&Dimensions::zone, &Dimensions::zoneIs>(
        Dimensions::Attr::zone, "zone"),
};
static_assert(Zel::rowsAreInOrder(dimensionsRows, Zel::firstValueAttributeId));
constexpr Zel::TypeTable dimensionsTable = Zel::tableOf<Dimensions>(dimensionsRows);

constexpr Zel::AttrRow slotCodeRows[] = {
    Zel::Rows<SlotCode>::computedMember<&SlotCode::code, &SlotCode::codeIs>(SlotCode::Attr::code,
                                                                            "code"),
    Zel::Rows<SlotCode>::valueMember<&SlotCode::aisle, &SlotCode::aisleIs>(SlotCode::Attr::aisle,
                                                                           "aisle"),
    Zel::Rows<SlotCode>::valueMember<&SlotCode::shelf, &SlotCode::shelfIs>(SlotCode::Attr::shelf,
                                                                           "shelf"),
};
static_assert(Zel::rowsAreInOrder(slotCodeRows, Zel::firstValueAttributeId));
constexpr Zel::TypeTable slotCodeTable = Zel::tableOf<SlotCode, Zel::String8>(slotCodeRows);

constexpr Zel::AttrRow alarmRows[] = {
    Zel::Rows<Alarm>::key<&Alarm::sensor>(Alarm::Attr::sensor, "sensor"),
    Zel::Rows<Alarm>::key<&Alarm::urgency>(Alarm::Attr::urgency, "urgency"),
};
static_assert(Zel::rowsAreInOrder(alarmRows, Zel::firstValueAttributeId));
constexpr Zel::TypeTable alarmTable = Zel::tableOf<Alarm, Zel::String8, Urgency>(alarmRows);

constexpr Zel::AttrRow tourKeyRows[] = {
    Zel::Rows<TourKey>::key<&TourKey::zone>(TourKey::Attr::zone, "zone"),
    Zel::Rows<TourKey>::key<&TourKey::round>(TourKey::Attr::round, "round"),
    Zel::Rows<TourKey>::computed<&TourKey::hash>(TourKey::Attr::hash, "hash", Zel::internal),
};
static_assert(Zel::rowsAreInOrder(tourKeyRows, Zel::firstValueAttributeId));
constexpr Zel::TypeTable tourKeyTable = Zel::tableOf<TourKey, Zone, unsigned>(tourKeyRows);

constexpr Zel::AttrRow limitsRows[] = {
    Zel::Rows<Limits>::constant<&Limits::maxShelf>(Limits::Attr::maxShelf, "maxShelf"),
    Zel::Rows<Limits>::constant<&Limits::homeAisle>(Limits::Attr::homeAisle, "homeAisle"),
};
static_assert(Zel::rowsAreInOrder(limitsRows, Zel::firstValueAttributeId));
constexpr Zel::TypeTable limitsTable = Zel::tableOf<Limits>(limitsRows);

} // namespace

const Zel::TypeTable& SkuKey::zelTable() { return skuKeyTable; }
const Zel::TypeTable& Dimensions::zelTable() { return dimensionsTable; }
const Zel::TypeTable& SlotCode::zelTable() { return slotCodeTable; }
const Zel::TypeTable& Alarm::zelTable() { return alarmTable; }
const Zel::TypeTable& TourKey::zelTable() { return tourKeyTable; }
const Zel::TypeTable& Limits::zelTable() { return limitsTable; }

unsigned SkuKey::hash() const noexcept {
  return Zel::oneAtATimeEnd(Zel::oneAtATimeStep(sku_.hash(), static_cast<unsigned>(zone_)));
}

unsigned TourKey::hash() const noexcept {
  const unsigned zone = Zel::oneAtATimeStep(0, static_cast<unsigned>(zone_));
  return Zel::oneAtATimeEnd(Zel::oneAtATimeStep(zone, round_));
}

Zel::String8 SlotCode::code() const { return aisle_ + Zel::format(":%u", shelf_); }

void SlotCode::codeIs(Zel::String8 code) {
  const std::string_view text = code.view();
  if (text.empty()) {
    return;
  }
  const std::size_t colon = text.find(':');
  unsigned shelf = 0;
  const char* const end = text.data() + text.size();
  const char* const digits = colon == text.npos ? end : text.data() + colon + 1;
  const auto number = std::from_chars(digits, end, shelf);
  if (number.ec != std::errc() || number.ptr != end) {
    Zel::throwRangeException("no shelf in slot code " + code);
  }
  aisle_ = Zel::String8(text.substr(0, colon));
  shelf_ = shelf;
}

} // namespace Foreign
