#include "Channel.h"
#include "Pair.h"
#include "Payload.h"

#include "support/Failure.h"

#include <Zel/ZelType>
#include <attrlog/Unit.h>

#include <gtest/gtest.h>

// One record of each attribute of inputs and of the directory of what they come to, byte for byte,
// and what the mirror makes of it.

namespace {

using namespace Maintenance::Unit;
using Zel::Ptr;

Ptr<Zel::Entity> madeFrom(const Zel::ZelType* type, std::string_view hex) {
  return type->newEntity(Ptr<Zel::NboAttrLog::In>(ringOf(hex)), {}, 0, nullptr);
}

class InputRecords : public ::testing::Test {
protected:
  Channel<Input> channel{inputFactory("i")};
  const Ptr<Input>& input = channel.original;
  const Ptr<Input>& mirror = channel.mirror;
};

TEST_F(InputRecords, TheRootIsMadeWithItsName) {
  channel.expectWritten("");
  EXPECT_EQ(mirror->name(), "i");
  EXPECT_EQ(madeFrom(Input::_fwkType(), "00 00 00 01 69")->name(), "i");
}

TEST_F(InputRecords, Priority) {
  input->priorityIs(srcOnBootCli);
  channel.expectWritten("00 00 00 20 02 00 00 00 00 00 00 00 "
                        "00 00 01 02 01 00 00 00 00 00 00 00 00 00 01 "
                        "00 00 00 02 03");
  EXPECT_EQ(mirror->priority(), srcOnBootCli);
}

TEST_F(InputRecords, Unit) {
  input->unitIs("u", false);
  channel.expectWritten("00 00 00 22 02 00 00 00 00 00 00 00 "
                        "00 00 01 03 01 00 00 00 00 00 00 00 00 00 01 "
                        "00 00 00 01 75 00 03");
  EXPECT_EQ(mirror->unitMap().count(), 1U);
  EXPECT_FALSE(mirror->unit("u"));
  input->unitIs("u", true);
  channel.expectWritten("00 00 00 22 02 00 00 00 00 00 00 00 "
                        "00 00 01 03 01 00 00 00 00 00 00 00 00 00 01 "
                        "00 00 00 01 75 01 03");
  EXPECT_TRUE(mirror->unit("u"));
  input->unitDel("u");
  channel.expectWritten("00 00 00 21 02 00 00 00 00 00 00 00 "
                        "ff ff fe fd 01 00 00 00 00 00 00 00 00 00 01 "
                        "00 00 00 01 75 03");
  EXPECT_EQ(mirror->unitMap().count(), 0U);
}

TEST_F(InputRecords, AnUnknownPriorityIsCountedAndKept) {
  channel.receiver.apply("00 00 00 20 02 00 00 00 00 00 00 00 "
                         "00 00 01 02 01 00 00 00 00 00 00 00 00 00 01 "
                         "00 00 00 04 03");
  EXPECT_EQ(channel.receiver.failure(), "");
  EXPECT_EQ(channel.receiver.counts().unknownEnums, 1U);
  EXPECT_EQ(channel.receiver.counts().badValues, 0U);
  EXPECT_EQ(static_cast<int>(mirror->priority()), 4);
}

TEST_F(InputRecords, AllOfOneIsItsPriorityAndItsUnits) {
  const Sender sender;
  input->unitIs("u", true);
  sender.demuxer().exportIs(input);
  EXPECT_EQ(sender.written(),
            plain("00 00 00 48 01 00 00 00 00 00 00 00 "
                  "00 00 00 88 01 00 00 00 00 00 00 00 00 00 01 "
                  "01 00 00 00 18 4d 61 69 6e 74 65 6e 61 6e 63 65 3a 3a 55 6e 69 74 3a 3a "
                  "49 6e 70 75 74 03 00 00 00 01 69 04 02 00 00 00 00 00 00 00 03 "
                  "00 00 00 20 02 00 00 00 00 00 00 00 "
                  "00 00 01 02 01 00 00 00 00 00 00 00 00 00 01 "
                  "00 00 00 00 03 "
                  "00 00 00 28 02 00 00 00 00 00 00 00 "
                  "00 00 00 89 00 00 00 00 0c 00 00 00 00 00 01 "
                  "00 00 01 03 00 00 00 00 00 00 00 00 03 "
                  "00 00 00 22 02 00 00 00 00 00 00 00 "
                  "00 00 01 03 01 00 00 00 00 00 00 00 00 00 01 "
                  "00 00 00 01 75 01 03 "
                  "00 00 00 28 02 00 00 00 00 00 00 00 "
                  "00 00 00 89 00 00 00 00 0c 00 00 00 00 00 01 "
                  "00 00 01 03 00 00 00 02 00 00 00 00 03"));
}

class MergedInputRecords : public ::testing::Test {
protected:
  Channel<MergedInput> channel{mergedInputFactory("u", srcOnBoot)};
  const Ptr<MergedInput>& input = channel.original;
  const Ptr<MergedInput>& mirror = channel.mirror;
};

TEST_F(MergedInputRecords, TheRootIsMadeWithBothArguments) {
  channel.expectWritten("");
  EXPECT_EQ(mirror->unitName(), "u");
  EXPECT_EQ(mirror->priority(), srcOnBoot);
  const auto made = madeFrom(MergedInput::_fwkType(), "00 00 00 01 75 00 00 00 03");
  EXPECT_EQ(made->name(), "u");
  EXPECT_EQ(Zel::ptrCast<MergedInput>(made)->priority(), srcCli);
}

TEST_F(MergedInputRecords, ARootOfAnUnknownPriorityIsNotMade) {
  EXPECT_EQ(Support::rangeFailure(
                [] { madeFrom(MergedInput::_fwkType(), "00 00 00 01 75 00 00 00 04"); }),
            "InputSrc");
}

TEST_F(MergedInputRecords, ARootOfAnUnknownPriorityIsABadValueOfItsRecord) {
  channel.receiver.apply("00 00 00 52 01 00 00 00 00 00 00 00 "
                         "00 00 00 88 01 00 00 00 00 00 00 00 00 00 01 "
                         "01 00 00 00 1e 4d 61 69 6e 74 65 6e 61 6e 63 65 3a 3a 55 6e 69 74 3a 3a "
                         "4d 65 72 67 65 64 49 6e 70 75 74 03 00 00 00 01 76 00 00 00 04 "
                         "04 06 00 00 00 00 00 00 00 03");
  EXPECT_EQ(channel.receiver.failure(), "");
  EXPECT_EQ(channel.receiver.counts().badValues, 1U);
  EXPECT_EQ(channel.receiver.counts().unknownEnums, 0U);
  EXPECT_FALSE(channel.receiver.roots->entity("v"));
}

TEST_F(MergedInputRecords, Priority) {
  input->priorityIs(srcCli);
  channel.expectWritten("00 00 00 20 02 00 00 00 00 00 00 00 "
                        "00 00 01 03 01 00 00 00 00 00 00 00 00 00 01 "
                        "00 00 00 03 03");
  EXPECT_EQ(mirror->priority(), srcCli);
}

TEST_F(MergedInputRecords, AnUnknownPriorityOfOneThatIsThereIsCountedAndKept) {
  channel.receiver.apply("00 00 00 20 02 00 00 00 00 00 00 00 "
                         "00 00 01 03 01 00 00 00 00 00 00 00 00 00 01 "
                         "00 00 00 09 03");
  EXPECT_EQ(channel.receiver.counts().unknownEnums, 1U);
  EXPECT_EQ(static_cast<int>(mirror->priority()), 9);
}

TEST_F(MergedInputRecords, AllOfOneIsItsConstruction) {
  const Sender sender;
  sender.demuxer().exportIs(input);
  EXPECT_EQ(sender.written(),
            plain("00 00 00 52 01 00 00 00 00 00 00 00 "
                  "00 00 00 88 01 00 00 00 00 00 00 00 00 00 01 "
                  "01 00 00 00 1e 4d 61 69 6e 74 65 6e 61 6e 63 65 3a 3a 55 6e 69 74 3a 3a "
                  "4d 65 72 67 65 64 49 6e 70 75 74 03 00 00 00 01 75 00 00 00 01 "
                  "04 02 00 00 00 00 00 00 00 03"));
}

class MergedInputDirRecords : public ::testing::Test {
protected:
  /// The record of the member "u" with the priority 3.
  static constexpr std::string_view member = "00 00 00 2d 02 00 00 00 00 00 00 00 "
                                             "00 00 01 02 01 00 00 00 00 00 00 00 97 00 01 "
                                             "00 00 00 01 75 00 00 00 03 "
                                             "04 00 00 00 00 00 00 00 03";

