#include <model/Unit/Status.h>

namespace Maintenance::Unit {

namespace {

using Attr = Status::Attr;
using Callbacks = Status::NotifieeConst;
using Row = Zel::Rows<Status>;

constexpr Zel::AttrRow rows[] = {
    Row::computed<&Status::unitName>(Attr::unitName, "unitName"),
    Row::singular<&Status::unitType, &Status::unitTypeIs, Callbacks, &Callbacks::onUnitType>(
        Attr::unitType, "unitType"),
    Row::Collection<Status::GroupMap, &Status::groupMap>::keyed<
        &Status::group, &Status::groupIs, &Status::groupDel, &Status::groupDelAll,
        &Status::groupNotify, Callbacks, &Callbacks::onGroup, &Callbacks::onGroup,
        &Callbacks::zelPendingGroup>(Attr::group, "group"),
    Row::singular<&Status::profileName, &Status::profileNameIs, Callbacks,
                  &Callbacks::onProfileName>(Attr::profileName, "profileName"),
    Row::singular<&Status::state, &Status::stateIs, Callbacks, &Callbacks::onState>(Attr::state,
                                                                                    "state"),
    Row::singular<&Status::reason, &Status::reasonIs, Callbacks, &Callbacks::onReason>(Attr::reason,
                                                                                       "reason"),
    Row::singular<&Status::timeOfStateChange, &Status::timeOfStateChangeIs, Callbacks,
                  &Callbacks::onTimeOfStateChange>(Attr::timeOfStateChange, "timeOfStateChange"),
    Row::singular<&Status::onBootMaintExitTime, &Status::onBootMaintExitTimeIs, Callbacks,
                  &Callbacks::onOnBootMaintExitTime>(Attr::onBootMaintExitTime,
                                                     "onBootMaintExitTime"),
    Row::constant<&Status::defaultHistorySize>(Attr::defaultHistorySize, "defaultHistorySize"),
    Row::singular<&Status::historySize, &Status::historySizeIs, Callbacks,
                  &Callbacks::onHistorySize>(Attr::historySize, "historySize"),
    Row::Collection<Status::HistoryMap, &Status::historyMap>::keyed<
        &Status::history, &Status::historyIs, &Status::historyDel, &Status::historyDelAll,
        &Status::historyNotify, Callbacks, &Callbacks::onHistory, &Callbacks::onHistory,
        &Callbacks::zelPendingHistory>(Attr::history, "history"),
    Row::singular<&Status::maintEnterInstance, &Status::maintEnterInstanceIs, Callbacks,
                  &Callbacks::onMaintEnterInstance>(Attr::maintEnterInstance, "maintEnterInstance"),
    Row::singular<&Status::maintExitInstance, &Status::maintExitInstanceIs, Callbacks,
                  &Callbacks::onMaintExitInstance>(Attr::maintExitInstance, "maintExitInstance"),
    Row::singular<&Status::aggTrafficRate, &Status::aggTrafficRateIs, Callbacks,
                  &Callbacks::onAggTrafficRate>(Attr::aggTrafficRate, "aggTrafficRate"),
    Row::Collection<Status::IntfsViolatingTrafficThresholdMap,
                    &Status::intfsViolatingTrafficThresholdMap>::
        keyed<&Status::intfsViolatingTrafficThreshold, &Status::intfsViolatingTrafficThresholdIs,
              &Status::intfsViolatingTrafficThresholdDel,
              &Status::intfsViolatingTrafficThresholdDelAll,
              &Status::intfsViolatingTrafficThresholdNotify, Callbacks,
              &Callbacks::onIntfsViolatingTrafficThreshold,
              &Callbacks::onIntfsViolatingTrafficThreshold,
              &Callbacks::zelPendingIntfsViolatingTrafficThreshold>(
            Attr::intfsViolatingTrafficThreshold, "intfsViolatingTrafficThreshold"),
    Row::counter<&Status::totalIntfTrafficViolations, &Status::totalIntfTrafficViolationsIs,
                 &Status::totalIntfTrafficViolationsInc, Callbacks,
                 &Callbacks::onTotalIntfTrafficViolations>(Attr::totalIntfTrafficViolations,
                                                           "totalIntfTrafficViolations"),
    Row::counter<&Status::genId, &Status::genIdIs, &Status::genIdInc, Callbacks,
                 &Callbacks::onGenId>(Attr::genId, "genId"),
    Row::frameworkKey<&Status::fwkKey>(),
};
static_assert(Zel::rowsAreInOrder(rows, Zel::firstEntityAttributeId));

constexpr Zel::TypeTable table = Zel::tableOf<Status, Zel::Name>(rows);

} // namespace

const Zel::TypeTable& Status::zelTable() { return table; }

Status::Status(Zel::Name name) : AttrLogEntity(std::move(name)) {}
Status::~Status() = default;

void Status::zeroReferencesIs(bool /*zero*/) { Zel::notifyZeroReferences(*this); }

Zel::String8 Status::attributeString(Zel::AttributeId id) const {
  return Zel::attributeString(table, id, [&] { return Entity::attributeString(id); });
}

Zel::String8 Status::unitName() const {
  Zel::countRead(*this);
  return name();
}

Zel::Name Status::fwkKey() const {
  Zel::countRead(*this);
  return name();
}

unsigned Status::defaultHistorySize() const noexcept {
  Zel::countRead(*this);
  return defaultHistorySize_;
}

void Status::unitTypeIs(UnitType type) {
  Zel::singularIs<&NotifieeConst::onUnitType>(*this, Attr::unitType, unitType_, type);
}

bool Status::group(const Group::GroupKey& key) const { return Zel::keyedRead(*this, group_, key); }

void Status::groupIs(const Group::GroupKey& key, bool value) {
  Zel::keyedIs<Attr::group, &Status::newGroup, &Status::groupNotify>(*this, group_, key, value);
}

bool Status::groupDel(const Group::GroupKey& key) {
  return Zel::keyedDel<Attr::group, &Status::groupNotify>(*this, group_, key);
}

bool Status::groupDel(GroupMap::Iterator& at) {
  return Zel::keyedDel<Attr::group, &Status::groupNotify>(*this, group_, at);
}

void Status::groupDelAll() {
  Zel::collectionDelAll(*this, group_, [this](GroupMap::Iterator& at) { groupDel(at); });
}

Zel::Ptr<Status::ZelGroup> Status::newGroup(const Group::GroupKey& key, bool value) {
  return Zel::keyedNew<Attr::group>(*this, group_, key, value);
}

void Status::groupNotify(const Group::GroupKey& key) {
  Zel::notifyOwner(*this, Attr::group, [&](NotifieeConst& notifiee) { notifiee.onGroup(key); });
}

void Status::profileNameIs(Zel::String8 name) {
  Zel::singularIs<&NotifieeConst::onProfileName>(*this, Attr::profileName, profileName_,
                                                 std::move(name));
}

void Status::stateIs(State state) {
  Zel::singularIs<&NotifieeConst::onState>(*this, Attr::state, state_, state);
}

void Status::reasonIs(InputSrc reason) {
  Zel::singularIs<&NotifieeConst::onReason>(*this, Attr::reason, reason_, reason);
}

void Status::timeOfStateChangeIs(double time) {
  Zel::singularIs<&NotifieeConst::onTimeOfStateChange>(*this, Attr::timeOfStateChange,
                                                       timeOfStateChange_, time);
}

void Status::onBootMaintExitTimeIs(double time) {
  Zel::singularIs<&NotifieeConst::onOnBootMaintExitTime>(*this, Attr::onBootMaintExitTime,
                                                         onBootMaintExitTime_, time);
}

void Status::historySizeIs(unsigned size) {
  Zel::singularIs<&NotifieeConst::onHistorySize>(*this, Attr::historySize, historySize_, size);
}

Zel::String8 Status::history(const double& time) const {
  return Zel::keyedRead(*this, history_, time);
}

void Status::historyIs(const double& time, Zel::String8 text) {
  Zel::keyedIs<Attr::history, &Status::newHistory, &Status::historyNotify>(*this, history_, time,
                                                                           text);
}

Zel::String8 Status::historyDel(const double& time) {
  return Zel::keyedDel<Attr::history, &Status::historyNotify>(*this, history_, time);
}

Zel::String8 Status::historyDel(HistoryMap::Iterator& at) {
  return Zel::keyedDel<Attr::history, &Status::historyNotify>(*this, history_, at);
}

void Status::historyDelAll() {
  Zel::collectionDelAll(*this, history_, [this](HistoryMap::Iterator& at) { historyDel(at); });
}

Zel::Ptr<Status::ZelHistory> Status::newHistory(const double& time, Zel::String8 text) {
  return Zel::keyedNew<Attr::history>(*this, history_, time, text);
}

void Status::historyNotify(const double& time) {
  Zel::notifyOwner(*this, Attr::history,
                   [&](NotifieeConst& notifiee) { notifiee.onHistory(time); });
}

void Status::maintEnterInstanceIs(Zel::String8 name) {
  Zel::singularIs<&NotifieeConst::onMaintEnterInstance>(*this, Attr::maintEnterInstance,
                                                        maintEnterInstance_, std::move(name));
}

void Status::maintExitInstanceIs(Zel::String8 name) {
  Zel::singularIs<&NotifieeConst::onMaintExitInstance>(*this, Attr::maintExitInstance,
                                                       maintExitInstance_, std::move(name));
}

void Status::aggTrafficRateIs(const TrafficRates& rates) {
  Zel::singularIs<&NotifieeConst::onAggTrafficRate>(*this, Attr::aggTrafficRate, aggTrafficRate_,
                                                    rates);
}

bool Status::intfsViolatingTrafficThreshold(Vexil::IntfId key) const {
  return Zel::keyedRead(*this, intfsViolatingTrafficThreshold_, key);
}

void Status::intfsViolatingTrafficThresholdIs(Vexil::IntfId key, bool value) {
  Zel::keyedIs<Attr::intfsViolatingTrafficThreshold, &Status::newIntfsViolatingTrafficThreshold,
               &Status::intfsViolatingTrafficThresholdNotify>(
      *this, intfsViolatingTrafficThreshold_, key, value);
}

bool Status::intfsViolatingTrafficThresholdDel(Vexil::IntfId key) {
  return Zel::keyedDel<Attr::intfsViolatingTrafficThreshold,
                       &Status::intfsViolatingTrafficThresholdNotify>(
      *this, intfsViolatingTrafficThreshold_, key);
}

bool Status::intfsViolatingTrafficThresholdDel(IntfsViolatingTrafficThresholdMap::Iterator& at) {
  return Zel::keyedDel<Attr::intfsViolatingTrafficThreshold,
                       &Status::intfsViolatingTrafficThresholdNotify>(
      *this, intfsViolatingTrafficThreshold_, at);
}

void Status::intfsViolatingTrafficThresholdDelAll() {
  Zel::collectionDelAll(*this, intfsViolatingTrafficThreshold_,
                        [this](IntfsViolatingTrafficThresholdMap::Iterator& at) {
                          intfsViolatingTrafficThresholdDel(at);
                        });
}

Zel::Ptr<Status::ZelIntfsViolatingTrafficThreshold>
Status::newIntfsViolatingTrafficThreshold(Vexil::IntfId key, bool value) {
  return Zel::keyedNew<Attr::intfsViolatingTrafficThreshold>(*this, intfsViolatingTrafficThreshold_,
                                                             key, value);
}

void Status::intfsViolatingTrafficThresholdNotify(Vexil::IntfId key) {
  Zel::notifyOwner(*this, Attr::intfsViolatingTrafficThreshold, [&](NotifieeConst& notifiee) {
    notifiee.onIntfsViolatingTrafficThreshold(key);
  });
}

void Status::totalIntfTrafficViolationsIs(unsigned total) {
  Zel::singularIs<&NotifieeConst::onTotalIntfTrafficViolations>(
      *this, Attr::totalIntfTrafficViolations, totalIntfTrafficViolations_, total);
}

unsigned Status::totalIntfTrafficViolationsInc(unsigned by) {
  return Zel::counterInc<&NotifieeConst::onTotalIntfTrafficViolations>(
      *this, Attr::totalIntfTrafficViolations, totalIntfTrafficViolations_, by);
}

void Status::genIdIs(unsigned id) {
  Zel::singularIs<&NotifieeConst::onGenId>(*this, Attr::genId, genId_, id);
}

unsigned Status::genIdInc(unsigned by) {
  return Zel::counterInc<&NotifieeConst::onGenId>(*this, Attr::genId, genId_, by);
}

Status::NotifieeConst::~NotifieeConst() = default;
void Status::NotifieeConst::onUnitType() {}
void Status::NotifieeConst::onGroup(const Group::GroupKey& /*key*/) {}
void Status::NotifieeConst::onGroupzelImmediate() {}
void Status::NotifieeConst::onGroup() {}
void Status::NotifieeConst::onProfileName() {}
void Status::NotifieeConst::onState() {}
void Status::NotifieeConst::onReason() {}
void Status::NotifieeConst::onTimeOfStateChange() {}
void Status::NotifieeConst::onOnBootMaintExitTime() {}
void Status::NotifieeConst::onHistorySize() {}
void Status::NotifieeConst::onHistory(const double& /*time*/) {}
void Status::NotifieeConst::onHistoryzelImmediate() {}
void Status::NotifieeConst::onHistory() {}
void Status::NotifieeConst::onMaintEnterInstance() {}
void Status::NotifieeConst::onMaintExitInstance() {}
void Status::NotifieeConst::onAggTrafficRate() {}
void Status::NotifieeConst::onIntfsViolatingTrafficThreshold(Vexil::IntfId /*key*/) {}
void Status::NotifieeConst::onIntfsViolatingTrafficThresholdzelImmediate() {}
void Status::NotifieeConst::onIntfsViolatingTrafficThreshold() {}
void Status::NotifieeConst::onTotalIntfTrafficViolations() {}
void Status::NotifieeConst::onGenId() {}
Status::Notifiee::~Notifiee() = default;

Zel::Ptr<Status> statusFactory(Zel::Name name) { return Zel::makeObject<Status>(std::move(name)); }

} // namespace Maintenance::Unit
