#include <generic/Unit.h>

#include <generic/TypeOf.h>

namespace Maintenance::Unit {

Zel::Ptr<UnitType_GenericIf_> UnitType_GenericIf_Is(UnitType value, bool isConst) {
  return UnitType_GenericIf_::GenericIf_Is(value, isConst);
}

Zel::Ptr<InputSrc_GenericIf_> InputSrc_GenericIf_Is(InputSrc value, bool isConst) {
  return InputSrc_GenericIf_::GenericIf_Is(value, isConst);
}

Zel::Ptr<State_GenericIf_> State_GenericIf_Is(State value, bool isConst) {
  return State_GenericIf_::GenericIf_Is(value, isConst);
}

Zel::Ptr<MaintenanceOp_GenericIf_> MaintenanceOp_GenericIf_Is(MaintenanceOp value, bool isConst) {
  return MaintenanceOp_GenericIf_::GenericIf_Is(value, isConst);
}

Config::GenericIf_::GenericIf_(const Zel::Ptr<Config>& object, bool isConst)
    : EntityGenericIf(isConst) {
  zelAttach(this, object);
}
Config::GenericIf_::~GenericIf_() = default;
Config::GenericIf_::GenericIf_Adapter_::~GenericIf_Adapter_() = default;

ConfigDir::GenericIf_::GenericIf_(const Zel::Ptr<ConfigDir>& object, bool isConst)
    : EntityGenericIf(isConst) {
  zelAttach(this, object);
}
ConfigDir::GenericIf_::~GenericIf_() = default;
ConfigDir::GenericIf_::GenericIf_Adapter_::~GenericIf_Adapter_() = default;

Status::GenericIf_::GenericIf_(const Zel::Ptr<Status>& object, bool isConst)
    : EntityGenericIf(isConst) {
  zelAttach(this, object);
}
Status::GenericIf_::~GenericIf_() = default;
Status::GenericIf_::GenericIf_Adapter_::~GenericIf_Adapter_() = default;

StatusDir::GenericIf_::GenericIf_(const Zel::Ptr<StatusDir>& object, bool isConst)
    : EntityGenericIf(isConst) {
  zelAttach(this, object);
}
StatusDir::GenericIf_::~GenericIf_() = default;
StatusDir::GenericIf_::GenericIf_Adapter_::~GenericIf_Adapter_() = default;

Input::GenericIf_::GenericIf_(const Zel::Ptr<Input>& object, bool isConst)
    : EntityGenericIf(isConst) {
  zelAttach(this, object);
}
Input::GenericIf_::~GenericIf_() = default;
Input::GenericIf_::GenericIf_Adapter_::~GenericIf_Adapter_() = default;

MergedInput::GenericIf_::GenericIf_(const Zel::Ptr<MergedInput>& object, bool isConst)
    : EntityGenericIf(isConst) {
  zelAttach(this, object);
}
MergedInput::GenericIf_::~GenericIf_() = default;
MergedInput::GenericIf_::GenericIf_Adapter_::~GenericIf_Adapter_() = default;

MergedInputDir::GenericIf_::GenericIf_(const Zel::Ptr<MergedInputDir>& object, bool isConst)
    : EntityGenericIf(isConst) {
  zelAttach(this, object);
}
MergedInputDir::GenericIf_::~GenericIf_() = default;
MergedInputDir::GenericIf_::GenericIf_Adapter_::~GenericIf_Adapter_() = default;

} // namespace Maintenance::Unit

namespace Zel {

template class ZEL_API TypeOf<Maintenance::Unit::UnitType>;
template class ZEL_API TypeOf<Maintenance::Unit::InputSrc>;
template class ZEL_API TypeOf<Maintenance::Unit::State>;
template class ZEL_API TypeOf<Maintenance::Unit::MaintenanceOp>;
template class ZEL_API TypeOf<Maintenance::Unit::BuiltinUnitName>;
template class ZEL_API TypeOf<Maintenance::Unit::MaintenanceStageClasses>;
template class ZEL_API TypeOf<Maintenance::Unit::MaintenanceStageList>;
template class ZEL_API TypeOf<Maintenance::Unit::TrafficRates>;
template class ZEL_API TypeOf<Maintenance::Unit::StageMgrInstKey>;
template class ZEL_API TypeOf<Maintenance::Unit::Config>;
template class ZEL_API TypeOf<Maintenance::Unit::ConfigDir>;
template class ZEL_API TypeOf<Maintenance::Unit::Status>;
template class ZEL_API TypeOf<Maintenance::Unit::StatusDir>;
template class ZEL_API TypeOf<Maintenance::Unit::Input>;
template class ZEL_API TypeOf<Maintenance::Unit::MergedInput>;
template class ZEL_API TypeOf<Maintenance::Unit::MergedInputDir>;

} // namespace Zel
