#include "Run.h"

#include <Failure.h>
#include <Ranges.h>

#include <foreign/model/Values.h>
#include <model/Unit.h>

namespace Maintctl::Test {

namespace {

constexpr const char* unit = "add /status/System\n";

std::string setRefused(const std::string& attribute, const std::string& value) {
  return refusedLine(4, unit, "set /status/System/" + attribute + " " + value);
}

TEST(Range, OfAnIntegerIsHeldTo) {
  const std::string genId = "/status/status/System/genId";
  EXPECT_EQ(setRefused("genId", "4294967296"),
            "bad value 4294967296 for " + genId + ": it is from 0 to 4294967295\n");
  EXPECT_EQ(setRefused("genId", "-1"),
            "bad value -1 for " + genId + ": it is from 0 to 4294967295\n");
  EXPECT_EQ(setRefused("genId", "99999999999999999999"),
            "bad value 99999999999999999999 for " + genId + ": it is from 0 to 4294967295\n");
  EXPECT_EQ(printed(std::string(unit) + "set /status/System/genId 4294967295\n"
                                        "get /status/System/genId\n"
                                        "set /status/System/genId -0\nget /status/System/genId\n"),
            "4294967295\n0\n");
}

TEST(Range, OfAMemberOfAValueIsHeldToInBothForms) {
  const std::string rates = "/status/status/System/aggTrafficRate: ";
  EXPECT_EQ(setRefused("aggTrafficRate", "18446744073709551616,2,0"),
            "bad value 18446744073709551616,2,0 for " + rates +
                "outBitsRate is from 0 to 18446744073709551615\n");
  EXPECT_EQ(setRefused("aggTrafficRate", "1,-2,0"),
            "bad value 1,-2,0 for " + rates + "inBitsRate is from 0 to 18446744073709551615\n");
  EXPECT_EQ(setRefused("aggTrafficRate", "Value('Maintenance::Unit::TrafficRates', ** "
                                         "{'statsUpdateTime': 1.5, 'inBitsRate': -1})"),
            "bad value 'Value(\\'Maintenance::Unit::TrafficRates\\', ** {\\'statsUpdateTim'... "
            "for " +
                rates + "inBitsRate is from 0 to 18446744073709551615\n");
  EXPECT_EQ(printed(std::string(unit) +
                    "set /status/System/aggTrafficRate 18446744073709551615,0,-1.5\n"
                    "get /status/System/aggTrafficRate\n"),
            "Value('Maintenance::Unit::TrafficRates', ** {'outBitsRate': 18446744073709551615, "
            "'inBitsRate': 0, 'statsUpdateTime': -1.5})\n");
}

TEST(Range, IsHeldToWhereverANumberIsTyped) {
  const Folder folder;
  const std::string file =
      folder.write("tree", "/status/System\n/status/System/historySize 4294967308\n");
  EXPECT_EQ(refusal(4, "load '" + file + "'"),
            "maintctl: " + file +
                ":2: bad value 4294967308 for /status/status/System/historySize: it is from 0 to "
                "4294967295; 1 line before it was loaded\n");
  EXPECT_EQ(refusedLine(4, unit, "wait /status/System/genId -1"),
            "bad value -1 for /status/status/System/genId: it is from 0 to 4294967295\n");
}

/// What is said of a text, empty if nothing.
template <class V>
std::string said(const std::string& text, bool isSegment) {
  try {
    refuseOutOfRange(text, isSegment, Zel::valueRecord<V>, "x");
  } catch (const Failure& failure) {
    EXPECT_EQ(failure.code(), exitBadValue);
    return failure.what();
  }
  return "";
}

TEST(Range, OfAKeyIsHeldToWithItsEscapes) {
  EXPECT_EQ(said<unsigned>("429496729%36", true),
            "bad value 429496729%36 for x: it is from 0 to 4294967295");
  EXPECT_EQ(said<unsigned>("429496729%35", true), "");
  EXPECT_EQ(said<Maintenance::Unit::StageMgrInstKey>("a%2Cb,4294967296", true),
            "bad value a%2Cb,4294967296 for x: genId is from 0 to 4294967295");
  EXPECT_EQ(said<Maintenance::Unit::StageMgrInstKey>("4294967296,1", true), "");
  EXPECT_EQ(
      said<Foreign::SlotCode>("Value ( 'Foreign::SlotCode' , ** { 'shelf' : -3 , "
                              "'aisle' : 'a' } )",
                              false),
      "bad value 'Value ( \\'Foreign::SlotCode\\' , ** { \\'shelf\\' : -3 , \\'aisle\\' : '... for "
      "x: shelf is from 0 to 4294967295");
}

TEST(Range, IsNotAskedOfWhatIsNoNumber) {
  for (const char* const text : {"", "-", "x", "1x", " ", "%", "Value(", "1,2,3,4,5"}) {
    for (const bool isSegment : {false, true}) {
      EXPECT_EQ(said<unsigned>(text, isSegment), "") << text;
      EXPECT_EQ(said<Maintenance::Unit::TrafficRates>(text, isSegment), "") << text;
    }
  }
  EXPECT_EQ(said<double>("-1e300", false), "");
  EXPECT_EQ(said<Zel::String8>("-1", true), "");
}

TEST(Key, ThatIsEmptyIsRefused) {
  EXPECT_EQ(refusal(4, "add /status/"),
            "maintctl: an empty key for /status/status/: name what is to be made\n");
  EXPECT_EQ(refusal(4, "add /status/status/"),
            "maintctl: an empty key for /status/status/: name what is to be made\n");
  EXPECT_EQ(refusal(4, "add /cliInput/unit/"),
            "maintctl: an empty key for /cliInput/unit/: name what is to be made\n");
  const Folder folder;
  const std::string file = folder.write("tree", "/status/status/\n");
  EXPECT_EQ(refusal(4, "load '" + file + "'"),
            "maintctl: " + file +
                ":1: an empty key for /status/status/: name what is to be made; nothing was "
                "loaded\n");
}

TEST(Key, ThatIsNoNumberIsRefused) {
  EXPECT_EQ(refusedLine(4, unit, "add /status/System/history/nan x"),
            "nan is no key for /status/status/System/history/nan: it equals nothing, so nobody "
            "would find it\n");
  EXPECT_EQ(printed(std::string(unit) + "add /status/System/history/-inf x\n"
                                        "get /status/System/history\n"),
            "-inf = 'x'\n");
}

TEST(Key, AboveTheWiresLimitIsRefusedWithTheLimit) {
  const Folder folder;
  const std::string most(16000, 'a');
  const std::string member =
      folder.write("member", "/status/" + most + "\n/status/" + most + "a\n");
  EXPECT_EQ(refusal(4, "load '" + member + "'"),
            "maintctl: " + member +
                ":2: a string of 16001 bytes for "
                "/status/status/aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaa...: a name, or a "
                "part of a value, has at most 16000; 1 line before it was loaded\n");
  const std::string start = "add /status/System\nadd /status/System/group/groupTypeBgp,";
  EXPECT_EQ(commands(start + most + "\n").status, 0);
  EXPECT_EQ(commands(start + most + "a\n").status, 4);
  EXPECT_EQ(commands("add /status/" + most + "a\n").status, 4);
}

TEST(Value, OfWhichAPartIsAboveTheWiresLimitIsRefused) {
  const std::string most(16000, 'a');
  EXPECT_EQ(commands("add /units/a\nset /units/a/profileName " + most + most + "\n").status, 0);
  const Foreign::SkuKey whole(Foreign::ambient, Zel::String8(most));
  const Foreign::SkuKey tooMuch(Foreign::ambient, Zel::String8(most + "a"));
  refuseTooLong(Zel::valueRecord<Foreign::SkuKey>, &whole, "x");
  EXPECT_THROW(refuseTooLong(Zel::valueRecord<Foreign::SkuKey>, &tooMuch, "x"), Failure);
}

} // namespace

} // namespace Maintctl::Test
