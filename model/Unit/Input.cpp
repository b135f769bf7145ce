#include <model/Unit/Input.h>

namespace Maintenance::Unit {

namespace {

using Attr = Input::Attr;
using Callbacks = Input::NotifieeConst;
using Row = Zel::Rows<Input>;

constexpr Zel::AttrRow rows[] = {
    Row::singular<&Input::priority, &Input::priorityIs, Callbacks, &Callbacks::onPriority>(
        Attr::priority, "priority"),
    Row::Collection<Input::UnitMap, &Input::unitMap>::keyed<
        &Input::unit, &Input::unitIs, &Input::unitDel, &Input::unitDelAll, &Input::unitNotify,
        Callbacks, &Callbacks::onUnit, &Callbacks::onUnit, &Callbacks::zelPendingUnit>(Attr::unit,
                                                                                       "unit"),
};
static_assert(Zel::rowsAreInOrder(rows, Zel::firstEntityAttributeId));

constexpr Zel::TypeTable table = Zel::tableOf<Input, Zel::Name>(rows);

} // namespace

const Zel::TypeTable& Input::zelTable() { return table; }

Input::Input(Zel::Name name) : AttrLogEntity(std::move(name)) {}
Input::~Input() = default;

void Input::zeroReferencesIs(bool /*zero*/) { Zel::notifyZeroReferences(*this); }

Zel::String8 Input::attributeString(Zel::AttributeId id) const {
  return Zel::attributeString(table, id, [&] { return Entity::attributeString(id); });
}

void Input::priorityIs(InputSrc priority) {
  Zel::singularIs<&NotifieeConst::onPriority>(*this, Attr::priority, priority_, priority);
}

bool Input::unit(Zel::String8 unitName) const { return Zel::keyedRead(*this, unit_, unitName); }

void Input::unitIs(Zel::String8 unitName, bool value) {
  Zel::keyedIs<Attr::unit, &Input::newUnit, &Input::unitNotify>(*this, unit_, unitName, value);
}

bool Input::unitDel(Zel::String8 unitName) {
  return Zel::keyedDel<Attr::unit, &Input::unitNotify>(*this, unit_, unitName);
}

bool Input::unitDel(UnitMap::Iterator& at) {
  return Zel::keyedDel<Attr::unit, &Input::unitNotify>(*this, unit_, at);
}

void Input::unitDelAll() {
  Zel::collectionDelAll(*this, unit_, [this](UnitMap::Iterator& at) { unitDel(at); });
}

Zel::Ptr<Input::ZelUnit> Input::newUnit(Zel::String8 unitName, bool value) {
  return Zel::keyedNew<Attr::unit>(*this, unit_, unitName, value);
}

void Input::unitNotify(Zel::String8 unitName) {
  Zel::notifyOwner(*this, Attr::unit, [&](NotifieeConst& notifiee) { notifiee.onUnit(unitName); });
}

Input::NotifieeConst::~NotifieeConst() = default;
void Input::NotifieeConst::onPriority() {}
void Input::NotifieeConst::onUnit(Zel::String8 /*unitName*/) {}
void Input::NotifieeConst::onUnitzelImmediate() {}
void Input::NotifieeConst::onUnit() {}
Input::Notifiee::~Notifiee() = default;

Zel::Ptr<Input> inputFactory(Zel::Name name) { return Zel::makeObject<Input>(std::move(name)); }

} // namespace Maintenance::Unit
