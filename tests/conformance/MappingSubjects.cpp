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

const Group::GroupKey peers(Group::groupTypeBgp, "peers");

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

} // namespace

void addMappingSubjects(std::vector<Subject>& all) { addMappings(all); }

} // namespace Conformance
