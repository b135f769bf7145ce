#include <Zel/TypeTable>
#include <model/MaintenanceUnitProfile.h>
#include <model/Profile.h>
#include <model/Unit.h>

#include <gtest/gtest.h>

#include <string_view>
#include <vector>

namespace {

using Derived = MaintenanceUnitProfile::Config;
using Base = Maintenance::Profile::Config;
using Maintenance::Unit::Status;
using Zel::TypeTable;

std::vector<const TypeTable*> chainOf(const TypeTable& type) {
  std::vector<const TypeTable*> tables;
  for (const TypeTable& table : type.chain()) {
    tables.push_back(&table);
  }
  return tables;
}

std::vector<std::string_view> rowsOf(const TypeTable& type) {
  std::vector<std::string_view> names;
  type.forEachRow([&](const Zel::AttrRow& row) { names.push_back(row.name); });
  return names;
}

TEST(TypeTables, OfferThemselvesAndTheirBases) {
  EXPECT_EQ(chainOf(Status::zelTable()), std::vector{&Status::zelTable()});
  EXPECT_EQ(chainOf(Derived::zelTable()), (std::vector{&Derived::zelTable(), &Base::zelTable()}));
}

TEST(TypeTables, OfferTheRowsOfTheirBasesFirst) {
  std::vector<std::string_view> expected = rowsOf(Base::zelTable());
  ASSERT_FALSE(expected.empty());
  for (const Zel::AttrRow& row : Derived::zelTable().rows) {
    expected.push_back(row.name);
  }
  EXPECT_EQ(rowsOf(Derived::zelTable()), expected);
}

TEST(TypeTables, FindTheirOwnRowsBeforeThoseOfTheirBases) {
  const TypeTable& derived = Derived::zelTable();
  EXPECT_EQ(derived.row(Base::Attr::key), Base::zelTable().ownRow(Base::Attr::key));
  EXPECT_EQ(derived.row("key"), Base::zelTable().row("key"));
  EXPECT_EQ(derived.row(Derived::Attr::onBootDuration)->name, "onBootDuration");
  EXPECT_EQ(derived.row(Zel::AttributeId{999}), nullptr);
  EXPECT_EQ(derived.row("nothing"), nullptr);
}

} // namespace
