#include <model/Profile/ProfileKey.h>

#include <Zel/Hash>

namespace Maintenance::Profile {

namespace {

using Attr = ProfileKey::Attr;
using Row = Zel::Rows<ProfileKey>;

constexpr Zel::AttrRow rows[] = {
    Row::key<&ProfileKey::type>(Attr::type, "type"),
    Row::key<&ProfileKey::name>(Attr::name, "name"),
    Row::computed<&ProfileKey::hash>(Attr::hash, "hash"),
};
static_assert(Zel::rowsAreInOrder(rows, Zel::firstValueAttributeId));

constexpr Zel::TypeTable table = Zel::tableOf<ProfileKey, ProfileType, Zel::String8>(rows);

} // namespace

const Zel::TypeTable& ProfileKey::zelTable() { return table; }

unsigned ProfileKey::hash() const noexcept {
  return Zel::oneAtATimeEnd(Zel::oneAtATimeStep(0, static_cast<unsigned>(type_)) ^ name_.hash());
}

} // namespace Maintenance::Profile
