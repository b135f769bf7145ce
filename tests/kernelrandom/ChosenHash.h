#pragma once

#include <Zel/HashMap>

namespace KernelRandom {

/// A key whose hash its maker chooses.
struct ChosenKey {
  unsigned number = 0;
  unsigned hashValue = 0;

  unsigned hash() const noexcept { return hashValue; }
  friend bool operator==(const ChosenKey& a, const ChosenKey& b) noexcept {
    return a.number == b.number;
  }
  friend bool operator<(const ChosenKey& a, const ChosenKey& b) noexcept {
    return a.number < b.number;
  }
};

/// How keys are hashed.
enum class Hashing {
  scattered, ///< all bits of the number matter everywhere
  sequence,  ///< the number itself
  few,       ///< four different hashes
  sparse,    ///< only the top bits differ, so small tables have one chain
  equal      ///< one hash for all
};

constexpr ChosenKey chosenKey(Hashing hashing, unsigned number) {
  switch (hashing) {
  case Hashing::scattered:
    return {number, (number + 1) * 0x9e3779b1U ^ number * 0x85ebca6bU >> 7};
  case Hashing::sequence:
    return {number, number};
  case Hashing::few:
    return {number, number % 4 * 0x10000001U};
  case Hashing::sparse:
    return {number, number << 24};
  case Hashing::equal:
    break;
  }
  return {number, 0x5eed5eed};
}

/// What a test knows of a member.
struct MemberBook {
  unsigned held = 0;        ///< handles of the test
  unsigned under = 0;       ///< iterators that stand on it
  unsigned formerLinks = 0; ///< how often its link was set until it left its last map
};

/// A member that is an entity, so its version counter tells how often its link was set.
class EntityMember : public Zel::Entity {
public:
  inline static int living = 0;
  explicit EntityMember(const ChosenKey& key) : Entity(Zel::Name()), key_(key) { ++living; }
  const ChosenKey& zelKey() const noexcept { return key_; }
  static constexpr Zel::Ptr<EntityMember> EntityMember::*zelMemberNext() noexcept {
    return &EntityMember::memberNext_;
  }
  bool isLinkSetTimes(unsigned times) const { return versionCounter() == times; }

  MemberBook book;

protected:
  ~EntityMember() override { --living; }

private:
  const ChosenKey key_;
  Zel::Ptr<EntityMember> memberNext_;
};

/// A member that has no counters.
class PlainMember : public Zel::MapEntry<PlainMember, ChosenKey, bool> {
public:
  inline static int living = 0;
  explicit PlainMember(const ChosenKey& key) : MapEntry(key, true) { ++living; }
  bool isLinkSetTimes(unsigned) const { return true; }

  MemberBook book;

protected:
  ~PlainMember() override { --living; }
};

template <class Member>
using ChosenMap = Zel::HashMap<Member, ChosenKey, Member>;

} // namespace KernelRandom
