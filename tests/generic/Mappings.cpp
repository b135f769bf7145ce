#include "GenericFixture.h"

#include <generic/Mapping.h>

// The mappings and profile selection, known by their descriptors alone.

namespace {

using namespace TestGeneric;
using namespace Maintenance;
using Group::GroupKey;
using Profile::ProfileKey;

Handle made(const Zel::ZelType* descriptor, const Handle& list) {
  return descriptor->genericIf(static_cast<const GenericIf*>(list.ptr()), false);
}

const GroupKey peers(Group::groupTypeBgp, "peers");
const GroupProfileSelKey request(Group::groupTypeBgp, 1);
const UnitProfileSelKey selected("System", userConfigChange);

/// Writes down which mutators are called.
class Told : public MemberToGroup {
public:
  explicit Told(Log& log) : MemberToGroup("Ethernet1"), log_(log) {}

  using MemberToGroup::groupDel;
  bool groupDel(const GroupKey& key) override {
    log_.emplace_back("groupDel");
    return MemberToGroup::groupDel(key);
  }
  void groupNotify(const GroupKey& key) override {
    log_.emplace_back("groupNotify");
    MemberToGroup::groupNotify(key);
  }
  void groupIs(const GroupKey& key, bool value) override {
    log_.emplace_back("groupIs");
    MemberToGroup::groupIs(key, value);
  }
  using MemberToGroup::selectedProfileDel;
  ProfileKey selectedProfileDel(Profile::ProfileType type) override {
    log_.emplace_back("selectedProfileDel");
    return MemberToGroup::selectedProfileDel(type);
  }
  void selectedProfileNotify(Profile::ProfileType type) override {
    log_.emplace_back("selectedProfileNotify");
    MemberToGroup::selectedProfileNotify(type);
  }
  void selectedProfileIs(Profile::ProfileType type, const ProfileKey& key) override {
    log_.emplace_back("selectedProfileIs");
    MemberToGroup::selectedProfileIs(type, key);
  }
  void profileChangeCauseIs(ProfileChangeCause cause) override {
    log_.emplace_back("profileChangeCauseIs");
    MemberToGroup::profileChangeCauseIs(cause);
  }
  void partOfDynamicUnitIs(bool part) override {
    log_.emplace_back("partOfDynamicUnitIs");
    MemberToGroup::partOfDynamicUnitIs(part);
  }

private:
  Log& log_;
};

TEST(GenericMappings, OfAMemberReachTheMutatorsOfADerivedClass) {
  Log log;
  const auto member = Zel::makeObject<Told>(log);
  const Handle object = Zel::generic(Ptr<MemberToGroup>(member));
  const ProfileKey drain(Profile::profileTypeBgp, "drain");

  Zel::setMember(object, 258, peers, true);
  EXPECT_EQ(log, (Log{"groupIs", "groupNotify"}));
  EXPECT_TRUE(member->group(peers));
  log.clear();
  EXPECT_TRUE(Zel::value<bool>(Zel::deleteMember(object, 258, peers)));
  EXPECT_EQ(log, (Log{"groupDel", "groupNotify"}));
  log.clear();
  Zel::setMember(object, 259, Profile::profileTypeUnit, drain);
  EXPECT_EQ(log, (Log{"selectedProfileIs", "selectedProfileNotify"}));
  log.clear();
  EXPECT_EQ(Zel::value<ProfileKey>(Zel::deleteMember(object, 259, Profile::profileTypeUnit)),
            drain);
  EXPECT_EQ(log, (Log{"selectedProfileDel", "selectedProfileNotify"}));
  log.clear();
  Zel::writeAttribute(object, 260, userConfigChange);
  Zel::writeAttribute(object, 261, true);
  EXPECT_EQ(log, (Log{"profileChangeCauseIs", "partOfDynamicUnitIs"}));
  EXPECT_EQ(member->profileChangeCause(), userConfigChange);
  EXPECT_TRUE(member->partOfDynamicUnit());
}

TEST(GenericMappings, ArePrintedAndReadByTypeAndKey) {
  const auto member = Zel::makeObject<MemberToGroup>("Ethernet1");
  const Handle object = Zel::generic(member);
  const ProfileKey drain(Profile::profileTypeBgp, "drain");
  Zel::setMember(object, 259, Profile::profileTypeUnit, drain);
  EXPECT_EQ(Zel::readMember<ProfileKey>(object, 259, Profile::profileTypeUnit), drain);
  EXPECT_FALSE(Zel::exists(object, 259, Profile::profileTypeBgp));
  EXPECT_EQ(textOf(Zel::readAttribute(object, 260)), "'initialCreation'");
}

TEST(GenericMappings, ThoseWithoutAFactoryAreMadeByNoList) {
  for (const Zel::ZelType* const type : {MemberToGroup::_fwkType(), GroupToUnit::_fwkType()}) {
    EXPECT_THROW(made(type, Zel::arguments("Ethernet1")), Zel::Exception) << type->fullName();
    EXPECT_THROW(made(type, Zel::arguments(peers)), Zel::Exception) << type->fullName();
    EXPECT_FALSE(type->newEntity("Ethernet1", nullptr)) << type->fullName();
  }
  const auto dir = GroupToUnitDir::_fwkType()->newEntity("groups", nullptr);
  ASSERT_TRUE(dir);
  EXPECT_EQ(dir->name(), "groups");
}

TEST(GenericMappings, ADirectoryMakesItsMembersByTheirKey) {
  const auto dir = groupToUnitDirFactory("groups");
  const Handle object = Zel::generic(dir);
  const Handle member = Zel::createMember(object, 258, peers);
  EXPECT_EQ(Zel::readAttribute<GroupKey>(member, 258), peers);
  EXPECT_EQ(Zel::readAttribute<GroupKey>(member, 0), peers);
  Zel::setMember(member, 259, Zel::Name("System"), true);
  EXPECT_TRUE(dir->groupToUnit(peers)->unitName("System"));
  EXPECT_EQ(messageOf<Zel::TypeException>([&] { Zel::createMember(object, 258, 1U); }),
            "argument missing or of the wrong type: U32");
}

TEST(GenericSelections, AreMadeFromTheirKeys) {
  const Handle in = made(GroupProfileSelectionIn::_fwkType(), Zel::arguments(request));
  EXPECT_EQ(Zel::readAttribute<GroupProfileSelKey>(in, 131), request);
  const Handle out = made(GroupProfileSelectionOut::_fwkType(), Zel::arguments(request));
  EXPECT_EQ(Zel::readAttribute<GroupProfileSelKey>(out, 130), request);
  const Handle unit = made(UnitProfileSelection::_fwkType(), Zel::arguments(selected));
  EXPECT_EQ(Zel::readAttribute<UnitProfileSelKey>(unit, 130), selected);
  EXPECT_EQ(messageOf<Zel::TypeException>(
                [] { made(UnitProfileSelection::_fwkType(), Zel::arguments(request)); }),
            "argument missing or of the wrong type: GroupProfileSelKey");
}

TEST(GenericSelections, WithoutArgumentsRefuseAListWithAnElement) {
  EXPECT_TRUE(made(ProfileSelection::_fwkType(), Zel::arguments()));
  EXPECT_TRUE(made(ProfileKeySet::_fwkType(), Zel::arguments()));
  EXPECT_EQ(messageOf<Zel::UnknownArgException>(
                [] { made(ProfileSelection::_fwkType(), Zel::arguments(1U)); }),
            "too many arguments: ProfileSelection");
  EXPECT_EQ(messageOf<Zel::UnknownArgException>(
                [] { made(ProfileKeySet::_fwkType(), Zel::arguments(1U)); }),
            "too many arguments: ProfileKeySet");
}

TEST(GenericSelections, AreATreeOfObjects) {
  const auto all = profileSelectionFactory();
  const Handle unit = Zel::createMember(Zel::generic(all), 130, selected);
  const Handle in = Zel::createMember(unit, 134, request);
  Zel::createMember(unit, 135, request);
  Zel::writeAttribute(in, 130, true);
  Zel::setMember(in, 132, "peers", true);
  Zel::writeAttribute(unit, 131, 7U);
  const auto typed = all->unitProfileSelection(selected);
  EXPECT_EQ(typed->genId(), 7U);
  EXPECT_TRUE(typed->groupProfileSelectionIn(request)->trigger());
  EXPECT_TRUE(typed->groupProfileSelectionIn(request)->groupName("peers"));
  EXPECT_TRUE(typed->groupProfileSelectionOut(request));
  for (const Zel::AttributeId members : {134, 135}) {
    EXPECT_EQ(messageOf<Zel::TypeException>([&] { Zel::readMember(unit, members, nullptr); }),
              "argument missing or of the wrong type: groupProfileSelKey");
  }
}

TEST(GenericProfileKeySet, TheWinnerIsWorkedOutAtEachReadAndNeverWritten) {
  const auto set = profileKeySetFactory();
  const Handle object = Zel::generic(set);
  const ProfileKey a(Profile::profileTypeUnit, "a");
  const ProfileKey b(Profile::profileTypeBgp, "b");
  Zel::setMember(object, 130, b, false);
  Zel::setMember(object, 130, a, true);
  EXPECT_EQ(Zel::readAttribute<ProfileKey>(object, 131), b);
  Zel::deleteMember(object, 130, b);
  EXPECT_EQ(Zel::readAttribute<ProfileKey>(object, 131), a);
  EXPECT_EQ(messageOf<Zel::OpNotSupportedException>([&] { Zel::writeAttribute(object, 131, b); }),
            "operation 128 not supported on winningProfile");
}

TEST(GenericProfileKeySet, IsNoEntity) {
  const Handle object = Zel::generic(profileKeySetFactory());
  const Ptr<const Zel::ZelType> entity(Zel::Entity::_fwkType());
  EXPECT_EQ(messageOf<Zel::TypeException>([&] { object->voidPtrIs(entity); }),
            "argument missing or of the wrong type: ProfileKeySet");
}

TEST(GenericSelectionKeys, TellTheirHashWhichNobodySets) {
  const Handle key = writable(request);
  EXPECT_EQ(Zel::readAttribute<unsigned>(key, 4), request.hash());
  EXPECT_EQ(messageOf<Zel::OpNotSupportedException>([&] { Zel::writeAttribute(key, 4, 1U); }),
            "operation 128 not supported on hash");
  EXPECT_EQ(Zel::readAttribute<unsigned>(writable(selected), 4), selected.hash());
}

} // namespace
