#include "Descriptors.h"

#include <Zel/GenericIf>

#include <gmock/gmock.h>

#include <algorithm>
#include <string>

namespace Conformance {

namespace {

bool isUnderTest(const Zel::ZelType* type) {
  const std::string_view name = type->fullName().view();
  return name.starts_with("Maintenance::") || name.starts_with("MaintenanceUnitProfile::") ||
         name.starts_with("Foreign::");
}

std::string_view shortName(std::string_view fullName) {
  return fullName.substr(fullName.rfind(':') + 1);
}

std::string_view nameOf(const Zel::ZelType* type) {
  return type != nullptr ? type->fullName().view() : std::string_view();
}

TEST(TypeDescriptors, OfAllExpectedTypesAndNoOthersAreInTheTreeInTheOrderOfTheModules) {
  std::vector<std::string_view> expected;
  for (const ExpectedDescriptor& type : expectedDescriptors()) {
    expected.push_back(type.name);
  }
  std::vector<std::string_view> registered;
  for (const Zel::ZelType* const type : Zel::ZelType::types()) {
    if (isUnderTest(type)) {
      registered.push_back(type->fullName().view());
    }
  }
  EXPECT_EQ(registered, expected);
}

/// Whether the library itself has it.
bool isOfModel(const Zel::ZelType* type) {
  return !type->fullName().view().starts_with("Foreign::");
}

TEST(TypeDescriptors, BetweenThemHaveEachCombinationOfFlagsAndNoOther) {
  std::vector<bool> met(combinations().size(), false);
  for (const Zel::ZelType* const type : Zel::ZelType::types()) {
    if (!isUnderTest(type)) {
      continue;
    }
    for (const auto& attr : type->attributeQ()) {
      bool known = false;
      for (std::size_t i = 0; i < combinations().size(); ++i) {
        const Combination& one = combinations()[i];
        if (attr->flags() == one.flags &&
            (attr->introspectionFlags() == one.introspection || attr->id() == 130)) {
          known = true;
          met[i] = met[i] || isOfModel(type);
        }
      }
      EXPECT_TRUE(known) << type->fullName() << ' ' << attr->name();
    }
  }
  EXPECT_THAT(met, testing::Each(true));
}

class TypeDescriptor : public testing::TestWithParam<ExpectedDescriptor> {
protected:
  const ExpectedDescriptor& expected() const { return GetParam(); }
  const Zel::ZelType& type() const { return *Zel::ZelType::type(expected().name); }

