#pragma once

#include <Zel/Entity>
#include <generic/Object.h>

/// Generic objects of entities as reactors: every change of the entity reaches `onAttribute`, at
/// once or when the scheduler delivers it (see `Zel/Activity`).
///
/// A reactor and its adapter are a pair. The adapter is a typed notifiee in the entity's list: it
/// holds no count on the entity and passes what it hears on to the reactor, which holds it. The
/// reactor holds the entity and is in no list. A type's part of both is a line for each attribute:
///
///     class ZEL_API Fan::GenericIf_ : public Zel::EntityGenericIf<Fan> {
///     public:
///       class GenericIf_Adapter_;
///       GenericIf_(const Zel::Ptr<Fan>& object, bool isConst);   // calls zelAttach
///       void onSpeed() { zelOnSingular(Attr::speed); }
///       void onBlade(Zel::Name key) { zelOnMember(Attr::blade, &key); }
///     };
///
///     class ZEL_API Fan::GenericIf_::GenericIf_Adapter_
///         : public Zel::GenericAdapter<Fan, Fan::GenericIf_> {
///     public:
///       using GenericAdapter::GenericAdapter;
///       void onSpeed() override { zelForward(&GenericIf_::onSpeed); }
///       void onBlade(Zel::Name key) override { zelForward(&GenericIf_::onBlade, key); }
///       void onBlade() override { zelForwardCollection(Attr::blade); }
///     };
namespace Zel {

/// What the generic objects of all entities do as reactors.
class ZEL_API GenericReactor : public GenericObject<GenericIfEntity> {
protected:
  using GenericObject::GenericObject;
  ~GenericReactor() override;

public:
  /// Moves reactor and adapter to another entity, null for none.
  void notifierIs(const Ptr<const PtrInterface>& notifier) override;
  /// Of the reactor and its adapter, which leaves the entity's list or comes back to its tail.
  /// Changes made meanwhile are lost to it. The entity's end switches it off.
  void hasNotificationActiveIs(bool active) override;
  /// Delivers what the pending attribute says: one attribute, or all that can be told of. A member
  /// change that is waiting alone comes with its key, several come as a change of the collection.
  void handleNotification(ActivityConfig* config) override;

protected:
  /// A singular attribute has changed, or the member `key` of a collection: puts it off, or tells
  /// `onAttribute`.
  void zelOnSingular(AttributeId id);
  void zelOnMember(AttributeId id, const void* key);

  PtrInterface::NotifieeConst* zelAdapter() const noexcept { return adapter_.ptr(); }
  void zelAdapterIs(Ptr<PtrInterface::NotifieeConst> adapter) noexcept {
    adapter_ = std::move(adapter);
    isServedIs(static_cast<bool>(adapter_));
  }

private:
  void tellMember(const AttrRow& row, const void* key);
  void deliver(const AttrRow& row, bool force);

  Ptr<PtrInterface::NotifieeConst> adapter_;
};

/// The generic object of an entity of type `T`: base of `T::GenericIf_`.
template <class T>
class ZEL_API EntityGenericIf : public GenericReactor {
public:
  virtual const T* obj() const { return static_cast<const T*>(this->rawNotifier()); }
  virtual T* obj() { return const_cast<T*>(static_cast<const T*>(this->rawNotifier())); }

  /// An object of another type counts as null.
  void notifierIs(const Ptr<const PtrInterface>& notifier) override {
    GenericReactor::notifierIs(ptrCast<const T>(notifier));
  }

  void zelDoZombieReactors(bool zombie) override {
    if (zombie == this->zelMarkedForDeletion()) {
      return;
    }
    auto* const mine = adapter();
    if (mine != nullptr) {
      mine->zelDoZombieReactors(zombie);
    }
    this->zelMarkedForDeletionIs(zombie);
    if (mine != nullptr && !zombie) { // marked as it was, the adapter has kept this to itself
      this->hasNotificationActiveIs(mine->hasNotificationActive());
    }
  }

  /// A second generic object of the same entity, with a subscription of its own.
  Ptr<GenericIf> clone() override { return genericIfOf(Ptr<T>(obj()), this->isConst()); }
  using GenericIf::clone;

  /// See `objectFromList`.
  static Ptr<GenericIf> genericIfListConstructor(const Ptr<const GenericIf>& list) {
    return objectFromList(T::zelTable(), list.ptr());
  }

protected:
  explicit EntityGenericIf(bool isConst) : GenericReactor(isConst) {}

