#include <text/EnumerationText.h>

#include <model/Mapping.h>

namespace Maintenance {

ZEL_ENUMERATION_TEXT(ProfileChangeCause, ProfileChangeCauseInstance)

} // namespace Maintenance

#undef ZEL_ENUMERATION_TEXT
