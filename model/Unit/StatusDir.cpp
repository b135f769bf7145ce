#include <model/Unit/StatusDir.h>

namespace Maintenance::Unit {

namespace {

using Attr = StatusDir::Attr;
using Callbacks = StatusDir::NotifieeConst;
using Row = Zel::Rows<StatusDir>;

constexpr Zel::AttrRow rows[] = {
    Row::Collection<StatusDir::StatusMap, &StatusDir::statusMap>::Of<>::instantiating<
        &StatusDir::status, &StatusDir::statusIs, &StatusDir::statusDel, &StatusDir::statusDelAll,
        &StatusDir::statusNotify, Callbacks, &Callbacks::onStatus, &Callbacks::onStatus,
        &Callbacks::zelPendingStatus>(Attr::status, "status"),
};
static_assert(Zel::rowsAreInOrder(rows, Zel::firstEntityAttributeId));

constexpr Zel::TypeTable table = Zel::tableOf<StatusDir, Zel::Name>(rows);

} // namespace

const Zel::TypeTable& StatusDir::zelTable() { return table; }

StatusDir::StatusDir(Zel::Name name) : AttrLogEntity(std::move(name)) {}

StatusDir::~StatusDir() {
  Zel::directoryTearDown(notifiees_, [this] { statusDelAll(); });
}

void StatusDir::zeroReferencesIs(bool /*zero*/) { Zel::notifyZeroReferences(*this); }

Zel::String8 StatusDir::attributeString(Zel::AttributeId id) const {
  return Zel::attributeString(table, id, [&] { return Entity::attributeString(id); });
}

Zel::Ptr<Status> StatusDir::status(Zel::Name unit) const {
  return Zel::memberRead(*this, status_, unit);
}

Zel::Ptr<Status> StatusDir::newStatus(Zel::Name unit) {
  return Zel::memberNew(*this, Attr::status, status_, Zel::makeObject<Status>(unit));
}

Zel::ValidPtr<Status> StatusDir::statusIs(Zel::Name unit) {
  return Zel::memberIs<&StatusDir::statusNotify>(*this, status_, unit,
                                                 [&] { return newStatus(unit); });
}

Zel::Ptr<Status> StatusDir::statusDel(Zel::Name unit) {
  return Zel::memberDel<Attr::status, &StatusDir::statusNotify>(*this, status_, unit);
}

Zel::Ptr<Status> StatusDir::statusDel(StatusMap::Iterator& at) {
  return Zel::memberDel<Attr::status, &StatusDir::statusNotify>(*this, status_, at);
}

void StatusDir::statusDelAll() {
  Zel::collectionDelAll(*this, status_, [this](StatusMap::Iterator& at) { statusDel(at); });
}

void StatusDir::statusNotify(Zel::Name unit) {
  Zel::notifyOwner(*this, Attr::status, [&](NotifieeConst& notifiee) { notifiee.onStatus(unit); });
}

StatusDir::NotifieeConst::~NotifieeConst() = default;
void StatusDir::NotifieeConst::onStatus(Zel::Name /*unit*/) {}
void StatusDir::NotifieeConst::onStatuszelImmediate() {}
void StatusDir::NotifieeConst::onStatus() {}
StatusDir::Notifiee::~Notifiee() = default;

Zel::Ptr<StatusDir> statusDirFactory(Zel::Name name) {
  return Zel::makeObject<StatusDir>(std::move(name));
}

} // namespace Maintenance::Unit