  /// What the type inherits and what it registers itself.
  static std::vector<ExpectedAttr> attributesOf(const ExpectedDescriptor& type) {
    std::vector<ExpectedAttr> all;
    if (type.base == "Zel::Entity") {
      all.assign(entityAttributes().begin(), entityAttributes().end());
    }
    for (const ExpectedDescriptor& base : expectedDescriptors()) {
      if (base.name == type.base) {
        all = attributesOf(base);
      }
    }
    all.insert(all.end(), type.attributes.begin(), type.attributes.end());
    return all;
  }
};

TEST_P(TypeDescriptor, TellsTheTypeItself) {
  EXPECT_EQ(type().name().view(), shortName(expected().name));
  EXPECT_EQ(type().fullName().view(), expected().name);
  EXPECT_EQ(type().outerType(), nullptr);
  EXPECT_EQ(type().flags(), expected().flags);
  EXPECT_EQ(type().size(), expected().size);
  EXPECT_EQ(type().isValue(), (expected().flags.first & 0x1) != 0);
  EXPECT_EQ(type().isEnumType(), (expected().flags.first & 0x10) != 0);
  EXPECT_EQ(type().isEntity(), (expected().flags.second & 0x8000000) != 0);
  EXPECT_TRUE(type().hasGenericIfSupport());
}

TEST_P(TypeDescriptor, HangsInTheTreeOfTypesBelowItsBase) {
  EXPECT_EQ(nameOf(type().base()), expected().base);
  EXPECT_TRUE(type().isA(&type()));
  if (expected().base.empty()) {
    EXPECT_FALSE(type().isA(Zel::PtrInterface::_fwkType()));
    EXPECT_TRUE(type().derivedTypeQ().empty());
    return;
  }
  EXPECT_TRUE(type().isA(Zel::PtrInterface::_fwkType()));
  EXPECT_EQ(type().isA(Zel::Entity::_fwkType()), type().isEntity());
  const auto& siblings = type().base()->derivedTypeQ();
  EXPECT_EQ(std::count_if(siblings.begin(), siblings.end(),
                          [&](const auto& sibling) { return sibling.ptr() == &type(); }),
            1);
  std::vector<std::string_view> derived;
  for (const ExpectedDescriptor& other : expectedDescriptors()) {
    if (other.base == expected().name) {
      derived.push_back(other.name);
    }
  }
  std::vector<std::string_view> told;
  for (const auto& other : type().derivedTypeQ()) {
    told.push_back(nameOf(other.ptr()));
  }
  EXPECT_EQ(told, derived);
}

TEST_P(TypeDescriptor, NamesItsConstructorArgumentsWithTheirTypes) {
  ASSERT_EQ(type().constructorArgNameQ().size(), expected().arguments.size());
  ASSERT_EQ(type().constructorArgTypeQ().size(), expected().arguments.size());
  for (std::size_t i = 0; i < expected().arguments.size(); ++i) {
    EXPECT_EQ(type().constructorArgNameQ()[i].view(), expected().arguments[i].name);
    EXPECT_EQ(type().constructorArgTypeQ()[i].view(), expected().arguments[i].type);
  }
}

TEST_P(TypeDescriptor, ListsTheAttributesThatItInheritsAndThenItsOwn) {
  const std::vector<ExpectedAttr> attributes = attributesOf(expected());
  const std::size_t inherited = attributes.size() - expected().attributes.size();
  ASSERT_EQ(type().attributeQ().size(), attributes.size());
  for (std::size_t i = 0; i < attributes.size(); ++i) {
    const ExpectedAttr& attribute = attributes[i];
    SCOPED_TRACE(attribute.name);
    const Zel::ZelAttr& attr = *type().attributeQ()[i];
    EXPECT_EQ(attr.container(), &type());
    EXPECT_EQ(attr.id(), attribute.id);
    EXPECT_EQ(attr.name().view(), attribute.name);
    EXPECT_EQ(attr.flags(), attribute.flags);
    EXPECT_EQ(attr.introspectionFlags(), attribute.introspection);
    EXPECT_EQ(nameOf(attr.attrType()), attribute.type);
    EXPECT_EQ(nameOf(attr.indexType()), attribute.index);
    if (i < inherited) { // a copy, made for this type
      EXPECT_NE(&attr, type().base()->attributeQ()[i].ptr());
    }
  }
}

TEST_P(TypeDescriptor, NamesTheKeyThatMembersBring) {
  for (const ExpectedAttr& attribute : attributesOf(expected())) {
    SCOPED_TRACE(attribute.name);
    const Zel::ZelAttr& attr = *type().attr(attribute.name);
    EXPECT_EQ(attr.keyAttrName().view(), attribute.keyAttribute);
    EXPECT_EQ(attr.indexName().view(), attribute.keyAttribute);
    EXPECT_EQ(attr.indexOption(), 0U);
    if (attribute.keyAttribute.empty()) {
      EXPECT_EQ(attr.keyAttr(), nullptr);
      EXPECT_EQ(attr.keyTypeName(), "");
      EXPECT_EQ(attr.indexFlags(), 0U);
    } else {
      ASSERT_NE(attr.keyAttr(), nullptr);
      EXPECT_EQ(attr.keyAttr()->name().view(), attribute.keyAttribute);
      EXPECT_EQ(attr.keyAttr()->container(), attr.attrType());
      EXPECT_EQ(nameOf(attr.keyAttr()->attrType()), attribute.index);
      EXPECT_EQ(attr.keyTypeName().view(), attribute.index);
      EXPECT_EQ(attr.indexFlags(), 0x22U);
    }
  }
}

TEST_P(TypeDescriptor, FindsAttributesByNameAndById) {
  const std::vector<ExpectedAttr> attributes = attributesOf(expected());
  for (const ExpectedAttr& attribute : attributes) {
    SCOPED_TRACE(attribute.name);
    // Of two with one name, the later is the type's own; so it is of two with one id.
    std::size_t lastOfName = 0;
    std::size_t lastOfId = 0;
    for (std::size_t i = 0; i < attributes.size(); ++i) {
      lastOfName = attributes[i].name == attribute.name ? i : lastOfName;
      lastOfId = attributes[i].id == attribute.id ? i : lastOfId;
    }
    EXPECT_EQ(type().attr(attribute.name), type().attributeQ()[lastOfName].ptr());
    EXPECT_EQ(type().attr(Zel::Name(attribute.name)), type().attributeQ()[lastOfName].ptr());
    EXPECT_EQ(type().attr(attribute.id), type().attributeQ()[lastOfId].ptr());
  }
  EXPECT_EQ(type().attr("noSuchAttribute"), nullptr);
  EXPECT_EQ(type().attr(""), nullptr);
  EXPECT_EQ(type().attr(Zel::AttributeId{1000}), nullptr);
}

TEST_P(TypeDescriptor, KnowsTheNumberOfAnEnumeration) {
  EXPECT_EQ(type().valAttr(), type().isEnumType() ? type().attr("value") : nullptr);
  EXPECT_EQ(type().enumeration() != nullptr, type().isEnumType());
  EXPECT_EQ(type().record() != nullptr, type().isValue());
  EXPECT_EQ(type().table() != nullptr, !type().isEnumType());
}

TEST_P(TypeDescriptor, LinksEachAttributeToItsRow) {
  for (const auto& attr : type().attributeQ()) {
    SCOPED_TRACE(attr->name());
    const bool ofFramework = attr->introspectionFlags() == 8;
    if (ofFramework || type().isEnumType()) {
      EXPECT_EQ(attr->row(), nullptr);
      continue;
    }
    ASSERT_NE(attr->row(), nullptr);
    EXPECT_EQ(attr->row()->id, attr->id());
    EXPECT_EQ(attr->row()->name, attr->name().view());
    EXPECT_EQ(attr->row(), type().table()->row(attr->id()));
  }
}

TEST_P(TypeDescriptor, MakesAnEntityThatTakesItsNameAlone) {
  const auto made = type().newEntity("north", nullptr);
  ASSERT_EQ(static_cast<bool>(made), expected().madeByName);
  if (made) {
    EXPECT_EQ(made->name(), "north");
    EXPECT_EQ(made->fwkType(), &type());
    EXPECT_EQ(made->references(), 1U);
  }
}

std::string typeName(const testing::TestParamInfo<ExpectedDescriptor>& type) {
  std::string name(type.param.name);
  std::erase(name, ':');
  return name;
}

INSTANTIATE_TEST_SUITE_P(Types, TypeDescriptor, testing::ValuesIn(expectedDescriptors()), typeName);

} // namespace

} // namespace Conformance
