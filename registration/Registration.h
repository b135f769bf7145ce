#pragma once

#include <Zel/IntrospectionReactor>

namespace Zel {

/// Reports one type to the reactor, within the name scopes that are open: size, kind, constructor
/// arguments, and the attributes, the inherited ones first.
ZEL_API void registerType(IntrospectionReactor& reactor, ZelType& type);

} // namespace Zel
