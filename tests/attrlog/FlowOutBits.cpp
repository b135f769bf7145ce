#include "Ends.h"

#include "foreign/model/OrderAttrLog.h"
#include "foreign/model/ProductAttrLog.h"
#include "foreign/model/RackAttrLog.h"

#include <attrlog/MaintenanceAgentInfo.h>
#include <attrlog/MaintenanceGroup.h>
#include <attrlog/MaintenanceUnitProfile.h>
#include <attrlog/Profile.h>
#include <attrlog/Unit.h>

#include <gtest/gtest.h>

// What an adapter owes at first, by the attribute to start with. A bit of a single value says that
// it is owed, a bit of a collection that it is not.

namespace {

using Zel::AttributeId;
using Zel::Ptr;

constexpr AttributeId lowest = -2147483647 - 1;

template <class T>
class Owing {
public:
  using FlowOut = typename T::ZelNboAttrLogSa::FlowOut;

  explicit Owing(const Ptr<T>& entity)
      : out(Zel::makeObject<Zel::NboAttrLog::Out>(65536U)),
        adapter(entity->zelNboAttrLogSaIs({}, 1, out, nullptr)) {}

  Ptr<FlowOut> from(AttributeId start) const {
    return Zel::makeObject<FlowOut>(out, adapter, Zel::ConnectDesc(), false, start);
  }

