#include "Others.h"

#include <string>

using namespace Maintenance;

const std::vector<Zel::Name>& Others::names() {
  static const std::vector<Zel::Name> all = {"agent",       "configured",  "default", "groups",
                                             "groupToUnit", "input",       "member",  "merged",
                                             "profiles",    "unitProfiles"};
  return all;
}

std::vector<Zel::Ptr<Zel::Entity>> Others::roots() const {
  return {agent_, configured_, default_, groups_,   groupToUnit_,
          input_, member_,     merged_,  profiles_, unitProfiles_};
}

void Others::change(std::mt19937_64& random) {
  const auto draw = [&](unsigned below) { return static_cast<unsigned>(random() % below); };
  const std::string number = std::to_string(draw(20));
  const bool truth = draw(2) == 0;
  const bool goes = draw(3) == 0;
  const Zel::Name unit(("unit" + number).c_str());
  const Zel::String8 text(("text " + number).c_str());
  const Group::GroupKey group(Group::groupTypeBgp, Zel::Name(("group" + number).c_str()));
  const Profile::ProfileKey profile(Profile::profileTypeBgp, text);
  const auto source = static_cast<Unit::InputSrc>(draw(4));
  switch (draw(24)) {
  case 0:
    agent_->agentPidIs(draw(1000));
    break;
  case 1:
    agent_->restartCountIs(draw(1000));
    break;
  case 2:
    agent_->onBootIs(truth);
    break;
  case 3:
    agent_->readyIs(truth);
    break;
  case 4:
    if (goes) {
      agent_->onBootMaintEnterDel(text);
    } else {
      agent_->onBootMaintEnterIs(OnBootUnitAndReason(text, source));
    }
    break;
  case 5:
    configured_->configIs(unit)->unitTypeIs(static_cast<Unit::UnitType>(draw(3)));
    break;
  case 6:
    configured_->configIs(unit)->profileNameIs(text);
    break;
  case 7:
    configured_->configIs(unit)->groupIs(group, truth);
    break;
  case 8:
    configured_->configDel(unit);
    break;
  case 9:
    default_->profileNameIs(text);
    break;
  case 10:
    groups_->maintenanceGroupIs(group)->profileIs(profile, truth);
    break;
  case 11:
    groups_->maintenanceGroupDel(group);
    break;
  case 12:
    groupToUnit_->groupToUnitIs(group)->unitNameIs(unit, truth);
    break;
  case 13:
    groupToUnit_->groupToUnitDel(group);
    break;
  case 14:
    input_->priorityIs(source);
    break;
  case 15:
    goes ? static_cast<void>(input_->unitDel(text)) : input_->unitIs(text, truth);
    break;
  case 16:
    goes ? static_cast<void>(member_->groupDel(group)) : member_->groupIs(group, truth);
    break;
  case 17:
    member_->selectedProfileIs(static_cast<Profile::ProfileType>(draw(4)), profile);
    break;
  case 18:
    member_->profileChangeCauseIs(static_cast<ProfileChangeCause>(draw(3)));
    break;
  case 19:
    member_->partOfDynamicUnitIs(truth);
    break;
  case 20:
    goes ? static_cast<void>(merged_->unitDel(unit))
         : static_cast<void>(merged_->unitIs(unit, source));
    break;
  case 21:
    goes ? static_cast<void>(profiles_->configDel(profile))
         : static_cast<void>(profiles_->configIs(profile));
    break;
  case 22:
    if (goes) {
      unitProfiles_->configDel(text);
    } else {
      unitProfiles_->configIs(text)->onBootDurationIs(draw(4000));
    }
    break;
  default:
    unitProfiles_->configIs(text)->onBootEnabledIs(truth);
  }
}
