// A type of one's own, made outside the library, with all that the library's types have: typed
// operations with notification, a descriptor, text, generic access, subscription, and mirroring
// over a connection.

#include <Zel/AttrLogEntity>
#include <Zel/Attribute>
#include <Zel/Demuxer>
#include <attrlog/MakeAdapter.h>
#include <generic/Client.h>
#include <generic/Reactor.h>
#include <generic/TypeOf.h>
#include <registration/Module.h>

#include <iostream>

namespace Chassis {

/// A fan: its speed, and the alarms that it raises, by name.
class Fan : public Zel::AttrLogEntity<Fan> {
public:
  static constexpr std::string_view zelTypeName = "Chassis::Fan";
  static const Zel::TypeTable& zelTable();
  static const Zel::ZelType* _fwkType();
  const Zel::ZelType* fwkType() const override { return _fwkType(); }
  class NotifieeConst;
  class Notifiee;
  class GenericIf_;
  class ZelNboAttrLogSa;

  struct Attr {
    static constexpr Zel::AttributeId speed = 258;
    static constexpr Zel::AttributeId alarm = 259;
  };
  class ZelAlarm : public Zel::MapEntry<ZelAlarm, Zel::String8, bool> {
    using MapEntry::MapEntry;
  };
  using AlarmMap = Zel::HashMap<ZelAlarm, Zel::String8, bool>;

  explicit Fan(Zel::Name name) : AttrLogEntity(std::move(name)) {}

  unsigned speed() const { return Zel::read(*this, speed_); }
  void speedIs(unsigned rpm);
  bool alarm(Zel::String8 name) const { return Zel::keyedRead(*this, alarm_, name); }
  void alarmIs(Zel::String8 name, bool raised);
  bool alarmDel(Zel::String8 name);
  bool alarmDel(AlarmMap::Iterator& at);
  void alarmDelAll();
  Zel::Ptr<ZelAlarm> newAlarm(Zel::String8 name, bool raised);
  void alarmNotify(Zel::String8 name);
  const AlarmMap& alarmMap() const { return alarm_; }

