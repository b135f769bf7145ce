#include "support/Slot.h"

#include <model/MaintenanceAgentInfo.h>
#include <model/MaintenanceGroup.h>
#include <model/MaintenanceUnitProfile.h>
#include <model/Mapping.h>
#include <model/Profile.h>
#include <model/Unit.h>

#include <gtest/gtest.h>

// Where the virtual operations of each class end. Programs are compiled against these places, so
// that an operation which a type adds moves those of every class derived from it.

namespace {

using namespace Maintenance;
using Support::slotOf;

template <class T>
class ClassEnd : public testing::Test {
protected:
  /// The place behind the last virtual operation of the class.
  static std::ptrdiff_t end() {
    struct Probe : T {
      virtual void probe() {}
    };
    static_assert(sizeof(Probe) == sizeof(T));
    return slotOf(&Probe::probe);
  }
};

template <class T>
using EntityEnd = ClassEnd<T>;
using Entities =
    testing::Types<Profile::Config, Profile::ConfigDir, Profile::DefaultProfile, Unit::Config,
                   Unit::ConfigDir, Unit::Status, Unit::StatusDir, Unit::Input, Unit::MergedInput,
                   Unit::MergedInputDir, GroupToUnit, GroupToUnitDir, MaintenanceGroup::Config,
                   MaintenanceGroup::ConfigDir, MaintenanceUnitProfile::Config,
                   MaintenanceUnitProfile::ConfigDir, AgentInfo>;
TYPED_TEST_SUITE(EntityEnd, Entities);

TYPED_TEST(EntityEnd, AddsNothingToTheOperationsOfAllEntities) {
  EXPECT_EQ(this->end(), slotOf(&Zel::Entity::zelNboAttrLogSaDel) + 1);
}

template <class T>
using MemberEnd = ClassEnd<T>;
TYPED_TEST_SUITE(MemberEnd, testing::Types<MemberToGroup>);

TYPED_TEST(MemberEnd, AddsItsTenMutators) {
  EXPECT_EQ(this->end(), slotOf(&Zel::Entity::zelNboAttrLogSaDel) + 11);
}

template <class T>
using ObjectEnd = ClassEnd<T>;
using Objects = testing::Types<GroupProfileSelectionIn, GroupProfileSelectionOut,
                               UnitProfileSelection, ProfileSelection, ProfileKeySet>;
TYPED_TEST_SUITE(ObjectEnd, Objects);

TYPED_TEST(ObjectEnd, AddsNothingToTheOperationsOfAllObjects) {
  EXPECT_EQ(slotOf(&Zel::PtrInterface::fwkType), 4);
  EXPECT_EQ(this->end(), 7); // behind both places of the destructor
}

} // namespace
