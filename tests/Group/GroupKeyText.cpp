#include "support/Failure.h"

#include <Group/GroupKey>
#include <Zel/Text>

#include <random>

namespace {

using namespace Group;
using Zel::String8;

GroupKey read(std::string const& text) { return Zel::strepToValue<GroupKey>(String8(text)); }

std::string refusal(std::string const& text) {
  return Support::rangeFailure([&] { read(text); });
}

/// A text with these attributes.
std::string framed(std::string const& attributes) {
  return "Value('Group::GroupKey', ** {" + attributes + "})";
}

const std::string whole = framed("'type': 'groupTypeBgp', 'name': 'peers'");
GroupKey const peers(groupTypeBgp, "peers");

void expectRoundTrip(GroupKey const& key) {
  String8 const text = valueToStrep(key);
  EXPECT_TRUE(Zel::strepToValue<GroupKey>(text) == key) << text;
}

TEST(GroupKeyText, IsWrittenInOneForm) {
  EXPECT_EQ(valueToStrep(peers), String8(whole));
  EXPECT_EQ(valueToStrep(GroupKey()), String8(framed("'type': 'groupTypeUnknown', 'name': ''")));
  EXPECT_EQ(valueToStrep(GroupKey(groupTypeInterface, "it's \\ \n\t\r\x01\x7f\x80")),
            String8(framed("'type': 'groupTypeInterface', "
                           "'name': 'it\\'s \\\\ \\n\\t\\r\\x01\\x7f\x80'")));
}

TEST(GroupKeyText, ReadsBackWithEveryByteInTheName) {
  std::string all;
  for (int byte = 0; byte < 256; ++byte) {
    SCOPED_TRACE(byte);
    char const character = static_cast<char>(byte);
    all += character;
    expectRoundTrip(GroupKey(groupTypeBgp, String8(std::string_view(&character, 1))));
  }
  expectRoundTrip(GroupKey(groupTypeInterface, String8(all)));
}

TEST(GroupKeyText, ReadsBackWithRandomNames) {
  for (unsigned seed = 0; seed < 500; ++seed) {
    SCOPED_TRACE(testing::Message() << "seed " << seed);
    std::mt19937_64 random(seed);
    std::string name(random() % 40, '\0');
    for (char& byte : name) {
      constexpr std::string_view hard("'\"\\\0\n{},:)x", 11);
      byte = random() % 2 == 0 ? hard[random() % hard.size()] : static_cast<char>(random());
    }
    expectRoundTrip(GroupKey(GroupTypeInstance(seed % 3), String8(name)));
  }
}

TEST(GroupKeyText, TakesWhiteSpaceAroundEveryToken) {
  std::vector<std::string> const tokens = {
      "Value",  "(", "'Group::GroupKey'", ",", "**", "{", "'type'", ":", "'groupTypeBgp'", ",",
      "'name'", ":", "'peers'",           "}", ")",  ""};
  for (char const* const blank : {"", " ", "\t", "\n", "\v", "\f", "\r", " \t\n\v\f\r "}) {
    std::string text;
    for (std::string const& token : tokens) {
      text += blank;
      text += token;
    }
    SCOPED_TRACE(text);
    EXPECT_TRUE(read(text) == peers);
  }
}

TEST(GroupKeyText, TakesWhiteSpaceAtOnePlaceAlone) {
  for (std::size_t const place : {0U,  5U,  6U,  23U, 24U, 25U, 27U, 28U, 29U, 35U, 36U,
                                  37U, 51U, 52U, 53U, 59U, 60U, 61U, 68U, 69U, 70U}) {
    std::string text = whole;
    text.insert(place, 1, '\n');
    SCOPED_TRACE(text);
    EXPECT_TRUE(read(text) == peers);
  }
}

TEST(GroupKeyText, RefusesWhiteSpaceInsideAToken) {
  EXPECT_EQ(refusal("Val ue('Group::GroupKey', ** {})"), "expected \" Value\" at column 3");
  EXPECT_EQ(refusal("Value(' Group::GroupKey', ** {})"),
            "expected \" 'Group::GroupKey'\" at column 7");
  EXPECT_EQ(refusal("Value('Group::GroupKey', * * {})"), "expected \" **\" at column 26");
  EXPECT_EQ(refusal(framed("' type': 'groupTypeBgp'")), "GroupKey has no such attribute:  type");
}

TEST(GroupKeyText, TakesTheAttributesInAnyOrder) {
  EXPECT_TRUE(read(framed("'name': 'peers', 'type': 'groupTypeBgp'")) == peers);
}

TEST(GroupKeyText, KeepsTheDefaultOfAMissingAttribute) {
  EXPECT_TRUE(read(framed("")) == GroupKey());
  EXPECT_TRUE(read(framed("'type': 'groupTypeBgp'")) == GroupKey(groupTypeBgp, ""));
  EXPECT_TRUE(read(framed("'name': 'peers'")) == GroupKey(groupTypeUnknown, "peers"));
}

TEST(GroupKeyText, TakesTheLastOfAnAttributeThatComesTwice) {
  EXPECT_TRUE(read(framed("'name': 'a', 'type': 'groupTypeInterface', 'name': 'peers', "
                          "'type': 'groupTypeBgp'")) == peers);
}

TEST(GroupKeyText, TakesEitherQuotes) {
  EXPECT_TRUE(read(framed("\"type\": \"groupTypeBgp\", \"name\": \"peers\"")) == peers);
  EXPECT_EQ(refusal("Value(\"Group::GroupKey\", ** {})"),
            "expected \" 'Group::GroupKey'\" at column 6");
}

TEST(GroupKeyText, RefusesAnUnknownAttribute) {
  EXPECT_EQ(refusal(framed("'hash': 1")), "GroupKey has no such attribute: hash");
  EXPECT_EQ(refusal(framed("'Type': 'groupTypeBgp'")), "GroupKey has no such attribute: Type");
  EXPECT_EQ(refusal(framed("'': ''")), "GroupKey has no such attribute: ");
  EXPECT_EQ(refusal(framed("'name': 'a', 'names': 'b'")), "GroupKey has no such attribute: names");
}

TEST(GroupKeyText, RefusesAnUnknownType) {
  EXPECT_EQ(refusal(framed("'type': 'bgp'")), "type: GroupType");
  EXPECT_EQ(refusal(framed("'type': 'GroupType(3)'")), "type: GroupType");
}

TEST(GroupKeyText, RefusesBadPunctuation) {
  EXPECT_EQ(refusal(framed(", 'name': 'a'")), "expected a quoted text at column 29");
  EXPECT_EQ(refusal(framed("'name': 'a',")), "expected a quoted text at column 41");
  EXPECT_EQ(refusal(framed("'name': 'a' 'name': 'b'")), "expected \", \" at column 41");
  EXPECT_EQ(refusal(framed("'name' 'a'")), "expected \" : \" at column 36");
  EXPECT_EQ(refusal(framed("name: 'a'")), "expected a quoted text at column 29");
  EXPECT_EQ(refusal("Value('Group::GroupKey', ** {}"), "expected \") \" at column 30");
  EXPECT_EQ(refusal("Value('Group::GroupKey', ** {]"), "expected a quoted text at column 29");
  EXPECT_EQ(refusal("Value('Group::GroupKey' ** {})"), "expected \" ,\" at column 24");
  EXPECT_EQ(refusal("Value('Group::GroupKey', {})"), "expected \" **\" at column 25");
  EXPECT_EQ(refusal("Value 'Group::GroupKey', ** {})"), "expected \" (\" at column 6");
  EXPECT_EQ(refusal("Value('Group::GroupType', ** {})"),
            "expected \" 'Group::GroupKey'\" at column 19");
}

TEST(GroupKeyText, RefusesEveryTextThatIsCutShort) {
  for (std::size_t length = 0; length < whole.size(); ++length) {
    SCOPED_TRACE(length);
    std::string const message = refusal(whole.substr(0, length));
    bool const premature = length == 29 || length == 51 || length == 68;
    EXPECT_EQ(message == "premature end of value type GroupKey", premature) << message;
    const std::string attribute = length >= 36 && length < 51   ? "type: "
                                  : length >= 60 && length < 68 ? "name: "
                                                                : "";
    EXPECT_TRUE(premature || message.starts_with(attribute + "expected ")) << message;
  }
}

TEST(GroupKeyText, ReadsNothingBehindTheEndThatItIsGiven) {
  String8 const text(whole);
  for (std::size_t length = 0; length < whole.size(); ++length) {
    SCOPED_TRACE(length);
    String8::IteratorConst first(text);
    String8::IteratorConst const last(text, static_cast<int>(length));
    Support::rangeFailure([&] { GroupKey key(first, last); });
    EXPECT_LE(first.position(), static_cast<int>(length));
  }
}

TEST(GroupKeyText, RefusesWhatFollowsItAndSaysWhere) {
  EXPECT_EQ(whole.size(), 70U);
  EXPECT_EQ(refusal(whole + 'x'),
            "junk at column 70 deserializing "
            "Value('Group::GroupKey', ** {'type': 'groupTypeBgp', 'name': 'peers'})x");
  EXPECT_EQ(refusal(whole + " \nx"),
            "junk at column 72 deserializing "
            "Value('Group::GroupKey', ** {'type': 'groupTypeBgp', 'name': 'peers'}) \nx");
}

TEST(GroupKeyText, LeavesThePositionBehindItself) {
  String8 const text(whole + "  " + framed("'name': 'second'") + "rest");
  String8::IteratorConst first(text);
  String8::IteratorConst const last(text, static_cast<int>(text.length()));
  EXPECT_TRUE(GroupKey(first, last) == peers);
  EXPECT_TRUE(GroupKey(first, last) == GroupKey(groupTypeUnknown, "second"));
  EXPECT_EQ(first.rest(), "rest");
}

} // namespace
