#include <generic/Mapping.h>

#include <generic/TypeOf.h>

namespace Maintenance {

Zel::Ptr<ProfileChangeCause_GenericIf_> ProfileChangeCause_GenericIf_Is(ProfileChangeCause value,
                                                                        bool isConst) {
  return ProfileChangeCause_GenericIf_::GenericIf_Is(value, isConst);
}

MemberToGroup::GenericIf_::GenericIf_(const Zel::Ptr<MemberToGroup>& object, bool isConst)
    : EntityGenericIf(isConst) {
  zelAttach(this, object);
}
MemberToGroup::GenericIf_::~GenericIf_() = default;
MemberToGroup::GenericIf_::GenericIf_Adapter_::~GenericIf_Adapter_() = default;

GroupToUnit::GenericIf_::GenericIf_(const Zel::Ptr<GroupToUnit>& object, bool isConst)
    : EntityGenericIf(isConst) {
  zelAttach(this, object);
}
GroupToUnit::GenericIf_::~GenericIf_() = default;
GroupToUnit::GenericIf_::GenericIf_Adapter_::~GenericIf_Adapter_() = default;

GroupToUnitDir::GenericIf_::GenericIf_(const Zel::Ptr<GroupToUnitDir>& object, bool isConst)
    : EntityGenericIf(isConst) {
  zelAttach(this, object);
}
GroupToUnitDir::GenericIf_::~GenericIf_() = default;
GroupToUnitDir::GenericIf_::GenericIf_Adapter_::~GenericIf_Adapter_() = default;

GroupProfileSelectionIn::GenericIf_::~GenericIf_() = default;
GroupProfileSelectionOut::GenericIf_::~GenericIf_() = default;
UnitProfileSelection::GenericIf_::~GenericIf_() = default;
ProfileSelection::GenericIf_::~GenericIf_() = default;
ProfileKeySet::GenericIf_::~GenericIf_() = default;

} // namespace Maintenance

namespace Zel {

template class ZEL_API TypeOf<Maintenance::ProfileChangeCause>;
template class ZEL_API TypeOf<Maintenance::MemberToGroup>;
template class ZEL_API TypeOf<Maintenance::GroupToUnit>;
template class ZEL_API TypeOf<Maintenance::GroupToUnitDir>;
template class ZEL_API TypeOf<Maintenance::GroupProfileSelKey>;
template class ZEL_API TypeOf<Maintenance::GroupProfileSelectionIn>;
template class ZEL_API TypeOf<Maintenance::GroupProfileSelectionOut>;
template class ZEL_API TypeOf<Maintenance::UnitProfileSelKey>;
template class ZEL_API TypeOf<Maintenance::UnitProfileSelection>;
template class ZEL_API TypeOf<Maintenance::ProfileSelection>;
template class ZEL_API TypeOf<Maintenance::ProfileKeySet>;

} // namespace Zel
