#include <Zel/ListRaw>

#include <cstdint>
#include <utility>

namespace Zel {

using Member = ListRawGeneric::Member;

namespace {

// A pointer to an absentee is marked by pointing one byte further, to where no member begins.
constexpr std::uintptr_t absenteeBit = 1;

} // namespace

Member* ListRawGeneric::firstAbsentee() const noexcept {
  if ((reinterpret_cast<std::uintptr_t>(tail_) & absenteeBit) == 0) {
    return nullptr;
  }
  return reinterpret_cast<Member*>(reinterpret_cast<char*>(tail_) - absenteeBit);
}

void ListRawGeneric::firstAbsenteeIs(Member* absentee) noexcept {
  tail_ = reinterpret_cast<Member*>(reinterpret_cast<char*>(absentee) + absenteeBit);
}

/// Where the pointer to the tail is kept.
Member*& ListRawGeneric::tailPlace() noexcept {
  Member* at = firstAbsentee();
  if (at == nullptr) [[likely]] {
    return tail_;
  }
  while (at->notifierLink_ != nullptr && at->notifierLink_->isAbsentee_) {
    at = at->notifierLink_;
  }
  return at->notifierLink_;
}

void ListRawGeneric::headIs(Member* member) noexcept {
  member->notifierLink_ = head_;
  head_ = member;
  if (count_ == 0) {
    tailPlace() = member;
  }
  ++version_;
  ++count_;
}

void ListRawGeneric::tailIs(Member* member) noexcept {
  member->notifierLink_ = nullptr;
  Member*& last = tailPlace();
  (count_ == 0 ? head_ : last->notifierLink_) = member;
  last = member;
  ++version_;
  ++count_;
}

void ListRawGeneric::memberDel(const Member* member) noexcept {
  Member* before = nullptr;
  for (Member* at = head_; at != nullptr; before = at, at = at->notifierLink_) {
    if (at != member) {
      continue;
    }
    (before == nullptr ? head_ : before->notifierLink_) = at->notifierLink_;
    if (at->notifierLink_ == nullptr) {
      tailPlace() = before;
    }
    ++version_;
    --count_;
    return;
  }
}

void ListRawGeneric::absenteeIs(Member* absentee) noexcept {
  Member* next = firstAbsentee();
  if (next == nullptr) {
    next = count_ != 0 ? tail_ : nullptr; // which is stale after a tear-down
  }
  absentee->notifierLink_ = next;
  absentee->isAbsentee_ = true;
  firstAbsenteeIs(absentee);
}

void ListRawGeneric::absenteeDel(Member* absentee) noexcept {
  Member* const next = absentee->notifierLink_;
  Member* at = firstAbsentee();
  if (at != absentee) {
    while (at->notifierLink_ != absentee) {
      at = at->notifierLink_;
    }
    at->notifierLink_ = next;
  } else if (next != nullptr && next->isAbsentee_) {
    firstAbsenteeIs(next);
  } else {
    tail_ = next;
  }
  absentee->notifierLink_ = nullptr;
  absentee->isAbsentee_ = false;
}

void ListRawGeneric::deleteAll() noexcept {
  if (head_ == nullptr && firstAbsentee() == nullptr) {
    return;
  }
  // One at a time, with the list in order meanwhile: whom one takes along finds its place.
  // Absentees first, since behind the last of them stands the tail.
  while (true) {
    const Ptr<Member> leaving(firstAbsentee() != nullptr ? firstAbsentee() : head_);
    if (!leaving) {
      break;
    }
    if (leaving->isAbsentee_) {
      absenteeDel(leaving.ptr());
    } else {
      head_ = std::exchange(leaving->notifierLink_, nullptr);
      --count_;
    }
    leaving->notifierGone();
  }
  ++version_;
}

} // namespace Zel
