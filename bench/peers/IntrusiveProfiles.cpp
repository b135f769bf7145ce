#include "peers/IntrusiveProfiles.h"

namespace Bench {

IntrusiveProfiles::IntrusiveProfiles()
    : buckets_(16), set_(Set::bucket_traits(buckets_.data(), buckets_.size())) {}

IntrusiveProfiles::~IntrusiveProfiles() {
  if (owning_) {
    set_.clear_and_dispose([](Entity* entity) { delete entity; });
  } else {
    set_.clear();
  }
}

void IntrusiveProfiles::insert(Entity& entity) {
  if (set_.size() >= buckets_.size()) {
    std::vector<Set::bucket_type> wider(2 * buckets_.size());
    set_.rehash(Set::bucket_traits(wider.data(), wider.size()));
    buckets_.swap(wider);
  }
  set_.insert(entity);
}

void IntrusiveProfiles::insertNew(const Key& key) {
  owning_ = true;
  insert(*new Entity(key));
}

void IntrusiveProfiles::erase(const Key& key) { set_.erase(key, Hash(), Equal()); }

const IntrusiveProfiles::Entity* IntrusiveProfiles::member(const Key& key) const {
  return find(key);
}

} // namespace Bench