  void zeroReferencesIs(bool /*zero*/) override { Zel::notifyZeroReferences(*this); }
  Zel::String8 attributeString(Zel::AttributeId id) const override {
    return Zel::attributeString(zelTable(), id, [&] { return Entity::attributeString(id); });
  }
  Zel::ListRaw<NotifieeConst>& zelNotifieeList() const { return notifiees_; }

protected:
  ~Fan() override = default;

private:
  unsigned speed_ = 0;
  AlarmMap alarm_;
  mutable Zel::ListRaw<NotifieeConst> notifiees_;
};

// Who hears of it: a callback for each attribute, three for a collection.
class Fan::NotifieeConst
    : public Zel::NotifieeOf<Fan, Fan::NotifieeConst, Zel::Entity::NotifieeConst> {
public:
  virtual void onSpeed() {}
  virtual void onAlarm(Zel::String8 /*name*/) {}
  virtual void onAlarmzelImmediate() {}
  virtual void onAlarm() {}

  Zel::PendingKey<Zel::String8> zelPendingAlarm;
};
class Fan::Notifiee : public Fan::NotifieeConst {};

// The mutators: each compares, writes, counts and tells, in that order.
void Fan::speedIs(unsigned rpm) {
  Zel::singularIs<&NotifieeConst::onSpeed>(*this, Attr::speed, speed_, rpm);
}
void Fan::alarmIs(Zel::String8 name, bool raised) {
  Zel::keyedIs<Attr::alarm, &Fan::newAlarm, &Fan::alarmNotify>(*this, alarm_, name, raised);
}
bool Fan::alarmDel(Zel::String8 name) {
  return Zel::keyedDel<Attr::alarm, &Fan::alarmNotify>(*this, alarm_, name);
}
bool Fan::alarmDel(AlarmMap::Iterator& at) {
  return Zel::keyedDel<Attr::alarm, &Fan::alarmNotify>(*this, alarm_, at);
}
void Fan::alarmDelAll() {
  Zel::collectionDelAll(*this, alarm_, [this](AlarmMap::Iterator& at) { alarmDel(at); });
}
Zel::Ptr<Fan::ZelAlarm> Fan::newAlarm(Zel::String8 name, bool raised) {
  return Zel::keyedNew<Attr::alarm>(*this, alarm_, name, raised);
}
void Fan::alarmNotify(Zel::String8 name) {
  Zel::notifyOwner(*this, Attr::alarm, [&](NotifieeConst& notifiee) { notifiee.onAlarm(name); });
}

// The table: a row for each attribute. All that follows is derived from it.
constexpr Zel::AttrRow rows[] = {
    Zel::Rows<Fan>::singular<&Fan::speed, &Fan::speedIs, Fan::NotifieeConst,
                             &Fan::NotifieeConst::onSpeed>(Fan::Attr::speed, "speed"),
    Zel::Rows<Fan>::Collection<Fan::AlarmMap, &Fan::alarmMap>::keyed<
        &Fan::alarm, &Fan::alarmIs, &Fan::alarmDel, &Fan::alarmDelAll, &Fan::alarmNotify,
        Fan::NotifieeConst, &Fan::NotifieeConst::onAlarm, &Fan::NotifieeConst::onAlarm,
        &Fan::NotifieeConst::zelPendingAlarm>(Fan::Attr::alarm, "alarm"),
};
static_assert(Zel::rowsAreInOrder(rows, Zel::firstEntityAttributeId));
constexpr Zel::TypeTable table = Zel::tableOf<Fan, Zel::Name>(rows);
const Zel::TypeTable& Fan::zelTable() { return table; }

// The descriptor, registered when the program starts.
constexpr std::string_view scopes[] = {"Chassis"};
constinit Zel::ModuleOf<Zel::TypeList<Fan>> chassis(scopes);
const Zel::LoadModule atLoad(chassis);
const Zel::ZelType* Fan::_fwkType() { return chassis.fwkType<Fan>(); }

// The generic object, which is a subscriber too: a line for each callback.
class Fan::GenericIf_ : public Zel::EntityGenericIf<Fan> {
public:
  class GenericIf_Adapter_;
  GenericIf_(const Zel::Ptr<Fan>& fan, bool isConst);
  void onSpeed() { zelOnSingular(Attr::speed); }
  void onAlarm(Zel::String8 name) { zelOnMember(Attr::alarm, &name); }
};
class Fan::GenericIf_::GenericIf_Adapter_ : public Zel::GenericAdapter<Fan, Fan::GenericIf_> {
public:
  using GenericAdapter::GenericAdapter;
  void onSpeed() override { zelForward(&GenericIf_::onSpeed); }
  void onAlarm(Zel::String8 name) override { zelForward(&GenericIf_::onAlarm, name); }
  void onAlarm() override { zelForwardCollection(Attr::alarm); }
};
Fan::GenericIf_::GenericIf_(const Zel::Ptr<Fan>& fan, bool isConst) : EntityGenericIf(isConst) {
  zelAttach(this, fan);
}

// The attribute log: again a line for each callback, and for a collection the keys that are owed.
class Fan::ZelNboAttrLogSa : public Zel::AdapterOf<Fan> {
public:
  using AdapterOf::AdapterOf;
  class ZelNboAttrLogSaAdapter_;
  class FlowOut;
  virtual void onSpeed() { zelOnSingular(Attr::speed); }
  virtual void onAlarm(Zel::String8 name) { zelOnKey(Attr::alarm, &name); }
};
class Fan::ZelNboAttrLogSa::ZelNboAttrLogSaAdapter_ : public Zel::AdapterNotifiee<Fan> {
public:
  void onSpeed() override { zelForward(&ZelNboAttrLogSa::onSpeed); }
  using Fan::Notifiee::onAlarm;
  void onAlarm(Zel::String8 name) override { zelForward(&ZelNboAttrLogSa::onAlarm, name); }
};
class Fan::ZelNboAttrLogSa::FlowOut : public Zel::EntityFlowOut {
public:
  class ZelZelIsAlarmDirty : public Zel::MapEntry<ZelZelIsAlarmDirty, Zel::String8, bool> {
    using MapEntry::MapEntry;
  };
  using EntityFlowOut::EntityFlowOut;

private:
  Zel::DirtyKeys<Zel::HashMap<ZelZelIsAlarmDirty, Zel::String8, bool>> alarms_{*this, Attr::alarm};
};

} // namespace Chassis

