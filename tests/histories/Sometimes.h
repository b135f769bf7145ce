#pragma once

#include <array>
#include <bitset>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

namespace Histories {

/// What histories have to come to now and then. One that no history comes to any more looks at less
/// than it says: a check that cannot fail there.
enum class Branch : std::uint8_t {
  // How a connection ended.
  cutInWalk,
  cutInAnotherWalk,
  cutInCollection,
  cutInText,
  cutInRecord,
  cutBeforeHello,
  cutBeforeWalk,
  cutLost,
  cutWhileOwing,
  cutBoth,
  cutHeardByExporterFirst,
  cutHeardByMirrorFirst,
  writtenIntoCut,
  halfOpen,
  // What the next one finds.
  memberGone,
  memberOther,
  memberOtherBehind,
  newRootInWalk,
  withdrawnInWalk,
  withdrawnInFlight,
  offeredAnew,
  // What has to wait.
  walkSuspended,
  textSuspended,
  endDeferred,
  noRoom,
  coalesced,
  parked,
  twoWalks,
  bothHopsWalk,
  // What a program does in the midst of that.
  writtenInWalk,
  clearedInWalk,
  textGivenUp,
  remadeWhilePending,
  deletedUnannounced,
  deletedInWalk,
  deletedInText,
  // What crosses.
  collectionCrosses,
  membersCross,
  markersCross,
  goneAddressed,
  // What is refused.
  middleStale,
  middleDrops,
  refusedStale,
  refusedResyncing,
  refusedReadOnly,
  // What else there is.
  textAborted,
  longText,
  strangeEnum,
  // When all becomes well.
  healedInWalk,
  healedCut,
  healedStalled,
  healedOwing,
  // What there is not yet: handing over the right to write.
  formerEnded,
  freezeCrossesWrite,
  freezeInText,
  freezeTakenBack,
  dropInSweep,
  dropOfUnknownMember,
  cutWhileFreezing,
  cutAfterThaw,
  thawCounts,
  countFromBehind,
};
inline constexpr std::size_t branches = static_cast<std::size_t>(Branch::countFromBehind) + 1;

/// A branch, what it is called, and how many seeds are enough for some history to come to it; 0
/// where none does as yet.
struct BranchRow {
  Branch branch;
  std::string_view name;
  std::uint64_t enough;
};
std::span<const BranchRow> branchRows();

/// The branches that one history has come to.
class Reached {
public:
  void add(Branch branch) { is_.set(static_cast<std::size_t>(branch)); }
  void addIf(Branch branch, bool reached) {
    if (reached) {
      add(branch);
    }
  }
  bool has(Branch branch) const { return is_[static_cast<std::size_t>(branch)]; }

private:
  std::bitset<branches> is_;
};

/// How many histories have come to each.
class Sometimes {
public:
  void add(const Reached& reached);
  Sometimes& operator+=(const Sometimes& other);
  std::uint64_t times(Branch branch) const { return times_[static_cast<std::size_t>(branch)]; }

  /// The branches that none of `histories` has come to, although these are enough.
  std::vector<const BranchRow*> missed(std::uint64_t histories) const;

private:
  std::array<std::uint64_t, branches> times_{};
};

} // namespace Histories
