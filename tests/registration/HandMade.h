#pragma once

#include <Zel/IntrospectionReactor>

#include <gtest/gtest.h>

#include <vector>

namespace Registration {

/// A type that a test fills by hand.
class HandMade : public Zel::ZelType {
public:
  explicit HandMade(const char* name, const Zel::ZelType* base = nullptr,
                    const Zel::ZelType* outer = nullptr, Zel::FlagWords flags = {})
      : ZelType(name, outer, base, flags) {}
  unsigned flagWrites = 0;
  void typeFlagsDoEmbeddedWriteConstraints() override { ++flagWrites; }
};

inline Zel::Ptr<const Zel::ZelType> constant(const Zel::Ptr<HandMade>& type) { return type; }

/// Keeps the scope of a type open, in a name scope of the tests.
class Open {
public:
  explicit Open(const Zel::Ptr<HandMade>& type) {
    reactor_->handleNameSpace("Testbed");
    reactor_->handleType(constant(type), Zel::Ptr<const Zel::ZelType>(type->base()));
  }
  Open(const Open&) = delete;
  Open& operator=(const Open&) = delete;
  ~Open() {
    reactor_->handleScopeExit();
    reactor_->handleScopeExit();
  }

private:
  const Zel::Ptr<Zel::IntrospectionReactor> reactor_ = Zel::IntrospectionReactor::global();
};

/// A type made by hand and the reactor.
class HandMadeTest : public testing::Test {
protected:
  Zel::Ptr<Zel::ZelAttr> define(const char* name, Zel::AttributeId id) {
    return reactor->defNoninstantiatingAttr(type.ptr(), name, Zel::Builtin<bool>::_fwkType(),
                                            nullptr, Zel::FlagWords{0x20001, 0x400}, 0, id);
  }

  const Zel::Ptr<Zel::IntrospectionReactor> reactor = Zel::IntrospectionReactor::global();
  const Zel::Ptr<HandMade> type = [] {
    static auto* const kept = new std::vector<Zel::Ptr<HandMade>>; // scopes list types for good
    kept->push_back(Zel::makeObject<HandMade>("Lathe"));
    return kept->back();
  }();
};

} // namespace Registration
