#pragma once

#include "Others.h"

/// A device's tree: a directory of units, and the rest. Its changes follow from seeds: the same
/// seeds give the same.
class Contents {
public:
  using Dir = Maintenance::Unit::StatusDir;

  explicit Contents(Zel::Ptr<Dir> dir) : dir_(std::move(dir)) {}

  const Others& others() const { return others_; }

  /// Makes the directory hold `count` units of the seed, and none that it held before beside; the
  /// rest is changed.
  void fill(std::uint64_t seed, unsigned count);
  /// `count` changes: of values mostly, of members and of their keys.
  void change(std::uint64_t seed, unsigned count);

private:
  void write(Maintenance::Unit::Status& unit);
  unsigned draw(unsigned below) { return static_cast<unsigned>(random_() % below); }

  const Zel::Ptr<Dir> dir_;
  Others others_;
  std::mt19937_64 random_;
  unsigned units_ = 1;
};
