#include "GenericFixture.h"

#include <generic/Unit.h>

// What the generic interface asks for where configured units and inputs are made and written.

namespace {

using namespace TestGeneric;
using namespace Maintenance::Unit;
using Zel::Name;

Handle made(const Zel::ZelType* descriptor, const Handle& list) {
  return descriptor->genericIf(static_cast<const GenericIf*>(list.ptr()), false);
}

class MergedUnits : public testing::Test {
protected:
  static constexpr Zel::AttributeId unit = 258;
  static constexpr Zel::AttributeId priority = 259;
  const Ptr<MergedInputDir> dir = mergedInputDirFactory("merged");
  const Handle object = Zel::generic(dir);
};

TEST_F(MergedUnits, AreMadeFromNameAndPriority) {
  const Handle first = Zel::createMember(object, unit, Name("System"), srcCli);
  EXPECT_EQ(dir->unit("System")->priority(), srcCli);
  EXPECT_EQ(Zel::readAttribute<Name>(first, 258), "System");
  EXPECT_EQ(Zel::readAttribute<InputSrc>(first, priority), srcCli);

  const Handle second = Zel::createMember(object, unit, Name("System"), srcOnBoot);
  EXPECT_EQ(second->voidPtrIs(Ptr<const Zel::ZelType>(MergedInput::_fwkType())),
            first->voidPtrIs(Ptr<const Zel::ZelType>(MergedInput::_fwkType())));
  EXPECT_EQ(Zel::readAttribute<InputSrc>(first, priority), srcOnBoot);
  EXPECT_EQ(dir->unitMap().count(), 1U);
}

TEST_F(MergedUnits, NeedBothArguments) {
  EXPECT_EQ(messageOf<Zel::TypeException>([&] { Zel::createMember(object, unit, Name("System")); }),
            "argument missing or of the wrong type: priority");
  EXPECT_EQ(
      messageOf<Zel::TypeException>([&] { Zel::createMember(object, unit, nullptr, srcCli); }),
      "argument missing or of the wrong type: name");
  EXPECT_EQ(messageOf<Zel::TypeException>(
                [&] { Zel::createMember(object, unit, Name("System"), builtin); }),
            "argument missing or of the wrong type: UnitType");
  EXPECT_EQ(dir->unitMap().count(), 0U);
}

TEST(UnitLists, MakeWhatTheFactoriesMake) {
  const Handle config = made(Config::_fwkType(), Zel::arguments(Name("System")));
  EXPECT_EQ(Zel::readAttribute<Zel::String8>(config, 258), "System");
  EXPECT_EQ(Zel::readAttribute<UnitType>(config, 259), userConfigured);
  EXPECT_TRUE(made(ConfigDir::_fwkType(), Zel::arguments(Name("configured"))));
  const Handle input = made(Input::_fwkType(), Zel::arguments(Name("cli")));
  EXPECT_EQ(Zel::readAttribute<InputSrc>(input, 258), srcUnknown);
  const Handle merged = made(MergedInput::_fwkType(), Zel::arguments(Name("System"), srcOnBootCli));
  EXPECT_EQ(Zel::readAttribute<Name>(merged, 258), "System");
  EXPECT_EQ(Zel::readAttribute<InputSrc>(merged, 259), srcOnBootCli);
  EXPECT_TRUE(made(MergedInputDir::_fwkType(), Zel::arguments(Name("merged"))));
  EXPECT_EQ(messageOf<Zel::TypeException>(
                [] { made(MergedInput::_fwkType(), Zel::arguments(Name("System"))); }),
            "argument missing or of the wrong type: priority");
}

TEST(UnitLists, OfAnInputItsUnitsAreKeyedByText) {
  const auto input = inputFactory("cli");
  const Handle object = Zel::generic(input);
  Zel::setMember(object, 259, "System", false);
  EXPECT_EQ(Zel::count(object, 259), 1U);
  EXPECT_FALSE(Zel::readMember<bool>(object, 259, "System"));
  EXPECT_EQ(input->unitMap().count(), 1U);
}

} // namespace
