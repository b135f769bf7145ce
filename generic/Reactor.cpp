#include <generic/Reactor.h>

#include <Zel/Activity>
#include <generic/Arguments.h>

namespace Zel {

namespace {

bool isToldCollection(const AttrRow& row) {
  return row.collection != nullptr && row.collection->pending != nullptr;
}

/// Whether notifiees hear of the attribute.
bool isTold(const AttrRow& row) { return row.tell != nullptr || isToldCollection(row); }

} // namespace

GenericReactor::~GenericReactor() = default;

void GenericReactor::notifierIs(const Ptr<const PtrInterface>& notifier) {
  const Ptr<const PtrInterface> wanted(notifier);      // since the caller's may be what goes
  const Ptr<const PtrInterface> former(rawNotifier()); // whose last count may be the adapter's
  if (adapter_ && adapter_->notifier() != wanted) {
    adapter_->notifierIs(wanted);
  }
  if (former != wanted) {
    PtrInterface::NotifieeConst::notifierIs(wanted);
  }
  isRegisteredNotifieeIs(false);
}

void GenericReactor::hasNotificationActiveIs(bool active) {
  if (active == hasNotificationActive()) {
    return;
  }
  PtrInterface::NotifieeConst::hasNotificationActiveIs(active);
  if (adapter_) {
    adapter_->hasNotificationActiveIs(active);
  }
}

void GenericReactor::zelOnSingular(AttributeId id) {
  if (!zelOnAttribute(id, nullptr)) {
    actsm();
    onAttribute(id);
  }
}

void GenericReactor::zelOnMember(AttributeId id, const void* key) {
  const AttrRow* const row = attributeRow(zelView().table, id);
  if (row != nullptr && isToldCollection(*row) && adapter_) {
    tellMember(*row, key);
  }
}

void GenericReactor::tellMember(const AttrRow& row, const void* key) {
  const PendingSlot waiting = row.collection->pending(*adapter_);
  row.key->assign(waiting.lastKey, key);
  if (!zelOnAttribute(row.id, waiting.count)) {
    actsm();
    Ptr<const GenericIf> told = packed(*row.key, key, isConst(), row.name);
    onAttribute(row.id, told);
  }
}

void GenericReactor::deliver(const AttrRow& row, bool force) {
  const PendingSlot waiting = row.collection->pending(*adapter_);
  ValueSlot key(*row.key, [&](void* to) { row.key->copy(to, waiting.lastKey); });
  const unsigned count = std::exchange(*waiting.count, static_cast<unsigned char>(0));
  if (count > 1 || force) {
    onAttribute(row.id);
  } else if (count == 1) {
    tellMember(row, key.at());
  }
}

void GenericReactor::handleNotification(ActivityConfig* config) {
  const Ptr<GenericReactor> kept(this); // until the last attribute is told
  const TypeTable& table = zelView().table;
  const AttributeId pending = pendingAttribute();
  pendingAttributeIs(0);
  ActivitySm* const scheduler = actsm();

  const auto tell = [&](const AttrRow& row) {
    if (row.collection != nullptr) {
      deliver(row, pending == allChangedId);
    } else {
      zelOnSingular(row.id);
    }
  };
  if (const AttrRow* const row = attributeRow(table, pending); row != nullptr && isTold(*row)) {
    tell(*row);
    return;
  }
  pendingAttributeIs(pending);
  PtrInterface::NotifieeConst::handleNotification(config);
  if (pending == allAttributesId || pending == allChangedId) {
    table.forEachRow([&](const AttrRow& row) {
      if (isTold(row)) {
        redispatch(scheduler);
        tell(row);
      }
    });
  }
}

} // namespace Zel
