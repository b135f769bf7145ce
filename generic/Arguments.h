#pragma once

#include <Zel/GenericIf>

#include <vector>

/// What generic objects of values and of objects share: arguments taken out of generic objects, and
/// results put into them.
namespace Zel {

/// The value that `argument` holds, as a `wanted`. Throws `TypeException` with `name` if it is
/// null, and with the argument's own type if it is none.
inline const void* unpacked(const GenericIf* argument, const ValueRecord& wanted,
                            std::string_view name) {
  if (argument == nullptr) [[unlikely]] {
    GenericIf::throwTypeException(String8(name).charPtr());
  }
  return argument->voidPtrIs(Ptr<const ZelType>(wanted.type()));
}

/// A generic object of a copy of a value. Throws `TypeException` with `name` if its type has no
/// descriptor.
inline Ptr<GenericIf> packed(const ValueRecord& record, const void* value, bool isConst,
                             std::string_view name) {
  const ZelType* const type = record.type();
  if (type == nullptr) [[unlikely]] {
    GenericIf::throwTypeException(String8(name).charPtr());
  }
  return type->genericIf(value, isConst);
}

template <class V>
Ptr<GenericIf> packed(const V& value, bool isConst) {
  return valueRecord<V>.type()->genericIf(static_cast<const void*>(&value), isConst);
}

/// Takes positional arguments from the head of a list, in a copy of its own.
class ZEL_API ArgumentReader {
public:
  /// Throws `TypeException` with "Zel::GenericIf::List_" if this is no list.
  explicit ArgumentReader(const GenericIf* list);

  bool atEnd() const noexcept { return next_ == nullptr; }
  /// The next argument, as a `wanted`; valid as long as the reader. Throws like `unpacked`.
  const void* next(const ValueRecord& wanted, std::string_view name);
  /// Throws `UnknownArgException` with `owner` if an argument is left.
  void finish(std::string_view owner) const;

private:
  GenericIf::List::Queue queue_;
  const GenericIf::List::ZelGenericIf* next_;
};

/// The constructor arguments of a type, all of them.
ZEL_API std::vector<const void*> constructorArguments(const TypeTable& table, ArgumentReader& in);

} // namespace Zel
