#pragma once

#include <Zel/Layers>
#include <Zel/ZelType>

namespace Zel {

/// What the descriptors of all types with a table, an enumeration or a value record share.
class ZEL_API TableType : public ZelType {
public:
  /// A new entity, where its name is all that it takes, anybody may make one, and no collection
  /// asks for its key: the roots of a program's trees.
  Ptr<Entity> newEntity(const Name& name, Dir* dir) const override;
  /// An entity, outside of any directory, from the constructor arguments in a record of a root.
  /// Throws `RangeException`.
  Ptr<Entity> newEntity(const Ptr<NboAttrLog::In>& in,
                        PtrInterface::NotifieeConst::Zel_BitSet flags, unsigned option,
                        PtrInterface* owner) const override;
  using ZelType::newEntity;
  /// Announces a member of the directory's collection `attr` to the connection of `out`, as far as
  /// the directory is mirrored over it.
  void childAttrLogIs(const Ptr<const ZelAttr>& attr, const Ptr<PtrInterface>& child,
                      const Ptr<NboAttrLog::Out>& out) const override;

protected:
  explicit TableType(const TypeTable& table);
  /// A value.
  explicit TableType(const ValueRecord& record);
  ~TableType() override;
};

/// The descriptor of a type. Objects and entities have a table and a `GenericIf_`; values have a
/// record.
///
/// What it overrides of generic access is told in `generic/TypeOf.h`, which a program that defines
/// types of its own includes where it registers them.
template <class T>
class ZEL_API TypeOf : public TableType {
  static constexpr bool isObject = std::derived_from<T, PtrInterface>;

  static const auto& source() {
    if constexpr (isObject) {
      return T::zelTable();
    } else {
      return valueRecord<T>;
    }
  }

public:
  TypeOf() : TableType(source()) {}

  Ptr<GenericIf> genericIf(const void* raw, bool isConst) const override;
  Ptr<GenericIf> genericIf(const GenericIf* list, bool isConst) const override;
  Ptr<GenericIf> genericIf(const String8& text, bool isConst) const override;
  Ptr<GenericIf> genericIf_(PtrInterface* object, bool isConst) const override;
  using ZelType::genericIf;

protected:
  ~TypeOf() override = default;
};

} // namespace Zel
