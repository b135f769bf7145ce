#pragma once

#include "Tree.h"

#include <simulation/World.h>

#include <vector>

/// Liveness: from the moment on at which nobody writes and links are healthy, everything comes to
/// rest within a number of steps that follows from what is there.
namespace Histories {

/// Bytes that a walk of all roots takes on the wire, at most.
std::uint64_t walkBytes(const Zel::Dir& roots);

/// Steps within which healthy links are at rest, if all models together hold `state` bytes, by
/// `walkBytes`, and `roots` roots are mirrored over each link.
///
/// A value is of some model: each link carries it in each direction at most once for each model
/// that has one of its own, since what has been applied is sent on by who applied it, never back;
/// once more in the walk that was under way, once in that of a reconnect, and once more for each
/// model in what is repaired. So a link of a chain of m models carries no more than 2 (2 + 2 m)
/// times all that the models hold, and in each step as many bytes as a piece and the pipe may have.
/// One link may have to wait for the one before it: the times of all add up. Beside that a session
/// says some things by turns, and each takes a step to be said, one to be sent and one to arrive.
Simulation::Time restBound(const std::vector<Simulation::Link*>& links, std::uint64_t state,
                           std::size_t roots);

} // namespace Histories
