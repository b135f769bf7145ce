#include "Sometimes.h"

namespace Histories {

namespace {

constexpr std::uint64_t few = 300;
constexpr std::uint64_t some = 3000;
constexpr std::uint64_t many = 30000;
constexpr std::uint64_t notYet = 0;

constexpr BranchRow rows[] = {
    {Branch::cutInWalk, "a cut between the first record of a walk and its end", few},
    {Branch::cutInAnotherWalk, "a cut in the walk that follows a cut", some},
    {Branch::cutInCollection, "a cut between the markers of a collection", few},
    {Branch::cutInText, "a cut in the midst of a text", some},
    {Branch::cutInRecord, "a cut in the midst of a record", few},
    {Branch::cutBeforeHello, "a cut before the hello", few},
    {Branch::cutBeforeWalk, "a cut between the grant and the walk", some},
    {Branch::cutLost, "a cut that loses what was on its way", few},
    {Branch::cutWhileOwing, "a cut while something is owed", few},
    {Branch::cutBoth, "both links of a chain are down", few},
    {Branch::cutHeardByExporterFirst, "a cut that the exporter hears of first", few},
    {Branch::cutHeardByMirrorFirst, "a cut that the mirror hears of first", few},
    {Branch::writtenIntoCut, "a write while a cut is not heard of", few},
    {Branch::halfOpen, "a newer session while the exporter has the former", few},
    {Branch::memberGone, "a member that went while the link was down", few},
    {Branch::memberOther, "a member deleted and made again while the link was down", few},
    {Branch::memberOtherBehind, "the same at the mirror, which had not heard", many},
    {Branch::newRootInWalk, "a new root while another is walked", some},
    {Branch::withdrawnInWalk, "a root withdrawn while it is walked", some},
    {Branch::withdrawnInFlight, "a root withdrawn while its mirror has written", some},
    {Branch::offeredAnew, "a root that is offered again", few},
    {Branch::walkSuspended, "a walk suspended for room", some},
    {Branch::textSuspended, "a text suspended for room", few},
    {Branch::endDeferred, "an end marker that waits", some},
    {Branch::noRoom, "a ring without room for a record", few},
    {Branch::coalesced, "a change of what is owed already", few},
    {Branch::parked, "an announcement that waits for an id", some},
    {Branch::twoWalks, "two walks under way at once", few},
    {Branch::bothHopsWalk, "both links of a chain walk", some},
    {Branch::writtenInWalk, "an entry written while its collection is walked", some},
    {Branch::clearedInWalk, "a collection cleared while it is walked", many},
    {Branch::textGivenUp, "a text given up for a newer one", few},
    {Branch::remadeWhilePending, "a member made again while its deletion is pending", few},
    {Branch::deletedUnannounced, "a member deleted before it is announced", few},
    {Branch::deletedInWalk, "a member deleted while its collection is walked", many},
    {Branch::deletedInText, "a member deleted in the midst of its text", some},
    {Branch::collectionCrosses, "both ends write into one collection", few},
    {Branch::membersCross, "both ends announce one member", many},
    {Branch::markersCross, "begin markers that cross", many},
    {Branch::goneAddressed, "a record for an entity that has gone", few},
    {Branch::middleStale, "a middle is stale while its mirror is live", few},
    {Branch::middleDrops, "a middle drops what its mirror has written", some},
    {Branch::refusedStale, "a refused write at a stale mirror", few},
    {Branch::refusedResyncing, "a refused write at a mirror that is walked", some},
    {Branch::refusedReadOnly, "a refused write at a live mirror that may only read", some},
    {Branch::textAborted, "an abort marker", few},
    {Branch::longText, "a text of more records than a ring has room for", few},
    {Branch::strangeEnum, "an enumerator that the reader does not know", few},
    {Branch::healedInWalk, "all becomes well in the midst of a walk", some},
    {Branch::healedCut, "all becomes well while a link is down", few},
    {Branch::healedStalled, "all becomes well while a link stalls", few},
    {Branch::healedOwing, "all becomes well while something is owed", few},
    {Branch::formerEnded, "a session ended by a newer one", notYet},
    {Branch::freezeCrossesWrite, "a freeze that crosses a write", notYet},
    {Branch::freezeInText, "a freeze in the midst of a text", notYet},
    {Branch::freezeTakenBack, "a freeze taken back before the thaw is said", notYet},
    {Branch::dropInSweep, "a drop in a sweep", notYet},
    {Branch::dropOfUnknownMember, "a drop of an announcement", notYet},
    {Branch::cutWhileFreezing, "a cut between freeze and answer", notYet},
    {Branch::cutAfterThaw, "a cut between thaw and the first write", notYet},
    {Branch::thawCounts, "a thaw that tells of drops", notYet},
    {Branch::countFromBehind, "a middle that passes such a thaw on", notYet},
};
static_assert(std::size(rows) == branches);

} // namespace

std::span<const BranchRow> branchRows() { return rows; }

void Sometimes::add(const Reached& reached) {
  for (const BranchRow& row : rows) {
    times_[static_cast<std::size_t>(row.branch)] += reached.has(row.branch) ? 1 : 0;
  }
}

std::vector<const BranchRow*> Sometimes::missed(std::uint64_t histories) const {
  std::vector<const BranchRow*> rowsMissed;
  for (const BranchRow& row : rows) {
    if (row.enough != notYet && histories >= row.enough && times(row.branch) == 0) {
      rowsMissed.push_back(&row);
    }
  }
  return rowsMissed;
}

Sometimes& Sometimes::operator+=(const Sometimes& other) {
  for (std::size_t i = 0; i < branches; ++i) {
    times_[i] += other.times_[i];
  }
  return *this;
}

} // namespace Histories
