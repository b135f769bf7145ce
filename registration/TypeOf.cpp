#include <registration/TypeOf.h>

#include <Zel/FlowPlan>
#include <Zel/ValueCodec>

#include <deque>
#include <vector>

namespace Zel {

namespace {

Name shortName(std::string_view fullName) {
  const std::size_t scope = fullName.rfind(':');
  return Name(scope == fullName.npos ? fullName : fullName.substr(scope + 1));
}

const ZelType* baseOf(const TypeTable& table) {
  if (table.base != nullptr) {
    return table.base().type();
  }
  switch (table.kind) {
  case TypeKind::entity:
    return Entity::_fwkType();
  case TypeKind::object:
    return PtrInterface::_fwkType();
  default:
    return nullptr;
  }
}

} // namespace

TableType::TableType(const TypeTable& table)
    : ZelType(shortName(table.name), nullptr, baseOf(table), {}) {
  tableIs(&table);
}

TableType::TableType(const ValueRecord& record)
    : ZelType(shortName(record.name), nullptr, nullptr, {}) {
  recordIs(&record);
  enumerationIs(record.enumeration);
  tableIs(record.table != nullptr ? &record.table() : nullptr);
}

TableType::~TableType() = default;

Ptr<Entity> TableType::newEntity(const Name& name, Dir* /*dir*/) const {
  const TypeTable* const own = table();
  if (own == nullptr || own->kind != TypeKind::entity || !own->named || !own->hasFactory ||
      own->constructor.arguments.size() != 1 || own->row(fwkKeyId) != nullptr) {
    return nullptr;
  }
  const void* const arguments[] = {&name};
  return ptrCast<Entity>(own->constructor.object(arguments));
}

Ptr<Entity> TableType::newEntity(const Ptr<NboAttrLog::In>& in,
                                 PtrInterface::NotifieeConst::Zel_BitSet /*flags*/,
                                 unsigned /*option*/, PtrInterface* /*owner*/) const {
  const TypeTable* const own = table();
  if (own == nullptr || own->kind != TypeKind::entity) {
    return nullptr;
  }
  std::deque<ValueSlot> values;
  std::vector<const void*> arguments;
  for (const ValueRecord* const type : own->constructor.arguments) {
    decodeValue(*type, values.emplace_back(*type).at(), *in);
    arguments.push_back(values.back().at());
  }
  return ptrCast<Entity>(own->constructor.object(arguments.data()));
}

void TableType::childAttrLogIs(const Ptr<const ZelAttr>& attr, const Ptr<PtrInterface>& child,
                               const Ptr<NboAttrLog::Out>& out) const {
  const TypeTable* const own = table();
  const AttrRow* const row =
      own != nullptr && attr ? own->row(std::string_view(attr->name().view())) : nullptr;
  if (row == nullptr || row->kind != AttrKind::instantiating) {
    if (const Ptr<const ZelType> next = Ptr<const ZelType>(base())) {
      next->childAttrLogIs(attr, child, out);
    }
    return;
  }
  const Ptr<Entity> member = ptrCast<Entity>(child);
  const Ptr<Entity> parent = member ? member->parent() : nullptr;
  const Ptr<Entity::ZelNboAttrLogSa> adapter =
      parent && parent->fwkType()->isA(this)
          ? parent->zelNboAttrLogSa(Ptr<const NboAttrLog::Out>(out))
          : nullptr;
  if (!adapter) {
    return;
  }
  using Flags = PtrInterface::NotifieeConst::Zel_BitSet;
  constexpr unsigned notPassedOn = 1U << 10;
  const Flags flags(adapter->zel_bitSet().word() & Flags::notificationBitMask() & ~notPassedOn);
  const FlowPlan& plan = adapter->plan();
  plan.childIs(*adapter, *plan.step(row->id), flags, *member, 1, adapter->channelEntry());
}

} // namespace Zel
