#include <model/Unit/MergedInput.h>

namespace Maintenance::Unit {

namespace {

using Attr = MergedInput::Attr;
using Callbacks = MergedInput::NotifieeConst;
using Row = Zel::Rows<MergedInput>;

constexpr Zel::AttrRow rows[] = {
    Row::computed<&MergedInput::unitName>(Attr::unitName, "unitName"),
    Row::singular<&MergedInput::priority, &MergedInput::priorityIs, Callbacks,
                  &Callbacks::onPriority>(Attr::priority, "priority", Zel::constructorArgument),
    Row::frameworkKey<&MergedInput::fwkKey>(),
};
static_assert(Zel::rowsAreInOrder(rows, Zel::firstEntityAttributeId));

constexpr Zel::TypeTable table = Zel::tableOf<MergedInput, Zel::Name, InputSrc>(rows);

} // namespace

const Zel::TypeTable& MergedInput::zelTable() { return table; }

MergedInput::MergedInput(Zel::Name name, InputSrc priority)
    : AttrLogEntity(std::move(name)), priority_(priority) {}
MergedInput::~MergedInput() = default;

void MergedInput::zeroReferencesIs(bool /*zero*/) { Zel::notifyZeroReferences(*this); }

Zel::String8 MergedInput::attributeString(Zel::AttributeId id) const {
  return Zel::attributeString(table, id, [&] { return Entity::attributeString(id); });
}

Zel::Name MergedInput::unitName() const {
  Zel::countRead(*this);
  return name();
}

Zel::Name MergedInput::fwkKey() const {
  Zel::countRead(*this);
  return name();
}

void MergedInput::priorityIs(InputSrc priority) {
  Zel::singularIs<&NotifieeConst::onPriority>(*this, Attr::priority, priority_, priority);
}

MergedInput::NotifieeConst::~NotifieeConst() = default;
void MergedInput::NotifieeConst::onPriority() {}
MergedInput::Notifiee::~Notifiee() = default;

Zel::Ptr<MergedInput> mergedInputFactory(Zel::Name name, InputSrc priority) {
  return Zel::makeObject<MergedInput>(std::move(name), priority);
}

} // namespace Maintenance::Unit
