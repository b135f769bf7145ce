#include <foreign/model/Rack.h>

#include <Zel/Text>

#include <support/EnumerationCheck.h>
#include <support/Failure.h>

#include <gtest/gtest.h>

#include <iomanip>
#include <limits>
#include <sstream>

namespace Foreign {

namespace {

using Support::rangeFailure;
using Zel::strepToValue;

template <class V>
std::string streamed(const V& value) {
  std::ostringstream out;
  out << std::setw(200) << std::setfill('*') << value;
  return out.str();
}

template <class V>
void expectText(const V& value, const std::string& text) {
  EXPECT_EQ(valueToStrep(value).view(), text);
  EXPECT_EQ(streamed(value), text);
  EXPECT_EQ(strepToValue<V>(Zel::String8(text)), value);
}

TEST(ForeignText, OfValuesIsWhatTheirTablesTell) {
  expectText(SkuKey(frozen, "peas"),
             "Value('Foreign::SkuKey', ** {'zone': 'frozen', 'sku': 'peas'})");
  expectText(Dimensions(7, true, 2.5, hazardous),
             "Value('Foreign::Dimensions', ** {'width': 7, 'fragile': true, 'weight': 2.5, 'zone': "
             "'hazardous'})");
  expectText(SlotCode("B:17"), "Value('Foreign::SlotCode', ** {'aisle': 'B', 'shelf': 17})");
  expectText(Alarm("it's", express),
             R"(Value('Foreign::Alarm', ** {'sensor': 'it\'s', 'urgency': 'express'}))");
  expectText(TourKey(chilled, std::numeric_limits<unsigned>::max()),
             "Value('Foreign::TourKey', ** {'zone': 'chilled', 'round': 4294967295})");
}

TEST(ForeignText, OfConstantsIsEmptyAndReadFromAnEmptyFrame) {
  EXPECT_EQ(valueToStrep(Limits()), "");
  EXPECT_EQ(streamed(Limits()), "");
  EXPECT_EQ(strepToValue<Limits>(" Value ( 'Foreign::Limits' , ** { } ) "), Limits());
  EXPECT_NE(rangeFailure([] { strepToValue<Limits>(""); }), "");
  EXPECT_EQ(
      rangeFailure([] { strepToValue<Limits>("Value('Foreign::Limits', ** {'maxShelf': 1})"); }),
      "Limits has no such attribute: maxShelf");
}

TEST(ForeignText, OfAComputedArgumentIsReadAndDropped) {
  EXPECT_EQ(strepToValue<SlotCode>("Value('Foreign::SlotCode', ** {'code': 'no code at all'})"),
            SlotCode());
  EXPECT_EQ(
      strepToValue<SlotCode>("Value('Foreign::SlotCode', ** {'shelf': 3, 'code': 'B:1'})").shelf(),
      3U);
}

TEST(ForeignText, RefusesWhatIsWorkedOutAndNamesTheAttributeOfABadValue) {
  EXPECT_EQ(rangeFailure([] { strepToValue<SkuKey>("Value('Foreign::SkuKey', ** {'hash': 1})"); }),
            "SkuKey has no such attribute: hash");
  EXPECT_EQ(
      rangeFailure([] { strepToValue<SkuKey>("Value('Foreign::SkuKey', ** {'zone': 'warm'})"); }),
      "zone: Zone");
  EXPECT_EQ(rangeFailure([] { strepToValue<Zone>("'frozen'x"); }),
            "junk at column 8 deserializing 'frozen'x");
}

TEST(ForeignText, OfAnEnumerationWithAGapHasNoNumberInIt) {
  EXPECT_EQ(stringValue(hazardous), "hazardous");
  EXPECT_EQ(valueToStrep(hazardous), "'hazardous'");
  EXPECT_EQ(streamed(hazardous), "hazardous");
  EXPECT_EQ(ZoneInstance(9U), hazardous);
  EXPECT_EQ(ZoneInstance("hazardous"), hazardous);
  EXPECT_EQ(strepToValue<Zone>("'hazardous'"), hazardous);
  EXPECT_EQ(rangeFailure([] { ZoneInstance(3U); }), "Zone");
  EXPECT_EQ(stringValue(static_cast<Zone>(3)), "Zone(3)");
  EXPECT_EQ(rangeFailure([] { strepToValue<Zone>("'Zone(3)'"); }), "Zone");
}

TEST(ForeignText, OfAnEnumerationObeysTheRulesOfAll) {
  Support::checkEnumeration<Urgency>("Urgency", {"urgencyUnknown", "routine", "express"},
                                     UrgencyInstance, UrgencyInstance);
}

} // namespace

} // namespace Foreign
