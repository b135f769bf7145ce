#include "Channel.h"
#include "Payload.h"

#include <Zel/ZelType>
#include <attrlog/Unit.h>

#include <gtest/gtest.h>

// One record of each attribute of an input, byte for byte, and what the mirror makes of it.

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

} // namespace
