#pragma once

#include "Values.h"

#include <Zel/Attribute>
#include <Zel/Layers>

/// Working state of the pickers: objects that are no entities. They have no name, no parent and no
/// counters; some have notifiees.
namespace Foreign {

/// A place where a tour stops.
class Stop : public Zel::PtrInterface {
public:
  static constexpr std::string_view zelTypeName = "Foreign::Stop";
  static const Zel::TypeTable& zelTable();
  static const Zel::ZelType* _fwkType();
  const Zel::ZelType* fwkType() const override { return _fwkType(); }
  using _Type = Zel::TypeOf<Stop>;
  class GenericIf_;

  class NotifieeConst;
  class Notifiee;

  struct Attr {
    static constexpr Zel::AttributeId urgent = 130;
    static constexpr Zel::AttributeId key = 131;
  };

  explicit Stop(const SkuKey& key);

  bool urgent() const noexcept { return Zel::read(*this, urgent_); }
  void urgentIs(bool urgent);

  const SkuKey& key() const noexcept { return Zel::read(*this, key_); }
  const SkuKey& fwkKey() const noexcept { return Zel::read(*this, key_); }

  void zeroReferencesIs(bool zero) override;

  Zel::ListRaw<NotifieeConst>& zelNotifieeList() const noexcept { return notifiees_; }
  const SkuKey& zelKey() const noexcept { return key_; }
  static constexpr Zel::Ptr<Stop> Stop::*zelMemberNext() noexcept { return &Stop::memberNext_; }

protected:
  ~Stop() override;

private:
  bool urgent_ = false;
  const SkuKey key_;
  Zel::Ptr<Stop> memberNext_;
  mutable Zel::ListRaw<NotifieeConst> notifiees_;
};

class Stop::NotifieeConst
    : public Zel::NotifieeOf<Stop, Stop::NotifieeConst, Zel::PtrInterface::NotifieeConst> {
protected:
  ~NotifieeConst() override;

public:
  virtual void onUrgent();
};

class Stop::Notifiee : public Stop::NotifieeConst {
protected:
  ~Notifiee() override;
};

/// Marks a stop as done: its being there is all that it says, and nobody is told anything.
class Mark : public Zel::PtrInterface {
public:
  static constexpr std::string_view zelTypeName = "Foreign::Mark";
  static const Zel::TypeTable& zelTable();
  static const Zel::ZelType* _fwkType();
  const Zel::ZelType* fwkType() const override { return _fwkType(); }
  using _Type = Zel::TypeOf<Mark>;
  class GenericIf_;

  struct Attr {
    static constexpr Zel::AttributeId key = 130;
  };

  explicit Mark(const SkuKey& key);

  const SkuKey& key() const noexcept { return Zel::read(*this, key_); }
  const SkuKey& fwkKey() const noexcept { return Zel::read(*this, key_); }

  const SkuKey& zelKey() const noexcept { return key_; }
  static constexpr Zel::Ptr<Mark> Mark::*zelMemberNext() noexcept { return &Mark::memberNext_; }

protected:
  ~Mark() override;

private:
  const SkuKey key_;
  Zel::Ptr<Mark> memberNext_;
};

/// One round through the warehouse, with its stops and marks.
class Tour : public Zel::PtrInterface {
public:
  static constexpr std::string_view zelTypeName = "Foreign::Tour";
  static const Zel::TypeTable& zelTable();
  static const Zel::ZelType* _fwkType();
  const Zel::ZelType* fwkType() const override { return _fwkType(); }
  using _Type = Zel::TypeOf<Tour>;
  class GenericIf_;

  class NotifieeConst;
  class Notifiee;
  class ZelHelper : public Zel::MapEntry<ZelHelper, Zel::String8, bool> {
    using MapEntry::MapEntry;
  };
  using HelperMap = Zel::HashMap<ZelHelper, Zel::String8, bool>;
  using StopMap = Zel::HashMap<Stop, SkuKey, Stop>;
  using MarkMap = Zel::HashMap<Mark, SkuKey, Mark>;

