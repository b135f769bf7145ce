#include "Dumps.h"
#include "Ends.h"

#include "foreign/model/ProductAttrLog.h"

#include <attrlog/Unit.h>

#include <gtest/gtest.h>

#include <set>

// The records in docs/wire-format.md are what the library writes, byte for byte.

namespace {

using namespace Maintenance::Unit;

std::string letters(unsigned count) { return std::string(count, 'a'); }

class Document : public ::testing::Test {
protected:
  /// The unit that the dumps are of, after its announcement.
  Zel::Ptr<Status> system() {
    sender.announce(units);
    units->statusIs("System");
    sender.written();
    return units->status("System");
  }

  const Sender sender;
  const Zel::Ptr<StatusDir> units = statusDirFactory("units");
};

TEST_F(Document, HasTheseDumpsAndNoOther) {
  std::set<std::string> names;
  for (const auto& [name, text] : dumps()) {
    names.insert(name);
  }
  EXPECT_EQ(names, (std::set<std::string>{"abort",
                                          "begin",
                                          "child",
                                          "child-deleted",
                                          "compound",
                                          "compound-deleted",
                                          "double",
                                          "end",
                                          "enumeration",
                                          "fixed",
                                          "keyed",
                                          "keyed-deleted",
                                          "keyed-text",
                                          "keyed-text-deleted",
                                          "orphan",
                                          "orphan-derived",
                                          "session-ask",
                                          "session-bye",
                                          "session-digest",
                                          "session-digest-ask",
                                          "session-echo",
                                          "session-echo-ask",
                                          "session-freeze",
                                          "session-frozen",
                                          "session-grant",
                                          "session-hello",
                                          "session-offer",
                                          "session-offers-end",
                                          "session-refuse",
                                          "session-thaw",
                                          "session-withdraw",
                                          "session-write-if",
                                          "session-write-if-entry",
                                          "session-write-new",
                                          "session-written",
                                          "session-written-new",
                                          "sync-mode",
                                          "text",
                                          "text-first",
                                          "text-rest",
                                          "value",
                                          "value-bool",
                                          "value-double",
                                          "value-entity-id",
                                          "value-group-key",
                                          "value-int",
                                          "value-intf-id",
                                          "value-profile-key",
                                          "value-stage-mgr-inst-key",
                                          "value-string",
                                          "value-traffic-rates",
                                          "value-type-name",
                                          "value-unsigned",
                                          "value-unsigned-long-long"}));
}

TEST_F(Document, AnEmptyDirectoryIsAnnouncedAndWalked) {
  sender.demuxer().exportIs(units);
  EXPECT_EQ(sender.written(), records(dump("orphan"), dump("begin"), dump("end")));
}

TEST_F(Document, ADerivedTypeNamesItsBase) {
  const auto milk = Zel::makeObject<Foreign::Perishable>("milk");
  sender.demuxer().exportIs(milk);
  EXPECT_EQ(sender.written().substr(0, dump("orphan-derived").size()), dump("orphan-derived"));
}

TEST_F(Document, AMemberThatComesAndGoes) {
  sender.announce(units);
  units->statusIs("System");
  EXPECT_EQ(sender.written(), dump("child"));
  units->statusDel("System");
  EXPECT_EQ(sender.written(), dump("child-deleted"));
}

TEST_F(Document, SingleValues) {
  const auto unit = system();
  unit->genIdIs(7);
  EXPECT_EQ(sender.written(), dump("fixed"));
  unit->stateIs(underMaintenance);
  EXPECT_EQ(sender.written(), dump("enumeration"));
  unit->timeOfStateChangeIs(1.5);
  EXPECT_EQ(sender.written(), dump("double"));
  TrafficRates rates;
  rates.outBitsRateIs(1000000);
  rates.inBitsRateIs(1ULL << 40);
  rates.statsUpdateTimeIs(-2.0);
  unit->aggTrafficRateIs(rates);
  EXPECT_EQ(sender.written(), dump("value"));
}

TEST_F(Document, Texts) {
  const auto unit = system();
  unit->profileNameIs("fast");
  EXPECT_EQ(sender.written(), dump("text"));
  unit->profileNameIs(Zel::String8(letters(40000)));
  EXPECT_EQ(sender.written(), records(dump("text-first"), dump("text-rest")));
}

TEST_F(Document, ATextThatGivesWay) {
  const auto unit = system();
  unit->profileNameIs(Zel::String8(letters(40000)));
  unit->profileNameIs("fast");
  EXPECT_EQ(sender.written(), records(dump("text-first"), dump("abort"), dump("text")));
}

TEST_F(Document, Entries) {
  const Group::GroupKey peers(Group::groupTypeBgp, "peers");
  const auto unit = system();
  unit->groupIs(peers, true);
  EXPECT_EQ(sender.written(), dump("keyed"));
  unit->groupDel(peers);
  EXPECT_EQ(sender.written(), dump("keyed-deleted"));
  unit->historyIs(1.5, "entered");
  EXPECT_EQ(sender.written(), dump("keyed-text"));
  unit->historyDel(1.5);
  EXPECT_EQ(sender.written(), dump("keyed-text-deleted"));
}

/// What the library does not write of itself is written with its transport.
void write(const Zel::Ptr<Zel::NboAttrLog::Out>& out, const Zel::NboAttrLog::MsgHeader& header,
           std::string_view payload) {
  const std::string bytes = bytesOf(payload);
  out->nextHeaderIs(header);
  out << Zel::NboAttrLog::transactBegin;
  out->putBytes(bytes.data(), bytes.size());
  out << Zel::NboAttrLog::transactEnd;
}

TEST_F(Document, RecordsThatAreOnlyRead) {
  using Zel::NboAttrLog::MsgHeader;
  write(sender.out(), MsgHeader::fixed({2, 0}, 135, 4), "00 00 00 01");
  EXPECT_EQ(sender.written(), dump("sync-mode"));
  write(sender.out(), MsgHeader::variable({2, 0}, 144),
        "00 0c 00 20 00 00 01 2c 00 00 01 02 00 00 00 00 "
        "00 00 00 09 4c 69 6e 65 63 61 72 64 31 aa bb cc 08 00 00 00 00 00 00 00");
  EXPECT_EQ(sender.written(), dump("compound"));
  write(sender.out(), MsgHeader::variable({2, 0}, -144),
        "00 08 00 00 ff ff fe fe 00 00 00 09 4c 69 6e 65 63 61 72 64 31");
  EXPECT_EQ(sender.written(), dump("compound-deleted"));
}

} // namespace
