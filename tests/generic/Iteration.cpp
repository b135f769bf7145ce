#include "IterationFixture.h"

#include <algorithm>

namespace {

using namespace TestGeneric;
using namespace Maintenance;
using Group::GroupKey;
using Unit::Status;
using At = GenericIf::AttributeIteratorConst;

TEST_F(Iteration, OfAnEmptyCollectionIsAtItsEndAtOnce) {
  for (const Zel::AttributeId id : {group, history, interfaces}) {
    const At at = object->attributeIteratorConst(id);
    EXPECT_FALSE(object->attributeIterator_nonNull(at));
    EXPECT_EQ(object->attributeIterator_iterObj(at), nullptr);
    EXPECT_EQ(object->attributeIterator_iterKey(at), nullptr);
    EXPECT_EQ(at.genericIf(), object);
    EXPECT_EQ(at.attributeId(), id);
  }
}

TEST_F(Iteration, VisitsAllInTheOrderOfTheCollection) {
  groupsIs(100);
  EXPECT_EQ(keysFrom<GroupKey>(object->attributeIteratorConst(group)), groups());
  EXPECT_EQ(groups().size(), 100U);
}

TEST_F(Iteration, VisitsHistoryFromTheOldestOn) {
  for (const double time : {3.0, -1.0, 2.0, 10.0}) {
    unit->historyIs(time, "line");
  }
  EXPECT_EQ(keysFrom<double>(object->attributeIteratorConst(history)),
            (std::vector{-1.0, 2.0, 3.0, 10.0}));
}

TEST_F(Iteration, YieldsTheStoredValues) {
  unit->groupIs(groupKey(1), false);
  unit->historyIs(1.5, "line");
  unit->intfsViolatingTrafficThresholdIs(Vexil::IntfId("Vlan7"), true);
  EXPECT_FALSE(Zel::value<bool>(object->attributeIteratorConst(group).obj()));
  EXPECT_EQ(Zel::value<Zel::String8>(object->attributeIteratorConst(history).obj()), "line");
  EXPECT_TRUE(Zel::value<bool>(object->attributeIteratorConst(interfaces).obj()));
  EXPECT_EQ(Zel::value<Vexil::IntfId>(object->attributeIteratorConst(interfaces).key()),
            Vexil::IntfId("Vlan7"));
}

TEST_F(Iteration, CountsNoReads) {
  groupsIs(3);
  EXPECT_EQ(movesOf(*unit,
                    [&] {
                      for (At at = object->attributeIteratorConst(group); at; ++at) {
                        at.key();
                        at.obj();
                      }
                    }),
            (Moves{0, 0}));
}

TEST_F(Iteration, YieldsKeysThatAreConstWhateverTheObject) {
  groupsIs(1);
  const At at = object->attributeIteratorConst(group);
  const Handle key = const_cast<GenericIf&>(*at.key()).clone();
  EXPECT_TRUE(at.key()->isConst());
  EXPECT_EQ(messageOf<Zel::ConstException>([&] { attributeOp(key, 2, Op::opWrite); }),
            "attempting to modify a const instance");
}

TEST_F(Iteration, YieldsValuesOfTheObjectsFlavour) {
  groupsIs(1);
  EXPECT_FALSE(object->attributeIteratorConst(group).obj()->isConst());
  EXPECT_TRUE(constant->attributeIteratorConst(group).obj()->isConst());
}

TEST_F(Iteration, OfADirectoryYieldsItsMembers) {
  const auto dir = Unit::statusDirFactory("units");
  dir->statusIs("a");
  dir->statusIs("b");
  const Handle units = Zel::generic(dir);
  Log log;
  for (At at = units->attributeIteratorConst(258); at; ++at) {
    const Ptr<const GenericIf> member = at.obj();
    EXPECT_EQ(member->type()->name(), "Status");
    EXPECT_FALSE(member->isConst());
    EXPECT_EQ(member->voidPtrIs(Ptr<const Zel::ZelType>(Status::_fwkType())),
              dir->status(Zel::value<Zel::Name>(at.key())).ptr());
    log.push_back(textOf(at.key()));
  }
  std::sort(log.begin(), log.end());
  EXPECT_EQ(log, (Log{"'a'", "'b'"}));
  EXPECT_TRUE(Zel::generic(dir, true)->attributeIteratorConst(258).obj()->isConst());
}

TEST_F(Iteration, MayWriteThroughTheMembersOfAWritableIterator) {
  const auto dir = Unit::statusDirFactory("units");
  dir->statusIs("a");
  const Handle units = Zel::generic(dir);
  const GenericIf::AttributeIterator at = units->attributeIterator(258);
  Zel::writeAttribute(at.obj(), 262, Unit::active);
  EXPECT_EQ(dir->status("a")->state(), Unit::active);
  const auto there = units->attributeIteratorKey(258, Zel::generic(Zel::Name("a")));
  Zel::writeAttribute(there.obj(), 262, Unit::failedExit);
  EXPECT_EQ(dir->status("a")->state(), Unit::failedExit);
}

TEST_F(Iteration, BeginsAtAKey) {
  groupsIs(50);
  const std::vector<GroupKey> all = groups();
  for (std::size_t place = 0; place < all.size(); ++place) {
    const At at = object->attributeIteratorKeyConst(group, Zel::generic(all[place]));
    EXPECT_EQ(keysFrom<GroupKey>(at),
              std::vector<GroupKey>(all.begin() + static_cast<std::ptrdiff_t>(place), all.end()));
  }
}

TEST_F(Iteration, OfAHashCollectionIsAtItsEndForAKeyThatIsNotThere) {
  groupsIs(50);
  for (int number = 50; number < 150; ++number) {
    const At at = object->attributeIteratorKeyConst(group, Zel::generic(groupKey(number)));
    EXPECT_FALSE(at);
    EXPECT_EQ(at.key(), nullptr);
    EXPECT_EQ(at.obj(), nullptr);
  }
}

TEST_F(Iteration, OfHistoryBeginsAtTheNextKey) {
  for (const double time : {1.0, 2.0, 3.0}) {
    unit->historyIs(time, "line");
  }
  const auto from = [&](double time) {
    return keysFrom<double>(object->attributeIteratorKeyConst(history, Zel::generic(time)));
  };
  EXPECT_EQ(from(2.0), (std::vector{2.0, 3.0}));
  EXPECT_EQ(from(1.5), (std::vector{2.0, 3.0}));
  EXPECT_EQ(from(0.0), (std::vector{1.0, 2.0, 3.0}));
  EXPECT_EQ(from(3.5), std::vector<double>());
}

TEST_F(Iteration, NeedsAKeyOfItsType) {
  const auto with = [&](Zel::AttributeId id, const Handle& key) {
    return messageOf<Zel::TypeException>([&] { object->attributeIteratorKeyConst(id, key); });
  };
  EXPECT_EQ(with(group, nullptr), "argument missing or of the wrong type: zel_index");
  EXPECT_EQ(with(history, nullptr), "argument missing or of the wrong type: zel_index");
  EXPECT_EQ(with(group, Zel::generic("x")), "argument missing or of the wrong type: String");
  EXPECT_EQ(
      messageOf<Zel::TypeException>([&] {
        Zel::generic(Unit::statusDirFactory("units"))->attributeIteratorKeyConst(258, nullptr);
      }),
      "argument missing or of the wrong type: name");
}

TEST_F(Iteration, NeedsACollection) {
  for (const Zel::AttributeId id : {262, 258, 275, 0, 154}) {
    EXPECT_EQ(messageOf<Zel::UnknownAttrException>([&] { object->attributeIteratorConst(id); }),
              "unknown attribute of Status: " + std::to_string(id));
    EXPECT_EQ(messageOf<Zel::UnknownAttrException>(
                  [&] { object->attributeIteratorKeyConst(id, nullptr); }),
              "unknown attribute of Status: " + std::to_string(id));
    EXPECT_EQ(messageOf<Zel::UnknownAttrException>([&] { object->attributeIterator(id); }),
              "unknown attribute of Status: " + std::to_string(id));
  }
}

} // namespace
