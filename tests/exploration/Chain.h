#pragma once

#include "Step.h"

#include <Zel/Session>
#include <simulation/Hand.h>

#include <functional>
#include <memory>
#include <optional>
#include <stdexcept>
#include <unordered_map>
#include <unordered_set>

namespace Exploration {

/// What a history did not hold.
struct Broken : std::runtime_error {
  using std::runtime_error::runtime_error;
};

/// Models in a chain, each but the first a mirror of the one before, in which one step happens
/// after the other, and nothing besides. The same steps lead to the same state, always.
///
/// A program gives its sessions time after each step that it has a part in: what they have to say
/// to each other is on its way at once. What is owed of the log waits for a step of its own.
class Chain {
public:
  /// Throws `Broken` if the mirrors do not become live where they are to be.
  explicit Chain(const Plot& plot);
  Chain(const Chain&) = delete;
  Chain& operator=(const Chain&) = delete;
  ~Chain();

  /// The steps that may happen now.
  Steps enabled() const;
  /// Whether what happens at the other end of a link may yet make a step possible at this one.
  bool awaits(unsigned model, unsigned link) const;
  std::size_t models() const noexcept { return models_.size(); }
  /// One of them. Throws `Broken` if an end gives up by itself, or anything else but a refusal is
  /// thrown.
  void take(const Step& step);
  /// Takes steps until everything is at rest, one of the ways to get there.
  void finish();
  /// Whether nothing happens any more unless a program writes or a link is cut.
  bool isAtRest() const;
  /// What has to hold then. Throws `Broken`.
  void check() const;
  /// The same, with each mirror's digest by its session's own word, of which some more is said.
  void checkAtEnd();

  /// Everything that the first model holds, as text.
  std::string dump() const;
  /// Writes that were refused.
  unsigned refused() const noexcept { return refused_; }

private:
  using End = Simulation::Link::End;

  struct Model {
    Zel::Ptr<Zel::Dir> roots = Zel::makeObject<Zel::Dir>();
    std::size_t written = 0; ///< how far its program has come
    std::unordered_map<std::uint64_t, Zel::Ptr<Zel::Entity>> known; ///< at the start
  };
  /// A link, and what is mounted over it.
  struct Hop {
    Zel::Ptr<Zel::Exports> exports;
    Zel::Ptr<Zel::Mounts> mounts;
    Zel::Ptr<Zel::Session> exportersSession;
    Zel::Ptr<Zel::Session> mirrorsSession;
    unsigned cutsLeft = 0;
    std::unique_ptr<Simulation::Link> link;
  };

  static End endOf(unsigned model, unsigned link) {
    return model == link ? End::first : End::second;
  }

  Simulation::Link::Peer peerIs(unsigned link, End end);
  Simulation::Link::Peer sessionIs(unsigned link, End end);
  Simulation::Link::Peer connectionIs(unsigned link, End end);
  bool rootsExport(unsigned model);
  void programRuns(unsigned model);
  void write(const Step& step);
  bool mayNotWrite(unsigned model) const;
  void forAdapters(unsigned model, const Zel::Name& name,
                   const std::function<void(Zel::Entity::ZelNboAttrLogSa&)>& visit) const;
  void reconnect(unsigned link);
  void settle();
  void checkIdentity() const;
  void stepsOfEnd(unsigned model, unsigned link, Steps& to) const;

  const Plot plot_;
  std::vector<Model> models_;
  std::vector<Hop> hops_;
  std::unordered_set<std::string> deleted_; ///< names of members, by any program
  unsigned refused_ = 0;
  bool isFinishing_ = false;
  bool isSilent_ = false; ///< something was written of which nobody has heard, nor has a walk told
  int muted_ = 0;         ///< adapters of which nothing flows
};

} // namespace Exploration
