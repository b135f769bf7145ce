#include "Subject.h"

#include <model/Mapping.h>

namespace Conformance {

namespace {

using namespace Maintenance;

class MemberToGroupRecorder : public Recorder<MemberToGroup> {
  using Attr = MemberToGroup::Attr;
  void onGroup(const Group::GroupKey& key) override { hear(Attr::group, key); }
  void onGroup() override { hear(Attr::group); }
  void onSelectedProfile(Profile::ProfileType type) override { hear(Attr::selectedProfile, type); }
  void onSelectedProfile() override { hear(Attr::selectedProfile); }
  void onProfileChangeCause() override { hear(Attr::profileChangeCause); }
  void onPartOfDynamicUnit() override { hear(Attr::partOfDynamicUnit); }
};

class GroupToUnitRecorder : public Recorder<GroupToUnit> {
  void onUnitName(Zel::Name name) override { hear(GroupToUnit::Attr::unitName, name); }
  void onUnitName() override { hear(GroupToUnit::Attr::unitName); }
};

class GroupToUnitDirRecorder : public Recorder<GroupToUnitDir> {
  void onGroupToUnit(const Group::GroupKey& key) override {
    hear(GroupToUnitDir::Attr::groupToUnit, key);
  }
  void onGroupToUnit() override { hear(GroupToUnitDir::Attr::groupToUnit); }
};

class GroupProfileSelectionInRecorder : public Recorder<GroupProfileSelectionIn> {
  using Attr = GroupProfileSelectionIn::Attr;
  void onTrigger() override { hear(Attr::trigger); }
  void onGroupName(Zel::String8 name) override { hear(Attr::groupName, name); }
  void onGroupName() override { hear(Attr::groupName); }
};

class UnitProfileSelectionRecorder : public Recorder<UnitProfileSelection> {
  using Attr = UnitProfileSelection::Attr;
  void onGenId() override { hear(Attr::genId); }
  void onComplete() override { hear(Attr::complete); }
  void onConsiderUnitState() override { hear(Attr::considerUnitState); }
  void onGroupProfileSelectionIn(const GroupProfileSelKey& key) override {
    hear(Attr::groupProfileSelectionIn, key);
  }
  void onGroupProfileSelectionIn() override { hear(Attr::groupProfileSelectionIn); }
  void onGroupProfileSelectionOut(const GroupProfileSelKey& key) override {
    hear(Attr::groupProfileSelectionOut, key);
  }
  void onGroupProfileSelectionOut() override { hear(Attr::groupProfileSelectionOut); }
};

class ProfileSelectionRecorder : public Recorder<ProfileSelection> {
  void onUnitProfileSelection(const UnitProfileSelKey& key) override {
    hear(ProfileSelection::Attr::unitProfileSelection, key);
  }
  void onUnitProfileSelection() override { hear(ProfileSelection::Attr::unitProfileSelection); }
};

const Group::GroupKey peers(Group::groupTypeBgp, "peers");
const GroupProfileSelKey request(Group::groupTypeInterface, 7);
const UnitProfileSelKey selected("System", userConfigChange);

void addMappings(std::vector<Subject>& all) {
  using Member = MemberToGroup;
  all.push_back(
      SubjectOf<Member, MemberToGroupRecorder>("MemberToGroup",
                                               [] { return Zel::makeObject<Member>("Ethernet1"); })
          .looksUp<&Member::group, &Member::groupMap>(Member::Attr::group)
          .looksUp<&Member::selectedProfile, &Member::selectedProfileMap>(
              Member::Attr::selectedProfile)
          .reads<&Member::profileChangeCause>(Member::Attr::profileChangeCause, initialCreation)
          .reads<&Member::partOfDynamicUnit>(Member::Attr::partOfDynamicUnit, false));
  using Units = GroupToUnit;
  all.push_back(SubjectOf<Units, GroupToUnitRecorder>("GroupToUnit",
                                                      [] { return Zel::makeObject<Units>(peers); })
                    .reads<&Units::key>(Units::Attr::key, peers)
                    .looksUp<&Units::unitName, &Units::unitNameMap>(Units::Attr::unitName)
                    .reads<&Units::fwkKey>(Zel::fwkKeyId, peers));
  using Dir = GroupToUnitDir;
  all.push_back(SubjectOf<Dir, GroupToUnitDirRecorder>("GroupToUnitDir", [] {
                  return groupToUnitDirFactory("dir");
                }).finds<&Dir::groupToUnit, &Dir::groupToUnitMap>(Dir::Attr::groupToUnit));
}

void addSelections(std::vector<Subject>& all) {
  using GroupKey = GroupProfileSelKey;
  all.push_back(
      SubjectOf<GroupKey>("GroupProfileSelKey", [] { return request; })
          .reads<&GroupKey::groupType>(GroupKey::Attr::groupType, Group::groupTypeInterface)
          .reads<&GroupKey::profileSelReqId>(GroupKey::Attr::profileSelReqId, 7)
          .reads<&GroupKey::hash>(GroupKey::Attr::hash, request.hash()));
  using In = GroupProfileSelectionIn;
  all.push_back(
      SubjectOf<In, GroupProfileSelectionInRecorder>(
          "GroupProfileSelectionIn", [] { return groupProfileSelectionInFactory(request); })
          .reads<&In::trigger>(In::Attr::trigger, false)
          .reads<&In::groupProfileSelKey>(In::Attr::groupProfileSelKey, request)
          .looksUp<&In::groupName, &In::groupNameMap>(In::Attr::groupName)
          .reads<&In::fwkKey>(Zel::fwkKeyId, request));
  using Out = GroupProfileSelectionOut;
  all.push_back(SubjectOf<Out>("GroupProfileSelectionOut",
                               [] { return groupProfileSelectionOutFactory(request); })
                    .reads<&Out::groupProfileSelKey>(Out::Attr::groupProfileSelKey, request)
                    .reads<&Out::fwkKey>(Zel::fwkKeyId, request));
  using UnitKey = UnitProfileSelKey;
  all.push_back(
      SubjectOf<UnitKey>("UnitProfileSelKey", [] { return selected; })
          .reads<&UnitKey::unitName>(UnitKey::Attr::unitName, "System")
          .reads<&UnitKey::profileChangeCause>(UnitKey::Attr::profileChangeCause, userConfigChange)
          .reads<&UnitKey::hash>(UnitKey::Attr::hash, selected.hash()));
  using One = UnitProfileSelection;
  all.push_back(SubjectOf<One, UnitProfileSelectionRecorder>(
                    "UnitProfileSelection", [] { return unitProfileSelectionFactory(selected); })
                    .reads<&One::unitProfileSelKey>(One::Attr::unitProfileSelKey, selected)
                    .reads<&One::genId>(One::Attr::genId, 0)
                    .reads<&One::complete>(One::Attr::complete, false)
                    .reads<&One::considerUnitState>(One::Attr::considerUnitState, false)
                    .finds<&One::groupProfileSelectionIn, &One::groupProfileSelectionInMap>(
                        One::Attr::groupProfileSelectionIn)
                    .finds<&One::groupProfileSelectionOut, &One::groupProfileSelectionOutMap>(
                        One::Attr::groupProfileSelectionOut)
                    .reads<&One::fwkKey>(Zel::fwkKeyId, selected));
  using Selection = ProfileSelection;
  all.push_back(SubjectOf<Selection, ProfileSelectionRecorder>(
                    "ProfileSelection", [] { return profileSelectionFactory(); })
                    .finds<&Selection::unitProfileSelection, &Selection::unitProfileSelectionMap>(
                        Selection::Attr::unitProfileSelection));
  using Set = ProfileKeySet;
  all.push_back(SubjectOf<Set>("ProfileKeySet", [] { return profileKeySetFactory(); })
                    .looksUp<&Set::profileKey, &Set::profileKeyMap>(Set::Attr::profileKey)
                    .reads<&Set::winningProfile>(Set::Attr::winningProfile, Profile::ProfileKey()));
}

} // namespace

void addMappingSubjects(std::vector<Subject>& all) {
  addMappings(all);
  addSelections(all);
}

} // namespace Conformance
