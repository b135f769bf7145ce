#include "Texts.h"

#include <limits>

namespace {

using namespace TestText;
using namespace Maintenance::Profile;
using namespace Maintenance::Unit;

const std::string profile =
    "Value('Maintenance::Profile::ProfileKey', ** {'type': 'profileTypeBgp', 'name': 'drain'})";

TrafficRates rates(unsigned long long out, unsigned long long in, double time) {
  TrafficRates result;
  result.outBitsRateIs(out);
  result.inBitsRateIs(in);
  result.statsUpdateTimeIs(time);
  return result;
}

StageMgrInstKey instance(const char* unit, unsigned genId) {
  StageMgrInstKey key;
  key.unitNameIs(unit);
  key.genIdIs(genId);
  return key;
}

TEST(ValueText, OfAProfileKeyHasTypeAndName) {
  EXPECT_EQ(print(ProfileKey(profileTypeBgp, "drain")), profile);
  EXPECT_EQ(print(ProfileKey(profileTypeUnit, "it's")),
            "Value('Maintenance::Profile::ProfileKey', ** {'type': 'profileTypeUnit', "
            "'name': 'it\\'s'})");
}

TEST(ValueText, OfAProfileKeyWithAnEmptyNameStillHasTheName) {
  EXPECT_EQ(print(ProfileKey()), "Value('Maintenance::Profile::ProfileKey', ** {'type': "
                                 "'profileTypeNone', 'name': ''})");
}

TEST(ValueText, OfANumberThatIsNoEnumeratorIsTheFallback) {
  EXPECT_EQ(print(ProfileKey(static_cast<ProfileType>(9), "")),
            "Value('Maintenance::Profile::ProfileKey', ** {'type': 'ProfileType(9)', "
            "'name': ''})");
}

TEST(ValueText, OfADefaultTrafficRatesHasAllThreeAttributes) {
  EXPECT_EQ(print(TrafficRates()), "Value('Maintenance::Unit::TrafficRates', ** {'outBitsRate': "
                                   "0, 'inBitsRate': 0, 'statsUpdateTime': 0})");
}

TEST(ValueText, OfTrafficRatesHasNumbersBare) {
  EXPECT_EQ(print(rates(~0ULL, 1ULL << 63, 1.5)),
            "Value('Maintenance::Unit::TrafficRates', ** {'outBitsRate': 18446744073709551615, "
            "'inBitsRate': 9223372036854775808, 'statsUpdateTime': 1.5})");
}

TEST(ValueText, OfAStageMgrInstKeyLeavesTheInstanceNameOut) {
  EXPECT_EQ(print(instance("System", 4294967295)),
            "Value('Maintenance::Unit::StageMgrInstKey', ** {'unitName': 'System', "
            "'genId': 4294967295})");
}

TEST(ValueText, OfAGroupKeyHasTypeAndName) {
  EXPECT_EQ(print(GroupKey(Group::groupTypeInterface, "uplinks")),
            "Value('Group::GroupKey', ** {'type': 'groupTypeInterface', 'name': 'uplinks'})");
}

TEST(ValueText, OnAStreamIsTheSameBytesWhateverWidthAndFill) {
  EXPECT_EQ(written(ProfileKey(profileTypeBgp, "drain")), profile);
  EXPECT_EQ(written(rates(1, 2, 3)), print(rates(1, 2, 3)));
  EXPECT_EQ(written(instance("a\xff", 1)), print(instance("a\xff", 1)));
  EXPECT_EQ(written(GroupKey(Group::groupTypeBgp, "a")), print(GroupKey(Group::groupTypeBgp, "a")));
}

template <class V>
class ConstantText : public testing::Test {};
using Constants = testing::Types<BuiltinUnitName, MaintenanceStageClasses, MaintenanceStageList>;
TYPED_TEST_SUITE(ConstantText, Constants);

TYPED_TEST(ConstantText, IsEmptyAndDoesNotReadBack) {
  EXPECT_EQ(print(TypeParam()), "");
  EXPECT_EQ(written(TypeParam()), "");
  EXPECT_EQ(refusal<TypeParam>(""), "expected \" Value\" at column 0");
}

TYPED_TEST(ConstantText, IsReadFromAnEmptyFrame) {
  EXPECT_TRUE(read<TypeParam>(framed<TypeParam>("")) == TypeParam());
  EXPECT_TRUE(read<TypeParam>(framed<TypeParam>(" \n")) == TypeParam());
}

TYPED_TEST(ConstantText, HasNoAttribute) {
  const std::string name = std::string(Zel::valueName<TypeParam>()).substr(19);
  EXPECT_EQ("Maintenance::Unit::" + name, Zel::valueName<TypeParam>());
  for (const char* const attribute :
       {"system", "maintEnterClass", "bgpStage", "rateMonStage", "linecard", ""}) {
    EXPECT_EQ(refusal<TypeParam>(framed<TypeParam>(std::string("'") + attribute + "': 'x'")),
              name + " has no such attribute: " + attribute);
  }
  EXPECT_EQ(refusal<TypeParam>(framed<TypeParam>("").substr(0, framed<TypeParam>("").size() - 2)),
            "premature end of value type " + name);
}

TEST(ValueReading, TakesWhatIsWritten) {
  EXPECT_TRUE(read<ProfileKey>(profile) == ProfileKey(profileTypeBgp, "drain"));
  for (const TrafficRates& value : {TrafficRates(), rates(~0ULL, 1ULL << 63, -0.5),
                                    rates(1, 2, std::numeric_limits<double>::infinity())}) {
    EXPECT_TRUE(read<TrafficRates>(print(value)) == value) << value;
  }
  for (const StageMgrInstKey& value : {StageMgrInstKey(), instance("a#b", 0xffffffff)}) {
    EXPECT_TRUE(read<StageMgrInstKey>(print(value)) == value) << value;
  }
}

TEST(ValueReading, TakesTheAttributesInAnyOrder) {
  EXPECT_TRUE(read<ProfileKey>(framed<ProfileKey>("'name': 'a', 'type': 'profileTypeUnit'")) ==
              ProfileKey(profileTypeUnit, "a"));
  EXPECT_TRUE(read<TrafficRates>(framed<TrafficRates>(
                  "'statsUpdateTime': 3, 'inBitsRate': 2, 'outBitsRate': 1")) == rates(1, 2, 3));
  EXPECT_TRUE(read<StageMgrInstKey>(framed<StageMgrInstKey>("'genId': 7, 'unitName': 'u'")) ==
              instance("u", 7));
}

TEST(ValueReading, TakesTheLastOfAnAttributeThatComesTwice) {
  EXPECT_TRUE(read<ProfileKey>(framed<ProfileKey>("'name': 'a', 'type': 'profileTypeBgp', 'name': "
                                                  "'b', 'type': 'profileTypeUnit'")) ==
              ProfileKey(profileTypeUnit, "b"));
  EXPECT_TRUE(read<TrafficRates>(framed<TrafficRates>("'inBitsRate': 1, 'inBitsRate': 2")) ==
              rates(0, 2, 0));
  EXPECT_TRUE(read<StageMgrInstKey>(framed<StageMgrInstKey>("'genId': 1, 'genId': 2")) ==
              instance("", 2));
}

TEST(ValueReading, KeepsTheDefaultOfAMissingAttribute) {
  EXPECT_TRUE(read<ProfileKey>(framed<ProfileKey>("")) == ProfileKey());
  EXPECT_TRUE(read<ProfileKey>(framed<ProfileKey>("'type': 'profileTypeBgp'")) ==
              ProfileKey(profileTypeBgp, ""));
  EXPECT_TRUE(read<ProfileKey>(framed<ProfileKey>("'name': 'a'")) ==
              ProfileKey(profileTypeNone, "a"));
  EXPECT_TRUE(read<TrafficRates>(framed<TrafficRates>("")) == TrafficRates());
  EXPECT_TRUE(read<TrafficRates>(framed<TrafficRates>("'inBitsRate': 2")) == rates(0, 2, 0));
  EXPECT_TRUE(read<StageMgrInstKey>(framed<StageMgrInstKey>("")) == StageMgrInstKey());
}

TEST(ValueReading, DropsTheInstanceNameOfAStageMgrInstKey) {
  EXPECT_TRUE(read<StageMgrInstKey>(framed<StageMgrInstKey>("'instanceName': 'System#3'")) ==
              instance("", 0));
  EXPECT_TRUE(read<StageMgrInstKey>(framed<StageMgrInstKey>(
                  "'unitName': 'u', 'instanceName': 'System#3', 'genId': 1")) == instance("u", 1));
  EXPECT_TRUE(read<StageMgrInstKey>(framed<StageMgrInstKey>("'instanceName': 'no mark'")) ==
              StageMgrInstKey());
}

TEST(ValueReading, TakesNoInstanceNameThatIsBadlyFormed) {
  EXPECT_EQ(refusal<StageMgrInstKey>(framed<StageMgrInstKey>("'instanceName': System")),
            "instanceName: expected a quoted text at column 64");
}

TEST(ValueReading, KeepsTheLow32BitsOfA32BitAttribute) {
  const auto genId = [](const std::string& text) {
    return read<StageMgrInstKey>(framed<StageMgrInstKey>("'genId': " + text)).genId();
  };
  EXPECT_EQ(genId("4294967297"), 1U);
  EXPECT_EQ(genId("-1"), 0xffffffffU);
  EXPECT_EQ(genId("18446744073709551615"), 0xffffffffU);
  EXPECT_EQ(genId("-9223372036854775808"), 0U);
}

TEST(ValueReading, KeepsAll64BitsOfA64BitAttribute) {
  const auto rate = [](const std::string& text) {
    return read<TrafficRates>(framed<TrafficRates>("'outBitsRate': " + text)).outBitsRate();
  };
  EXPECT_EQ(rate("18446744073709551615"), ~0ULL);
  EXPECT_EQ(rate("-1"), ~0ULL);
}

TEST(ValueReading, TakesWhiteSpaceAroundEveryToken) {
  EXPECT_TRUE(read<ProfileKey>("\n Value\t( 'Maintenance::Profile::ProfileKey'\v, **\f{\r'type'\n:"
                               "\t'profileTypeBgp' ,  'name':'drain' } ) \n") ==
              ProfileKey(profileTypeBgp, "drain"));
  EXPECT_TRUE(read<ProfileKey>("Value('Maintenance::Profile::ProfileKey',**{'type':'profileTypeBgp"
                               "','name':'drain'})") == ProfileKey(profileTypeBgp, "drain"));
}

TEST(ValueReading, RefusesAnUnknownAttribute) {
  EXPECT_EQ(refusal<ProfileKey>(framed<ProfileKey>("'hash': 1")),
            "ProfileKey has no such attribute: hash");
  EXPECT_EQ(refusal<TrafficRates>(framed<TrafficRates>("'outbitsrate': 1")),
            "TrafficRates has no such attribute: outbitsrate");
  EXPECT_EQ(refusal<StageMgrInstKey>(framed<StageMgrInstKey>("'unitName': 'a', '': 1")),
            "StageMgrInstKey has no such attribute: ");
  EXPECT_EQ(refusal<GroupKey>(framed<GroupKey>("'hash': 1")),
            "GroupKey has no such attribute: hash");
  EXPECT_EQ(refusal<ProfileKey>(framed<ProfileKey>("'a\\x00b': 1")),
            std::string("ProfileKey has no such attribute: a\0b", 37));
}

TEST(ValueReading, BringsTheNameOfTheAttributeIntoAFailureOfItsValue) {
  EXPECT_EQ(refusal<ProfileKey>(framed<ProfileKey>("'type': 'bgp'")), "type: ProfileType");
  EXPECT_EQ(refusal<ProfileKey>(framed<ProfileKey>("'type': 'ProfileType(9)'")),
            "type: ProfileType");
  EXPECT_EQ(refusal<ProfileKey>(framed<ProfileKey>("'name': 5")),
            "name: expected a quoted text at column 54");
  EXPECT_EQ(refusal<TrafficRates>(framed<TrafficRates>("'inBitsRate': 18446744073709551616")),
            "inBitsRate: number out of range at column 59");
  EXPECT_EQ(refusal<TrafficRates>(framed<TrafficRates>("'outBitsRate': 'x'")),
            "outBitsRate: expected an integer at column 60");
  EXPECT_EQ(refusal<TrafficRates>(framed<TrafficRates>("'statsUpdateTime': 1e999")),
            "statsUpdateTime: number out of range at column 64");
  EXPECT_EQ(refusal<StageMgrInstKey>(framed<StageMgrInstKey>("'unitName': null")),
            "unitName: expected a quoted text at column 60");
  EXPECT_EQ(refusal<StageMgrInstKey>(framed<StageMgrInstKey>("'genId': ")),
            "genId: expected an integer at column 57");
  EXPECT_EQ(refusal<GroupKey>(framed<GroupKey>("'type': 'GroupType(3)'")), "type: GroupType");
}

TEST(ValueReading, LeavesFailuresOfNamesAndPunctuationAsTheyAre) {
  EXPECT_EQ(refusal<ProfileKey>(framed<ProfileKey>("name: 'a'")),
            "expected a quoted text at column 46");
  EXPECT_EQ(refusal<ProfileKey>(framed<ProfileKey>("'name' 'a'")), "expected \" : \" at column 53");
}

TEST(ValueReading, RefusesACommaTooManyAndOneTooFew) {
  EXPECT_EQ(refusal<ProfileKey>(framed<ProfileKey>(", 'name': 'a'")),
            "expected a quoted text at column 46");
  EXPECT_EQ(refusal<ProfileKey>(framed<ProfileKey>("'name': 'a',")),
            "expected a quoted text at column 58");
  EXPECT_EQ(refusal<ProfileKey>(framed<ProfileKey>("'name': 'a' 'name': 'b'")),
            "expected \", \" at column 58");
}

TEST(ValueReading, RefusesAFrameThatIsNotWhole) {
  EXPECT_EQ(refusal<ProfileKey>(""), "expected \" Value\" at column 0");
  EXPECT_EQ(refusal<ProfileKey>("Value"), "expected \" (\" at column 5");
  EXPECT_EQ(refusal<ProfileKey>("Value("),
            "expected \" 'Maintenance::Profile::ProfileKey'\" at column 6");
  EXPECT_EQ(refusal<ProfileKey>(profile.substr(0, 40)), "expected \" ,\" at column 40");
  EXPECT_EQ(refusal<ProfileKey>(profile.substr(0, 43)), "expected \" **\" at column 43");
  EXPECT_EQ(refusal<ProfileKey>(profile.substr(0, 44)), "expected \" {\" at column 44");
  EXPECT_EQ(refusal<ProfileKey>(profile.substr(0, 46)), "premature end of value type ProfileKey");
  EXPECT_EQ(refusal<ProfileKey>(profile.substr(0, profile.size() - 1)),
            "expected \") \" at column " + std::to_string(profile.size() - 1));
  EXPECT_EQ(refusal<TrafficRates>(framed<TrafficRates>("").substr(0, 45)),
            "premature end of value type TrafficRates");
  EXPECT_EQ(refusal<StageMgrInstKey>("Value('Maintenance::Unit::StageMgrInstKey', ** {  "),
            "premature end of value type StageMgrInstKey");
}

TEST(ValueReading, RefusesTheFrameOfAnotherType) {
  EXPECT_EQ(refusal<GroupKey>(profile), "expected \" 'Group::GroupKey'\" at column 7");
  EXPECT_EQ(refusal<BuiltinUnitName>(framed<MaintenanceStageList>("")),
            "expected \" 'Maintenance::Unit::BuiltinUnitName'\" at column 26");
}

TEST(ValueReading, RefusesWhatFollowsTheValueAndSaysWhere) {
  const std::string column = std::to_string(profile.size());
  EXPECT_EQ(refusal<ProfileKey>(profile + "x"),
            "junk at column " + column + " deserializing " + profile + "x");
  const std::string empty = framed<BuiltinUnitName>("");
  EXPECT_EQ(refusal<BuiltinUnitName>(empty + " x"), "junk at column " +
                                                        std::to_string(empty.size() + 1) +
                                                        " deserializing " + empty + " x");
}

TEST(ValueReading, LeavesThePositionBehindTheValueOrWhereItFailed) {
  const String8 text(profile + " " + framed<ProfileKey>("'name': 5"));
  String8::IteratorConst first(text);
  const String8::IteratorConst last(text, static_cast<int>(text.length()));
  EXPECT_TRUE(ProfileKey(first, last) == ProfileKey(profileTypeBgp, "drain"));
  EXPECT_EQ(first.position(), static_cast<int>(profile.size()) + 1);
  Support::rangeFailure([&] { ProfileKey(first, last); });
  EXPECT_EQ(first.position(), static_cast<int>(profile.size()) + 1 + 54);
}

} // namespace
