// Members that are announced to an end that may write: what follows the announcement is what their
// maker has done, and nothing that would undo what the peer's program does in answer.

#include "Folder.h"
#include "Log.h"
#include "Pair.h"

#include <Zel/StateDigest>
#include <attrlog/MaintenanceUnitProfile.h>
#include <foreign/model/Order.h>
#include <foreign/model/OrderAttrLog.h>

#include <gmock/gmock.h>

namespace {

using namespace Maintenance::Unit;
using namespace Wiretap;
using Attr = Status::Attr;
using testing::Contains;
using testing::IsEmpty;
using testing::Not;

Group::GroupKey key(const char* name) { return {Group::groupTypeBgp, name}; }

/// An exporter of a directory that sends its members plainly.
template <class Dir>
struct Plain : Writer<Dir> {
  explicit Plain(const Ptr<Dir>& dir) : Writer<Dir>(dir) {
    this->adapter->root()->sendsPlainIs(true);
  }
  EntityId idOf(const Ptr<Zel::Entity>& member) const {
    return Pair::adapterOf(member, this->connection)->entityId();
  }
};

struct PlainMembers : testing::Test {
  /// Makes a member that there is no room to announce.
  Ptr<Status> late(const char* name) {
    writer.freeIs(0);
    return Ptr<Status>(dir->statusIs(name).ptr());
  }
  Plain<StatusDir> writer{statusDirFactory("units")};
  const Ptr<StatusDir> dir = writer.entity;
};

TEST_F(PlainMembers, AreFollowedByWhatDiffersFromANewOne) {
  const Ptr<Status> unit = late("System");
  unit->profileNameIs("fast");
  unit->stateIs(active);
  unit->genIdIs(7);
  unit->groupIs(key("a"), true);
  unit->groupIs(key("b"), false);
  unit->historyIs(1.0, "line");
  unit->reasonIs(srcCli);
  unit->reasonIs(Ptr<Status>(statusFactory("other"))->reason());
  EXPECT_FALSE(Pair::adapterOf(unit, writer.connection));
  const auto seen = writer.seenWorked();
  EXPECT_EQ(briefs(seen), (Briefs{"258", "260", "260", "261", "262", "268", "274"}));
  for (std::size_t at = 1; at < seen.size(); ++at) {
    EXPECT_EQ(seen[at].entity, writer.idOf(unit));
  }
  EXPECT_FALSE(Pair::adapterOf(unit, writer.connection)->flowOut());
}

TEST_F(PlainMembers, ThatNobodyHasWrittenToAreTheirAnnouncement) {
  late("System");
  EXPECT_EQ(writer.worked(), Briefs{"258"});
  EXPECT_EQ(writer.connection->demuxer()->scheduled(), 0U);
}

TEST_F(PlainMembers, AreTheSameIfTheyAreAnnouncedAtOnce) {
  dir->newStatus("System")->genIdIs(7);
  dir->statusNotify("System");
  EXPECT_EQ(writer.worked(), (Briefs{"258", "274"}));
  dir->statusIs("Linecard1")->genIdIs(7);
  EXPECT_EQ(writer.worked(), (Briefs{"258", "274"}));
}

TEST_F(PlainMembers, ThatAreToldOfAgainKeepWhatIsOwed) {
  const Ptr<Status> unit = late("System");
  EXPECT_EQ(writer.worked(), Briefs{"258"});
  writer.freeIs(0);
  dir->statusNotify("System");
  unit->genIdIs(7);
  unit->groupIs(key("a"), true);
  unit->groupDel(key("a"));
  EXPECT_EQ(writer.worked(), (Briefs{"258", "-260", "274"}));
}

TEST_F(PlainMembers, ThatAreMadeAgainFollowTheirDeletion) {
  late("System");
  writer.worked();
  writer.freeIs(0);
  dir->statusDel("System");
  dir->statusIs("System")->genIdIs(7);
  EXPECT_EQ(writer.worked(), (Briefs{"-258", "258", "274"}));
}

TEST_F(PlainMembers, LongTextsGoInChunks) {
  const Ptr<Status> unit = late("System");
  unit->maintEnterInstanceIs(String8(std::string(40000, 'x')));
  unit->historyIs(1.0, String8(std::string(40000, 'y')));
  EXPECT_EQ(writer.worked(), (Briefs{"258", "268+", "268", "269+", "269"}));
}

TEST_F(PlainMembers, InAWalkThatHasBegunAreStillWhole) {
  for (unsigned i = 0; i < 1000; ++i) {
    dir->statusIs(String8("unit " + std::to_string(i)));
  }
  writer.worked();
  writer.adapter->root()->sendsPlainIs(false);
  writer.adapter->doThis();
  writer.connection->service(1);
  writer.sent();
  ASSERT_NE(writer.adapter->flowOut()->bookmark(), nullptr);
  writer.adapter->root()->sendsPlainIs(true);
  dir->statusIs("late");
  const std::string last(static_cast<Zel::Name*>(writer.adapter->flowOut()->bookmark())->view());
  const auto seen = writer.seenWorked();
  EXPECT_THAT(briefs(seen, writer.adapter->entityId()), Contains("end 258"));
  const Ptr<Status> walked = dir->status(last.c_str());
  EXPECT_THAT(briefs(seen, writer.idOf(walked)), Contains("begin 260"));
  dir->newStatus("later");
  dir->statusNotify("later");
  EXPECT_EQ(writer.worked(), Briefs{"258"});
}

TEST_F(PlainMembers, AreWholeAgainWhereThatIsNotWanted) {
  const Ptr<Status> unit = late("System");
  writer.adapter->root()->sendsPlainIs(false);
  const auto seen = writer.seenWorked();
  EXPECT_EQ(seen.size(), 19U);
  EXPECT_THAT(briefs(seen, writer.idOf(unit)), Contains("begin 260"));
}

TEST(PlainMember, HasItsArgumentsInTheAnnouncement) {
  Plain<Foreign::OrderDir> writer(Zel::makeObject<Foreign::OrderDir>("orders"));
  writer.freeIs(0);
  const Ptr<Foreign::Order> order(writer.entity->orderIs("o1", Foreign::express).ptr());
  order->urgencyIs(Foreign::urgencyUnknown);
  const auto seen = writer.seenWorked();
  ASSERT_EQ(briefs(seen), Briefs{"258"});
  EXPECT_EQ(hex(seen[0].payload.substr(0, 10)), "000000026f3100000000");
}

TEST(PlainMember, OfADerivedTypeHasTheDefaultsOfItsOwn) {
  namespace Profiles = MaintenanceUnitProfile;
  Plain<Profiles::ConfigDir> writer(Profiles::configDirFactory("profiles"));
  writer.freeIs(0);
  writer.entity->configIs("quiet");
  writer.entity->configIs("slow")->onBootDurationIs(77);
  EXPECT_THAT(writer.worked(), testing::UnorderedElementsAre("258", "258", "387"));
}

TEST(PlainMember, IsComparedWithOneThatIsMadeFromTheSameArguments) {
  Plain<Nested::Folder> writer(Zel::makeObject<Nested::Folder>("root"));
  writer.freeIs(0);
  writer.entity->folderIs("untouched");
  EXPECT_EQ(writer.worked(), Briefs{"258"});
  writer.freeIs(0);
  const Ptr<Nested::Folder> folder(writer.entity->folderIs("touched").ptr());
  folder->lengthIs(9); // and not the 7 that its name has
  folder->tagIs("draft", false);
  folder->tagDel("new");
  folder->tagIs("mine", true);
  const auto seen = writer.seenWorked();
  EXPECT_EQ(seen[0].attr, 258);
  Briefs own = briefs(seen, writer.idOf(folder));
  EXPECT_EQ(own.front(), "259");
  EXPECT_THAT(own, testing::UnorderedElementsAre("259", "260", "260", "-260"));
}

TEST(PlainMember, ThatIsADirectoryIsNotWalkedEither) {
  Plain<Nested::Folder> writer(Zel::makeObject<Nested::Folder>("root"));
  writer.freeIs(0);
  const Ptr<Nested::Folder> folder(writer.entity->folderIs("a").ptr());
  const Ptr<Nested::Folder> inner(folder->folderIs("b").ptr());
  inner->folderIs("c")->tagIs("mine", true);
  const auto seen = writer.seenWorked();
  EXPECT_EQ(briefs(seen), (Briefs{"258", "258", "258", "260"}));
  EXPECT_EQ(seen[1].entity, writer.idOf(folder));
  EXPECT_EQ(seen[2].entity, writer.idOf(inner));
  EXPECT_EQ(seen[3].entity, writer.idOf(inner->folder("c")));
}

/// Two ends that may both write.
struct BothMayWrite : testing::Test {
  BothMayWrite() {
    pair.here->demuxer()->exportIs(dir);
    pair.settle();
    mirrors = pair.mirror<StatusDir>("units");
    Pair::adapterOf(dir, pair.here)->root()->sendsPlainIs(true);
    Pair::adapterOf(mirrors, pair.there)->root()->sendsPlainIs(true);
  }
  Pair pair;
  const Ptr<StatusDir> dir = statusDirFactory("units");
  Ptr<StatusDir> mirrors;
};

/// Writes to a member as soon as it is told of it.
class Policy : public StatusDir::Notifiee {
public:
  using StatusDir::Notifiee::onStatus;
  void onStatus(Zel::Name unit) override {
    if (const auto made = notifier()->status(unit)) {
      made->genIdIs(9);
      made->groupIs(key("answer"), true);
      made->historyIs(1.0, "answer");
    }
  }
};

TEST_F(BothMayWrite, WhatThePeersProgramWritesInAnswerStands) {
  const auto policy = Zel::makeObject<Policy>();
  policy->isRegisteredNotifieeIs(true);
  policy->notifierIs(mirrors);
  fill(*pair.here, 0);
  const Ptr<Status> unit(dir->statusIs("System").ptr());
  unit->stateIs(active);
  unit->groupIs(key("made"), true);
  pair.settle();
  const auto mirror = mirrors->status("System");
  ASSERT_TRUE(mirror);
  for (const auto& end : {unit, mirror}) {
    EXPECT_EQ(end->genId(), 9U);
    EXPECT_EQ(end->state(), active);
    EXPECT_EQ(end->groupMap().count(), 2U);
    EXPECT_EQ(end->history(1.0), "answer");
  }
  EXPECT_EQ(Zel::stateDigest(*dir), Zel::stateDigest(*mirrors));
}

TEST_F(BothMayWrite, WhatIsAnnouncedByBothIsSentPlainlyUnderTheOtherId) {
  dir->statusIs("System")->stateIs(active);
  mirrors->statusIs("System")->genIdIs(7);
  const auto mirror = mirrors->status("System");
  mirror->groupIs(key("mine"), true);
  Pair::move(*pair.here, *pair.there);
  taken(*pair.there); // what went out under the mirror's id
  pair.there->service();
  EXPECT_THAT(briefs(records(*pair.there)), testing::ElementsAre("260", "274"));
}

} // namespace
