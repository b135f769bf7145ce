#pragma once

#include "Tour.h"

namespace Foreign {

/// All tours of a shift: an object without constructor arguments that makes its members.
class PickPlan : public Zel::PtrInterface {
public:
  static constexpr std::string_view zelTypeName = "Foreign::PickPlan";
  static const Zel::TypeTable& zelTable();
  static const Zel::ZelType* _fwkType();
  const Zel::ZelType* fwkType() const override { return _fwkType(); }
  using _Type = Zel::TypeOf<PickPlan>;
  class GenericIf_;

  class NotifieeConst;
  class Notifiee;
  using TourMap = Zel::HashMap<Tour, TourKey, Tour>;

  struct Attr {
    static constexpr Zel::AttributeId tour = 130;
  };

  PickPlan();

  Zel::Ptr<Tour> tour(const TourKey& key) const;
  Zel::Ptr<Tour> newTour(const TourKey& key);
  Zel::ValidPtr<Tour> tourIs(const TourKey& key);
  Zel::Ptr<Tour> tourDel(const TourKey& key);
  Zel::Ptr<Tour> tourDel(TourMap::Iterator& at);
  void tourDelAll();
  void tourNotify(const TourKey& key);
  const TourMap& tourMap() const noexcept { return tour_; }

  void zeroReferencesIs(bool zero) override;

  Zel::ListRaw<NotifieeConst>& zelNotifieeList() const noexcept { return notifiees_; }

protected:
  ~PickPlan() override;

private:
  TourMap tour_;
  mutable Zel::ListRaw<NotifieeConst> notifiees_;
};

class PickPlan::NotifieeConst
    : public Zel::NotifieeOf<PickPlan, PickPlan::NotifieeConst, Zel::PtrInterface::NotifieeConst> {
protected:
  ~NotifieeConst() override;

public:
  virtual void onTour(const TourKey& key);
  virtual void onTourzelImmediate();
  virtual void onTour();

  Zel::PendingKey<TourKey> zelPendingTour;
};

class PickPlan::Notifiee : public PickPlan::NotifieeConst {
protected:
  ~Notifiee() override;
};

/// Picks one winner among candidates. Nobody is told of a change of the set.
class PickSet : public Zel::PtrInterface {
public:
  static constexpr std::string_view zelTypeName = "Foreign::PickSet";
  static const Zel::TypeTable& zelTable();
  static const Zel::ZelType* _fwkType();
  const Zel::ZelType* fwkType() const override { return _fwkType(); }
  using _Type = Zel::TypeOf<PickSet>;
  class GenericIf_;

  class ZelCandidate : public Zel::MapEntry<ZelCandidate, SkuKey, bool> {
    using MapEntry::MapEntry;
  };
  using CandidateMap = Zel::HashMap<ZelCandidate, SkuKey, bool>;

  struct Attr {
    static constexpr Zel::AttributeId candidate = 130;
    static constexpr Zel::AttributeId winner = 131;
  };

  PickSet();

  bool candidate(const SkuKey& key) const;
  void candidateIs(const SkuKey& key, bool value);
  bool candidateDel(const SkuKey& key);
  bool candidateDel(CandidateMap::Iterator& at);
  void candidateDelAll();
  Zel::Ptr<ZelCandidate> newCandidate(const SkuKey& key, bool value);
  /// Does nothing.
  void candidateNotify(const SkuKey& key);
  const CandidateMap& candidateMap() const noexcept { return candidate_; }

  /// The candidate with the greatest sku, whatever its bool; a default key if there is none.
  SkuKey winner() const;

protected:
  ~PickSet() override;

private:
  CandidateMap candidate_;
};

} // namespace Foreign
