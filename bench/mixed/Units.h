#pragma once

#include <model/Unit.h>

#include <array>
#include <cstdint>
#include <vector>

/// Units that hold what a unit of a device in service does, and changes of all kinds of them.
namespace Bench::Mixed {

/// Which attribute a change is of: an enumerator, a value of three fields, an entry of an ordered
/// collection with a text, an entry of a hashed collection with a bool.
enum class Kind : std::uint8_t { state, traffic, history, group };
constexpr std::size_t kinds = 4;

/// What each unit holds of the collections.
constexpr std::size_t groups = 10;
constexpr std::size_t lines = 12;

/// A directory of so many units. Each has 10 groups with names of 20 bytes, 12 lines of history of
/// 40 bytes, and every single value set; its own name and the other strings have 20 bytes. No text
/// shares memory with another.
Zel::Ptr<Maintenance::Unit::StatusDir> made(std::size_t count);

/// The units of such a directory in a scattered order, and their changes. What a change needs of
/// keys and texts is made in advance.
class Units {
public:
  /// The units as `made` leaves them. Ends the process if one is missing.
  explicit Units(const Zel::Ptr<Maintenance::Unit::StatusDir>& dir);

  std::size_t count() const noexcept { return units_.size(); }

  /// Changes one attribute of a unit, or one entry of it; never to what is there already.
  void change(std::size_t place, Kind kind);

  /// One change of each unit, of all four kinds in turn; `then` is called after every one.
  template <class Then>
  void changeAll(std::size_t round, const Then& then) {
    for (std::size_t place = 0; place < units_.size(); ++place) {
      change(place, static_cast<Kind>((round + place) % kinds));
      then();
    }
  }

private:
  struct Changed {
    Zel::Ptr<Maintenance::Unit::Status> unit;
    std::size_t number;                    // in its name
    std::array<unsigned, kinds> changes{}; // so far
  };

  std::vector<Changed> units_;
  std::vector<Group::GroupKey> keys_;
  std::vector<Zel::String8> texts_;
};

} // namespace Bench::Mixed
