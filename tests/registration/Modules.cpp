#include "Workshop.h"

#include <Zel/IntrospectionReactor>
#include <foreign/model/Perishable.h>
#include <registration/MaintenanceAgentInfo.h>
#include <registration/MaintenanceGroup.h>
#include <registration/MaintenanceUnitProfile.h>
#include <registration/Mapping.h>
#include <registration/Profile.h>
#include <registration/Unit.h>

#include <gmock/gmock.h>

#include <algorithm>

namespace {

using testing::ElementsAre;

TEST(Modules, GiveEachTypeOneDescriptorByWhateverWay) {
  using namespace Maintenance::Unit;
  const auto status = statusFactory("System");
  EXPECT_EQ(status->fwkType(), Status::_fwkType());
  EXPECT_EQ(Status::_fwkType(), Zel::ZelType::type("Maintenance::Unit::Status"));
  EXPECT_EQ(_fwkType_State(), Zel::ZelType::type("Maintenance::Unit::State"));
  EXPECT_EQ(TrafficRates::_fwkType(), Zel::valueRecord<TrafficRates>.type());
  EXPECT_EQ(TrafficRates().fwkType(), TrafficRates::_fwkType());
  EXPECT_EQ(Zel::valueRecord<State>.type(), _fwkType_State());
  EXPECT_EQ(Status::_fwkType(), Status::zelTable().type());
  const auto milk = Zel::makeObject<Foreign::Perishable>("milk");
  EXPECT_EQ(milk->fwkType(), Foreign::Perishable::_fwkType());
  const Foreign::Product& product = *milk;
  EXPECT_EQ(product.fwkType(), Foreign::Perishable::_fwkType());
}

TEST(Modules, HoldTheirDescriptorsForGood) {
  const Zel::ZelType* const type = Maintenance::Unit::Status::_fwkType();
  const unsigned references = type->references();
  EXPECT_GE(references, 1U);
  { const Zel::Ptr<const Zel::ZelType> handle(type); }
  EXPECT_EQ(type->references(), references);
}

TEST(Modules, AreLoadedInTheirOrderTheFrameworksFirst) {
  std::vector<std::string_view> names;
  for (const Zel::ZelType* const type : Zel::ZelType::types()) {
    names.push_back(type->fullName().view());
  }
  ASSERT_GE(names.size(), 21U);
  names.resize(21);
  EXPECT_THAT(names,
              ElementsAre("bool", "U32", "U64", "F64", "Zel::String", "Zel::Name",
                          "Zel::PtrInterface", "Zel::Entity", "Zel::GenericIf",
                          "Zel::GenericIf::List", "Group::GroupType", "Group::GroupKey",
                          "Vexil::IntfId", "Maintenance::Profile::ProfileType",
                          "Maintenance::Profile::ProfileKey", "Maintenance::Profile::Config",
                          "Maintenance::Profile::ConfigDir", "Maintenance::Profile::DefaultProfile",
                          "Maintenance::Unit::UnitType", "Maintenance::Unit::InputSrc",
                          "Maintenance::Unit::BuiltinUnitName"));
}

TEST(Modules, OfTheLibraryHaveRegisteredAndChangeNothingWhenAskedAgain) {
  EXPECT_TRUE(Maintenance::Profile::zelModule().registered());
  EXPECT_TRUE(Maintenance::Unit::zelModule().registered());
  EXPECT_TRUE(Maintenance::zelMappingModule().registered());
  EXPECT_TRUE(Maintenance::MaintenanceGroup::zelModule().registered());
  EXPECT_TRUE(MaintenanceUnitProfile::zelModule().registered());
  EXPECT_TRUE(Maintenance::zelMaintenanceAgentInfoModule().registered());
  const Zel::ZelType& status = *Maintenance::Unit::Status::_fwkType();
  const auto attributes = status.attributeQ();
  const std::size_t types = Zel::ZelType::types().size();
  const std::size_t derived = Zel::Entity::_fwkType()->derivedTypeQ().size();

  Maintenance::Profile::zelInitProfile();
  Maintenance::Unit::zelInitUnit();
  Maintenance::zelInitMapping();
  Maintenance::MaintenanceGroup::zelInitMaintenanceGroup();
  MaintenanceUnitProfile::zelInitMaintenanceUnitProfile();
  Maintenance::zelInitMaintenanceAgentInfo();
  Maintenance::Unit::zelModule().load();

  EXPECT_EQ(status.attributeQ(), attributes);
  EXPECT_EQ(status.constructorArgNameQ().size(), 1U);
  EXPECT_EQ(Zel::ZelType::types().size(), types);
  EXPECT_EQ(Zel::Entity::_fwkType()->derivedTypeQ().size(), derived);
}

/// What is not yet registered of a type.
void expectEmpty(const Zel::ZelType& type) {
  EXPECT_TRUE(type.attributeQ().empty());
  EXPECT_TRUE(type.constructorArgNameQ().empty());
  EXPECT_EQ(type.size(), 0U);
  EXPECT_EQ(type.flags(), Zel::FlagWords());
  EXPECT_EQ(type.attr("wood"), nullptr);
  EXPECT_EQ(type.valAttr(), nullptr);
}

class NotReady {
public:
  NotReady() { Zel::IntrospectionReactor::readyIs(false); }
  NotReady(const NotReady&) = delete;
  NotReady& operator=(const NotReady&) = delete;
  ~NotReady() { Zel::IntrospectionReactor::readyIs(true); }
};

TEST(Modules, ThatArePutOffHaveTheirDescriptorsFromTheFirstRequestAndFillThemLater) {
  const Zel::ZelType* plank = nullptr;
  const Zel::ZelType* wood = nullptr;
  {
    const NotReady whileItIsNot;
    EXPECT_EQ(Zel::IntrospectionReactor::global(), nullptr);
    plank = Workshop::Plank::_fwkType();
    ASSERT_NE(plank, nullptr);
    EXPECT_EQ(Workshop::Plank::_fwkType(), plank);
    EXPECT_EQ(plank->name(), "Plank");
    EXPECT_EQ(plank->base(), nullptr);
    expectEmpty(*plank);
    EXPECT_EQ(Zel::ZelType::type("Workshop::Plank"), nullptr);

    Workshop::materials().zelInit(); // nothing, and the guard stays clear
    EXPECT_FALSE(Workshop::materials().registered());
    expectEmpty(*plank);

    Workshop::materials().load(); // the tree of types does without the reactor
    EXPECT_EQ(Zel::ZelType::type("Workshop::Plank"), plank);
    wood = Zel::ZelType::type("Workshop::Wood");
    ASSERT_NE(wood, nullptr);
    EXPECT_FALSE(Workshop::materials().registered());
    expectEmpty(*wood);
  }

  Workshop::materials().zelInit();

  EXPECT_TRUE(Workshop::materials().registered());
  EXPECT_EQ(Workshop::Plank::_fwkType(), plank);
  EXPECT_EQ(Workshop::_fwkType_Wood(), wood);
  ASSERT_EQ(plank->attributeQ().size(), 1U);
  EXPECT_EQ(plank->attr("wood")->attrType(), wood);
  EXPECT_EQ(plank->size(), sizeof(Workshop::Plank));
  EXPECT_TRUE(wood->isEnumType());
  EXPECT_EQ(wood->attributeQ().size(), 3U);

  Workshop::materials().zelInit();
  EXPECT_EQ(plank->attributeQ().size(), 1U);
  EXPECT_EQ(wood->attributeQ().size(), 3U);
}

TEST(Modules, RegisterThemselvesAtTheFirstRequestForATypeOfTheirs) {
  EXPECT_FALSE(Workshop::tools().registered());
  const std::size_t derived = Zel::Entity::_fwkType()->derivedTypeQ().size();

  const Zel::ZelType* const bench = Workshop::Bench::_fwkType();

  EXPECT_TRUE(Workshop::tools().registered());
  EXPECT_EQ(bench->attr("legs")->id(), 258);
  EXPECT_EQ(bench->attributeQ().back()->name(), "legs");
  EXPECT_EQ(bench->base(), Zel::Entity::_fwkType());
  EXPECT_EQ(Zel::Entity::_fwkType()->derivedTypeQ().size(), derived + 1);
  EXPECT_EQ(Zel::Entity::_fwkType()->derivedTypeQ().back().ptr(), bench);
  const auto& scopes = Zel::IntrospectionReactor::global()->root().scopes();
  const auto workshop = std::find_if(scopes.begin(), scopes.end(),
                                     [](const auto& scope) { return scope.name() == "Workshop"; });
  ASSERT_NE(workshop, scopes.end());
  EXPECT_EQ(workshop->scopes().back().name(), "Tools");
  EXPECT_THAT(workshop->scopes().back().types(), ElementsAre(bench));
  // The tree of types learns of it when the module is loaded.
  EXPECT_EQ(Zel::ZelType::type("Workshop::Tools::Bench"), nullptr);
  Workshop::tools().load();
  EXPECT_EQ(Zel::ZelType::type("Workshop::Tools::Bench"), bench);
  EXPECT_EQ(Zel::Entity::_fwkType()->derivedTypeQ().size(), derived + 1);
  EXPECT_EQ(std::count(Zel::ZelType::types().begin(), Zel::ZelType::types().end(), bench), 1);
}

} // namespace
