#pragma once

// The types of namespace Maintenance itself that map members, groups and units.
#include <model/Mapping/GroupToUnit.h>
#include <model/Mapping/GroupToUnitDir.h>
#include <model/Mapping/MemberToGroup.h>
#include <model/Mapping/ProfileChangeCause.h>
