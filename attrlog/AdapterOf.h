#pragma once

#include <Zel/AttrLogEntity>
#include <attrlog/Adapter.h>

/// What an entity type adds to the engine. For a type `X` with attribute `state`:
///
///     class X::ZelNboAttrLogSa : public Zel::AdapterOf<X> {
///     public:
///       using AdapterOf::AdapterOf;
///       class ZelNboAttrLogSaAdapter_;
///       class FlowOut;
///       virtual void onState() { zelOnSingular(Attr::state); }
///     };
///     class X::ZelNboAttrLogSa::ZelNboAttrLogSaAdapter_ : public Zel::AdapterNotifiee<X> {
///     public:
///       void onState() override { zelForward(&ZelNboAttrLogSa::onState); }
///     };
///     class X::ZelNboAttrLogSa::FlowOut : public Zel::EntityFlowOut { using ...; };
///
/// and, in one source file, `ZEL_ADAPTER(X)` behind `#include <attrlog/MakeAdapter.h>`. A
/// collection has its table of keys in the `FlowOut`. The virtual callbacks stand in ascending id.
namespace Zel {

/// The plan of a type.
template <class T>
ZEL_API const FlowPlan& planOf() {
  static const FlowPlan plan(T::zelTable(), &AttrLogAdapter::childIs);
  return plan;
}

/// Base of `T::ZelNboAttrLogSa`. `Base` is the adapter class of a base type that has attributes.
template <class T, class Base = AttrLogAdapter>
class ZEL_API AdapterOf : public Base {
  using Flags = PtrInterface::NotifieeConst::Zel_BitSet;

public:
  /// Attaches an adapter for `out` to the entity; it hears of nothing until notification is on.
  AdapterOf(Flags flags, const Ptr<T>& entity, unsigned option, const Ptr<NboAttrLog::Out>& out,
            PtrInterface* owner)
      : Base(planOf<T>(), flags, option, out, owner) {
    this->attach(ZelNboAttrLogSaAdapter_Is(this), Ptr<const Entity>(entity));
  }

  void zelDoZombieReactors(bool zombie) override {
    if (zombie == this->zelMarkedForDeletion()) {
      return;
    }
    PtrInterface::NotifieeConst* const heard = this->notifiee();
    if (heard != nullptr) {
      using Own = typename T::ZelNboAttrLogSa::ZelNboAttrLogSaAdapter_;
      static_cast<Own*>(heard)->zelDoZombieReactors(zombie);
    }
    Base::zelDoZombieReactors(zombie);
    if (heard != nullptr && !zombie) { // marked as it was, the notifiee has kept this to itself
      this->hasNotificationActiveIs(heard->hasNotificationActive());
    }
  }

  const T* zelNotifierEntity() const override { return static_cast<const T*>(this->rawEntity()); }
  T* zelNotifierEntity() override { return static_cast<T*>(this->rawEntity()); }
  /// The entity; null once it is gone.
  Ptr<T> notifier() const { return Ptr<T>(static_cast<T*>(this->rawEntity())); }

  Ptr<NboAttrLog::FlowOut> flowOutIs(const Ptr<NboAttrLog::Out>& out, const ConnectDesc& connect,
                                     bool flag, AttributeId start) override {
    return makeObject<typename T::ZelNboAttrLogSa::FlowOut>(out, Ptr<Entity::ZelNboAttrLogSa>(this),
                                                            connect, flag, start);
  }
  auto flowOut() const {
    using Own = typename T::ZelNboAttrLogSa::FlowOut;
    return Ptr<Own>(static_cast<Own*>(Base::flowOut().ptr()));
  }

protected:
  /// For the adapter of a derived type.
  AdapterOf(const FlowPlan& plan, Flags flags, unsigned option, const Ptr<NboAttrLog::Out>& out,
            PtrInterface* owner)
      : Base(plan, flags, option, out, owner) {}

  ~AdapterOf() override {
    if (PtrInterface::NotifieeConst* const heard = this->notifiee()) {
      using Own = typename T::ZelNboAttrLogSa::ZelNboAttrLogSaAdapter_;
      const Ptr<Own> kept(static_cast<Own*>(heard));
      this->detach();
      kept->zelReactorAdapterIs(nullptr);
    }
  }

private:
  /// Makes the notifiee of an adapter.
  static auto ZelNboAttrLogSaAdapter_Is(AttrLogAdapter* adapter) {
    auto made = makeObject<typename T::ZelNboAttrLogSa::ZelNboAttrLogSaAdapter_>();
    made->zelReactorAdapterIs(adapter);
    return Ptr<PtrInterface::NotifieeConst>(made);
  }
};

/// Base of `T::ZelNboAttrLogSa::ZelNboAttrLogSaAdapter_`: the notifiee that stands in the entity's
/// list and passes on what it hears.
template <class T>
class ZEL_API AdapterNotifiee : public T::Notifiee {
protected:
  using Adapter = typename T::ZelNboAttrLogSa;
  using Attr = typename T::Attr;

  /// Born weak, and with notification off. When it is turned on, the notifiee is registered.
  AdapterNotifiee() noexcept {
    this->referenceBitsClear(PtrInterface::notificationActiveBit);
    this->flagsSet(PtrInterface::NotifieeConst::Zel_BitSet::registeredBit);
    this->isWeakReferenceIs(true);
  }

public:
  Adapter* zelReactorAdapter() const noexcept { return static_cast<Adapter*>(adapter_); }
  void zelReactorAdapterIs(AttrLogAdapter* adapter) noexcept { adapter_ = adapter; }

  void hasNotificationActiveIs(bool active) override {
    if (active == this->hasNotificationActive()) {
      return;
    }
    T::Notifiee::hasNotificationActiveIs(active);
    if (adapter_ != nullptr && !this->zelMarkedForDeletion()) {
      adapter_->hasNotificationActiveIs(active);
    }
  }

  Ptr<PtrInterface::NotifieeConst> zelReactor() const override {
    return Ptr<PtrInterface::NotifieeConst>(adapter_);
  }
  PtrInterface::NotifieeConst* zelRawReactor() const override { return adapter_; }

  void onZeroReferences() override {
    if (adapter_ != nullptr) {
      const Ptr<AttrLogAdapter> kept(adapter_);
      adapter_->Entity::ZelNboAttrLogSa::onZeroReferences();
    }
    this->hasNotificationActiveIs(false);
  }

  using T::Notifiee::onNotificationException;
  void onNotificationException(AttributeId attr) override {
    if (adapter_ != nullptr) {
      adapter_->Entity::ZelNboAttrLogSa::onNotificationException(attr);
    }
  }

  void zelDoZombieReactors(bool zombie) {
    if (zombie == this->zelMarkedForDeletion()) {
      return;
    }
    if (this->notifier()) {
      this->hasNotificationActiveIs(!zombie);
    }
    this->zelMarkedForDeletionIs(zombie);
  }

protected:
  /// Calls a callback of the adapter, as far as it has it still.
  template <class C, class... Parameters, class... Arguments>
  void zelForward(void (C::*callback)(Parameters...), const Arguments&... arguments) {
    if (adapter_ != nullptr) [[likely]] {
      (zelReactorAdapter()->*callback)(arguments...);
    }
  }

private:
  AttrLogAdapter* adapter_ = nullptr; // which may be under construction
};

} // namespace Zel
