#pragma once

#include <Zel/Layers>

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

const Zel::ZelType* _fwkType_Zone();
constexpr Zel::EnumTable enumTable(Zone) {
  return {"Foreign::Zone", "Zone", zoneRows, _fwkType_Zone};
}
using Zone__Type = Zel::TypeOf<Zone>;
using Zone_GenericIf_ = Zel::ValueGenericIf<Zone>;
Zel::Ptr<Zone_GenericIf_> Zone_GenericIf_Is(Zone value, bool isConst);

Zone ZoneInstance(unsigned number);
Zone ZoneInstance(Zel::String8 name);
Zel::String8 stringValue(Zone value);
Zel::String8 valueToStrep(const Zone& value);
Zone sequenceToValue(Zel::String8::IteratorConst& first, const Zel::String8::IteratorConst& last,
                     Zone* selector);
std::ostream& operator<<(std::ostream& out, const Zone& value);

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

const Zel::ZelType* _fwkType_Urgency();
constexpr Zel::EnumTable enumTable(Urgency) {
  return {"Foreign::Urgency", "Urgency", urgencyRows, _fwkType_Urgency};
}
using Urgency__Type = Zel::TypeOf<Urgency>;
using Urgency_GenericIf_ = Zel::ValueGenericIf<Urgency>;
Zel::Ptr<Urgency_GenericIf_> Urgency_GenericIf_Is(Urgency value, bool isConst);

Urgency UrgencyInstance(unsigned number);
Urgency UrgencyInstance(Zel::String8 name);
Zel::String8 stringValue(Urgency value);
Zel::String8 valueToStrep(const Urgency& value);
Urgency sequenceToValue(Zel::String8::IteratorConst& first, const Zel::String8::IteratorConst& last,
                        Urgency* selector);
std::ostream& operator<<(std::ostream& out, const Urgency& value);

} // namespace Foreign
