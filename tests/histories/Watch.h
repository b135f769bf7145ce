#pragma once

#include "Model.h"
#include "Sometimes.h"
#include "Wire.h"

#include <Zel/Session>

namespace Histories {

/// The link between a model and the next one, its mirror, as far as a watch looks at it.
struct Watched {
  Simulation::Link* link = nullptr;
  Zel::Connection::End exporter = Zel::Connection::End::first;
  const Model* original = nullptr;
  const Model* copy = nullptr;
  /// Null where there is no session.
  Zel::Ptr<Zel::Session> sessions[2];
  Zel::Ptr<Zel::Mounts> mounts;
};

/// Looks at a link, and what stands at its ends, for branches that a history comes to there. It
/// looks on and changes nothing: a history is the same without it.
class Watch final : public Simulation::Link::Watcher {
public:
  using End = Zel::Connection::End;

  Watch(Reached& reached, const Watched& of) : reached_(reached), of_(of) {}
  ~Watch() = default;
  Watch(const Watch&) = delete;
  Watch& operator=(const Watch&) = delete;

  void sent(End from, std::span<const std::uint8_t> bytes) override;
  void arrived(End to, std::span<const std::uint8_t> bytes) override;

  /// Some time has passed.
  void look();
  /// The connection is over, and another one is made next.
  void ended();
  /// All becomes well from now on.
  void healed();
  /// A program is going to change something of either model.
  void about(const Deed& deed, bool isOriginal);
  /// A write at the mirror was refused.
  void refused();
  /// A root is offered anew, is new, or is going to be withdrawn.
  void offeredAnew() { reached_.add(Branch::offeredAnew); }
  void newRoot();
  void withdrawing();
  void newerSession() { reached_.add(Branch::halfOpen); }

  /// Whether the exporter walks any root.
  bool isWalking() const;
  /// Records of the log that an end has sent over this connection, but those of walks.
  std::uint64_t changesSent(End from) const { return way(from).changesSent(); }

private:
  static End other(End end) { return end == End::first ? End::second : End::first; }
  End mirror() const { return other(of_.exporter); }
  const WireWay& way(End from) const { return ways_[from == End::second ? 1 : 0]; }
  WireWay& way(End from) { return ways_[from == End::second ? 1 : 0]; }
  const Zel::Connection& connection(End end) const { return *of_.link->connection(end); }
  bool owes(End end) const;
  bool isStalled() const;
  void flowsLook(End end, const Model& model);
  void cutLook();
  void membersLook();
  void memberDeleted(const Deed& deed, End end, bool isOriginal);

  Reached& reached_;
  const Watched& of_;
  WireWay ways_[2];
  unsigned connections_ = 0; ///< that have ended
  std::unordered_set<Path> deletedWhileDown_[2];
  std::size_t textBytes_ = 0; ///< of the text that is under way
  bool hasGrants_ = false;
  bool wasOwing_ = false;
};

} // namespace Histories
