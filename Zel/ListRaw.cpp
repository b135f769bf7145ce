#include <Zel/ListRaw>

namespace Zel {

void ListRawGeneric::headIs(Member* member) noexcept {
  member->notifierLink_ = head_;
  head_ = member;
  if (count_ == 0) {
    tail_ = member;
  }
  ++version_;
  ++count_;
}

void ListRawGeneric::tailIs(Member* member) noexcept {
  member->notifierLink_ = nullptr;
  (count_ == 0 ? head_ : tail_->notifierLink_) = member;
  tail_ = member;
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
    if (tail_ == at) {
      tail_ = before;
    }
    ++version_;
    --count_;
    return;
  }
}

void ListRawGeneric::deleteAll() noexcept {
  if (head_ == nullptr) {
    return;
  }
  Ptr<Member> at(head_);
  while (at) {
    Ptr<Member> next(at->notifierLink_);
    at->notifierLink_ = nullptr;
    at->notifierGone();
    at = std::move(next);
  }
  head_ = nullptr;
  count_ = 0;
  ++version_;
}

} // namespace Zel
