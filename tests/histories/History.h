#pragma once

#include "Watch.h"

#include <simulation/World.h>

#include <memory>
#include <set>
#include <stdexcept>

namespace Histories {

/// What went through histories.
struct Totals {
  std::uint64_t histories = 0;
  std::uint64_t changes = 0;
  std::uint64_t cuts = 0;
  std::uint64_t bytes = 0;
  std::uint64_t strangers = 0;   ///< records that nobody had a use for
  std::uint64_t refusals = 0;    ///< local writes that a read-only mirror refused
  std::uint64_t rounds = 0;      ///< of changes
  std::uint64_t roundsOwing = 0; ///< of these, those in which changes had to wait for room
  std::uint64_t wholeTrees = 0;  ///< histories with all roots, from the start
  std::uint64_t healed = 0;      ///< how often all became well, see `Rest.h`
  double restUsed = 0;           ///< of the steps allowed for rest then, the most that was needed
  AllMutations mutations;        ///< what was changed in whole trees
  Sometimes sometimes;

  Totals& operator+=(const Totals& other);
};

/// What a history did not hold.
struct Broken : std::runtime_error {
  using std::runtime_error::runtime_error;
};

/// One history: models in a chain, each but the first a mirror of the one before, that change at
/// random and are linked badly. It goes in epochs; at the end of each, everything comes to rest,
/// and is looked at. What may happen in it, and all that does, follows from the seed.
class History {
public:
  /// What the models are linked by.
  enum class Over : std::uint8_t { connections, sessions };

  /// What a seed's history is run over unless told otherwise: every second over sessions.
  static Over overOf(std::uint64_t seed) noexcept {
    return seed % 2 == 0 ? Over::sessions : Over::connections;
  }

  /// `told` hears of each step.
  explicit History(std::uint64_t seed, Over over = Over::connections,
                   std::function<void(const std::string&)> told = {})
      : History(Random(seed), over, std::move(told)) {}
  /// Where bytes decide, it comes to rest when these are spent.
  explicit History(Random random, Over over, std::function<void(const std::string&)> told = {});

  /// Throws `Broken`, and what the models throw.
  Totals run();

  /// What it has come to so far.
  const Reached& reached() const noexcept { return reached_; }
  const Zel::Ptr<Zel::Dir>& roots(unsigned model) const { return models_.at(model).roots(); }

private:
  using End = Zel::Connection::End;
  using Link = Simulation::Link;

  /// The link between a model and the next one, its mirror.
  struct Hop : Watched {
    bool isReadOnly = false;
    bool hasRefused = false; ///< whether the mirror asked for anything to be sent anew
    Link::Traits traits;

    /// Records that each end had sent at the start of the epoch or of the connection, and those
    /// that it was made to send since.
    std::uint64_t sentBefore[2] = {};
    std::uint64_t strangers[2] = {};
    /// What each end has to have counted of such records, since the connection was made.
    Zel::NboAttrLog::Demuxer::Counts expected[2];

    // Over sessions.
    Zel::Ptr<Zel::Exports> exports;
    std::set<Zel::Name> withdrawn; ///< to be offered again
    bool hasWithdrawn = false;     ///< anything over this connection

    std::unique_ptr<Watch> watch;
  };

  static unsigned place(End end) { return end == End::second ? 1 : 0; }
  static End mirror(const Hop& hop) {
    return hop.exporter == End::first ? End::second : End::first;
  }

  void linksIs();
  void linkIs(unsigned hop);
  Link::Peer peerIs(unsigned hop, End end);
  Zel::Ptr<Zel::Connection> connectionIs(unsigned hop, End end);
  Link::Peer sessionIs(unsigned hop, End end);
  bool rootsExport(unsigned hop, Zel::Connection& connection);
  bool rootsExport();

  void epoch(bool isFirst);
  void pass(Simulation::Time duration);
  void chainLook();
  void changes();
  void closedIs(Ownership& ownership, unsigned model, bool isWritable) const;
  void cutsNote();
  void baselineTake();
  void owedNote();

  // In Events.cpp.
  void event();
  void newerSession(unsigned hop);
  void newRoot();
  void withdraw(unsigned hop);
  bool offerAgain(unsigned hop);
  void strangerSend(unsigned hop, End end);
  void frozenWrite();
  std::vector<Doing> eventsIn() const;

  // In Settle.cpp.
  void settle();
  void heal();
  void rest(Link* link = nullptr);
  void announceAll();
  void reconnect(unsigned hop);
  void settleBehind(unsigned hop);

  // In Checks.cpp.
  void check();
  void checkLinks();
  void checkMounts();
  void checkDigest(unsigned hop);
  void checkModels();
  void checkIdentity();
  void checkAdapters(unsigned hop, End end);
  void checkCounts(unsigned hop, End end);
  void checkEchoes();
  [[noreturn]] void broken(const std::string& why) const;

  void tell(const std::string& what) const {
    if (told_) {
      told_(what);
    }
  }

  bool isOverSessions() const noexcept { return over_ == Over::sessions; }
  /// Whether links are made anew without a thought of what lies behind them.
  bool mayBeRash() const noexcept { return isOverSessions() && swarm_.may(Doing::rash); }

  std::string where(unsigned hop, End end) const {
    return "link " + std::to_string(hop) + ", end " + std::to_string(place(end)) + ": ";
  }

  const Over over_;
  const std::function<void(const std::string&)> told_;
  Random random_;
  const Swarm swarm_;
  Reached reached_;
  Simulation::World world_;
  std::optional<Simulation::Time> restUntil_; ///< where links are healthy
  std::vector<Model> models_;
  std::vector<Hop> hops_;
  std::vector<Link*> links_; ///< former ones too
  std::vector<Zel::Ptr<Zel::Entity>> rootsToCome_;
  bool hasAllRoots_ = false;
  Zel::ConnectionLimits limits_;
  TextSizes sizes_;
  unsigned trouble_ = 0; ///< how likely events are, of 100
  Ownership ownership_;
  std::optional<unsigned> onlyWriter_;
  std::unordered_set<Path> deleted_; ///< in this epoch, by anybody
  Totals totals_;
  unsigned epochs_ = 0;
};

/// The history that bytes decide: the first of them, what it is over. They have to outlive it.
History historyOf(std::span<const std::uint8_t> bytes,
                  std::function<void(const std::string&)> told = {});

} // namespace Histories
