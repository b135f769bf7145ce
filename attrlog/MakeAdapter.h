#pragma once

#include <attrlog/AdapterOf.h>

namespace Zel {

template <class T>
Ptr<Entity::ZelNboAttrLogSa> makeAdapter(PtrInterface::NotifieeConst::Zel_BitSet flags,
                                         const Ptr<T>& entity, unsigned option,
                                         const Ptr<NboAttrLog::Out>& out, PtrInterface* owner) {
  return makeObject<typename T::ZelNboAttrLogSa>(flags, entity, option, out, owner);
}

} // namespace Zel

/// Gives type `T` its adapters, outside of any namespace.
#define ZEL_ADAPTER(T)                                                                             \
  template Zel::Ptr<Zel::Entity::ZelNboAttrLogSa> Zel::makeAdapter<T>(                             \
      Zel::PtrInterface::NotifieeConst::Zel_BitSet, const Zel::Ptr<T>&, unsigned,                  \
      const Zel::Ptr<Zel::NboAttrLog::Out>&, Zel::PtrInterface*);
