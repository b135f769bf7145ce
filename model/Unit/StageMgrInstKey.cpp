#include <model/Unit/StageMgrInstKey.h>

#include <Zel/Exception>
#include <Zel/Format>

#include <locale>
#include <sstream>
#include <string>

namespace Maintenance::Unit {

namespace {

using Attr = StageMgrInstKey::Attr;
using Row = Zel::Rows<StageMgrInstKey>;

constexpr Zel::AttrRow rows[] = {
    Row::computedMember<&StageMgrInstKey::instanceName, &StageMgrInstKey::instanceNameIs>(
        Attr::instanceName, "instanceName"),
    Row::valueMember<&StageMgrInstKey::unitName, &StageMgrInstKey::unitNameIs>(Attr::unitName,
                                                                               "unitName"),
    Row::valueMember<&StageMgrInstKey::genId, &StageMgrInstKey::genIdIs>(Attr::genId, "genId"),
};
static_assert(Zel::rowsAreInOrder(rows, Zel::firstValueAttributeId));

constexpr Zel::TypeTable table = Zel::tableOf<StageMgrInstKey, Zel::String8>(rows);

} // namespace

const Zel::TypeTable& StageMgrInstKey::zelTable() { return table; }

StageMgrInstKey::StageMgrInstKey(Zel::String8 instanceName) {
  instanceNameIs(std::move(instanceName));
}

Zel::String8 StageMgrInstKey::instanceName() const {
  return unitName_ + Zel::format("#%u", genId_);
}

void StageMgrInstKey::instanceNameIs(Zel::String8 text) {
  if (text.empty()) {
    return;
  }
  const Zel::String8 head = "Unexpected instanceName format";
  const auto* const mark = reinterpret_cast<const unsigned char*>("#");
  const unsigned at = text.charIndexOf(text.pos(0, mark, 1));
  if (at == Zel::String8::npos) {
    throw Zel::InternalException(head);
  }
  if (at == 0) {
    throw Zel::InternalException(head + ", couldn't extract unitName");
  }
  unitName_ = text.substr(0, at);
  if (at + 1 >= text.length()) {
    throw Zel::InternalException(head + ", couldn't extract genId");
  }
  std::istringstream tail{std::string(text.view().substr(at + 1))};
  tail.imbue(std::locale::classic()); // whatever the process has made the default
  unsigned number = 0;
  tail >> number;
  if (number == 0) {
    throw Zel::InternalException(head + ", genId is invalid");
  }
  genId_ = number;
}

} // namespace Maintenance::Unit
