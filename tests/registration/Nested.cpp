#include <Zel/IntrospectionReactor>
#include <generic/TypeOf.h>
#include <registration/Module.h>

#include <gtest/gtest.h>

/// Two modules, of which the upper names a type of the lower, and an enumeration with an enumerator
/// that has the name of what all enumerations have.
namespace Sawmill {

enum Grain : int { fine = 3, value = 7 };

inline constexpr Zel::Enumerator grainRows[] = {{fine, "fine"}, {value, "value"}};

const Zel::ZelType* _fwkType_Grain();
constexpr Zel::EnumTable enumTable(Grain) {
  return {"Lower::Grain", "Grain", grainRows, _fwkType_Grain};
}

class Board {
public:
  static constexpr std::string_view zelTypeName = "Upper::Board";
  static const Zel::TypeTable& zelTable();
  static const Zel::ZelType* _fwkType();

  Grain grain() const noexcept { return grain_; }
  void grainIs(Grain grain) noexcept { grain_ = grain; }
  friend bool operator==(const Board& a, const Board& b) noexcept = default;

private:
  Grain grain_ = fine;
};

constexpr Zel::AttrRow rows[] = {
    Zel::Rows<Board>::valueMember<&Board::grain, &Board::grainIs>(2, "grain"),
};
constexpr Zel::TypeTable table = Zel::tableOf<Board>(rows);
const Zel::TypeTable& Board::zelTable() { return table; }

constexpr std::string_view lowerScopes[] = {"Lower"};
constexpr std::string_view upperScopes[] = {"Upper"};
constinit Zel::ModuleOf<Zel::TypeList<Grain>> lower(lowerScopes);
constinit Zel::ModuleOf<Zel::TypeList<Board>> upper(upperScopes);

const Zel::ZelType* _fwkType_Grain() { return lower.fwkType<Grain>(); }
const Zel::ZelType* Board::_fwkType() { return upper.fwkType<Board>(); }

} // namespace Sawmill

namespace {

using namespace Sawmill;

bool isOutermost(std::string_view name) {
  for (const Zel::NameSpace& scope : Zel::IntrospectionReactor::global()->root().scopes()) {
    if (scope.name().view() == name) {
      return true;
    }
  }
  return false;
}

TEST(NestedModules, OpenTheirScopesAtTheOutermostWhoeverAsksForThem) {
  upper.load();
  EXPECT_TRUE(upper.registered());
  EXPECT_TRUE(lower.registered());
  EXPECT_TRUE(isOutermost("Upper"));
  EXPECT_TRUE(isOutermost("Lower"));
}

TEST(NestedModules, KeepTheValueOfAnEnumerationApartFromAnEnumeratorOfThatName) {
  const Zel::ZelType* const type = _fwkType_Grain();
  ASSERT_NE(type->valAttr(), nullptr);
  EXPECT_EQ(type->valAttr()->id(), 1);
  EXPECT_EQ(type->attr("value")->id(), 7);
}

TEST(TreeOfTypes, KeepsTheNameThatATypeWasFirstEnteredBy) {
  const Zel::ZelType* const type = Board::_fwkType();
  Zel::ZelType::typeNodeIs(type, "Upper::Board");
  Zel::ZelType::typeNodeIs(type, "Upper::ANameThatIsLongEnoughToBeAllocatedByItself");
  EXPECT_EQ(type->fullName(), Zel::Name("Upper::Board"));
  EXPECT_EQ(Zel::ZelType::type("Upper::Board"), type);
  EXPECT_EQ(Zel::ZelType::type("Upper::ANameThatIsLongEnoughToBeAllocatedByItself"), nullptr);
}

} // namespace
