#include <model/Mapping/UnitProfileSelKey.h>

#include <Zel/Hash>

namespace Maintenance {

namespace {

using Attr = UnitProfileSelKey::Attr;
using Row = Zel::Rows<UnitProfileSelKey>;

constexpr Zel::AttrRow rows[] = {
    Row::key<&UnitProfileSelKey::unitName>(Attr::unitName, "unitName"),
    Row::key<&UnitProfileSelKey::profileChangeCause>(Attr::profileChangeCause,
                                                     "profileChangeCause"),
    Row::computed<&UnitProfileSelKey::hash>(Attr::hash, "hash", Zel::internal),
};
static_assert(Zel::rowsAreInOrder(rows, Zel::firstValueAttributeId));

constexpr Zel::TypeTable table =
    Zel::tableOf<UnitProfileSelKey, Zel::String8, ProfileChangeCause>(rows);

} // namespace

const Zel::TypeTable& UnitProfileSelKey::zelTable() { return table; }

unsigned UnitProfileSelKey::hash() const noexcept {
  return Zel::oneAtATimeEnd(
      Zel::oneAtATimeStep(unitName_.hash(), static_cast<unsigned>(profileChangeCause_)));
}

} // namespace Maintenance
