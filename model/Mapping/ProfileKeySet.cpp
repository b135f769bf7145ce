#include <model/Mapping/ProfileKeySet.h>

#include <ostream>

namespace Maintenance {

namespace {

using Self = ProfileKeySet;
using Attr = Self::Attr;
using Row = Zel::Rows<Self>;

constexpr Zel::AttrRow rows[] = {
    Row::Collection<Self::ProfileKeyMap, &Self::profileKeyMap>::silentKeyed<
        &Self::profileKey, &Self::profileKeyIs, &Self::profileKeyDel, &Self::profileKeyDelAll,
        &Self::profileKeyNotify>(Attr::profileKey, "profileKey"),
    Row::computed<&Self::winningProfile>(Attr::winningProfile, "winningProfile", Zel::internal),
};
static_assert(Zel::rowsAreInOrder(rows, Zel::firstObjectAttributeId));

constexpr Zel::TypeTable table = Zel::tableOf<Self>(rows);

// How the trace point names its place: fixed, since filters of trace files go by it.
constexpr const char* traceFile = "Mapping";
constexpr int traceLine = 23;
constexpr int traceLevel = 5;

} // namespace

const Zel::TypeTable& ProfileKeySet::zelTable() { return table; }

ProfileKeySet::ProfileKeySet() = default;
ProfileKeySet::~ProfileKeySet() = default;

bool ProfileKeySet::profileKey(const Profile::ProfileKey& key) const {
  return Zel::keyedRead(*this, profileKey_, key);
}

// An owner that is no entity counts nothing, and the notify operation tells nobody: what is left of
// the steps is a silent write.
void ProfileKeySet::profileKeyIs(const Profile::ProfileKey& key, bool value) {
  Zel::keyedIs<Attr::profileKey, &Self::newProfileKey, &Self::profileKeyNotify>(*this, profileKey_,
                                                                                key, value);
}

bool ProfileKeySet::profileKeyDel(const Profile::ProfileKey& key) {
  return Zel::keyedDel<Attr::profileKey, &Self::profileKeyNotify>(*this, profileKey_, key);
}

bool ProfileKeySet::profileKeyDel(ProfileKeyMap::Iterator& at) {
  return Zel::keyedDel<Attr::profileKey, &Self::profileKeyNotify>(*this, profileKey_, at);
}

void ProfileKeySet::profileKeyDelAll() {
  Zel::collectionDelAll(*this, profileKey_,
                        [this](ProfileKeyMap::Iterator& at) { profileKeyDel(at); });
}

Zel::Ptr<ProfileKeySet::ZelProfileKey> ProfileKeySet::newProfileKey(const Profile::ProfileKey& key,
                                                                    bool value) {
  return Zel::keyedNew<Attr::profileKey>(*this, profileKey_, key, value);
}

void ProfileKeySet::profileKeyNotify(const Profile::ProfileKey& /*key*/) {}

Profile::ProfileKey ProfileKeySet::winningProfile() const {
  const Profile::ProfileKey none;
  Profile::ProfileKey winner;
  for (ProfileKeyMap::IteratorConst at(profileKey_); at; at.advance()) {
    const Profile::ProfileKey& candidate = at->zelKey();
    if (winner == none || winner.name() < candidate.name()) {
      winner = candidate;
    }
  }
  Zel::tracePoint(_defaultTraceHandle().facility(), traceLevel, traceFile, traceLine,
                  "winningProfile",
                  [&](std::ostream& text) { text << "winningProfile is " << winner; });
  return winner;
}

Zel::Ptr<ProfileKeySet> profileKeySetFactory() { return Zel::makeObject<ProfileKeySet>(); }

const Zel::TraceHandle& _defaultTraceHandle() {
  static const Zel::TraceHandle handle("MaintenanceMapping", false);
  return handle;
}

} // namespace Maintenance
