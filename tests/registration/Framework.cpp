#include <Group/GroupKey>
#include <Vexil/IntfId>
#include <Zel/GenericIf>

#include <gtest/gtest.h>

namespace {

struct Basic {
  const char* name;
  const Zel::ZelType* type;
  unsigned size;
};

TEST(FrameworkTypes, OfPlainValuesHaveNoAttributes) {
  for (const Basic& basic : {Basic{"bool", Zel::Builtin<bool>::_fwkType(), 1},
                             Basic{"U32", Zel::Builtin<unsigned>::_fwkType(), 4},
                             Basic{"U64", Zel::Builtin<unsigned long long>::_fwkType(), 8},
                             Basic{"F64", Zel::Builtin<double>::_fwkType(), 8},
                             Basic{"Zel::String", Zel::String8::_fwkType(), sizeof(Zel::String8)},
                             Basic{"Zel::Name", Zel::Name::_fwkType(), sizeof(Zel::Name)},
                             Basic{"Vexil::IntfId", Vexil::IntfId::_fwkType(), 8}}) {
    SCOPED_TRACE(basic.name);
    EXPECT_EQ(Zel::ZelType::type(basic.name), basic.type);
    EXPECT_EQ(basic.type->flags(), (Zel::FlagWords{0x1, 0x20000000}));
    EXPECT_EQ(basic.type->size(), basic.size);
    EXPECT_EQ(basic.type->base(), nullptr);
    EXPECT_TRUE(basic.type->attributeQ().empty());
    EXPECT_EQ(basic.type->table(), nullptr);
    ASSERT_NE(basic.type->record(), nullptr);
    EXPECT_EQ(basic.type->record()->type(), basic.type);
  }
}

TEST(FrameworkTypes, OfGroupsAreThoseOfAnEnumerationAndAValue) {
  const Zel::ZelType& groupType = *Group::_fwkType_GroupType();
  EXPECT_EQ(groupType.flags(), (Zel::FlagWords{0x11, 0x20000000}));
  EXPECT_EQ(groupType.attributeQ().size(), 4U);
  EXPECT_EQ(groupType.attr("groupTypeInterface")->id(), 2);
  EXPECT_EQ(groupType.attr("groupTypeInterface")->flags(), (Zel::FlagWords{0x20001, 0x40200400}));

  const Zel::ZelType& groupKey = *Group::GroupKey::_fwkType();
  EXPECT_EQ(groupKey.flags(), (Zel::FlagWords{0x1, 0x20000000}));
  ASSERT_EQ(groupKey.attributeQ().size(), 3U);
  EXPECT_EQ(groupKey.attributeQ()[0]->name(), "type");
  EXPECT_EQ(groupKey.attributeQ()[0]->attrType(), &groupType);
  EXPECT_EQ(groupKey.attributeQ()[1]->name(), "name");
  EXPECT_EQ(groupKey.attributeQ()[1]->flags(), (Zel::FlagWords{0x220109, 0x40000400}));
  EXPECT_EQ(groupKey.attributeQ()[2]->name(), "hash");
  EXPECT_EQ(groupKey.attributeQ()[2]->flags(), (Zel::FlagWords{0x220001, 0x400}));
  EXPECT_EQ(groupKey.constructorArgTypeQ()[0], "Group::GroupType");
  EXPECT_EQ(groupKey.constructorArgTypeQ()[1], "Zel::String");
}

TEST(FrameworkTypes, OfObjectsHangTogether) {
  const Zel::ZelType* const object = Zel::PtrInterface::_fwkType();
  const Zel::ZelType* const entity = Zel::Entity::_fwkType();
  EXPECT_EQ(object->fullName(), "Zel::PtrInterface");
  EXPECT_EQ(object->base(), nullptr);
  EXPECT_FALSE(object->isEntity());
  EXPECT_EQ(entity->fullName(), "Zel::Entity");
  EXPECT_EQ(entity->base(), object);
  EXPECT_TRUE(entity->isEntity());
  EXPECT_EQ(Zel::GenericIf::_fwkType()->base(), object);
  EXPECT_EQ(Zel::GenericIf::List::_fwkType()->fullName(), "Zel::GenericIf::List");
  EXPECT_EQ(Zel::GenericIf::List::_fwkType()->name(), "List");

  EXPECT_EQ(object->size(), sizeof(Zel::PtrInterface));
  EXPECT_EQ(entity->size(), sizeof(Zel::Entity));

  ASSERT_EQ(entity->attributeQ().size(), 2U);
  EXPECT_EQ(entity->attr("name")->id(), 130);
  EXPECT_EQ(entity->attr("name")->attrType(), Zel::Name::_fwkType());
  EXPECT_EQ(entity->attr("zelNboAttrLogSaForMsgChannel")->id(), 155);
  EXPECT_TRUE(object->attributeQ().empty());
}

} // namespace
