#include "Subject.h"

#include <model/MaintenanceAgentInfo.h>

namespace Conformance {

namespace {

using namespace Maintenance;
using Attr = AgentInfo::Attr;

class AgentInfoRecorder : public Recorder<AgentInfo> {
  void onAgentPid() override { hear(Attr::agentPid); }
  void onRestartCount() override { hear(Attr::restartCount); }
  void onOnBoot() override { hear(Attr::onBoot); }
  void onOnBootMaintEnter(Zel::String8 unitName) override {
    hear(Attr::onBootMaintEnter, unitName);
  }
  void onOnBootMaintEnter() override { hear(Attr::onBootMaintEnter); }
  void onReady() override { hear(Attr::ready); }
};

} // namespace

void addMaintenanceAgentInfoSubjects(std::vector<Subject>& all) {
  using Noted = OnBootUnitAndReason;
  all.push_back(
      SubjectOf<Noted>("OnBootUnitAndReason", [] { return Noted("System", Unit::srcCli); })
          .reads<&Noted::unitName>(Noted::Attr::unitName, "System")
          .reads<&Noted::reason>(Noted::Attr::reason, Unit::srcCli));
  all.push_back(
      SubjectOf<AgentInfo, AgentInfoRecorder>("AgentInfo", [] { return agentInfoFactory("agent"); })
          .reads<&AgentInfo::agentPid>(Attr::agentPid, 0)
          .reads<&AgentInfo::restartCount>(Attr::restartCount, 0)
          .reads<&AgentInfo::onBoot>(Attr::onBoot, false)
          .looksUpOwn<&AgentInfo::onBootMaintEnter, &AgentInfo::onBootMaintEnterMap,
                      &Noted::unitName>(Attr::onBootMaintEnter)
          .reads<&AgentInfo::ready>(Attr::ready, false));
}

} // namespace Conformance
