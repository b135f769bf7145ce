#include "GenericFixture.h"

namespace {

using namespace TestGeneric;
using namespace Maintenance;
using Group::GroupKey;
using Unit::Status;
using Vexil::IntfId;

constexpr Zel::AttributeId group = Status::Attr::group;
constexpr Zel::AttributeId history = Status::Attr::history;
constexpr Zel::AttributeId interfaces = Status::Attr::intfsViolatingTrafficThreshold;

const GroupKey peers(Group::groupTypeBgp, "peers");
const GroupKey ports(Group::groupTypeInterface, "ports");

class PlainCollection : public testing::Test {
protected:
  const Ptr<Status> unit = Unit::statusFactory("System");
  const Handle object = Zel::generic(unit);
  const Handle constant = Zel::generic(unit, true);
};

TEST_F(PlainCollection, TellsItsCountAndVersion) {
  EXPECT_EQ(Zel::count(object, group), 0U);
  unit->groupIs(peers, true);
  unit->groupIs(ports, true);
  unit->groupDel(ports);
  EXPECT_EQ(Zel::count(object, group), 1U);
  EXPECT_EQ(Zel::value<unsigned>(attributeOp(object, group, Op::opVersion)),
            unit->groupMap().mapVersion());
  unit->historyIs(1.0, "line");
  EXPECT_EQ(Zel::count(object, history), 1U);
  EXPECT_EQ(Zel::value<unsigned>(attributeOp(object, history, Op::opVersion)),
            unit->historyMap().treeVersion());
}

TEST_F(PlainCollection, IgnoresWhateverComesWithTheseTwo) {
  unit->groupIs(peers, true);
  const Handle odd = Zel::generic(1U);
  EXPECT_EQ(Zel::value<unsigned>(attributeOp(object, group, Op::opCount, odd, odd)), 1U);
  EXPECT_EQ(Zel::value<unsigned>(attributeOp(object, group, Op::opVersion, odd, odd)), 1U);
}

TEST_F(PlainCollection, YieldsTheDefaultForAKeyThatIsNotThere) {
  EXPECT_FALSE(Zel::readMember<bool>(object, group, peers));
  EXPECT_FALSE(Zel::exists(object, group, peers));
  EXPECT_FALSE(Zel::value<bool>(Zel::deleteMember(object, group, peers)));
  EXPECT_EQ(Zel::readMember<Zel::String8>(object, history, 1.0), "");
  EXPECT_EQ(Zel::value<Zel::String8>(Zel::deleteMember(object, history, 1.0)), "");
}

TEST_F(PlainCollection, IsWrittenReadAndDeletedByKey) {
  Zel::setMember(object, group, peers, true);
  Zel::setMember(object, group, ports, false);
  Zel::setMember(object, history, 2.5, "line");
  Zel::setMember(object, interfaces, IntfId("Vlan7"), true);
  EXPECT_TRUE(unit->group(peers));
  EXPECT_EQ(unit->history(2.5), "line");
  EXPECT_TRUE(unit->intfsViolatingTrafficThreshold(IntfId("Vlan7")));
  EXPECT_TRUE(Zel::readMember<bool>(object, group, peers));
  EXPECT_FALSE(Zel::readMember<bool>(object, group, ports));
  EXPECT_TRUE(Zel::exists(object, group, ports));
  EXPECT_EQ(Zel::readMember<Zel::String8>(object, history, 2.5), "line");
  EXPECT_TRUE(Zel::value<bool>(Zel::deleteMember(object, group, peers)));
  EXPECT_FALSE(Zel::value<bool>(Zel::deleteMember(object, group, ports))) << "the value it held";
  EXPECT_EQ(Zel::value<Zel::String8>(Zel::deleteMember(object, history, 2.5)), "line");
  EXPECT_EQ(Zel::count(object, group), 0U);
  EXPECT_EQ(Zel::count(object, history), 0U);
}

TEST_F(PlainCollection, YieldsNothingAtAWrite) {
  EXPECT_EQ(attributeOp(object, group, Op::opWrite, Zel::generic(peers), Zel::generic(true)),
            nullptr);
}

TEST_F(PlainCollection, HandsOnWhetherTheObjectIsConst) {
  EXPECT_TRUE(Zel::readMember(constant, group, peers)->isConst());
  EXPECT_TRUE(attributeOp(constant, group, Op::opCount)->isConst());
  EXPECT_FALSE(Zel::readMember(object, group, peers)->isConst());
  EXPECT_FALSE(Zel::deleteMember(object, group, peers)->isConst());
}

TEST_F(PlainCollection, CountsReadsOfMembersAlone) {
  unit->groupIs(peers, true);
  const Handle key = Zel::generic(peers);
  const auto moves = [&](Op::OpId op, const Handle& value = nullptr) {
    return movesOf(*unit, [&] { attributeOp(object, group, op, key, value); });
  };
  EXPECT_EQ(moves(Op::opRead), (Moves{0, 1}));
  EXPECT_EQ(moves(Op::opCount), (Moves{0, 0}));
  EXPECT_EQ(moves(Op::opVersion), (Moves{0, 0}));
  EXPECT_EQ(moves(Op::opExists), (Moves{0, 0}));
  EXPECT_EQ(moves(Op::opWrite, Zel::generic(true)), (Moves{0, 0}));
  EXPECT_EQ(moves(Op::opWrite, Zel::generic(false)), (Moves{1, 0}));
  EXPECT_EQ(moves(Op::opDelete), (Moves{1, 0}));
}

TEST_F(PlainCollection, NeedsAKey) {
  const auto with = [&](Zel::AttributeId id, Op::OpId op) {
    return messageOf<Zel::TypeException>(
        [&] { attributeOp(object, id, op, nullptr, Zel::generic(true)); });
  };
  for (const Zel::AttributeId id : {group, history, interfaces}) {
    for (const Op::OpId op : {Op::opRead, Op::opExists, Op::opWrite, Op::opDelete}) {
      EXPECT_EQ(with(id, op), "argument missing or of the wrong type: zel_index");
    }
  }
}

TEST_F(PlainCollection, NeedsAKeyOfItsTypeAndAValueOfItsType) {
  EXPECT_EQ(messageOf<Zel::TypeException>([&] { Zel::readMember(object, group, "peers"); }),
            "argument missing or of the wrong type: String");
  EXPECT_EQ(messageOf<Zel::TypeException>([&] { Zel::readMember(object, history, 1U); }),
            "argument missing or of the wrong type: U32");
  EXPECT_EQ(messageOf<Zel::TypeException>(
                [&] { attributeOp(object, group, Op::opWrite, Zel::generic(peers)); }),
            "argument missing or of the wrong type: group");
  EXPECT_EQ(messageOf<Zel::TypeException>([&] { Zel::setMember(object, group, peers, 1U); }),
            "argument missing or of the wrong type: U32");
  EXPECT_EQ(messageOf<Zel::TypeException>([&] { Zel::setMember(object, group, 2U, 1ULL); }),
            "argument missing or of the wrong type: U32")
      << "the key comes first";
  EXPECT_EQ(Zel::count(object, group), 0U);
}

TEST_F(PlainCollection, HasNoOtherOperations) {
  EXPECT_EQ(messageOf<Zel::OpNotSupportedException>(
                [&] { attributeOp(object, group, Op::opEquals, Zel::generic(peers)); }),
            "operation 100 not supported on group");
  EXPECT_EQ(messageOf<Zel::OpNotSupportedException>(
                [&] { attributeOp(object, history, static_cast<Op::OpId>(130)); }),
            "operation 130 not supported on history");
}

TEST_F(PlainCollection, OfAConstObjectIsNotWritten) {
  for (const Op::OpId op : {Op::opWrite, Op::opDelete}) {
    EXPECT_EQ(messageOf<Zel::ConstException>([&] { attributeOp(constant, group, op); }),
              "attempting to modify a const instance");
  }
}

TEST_F(PlainCollection, IsWrittenThoughAListenerLetsGoOfTheObject) {
  Log log;
  Listener listener(log);
  Handle only = told(Zel::generic(Unit::statusFactory("gone")), listener);
  listener.onCall = [&](Zel::GenericIfEntity&) { only = nullptr; };
  GenericIf& raw = *only;
  raw.attributeOp({group, Op::opWrite}, Zel::generic(peers), Zel::generic(true));
  EXPECT_EQ(only, nullptr);
  EXPECT_EQ(log.size(), 1U);
}

const Profile::ProfileKey drain(Profile::profileTypeBgp, "drain");
const Profile::ProfileKey slow(Profile::profileTypeUnit, "slow");

class Directory : public testing::Test {
protected:
  static constexpr Zel::AttributeId config = 258;
  const Ptr<Profile::ConfigDir> dir = Profile::configDirFactory("profiles");
  const Handle object = Zel::generic(dir);
  const Handle constant = Zel::generic(dir, true);

