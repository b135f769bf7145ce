// Members that have left their directory and are held by somebody still, with much owed; and
// members that cannot be announced at the first try.

#include "Log.h"
#include "Pair.h"

#include <foreign/model/Product.h>

#include <gmock/gmock.h>

namespace {

using namespace Maintenance::Unit;
using namespace Wiretap;
using testing::IsEmpty;

struct MembersGone : testing::Test {
  MembersGone() {
    for (int i = 0; i < 20; ++i) {
      unit->historyIs(i, "line");
      unit->groupIs(Group::GroupKey(Group::groupTypeBgp, String8(std::to_string(i))), true);
    }
    writer.worked();
    adapter = writer.adapter->statusNboAttrLogAdapter(unit);
  }
  const Demuxer& demuxer() const { return *writer.connection->demuxer(); }

  Writer<StatusDir> writer{statusDirFactory("units")};
  const Ptr<StatusDir> dir = writer.entity;
  const Ptr<Status> unit = dir->statusIs("System");
  Ptr<Adapter> adapter;
};

TEST_F(MembersGone, OneThatNobodyHoldsTakesItsAdapterAlong) {
  Ptr<Status> only = dir->statusIs("other");
  writer.worked();
  EXPECT_EQ(demuxer().adapters(), 3U);
  only = nullptr;
  dir->statusDel("other");
  EXPECT_EQ(demuxer().adapters(), 2U);
  EXPECT_EQ(writer.worked(), Briefs{"-258"});
}

TEST_F(MembersGone, AHeldOneIsNotMirroredAnyMore) {
  dir->statusDel("System");
  EXPECT_EQ(writer.worked(), Briefs{"-258"});
  unit->stateIs(active);
  unit->historyIs(1.0, "after");
  unit->maintEnterInstanceIs("after");
  EXPECT_THAT(writer.worked(), IsEmpty());
  EXPECT_EQ(demuxer().adapters(), 1U);
}

TEST_F(MembersGone, WithSeveralPlainMarksIsPassedOver) {
  writer.freeIs(0);
  unit->stateIs(active);
  unit->reasonIs(srcCli);
  unit->genIdIs(5);
  dir->statusDel("System");
  EXPECT_EQ(writer.worked(), Briefs{"-258"});
  EXPECT_EQ(demuxer().adapters(), 1U);
  EXPECT_EQ(demuxer().scheduled() + demuxer().parked(), 0U);
  unit->stateIs(init);
  EXPECT_THAT(writer.worked(), IsEmpty());
}

TEST_F(MembersGone, WithMarkedKeysAndTextsIsPassedOver) {
  writer.freeIs(0);
  unit->groupDel(Group::GroupKey(Group::groupTypeBgp, "3"));
  unit->groupDel(Group::GroupKey(Group::groupTypeBgp, "4"));
  unit->profileNameIs("fast");
  unit->historyDel(3.0);
  unit->historyIs(4.0, "other");
  unit->genIdIs(5);
  dir->statusDel("System");
  EXPECT_EQ(writer.worked(), Briefs{"-258"});
  EXPECT_EQ(demuxer().adapters(), 1U);
}

TEST_F(MembersGone, AndMadeAgainIsAnnouncedBehindItsDeletionThoughThereIsRoom) {
  writer.freeIs(0);
  dir->statusDel("System");
  EXPECT_THAT(writer.sent(), IsEmpty()); // but from here on there is room
  dir->statusIs("System");
  EXPECT_THAT(writer.sent(), IsEmpty());
  EXPECT_EQ(briefs(writer.seenWorked(), writer.adapter->entityId()), (Briefs{"-258", "258"}));
}

TEST_F(MembersGone, BeforeItsFirstWalkIsPassedOver) {
  adapter->doThis();
  dir->statusDel("System");
  const Briefs sent = writer.worked();
  EXPECT_THAT(sent, testing::Contains("-258"));
  EXPECT_EQ(demuxer().adapters(), 1U);
  EXPECT_EQ(demuxer().scheduled() + demuxer().parked(), 0U);
}

TEST_F(MembersGone, InAWalkIsPassedOver) {
  for (int i = 0; i < 200; ++i) {
    unit->historyIs(i, String8(std::string(1000, 'x')));
  }
  writer.worked();
  adapter->doThis();
  writer.connection->service(1); // one run, which is not enough for the history
  EXPECT_TRUE(adapter->flowOut());
  ASSERT_NE(adapter->flowOut()->bookmark(), nullptr);
  dir->statusDel("System");
  writer.worked();
  EXPECT_EQ(demuxer().adapters(), 1U);
}

TEST_F(MembersGone, WithALongTextOnItsWayIsPassedOver) {
  unit->maintEnterInstanceIs(String8(std::string(100000, 'x')));
  EXPECT_EQ(writer.sent(), Briefs{"269+"});
  dir->statusDel("System");
  writer.worked();
  EXPECT_EQ(demuxer().adapters(), 1U);
  EXPECT_EQ(demuxer().scheduled() + demuxer().parked(), 0U);
}

TEST_F(MembersGone, ARecordFromThePeerForOneIsSkipped) {
  const EntityId id = adapter->entityId();
  dir->statusDel("System");
  feed(*writer.connection, letter(id, Status::Attr::state, [](Out& out) { out.put32(1); }));
  EXPECT_EQ(demuxer().counts().unknownEntities, 1U);
  EXPECT_EQ(unit->state(), init);
  EXPECT_EQ(demuxer().adapters(), 1U);
}

TEST_F(MembersGone, OnAMirrorOneThatIsHeldKeepsItsValuesAndNoMore) {
  Pair pair;
  const auto units = statusDirFactory("units");
  units->statusIs("System")->genIdIs(5);
  pair.here->demuxer()->exportIs(units);
  pair.settle();
  const auto mirrors = pair.mirror<StatusDir>("units");
  const auto held = mirrors->status("System");
  units->statusDel("System");
  pair.settle();
  EXPECT_FALSE(mirrors->status("System"));
  EXPECT_EQ(held->genId(), 5U);
  EXPECT_EQ(pair.there->demuxer()->adapters(), 1U);
  held->genIdIs(6);
  units->statusIs("System")->genIdIs(7);
  pair.settle();
  EXPECT_EQ(held->genId(), 6U);
  ASSERT_TRUE(mirrors->status("System"));
  EXPECT_FALSE(mirrors->status("System") == held);
  EXPECT_EQ(mirrors->status("System")->genId(), 7U);
}

TEST_F(MembersGone, OneThatAMirrorHadMadeAndHoldsComesBackUnderItsId) {
  Reader<StatusDir> reader;
  const Ptr<Status> held = reader.entity->statusIs("System");
  const EntityId id = Pair::adapterOf(held, reader.connection)->entityId();
  EXPECT_TRUE(reader.connection->demuxer()->isOwnId(id));
  reader.entity->statusDel("System");
  reader.feed(letter(
      reader.id, 258,
      [&](Out& out) {
        out.putString("System");
        out.putEntityId(id);
      },
      Zel::NboAttrLog::childRecordTag));
  EXPECT_EQ(reader.failure(), "");
  const Ptr<Status> made = reader.entity->status("System");
  ASSERT_TRUE(made);
  EXPECT_FALSE(made == held);
  EXPECT_EQ(Pair::adapterOf(made, reader.connection)->entityId(), id);
  EXPECT_FALSE(Pair::adapterOf(held, reader.connection));
  EXPECT_EQ(reader.connection->demuxer()->adapters(), 2U);
  reader.feed(letter(id, Status::Attr::genId, [](Out& out) { out.put32(5); }));
  EXPECT_EQ(made->genId(), 5U);
  EXPECT_EQ(held->genId(), 0U);
}

/// A product whose first adapters cannot be made.
class Stubborn : public Foreign::Product {
public:
  Stubborn(const Foreign::SkuKey& key, int failures) : Product(key), failures_(failures) {}
  Ptr<Zel::Entity::ZelNboAttrLogSa> zelNboAttrLogSaIs(Wiretap::Flags flags, unsigned option,
                                                      const Ptr<Out>& out,
                                                      Zel::PtrInterface* owner) override {
    ++tries;
    if (failures_-- > 0) {
      throw Zel::AttrLogRecordException("not yet");
    }
    return Product::zelNboAttrLogSaIs(flags, option, out, owner);
  }
  int tries = 0;

private:
  int failures_;
};

TEST(MembersRetried, AFailureOfARecordLeadsToAnotherTryAtOnce) {
  using Foreign::ProductDir;
  Pair pair;
  const auto products = Zel::makeObject<ProductDir>("products");
  pair.here->demuxer()->exportIs(products);
  pair.settle();
  const Foreign::SkuKey key(Foreign::chilled, "milk");
  const auto member = Zel::makeObject<Stubborn>(key, 3);
  const Ptr<Foreign::Product> base(member);
  // As the directory itself would, had it made this one.
  const_cast<ProductDir::ProductMap&>(products->productMap()).newMemberG(base, &key);
  member->parentIs(products);
  products->productNotify(key);
  EXPECT_EQ(member->tries, 4);
  pair.settle();
  ASSERT_TRUE(pair.mirror<ProductDir>("products")->product(key));
  EXPECT_STREQ(pair.here->failure().charPtr(), "");
  products->productDel(key);
  pair.settle();
  EXPECT_FALSE(pair.mirror<ProductDir>("products")->product(key));
}

} // namespace
