#pragma once

#include <simulation/Pipe.h>

#include <Zel/Demuxer>

#include <array>
#include <functional>
#include <optional>
#include <span>

namespace Simulation {

/// Virtual time, in steps of a `World`. It means nothing but order and duration.
using Time = std::uint64_t;

/// A link between two ends of a connection, with the troubles that links have: it moves bytes in
/// pieces of any size, stalls, loses bytes in flight when it is cut, and can be made anew.
///
///     Simulation::World world(seed);
///     Simulation::Link& link = world.linkIs({}, [&](Zel::Connection::End end) {
///       auto made = Zel::makeObject<Zel::Connection>(end, "peer", limits, policyOf(end));
///       if (end == Zel::Connection::End::first) {
///         made->demuxer()->exportIs(root);
///       }
///       return made;
///     });
///     root->stateIs(active);
///     world.run(10);                                 // some of the bytes may have arrived
///     link.stall(Zel::Connection::End::second, 500); // what it is sent waits
///     link.cut();
///     ASSERT_TRUE(world.settle());                   // now both ends know
///     link.reconnect();                              // anew, by the same function
///     ASSERT_TRUE(world.settle());
///
/// Belongs to the thread of its connections, as they do to the thread that made them.
class Link {
public:
  using End = Zel::Connection::End;

  /// What stands at an end: a connection, and what is called in the place of its `service`, with
  /// the same meaning, if there is something around it. That is called once more when the
  /// connection has gone down. A session is driven so:
  ///
  ///     const auto session = Zel::makeObject<Zel::Session>(end, options, exports, mounts);
  ///     return Simulation::Link::Peer(session->connection(), [=, &world](std::size_t budget) {
  ///       return session->service(static_cast<double>(world.now()), budget);
  ///     });
  struct Peer {
    using Serve = std::function<bool(std::size_t budget)>;

    // Whoever has a connection alone may say just that. NOLINTNEXTLINE(google-explicit-constructor)
    Peer(Zel::Ptr<Zel::Connection> itself, Serve with = {})
        : connection(std::move(itself)), serve(std::move(with)) {}

    Zel::Ptr<Zel::Connection> connection;
    Serve serve;
  };
  /// Makes a new connection for an end, with its exports.
  using MakeEnd = std::function<Peer(End)>;

  /// What the link is like.
  struct Traits {
    /// Most bytes that one read or write moves, and that one call of `service` is given. Each moves
    /// between one and this, in any order of size.
    std::size_t pieces = 1 << 16;
    /// Bytes in flight in one direction, at most.
    std::size_t inFlight = 1 << 16;
    /// How many steps out of 8 each of the six things that can happen in a step is tried: a write,
    /// a read and a service at either end.
    unsigned haste = 6;
  };

  /// Sees the bytes that a link carries.
  class Watcher {
  public:
    /// They are on their way: nothing that is lost at once is told of.
    virtual void sent(End from, std::span<const std::uint8_t> bytes) = 0;
    /// They have arrived, and are to be looked at by the end.
    virtual void arrived(End to, std::span<const std::uint8_t> bytes) = 0;

  protected:
    ~Watcher() = default;
  };

  Link(Traits traits, MakeEnd make);
  Link(const Link&) = delete;
  Link& operator=(const Link&) = delete;
  ~Link();

  const Traits& traits() const noexcept { return traits_; }
  /// The connection of an end: up, or down since the link was cut and until it is made anew.
  const Zel::Ptr<Zel::Connection>& connection(End end) const { return side(end).connection; }
  /// Whether the link carries bytes.
  bool isUp() const noexcept { return isUp_; }
  /// Whether both ends have heard that it does not.
  bool isDown() const;
  /// Why an end took its connection down by itself; empty if none did since the link was made.
  const Zel::String8& failure() const noexcept { return failure_; }

  /// Has an end served although nothing has come, since its program has asked something of it.
  void wake(End end) { side(end).mayDoMore = true; }

  /// What is on its way to `to` waits for a duration, and so does what is sent to it then.
  void stall(End to, Time duration);
  /// Whether what is on its way to `to` waits for a stall to be over.
  bool isStalled(End to) const noexcept { return now_ < side(to).stalledUntil; }
  /// Cuts the link in the next step: of the bytes in flight, some first ones may still arrive, the
  /// rest is lost. Each end hears of it within `hears` steps, and what it sends until then is lost.
  void cut(Time hears = 0);
  /// Cuts the link right behind the next `bytes` bytes that arrive at `to`.
  void cutAfter(End to, std::uint64_t bytes, Time hears = 0);
  /// Makes both ends anew and connects them. Both have to be down.
  void reconnect();

  /// From here on all is well with the link: stalls are over, a cut that was to come does not, an
  /// end that is still to hear of one hears it, and each step tries everything and moves as much as
  /// a piece may have. With false, what happens is up to chance again.
  void healthyIs(bool healthy);

  /// Tells who is to see what goes over the link; null: nobody. It has to outlive that.
  void watcherIs(Watcher* watcher) noexcept { watcher_ = watcher; }

  /// Bytes that have arrived, and how often the link was cut.
  std::uint64_t bytesCarried() const noexcept { return bytesCarried_; }
  std::uint64_t cuts() const noexcept { return cuts_; }

private:
  friend class Hand;
  friend class World;

  /// One end, and what is on its way to it.
  struct Side {
    explicit Side(std::size_t capacity) : incoming(capacity) {}

    Zel::Ptr<Zel::Connection> connection;
    Peer::Serve serve;
    Pipe incoming;
    bool mayDoMore = true; ///< whether a service might find something to do
    Time stalledUntil = 0;
    Time hearsAt = 0;
    std::optional<std::uint64_t> cutAfter; ///< bytes that are still to arrive here first
  };

  static constexpr End ends[] = {End::first, End::second};
  static End other(End end) { return end == End::first ? End::second : End::first; }
  Side& side(End end) { return sides_[end == End::second ? 1 : 0]; }
  const Side& side(End end) const { return sides_[end == End::second ? 1 : 0]; }

  // What a `World` drives, at its time and with its random numbers.
  /// Whether anything happened.
  bool step(Random& random, Time now);
  /// Whether nothing is on its way and nobody has anything to do.
  bool isQuiet() const;
  /// The next time at which a stall or a wait is over; none if there is none.
  std::optional<Time> wakes() const;

  bool tries(Random& random) const;
  std::size_t piece(Random& random) const;
  void put(End from, std::span<const std::uint8_t> bytes);
  bool serve(End end, std::size_t budget);
  std::size_t arrive(End to, std::size_t most);
  bool failureNote(End end);
  void send(Random& random, End from);
  void receive(Random& random, End to);
  void service(Random& random, End end);
  void cutNow(Random& random, Time hears);
  void close(End end, const Zel::String8& why);
  void madeIs();

  const Traits traits_;
  const MakeEnd make_;
  std::array<Side, 2> sides_;
  Watcher* watcher_ = nullptr;
  bool isHealthy_ = false;
  bool isUp_ = true;
  bool acted_ = false;
  Time now_ = 0;
  std::optional<Time> cutHears_; // a cut that has been asked for
  Time armedHears_ = 0;
  Zel::String8 failure_;
  std::uint64_t bytesCarried_ = 0;
  std::uint64_t cuts_ = 0;
};

} // namespace Simulation
