#include "PickPlan.h"

namespace Foreign {

namespace {

using Callbacks = PickPlan::NotifieeConst;

constexpr Zel::AttrRow planRows[] = {
    Zel::Rows<PickPlan>::Collection<PickPlan::TourMap, &PickPlan::tourMap>::Of<>::instantiating<
        &PickPlan::tour, &PickPlan::tourIs, &PickPlan::tourDel, &PickPlan::tourDelAll,
        &PickPlan::tourNotify, Callbacks, &Callbacks::onTour, &Callbacks::onTour,
        &Callbacks::zelPendingTour>(PickPlan::Attr::tour, "tour"),
};
static_assert(Zel::rowsAreInOrder(planRows, Zel::firstObjectAttributeId));

constexpr Zel::TypeTable planTable = Zel::tableOf<PickPlan>(planRows);

constexpr Zel::AttrRow setRows[] = {
    Zel::Rows<PickSet>::Collection<PickSet::CandidateMap, &PickSet::candidateMap>::silentKeyed<
        &PickSet::candidate, &PickSet::candidateIs, &PickSet::candidateDel,
        &PickSet::candidateDelAll, &PickSet::candidateNotify>(PickSet::Attr::candidate,
                                                              "candidate"),
    Zel::Rows<PickSet>::computed<&PickSet::winner>(PickSet::Attr::winner, "winner", Zel::internal),
};
static_assert(Zel::rowsAreInOrder(setRows, Zel::firstObjectAttributeId));

constexpr Zel::TypeTable setTable = Zel::tableOf<PickSet>(setRows);

} // namespace

const Zel::TypeTable& PickPlan::zelTable() { return planTable; }

PickPlan::PickPlan() = default;

PickPlan::~PickPlan() {
  Zel::directoryTearDown(notifiees_, [this] { tourDelAll(); });
}

void PickPlan::zeroReferencesIs(bool /*zero*/) { Zel::notifyZeroReferences(*this); }

Zel::Ptr<Tour> PickPlan::tour(const TourKey& key) const {
  return Zel::memberRead(*this, tour_, key);
}

Zel::Ptr<Tour> PickPlan::newTour(const TourKey& key) {
  return Zel::memberNew(*this, Attr::tour, tour_, Zel::makeObject<Tour>(key));
}

Zel::ValidPtr<Tour> PickPlan::tourIs(const TourKey& key) {
  return Zel::memberIs<&PickPlan::tourNotify>(*this, tour_, key, [&] { return newTour(key); });
}

Zel::Ptr<Tour> PickPlan::tourDel(const TourKey& key) {
  return Zel::memberDel<Attr::tour, &PickPlan::tourNotify>(*this, tour_, key);
}

Zel::Ptr<Tour> PickPlan::tourDel(TourMap::Iterator& at) {
  return Zel::memberDel<Attr::tour, &PickPlan::tourNotify>(*this, tour_, at);
}

void PickPlan::tourDelAll() {
  Zel::collectionDelAll(*this, tour_, [this](TourMap::Iterator& at) { tourDel(at); });
}

void PickPlan::tourNotify(const TourKey& key) {
  Zel::notifyOwner(*this, Attr::tour, [&](NotifieeConst& notifiee) { notifiee.onTour(key); });
}

PickPlan::NotifieeConst::~NotifieeConst() = default;
void PickPlan::NotifieeConst::onTour(const TourKey& /*key*/) {}
void PickPlan::NotifieeConst::onTourzelImmediate() {}
void PickPlan::NotifieeConst::onTour() {}
PickPlan::Notifiee::~Notifiee() = default;

const Zel::TypeTable& PickSet::zelTable() { return setTable; }

PickSet::PickSet() = default;
PickSet::~PickSet() = default;

bool PickSet::candidate(const SkuKey& key) const { return Zel::keyedRead(*this, candidate_, key); }

// An owner that is no entity counts nothing, and the notify operation tells nobody: what is left of
// the steps is a silent write.
void PickSet::candidateIs(const SkuKey& key, bool value) {
  Zel::keyedIs<Attr::candidate, &PickSet::newCandidate, &PickSet::candidateNotify>(
      *this, candidate_, key, value);
}

bool PickSet::candidateDel(const SkuKey& key) {
  return Zel::keyedDel<Attr::candidate, &PickSet::candidateNotify>(*this, candidate_, key);
}

bool PickSet::candidateDel(CandidateMap::Iterator& at) {
  return Zel::keyedDel<Attr::candidate, &PickSet::candidateNotify>(*this, candidate_, at);
}

void PickSet::candidateDelAll() {
  Zel::collectionDelAll(*this, candidate_,
                        [this](CandidateMap::Iterator& at) { candidateDel(at); });
}

Zel::Ptr<PickSet::ZelCandidate> PickSet::newCandidate(const SkuKey& key, bool value) {
  return Zel::keyedNew<Attr::candidate>(*this, candidate_, key, value);
}

void PickSet::candidateNotify(const SkuKey& /*key*/) {}

SkuKey PickSet::winner() const {
  SkuKey winner;
  for (CandidateMap::IteratorConst at(candidate_); at; at.advance()) {
    if (winner == SkuKey() || winner.sku() < at->zelKey().sku()) {
      winner = at->zelKey();
    }
  }
  return winner;
}

} // namespace Foreign
