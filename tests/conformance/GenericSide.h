#pragma once

#include "Subject.h"

#include <support/Failure.h>

#include <Zel/GenericIf>

#include <gtest/gtest.h>

namespace Conformance {

using Generic = Zel::Ptr<Zel::GenericIf>;
using GenericConst = Zel::Ptr<const Zel::GenericIf>;
using Op = Zel::GenericIf::AttributeOp;

/// A generic object of a copy of the value, made by its descriptor.
Generic pack(const AnyValue& value, bool isConst = true);

/// The value that a generic object holds, which must be of this type.
AnyValue unpack(const GenericConst& generic, const Zel::ValueRecord& record);

/// A list of arguments; an empty place stands for a null one.
Generic listOf(const std::vector<std::optional<AnyValue>>& arguments);

/// A value of a type other than this, with the name by which a failure knows its own.
struct Stranger {
  Generic value;
  std::string name;
};
Stranger strangerTo(const Zel::ValueRecord& record);

/// What a generic object of an entity hears, with keys of their types.
class GenericLog : public Log, public Zel::GenericIfEntity::Listener {
public:
  explicit GenericLog(const Zel::TypeTable& table) : table_(table) {}
  void onAttribute(Zel::GenericIfEntity& object, Zel::AttributeId id) override;
  void onAttribute(Zel::GenericIfEntity& object, Zel::AttributeId id,
                   const GenericConst& key) override;

private:
  const Zel::TypeTable& table_;
};

/// One attribute through a generic object of a new instance, which the descriptor makes: nothing
/// here knows the type but its subject, for the typed side.
class GenericSide : public testing::TestWithParam<Case> {
protected:
  GenericSide();
  ~GenericSide() override;

  const Subject& subject() const { return *GetParam().subject; }
  const TypedAccess& typed() const { return GetParam().typed(); }
  const Zel::AttrRow& row() const { return *GetParam().row; }
  std::string attribute() const { return std::string(row().name); }
  const Zel::ZelType& type() const { return *Zel::ZelType::type(subject().table->name); }
  const Zel::ZelAttr& attr() const { return *type().attr(row().id); }

  /// The instance that `generic` stands for, under its type: the object, or the wrapper's copy.
  void* owner() const;
  unsigned version() const {
    return object.entity != nullptr ? object.entity->versionCounter() : 0;
  }
  unsigned reads() const { return object.entity != nullptr ? object.entity->readCounter() : 0; }
  /// What a counter moves by: nothing on an instance without counters.
  unsigned one() const { return object.entity != nullptr ? 1 : 0; }

  /// The operation on this attribute.
  Generic op(Op::OpId id, const GenericConst& index = nullptr, const Generic& value = nullptr) {
    return generic->attributeOp({row().id, id}, index, value);
  }
  /// The same through the const generic object.
  Generic sealedOp(Op::OpId id, const GenericConst& index = nullptr,
                   const Generic& value = nullptr) {
    return sealed->attributeOp({row().id, id}, index, value);
  }
  bool boolOp(Op::OpId id, const AnyValue& index) {
    return unpack(op(id, pack(index)), Zel::valueRecord<bool>).as<bool>();
  }
  unsigned numberOp(Op::OpId id) {
    return unpack(op(id), Zel::valueRecord<unsigned>).as<unsigned>();
  }

  /// Expects that each subscriber that there is, typed and generic, has heard just this since the
  /// last look.
  void expectHeard(const std::vector<Heard>& heard);

  /// Expects that a write of this attribute with this operation is refused on the const object.
  void expectRefusedOnConst(Op::OpId id, const GenericConst& index = nullptr,
                            const Generic& value = nullptr);

  const Object object = subject().make();
  const Generic generic;
  const Generic sealed; ///< another one, const

private:
  Listener typedLog_{nullptr, nullptr};
  GenericLog genericLog_;
  GenericLog sealedLog_;
};

} // namespace Conformance
