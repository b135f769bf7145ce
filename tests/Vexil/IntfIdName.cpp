#include "support/Failure.h"

#include <Vexil/IntfId>
#include <Zel/Text>

#include <map>
#include <random>

namespace {

using Vexil::IntfId;
using Zel::String8;

struct Named {
  char const* name;
  std::uint32_t first;
  std::uint32_t second;
};

constexpr Named regular[] = {
    {"Ethernet0", 0x01010000, 0},
    {"Ethernet1", 0x01010000, 1},
    {"Ethernet65536", 0x01010000, 65536},
    {"Ethernet4294967295", 0x01010000, 0xffffffff},
    {"Ethernet0/0", 0x01020000, 0},
    {"Ethernet3/1", 0x01020000, 0x00030001},
    {"Ethernet65535/65535", 0x01020000, 0xffffffff},
    {"Ethernet0/0/0", 0x01030000, 0},
    {"Ethernet1/2/3", 0x01030001, 0x00020003},
    {"Ethernet65535/65535/65535", 0x0103ffff, 0xffffffff},
    {"Port-Channel10", 0x02010000, 10},
    {"Port-Channel1/2", 0x02020000, 0x00010002},
    {"Port-Channel1/2/3", 0x02030001, 0x00020003},
    {"Loopback0", 0x03010000, 0},
    {"Loopback1/2", 0x03020000, 0x00010002},
    {"Loopback1/2/3", 0x03030001, 0x00020003},
    {"Vlan100", 0x04010000, 100},
    {"Vlan1/2", 0x04020000, 0x00010002},
    {"Vlan1/2/3", 0x04030001, 0x00020003},
    {"Management1", 0x05010000, 1},
    {"Management1/2", 0x05020000, 0x00010002},
    {"Management7/8/9", 0x05030007, 0x00080009},
};

constexpr Named others[] = {
    {"Intf(0x00000000,0x00000001)", 0, 1},          // none, with a number
    {"Intf(0x00010000,0x00000001)", 0x00010000, 1}, // none, with a count
    {"Intf(0x00000001,0x00000000)", 1, 0},          // none, with a first number
    {"Intf(0x01000000,0x00000000)", 0x01000000, 0}, // no number
    {"Intf(0x01040000,0x00000000)", 0x01040000, 0}, // four numbers
    {"Intf(0x01010001,0x00000000)", 0x01010001, 0}, // one number, and a first of three
    {"Intf(0x0102ffff,0x00000000)", 0x0102ffff, 0}, // two numbers, and a first of three
    {"Intf(0x06010000,0x00000001)", 0x06010000, 1}, // a kind without a name
    {"Intf(0xffffffff,0xffffffff)", 0xffffffff, 0xffffffff},
    {"Intf(0x89abcdef,0xdeadbeef)", 0x89abcdef, 0xdeadbeef},
};

void expectNamed(Named const& named) {
  SCOPED_TRACE(named.name);
  IntfId const id(named.first, named.second);
  EXPECT_EQ(stringValue(id), named.name);
  EXPECT_TRUE(IntfId(String8(named.name)) == id);
  String8 const text = valueToStrep(id);
  EXPECT_EQ(text, "'" + String8(named.name) + "'");
  EXPECT_TRUE(Zel::strepToValue<IntfId>(text) == id);
}

TEST(IntfIdName, OfNoInterfaceIsNone) { expectNamed({"none", 0, 0}); }

TEST(IntfIdName, OfEachKindHasOneToThreeNumbers) {
  for (Named const& named : regular) {
    expectNamed(named);
  }
}

TEST(IntfIdName, OfAnyOtherIdentifierIsItsWords) {
  for (Named const& named : others) {
    expectNamed(named);
  }
}

TEST(IntfIdName, AnyOtherTextIsRefused) {
  for (char const* const name : {
           "",
           " ",
           "None",
           "none ",
           "none0",
           "Ethernet",
           "Ethernet/",
           "Ethernet/1",
           "Ethernet1/",
           "Ethernet1//2",
           "Ethernet1/2/",
           "Ethernet1/2/3/",
           "Ethernet1/2/3/4",
           "Ethernet01",
           "Ethernet00",
           "Ethernet1/02",
           "Ethernet1/2/03",
           "Ethernet+1",
           "Ethernet-1",
           "Ethernet1/-2",
           "Ethernet1/+2",
           "Ethernet 1",
           "Ethernet1 ",
           " Ethernet1",
           "Ethernet1 /2",
           "Ethernet1.2",
           "Ethernet1x",
           "Ethernet0x1",
           "Ethernet4294967296",
           "Ethernet18446744073709551616",
           "Ethernet65536/0",
           "Ethernet0/65536",
           "Ethernet65536/0/0",
           "Ethernet0/65536/0",
           "Ethernet0/0/65536",
           "Ethernet4294967295/0",
           "Ethernet4294967296/0",
           "ethernet1",
           "ETHERNET1",
           "Eth1",
           "Port-channel1",
           "PortChannel1",
           "Port-Channel-1",
           "Loopback-0",
           "Vlan",
           "Vlan4294967296",
           "Management",
           "Serial1",
           "1",
           "Intf",
           "Intf()",
           "Intf(0x00000000,0x00000000)", // is none
           "Intf(0x01010000,0x00000001)", // is Ethernet1
           "Intf(0x0103ffff,0xffffffff)", // is Ethernet65535/65535/65535
           "Intf(0x89ABCDEF,0xdeadbeef)",
           "Intf(0x89abcdef,0xDEADBEEF)",
           "Intf(0X89abcdef,0xdeadbeef)",
           "intf(0x89abcdef,0xdeadbeef)",
           "Intf(0x89abcdef,0xdeadbeef",
           "Intf(0x89abcdef, 0xdeadbee)",
           "Intf(0x89abcdef,0xdeadbeef)x",
           "Intf(0x9abcdef,0xdeadbeef)",
           "Intf(0x089abcdef,0xdeadbeef)",
           "Intf(0x89abcdeg,0xdeadbeef)",
           "Intf(0x-9abcdef,0xdeadbeef)",
           "Intf(0x89abcdef;0xdeadbeef)",
       }) {
    EXPECT_EQ(Support::rangeFailure([&] { IntfId id{String8(name)}; }),
              std::string("IntfId: ") + name);
  }
}

TEST(IntfIdName, AZeroByteIsPartOfTheName) {
  for (std::string_view const name : {std::string_view("Ethernet1\0", 10),
                                      std::string_view("none\0", 5), std::string_view("\0", 1)}) {
    std::string message = "IntfId: ";
    message += name;
    EXPECT_EQ(Support::rangeFailure([&] { IntfId id{String8(name)}; }), message);
  }
}

/// Words that are near the regular form as often as not.
IntfId randomId(std::mt19937_64& random) {
  auto const second = static_cast<std::uint32_t>(random());
  if (random() % 4 == 0) {
    return IntfId(static_cast<std::uint32_t>(random()), second >> random() % 32);
  }
  auto const kind = static_cast<std::uint32_t>(random() % 7);
  auto const count = static_cast<std::uint32_t>(random() % 5);
  std::uint32_t const high = random() % 2 == 0 ? 0 : static_cast<std::uint32_t>(random() % 65536);
  return IntfId(kind << 24 | count << 16 | high, second >> random() % 32);
}

TEST(IntfIdName, RandomWordsReadBackAndDistinctOnesHaveDistinctNames) {
  for (unsigned const seed : {1U, 2U, 3U, 4U}) {
    SCOPED_TRACE(testing::Message() << "seed " << seed);
    std::mt19937_64 random(seed);
    std::map<std::string, IntfId> names;
    for (int round = 0; round < 20000; ++round) {
      IntfId const id = randomId(random);
      String8 const name = stringValue(id);
      ASSERT_TRUE(IntfId(name) == id) << name;
      ASSERT_TRUE(Zel::strepToValue<IntfId>(valueToStrep(id)) == id) << name;
      auto const [at, isNew] = names.emplace(std::string(name.view()), id);
      ASSERT_TRUE(at->second == id) << name;
    }
  }
}

TEST(IntfIdName, WhatIsUnderstoodPrintsAsWhatWasRead) {
  constexpr std::string_view bytes = "0123456789/-+ xabcdefABCDEF(),";
  unsigned understood = 0;
  for (unsigned const seed : {1U, 2U, 3U, 4U}) {
    SCOPED_TRACE(testing::Message() << "seed " << seed);
    std::mt19937_64 random(seed);
    for (int round = 0; round < 20000; ++round) {
      std::string text(stringValue(randomId(random)).view());
      for (auto edits = random() % 3; edits > 0; --edits) {
        std::size_t const at = random() % text.size();
        char const byte = bytes[random() % bytes.size()];
        switch (random() % 3) {
        case 0:
          text[at] = byte;
          break;
        case 1:
          text.insert(at, 1, byte);
          break;
        default:
          text.erase(at, 1);
          text += text.empty() ? "n" : "";
        }
      }
      try {
        IntfId const id{String8(text)};
        ++understood;
        ASSERT_EQ(std::string(stringValue(id).view()), text);
      } catch (Zel::RangeException const& failure) {
        ASSERT_EQ(std::string(failure.message().view()), "IntfId: " + text);
      }
    }
  }
  EXPECT_GT(understood, 20000U);
  EXPECT_LT(understood, 80000U);
}

TEST(IntfIdText, IsReadInEitherQuotesWithWhiteSpaceBeforeIt) {
  EXPECT_TRUE(Zel::strepToValue<IntfId>("\"Vlan1\"") == IntfId("Vlan1"));
  EXPECT_TRUE(Zel::strepToValue<IntfId>(" \t\n\v\f\r'Vlan1'") == IntfId("Vlan1"));
}

TEST(IntfIdText, ABadOneIsRefused) {
  auto const refusal = [](char const* text) {
    return Support::rangeFailure([&] { Zel::strepToValue<IntfId>(text); });
  };
  EXPECT_EQ(refusal(""), "expected a quoted text at column 0");
  EXPECT_EQ(refusal("Vlan1"), "expected a quoted text at column 0");
  EXPECT_EQ(refusal("'Vlan1"), "expected the closing quote at column 6");
  EXPECT_EQ(refusal("'Vlan'"), "IntfId: Vlan");
  EXPECT_EQ(refusal("''"), "IntfId: ");
  EXPECT_EQ(refusal("' Vlan1'"), "IntfId:  Vlan1");
  EXPECT_EQ(refusal("'Vlan1'x"), "junk at column 7 deserializing 'Vlan1'x");
  EXPECT_EQ(refusal("'Vlan1' "), "junk at column 7 deserializing 'Vlan1' ");
}

TEST(IntfIdText, LeavesThePositionBehindItself) {
  String8 const text = "'Vlan1' 'Vlan2'rest";
  String8::IteratorConst first(text);
  String8::IteratorConst const last(text, static_cast<int>(text.length()));
  EXPECT_TRUE(IntfId(first, last) == IntfId("Vlan1"));
  EXPECT_TRUE(IntfId(first, last) == IntfId("Vlan2"));
  EXPECT_EQ(first.rest(), "rest");
}

} // namespace
