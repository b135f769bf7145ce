#pragma once

#include <generic/Arguments.h>

namespace Zel {

/// The key of a member that an operation needs. Throws like `unpacked`.
inline const void* keyOf(const AttrRow& row, const GenericIf* index) {
  if (index == nullptr) [[unlikely]] {
    const bool ownKey = row.kind == AttrKind::instantiating || row.kind == AttrKind::ownKey;
    GenericIf::throwTypeException(ownKey ? String8(keyAttributeName(row)).charPtr() : "zel_index");
  }
  return unpacked(index, *row.key, {});
}

/// One operation on one attribute of an object, of which the row tells.
class AttributeAccess {
public:
  using AttributeOp = GenericIf::AttributeOp;

  AttributeAccess(const AttrRow& row, PtrInterface* object, const AttributeOp& op,
                  const GenericIf* index, const GenericIf* value, bool isConst) noexcept
      : row_(row), object_(object), op_(op), index_(index), value_(value), isConst_(isConst) {}

  Ptr<GenericIf> result() const { return row_.isCollection() ? collection() : singular(); }

private:
  Ptr<GenericIf> singular() const;
  Ptr<GenericIf> collection() const;
  Ptr<GenericIf> plainMember() const;
  Ptr<GenericIf> objectMember() const;
  Ptr<GenericIf> create() const;

  void refuseIndex() const;
  [[noreturn]] void notSupported() const;

  const AttrRow& row_;
  PtrInterface* const object_;
  const AttributeOp& op_;
  const GenericIf* const index_;
  const GenericIf* const value_;
  const bool isConst_;
};

} // namespace Zel
