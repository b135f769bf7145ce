#include <Group/GroupKey>
#include <Vexil/IntfId>
#include <generic/TypeOf.h>

namespace Zel {

template class ZEL_API TypeOf<bool>;
template class ZEL_API TypeOf<unsigned>;
template class ZEL_API TypeOf<unsigned long long>;
template class ZEL_API TypeOf<double>;
template class ZEL_API TypeOf<String8>;
template class ZEL_API TypeOf<Name>;
template class ZEL_API TypeOf<Group::GroupType>;
template class ZEL_API TypeOf<Group::GroupKey>;
template class ZEL_API TypeOf<Vexil::IntfId>;

} // namespace Zel

Zel::Ptr<Group::GroupType_GenericIf_> Group::GroupType_GenericIf_Is(GroupType value, bool isConst) {
  return GroupType_GenericIf_::GenericIf_Is(value, isConst);
}
