#pragma once

#include <Zel/Entity>
#include <Zel/TypeTable>

#include <nlohmann/json_fwd.hpp>

namespace Maintctl {

/// All attributes of an entity by name, with all that is below it.
nlohmann::json jsonOf(const Zel::Entity& entity);

/// One attribute: a value, or of a collection an object by key.
nlohmann::json jsonOf(const Zel::Entity& entity, const Zel::AttrRow& row);

} // namespace Maintctl
