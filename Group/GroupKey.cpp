#include <Group/GroupKey>

#include <Zel/Hash>

namespace Group {

namespace {

using Attr = GroupKey::Attr;
using Row = Zel::Rows<GroupKey>;

constexpr Zel::AttrRow rows[] = {
    Row::key<&GroupKey::type>(Attr::type, "type"),
    Row::key<&GroupKey::name>(Attr::name, "name"),
    Row::computed<&GroupKey::hash>(Attr::hash, "hash"),
};
static_assert(Zel::rowsAreInOrder(rows, Zel::firstValueAttributeId));

constexpr Zel::TypeTable table = Zel::tableOf<GroupKey, GroupType, Zel::String8>(rows);

} // namespace

const Zel::TypeTable& GroupKey::zelTable() { return table; }

unsigned GroupKey::hash() const noexcept {
  return Zel::oneAtATimeEnd(Zel::oneAtATimeStep(0, static_cast<unsigned>(type_)) ^ name_.hash());
}

} // namespace Group
