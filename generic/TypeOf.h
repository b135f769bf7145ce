#pragma once

#include <generic/Object.h>
#include <generic/Value.h>
#include <registration/TypeOf.h>

/// Generic access through descriptors: what `TypeOf<T>` makes of an address, a list and a text. A
/// program instantiates it for each of its types, where `T::GenericIf_` is complete:
///
///     template class Zel::TypeOf<Fan>;
namespace Zel {

/// A wrapper of a copy of the value at `raw`, of the default value for null. Not of an object.
template <class T>
Ptr<GenericIf> TypeOf<T>::genericIf(const void* raw, bool isConst) const {
  if constexpr (isObject) {
    return ZelType::genericIf(raw, isConst);
  } else if (raw == nullptr) {
    return ValueGenericIf<T>::GenericIf_Is(T(), isConst);
  } else {
    return ValueGenericIf<T>::GenericIf_Is(*static_cast<const T*>(raw), isConst);
  }
}

/// What is made is never const. Not of an enumeration, nor of a type that nobody may make.
template <class T>
Ptr<GenericIf> TypeOf<T>::genericIf(const GenericIf* list, [[maybe_unused]] bool isConst) const {
  const Ptr<const GenericIf> kept(list);
  if constexpr (isObject) {
    return objectFromList(source(), list);
  } else if constexpr (Detail::HasTable<T>) {
    return valueFromList(source(), list);
  } else {
    return ZelType::genericIf(list, isConst);
  }
}

template <class T>
Ptr<GenericIf> TypeOf<T>::genericIf(const String8& text, bool isConst) const {
  if constexpr (isObject) {
    return genericIf_(strepToValue<Ptr<T>>(text).ptr(), isConst);
  } else {
    return valueFromText(source(), text, isConst);
  }
}

template <class T>
Ptr<GenericIf> TypeOf<T>::genericIf_(PtrInterface* object, bool isConst) const {
  if constexpr (isObject) {
    const bool isOwn = object != nullptr && object->fwkType() == this; // spares most of a cast
    return genericIfOf(Ptr<T>(isOwn ? static_cast<T*>(object) : dynamic_cast<T*>(object)), isConst);
  } else {
    return ZelType::genericIf_(object, isConst);
  }
}

} // namespace Zel
