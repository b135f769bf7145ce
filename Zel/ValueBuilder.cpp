#include <Zel/ValueBuilder>

#include <vector>

namespace Zel {

ValueBuilder::ValueBuilder(const ValueRecord& record, const TypeTable& table, void* fresh)
    : record_(record), table_(table), value_(fresh) {
  const std::size_t count = table.constructor.arguments.size();
  if (count > fewArguments) {
    many_ = std::make_unique<Argument[]>(count);
  }
}

ValueBuilder::Argument& ValueBuilder::argumentOf(const AttrRow& row) {
  std::size_t place = 0;
  for (const AttrRow* before = table_.rows.data(); before != &row; ++before) {
    place += isConstructorArgument(*before) ? 1 : 0;
  }
  return argument(place);
}

void ValueBuilder::finish() {
  if (!hasArguments_) {
    return;
  }
  const std::size_t count = table_.constructor.arguments.size();
  if (count > fewArguments) {
    std::vector<const void*> many(count);
    remake(many.data());
  } else {
    std::array<const void*, fewArguments> few;
    remake(few.data());
  }
}

void ValueBuilder::remake(const void** arguments) {
  std::size_t place = 0;
  for (const AttrRow& row : table_.rows) {
    if (!isConstructorArgument(row)) {
      continue;
    }
    Argument& here = argument(place);
    if (row.kind != AttrKind::key) {
      here.emplace(*row.value); // derived from members, which are carried over
    } else if (!here) {
      here.emplace(*row.value, [&](void* at) { row.read(value_, at); });
    }
    arguments[place++] = here->at();
  }
  ValueSlot whole(record_, [&](void* at) { table_.constructor.value(at, arguments); });
  for (const AttrRow& row : table_.rows) {
    if (row.kind == AttrKind::valueMember) {
      ValueSlot member(*row.value, [&](void* at) { row.read(value_, at); });
      row.write(whole.at(), member.at());
    }
  }
  record_.assign(value_, whole.at());
}

} // namespace Zel
