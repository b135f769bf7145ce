#pragma once

#include <model/Unit/StatusDir.h>

#include <random>

/// Changes of a directory that a seed gives. The same seeds give the same.
class Contents {
public:
  using Dir = Maintenance::Unit::StatusDir;

  explicit Contents(Zel::Ptr<Dir> dir) : dir_(std::move(dir)) {}

  /// Makes the directory hold `count` units of the seed, and none that it held before beside.
  void fill(std::uint64_t seed, unsigned count);
  /// `count` changes: of values mostly, of members and of their keys.
  void change(std::uint64_t seed, unsigned count);

private:
  void write(Maintenance::Unit::Status& unit);
  unsigned draw(unsigned below) { return static_cast<unsigned>(random_() % below); }

  const Zel::Ptr<Dir> dir_;
  std::mt19937_64 random_;
  unsigned units_ = 1;
};
