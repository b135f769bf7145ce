// Members that are made with many arguments: of types of a program's own, in a type list of their
// own.

#include "Pair.h"

#include <Zel/Attribute>
#include <attrlog/MakeAdapter.h>
#include <generic/Reactor.h>
#include <generic/TypeOf.h>
#include <registration/Module.h>

#include <gtest/gtest.h>

namespace ManyArguments {

using Zel::Name;
using Zel::Ptr;
using Zel::String8;

/// What a parcel is made with stays as it is.
class Parcel : public Zel::AttrLogEntity<Parcel> {
public:
  static constexpr std::string_view zelTypeName = "ManyArguments::Parcel";
  static const Zel::TypeTable& zelTable();
  static const Zel::ZelType* _fwkType();
  const Zel::ZelType* fwkType() const override { return _fwkType(); }
  class GenericIf_;
  class ZelNboAttrLogSa;
  class NotifieeConst;
  class Notifiee;
  struct Attr {};

  Parcel(Name name, unsigned length, double weight, String8 label, bool fragile, unsigned width,
         String8 sender)
      : AttrLogEntity(std::move(name)), length_(length), weight_(weight), label_(std::move(label)),
        fragile_(fragile), width_(width), sender_(std::move(sender)) {}

  unsigned length() const { return length_; }
  double weight() const { return weight_; }
  String8 label() const { return label_; }
  bool fragile() const { return fragile_; }
  unsigned width() const { return width_; }
  String8 sender() const { return sender_; }

  void zeroReferencesIs(bool /*zero*/) override { Zel::notifyZeroReferences(*this); }
  String8 attributeString(Zel::AttributeId id) const override {
    return Zel::attributeString(zelTable(), id, [&] { return Entity::attributeString(id); });
  }
  Zel::ListRaw<NotifieeConst>& zelNotifieeList() const { return notifiees_; }
  Name zelKey() const { return name(); }
  static constexpr Ptr<Parcel> Parcel::*zelMemberNext() noexcept { return &Parcel::memberNext_; }

private:
  const unsigned length_;
  const double weight_;
  const String8 label_;
  const bool fragile_;
  const unsigned width_;
  const String8 sender_;
  Ptr<Parcel> memberNext_;
  mutable Zel::ListRaw<NotifieeConst> notifiees_;
};

class Parcel::NotifieeConst
    : public Zel::NotifieeOf<Parcel, Parcel::NotifieeConst, Zel::Entity::NotifieeConst> {};
class Parcel::Notifiee : public Parcel::NotifieeConst {};

class Parcels : public Zel::AttrLogEntity<Parcels> {
public:
  static constexpr std::string_view zelTypeName = "ManyArguments::Parcels";
  static const Zel::TypeTable& zelTable();
  static const Zel::ZelType* _fwkType();
  const Zel::ZelType* fwkType() const override { return _fwkType(); }
  class GenericIf_;
  class ZelNboAttrLogSa;
  class NotifieeConst;
  class Notifiee;
  using ParcelMap = Zel::HashMap<Parcel, Name, Parcel>;
  struct Attr {
    static constexpr Zel::AttributeId parcel = 258;
  };

  explicit Parcels(Name name) : AttrLogEntity(std::move(name)) {}
  ~Parcels() override {
    Zel::directoryTearDown(notifiees_, [this] { parcelDelAll(); });
  }

  Ptr<Parcel> parcel(Name name) const { return Zel::memberRead(*this, parcel_, name); }
  Zel::ValidPtr<Parcel> parcelIs(Name name, unsigned length, double weight, String8 label,
                                 bool fragile, unsigned width, String8 sender) {
    return Zel::memberIs<&Parcels::parcelNotify>(*this, parcel_, name, [&] {
      return Zel::memberNew(
          *this, Attr::parcel, parcel_,
          Zel::makeObject<Parcel>(name, length, weight, label, fragile, width, sender));
    });
  }
  Ptr<Parcel> parcelDel(Name name) {
    return Zel::memberDel<Attr::parcel, &Parcels::parcelNotify>(*this, parcel_, name);
  }
  Ptr<Parcel> parcelDel(ParcelMap::Iterator& at) {
    return Zel::memberDel<Attr::parcel, &Parcels::parcelNotify>(*this, parcel_, at);
  }
  void parcelDelAll() {
    Zel::collectionDelAll(*this, parcel_, [this](ParcelMap::Iterator& at) { parcelDel(at); });
  }
  void parcelNotify(Name name);
  const ParcelMap& parcelMap() const { return parcel_; }

