#include "GenericFixture.h"

#include <generic/Mapping.h>

// The mappings, known by their descriptors alone.

namespace {

using namespace TestGeneric;
using namespace Maintenance;
using Group::GroupKey;
using Profile::ProfileKey;

Handle made(const Zel::ZelType* descriptor, const Handle& list) {
  return descriptor->genericIf(static_cast<const GenericIf*>(list.ptr()), false);
}

const GroupKey peers(Group::groupTypeBgp, "peers");

TEST(GenericMappings, OfAMemberReachesTheMutatorsOfADerivedClass) {
  struct Counting : MemberToGroup {
    using MemberToGroup::MemberToGroup;
    void groupIs(const GroupKey& key, bool value) override {
      ++groups;
      MemberToGroup::groupIs(key, value);
    }
    void partOfDynamicUnitIs(bool part) override {
      ++parts;
      MemberToGroup::partOfDynamicUnitIs(part);
    }
    int groups = 0;
    int parts = 0;
  };
  const auto member = Zel::makeObject<Counting>("Ethernet1");
  const Handle object = Zel::generic(Ptr<MemberToGroup>(member));
  Zel::setMember(object, 258, peers, true);
  Zel::writeAttribute(object, 261, true);
  EXPECT_EQ(member->groups, 1);
  EXPECT_EQ(member->parts, 1);
  EXPECT_TRUE(member->group(peers));
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

} // namespace