  Channel<MergedInputDir> channel{mergedInputDirFactory("d")};
  const Ptr<MergedInputDir>& dir = channel.original;
  const Ptr<MergedInputDir>& mirror = channel.mirror;
};

TEST_F(MergedInputDirRecords, AMemberIsItsNameItsPriorityAndItsId) {
  dir->unitIs("u", srcCli);
  channel.expectWritten(member);
  EXPECT_EQ(mirror->unit("u")->priority(), srcCli);
  dir->unitDel("u");
  channel.expectWritten("00 00 00 21 02 00 00 00 00 00 00 00 "
                        "ff ff fe fe 01 00 00 00 00 00 00 00 00 00 01 "
                        "00 00 00 01 75 03");
  EXPECT_FALSE(mirror->unit("u"));
}

TEST_F(MergedInputDirRecords, AHitWritesThePriorityOfTheMemberAlone) {
  dir->unitIs("u", srcCli);
  channel.expectWritten(member);
  dir->unitIs("u", srcOnBoot);
  channel.expectWritten("00 00 00 20 04 00 00 00 00 00 00 00 "
                        "00 00 01 03 01 00 00 00 00 00 00 00 00 00 01 "
                        "00 00 00 01 03");
  EXPECT_EQ(mirror->unit("u")->priority(), srcOnBoot);
  dir->unitIs("u", srcOnBoot);
  channel.expectWritten("");
}

TEST_F(MergedInputDirRecords, AllOfOneIsItsMembersWithTheirPrioritiesAndNothingOfThem) {
  const Sender sender;
  dir->unitIs("u", srcCli);
  sender.demuxer().exportIs(dir);
  EXPECT_EQ(sender.written(),
            plain("00 00 00 51 01 00 00 00 00 00 00 00 "
                  "00 00 00 88 01 00 00 00 00 00 00 00 00 00 01 "
                  "01 00 00 00 21 4d 61 69 6e 74 65 6e 61 6e 63 65 3a 3a 55 6e 69 74 3a 3a "
                  "4d 65 72 67 65 64 49 6e 70 75 74 44 69 72 03 00 00 00 01 64 "
                  "04 02 00 00 00 00 00 00 00 03 "
                  "00 00 00 28 02 00 00 00 00 00 00 00 "
                  "00 00 00 89 00 00 00 00 0c 00 00 00 00 00 01 "
                  "00 00 01 02 00 00 00 00 00 00 00 00 03 " +
                  std::string(member) +
                  " 00 00 00 28 02 00 00 00 00 00 00 00 "
                  "00 00 00 89 00 00 00 00 0c 00 00 00 00 00 01 "
                  "00 00 01 02 00 00 00 02 00 00 00 00 03"));
}

TEST_F(MergedInputDirRecords, AnUnknownPriorityOfAMemberIsCountedAndKept) {
  channel.receiver.apply("00 00 00 2d 02 00 00 00 00 00 00 00 "
                         "00 00 01 02 01 00 00 00 00 00 00 00 97 00 01 "
                         "00 00 00 01 75 00 00 00 63 04 00 00 00 00 00 00 00 03");
  EXPECT_EQ(channel.receiver.failure(), "");
  EXPECT_EQ(channel.receiver.counts().unknownEnums, 1U);
  EXPECT_EQ(channel.receiver.counts().badValues, 0U);
  EXPECT_EQ(static_cast<int>(mirror->unit("u")->priority()), 99);
}

TEST_F(MergedInputDirRecords, AMemberInACompoundRecordHasItsPriorityBetweenNameAndId) {
  channel.receiver.apply("00 00 00 39 02 00 00 00 00 00 00 00 "
                         "00 00 00 90 01 00 00 00 00 00 00 00 00 00 01 "
                         "00 08 00 00 00 00 01 02 00 00 00 00 "
                         "00 00 00 01 75 00 00 00 02 04 00 00 00 00 00 00 00 03");
  EXPECT_EQ(channel.receiver.failure(), "");
  ASSERT_TRUE(mirror->unit("u"));
  EXPECT_EQ(mirror->unit("u")->priority(), srcOnBootCli);
}

TEST(MergedInputDirs, AreMirroredBothWays) {
  Pair pair;
  const auto dir = mergedInputDirFactory("merged");
  dir->unitIs("a", srcOnBoot);
  pair.here->demuxer()->exportIs(dir);
  pair.settle();
  const auto mirrors = pair.mirror<MergedInputDir>("merged");
  EXPECT_EQ(mirrors->unit("a")->priority(), srcOnBoot);
  mirrors->unitIs("a", srcCli);
  mirrors->unitIs("b", srcUnknown);
  pair.settle();
  EXPECT_EQ(dir->unit("a")->priority(), srcCli);
  EXPECT_EQ(dir->unit("b")->priority(), srcUnknown);
  dir->unitDelAll();
  pair.settle();
  EXPECT_EQ(mirrors->unitMap().count(), 0U);
}

} // namespace
