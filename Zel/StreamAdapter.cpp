#include <Zel/StreamAdapter>

namespace Zel {

StreamAdapter::~StreamAdapter() = default;

Entity::ZelNboAttrLogSa::~ZelNboAttrLogSa() = default;

bool Entity::ZelNboAttrLogSa::isStreamAdapter() const { return true; }

} // namespace Zel
