#pragma once

#include <registration/Module.h>

#include <Group/GroupKey>
#include <Vexil/IntfId>

namespace Zel {

/// Registers the types below the model: the builtins and strings, the bases of all objects, the
/// bases of the generic interface, the group key and the interface identifier.
void frameworkLoad();

} // namespace Zel
