#pragma once

#include <Zel/Enumeration>

/// A warehouse: a model of its own, made outside the library with nothing but its public headers.
/// Between them, its types have every kind of attribute and every irregularity that a type can
/// have.
namespace Foreign {

/// Climate of a place. The numbers have a gap.
enum Zone : int {
  ambient = 0,
  chilled = 1,
  frozen = 2,
  hazardous = 9,
};

inline constexpr Zel::Enumerator zoneRows[] = {
    {ambient, "ambient"},
    {chilled, "chilled"},
    {frozen, "frozen"},
    {hazardous, "hazardous"},
};

constexpr Zel::EnumTable enumTable(Zone) { return {"Foreign::Zone", "Zone", zoneRows}; }

/// How soon something is wanted.
enum Urgency : int {
  urgencyUnknown = 0,
  routine = 1,
  express = 2,
};

inline constexpr Zel::Enumerator urgencyRows[] = {
    {urgencyUnknown, "urgencyUnknown"},
    {routine, "routine"},
    {express, "express"},
};

constexpr Zel::EnumTable enumTable(Urgency) { return {"Foreign::Urgency", "Urgency", urgencyRows}; }

} // namespace Foreign
