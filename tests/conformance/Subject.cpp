#include "Subject.h"

namespace Conformance {

std::vector<const Zel::AttrRow*> Subject::rows() const {
  std::vector<const Zel::AttrRow*> all;
  for (const auto* level = table; level != nullptr;
       level = level->base != nullptr ? &level->base() : nullptr) {
    for (const Zel::AttrRow& row : level->rows) {
      all.push_back(&row);
    }
  }
  return all;
}

const std::vector<Subject>& subjects() {
  static const std::vector<Subject> all = [] {
    std::vector<Subject> made;
    addProfileSubjects(made);
    addUnitSubjects(made);
    addMappingSubjects(made);
    addMaintenanceGroupSubjects(made);
    addMaintenanceUnitProfileSubjects(made);
    addMaintenanceAgentInfoSubjects(made);
    addForeignSubjects(made);
    return made;
  }();
  return all;
}

std::vector<Case> casesOf(bool (*wanted)(const Zel::AttrRow&)) {
  std::vector<Case> cases;
  for (const Subject& subject : subjects()) {
    for (const Zel::AttrRow* const row : subject.rows()) {
      if (wanted(*row)) {
        cases.push_back({&subject, row});
      }
    }
  }
  return cases;
}

std::string caseName(const testing::TestParamInfo<Case>& info) {
  return info.param.subject->name + "_" + std::string(info.param.row->name);
}

} // namespace Conformance
