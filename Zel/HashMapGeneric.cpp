#include <Zel/HashMapGeneric>

#include <Zel/Exception>

#include <algorithm>
#include <new>

namespace Zel {

HashMapGeneric::~HashMapGeneric() {
  PtrInterface** const storage = buckets_;
  buckets_ = nullptr;
  ::operator delete(storage);
}

HashMapGeneric::Place HashMapGeneric::lowerBound(unsigned hash, const void* key) const noexcept {
  Place place{nullptr, chain(hash)};
  while (place.at != nullptr) {
    const unsigned other = vtable_->hash(place.at);
    if (other > hash || (other == hash && (vtable_->keyLessThan(key, place.at, nullptr) ||
                                           vtable_->keyEquals(key, place.at)))) {
      break;
    }
    place = {place.at, next(place.at)};
  }
  return place;
}

void HashMapGeneric::insert(unsigned hash, Place place, PtrInterface* entry) noexcept {
  vtable_->setNext(entry, place.at);
  if (place.before != nullptr) {
    vtable_->setNext(place.before, entry);
    return;
  }
  // The bucket's reference moves from the old first member, which the new one now holds.
  entry->referencesInc();
  buckets_[bucketIndex(hash)] = entry;
  if (place.at != nullptr) {
    place.at->referencesDec();
  }
}

void HashMapGeneric::newMemberG(const Ptr<PtrInterface>& entry, const void* key) {
  const unsigned hash = vtable_->hash(entry.ptr());
  Place place = lowerBound(hash, key);
  if (place.at != nullptr && vtable_->keyEquals(key, place.at)) {
    throw NameInUseException("key is in the collection already");
  }
  if (count_ >= buckets()) {
    grow();
    place = lowerBound(hash, key);
  }
  insert(hash, place, entry.ptr());
  ++count_;
  ++mapVersion_;
}

Ptr<PtrInterface> HashMapGeneric::unlink(unsigned bucket, Place place) noexcept {
  const Ptr<PtrInterface> behind(next(place.at));
  Ptr<PtrInterface> member;
  if (place.before != nullptr) {
    member = Ptr<PtrInterface>(place.at);
    vtable_->setNext(place.before, behind.ptr());
  } else {
    member = Ptr<PtrInterface>::adopt(place.at);
    buckets_[bucket] = behind.ptr();
    if (behind) {
      behind->referencesInc();
    }
  }
  vtable_->setNext(place.at, nullptr);
  --count_;
  ++mapVersion_;
  return member;
}

bool HashMapGeneric::isMember(const PtrInterface* entry) const noexcept {
  const PtrInterface* at = chain(vtable_->hash(entry));
  while (at != nullptr && at != entry) {
    at = next(at);
  }
  return at != nullptr;
}

void HashMapGeneric::deleteMember(const Ptr<PtrInterface>& entry) noexcept {
  const unsigned hash = vtable_->hash(entry.ptr());
  Place place{nullptr, chain(hash)};
  while (place.at != nullptr && place.at != entry.ptr()) {
    place = {place.at, next(place.at)};
  }
  if (place.at != nullptr) {
    const Ptr<PtrInterface> member = unlink(bucketIndex(hash), place);
  }
}

PtrInterface* HashMapGeneric::findNextG(const PtrInterface* entry, int* bucket) const noexcept {
  int at = -1;
  PtrInterface* member = nullptr;
  if (entry != nullptr && buckets_ != nullptr) {
    const unsigned hash = vtable_->hash(entry);
    at = static_cast<int>(bucketIndex(hash));
    for (member = buckets_[at]; member != nullptr; member = next(member)) {
      const unsigned other = vtable_->hash(member);
      if (other > hash || (other == hash && vtable_->keyLessThan(nullptr, member, entry))) {
        break;
      }
    }
  }
  if (member == nullptr) {
    member = findNextBucket(&at);
  }
  if (bucket != nullptr) {
    *bucket = at;
  }
  return member;
}

PtrInterface* HashMapGeneric::startAtHash(const void* key, unsigned hash,
                                          int* bucket) const noexcept {
  int at = buckets_ != nullptr ? static_cast<int>(bucketIndex(hash)) : -1;
  PtrInterface* member = lowerBound(hash, key).at;
  if (member == nullptr) {
    member = findNextBucket(&at);
  }
  if (bucket != nullptr) {
    *bucket = at;
  }
  return member;
}

void HashMapGeneric::emptyAllBuckets() noexcept {
  // A member's end may run code that changes the map, so each step starts from what is there.
  for (unsigned bucket = 0; bucket < buckets(); ++bucket) {
    while (buckets_[bucket] != nullptr) {
      const Ptr<PtrInterface> member = unlink(bucket, {nullptr, buckets_[bucket]});
    }
  }
}

void HashMapGeneric::grow() {
  if (buckets_ == nullptr) {
    const std::size_t size = std::size_t{1} << logBuckets_;
    buckets_ = static_cast<PtrInterface**>(::operator new(size * sizeof(PtrInterface*)));
    std::fill_n(buckets_, size, nullptr);
    return;
  }
  // Bucket numbers are signed 32-bit; chains get longer from here on.
  if (logBuckets_ >= 30) { // not reached: it takes 2^30 members
    return;
  }
  const std::size_t size = std::size_t{1} << logBuckets_;
  auto** const wider =
      static_cast<PtrInterface**>(::operator new(2 * size * sizeof(PtrInterface*)));
  // A sorted chain splits in one place: at the first member with the next bit of the hash set.
  const unsigned bit = 0x80000000U >> logBuckets_;
  for (std::size_t bucket = 0; bucket < size; ++bucket) {
    PtrInterface* before = nullptr;
    PtrInterface* at = buckets_[bucket];
    while (at != nullptr && (vtable_->hash(at) & bit) == 0) {
      before = at;
      at = next(at);
    }
    wider[2 * bucket] = before != nullptr ? buckets_[bucket] : nullptr;
    wider[2 * bucket + 1] = at;
    if (before != nullptr && at != nullptr) {
      at->referencesInc(); // the bucket's; the link's goes
      vtable_->setNext(before, nullptr);
    }
  }
  ::operator delete(buckets_);
  buckets_ = wider;
  ++logBuckets_;
}

} // namespace Zel
