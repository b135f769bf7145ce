#pragma once

#include "Ends.h"

/// An entity that is mirrored, with its adapter under its own type.
template <class T>
class Announced {
public:
  explicit Announced(Zel::Ptr<T> root) : entity(std::move(root)) {
    sender.announce(entity);
    adapter = Zel::ptrCast<typename T::ZelNboAttrLogSa>(
        entity->zelNboAttrLogSa(Zel::Ptr<const Zel::NboAttrLog::Out>(sender.out())));
  }

  const Sender sender;
  const Zel::Ptr<T> entity;
  Zel::Ptr<typename T::ZelNboAttrLogSa> adapter;
};

/// What an adapter owes that owes nothing yet.
template <class T>
Zel::Ptr<typename T::ZelNboAttrLogSa::FlowOut> cleanOf(const Zel::Ptr<T>& entity) {
  const auto out = Zel::makeObject<Zel::NboAttrLog::Out>(65536U);
  return Zel::makeObject<typename T::ZelNboAttrLogSa::FlowOut>(
      out, entity->zelNboAttrLogSaIs({}, 1, out, nullptr), Zel::ConnectDesc(), false, 0x7fffffff);
}
