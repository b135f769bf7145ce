#pragma once

#include <generic/Object.h>
#include <generic/Value.h>

/// The generic interface in fewer words, for programs that name a type here and there:
///
///     const Zel::Ptr<Zel::GenericIf> unit = Zel::generic(status);
///     const Zel::AttributeId state = unit->attributeId("state");
///     Zel::writeAttribute(unit, state, Unit::active);
///     const auto now = Zel::readAttribute<Unit::State>(unit, state);
///
///     Zel::createMember(directory, StatusDir::Attr::status, Zel::Name("Linecard3"));
///
/// Attributes and arguments have exact types: a string literal is a `Zel::String8`, and where a
/// `Zel::Name` is asked for, one is to be given. All throw what `attributeOp` throws.
namespace Zel {

/// A type whose values have a text and a wrapper.
template <class V>
concept Wrappable = Enumeration<V> || std::same_as<V, bool> || std::same_as<V, unsigned> ||
    std::same_as<V, unsigned long long> || std::same_as<V, double> || requires {
  { V::_fwkType() } -> std::convertible_to<const ZelType*>;
};

/// A wrapper of a copy of a value.
template <Wrappable V>
Ptr<GenericIf> generic(const V& value, bool isConst = true) {
  return valueRecord<V>.type()->genericIf(static_cast<const void*>(&value), isConst);
}
inline Ptr<GenericIf> generic(const char* text, bool isConst = true) {
  return generic(String8(text), isConst);
}

/// A generic object of an object, as its own type; null for null.
template <std::derived_from<PtrInterface> T>
requires(!std::derived_from<T, GenericIf>) Ptr<GenericIf> generic(
    const Ptr<T>& object, bool isConst = std::is_const_v<T>) {
  auto* const shared = const_cast<std::remove_const_t<T>*>(object.ptr());
  return T::_fwkType()->genericIf(static_cast<PtrInterface*>(shared),
                                  isConst || std::is_const_v<T>);
}
template <std::derived_from<PtrInterface> T>
Ptr<GenericIf> generic(const ValidPtr<T>& object, bool isConst = std::is_const_v<T>) {
  return generic(Ptr<T>(object), isConst);
}
/// A generic object is its own.
template <std::derived_from<GenericIf> T>
const Ptr<T>& generic(const Ptr<T>& object) {
  return object;
}
inline Ptr<GenericIf> generic(std::nullptr_t /*none*/) { return nullptr; }

/// The value in a wrapper; it lives as long as that. Throws `TypeException` if there is no wrapper
/// or it is not one of a `V`.
template <class V>
const V& value(const Ptr<const GenericIf>& wrapper) {
  if (!wrapper) {
    GenericIf::throwTypeException(valueRecord<V>.type()->name().charPtr());
  }
  return *static_cast<const V*>(wrapper->voidPtrIs(Ptr<const ZelType>(valueRecord<V>.type())));
}

namespace Detail {

/// A value to be handed over: one that is held as const is copied.
inline const Ptr<GenericIf>& argument(const Ptr<GenericIf>& value) { return value; }
inline Ptr<GenericIf> argument(const Ptr<const GenericIf>& value) {
  return value ? const_cast<GenericIf&>(*value).clone() : nullptr;
}

} // namespace Detail

/// An argument list of values, of handles on objects, and of generic objects.
template <class... Argument>
Ptr<GenericIf> arguments(const Argument&... argument) {
  auto list = makeObject<GenericIf::List_>();
  list->hasNotificationActiveIs(true);
  (list->add(Detail::argument(generic(argument))), ...);
  return list;
}

namespace Detail {

/// An operation that changes nothing, on an object that may be held as const.
inline Ptr<GenericIf> readOp(const Ptr<const GenericIf>& object, AttributeId id,
                             GenericIf::AttributeOp::OpId op,
                             const Ptr<const GenericIf>& key = nullptr) {
  return const_cast<GenericIf&>(*object).attributeOp({id, op}, key, nullptr);
}

} // namespace Detail

/// What is read.
inline Ptr<GenericIf> readAttribute(const Ptr<const GenericIf>& object, AttributeId id) {
  return Detail::readOp(object, id, GenericIf::AttributeOp::opRead);
}
template <class V>
V readAttribute(const Ptr<const GenericIf>& object, AttributeId id) {
  return value<V>(readAttribute(object, id));
}

inline void writeAttribute(const Ptr<GenericIf>& object, AttributeId id,
                           const Ptr<GenericIf>& newValue) {
  object->attributeOp({id, GenericIf::AttributeOp::opWrite}, nullptr, newValue);
}
template <class V>
void writeAttribute(const Ptr<GenericIf>& object, AttributeId id, const V& newValue) {
  writeAttribute(object, id, generic(newValue));
}

/// Writes what a text says, as the attribute's type reads it. A `RangeException` of the reader
/// comes with the attribute's name.
inline void writeText(const Ptr<GenericIf>& object, AttributeId id, const String8& text) {
  const ZelAttr* const attribute = object->type()->attr(id);
  if (attribute == nullptr) {
    GenericIf::throwUnknownAttrException(object->type()->name().charPtr());
  }
  Ptr<GenericIf> read;
  try {
    read = attribute->attrType()->genericIf(text, true);
  } catch (const RangeException& failure) {
    rethrowFromDeserializeAttr(failure, attribute->name());
  }
  writeAttribute(object, id, read);
}

/// A member of a collection: a value, the default one if the key is not there, or an object, null
/// if it is not.
template <class Key>
Ptr<GenericIf> readMember(const Ptr<const GenericIf>& object, AttributeId id, const Key& key) {
  return Detail::readOp(object, id, GenericIf::AttributeOp::opRead, generic(key));
}
template <class V, class Key>
V readMember(const Ptr<const GenericIf>& object, AttributeId id, const Key& key) {
  return value<V>(readMember(object, id, key));
}

/// Adds a member to a collection of plain values, or changes it.
template <class Key, class V>
void setMember(const Ptr<GenericIf>& object, AttributeId id, const Key& key, const V& newValue) {
  object->attributeOp({id, GenericIf::AttributeOp::opWrite}, generic(key),
                      Detail::argument(generic(newValue)));
}

/// The member of a collection that makes them; the first argument is its key.
template <class... Argument>
Ptr<GenericIf> createMember(const Ptr<GenericIf>& object, AttributeId id,
                            const Argument&... argument) {
  return object->attributeOp({id, GenericIf::AttributeOp::opWrite}, nullptr,
                             arguments(argument...));
}

/// Takes a member out and yields it: the old value, or the object, null if it was not there.
template <class Key>
Ptr<GenericIf> deleteMember(const Ptr<GenericIf>& object, AttributeId id, const Key& key) {
  return object->attributeOp({id, GenericIf::AttributeOp::opDelete}, generic(key), nullptr);
}

/// Number of members of a collection.
inline unsigned count(const Ptr<const GenericIf>& object, AttributeId id) {
  return value<unsigned>(Detail::readOp(object, id, GenericIf::AttributeOp::opCount));
}

/// Whether a key is in a collection.
template <class Key>
bool exists(const Ptr<const GenericIf>& object, AttributeId id, const Key& key) {
  return value<bool>(Detail::readOp(object, id, GenericIf::AttributeOp::opExists, generic(key)));
}

} // namespace Zel