  struct Attr {
    static constexpr Zel::AttributeId key = 130;
    static constexpr Zel::AttributeId metres = 131;
    static constexpr Zel::AttributeId complete = 132;
    static constexpr Zel::AttributeId helper = 133;
    static constexpr Zel::AttributeId stop = 134;
    static constexpr Zel::AttributeId mark = 135;
  };

  explicit Tour(const TourKey& key);

  const TourKey& key() const noexcept { return Zel::read(*this, key_); }
  const TourKey& fwkKey() const noexcept { return Zel::read(*this, key_); }

  unsigned metres() const noexcept { return Zel::read(*this, metres_); }
  void metresIs(unsigned metres);
  unsigned metresInc(unsigned by);

  bool complete() const noexcept { return Zel::read(*this, complete_); }
  void completeIs(bool complete);

  bool helper(Zel::String8 name) const;
  void helperIs(Zel::String8 name, bool value);
  bool helperDel(Zel::String8 name);
  bool helperDel(HelperMap::Iterator& at);
  void helperDelAll();
  Zel::Ptr<ZelHelper> newHelper(Zel::String8 name, bool value);
  void helperNotify(Zel::String8 name);
  const HelperMap& helperMap() const noexcept { return helper_; }

  Zel::Ptr<Stop> stop(const SkuKey& key) const;
  Zel::Ptr<Stop> newStop(const SkuKey& key);
  Zel::ValidPtr<Stop> stopIs(const SkuKey& key);
  Zel::Ptr<Stop> stopDel(const SkuKey& key);
  Zel::Ptr<Stop> stopDel(StopMap::Iterator& at);
  void stopDelAll();
  void stopNotify(const SkuKey& key);
  const StopMap& stopMap() const noexcept { return stop_; }

  Zel::Ptr<Mark> mark(const SkuKey& key) const;
  Zel::Ptr<Mark> newMark(const SkuKey& key);
  Zel::ValidPtr<Mark> markIs(const SkuKey& key);
  Zel::Ptr<Mark> markDel(const SkuKey& key);
  Zel::Ptr<Mark> markDel(MarkMap::Iterator& at);
  void markDelAll();
  void markNotify(const SkuKey& key);
  const MarkMap& markMap() const noexcept { return mark_; }

  void zeroReferencesIs(bool zero) override;

  Zel::ListRaw<NotifieeConst>& zelNotifieeList() const noexcept { return notifiees_; }
  const TourKey& zelKey() const noexcept { return key_; }
  static constexpr Zel::Ptr<Tour> Tour::*zelMemberNext() noexcept { return &Tour::memberNext_; }

protected:
  ~Tour() override;

private:
  const TourKey key_;
  unsigned metres_ = 0;
  bool complete_ = false;
  HelperMap helper_;
  StopMap stop_;
  MarkMap mark_;
  Zel::Ptr<Tour> memberNext_;
  mutable Zel::ListRaw<NotifieeConst> notifiees_;
};

class Tour::NotifieeConst
    : public Zel::NotifieeOf<Tour, Tour::NotifieeConst, Zel::PtrInterface::NotifieeConst> {
protected:
  ~NotifieeConst() override;

public:
  virtual void onMetres();
  virtual void onComplete();
  virtual void onHelper(Zel::String8 name);
  virtual void onHelperzelImmediate();
  virtual void onHelper();
  virtual void onStop(const SkuKey& key);
  virtual void onStopzelImmediate();
  virtual void onStop();
  virtual void onMark(const SkuKey& key);
  virtual void onMarkzelImmediate();
  virtual void onMark();

  Zel::PendingKey<Zel::String8> zelPendingHelper;
  Zel::PendingKey<SkuKey> zelPendingStop;
  Zel::PendingKey<SkuKey> zelPendingMark;
};

class Tour::Notifiee : public Tour::NotifieeConst {
protected:
  ~Notifiee() override;
};

} // namespace Foreign
