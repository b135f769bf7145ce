#include "LocalValues.h"

#include "Texts.h"

namespace TestText {

namespace {

constexpr Zel::AttrRow mixedRows[] = {
    Zel::Rows<Mixed>::key<&Mixed::name>(2, "name"),
    Zel::Rows<Mixed>::computedMember<&Mixed::label, &Mixed::labelIs>(3, "label"),
    Zel::Rows<Mixed>::valueMember<&Mixed::number, &Mixed::numberIs>(4, "number"),
    Zel::Rows<Mixed>::key<&Mixed::profile>(5, "profile"),
    Zel::Rows<Mixed>::valueMember<&Mixed::rates, &Mixed::ratesIs>(6, "rates"),
    Zel::Rows<Mixed>::computed<&Mixed::isOdd>(7, "isOdd"),
    Zel::Rows<Mixed>::valueMember<&Mixed::isFinal, &Mixed::isFinalIs>(8, "isFinal"),
};
static_assert(Zel::rowsAreInOrder(mixedRows, Zel::firstValueAttributeId));

constexpr Zel::TypeTable mixedTable = Zel::tableOf<Mixed, String8, String8, ProfileKey>(mixedRows);

constexpr Zel::AttrRow wideRows[] = {
    Zel::Rows<Wide>::key<&Wide::number<0>>(2, "a"), Zel::Rows<Wide>::key<&Wide::number<1>>(3, "b"),
    Zel::Rows<Wide>::key<&Wide::number<2>>(4, "c"), Zel::Rows<Wide>::key<&Wide::number<3>>(5, "d"),
    Zel::Rows<Wide>::key<&Wide::number<4>>(6, "e"), Zel::Rows<Wide>::key<&Wide::number<5>>(7, "f"),
    Zel::Rows<Wide>::key<&Wide::number<6>>(8, "g"), Zel::Rows<Wide>::key<&Wide::number<7>>(9, "h"),
    Zel::Rows<Wide>::key<&Wide::i>(10, "i"),
};
static_assert(Zel::rowsAreInOrder(wideRows, Zel::firstValueAttributeId));

constexpr Zel::TypeTable wideTable =
    Zel::tableOf<Wide, unsigned, unsigned, unsigned, unsigned, unsigned, unsigned, unsigned,
                 unsigned, String8>(wideRows);

} // namespace

const Zel::TypeTable& Mixed::zelTable() { return mixedTable; }
const Zel::TypeTable& Wide::zelTable() { return wideTable; }

} // namespace TestText

namespace {

using namespace TestText;
using namespace Maintenance::Profile;

Mixed mixed(const char* name, unsigned number, const ProfileKey& profile, bool isFinal) {
  Mixed value(name, "", profile);
  value.numberIs(number);
  value.isFinalIs(isFinal);
  return value;
}

const std::string profileText =
    "Value('Maintenance::Profile::ProfileKey', ** {'type': 'profileTypeBgp', 'name': 'p'})";
const ProfileKey profile(profileTypeBgp, "p");

TEST(LocalValueText, HoldsOtherValuesAndNothingDerived) {
  EXPECT_EQ(print(mixed("n", 3, profile, false)),
            "Value('TestText::Mixed', ** {'name': 'n', 'number': 3, 'profile': " + profileText +
                ", 'rates': Value('Maintenance::Unit::TrafficRates', ** {'outBitsRate': 0, "
                "'inBitsRate': 0, 'statsUpdateTime': 0}), 'isFinal': false})");
}

TEST(LocalValueText, ReadsBack) {
  const Mixed value = mixed("n", 3, profile, false);
  EXPECT_TRUE(read<Mixed>(print(value)) == value);
  EXPECT_TRUE(read<Mixed>(print(Mixed())) == Mixed());
}

TEST(LocalValueText, KeepsMembersReadBeforeAndBehindTheArguments) {
  EXPECT_TRUE(read<Mixed>(framed<Mixed>("'number': 3, 'profile': " + profileText +
                                        ", 'isFinal': false, 'name': 'n'")) ==
              mixed("n", 3, profile, false));
}

TEST(LocalValueText, KeepsTheDefaultsOfTheTypeNotOfItsAttributes) {
  EXPECT_TRUE(read<Mixed>(framed<Mixed>("")) == Mixed());
  EXPECT_TRUE(read<Mixed>(framed<Mixed>("'name': 'n'")) ==
              mixed("n", 7, ProfileKey(profileTypeUnit, "default"), true));
  EXPECT_TRUE(read<Mixed>(framed<Mixed>("'profile': " + framed<ProfileKey>("'name': 'p'"))) ==
              mixed("nobody", 7, ProfileKey(profileTypeNone, "p"), true));
}

TEST(LocalValueText, DropsADerivedArgument) {
  EXPECT_TRUE(read<Mixed>(framed<Mixed>("'label': 'x', 'name': 'n', 'label': 'y'")) ==
              mixed("n", 7, ProfileKey(profileTypeUnit, "default"), true));
  EXPECT_EQ(refusal<Mixed>(framed<Mixed>("'isOdd': true")), "Mixed has no such attribute: isOdd");
}

TEST(LocalValueText, FailsWithTheNamesOfAllAttributesOnTheWay) {
  EXPECT_EQ(refusal<Mixed>(framed<Mixed>("'profile': " + framed<ProfileKey>("'type': 'x'"))),
            "profile: type: ProfileType");
  EXPECT_EQ(refusal<Mixed>(framed<Mixed>("'number': 13")), "number: 13 is refused");
}

TEST(LocalValueText, OfATypeWithManyArgumentsReadsBack) {
  const Wide value(9, 8, 7, 6, 5, 4, 3, 2, "one");
  EXPECT_TRUE(read<Wide>(print(value)) == value);
  EXPECT_TRUE(read<Wide>(framed<Wide>("'h': 0, 'b': 0")) == Wide(1, 0, 3, 4, 5, 6, 7, 0, "nine"));
  EXPECT_EQ(refusal<Wide>(framed<Wide>("'j': 0")), "Wide has no such attribute: j");
}

TEST(LocalValueText, ReplacesAValueAsAWholeOrNotAtAll) {
  Mixed value = mixed("n", 3, profile, false);
  const auto readOver = [&value](const std::string& bytes) {
    const String8 text(bytes);
    String8::IteratorConst first(text);
    const String8::IteratorConst last(text, static_cast<int>(text.length()));
    Zel::TextReader in(first, last);
    Zel::readValue(in, Zel::valueRecord<Mixed>, &value);
  };
  EXPECT_EQ(Support::rangeFailure([&] { readOver(framed<Mixed>("'number': 4, 'name': 5")); }),
            "name: expected a quoted text at column 50");
  EXPECT_TRUE(value == mixed("n", 3, profile, false));
  readOver(framed<Mixed>("'number': 4"));
  EXPECT_TRUE(value == mixed("nobody", 4, ProfileKey(profileTypeUnit, "default"), true));
}

} // namespace
