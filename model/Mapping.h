#pragma once

// The types of namespace Maintenance itself that map members, groups and units, and those that
// select profiles.
#include <model/Mapping/GroupProfileSelKey.h>
#include <model/Mapping/GroupProfileSelectionIn.h>
#include <model/Mapping/GroupProfileSelectionOut.h>
#include <model/Mapping/GroupToUnit.h>
#include <model/Mapping/GroupToUnitDir.h>
#include <model/Mapping/MemberToGroup.h>
#include <model/Mapping/ProfileChangeCause.h>
#include <model/Mapping/ProfileKeySet.h>
#include <model/Mapping/ProfileSelection.h>
#include <model/Mapping/UnitProfileSelKey.h>
#include <model/Mapping/UnitProfileSelection.h>