template class Zel::TypeOf<Chassis::Fan>; // here, where its generic object is known
ZEL_ADAPTER(Chassis::Fan)

namespace {

/// Hears of any entity, whatever its type.
class Watcher : public Zel::GenericIfEntity::Listener {
  void onAttribute(Zel::GenericIfEntity& object, Zel::AttributeId id) override {
    const Zel::Ptr<Zel::GenericIf> self(&object);
    std::cout << object.attributeString(id) << " = " << Zel::readAttribute(self, id)->strRep()
              << '\n';
  }
  void onAttribute(Zel::GenericIfEntity& object, Zel::AttributeId id,
                   const Zel::Ptr<const Zel::GenericIf>& key) override {
    const Zel::Ptr<Zel::GenericIf> self(&object);
    std::cout << object.attributeString(id) << '[' << key->strRep()
              << "] = " << Zel::readMember(self, id, key)->strRep() << '\n';
  }
};

using Zel::Connection;

/// Moves bytes as a driver of sockets would, here from one end to the other, until none are left.
void settle(Connection& from, Connection& to) {
  while (from.service() || from.wantsWrite()) {
    const auto bytes = from.pendingOutput();
    const auto space = to.inputSpace();
    const std::size_t count = std::min(bytes.size(), space.size());
    std::copy_n(bytes.begin(), count, space.begin());
    from.outputConsumed(count);
    to.inputReceived(count);
    to.service();
  }
}

/// Mirrors a fan into another place, and changes it.
void mirror(const Zel::Ptr<Chassis::Fan>& fan) {
  const auto place = Zel::makeObject<Zel::Dir>();
  const auto readOnly =
      Zel::PtrInterface::NotifieeConst::Zel_BitSet(Zel::StreamAdapter::flagReadOnly);
  const auto here = Zel::makeObject<Connection>(Connection::End::first);
  const auto there =
      Zel::makeObject<Connection>(Connection::End::second, "here", Zel::ConnectionLimits(),
                                  Zel::makeObject<Zel::NboAttrLog::DirMounts>(place, readOnly));
  here->demuxer()->exportIs(fan);
  settle(*here, *there);
  const auto copy = Zel::ptrCast<Chassis::Fan>(place->entity(fan->name()));
  std::cout << "the mirror says " << copy->speed() << ", " << copy->alarmMap().count()
            << " alarms\n";
  fan->speedIs(5000);
  settle(*here, *there);
  std::cout << "and now " << copy->speed() << '\n';
  try {
    copy->speedIs(1);
  } catch (const Zel::ReadOnlyException& refusal) {
    std::cout << refusal.message() << '\n';
  }
  here->close();
  there->close();
}

} // namespace

int main() {
  // From here on, nothing names the type but by its text.
  const Zel::ZelType* const type = Zel::ZelType::type("Chassis::Fan");
  const auto fan = type->genericIf(Zel::arguments(Zel::Name("fan1")).ptr(), false);
  for (const auto& attribute : type->attributeQ()) {
    std::cout << attribute->id() << ' ' << attribute->name() << '\n';
  }

  Watcher watcher;
  Zel::ptrCast<Zel::GenericIfEntity>(fan)->listenerIs(&watcher);
  const Zel::AttributeId speed = fan->attributeId("speed");
  const Zel::AttributeId alarm = fan->attributeId("alarm");
  Zel::writeText(fan, speed, "4200");
  Zel::setMember(fan, alarm, "blocked", true);
  Zel::setMember(fan, alarm, "hot", false);
  for (auto at = fan->attributeIteratorConst(alarm); at; ++at) {
    std::cout << at.key()->strRep() << ": " << at.obj()->strRep() << '\n';
  }
  try {
    Zel::writeText(fan, speed, "fast");
  } catch (const Zel::Exception& failure) {
    std::cout << failure.message() << '\n';
  }
  mirror(Zel::ptrCast<Chassis::Fan>(
      Zel::Ptr<Zel::PtrInterface>(Zel::ptrCast<Zel::GenericIfEntity>(fan)->zelObject())));
}
