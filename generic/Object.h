#pragma once

#include <Zel/GenericIf>
#include <Zel/Layers>

/// Generic objects of entities and of other shared objects, over the rows of their tables. An
/// entity's is a reactor besides, see `generic/Reactor.h`.
///
/// Types derive from `PtrInterface` by single inheritance, and from one another likewise: a row of
/// a base finds its members at the address of the object.
namespace Zel {

/// An object and the table of the type that it is looked at as; the object may be null.
struct ObjectView {
  const TypeTable& table;
  PtrInterface* object;
};

/// What generic objects of objects do. `Base` is `GenericIfEntity` or `GenericIfPtrInterface`,
/// which have all the attributes that no table has.
template <class Base>
class ZEL_API GenericObject : public Base {
public:
  using AttributeOp = GenericIf::AttributeOp;
  using AttributeIteratorConst = GenericIf::AttributeIteratorConst;

  Ptr<const ZelType> type() const override;
  /// As the type itself, a base of it, `Zel::Entity` of an entity, or `Zel::PtrInterface`.
  void* voidPtrIs(const Ptr<const ZelType>& wanted) const override;
  AttributeId attributeId(String8 name) const override;
  /// Throws `InternalException` if there is no object.
  Ptr<GenericIf> attributeOp(const AttributeOp& op, const Ptr<const GenericIf>& index,
                             const Ptr<GenericIf>& value) override;

  AttributeIteratorConst attributeIteratorConst(AttributeId id) const override;
  AttributeIteratorConst attributeIteratorKeyConst(AttributeId id,
                                                   const Ptr<const GenericIf>& key) const override;
  Ptr<GenericIf> attributeIterator_iterObj(const AttributeIteratorConst& at) override;
  void* attributeIterator_iterInc(const AttributeIteratorConst& at) const override;
  Ptr<const GenericIf> attributeIterator_iterKey(const AttributeIteratorConst& at) const override;
  void* attributeIterator_iterClone(const AttributeIteratorConst& at) const override;
  bool attributeIterator_nonNull(const AttributeIteratorConst& at) const override;
  void* attributeIterator_iterDel(const AttributeIteratorConst& at) const override;
  using Base::attributeIterator_iterObj;

  PtrInterface* zelObject() const final { return zelView().object; }

protected:
  using Base::Base;
  ~GenericObject() override;

  /// The object and the table of its type, the same at each call but for the object.
  virtual ObjectView zelView() const = 0;
};

extern template class GenericObject<GenericIfPtrInterface>;
extern template class GenericObject<GenericIfEntity>;

/// The type's own row of an id or that of a base; null if there is none. The framework key is left
/// to the framework.
ZEL_API const AttrRow* attributeRow(const TypeTable& table, AttributeId id);

/// A generic object, not const, of the object made from a list of its constructor arguments,
/// outside any collection. Throws `TypeException`, `UnknownArgException`, and
/// `OpNotSupportedException` for a type that nobody may make.
ZEL_API Ptr<GenericIf> objectFromList(const TypeTable& table, const GenericIf* list);

/// Makes a generic object of a `T`, which may be null.
template <class T>
Ptr<typename T::GenericIf_> genericIfOf(const Ptr<T>& object, bool isConst) {
  auto made = makeObject<typename T::GenericIf_>(object, isConst);
  made->hasNotificationActiveIs(true);
  return made;
}

/// The generic object of a `T` that is no entity: base of `T::GenericIf_`. It hears nothing.
template <class T>
class ZEL_API ObjectGenericIf : public GenericObject<GenericIfPtrInterface> {
public:
  ObjectGenericIf(T* object, bool isConst) : GenericObject(isConst), object_(object) {}
  ObjectGenericIf(const Ptr<T>& object, bool isConst) : GenericObject(isConst), object_(object) {}

  virtual const T* obj() const { return object_.ptr(); }
  virtual T* obj() { return object_.ptr(); }
  void objIs(T* object) { object_.ptrAssign(object); }

  Ptr<GenericIf> clone() override { return genericIfOf(Ptr<T>(obj()), this->isConst()); }
  using GenericIf::clone;

  /// See `objectFromList`.
  static Ptr<GenericIf> genericIfListConstructor(const Ptr<const GenericIf>& list) {
    return objectFromList(T::zelTable(), list.ptr());
  }

protected:
  ~ObjectGenericIf() override = default;

  ObjectView zelView() const final { return {T::zelTable(), const_cast<T*>(obj())}; }

private:
  Ptr<T> object_;
};

} // namespace Zel
