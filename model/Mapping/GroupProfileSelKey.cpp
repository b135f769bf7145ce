#include <model/Mapping/GroupProfileSelKey.h>

#include <Zel/Hash>

namespace Maintenance {

namespace {

using Attr = GroupProfileSelKey::Attr;
using Row = Zel::Rows<GroupProfileSelKey>;

constexpr Zel::AttrRow rows[] = {
    Row::key<&GroupProfileSelKey::groupType>(Attr::groupType, "groupType"),
    Row::key<&GroupProfileSelKey::profileSelReqId>(Attr::profileSelReqId, "profileSelReqId"),
    Row::computed<&GroupProfileSelKey::hash>(Attr::hash, "hash", Zel::internal),
};
static_assert(Zel::rowsAreInOrder(rows, Zel::firstValueAttributeId));

constexpr Zel::TypeTable table = Zel::tableOf<GroupProfileSelKey, Group::GroupType, unsigned>(rows);

} // namespace

const Zel::TypeTable& GroupProfileSelKey::zelTable() { return table; }

unsigned GroupProfileSelKey::hash() const noexcept {
  const unsigned ofType = Zel::oneAtATimeStep(0, static_cast<unsigned>(groupType_));
  return Zel::oneAtATimeEnd(Zel::oneAtATimeStep(ofType, profileSelReqId_));
}

} // namespace Maintenance