  ~EntityGenericIf() override {
    this->isWeakReferenceIs(false); // what the base lets go of is a count
    if (auto* const mine = adapter()) {
      mine->notifierIs(nullptr);
      mine->zelReactorAdapterIs(nullptr);
    }
  }

  /// The last step of the constructor of `T::GenericIf_`.
  template <class Self>
  void zelAttach(Self* self, const Ptr<T>& object) {
    this->zelAdapterIs(Self::GenericIf_Adapter_::GenericIf_Adapter_Is(object, Ptr<Self>(self)));
    this->registeredFlagIs(false);
    GenericReactor::notifierIs(object);
  }

  ObjectView zelView() const final { return {T::zelTable(), const_cast<T*>(obj())}; }

private:
  auto* adapter() const noexcept {
    return static_cast<typename T::GenericIf_::GenericIf_Adapter_*>(this->zelAdapter());
  }
};

/// What stands in the list of a `T` for its generic object: base of
/// `T::GenericIf_::GenericIf_Adapter_`. It can outlive its reactor for the length of a notification
/// loop, and does nothing then.
template <class T, class Reactor>
class ZEL_API GenericAdapter : public T::Notifiee {
public:
  GenericAdapter(const Ptr<T>& notifier, const Ptr<Reactor>& reactor) : reactor_(reactor.ptr()) {
    this->isRegisteredNotifieeIs(true);
    this->notifierIs(notifier);
    this->isWeakReferenceIs(true);
  }

  /// Makes the adapter of a reactor.
  static auto GenericIf_Adapter_Is(const Ptr<T>& notifier, const Ptr<Reactor>& reactor) {
    auto made = makeObject<typename Reactor::GenericIf_Adapter_>(notifier, reactor);
    made->hasNotificationActiveIs(true);
    return made;
  }

  void hasNotificationActiveIs(bool active) override {
    if (active == this->hasNotificationActive()) {
      return;
    }
    T::Notifiee::hasNotificationActiveIs(active);
    if (const Ptr<Reactor> reactor(reactor_); reactor && !this->zelMarkedForDeletion()) {
      reactor->hasNotificationActiveIs(active);
    }
  }

  Ptr<PtrInterface::NotifieeConst> zelReactor() const override {
    return Ptr<PtrInterface::NotifieeConst>(reactor_);
  }
  PtrInterface::NotifieeConst* zelRawReactor() const override { return reactor_; }

  Ptr<Reactor> zelReactorAdapter() { return Ptr<Reactor>(reactor_); }
  Ptr<const Reactor> zelReactorAdapter() const { return Ptr<const Reactor>(reactor_); }
  void zelReactorAdapterIs(const Ptr<Reactor>& reactor) noexcept { reactor_ = reactor.ptr(); }

  void onNotificationException(AttributeId id) override {
    if (const Ptr<Reactor> reactor(reactor_); reactor) {
      reactor->PtrInterface::NotifieeConst::onNotificationException(id);
    }
  }
  using T::Notifiee::onNotificationException;

  /// Leaves the list.
  void onZeroReferences() override {
    if (const Ptr<Reactor> reactor(reactor_); reactor) {
      reactor->PtrInterface::NotifieeConst::onZeroReferences();
    }
    hasNotificationActiveIs(false);
  }

  virtual void zelDoZombieReactors(bool zombie) {
    if (zombie == this->zelMarkedForDeletion()) {
      return;
    }
    if (this->rawNotifier() != nullptr) {
      hasNotificationActiveIs(!zombie);
    }
    this->zelMarkedForDeletionIs(zombie);
  }

protected:
  ~GenericAdapter() override = default;

  /// Calls the reactor's operation, if there is a reactor, and keeps that alive meanwhile.
  template <class... Key>
  void zelForward(void (Reactor::*on)(Key...), std::type_identity_t<Key>... key) {
    if (const Ptr<Reactor> reactor(reactor_); reactor) {
      (reactor.ptr()->*on)(std::forward<Key>(key)...);
    }
  }
  void zelForwardCollection(AttributeId id) {
    if (const Ptr<Reactor> reactor(reactor_); reactor) {
      reactor->onAttribute(id);
    }
  }

private:
  Reactor* reactor_;
};

} // namespace Zel
