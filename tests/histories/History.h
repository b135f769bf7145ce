#pragma once

#include "Model.h"

#include <Zel/Session>
#include <simulation/World.h>

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
  AllMutations mutations;        ///< what was changed in these

  Totals& operator+=(const Totals& other);
};

/// What a history did not hold.
struct Broken : std::runtime_error {
  using std::runtime_error::runtime_error;
};

/// One history: models in a chain, each but the first a mirror of the one before, that change at
/// random and are linked badly. It goes in epochs; at the end of each, everything comes to rest,
/// and is looked at. All of it follows from the seed.
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
                   std::function<void(const std::string&)> told = {});

  /// Throws `Broken`, and what the models throw.
  Totals run();

private:
  using End = Zel::Connection::End;

  /// The link between a model and the next one, its mirror.
  struct Hop {
    End exporter;
    Simulation::Link* link = nullptr;
    bool isReadOnly = false;
    bool hasRefused = false; ///< whether the mirror asked for anything to be sent anew

    /// Records that each end had sent at the start of the epoch or of the connection, and those
    /// that it was made to send since.
    std::uint64_t sentBefore[2] = {};
    std::uint64_t strangers[2] = {};
    /// What each end has to have counted of such records, since the connection was made.
    Zel::NboAttrLog::Demuxer::Counts expected[2];

    // Over sessions.
    Zel::Ptr<Zel::Exports> exports;
    Zel::Ptr<Zel::Mounts> mounts;
    Zel::Ptr<Zel::Session> sessions[2];
    /// Records that the mirror had said in the session at the start of the epoch.
    std::uint64_t saidBefore = 0;

    std::uint64_t said() const;
  };

  static unsigned place(End end) { return end == End::second ? 1 : 0; }
  static End mirror(const Hop& hop) {
    return hop.exporter == End::first ? End::second : End::first;
  }

  void linksIs();
  Simulation::Link::Peer peerIs(unsigned hop, End end);
  Zel::Ptr<Zel::Connection> connectionIs(unsigned hop, End end);
  Simulation::Link::Peer sessionIs(unsigned hop, End end);
  bool rootsExport(unsigned hop, Zel::Connection& connection);
  bool rootsExport();

  void epoch(bool isFirst);
  void changes();
  void event();
  void cutsNote();
  void announceAll();
  void reconnect(unsigned hop);
  void strangerSend(unsigned hop, End end);
  void refusedWrite();
  void settle();
  void baselineTake();
  void owedNote();

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

  const Over over_;
  const std::function<void(const std::string&)> told_;
  Simulation::World world_;
  Random& random_;
  std::vector<Model> models_;
  std::vector<Hop> hops_;
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

} // namespace Histories
