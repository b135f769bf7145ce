#include <model/Mapping/GroupProfileSelectionOut.h>

namespace Maintenance {

namespace {

using Self = GroupProfileSelectionOut;
using Row = Zel::Rows<Self>;

constexpr Zel::AttrRow rows[] = {
    Row::key<&Self::groupProfileSelKey>(Self::Attr::groupProfileSelKey, "groupProfileSelKey"),
    Row::frameworkKey<&Self::fwkKey>(),
};
static_assert(Zel::rowsAreInOrder(rows, Zel::firstObjectAttributeId));

constexpr Zel::TypeTable table = Zel::tableOf<Self, GroupProfileSelKey>(rows);

} // namespace

const Zel::TypeTable& GroupProfileSelectionOut::zelTable() { return table; }

GroupProfileSelectionOut::GroupProfileSelectionOut(const GroupProfileSelKey& groupProfileSelKey)
    : groupProfileSelKey_(groupProfileSelKey) {}
GroupProfileSelectionOut::~GroupProfileSelectionOut() = default;

Zel::Ptr<GroupProfileSelectionOut>
groupProfileSelectionOutFactory(const GroupProfileSelKey& groupProfileSelKey) {
  return Zel::makeObject<GroupProfileSelectionOut>(groupProfileSelKey);
}

} // namespace Maintenance