  void zeroReferencesIs(bool /*zero*/) override { Zel::notifyZeroReferences(*this); }
  String8 attributeString(Zel::AttributeId id) const override {
    return Zel::attributeString(zelTable(), id, [&] { return Entity::attributeString(id); });
  }
  Zel::ListRaw<NotifieeConst>& zelNotifieeList() const { return notifiees_; }

private:
  ParcelMap parcel_;
  mutable Zel::ListRaw<NotifieeConst> notifiees_;
};

class Parcels::NotifieeConst
    : public Zel::NotifieeOf<Parcels, Parcels::NotifieeConst, Zel::Entity::NotifieeConst> {
public:
  virtual void onParcel(Name /*name*/) {}
  virtual void onParcelzelImmediate() {}
  virtual void onParcel() {}
  Zel::PendingKey<Name> zelPendingParcel;
};
class Parcels::Notifiee : public Parcels::NotifieeConst {};

void Parcels::parcelNotify(Name name) {
  Zel::notifyOwner(*this, Attr::parcel, [&](NotifieeConst& to) { to.onParcel(name); });
}

constexpr Zel::AttrRow rows[] = {
    Zel::Rows<Parcel>::computed<&Parcel::length>(258, "length", Zel::constructorArgument),
    Zel::Rows<Parcel>::computed<&Parcel::weight>(259, "weight", Zel::constructorArgument),
    Zel::Rows<Parcel>::computed<&Parcel::label>(260, "label", Zel::constructorArgument),
    Zel::Rows<Parcel>::computed<&Parcel::fragile>(261, "fragile", Zel::constructorArgument),
    Zel::Rows<Parcel>::computed<&Parcel::width>(262, "width", Zel::constructorArgument),
    Zel::Rows<Parcel>::computed<&Parcel::sender>(263, "sender", Zel::constructorArgument),
};
constexpr Zel::TypeTable table =
    Zel::tableOf<Parcel, Name, unsigned, double, String8, bool, unsigned, String8>(rows);
const Zel::TypeTable& Parcel::zelTable() { return table; }

using Callbacks = Parcels::NotifieeConst;
constexpr Zel::AttrRow dirRows[] = {
    Zel::Rows<Parcels>::Collection<Parcels::ParcelMap, &Parcels::parcelMap>::
        Of<unsigned, double, String8, bool, unsigned, String8>::instantiating<
            &Parcels::parcel, &Parcels::parcelIs, &Parcels::parcelDel, &Parcels::parcelDelAll,
            &Parcels::parcelNotify, Callbacks, &Callbacks::onParcel, &Callbacks::onParcel,
            &Callbacks::zelPendingParcel>(258, "parcel"),
};
constexpr Zel::TypeTable dirTable = Zel::tableOf<Parcels, Name>(dirRows);
const Zel::TypeTable& Parcels::zelTable() { return dirTable; }

constexpr std::string_view scopes[] = {"ManyArguments"};
constinit Zel::ModuleOf<Zel::TypeList<Parcel, Parcels>> module(scopes);
const Zel::LoadModule atLoad(module);
const Zel::ZelType* Parcel::_fwkType() { return module.fwkType<Parcel>(); }
const Zel::ZelType* Parcels::_fwkType() { return module.fwkType<Parcels>(); }

class Parcel::GenericIf_ : public Zel::EntityGenericIf<Parcel> {
public:
  class GenericIf_Adapter_;
  GenericIf_(const Ptr<Parcel>& parcel, bool isConst);
};
class Parcel::GenericIf_::GenericIf_Adapter_
    : public Zel::GenericAdapter<Parcel, Parcel::GenericIf_> {
public:
  using GenericAdapter::GenericAdapter;
};
Parcel::GenericIf_::GenericIf_(const Ptr<Parcel>& parcel, bool isConst) : EntityGenericIf(isConst) {
  zelAttach(this, parcel);
}

class Parcels::GenericIf_ : public Zel::EntityGenericIf<Parcels> {
public:
  class GenericIf_Adapter_;
  GenericIf_(const Ptr<Parcels>& parcels, bool isConst);
};
class Parcels::GenericIf_::GenericIf_Adapter_
    : public Zel::GenericAdapter<Parcels, Parcels::GenericIf_> {
public:
  using GenericAdapter::GenericAdapter;
};
Parcels::GenericIf_::GenericIf_(const Ptr<Parcels>& parcels, bool isConst)
    : EntityGenericIf(isConst) {
  zelAttach(this, parcels);
}

class Parcel::ZelNboAttrLogSa : public Zel::AdapterOf<Parcel> {
public:
  using AdapterOf::AdapterOf;
  class ZelNboAttrLogSaAdapter_;
  class FlowOut;
};
class Parcel::ZelNboAttrLogSa::ZelNboAttrLogSaAdapter_ : public Zel::AdapterNotifiee<Parcel> {};
class Parcel::ZelNboAttrLogSa::FlowOut : public Zel::EntityFlowOut {
public:
  using EntityFlowOut::EntityFlowOut;
};

class Parcels::ZelNboAttrLogSa : public Zel::AdapterOf<Parcels> {
public:
  using AdapterOf::AdapterOf;
  class ZelNboAttrLogSaAdapter_;
  class FlowOut;
  virtual void onParcel(Name name) { zelOnKey(Attr::parcel, &name); }
};
class Parcels::ZelNboAttrLogSa::ZelNboAttrLogSaAdapter_ : public Zel::AdapterNotifiee<Parcels> {
public:
  using Parcels::Notifiee::onParcel;
  void onParcel(Name name) override { zelForward(&ZelNboAttrLogSa::onParcel, name); }
};
class Parcels::ZelNboAttrLogSa::FlowOut : public Zel::EntityFlowOut {
public:
  class ZelZelIsParcelDirty : public Zel::MapEntry<ZelZelIsParcelDirty, Name, bool> {
    using MapEntry::MapEntry;
  };
  using EntityFlowOut::EntityFlowOut;

private:
  Zel::DirtyKeys<Zel::HashMap<ZelZelIsParcelDirty, Name, bool>> parcels_{*this, Attr::parcel};
};

} // namespace ManyArguments

