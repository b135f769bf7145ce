#pragma once

/// What histories may count on. What sessions do not hold to as yet is false here; once they do,
/// it becomes true, and programs and links of histories make use of it.
namespace Histories::Promises {

/// A mirror that may not be written refuses before anything has changed. Without, what was refused
/// has been written by then, and is repaired; and a member that was not announced yet is not
/// refused.
inline constexpr bool refusesBefore = false;

/// What a mirror behind a middle writes never crosses what the middle hears anew. Without, it
/// writes nothing while the middle's link is cut, and that is made anew when what lies behind it
/// has come to rest.
inline constexpr bool handsOver = false;

/// A root may be offered again before the mirror has heard that it was withdrawn. Without, the
/// mirror's question may cross both: it is granted, and the one that follows the offer is refused.
inline constexpr bool offersAtOnce = false;

} // namespace Histories::Promises
