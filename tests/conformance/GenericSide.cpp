#include "GenericSide.h"

namespace Conformance {

namespace {

Generic genericOf(const Object& object, const Zel::TypeTable& table, bool isConst) {
  const Zel::ZelType& type = *Zel::ZelType::type(table.name);
  return object.counted != nullptr ? type.genericIf(object.counted, isConst)
                                   : type.genericIf(static_cast<const void*>(object.at()), isConst);
}

Zel::GenericIfEntity* asEntity(const Generic& generic) {
  return dynamic_cast<Zel::GenericIfEntity*>(generic.ptr());
}

} // namespace

Generic pack(const AnyValue& value, bool isConst) {
  return value.record().type()->genericIf(value.at(), isConst);
}

AnyValue unpack(const GenericConst& generic, const Zel::ValueRecord& record) {
  const Zel::Ptr<const Zel::ZelType> type(record.type());
  EXPECT_EQ(generic->type(), type);
  return AnyValue(record, [&](void* to) { record.copy(to, generic->voidPtrIs(type)); });
}

Generic listOf(const std::vector<std::optional<AnyValue>>& arguments) {
  const auto list = Zel::makeObject<Zel::GenericIf::List_>();
  for (const auto& argument : arguments) {
    list->add(argument ? pack(*argument) : nullptr);
  }
  return list;
}

Stranger strangerTo(const Zel::ValueRecord& record) {
  if (record.name == "bool") {
    return {pack(AnyValue::of(1U)), std::string(Zel::fwkTypeOf<unsigned>()->name().view())};
  }
  return {pack(AnyValue::of(true)), std::string(Zel::fwkTypeOf<bool>()->name().view())};
}

void GenericLog::onAttribute(Zel::GenericIfEntity& /*object*/, Zel::AttributeId id) { hear(id); }

void GenericLog::onAttribute(Zel::GenericIfEntity& /*object*/, Zel::AttributeId id,
                             const GenericConst& key) {
  record({id, unpack(key, *table_.row(id)->key)});
}

GenericSide::GenericSide()
    : generic(genericOf(object, *subject().table, false)),
      sealed(genericOf(object, *subject().table, true)), genericLog_(*subject().table),
      sealedLog_(*subject().table) {
  if (subject().listen) {
    typedLog_ = subject().listen(object);
  }
  EXPECT_EQ(asEntity(generic) != nullptr, object.entity != nullptr);
  if (object.entity != nullptr) {
    asEntity(generic)->listenerIs(&genericLog_);
    asEntity(sealed)->listenerIs(&sealedLog_);
  }
}

GenericSide::~GenericSide() {
  if (object.entity != nullptr) {
    asEntity(generic)->listenerIs(nullptr);
    asEntity(sealed)->listenerIs(nullptr);
  }
}

void* GenericSide::owner() const {
  return generic->voidPtrIs(Zel::Ptr<const Zel::ZelType>(&type()));
}

void GenericSide::expectHeard(const std::vector<Heard>& heard) {
  if (typedLog_.log != nullptr) {
    EXPECT_EQ(typedLog_.log->heard, heard);
    typedLog_.log->heard.clear();
  }
  if (object.entity != nullptr) {
    EXPECT_EQ(genericLog_.heard, heard);
    EXPECT_EQ(sealedLog_.heard, heard);
    genericLog_.heard.clear();
    sealedLog_.heard.clear();
  }
}

void GenericSide::expectRefusedOnConst(Op::OpId id, const GenericConst& index,
                                       const Generic& value) {
  const unsigned versionBefore = version();
  EXPECT_EQ(Support::messageOf<Zel::ConstException>([&] { sealedOp(id, index, value); }),
            "attempting to modify a const instance");
  EXPECT_EQ(version(), versionBefore);
  expectHeard({});
}

} // namespace Conformance