  /// The member that a generic object stands for.
  static Zel::PtrInterface* memberOf(const Handle& member) {
    return static_cast<Zel::PtrInterface*>(
        member->voidPtrIs(Ptr<const Zel::ZelType>(Zel::PtrInterface::_fwkType())));
  }
};

TEST_F(Directory, MakesAMemberOnceForItsKey) {
  const Handle made = Zel::createMember(object, config, drain);
  EXPECT_EQ(made->type()->name(), "Config");
  EXPECT_EQ(memberOf(made), dir->config(drain).ptr());
  EXPECT_FALSE(made->isConst());
  const Handle again = Zel::createMember(object, config, drain);
  EXPECT_EQ(memberOf(again), memberOf(made));
  EXPECT_NE(again, made);
  EXPECT_EQ(Zel::count(object, config), 1U);
}

TEST_F(Directory, MakesUnitsByTheirNames) {
  const auto units = Unit::statusDirFactory("units");
  const Handle all = Zel::generic(units);
  const Handle made = Zel::createMember(all, 258, Zel::Name("System"));
  Zel::writeAttribute(made, 262, Unit::active);
  EXPECT_EQ(units->status("System")->state(), Unit::active);
  EXPECT_EQ(messageOf<Zel::TypeException>([&] { Zel::createMember(all, 258, nullptr); }),
            "argument missing or of the wrong type: name");
  EXPECT_EQ(messageOf<Zel::TypeException>([&] { Zel::createMember(all, 258); }),
            "argument missing or of the wrong type: name");
  EXPECT_EQ(messageOf<Zel::TypeException>([&] { Zel::createMember(all, 258, "System"); }),
            "argument missing or of the wrong type: String");
}

TEST_F(Directory, ReadsAMemberByKey) {
  dir->configIs(drain);
  const Handle member = Zel::readMember(object, config, drain);
  EXPECT_EQ(memberOf(member), dir->config(drain).ptr());
  EXPECT_FALSE(member->isConst());
  EXPECT_TRUE(Zel::readMember(constant, config, drain)->isConst());
  EXPECT_EQ(Zel::readAttribute<Profile::ProfileKey>(member, 258), drain);
}

TEST_F(Directory, YieldsNullForAKeyThatIsNotThere) {
  EXPECT_EQ(Zel::readMember(object, config, drain), nullptr);
  EXPECT_EQ(Zel::deleteMember(object, config, drain), nullptr);
  EXPECT_FALSE(Zel::exists(object, config, drain));
}

TEST_F(Directory, DeletesAMemberAndYieldsIt) {
  const Ptr<Profile::Config> member = dir->configIs(drain);
  EXPECT_TRUE(Zel::exists(object, config, drain));
  const Handle deleted = Zel::deleteMember(object, config, drain);
  EXPECT_EQ(memberOf(deleted), member.ptr());
  EXPECT_EQ(dir->config(drain), nullptr);
  EXPECT_EQ(member->parent(), nullptr);
}

TEST_F(Directory, TellsItsCountAndVersion) {
  dir->configIs(drain);
  dir->configIs(slow);
  const Handle odd = Zel::generic(1U);
  EXPECT_EQ(Zel::value<unsigned>(attributeOp(object, config, Op::opCount, odd, odd)), 2U);
  EXPECT_EQ(Zel::value<unsigned>(attributeOp(object, config, Op::opVersion, odd, odd)),
            dir->configMap().mapVersion());
}

TEST_F(Directory, CountsReadsOfMembersAlone) {
  dir->configIs(drain);
  const Handle key = Zel::generic(drain);
  const auto moves = [&](Op::OpId op) {
    return movesOf(*dir, [&] { attributeOp(object, config, op, key); });
  };
  EXPECT_EQ(moves(Op::opRead), (Moves{0, 1}));
  EXPECT_EQ(moves(Op::opCount), (Moves{0, 0}));
  EXPECT_EQ(moves(Op::opExists), (Moves{0, 0}));
  EXPECT_EQ(moves(Op::opDelete), (Moves{1, 0}));
}

TEST_F(Directory, NeedsAKeyByItsName) {
  for (const Op::OpId op : {Op::opRead, Op::opExists, Op::opDelete}) {
    EXPECT_EQ(messageOf<Zel::TypeException>([&] { attributeOp(object, config, op); }),
              "argument missing or of the wrong type: key");
    EXPECT_EQ(messageOf<Zel::TypeException>(
                  [&] { attributeOp(Zel::generic(Unit::statusDirFactory("units")), 258, op); }),
              "argument missing or of the wrong type: name");
    EXPECT_EQ(messageOf<Zel::TypeException>(
                  [&] { attributeOp(object, config, op, Zel::generic("drain")); }),
              "argument missing or of the wrong type: String");
  }
}

TEST_F(Directory, TakesNoIndexWhereItMakesAMember) {
  EXPECT_EQ(messageOf<Zel::BadIndexAttrException>([&] {
              attributeOp(object, config, Op::opWrite, Zel::generic(drain), Zel::arguments(drain));
            }),
            "attribute takes no index: config");
  EXPECT_EQ(dir->configMap().count(), 0U);
}

TEST_F(Directory, MakesAMemberFromAListAlone) {
  const char* const refusal = "argument missing or of the wrong type: Zel::GenericIf::List_";
  EXPECT_EQ(messageOf<Zel::TypeException>([&] { attributeOp(object, config, Op::opWrite); }),
            refusal);
  EXPECT_EQ(messageOf<Zel::TypeException>(
                [&] { attributeOp(object, config, Op::opWrite, nullptr, Zel::generic(drain)); }),
            refusal);
}

TEST_F(Directory, MakesNoMemberFromTooFewOrTooManyArguments) {
  EXPECT_EQ(messageOf<Zel::TypeException>([&] { Zel::createMember(object, config, nullptr); }),
            "argument missing or of the wrong type: key");
  EXPECT_EQ(messageOf<Zel::TypeException>([&] { Zel::createMember(object, config); }),
            "argument missing or of the wrong type: key");
  EXPECT_EQ(
      messageOf<Zel::UnknownArgException>([&] { Zel::createMember(object, config, drain, 1U); }),
      "too many arguments: config");
  EXPECT_EQ(messageOf<Zel::UnknownArgException>(
                [&] { Zel::createMember(object, config, drain, nullptr); }),
            "too many arguments: config");
  EXPECT_EQ(dir->configMap().count(), 0U);
}

TEST_F(Directory, LeavesTheListOfArgumentsAsItWas) {
  const Handle list = Zel::arguments(drain);
  attributeOp(object, config, Op::opWrite, nullptr, list);
  EXPECT_EQ(textOf(list), std::string("[").append(textOf(Zel::generic(drain))).append("]"));
  EXPECT_EQ(list->references(), 1U);
}

TEST_F(Directory, HasNoOtherOperations) {
  EXPECT_EQ(messageOf<Zel::OpNotSupportedException>(
                [&] { attributeOp(object, config, Op::opEquals, Zel::generic(drain)); }),
            "operation 100 not supported on config");
}

TEST_F(Directory, ThatIsConstMakesAndDeletesNothing) {
  dir->configIs(drain);
  EXPECT_EQ(messageOf<Zel::ConstException>([&] { Zel::createMember(constant, config, slow); }),
            "attempting to modify a const instance");
  EXPECT_EQ(messageOf<Zel::ConstException>([&] { Zel::deleteMember(constant, config, drain); }),
            "attempting to modify a const instance");
  EXPECT_EQ(dir->configMap().count(), 1U);
}

} // namespace
