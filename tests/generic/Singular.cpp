#include "GenericFixture.h"

namespace {

using namespace TestGeneric;
using namespace Maintenance;
using Unit::Status;

class SingularAttribute : public testing::Test {
protected:
  const Ptr<Status> unit = Unit::statusFactory("System");
  const Handle object = Zel::generic(unit);
  const Handle constant = Zel::generic(unit, true);
};

TEST_F(SingularAttribute, IsReadUnderItsType) {
  unit->stateIs(Unit::failedEnter);
  unit->timeOfStateChangeIs(12.5);
  unit->profileNameIs("drain");
  Unit::TrafficRates rates;
  rates.inBitsRateIs(7);
  unit->aggTrafficRateIs(rates);
  EXPECT_EQ(Zel::readAttribute<Zel::String8>(object, Status::Attr::unitName), "System");
  EXPECT_EQ(Zel::readAttribute<Unit::UnitType>(object, Status::Attr::unitType),
            Unit::userConfigured);
  EXPECT_EQ(Zel::readAttribute<Zel::String8>(object, Status::Attr::profileName), "drain");
  EXPECT_EQ(Zel::readAttribute<Unit::State>(object, Status::Attr::state), Unit::failedEnter);
  EXPECT_EQ(Zel::readAttribute<double>(object, Status::Attr::timeOfStateChange), 12.5);
  EXPECT_EQ(Zel::readAttribute<unsigned>(object, Status::Attr::defaultHistorySize), 12U);
  EXPECT_EQ(Zel::readAttribute<Unit::TrafficRates>(object, Status::Attr::aggTrafficRate), rates);
}

TEST_F(SingularAttribute, ReadsTheNamesOfTheDefaultProfile) {
  const Handle profile = Zel::generic(Profile::defaultProfileFactory("default"));
  EXPECT_EQ(Zel::readAttribute<Zel::String8>(profile, 258), "#DEFAULTPROFILE");
  EXPECT_EQ(Zel::readAttribute<Zel::String8>(profile, 260), "default");
}

TEST_F(SingularAttribute, IsReadWithTheFlavourOfTheObject) {
  EXPECT_FALSE(Zel::readAttribute(object, 262)->isConst());
  EXPECT_TRUE(Zel::readAttribute(constant, 262)->isConst());
}

TEST_F(SingularAttribute, CountsAReadAndNoMore) {
  for (const Zel::AttributeId id : {258, 259, 262, 266, 271, 274}) {
    EXPECT_EQ(movesOf(*unit, [&] { Zel::readAttribute(object, id); }), (Moves{0, 1})) << id;
  }
}

TEST_F(SingularAttribute, IsWrittenThroughTheMutator) {
  EXPECT_EQ(movesOf(*unit,
                    [&] {
                      EXPECT_EQ(attributeOp(object, 262, Op::opWrite, nullptr,
                                            Zel::generic(Unit::active)),
                                nullptr);
                    }),
            (Moves{1, 0}));
  EXPECT_EQ(unit->state(), Unit::active);
  EXPECT_EQ(movesOf(*unit, [&] { Zel::writeAttribute(object, 262, Unit::active); }), (Moves{0, 0}))
      << "the value is there already";
}

TEST_F(SingularAttribute, OfEveryTypeCanBeWritten) {
  Unit::TrafficRates rates;
  rates.outBitsRateIs(9);
  Zel::writeAttribute(object, 259, Unit::builtin);
  Zel::writeAttribute(object, 261, "drain");
  Zel::writeAttribute(object, 263, Unit::srcCli);
  Zel::writeAttribute(object, 264, 1.5);
  Zel::writeAttribute(object, 265, 2.5);
  Zel::writeAttribute(object, 267, 5U);
  Zel::writeAttribute(object, 269, "a#1");
  Zel::writeAttribute(object, 270, "b#2");
  Zel::writeAttribute(object, 271, rates);
  Zel::writeAttribute(object, 273, 6U);
  Zel::writeAttribute(object, 274, 7U);
  EXPECT_EQ(unit->unitType(), Unit::builtin);
  EXPECT_EQ(unit->profileName(), "drain");
  EXPECT_EQ(unit->reason(), Unit::srcCli);
  EXPECT_EQ(unit->timeOfStateChange(), 1.5);
  EXPECT_EQ(unit->onBootMaintExitTime(), 2.5);
  EXPECT_EQ(unit->historySize(), 5U);
  EXPECT_EQ(unit->maintEnterInstance(), "a#1");
  EXPECT_EQ(unit->maintExitInstance(), "b#2");
  EXPECT_EQ(unit->aggTrafficRate(), rates);
  EXPECT_EQ(unit->totalIntfTrafficViolations(), 6U);
  EXPECT_EQ(unit->genId(), 7U);
  EXPECT_EQ(unit->versionCounter(), 11U);
}

TEST_F(SingularAttribute, TakesNoIndexWhateverTheOperation) {
  for (const int op : {0, 1, 2, 3, 77, 100, 128, 129}) {
    EXPECT_EQ(messageOf<Zel::BadIndexAttrException>([&] {
                attributeOp(object, 262, static_cast<Op::OpId>(op), Zel::generic(1U),
                            Zel::generic(Unit::active));
              }),
              "attribute takes no index: state");
  }
  EXPECT_EQ(unit->state(), Unit::init) << "nothing was written";
}

TEST_F(SingularAttribute, RefusesAWriteWithoutAValueOrWithAnother) {
  EXPECT_EQ(messageOf<Zel::TypeException>([&] { attributeOp(object, 262, Op::opWrite); }),
            "argument missing or of the wrong type: state");
  EXPECT_EQ(messageOf<Zel::TypeException>([&] { Zel::writeAttribute(object, 262, Unit::builtin); }),
            "argument missing or of the wrong type: UnitType");
  EXPECT_EQ(messageOf<Zel::TypeException>([&] { Zel::writeAttribute(object, 262, object); }),
            "argument missing or of the wrong type: Status");
  EXPECT_EQ(unit->versionCounter(), 0U);
}

TEST_F(SingularAttribute, HasNoOtherOperations) {
  const auto with = [&](Zel::AttributeId id, int op) {
    return messageOf<Zel::OpNotSupportedException>(
        [&] { attributeOp(object, id, static_cast<Op::OpId>(op)); });
  };
  EXPECT_EQ(with(262, Op::opCount), "operation 1 not supported on state");
  EXPECT_EQ(with(262, Op::opVersion), "operation 2 not supported on state");
  EXPECT_EQ(with(262, Op::opExists), "operation 3 not supported on state");
  EXPECT_EQ(with(262, Op::opEquals), "operation 100 not supported on state");
  EXPECT_EQ(with(262, Op::opDelete), "operation 129 not supported on state");
  EXPECT_EQ(with(262, -1), "operation -1 not supported on state");
}

TEST_F(SingularAttribute, ThatIsNoneToWriteIsNotWritten) {
  const auto write = [&](Zel::AttributeId id) {
    return messageOf<Zel::OpNotSupportedException>([&] { attributeOp(object, id, Op::opWrite); });
  };
  EXPECT_EQ(write(258), "operation 128 not supported on unitName");
  EXPECT_EQ(write(266), "operation 128 not supported on defaultHistorySize");
  const Handle profile = Zel::generic(Profile::defaultProfileFactory("default"));
  EXPECT_EQ(
      messageOf<Zel::OpNotSupportedException>([&] { Zel::writeAttribute(profile, 258, "mine"); }),
      "operation 128 not supported on systemDefaultProfileName");
}

TEST_F(SingularAttribute, OfAConstObjectIsRefusedBeforeAnythingElse) {
  const char* const refusal = "attempting to modify a const instance";
  const auto with = [&](Zel::AttributeId id, int op) {
    return messageOf<Zel::ConstException>(
        [&] { attributeOp(constant, id, static_cast<Op::OpId>(op), Zel::generic(1U)); });
  };
  EXPECT_EQ(with(262, Op::opWrite), refusal);
  EXPECT_EQ(with(258, Op::opWrite), refusal);
  EXPECT_EQ(with(275, Op::opWrite), refusal);
  EXPECT_EQ(with(0, Op::opDelete), refusal);
  EXPECT_EQ(with(154, Op::opWrite), refusal);
  EXPECT_EQ(with(262, 1000), refusal);
  EXPECT_EQ(unit->versionCounter(), 0U);
}

TEST_F(SingularAttribute, PassesTheRefusalOfAConstObjectOn) {
  const Handle dir = Zel::generic(Unit::statusDirFactory("units"));
  Zel::createMember(dir, 258, Zel::Name("System"));
  const Handle seen = Zel::generic(Ptr<const Unit::StatusDir>(static_cast<Unit::StatusDir*>(
      dir->voidPtrIs(Ptr<const Zel::ZelType>(Unit::StatusDir::_fwkType())))));
  const Handle member = Zel::readMember(seen, 258, Zel::Name("System"));
  EXPECT_TRUE(member->isConst());
  EXPECT_EQ(messageOf<Zel::ConstException>([&] { Zel::writeAttribute(member, 262, Unit::active); }),
            "attempting to modify a const instance");
}

TEST_F(SingularAttribute, ThatNobodyKnowsIsUnknown) {
  const auto with = [&](Zel::AttributeId id, Op::OpId op) {
    return messageOf<Zel::UnknownAttrException>([&] { attributeOp(object, id, op); });
  };
  EXPECT_EQ(with(275, Op::opRead), "unknown attribute of Status: 275");
  EXPECT_EQ(with(275, Op::opWrite), "unknown attribute of Status: 275");
  EXPECT_EQ(with(257, Op::opRead), "unknown attribute of Status: 257");
  EXPECT_EQ(with(-1, Op::opRead), "unknown attribute of Status: -1");
  EXPECT_EQ(messageOf<Zel::UnknownAttrException>([&] {
              attributeOp(Zel::generic(Unit::statusDirFactory("units")), 0, Op::opEquals, object);
            }),
            "unknown attribute of StatusDir: 0");
}

TEST_F(SingularAttribute, OfNoObjectIsAnInternalFailure) {
  const Handle none = Status::_fwkType()->genericIf_(nullptr, false);
  const auto with = [&](Zel::AttributeId id, Op::OpId op) {
    return messageOf<Zel::InternalException>(
        [&] { attributeOp(none, id, op, nullptr, Zel::generic(Unit::active)); });
  };
  EXPECT_EQ(with(262, Op::opRead), "generic object of no object");
  EXPECT_EQ(with(262, Op::opWrite), "generic object of no object");
  EXPECT_EQ(with(260, Op::opCount), "generic object of no object");
  EXPECT_EQ(with(0, Op::opRead), "generic object of no object");
  EXPECT_EQ(with(130, Op::opRead), "generic object of no object");
  EXPECT_EQ(messageOf<Zel::InternalException>(
                [&] { none->attributeIteratorKeyConst(260, Zel::generic(Group::GroupKey())); }),
            "generic object of no object");
  EXPECT_EQ(messageOf<Zel::UnknownAttrException>([&] { attributeOp(none, 275, Op::opRead); }),
            "unknown attribute of Status: 275");
}

class FrameworkAttribute : public SingularAttribute {};

TEST_F(FrameworkAttribute, IsRead) {
  EXPECT_EQ(Zel::readAttribute<Zel::Name>(object, 0), "System");
  EXPECT_EQ(Zel::readAttribute<Zel::Name>(object, 130), "System");
  EXPECT_EQ(Zel::readAttribute<bool>(object, 154), unit->zelHasAttrLogInterface());
  EXPECT_TRUE(Zel::readAttribute(constant, 130)->isConst());
  const Profile::ProfileKey key(Profile::profileTypeBgp, "drain");
  const auto dir = Profile::configDirFactory("profiles");
  const Handle config = Zel::generic(dir->configIs(key));
  EXPECT_EQ(Zel::readAttribute<Profile::ProfileKey>(config, 0), key);
  EXPECT_EQ(Zel::readAttribute<Zel::Name>(config, 130), "");
}

TEST_F(FrameworkAttribute, CountsARead) {
  for (const Zel::AttributeId id : {0, 130, 154}) {
    EXPECT_EQ(movesOf(*unit, [&] { Zel::readAttribute(object, id); }), (Moves{0, 1})) << id;
  }
}

TEST_F(FrameworkAttribute, TakesNoIndexAndNoWrite) {
  const char* const names[] = {"fwkKey", "name", "zelHasAttrLogInterface"};
  const Zel::AttributeId ids[] = {0, 130, 154};
  for (int at = 0; at < 3; ++at) {
    EXPECT_EQ(messageOf<Zel::BadIndexAttrException>(
                  [&] { attributeOp(object, ids[at], Op::opRead, object); }),
              std::string("attribute takes no index: ") + names[at]);
    EXPECT_EQ(messageOf<Zel::OpNotSupportedException>(
                  [&] { attributeOp(object, ids[at], Op::opWrite, nullptr, object); }),
              std::string("operation 128 not supported on ") + names[at]);
    EXPECT_EQ(messageOf<Zel::OpNotSupportedException>(
                  [&] { attributeOp(object, ids[at], Op::opEquals); }),
              std::string("operation 100 not supported on ") + names[at]);
  }
}

TEST_F(FrameworkAttribute, OfATypeWithoutAKeyIsUnknown) {
  EXPECT_EQ(messageOf<Zel::UnknownAttrException>([&] {
              Zel::readAttribute(Zel::generic(Profile::defaultProfileFactory("default")), 0);
            }),
            "unknown attribute of DefaultProfile: 0");
}

} // namespace
