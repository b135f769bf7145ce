#include <Zel/TypeTable>

#include <gtest/gtest.h>

#include <array>

namespace {

constexpr std::array names = {"a0", "a1", "a2", "a3", "a4", "a5", "a6", "a7", "a8", "a9",
                              "b0", "b1", "b2", "b3", "b4", "b5", "b6", "b7", "b8", "b9",
                              "c0", "c1", "c2", "c3", "c4", "c5", "c6", "c7", "c8", "c9"};

constexpr Zel::AttrRow row(Zel::AttributeId id, std::string_view name, Zel::AttrKind kind) {
  Zel::AttrRow made{};
  made.id = id;
  made.name = name;
  made.kind = kind;
  return made;
}

/// Rows from 258 on, in order.
template <std::size_t count>
constexpr std::array<Zel::AttrRow, count> rowsOf(Zel::AttrKind kind) {
  std::array<Zel::AttrRow, count> rows{};
  for (std::size_t i = 0; i < count; ++i) {
    rows[i] = row(258 + static_cast<Zel::AttributeId>(i), names[i], kind);
  }
  return rows;
}

constexpr Zel::AttrRow key = row(Zel::fwkKeyId, "fwkKey", Zel::AttrKind::frameworkKey);
constexpr Zel::AttrRow first = row(258, "first", Zel::AttrKind::singular);
constexpr Zel::AttrRow second = row(259, "second", Zel::AttrKind::computed);

template <class... Row>
constexpr bool inOrder(Row... rows) {
  const std::array<Zel::AttrRow, sizeof...(rows)> list{rows...};
  return Zel::rowsAreInOrder(list, 258);
}

// Each claim is one that the tables make at compile time; here they are held both ways.
#define EXPECT_CONSTANT(condition)                                                                 \
  static_assert(condition);                                                                        \
  EXPECT_TRUE(condition)

TEST(RowOrder, AcceptsConsecutiveIdsWithTheFrameworkKeyLast) {
  EXPECT_CONSTANT(inOrder(first));
  EXPECT_CONSTANT(inOrder(first, second));
  EXPECT_CONSTANT(inOrder(first, second, key));
  EXPECT_CONSTANT(inOrder(key));
  EXPECT_CONSTANT(Zel::rowsAreInOrder({}, 258));
}

TEST(RowOrder, RefusesIdsThatAreNotConsecutive) {
  EXPECT_CONSTANT(!inOrder(second));
  EXPECT_CONSTANT(!inOrder(second, first));
  EXPECT_CONSTANT(!inOrder(first, row(260, "third", Zel::AttrKind::singular)));
  EXPECT_CONSTANT(!inOrder(first, row(258, "again", Zel::AttrKind::singular)));
}

TEST(RowOrder, RefusesTheIdsOfAnotherLevelOfInheritance) {
  constexpr std::array rows{first, second};
  EXPECT_CONSTANT(!Zel::rowsAreInOrder(rows, Zel::firstAttributeId(1)));
  EXPECT_CONSTANT(!Zel::rowsAreInOrder(rows, Zel::firstAttributeId(3)));
}

TEST(RowOrder, RefusesANameThatIsThereTwice) {
  EXPECT_CONSTANT(!inOrder(first, row(259, "first", Zel::AttrKind::computed)));
  EXPECT_CONSTANT(!inOrder(row(258, "fwkKey", Zel::AttrKind::singular), key));
}

TEST(RowOrder, RefusesAFrameworkKeyThatIsNotLastOrHasAnotherId) {
  EXPECT_CONSTANT(!inOrder(key, first));
  EXPECT_CONSTANT(!inOrder(key, key));
  EXPECT_CONSTANT(!inOrder(first, row(259, "fwkKey", Zel::AttrKind::frameworkKey)));
  EXPECT_CONSTANT(!inOrder(first, row(0, "zero", Zel::AttrKind::singular)));
}

TEST(RowOrder, AcceptsAsManyFlowingAttributesAsAWordHasBitsForAndNoMore) {
  constexpr auto most = rowsOf<29>(Zel::AttrKind::singular);
  constexpr auto tooMany = rowsOf<30>(Zel::AttrKind::singular);
  constexpr auto tooManyCounters = rowsOf<30>(Zel::AttrKind::counter);
  constexpr auto constants = rowsOf<30>(Zel::AttrKind::constant);

  EXPECT_CONSTANT(Zel::rowsAreInOrder(most, 258));
  EXPECT_CONSTANT(!Zel::rowsAreInOrder(tooMany, 258));
  EXPECT_CONSTANT(!Zel::rowsAreInOrder(tooManyCounters, 258));
  EXPECT_CONSTANT(Zel::rowsAreInOrder(constants, 258));
}

#undef EXPECT_CONSTANT

} // namespace
