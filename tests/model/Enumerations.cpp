#include "support/EnumerationCheck.h"

#include <model/Mapping/ProfileChangeCause.h>
#include <model/Profile/ProfileType.h>
#include <model/Unit/Enumerations.h>

namespace {

using namespace Maintenance::Profile;
using namespace Maintenance::Unit;
using Support::checkEnumeration;

TEST(Enumerations, AProfileTypeConvertsBothWaysAndRefusesTheRest) {
  checkEnumeration<ProfileType>(
      "ProfileType",
      {"profileTypeNone", "profileTypeBgp", "profileTypeInterface", "profileTypeUnit"},
      &ProfileTypeInstance, &ProfileTypeInstance);
}

TEST(Enumerations, AUnitTypeConvertsBothWaysAndRefusesTheRest) {
  checkEnumeration<UnitType>("UnitType", {"userConfigured", "dynamic", "builtin"},
                             &UnitTypeInstance, &UnitTypeInstance);
}

TEST(Enumerations, AMaintenanceOpConvertsBothWaysAndRefusesTheRest) {
  checkEnumeration<MaintenanceOp>("MaintenanceOp",
                                  {"unknown", "maintenanceEnter", "maintenanceExit",
                                   "maintenanceEnterAbort", "maintenanceExitAbort"},
                                  &MaintenanceOpInstance, &MaintenanceOpInstance);
}

TEST(Enumerations, AnInputSrcConvertsBothWaysAndRefusesTheRest) {
  checkEnumeration<InputSrc>("InputSrc", {"srcUnknown", "srcOnBoot", "srcOnBootCli", "srcCli"},
                             &InputSrcInstance, &InputSrcInstance);
}

TEST(Enumerations, AStateConvertsBothWaysAndRefusesTheRest) {
  checkEnumeration<State>("State",
                          {"init", "active", "maintenanceModeEnter", "underMaintenance",
                           "failedEnter", "maintenanceModeExit", "failedExit"},
                          &StateInstance, &StateInstance);
}

TEST(Enumerations, AProfileChangeCauseConvertsBothWaysAndRefusesTheRest) {
  using Maintenance::ProfileChangeCause;
  using Maintenance::ProfileChangeCauseInstance;
  checkEnumeration<ProfileChangeCause>(
      "ProfileChangeCause", {"initialCreation", "maintenanceOperation", "userConfigChange"},
      &ProfileChangeCauseInstance, &ProfileChangeCauseInstance);
}

TEST(Enumerations, TheEnumeratorsHaveTheirNumbers) {
  EXPECT_EQ(
      std::vector<int>({profileTypeNone, profileTypeBgp, profileTypeInterface, profileTypeUnit}),
      std::vector<int>({0, 1, 2, 3}));
  EXPECT_EQ(std::vector<int>({userConfigured, dynamic, builtin}), std::vector<int>({0, 1, 2}));
  EXPECT_EQ(std::vector<int>({unknown, maintenanceEnter, maintenanceExit, maintenanceEnterAbort,
                              maintenanceExitAbort}),
            std::vector<int>({0, 1, 2, 3, 4}));
  EXPECT_EQ(std::vector<int>({srcUnknown, srcOnBoot, srcOnBootCli, srcCli}),
            std::vector<int>({0, 1, 2, 3}));
  EXPECT_EQ(std::vector<int>({init, active, maintenanceModeEnter, underMaintenance, failedEnter,
                              maintenanceModeExit, failedExit}),
            std::vector<int>({0, 1, 2, 3, 4, 5, 6}));
  using namespace Maintenance;
  EXPECT_EQ(std::vector<int>({initialCreation, maintenanceOperation, userConfigChange}),
            std::vector<int>({0, 1, 2}));
}

TEST(Enumerations, TheFirstNumberBehindAStateFailsAndTheLastDoesNot) {
  EXPECT_EQ(StateInstance(6), failedExit);
  EXPECT_EQ(Support::rangeFailure([] { StateInstance(7); }), "State");
}

TEST(Enumerations, TheNumberBehindTheLastProfileTypeFailsAndSoDoesItsFallbackText) {
  EXPECT_EQ(Support::rangeFailure([] { ProfileTypeInstance(4); }), "ProfileType");
  EXPECT_EQ(Support::rangeFailure([] { ProfileTypeInstance("ProfileType(4)"); }), "ProfileType");
}

TEST(Enumerations, AUnitTypeInAnotherCaseFails) {
  EXPECT_EQ(Support::rangeFailure([] { UnitTypeInstance("Dynamic"); }), "UnitType");
}

} // namespace