template class Zel::TypeOf<ManyArguments::Parcel>;
template class Zel::TypeOf<ManyArguments::Parcels>;
ZEL_ADAPTER(ManyArguments::Parcel)
ZEL_ADAPTER(ManyArguments::Parcels)

namespace {

using namespace ManyArguments;

void expectParcel(const Ptr<Parcels>& parcels, const char* name, unsigned length) {
  const Ptr<Parcel> parcel = parcels ? parcels->parcel(name) : nullptr;
  ASSERT_TRUE(parcel) << name;
  EXPECT_EQ(parcel->length(), length);
  EXPECT_EQ(parcel->weight(), 2.5);
  EXPECT_EQ(parcel->label(), "fragile goods");
  EXPECT_TRUE(parcel->fragile());
  EXPECT_EQ(parcel->width(), 4U);
  EXPECT_EQ(parcel->sender(), "somebody");
}

TEST(ManyArguments, TheyAllReachAMirror) {
  Pair pair;
  const auto parcels = Zel::makeObject<Parcels>("parcels");
  parcels->parcelIs("a", 3, 2.5, "fragile goods", true, 4, "somebody");
  pair.here->demuxer()->exportIs(parcels);
  pair.settle();
  parcels->parcelIs("b", 5, 2.5, "fragile goods", true, 4, "somebody");
  pair.settle();
  EXPECT_STREQ(pair.there->failure().charPtr(), "");
  const auto mirror = pair.mirror<Parcels>("parcels");
  expectParcel(mirror, "a", 3);
  expectParcel(mirror, "b", 5);
}

TEST(ManyArguments, SoDoThoseOfARoot) {
  Pair pair;
  const auto parcel = Zel::makeObject<Parcel>("a", 3U, 2.5, "fragile goods", true, 4U, "somebody");
  pair.here->demuxer()->exportIs(parcel);
  pair.settle();
  const auto mirror = pair.mirror<Parcel>("a");
  ASSERT_TRUE(mirror);
  EXPECT_EQ(mirror->length(), 3U);
  EXPECT_EQ(mirror->sender(), "somebody");
}

} // namespace
