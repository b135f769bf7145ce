#pragma once

#include <generic/Reactor.h>
#include <generic/Value.h>
#include <model/MaintenanceAgentInfo.h>

/// The generic objects of agent information.
namespace Maintenance {

class ZEL_API AgentInfo::GenericIf_ : public Zel::EntityGenericIf<AgentInfo> {
public:
  class GenericIf_Adapter_;
  GenericIf_(const Zel::Ptr<AgentInfo>& object, bool isConst);

  void onAgentPid() { zelOnSingular(Attr::agentPid); }
  void onRestartCount() { zelOnSingular(Attr::restartCount); }
  void onOnBoot() { zelOnSingular(Attr::onBoot); }
  void onOnBootMaintEnter(Zel::String8 unitName) { zelOnMember(Attr::onBootMaintEnter, &unitName); }
  void onReady() { zelOnSingular(Attr::ready); }

protected:
  ~GenericIf_() override;
};

class ZEL_API AgentInfo::GenericIf_::GenericIf_Adapter_
    : public Zel::GenericAdapter<AgentInfo, AgentInfo::GenericIf_> {
public:
  using GenericAdapter::GenericAdapter;

  void onAgentPid() override { zelForward(&GenericIf_::onAgentPid); }
  void onRestartCount() override { zelForward(&GenericIf_::onRestartCount); }
  void onOnBoot() override { zelForward(&GenericIf_::onOnBoot); }
  void onOnBootMaintEnter(Zel::String8 unitName) override {
    zelForward(&GenericIf_::onOnBootMaintEnter, unitName);
  }
  void onOnBootMaintEnter() override { zelForwardCollection(Attr::onBootMaintEnter); }
  void onReady() override { zelForward(&GenericIf_::onReady); }

protected:
  ~GenericIf_Adapter_() override;
};

} // namespace Maintenance
