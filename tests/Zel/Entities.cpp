#include "support/Slot.h"

#include <Zel/StreamAdapter>
#include <Zel/ZelType>
#include <model/MaintenanceUnitProfile.h>
#include <model/Profile.h>
#include <model/Unit.h>

#include <gtest/gtest.h>

namespace {

using Zel::Entity;
using Zel::Name;
using Zel::Ptr;
using Zel::String8;

struct Plain : Entity {
  explicit Plain(Name name) : Entity(std::move(name)) {}
  void handleParent(const Ptr<Entity>& parent) override { handled.push_back(parent.ptr()); }
  std::vector<Entity*> handled;
};

TEST(Entities, StartWithCountersAtZeroAndNoParent) {
  const auto entity = Zel::makeObject<Plain>("name");
  EXPECT_EQ(entity->name(), Name("name"));
  EXPECT_EQ(entity->versionCounter(), 0U);
  EXPECT_EQ(entity->readCounter(), 0U);
  EXPECT_FALSE(entity->parent());
  EXPECT_EQ(entity->parentAttrId(), 0);
  EXPECT_EQ(entity->parentAttr(), nullptr);
  EXPECT_EQ(entity->fwkType(), nullptr);
}

TEST(Entities, HoldTheirParentWithoutACount) {
  const auto parent = Zel::makeObject<Plain>("parent");
  const auto child = Zel::makeObject<Plain>("child");
  child->parentIs(parent);
  EXPECT_EQ(parent->references(), 1U);
  EXPECT_EQ(child->parent(), parent);
  EXPECT_EQ(Ptr<const Entity>(child)->parent(), parent);
  child->parentIs(nullptr);
  EXPECT_FALSE(child->parent());
  EXPECT_EQ(child->handled, (std::vector<Entity*>{parent.ptr(), nullptr}));
}

TEST(Entities, KnowTheAttributeOfTheirParentThatHoldsThem) {
  namespace Profiles = MaintenanceUnitProfile;
  const auto units = Maintenance::Unit::statusDirFactory("units");
  const Ptr<Maintenance::Unit::Status> unit = units->statusIs("System");
  const Zel::ZelAttr* const attr = unit->parentAttr();
  ASSERT_NE(attr, nullptr);
  EXPECT_EQ(attr->name(), Name("status"));
  EXPECT_EQ(attr->id(), unit->parentAttrId());
  EXPECT_EQ(attr, units->fwkType()->attr("status"));
  units->statusDel("System");
  EXPECT_EQ(unit->parentAttr(), nullptr);

  const auto profiles = Profiles::configDirFactory("profiles");
  const Ptr<Profiles::Config> profile = profiles->configIs("slow");
  ASSERT_NE(profile->parentAttr(), nullptr);
  EXPECT_EQ(profile->parentAttr()->name(), Name("config"));

  const auto orphan = Zel::makeObject<Plain>("of a parent without a descriptor");
  const auto parent = Zel::makeObject<Plain>("parent");
  orphan->parentIs(parent);
  EXPECT_EQ(orphan->parentAttr(), nullptr);
}

TEST(Entities, KnowTheirPath) {
  const auto units = Maintenance::Unit::statusDirFactory("units");
  const Ptr<Maintenance::Unit::Status> unit = units->statusIs("slot/3%");
  EXPECT_EQ(unit->fullName(), String8("units/slot/3%"));
  EXPECT_EQ(unit->uriPath(), Zel::EntityUriPath("/units/status/slot%2F3%25"));
  EXPECT_EQ(units->uriPath(), Zel::EntityUriPath("/units"));
}

TEST(Entities, NameTheFrameworksAttributes) {
  const auto entity = Zel::makeObject<Plain>("name");
  EXPECT_EQ(entity->attributeString(0), String8("fwkKey"));
  EXPECT_EQ(entity->attributeString(154), String8("zelHasAttrLogInterface"));
  EXPECT_EQ(entity->attributeString(258), String8("unknown"));
}

TEST(Entities, HaveNoAdaptersByThemselves) {
  const auto entity = Zel::makeObject<Plain>("name");
  EXPECT_FALSE(entity->zelHasAttrLogInterface());
  EXPECT_FALSE(entity->zelNboAttrLogSaForMsgChannel(nullptr));
}

TEST(Entities, HaveTheirVirtualOperationsInOrder) {
  using Support::slotOf;
  EXPECT_EQ(slotOf(&Entity::name), 7);
  EXPECT_EQ(slotOf<Ptr<const Entity> (Entity::*)() const>(&Entity::parent), 8);
  EXPECT_EQ(slotOf<Ptr<Entity> (Entity::*)()>(&Entity::parent), 9);
  EXPECT_EQ(slotOf(&Entity::parentIs), 10);
  EXPECT_EQ(slotOf(&Entity::parentAttr), 11);
  EXPECT_EQ(slotOf(&Entity::parentAttrId), 12);
  EXPECT_EQ(slotOf(&Entity::parentAttrIdIs), 13);
  EXPECT_EQ(slotOf(&Entity::uriPath), 14);
  EXPECT_EQ(slotOf(&Entity::fullName), 15);
  EXPECT_EQ(slotOf(&Entity::attributeString), 16);
  EXPECT_EQ(slotOf(&Entity::zelNotifieeAdapterIs), 17);
  EXPECT_EQ(slotOf(&Entity::handleParent), 18);
  using Out = const Ptr<const Zel::NboAttrLog::Out>&;
  using Adapter = Entity::ZelNboAttrLogSa;
  EXPECT_EQ(slotOf<Ptr<const Adapter> (Entity::*)(Out) const>(&Entity::zelNboAttrLogSa), 19);
  EXPECT_EQ(slotOf(&Entity::zelHasAttrLogInterface), 20);
  EXPECT_EQ(slotOf<Ptr<Adapter> (Entity::*)(Out)>(&Entity::zelNboAttrLogSa), 21);
  EXPECT_EQ(slotOf(&Entity::zelNboAttrLogSaForMsgChannel), 22);
  EXPECT_EQ(slotOf(&Entity::zelNboAttrLogSaIs), 23);
  EXPECT_EQ(slotOf(&Entity::zelNboAttrLogSaDel), 24);
}

TEST(Entities, OfATypeWithoutAnAttributeLogTakeNoAdapter) {
  const auto entity = Zel::makeObject<Plain>("plain");
  const Ptr<Zel::NboAttrLog::Out> none;
  EXPECT_FALSE(entity->zelHasAttrLogInterface());
  EXPECT_FALSE(entity->zelNboAttrLogSaIs({}, 1, none, nullptr));
  EXPECT_FALSE(entity->zelNboAttrLogSa(none));
  EXPECT_FALSE(Ptr<const Plain>(entity)->zelNboAttrLogSa(none));
  EXPECT_FALSE(entity->zelNboAttrLogSaDel(none));
  entity->zelNotifieeAdapterIs(entity);
  EXPECT_EQ(entity->references(), 1U);
  EXPECT_EQ(entity->versionCounter(), 0U);
}

} // namespace
