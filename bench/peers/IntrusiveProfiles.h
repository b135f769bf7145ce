#pragma once

#include "peers/Peer.h"
#include "peers/ProfileEntity.h"

#include <boost/intrusive/unordered_set.hpp>

#include <vector>

namespace Bench {

/// `boost::intrusive::unordered_set` without stored hashes, in a table that doubles at a load of 1.
class BENCH_PEER IntrusiveProfiles {
  using Key = Maintenance::Profile::ProfileKey;
  using Hook = boost::intrusive::unordered_set_base_hook<
      boost::intrusive::link_mode<boost::intrusive::normal_link>,
      boost::intrusive::store_hash<false>>;

public:
  using Entity = ProfileEntity<Hook>;

  IntrusiveProfiles();
  /// Deletes the members if `insertNew` has made them, and lets go of them otherwise.
  ~IntrusiveProfiles();
  IntrusiveProfiles(const IntrusiveProfiles&) = delete;
  IntrusiveProfiles& operator=(const IntrusiveProfiles&) = delete;

  void insert(Entity& entity);
  void insertNew(const Key& key);
  void erase(const Key& key);
  std::size_t count() const { return set_.size(); }

  /// The same look-up, outside the library and in it.
  const Entity* find(const Key& key) const {
    const auto at = set_.find(key, Hash(), Equal());
    return at == set_.end() ? nullptr : &*at;
  }
  const Entity* member(const Key& key) const;

  auto begin() const { return set_.begin(); }
  auto end() const { return set_.end(); }

private:
  struct Hash {
    std::size_t operator()(const Key& key) const noexcept { return key.hash(); }
    std::size_t operator()(const Entity& entity) const noexcept { return entity.key().hash(); }
  };
  struct Equal {
    bool operator()(const Entity& a, const Entity& b) const noexcept { return a.key() == b.key(); }
    bool operator()(const Key& a, const Entity& b) const noexcept { return a == b.key(); }
    bool operator()(const Entity& a, const Key& b) const noexcept { return a.key() == b; }
  };
  using Set =
      boost::intrusive::unordered_set<Entity, boost::intrusive::base_hook<Hook>,
                                      boost::intrusive::hash<Hash>, boost::intrusive::equal<Equal>,
                                      boost::intrusive::power_2_buckets<true>>;

  std::vector<Set::bucket_type> buckets_;
  Set set_;
  bool owning_ = false;
};

} // namespace Bench
