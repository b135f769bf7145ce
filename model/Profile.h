#pragma once

// All of namespace Maintenance::Profile.
#include <model/Profile/Config.h>
#include <model/Profile/ConfigDir.h>
#include <model/Profile/DefaultProfile.h>
#include <model/Profile/ProfileKey.h>
#include <model/Profile/ProfileType.h>