  const Ptr<Zel::NboAttrLog::Out> out;
  const Ptr<Zel::Entity::ZelNboAttrLogSa> adapter;
};

struct Row {
  AttributeId start;
  unsigned word;
  bool isDirty;
};

template <class T>
void expectWords(const Ptr<T>& entity, std::initializer_list<Row> rows) {
  const Owing<T> owing(entity);
  for (const Row& row : rows) {
    const auto flowOut = owing.from(row.start);
    EXPECT_EQ(flowOut->zelDirtyBitSet0().word(), row.word) << row.start;
    EXPECT_EQ(flowOut->hasDirtyAttributes(), row.isDirty) << row.start;
  }
}

TEST(FlowOutBits, OfAUnitFromEveryAttribute) {
  expectWords(Maintenance::Unit::statusFactory("u"),
              {
                  {lowest, 0xddfa, true},      {-262, 0xddfa, true}, {0, 0xddfa, true},
                  {258, 0xddfa, true},         {259, 0xddfa, true},  {260, 0xddf8, true},
                  {261, 0xddfc, true},         {262, 0xddf4, true},  {263, 0xdde4, true},
                  {264, 0xddc4, true},         {265, 0xdd84, true},  {266, 0xdd04, true},
                  {267, 0xdd04, true},         {268, 0xdc04, true},  {269, 0xde04, true},
                  {270, 0xda04, true},         {271, 0xd204, true},  {272, 0xc204, true},
                  {273, 0xe204, true},         {274, 0xa204, true},  {275, 0x2204, false},
                  {0x7fffffff, 0x2204, false},
              });
}

TEST(FlowOutBits, OfProfilesAndDirectories) {
  using namespace Maintenance;
  expectWords(Profile::defaultProfileFactory("p"),
              {{0, 0x2, true}, {259, 0x2, true}, {260, 0, false}, {0x7fffffff, 0, false}});
  expectWords(Profile::configDirFactory("d"),
              {{0, 0, true}, {258, 0, true}, {259, 0x2, false}, {0x7fffffff, 0x2, false}});
  expectWords(Unit::statusDirFactory("d"),
              {{0, 0, true}, {258, 0, true}, {259, 0x2, false}, {0x7fffffff, 0x2, false}});
}

TEST(FlowOutBits, OfConfiguredUnits) {
  using namespace Maintenance::Unit;
  expectWords(configFactory("u"), {{lowest, 0xa, true},
                                   {0, 0xa, true},
                                   {258, 0xa, true},
                                   {259, 0xa, true},
                                   {260, 0x8, true},
                                   {261, 0xc, true},
                                   {262, 0x4, false},
                                   {0x7fffffff, 0x4, false}});
  expectWords(configDirFactory("d"),
              {{0, 0, true}, {258, 0, true}, {259, 0x2, false}, {0x7fffffff, 0x2, false}});
}

TEST(FlowOutBits, OfInputs) {
  using namespace Maintenance::Unit;
  expectWords(inputFactory("i"), {{lowest, 0x2, true},
                                  {0, 0x2, true},
                                  {258, 0x2, true},
                                  {259, 0, true},
                                  {260, 0x4, false},
                                  {0x7fffffff, 0x4, false}});
  expectWords(mergedInputDirFactory("d"),
              {{0, 0, true}, {258, 0, true}, {259, 0x2, false}, {0x7fffffff, 0x2, false}});
}

TEST(FlowOutBits, AMergedInputOwesItsPriorityOnlyOnceItIsMarked) {
  using namespace Maintenance::Unit;
  const auto input = mergedInputFactory("u", srcCli);
  expectWords(input, {{lowest, 0, false}, {0, 0, false}, {259, 0, false}, {0x7fffffff, 0, false}});
  const auto flowOut = Owing<MergedInput>(input).from(0);
  flowOut->zelDirtyBitSet0().zelIsPriorityDirtyIs(true);
  EXPECT_EQ(flowOut->zelDirtyBitSet0().word(), 0x2U);
  EXPECT_TRUE(flowOut->hasDirtyAttributes());
  flowOut->zelDirtyBitSet0().zelIsPriorityDirtyIs(false);
  EXPECT_FALSE(flowOut->hasDirtyAttributes());
}

TEST(FlowOutBits, OfAProfileThereAreNone) {
  const Owing<Maintenance::Profile::Config> owing(
      Zel::makeObject<Maintenance::Profile::Config>(Maintenance::Profile::ProfileKey()));
  EXPECT_FALSE(owing.from(0)->hasDirtyAttributes());
  EXPECT_FALSE(owing.from(0x7fffffff)->hasDirtyAttributes());
}

TEST(FlowOutBits, OfGroupsUnitProfilesAndTheAgent) {
  using namespace Maintenance;
  expectWords(MaintenanceGroup::configFactory("g", {}),
              {{0, 0, true}, {259, 0, true}, {260, 0x2, false}, {0x7fffffff, 0x2, false}});
  expectWords(MaintenanceGroup::configDirFactory("d"),
              {{0, 0, true}, {258, 0, true}, {259, 0x2, false}, {0x7fffffff, 0x2, false}});
  expectWords(MaintenanceUnitProfile::configDirFactory("d"),
              {{0, 0, true}, {258, 0, true}, {259, 0x2, false}, {0x7fffffff, 0x2, false}});
  expectWords(agentInfoFactory("a"), {{lowest, 0x2e, true},
                                      {0, 0x2e, true},
                                      {258, 0x2e, true},
                                      {259, 0x2c, true},
                                      {260, 0x28, true},
                                      {261, 0x20, true},
                                      {262, 0x30, true},
                                      {263, 0x10, false}});
}

TEST(FlowOutBits, AUnitProfilesStandInASecondWordAlone) {
  const Owing<MaintenanceUnitProfile::Config> owing(MaintenanceUnitProfile::configFactory("p"));
  for (const auto& [start, word, isDirty] : std::initializer_list<Row>{{lowest, 0x3, true},
                                                                       {0, 0x3, true},
                                                                       {258, 0x3, true},
                                                                       {387, 0x3, true},
                                                                       {388, 0x2, true},
                                                                       {390, 0x2, true},
                                                                       {391, 0, false}}) {
    const auto flowOut = owing.from(start);
    EXPECT_EQ(flowOut->zelDirtyBitSet1().word(), word) << start;
    EXPECT_EQ(flowOut->hasDirtyAttributes(), isDirty) << start;
  }
  const auto flowOut = owing.from(0x7fffffff);
  flowOut->zelDirtyBitSet1().zelIsOnBootEnabledDirtyIs(true);
  EXPECT_EQ(flowOut->zelDirtyBitSet1().word(), 0x2U);
  flowOut->zelDirtyBitSet1().zelIsOnBootDurationDirtyIs(true);
  EXPECT_EQ(flowOut->zelDirtyBitSet1().word(), 0x3U);
  flowOut->zelDirtyBitSet1().zelIsOnBootEnabledDirtyIs(false);
  EXPECT_EQ(flowOut->zelDirtyBitSet1().word(), 0x1U);
  EXPECT_TRUE(flowOut->hasDirtyAttributes());
}

TEST(FlowOutBits, EachSetterOfTheAgentHasItsBit) {
  const Owing<Maintenance::AgentInfo> owing(Maintenance::agentInfoFactory("a"));
  auto flowOut = owing.from(0x7fffffff);
  auto bits = flowOut->zelDirtyBitSet0();
  EXPECT_EQ(bits.word(), 0x10U);
  bits.zelIsAgentPidDirtyIs(true);
  EXPECT_EQ(bits.word(), 0x12U);
  bits.zelIsRestartCountDirtyIs(true);
  EXPECT_EQ(bits.word(), 0x16U);
  bits.zelIsOnBootDirtyIs(true);
  EXPECT_EQ(bits.word(), 0x1eU);
  bits.zelOnBootMaintEnterHasSyncedIs(false);
  EXPECT_EQ(bits.word(), 0xeU);
  bits.zelIsReadyDirtyIs(true);
  EXPECT_EQ(bits.word(), 0x2eU);
}

TEST(FlowOutBits, AConstructorArgumentStartsClean) {
  expectWords(Zel::makeObject<Foreign::Order>("o", Foreign::express), {{lowest, 0, true},
                                                                       {0, 0, true},
                                                                       {259, 0, true},
                                                                       {260, 0, true},
                                                                       {261, 0x4, false},
                                                                       {0x7fffffff, 0x4, false}});
}

TEST(FlowOutBits, OfOtherTypes) {
  expectWords(Zel::makeObject<Foreign::Depot>("d"), {{0, 0x16, true},
                                                     {259, 0x14, true},
                                                     {260, 0x10, true},
                                                     {261, 0x18, true},
                                                     {262, 0x8, false}});
  expectWords(Zel::makeObject<Foreign::Carrier>("c"), {{0, 0x18, true},
                                                       {258, 0x18, true},
                                                       {259, 0x1a, true},
                                                       {260, 0x1e, true},
                                                       {261, 0x16, true},
                                                       {262, 0x6, false}});
  expectWords(Zel::makeObject<Foreign::Rack>("r"), {{0, 0x1ca2, true},
                                                    {260, 0x1ca0, true},
                                                    {262, 0x1cac, true},
                                                    {265, 0x1cdc, true},
                                                    {267, 0x1c5c, true},
                                                    {270, 0x1b5c, true},
                                                    {271, 0x135c, true},
                                                    {272, 0x35c, false}});
  expectWords(Zel::makeObject<Foreign::Product>(Foreign::SkuKey()),
              {{0, 0x2, true}, {260, 0, true}, {261, 0x4, false}});
}

TEST(FlowOutBits, ADerivedTypeHasASecondWordFromItsLowestBitOn) {
  const Owing<Foreign::Perishable> owing(Zel::makeObject<Foreign::Perishable>("milk"));
  struct Words {
    AttributeId start;
    unsigned base;
    unsigned own;
  };
  for (const auto& [start, base, own] : std::initializer_list<Words>{{lowest, 0x2, 0xd},
                                                                     {0, 0x2, 0xd},
                                                                     {259, 0x2, 0xd},
                                                                     {260, 0, 0xd},
                                                                     {261, 0x4, 0xd},
                                                                     {387, 0x4, 0xd},
                                                                     {388, 0x4, 0xc},
                                                                     {389, 0x4, 0xc},
                                                                     {390, 0x4, 0xe},
                                                                     {391, 0x4, 0xa},
                                                                     {392, 0x4, 0x2},
                                                                     {0x7fffffff, 0x4, 0x2}}) {
    const auto flowOut = owing.from(start);
    EXPECT_EQ(flowOut->zelDirtyBitSet0().word(), base) << start;
    EXPECT_EQ(flowOut->zelDirtyBitSet1().word(), own) << start;
    EXPECT_EQ(flowOut->hasDirtyAttributes(), start < 392) << start;
  }
}

TEST(FlowOutBits, EachSetterHasItsBit) {
  const Owing<Maintenance::Unit::Status> owing(Maintenance::Unit::statusFactory("u"));
  const auto flowOut = owing.from(0x7fffffff);
  auto bits = flowOut->zelDirtyBitSet0();
  using Bits = decltype(bits);
  using Setter = void (Bits::*)(bool);
  const auto expectBit = [&](Setter setter, unsigned bit) {
    (bits.*setter)(true);
    EXPECT_EQ(bits.word(), 0x2204 | bit);
    (bits.*setter)(false);
    EXPECT_EQ(bits.word(), 0x2204 & ~bit);
    EXPECT_EQ(flowOut->hasDirtyAttributes(), (0x2204 & bit) != 0);
    (bits.*setter)((0x2204 & bit) != 0);
  };
  expectBit(&Bits::zelIsUnitTypeDirtyIs, 0x2);
  expectBit(&Bits::zelGroupHasSyncedIs, 0x4);
  expectBit(&Bits::zelIsProfileNameDirtyIs, 0x8);
  expectBit(&Bits::zelIsStateDirtyIs, 0x10);
  expectBit(&Bits::zelIsReasonDirtyIs, 0x20);
  expectBit(&Bits::zelIsTimeOfStateChangeDirtyIs, 0x40);
  expectBit(&Bits::zelIsOnBootMaintExitTimeDirtyIs, 0x80);
  expectBit(&Bits::zelIsHistorySizeDirtyIs, 0x100);
  expectBit(&Bits::zelHistoryHasSyncedIs, 0x200);
  expectBit(&Bits::zelIsMaintEnterInstanceDirtyIs, 0x400);
  expectBit(&Bits::zelIsMaintExitInstanceDirtyIs, 0x800);
  expectBit(&Bits::zelIsAggTrafficRateDirtyIs, 0x1000);
  expectBit(&Bits::zelIntfsViolatingTrafficThresholdHasSyncedIs, 0x2000);
  expectBit(&Bits::zelIsTotalIntfTrafficViolationsDirtyIs, 0x4000);
  expectBit(&Bits::zelIsGenIdDirtyIs, 0x8000);
}

TEST(FlowOutBits, OfADerivedTypeTheSettersDoNotMeet) {
  const Owing<Foreign::Perishable> owing(Zel::makeObject<Foreign::Perishable>("milk"));
  const auto flowOut = owing.from(0x7fffffff);
  flowOut->zelDirtyBitSet1().zelIsShelfLifeDirtyIs(true);
  EXPECT_EQ(flowOut->zelDirtyBitSet0().word(), 0x4U);
  EXPECT_EQ(flowOut->zelDirtyBitSet1().word(), 0x3U);
  EXPECT_TRUE(flowOut->hasDirtyAttributes());
  flowOut->zelDirtyBitSet1().zelIsShelfLifeDirtyIs(false);
  flowOut->zelDirtyBitSet0().zelIsPriceDirtyIs(true);
  EXPECT_EQ(flowOut->zelDirtyBitSet0().word(), 0x6U);
  EXPECT_EQ(flowOut->zelDirtyBitSet1().word(), 0x2U);
  EXPECT_TRUE(flowOut->hasDirtyAttributes());
}

} // namespace
