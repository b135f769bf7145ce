#include "HandMade.h"

#include <support/Failure.h>

#include <algorithm>

namespace Registration {

namespace {

using Support::messageOf;
using Zel::InternalException;

class Reactor : public HandMadeTest {};

TEST_F(Reactor, IsOneForTheProcess) {
  ASSERT_TRUE(reactor);
  EXPECT_EQ(Zel::IntrospectionReactor::global(), reactor);
  Zel::IntrospectionReactor::readyIs(false);
  EXPECT_EQ(Zel::IntrospectionReactor::global(), nullptr);
  Zel::IntrospectionReactor::readyIs(true);
  EXPECT_EQ(Zel::IntrospectionReactor::global(), reactor);
}

TEST_F(Reactor, HasNoScopeOpenWhenAllModulesAreLoaded) {
  EXPECT_EQ(messageOf<InternalException>([&] { reactor->handleScopeExit(); }), "no scope is open");
}

TEST_F(Reactor, RefusesABaseThatIsNotTheDescriptors) {
  EXPECT_EQ(messageOf<InternalException>([&] {
              reactor->handleType(constant(type),
                                  Zel::Ptr<const Zel::ZelType>(Zel::Entity::_fwkType()));
            }),
            "another base than the descriptor's: Lathe");
  EXPECT_EQ(messageOf<InternalException>([&] { reactor->handleScopeExit(); }), "no scope is open");
}

TEST_F(Reactor, TakesOnlyTheLastAttributeOfTheTypeThatIsOpen) {
  const auto attr = [&](const char* name) {
    return Zel::makeObject<Zel::ZelAttr>(type.ptr(), name, Zel::Builtin<bool>::_fwkType(), nullptr,
                                         Zel::FlagWords{0x220143, 0x400}, 2U, 130);
  };
  const auto speed = attr("speed");
  const auto feed = attr("feed");
  const std::string message = "not the last attribute of the open type: speed";
  EXPECT_EQ(messageOf<InternalException>([&] { reactor->handleAttr(speed); }), message);

  reactor->handleNameSpace("Testbed");
  EXPECT_EQ(messageOf<InternalException>([&] { reactor->handleAttr(speed); }), message);
  reactor->handleType(constant(type), nullptr);
  EXPECT_EQ(messageOf<InternalException>([&] { reactor->handleAttr(speed); }), message);
  type->attributeQEnq(speed);
  reactor->handleAttr(speed);
  EXPECT_EQ(messageOf<InternalException>([&] { reactor->handleAttr(speed); }), message);
  EXPECT_EQ(messageOf<InternalException>([&] { reactor->handleScopeExit(); }),
            "an attribute's context is open");
  reactor->handleAttrContextExit();
  type->attributeQEnq(feed);
  EXPECT_EQ(messageOf<InternalException>([&] { reactor->handleAttr(speed); }), message);
  reactor->handleAttr(feed);
  reactor->handleAttrContextExit();
  reactor->handleScopeExit();
  reactor->handleScopeExit();

  EXPECT_EQ(messageOf<InternalException>([&] { reactor->handleScopeExit(); }), "no scope is open");
  const auto& scopes = reactor->root().scopes();
  const auto testbed = std::find_if(scopes.begin(), scopes.end(),
                                    [](const auto& scope) { return scope.name() == "Testbed"; });
  ASSERT_NE(testbed, scopes.end());
  EXPECT_EQ(testbed->types().back(), type.ptr());
}

TEST_F(Reactor, MakesAttributesOfTheOpenTypeAlone) {
  const std::string message = "not the open type: Lathe";
  EXPECT_EQ(messageOf<InternalException>([&] { define("speed", 258); }), message);
  const auto other = Zel::makeObject<HandMade>("Saw");
  other->referencesLeak();
  {
    const Open open(other);
    EXPECT_EQ(messageOf<InternalException>([&] { define("speed", 258); }), message);
  }
  EXPECT_TRUE(type->attributeQ().empty());
  const Open open(type);
  define("speed", 258);
  EXPECT_EQ(type->attributeQ().size(), 1U);
}

TEST_F(Reactor, ClosesOnlyAContextThatIsOpen) {
  EXPECT_EQ(messageOf<InternalException>([&] { reactor->handleAttrContextExit(); }),
            "no attribute's context is open");
}

TEST_F(Reactor, MakesAttributesAtTheEndOfTheirTypesList) {
  const Open open(type);
  const Zel::FlagWords flags{0x1a20143, 0x1000400};
  const auto made = reactor->defNoninstantiatingAttr(
      type.ptr(), "chuck", Zel::Builtin<bool>::_fwkType(), Zel::Name::_fwkType(), flags, 2, 258);
  ASSERT_EQ(type->attributeQ().size(), 1U);
  EXPECT_EQ(type->attributeQ().back(), made);
  EXPECT_EQ(made->container(), type.ptr());
  EXPECT_EQ(made->name(), "chuck");
  EXPECT_EQ(made->attrType(), Zel::Builtin<bool>::_fwkType());
  EXPECT_EQ(made->indexType(), Zel::Name::_fwkType());
  EXPECT_EQ(made->flags(), flags);
  EXPECT_EQ(made->introspectionFlags(), 2U);
  EXPECT_EQ(made->id(), 258);
  EXPECT_EQ(made->row(), nullptr);
}

} // namespace

} // namespace Registration
