#pragma once

#include <Zel/GenericIf>
#include <Zel/Layers>

/// Generic objects of values and enumerations, called wrappers: each holds a copy of its own, and a
/// write through one changes that copy alone. Wrappers have no notifier and hear nothing.
namespace Zel {

/// What wrappers do, over the record of the value's type and its address.
class ZEL_API GenericValue : public GenericIf {
public:
  /// The allocator of wrappers. Throws `std::bad_alloc`.
  static void* operator new(std::size_t size);
  static void operator delete(void* storage, std::size_t size) noexcept;

protected:
  explicit GenericValue(bool isConst) noexcept : GenericIf(isConst) { registeredFlagIs(true); }
  ~GenericValue() override = default;

  static void* zelVoidPtr(const ValueRecord& record, void* value, const ZelType* wanted);
  static String8 zelAttributeString(const ValueRecord& record, AttributeId id, String8 fromBase);
  AttributeId zelAttributeId(const ValueRecord& record, const String8& name) const;
  Ptr<GenericIf> zelAttributeOp(const ValueRecord& record, void* value, const AttributeOp& op,
                                const Ptr<const GenericIf>& index, const Ptr<GenericIf>& argument);
  static String8 zelStrRep(const ValueRecord& record, const void* value);

private:
  Ptr<GenericIf> zelRowOp(const AttrRow& row, void* value, const AttributeOp& op,
                          const GenericIf* index, const GenericIf* argument);
};

/// The value made from a list of its constructor arguments, of which there may be none at all, in a
/// wrapper that is not const. Throws `TypeException`, `UnknownArgException`, and what the type's
/// constructor throws.
ZEL_API Ptr<GenericIf> valueFromList(const ValueRecord& record, const GenericIf* list);

/// The value that the whole of a text says, in a wrapper. Throws what its reader throws.
ZEL_API Ptr<GenericIf> valueFromText(const ValueRecord& record, const String8& text, bool isConst);

/// The wrapper of a `V`.
template <class V>
class ZEL_API ValueGenericIf : public GenericValue {
  static constexpr const ValueRecord& record = valueRecord<V>;

public:
  ValueGenericIf(ValueParam<V> value, bool isConst) : GenericValue(isConst), value_(value) {}

  /// Makes a wrapper.
  static Ptr<ValueGenericIf> GenericIf_Is(ValueParam<V> value, bool isConst) {
    auto made = makeObject<ValueGenericIf>(value, isConst);
    if (!made->hasNotificationActive()) [[unlikely]] { // it is born so
      made->hasNotificationActiveIs(true);
    }
    return made;
  }

  /// See `valueFromList`.
  static Ptr<GenericIf>
  genericIfListConstructor(const Ptr<const GenericIf>& list) requires Detail::HasTable<V> {
    return valueFromList(record, list.ptr());
  }

  Ptr<const ZelType> type() const override { return Ptr<const ZelType>(record.type()); }
  void* voidPtrIs(const Ptr<const ZelType>& wanted) const override {
    return zelVoidPtr(record, &value_, wanted.ptr());
  }
  String8 attributeString(AttributeId id) const override {
    return zelAttributeString(record, id, GenericIf::attributeString(id));
  }
  AttributeId attributeId(String8 name) const override { return zelAttributeId(record, name); }
  Ptr<GenericIf> attributeOp(const AttributeOp& op, const Ptr<const GenericIf>& index,
                             const Ptr<GenericIf>& argument) override {
    return zelAttributeOp(record, &value_, op, index, argument);
  }
  String8 strRep() const override { return zelStrRep(record, &value_); }
  Ptr<GenericIf> clone() override { return GenericIf_Is(value_, isConst()); }
  using GenericIf::clone;

  /// Replaces the value, whether the wrapper is const or not.
  virtual void valIs(ValueParam<V> value) { value_ = value; }
  const V& val() const noexcept { return value_; }

protected:
  ~ValueGenericIf() override = default;

private:
  mutable V value_; // handed out as void*
};

} // namespace Zel
