#include "Texts.h"

namespace {

using namespace TestText;
using namespace Maintenance::Unit;
using Noted = OnBootUnitAndReason;

const std::string system =
    "Value('Maintenance::OnBootUnitAndReason', ** {'unitName': 'System', 'reason': 'srcCli'})";

TEST(OnBootUnitAndReasonText, HasTheNameAndTheReason) {
  EXPECT_EQ(print(Noted("System", srcCli)), system);
  EXPECT_EQ(written(Noted("System", srcCli)), system);
  EXPECT_EQ(print(Noted()), "Value('Maintenance::OnBootUnitAndReason', ** {'unitName': '', "
                            "'reason': 'srcUnknown'})");
  EXPECT_EQ(print(Noted("", static_cast<InputSrc>(9))),
            "Value('Maintenance::OnBootUnitAndReason', ** {'unitName': '', 'reason': "
            "'InputSrc(9)'})");
}

TEST(OnBootUnitAndReasonText, ReadsBackInAnyOrderWithTheLastOfTwo) {
  EXPECT_EQ(read<Noted>(system), Noted("System", srcCli));
  EXPECT_EQ(read<Noted>(framed<Noted>("'reason': 'srcOnBoot', 'unitName': 'a'")),
            Noted("a", srcOnBoot));
  EXPECT_EQ(read<Noted>(framed<Noted>("'unitName': 'a', 'unitName': 'b'")), Noted("b", srcUnknown));
  EXPECT_EQ(read<Noted>(framed<Noted>("")), Noted());
}

TEST(OnBootUnitAndReasonText, IsRefusedWithTheAttributesName) {
  EXPECT_EQ(refusal<Noted>(framed<Noted>("'reason': 'srccli'")), "reason: InputSrc");
  EXPECT_EQ(refusal<Noted>(framed<Noted>("'reason': 'InputSrc(9)'")), "reason: InputSrc");
  EXPECT_EQ(refusal<Noted>(framed<Noted>("'hash': 1")),
            "OnBootUnitAndReason has no such attribute: hash");
  EXPECT_EQ(refusal<Noted>(system + "x"),
            "junk at column " + std::to_string(system.size()) + " deserializing " + system + "x");
  EXPECT_EQ(refusal<Noted>(system.substr(0, system.find('{') + 1)),
            "premature end of value type OnBootUnitAndReason");
}

} // namespace
