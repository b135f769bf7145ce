#pragma once

#include <map>
#include <utility>

namespace KernelRandom {

/// The 32 bits of a word in reverse order, one by one.
constexpr unsigned reversed(unsigned word) {
  unsigned result = 0;
  for (int bit = 0; bit < 32; ++bit) {
    result = result << 1 | (word >> bit & 1);
  }
  return result;
}

/// A hash map as a sorted map: what its order, its table, its version and the links of its chains
/// must be after any history.
template <class Key>
class HashModel {
public:
  using Place = std::pair<unsigned, Key>; ///< reversed hash, key
  /// How often the chain link of each member has been set.
  using Members = std::map<Place, unsigned>;

  static Place place(const Key& key) { return {reversed(key.hash()), key}; }

  const Members& members() const { return members_; }
  unsigned count() const { return static_cast<unsigned>(members_.size()); }
  unsigned version() const { return version_; }
  unsigned buckets() const { return made_ ? 1U << logBuckets_ : 0; }
  bool has(const Key& key) const { return members_.contains(place(key)); }
  unsigned linksSet(const Key& key) const { return members_.at(place(key)); }
  unsigned bucket(unsigned hash) const { return hash >> (32 - logBuckets_); }

  /// The first member behind a place, and at or behind it.
  auto after(const Place& from) const { return members_.upper_bound(from); }
  auto from(const Key& key) const { return members_.lower_bound(place(key)); }

  /// Yields false, with nothing changed, if the key is there.
  bool insert(const Key& key) {
    if (has(key)) {
      return false;
    }
    if (count() >= buckets()) {
      grow();
    }
    const auto at = members_.emplace(place(key), 1).first;
    linkBefore(at);
    ++version_;
    return true;
  }

  /// Yields the number of times that the link of the leaving member was set, its clearing included;
  /// 0 if the key is not there.
  unsigned erase(const Key& key) {
    const auto at = members_.find(place(key));
    if (at == members_.end()) {
      return 0;
    }
    linkBefore(at);
    const unsigned links = at->second + 1;
    members_.erase(at);
    ++version_;
    return links;
  }

private:
  /// The link of the predecessor in the chain, if there is one, is set.
  void linkBefore(typename Members::iterator at) {
    if (at == members_.begin()) {
      return;
    }
    const auto before = std::prev(at);
    if (bucket(before->first.first) == bucket(at->first.first)) {
      ++before->second;
    }
  }

  void grow() {
    if (!made_) {
      made_ = true;
      return;
    }
    // Where two neighbours shared a chain and do no more, the first one's link is cut.
    for (auto at = members_.begin(); at != members_.end() && std::next(at) != members_.end();
         ++at) {
      const unsigned one = at->first.first;
      const unsigned next = std::next(at)->first.first;
      const unsigned wider = 32 - logBuckets_ - 1;
      if (bucket(one) == bucket(next) && one >> wider != next >> wider) {
        ++at->second;
      }
    }
    ++logBuckets_;
  }

  Members members_;
  unsigned version_ = 0;
  unsigned logBuckets_ = 4;
  bool made_ = false;
};

} // namespace KernelRandom
