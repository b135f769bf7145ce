#include <model/MaintenanceAgentInfo/AgentInfo.h>

namespace Maintenance {

namespace {

using Attr = AgentInfo::Attr;
using Callbacks = AgentInfo::NotifieeConst;
using Row = Zel::Rows<AgentInfo>;

constexpr Zel::AttrRow rows[] = {
    Row::singular<&AgentInfo::agentPid, &AgentInfo::agentPidIs, Callbacks, &Callbacks::onAgentPid>(
        Attr::agentPid, "agentPid"),
    Row::counter<&AgentInfo::restartCount, &AgentInfo::restartCountIs, &AgentInfo::restartCountInc,
                 Callbacks, &Callbacks::onRestartCount>(Attr::restartCount, "restartCount"),
    Row::singular<&AgentInfo::onBoot, &AgentInfo::onBootIs, Callbacks, &Callbacks::onOnBoot>(
        Attr::onBoot, "onBoot"),
    Row::Collection<AgentInfo::OnBootMaintEnterMap, &AgentInfo::onBootMaintEnterMap>::ownKey<
        &AgentInfo::onBootMaintEnter, &AgentInfo::onBootMaintEnterIs,
        &AgentInfo::onBootMaintEnterDel, &AgentInfo::onBootMaintEnterDelAll,
        &AgentInfo::onBootMaintEnterNotify, Callbacks, &Callbacks::onOnBootMaintEnter,
        &Callbacks::onOnBootMaintEnter, &Callbacks::zelPendingOnBootMaintEnter>(
        Attr::onBootMaintEnter, "onBootMaintEnter"),
    Row::singular<&AgentInfo::ready, &AgentInfo::readyIs, Callbacks, &Callbacks::onReady>(
        Attr::ready, "ready"),
};
static_assert(Zel::rowsAreInOrder(rows, Zel::firstEntityAttributeId));

constexpr Zel::TypeTable table = Zel::tableOf<AgentInfo, Zel::Name>(rows);

} // namespace

const Zel::TypeTable& AgentInfo::zelTable() { return table; }

AgentInfo::AgentInfo(Zel::Name name) : AttrLogEntity(std::move(name)) {}
AgentInfo::~AgentInfo() = default;

void AgentInfo::zeroReferencesIs(bool /*zero*/) { Zel::notifyZeroReferences(*this); }

Zel::String8 AgentInfo::attributeString(Zel::AttributeId id) const {
  return Zel::attributeString(table, id, [&] { return Entity::attributeString(id); });
}

void AgentInfo::agentPidIs(unsigned pid) {
  Zel::singularIs<&NotifieeConst::onAgentPid>(*this, Attr::agentPid, agentPid_, pid);
}

void AgentInfo::restartCountIs(unsigned count) {
  Zel::singularIs<&NotifieeConst::onRestartCount>(*this, Attr::restartCount, restartCount_, count);
}

unsigned AgentInfo::restartCountInc(unsigned by) {
  return Zel::counterInc<&NotifieeConst::onRestartCount>(*this, Attr::restartCount, restartCount_,
                                                         by);
}

void AgentInfo::onBootIs(bool onBoot) {
  Zel::singularIs<&NotifieeConst::onOnBoot>(*this, Attr::onBoot, onBoot_, onBoot);
}

OnBootUnitAndReason AgentInfo::onBootMaintEnter(Zel::String8 unitName) const {
  return Zel::keyedRead(*this, onBootMaintEnter_, unitName);
}

void AgentInfo::onBootMaintEnterIs(const OnBootUnitAndReason& value) {
  Zel::ownKeyIs<Attr::onBootMaintEnter, &AgentInfo::newOnBootMaintEnter,
                &AgentInfo::onBootMaintEnterNotify>(*this, onBootMaintEnter_, value.unitName(),
                                                    value);
}

OnBootUnitAndReason AgentInfo::onBootMaintEnterDel(Zel::String8 unitName) {
  return Zel::keyedDel<Attr::onBootMaintEnter, &AgentInfo::onBootMaintEnterNotify>(
      *this, onBootMaintEnter_, unitName);
}

OnBootUnitAndReason AgentInfo::onBootMaintEnterDel(OnBootMaintEnterMap::Iterator& at) {
  return Zel::keyedDel<Attr::onBootMaintEnter, &AgentInfo::onBootMaintEnterNotify>(
      *this, onBootMaintEnter_, at);
}

void AgentInfo::onBootMaintEnterDelAll() {
  Zel::collectionDelAll(*this, onBootMaintEnter_,
                        [this](OnBootMaintEnterMap::Iterator& at) { onBootMaintEnterDel(at); });
}

Zel::Ptr<AgentInfo::ZelOnBootMaintEnter>
AgentInfo::newOnBootMaintEnter(const OnBootUnitAndReason& value) {
  return Zel::keyedNew<Attr::onBootMaintEnter>(*this, onBootMaintEnter_, value.unitName(), value);
}

void AgentInfo::onBootMaintEnterNotify(Zel::String8 unitName) {
  Zel::notifyOwner(*this, Attr::onBootMaintEnter,
                   [&](NotifieeConst& notifiee) { notifiee.onOnBootMaintEnter(unitName); });
}

void AgentInfo::readyIs(bool ready) {
  Zel::singularIs<&NotifieeConst::onReady>(*this, Attr::ready, ready_, ready);
}

AgentInfo::NotifieeConst::~NotifieeConst() = default;
void AgentInfo::NotifieeConst::onAgentPid() {}
void AgentInfo::NotifieeConst::onRestartCount() {}
void AgentInfo::NotifieeConst::onOnBoot() {}
void AgentInfo::NotifieeConst::onOnBootMaintEnter(Zel::String8 /*unitName*/) {}
void AgentInfo::NotifieeConst::onOnBootMaintEnterzelImmediate() {}
void AgentInfo::NotifieeConst::onOnBootMaintEnter() {}
void AgentInfo::NotifieeConst::onReady() {}
AgentInfo::Notifiee::~Notifiee() = default;

Zel::Ptr<AgentInfo> agentInfoFactory(Zel::Name name) {
  return Zel::makeObject<AgentInfo>(std::move(name));
}

} // namespace Maintenance
