#pragma once

#include "peers/Peer.h"

#include <Zel/String>

#include <boost/intrusive/set.hpp>

#include <array>

namespace Bench {

/// `boost::intrusive::set` by a number, with the colour in the parent pointer.
class BENCH_PEER IntrusiveTimes {
  using Hook =
      boost::intrusive::set_base_hook<boost::intrusive::link_mode<boost::intrusive::normal_link>,
                                      boost::intrusive::optimize_size<true>>;

public:
  /// As large as an entry of the history of a unit.
  class Entity : public Hook {
  public:
    Entity(double time, Zel::String8 text) : time_(time), text_(std::move(text)) {}
    virtual ~Entity() = default;
    double time() const noexcept { return time_; }
    const Zel::String8& text() const noexcept { return text_; }

  private:
    const double time_;
    Zel::String8 text_;
    [[maybe_unused]] std::array<std::byte, 16> rest_{};
  };

  IntrusiveTimes();
  /// Deletes the members if `insertNew` has made them, and lets go of them otherwise.
  ~IntrusiveTimes();
  IntrusiveTimes(const IntrusiveTimes&) = delete;
  IntrusiveTimes& operator=(const IntrusiveTimes&) = delete;

  void insert(Entity& entity);
  void insertNew(double time, const Zel::String8& text);
  void erase(double time);
  std::size_t count() const { return set_.size(); }

  const Entity* find(double time) const {
    const auto at = set_.find(time, Less());
    return at == set_.end() ? nullptr : &*at;
  }
  Zel::String8 text(double time) const;

  auto begin() const { return set_.begin(); }
  auto end() const { return set_.end(); }

private:
  struct Less {
    bool operator()(const Entity& a, const Entity& b) const noexcept { return a.time() < b.time(); }
    bool operator()(double a, const Entity& b) const noexcept { return a < b.time(); }
    bool operator()(const Entity& a, double b) const noexcept { return a.time() < b; }
  };
  boost::intrusive::set<Entity, boost::intrusive::base_hook<Hook>, boost::intrusive::compare<Less>>
      set_;
  bool owning_ = false;
};

} // namespace Bench
