#include <Zel/FlowPlan>

#include <Zel/Exception>

namespace Zel {

namespace {

FlowKind kindOf(const AttrRow& row) {
  if (row.kind == AttrKind::instantiating) {
    return FlowKind::child;
  }
  const bool isText = row.value == &valueRecord<String8>;
  if (row.isCollection()) {
    return isText ? FlowKind::keyedText : FlowKind::keyed;
  }
  return isText ? FlowKind::text : FlowKind::plain;
}

std::uint8_t numberSizeOf(const AttrRow& row) {
  if (row.value == &valueRecord<unsigned> || row.value->enumeration != nullptr) {
    return sizeof(std::uint32_t);
  }
  const bool isLong =
      row.value == &valueRecord<double> || row.value == &valueRecord<unsigned long long>;
  return isLong ? sizeof(std::uint64_t) : 0;
}

FlowStep stepOf(const AttrRow& row, unsigned word, std::uint32_t bit) {
  FlowStep step{};
  step.row = &row;
  step.kind = kindOf(row);
  step.numberSize = step.kind == FlowKind::plain ? numberSizeOf(row) : std::uint8_t{0};
  step.startsClean = (row.options & constructorArgument) != 0;
  // Only these two are told by size; a `double` or an enumeration could be and are not.
  if (step.kind == FlowKind::plain && row.value == &valueRecord<unsigned>) {
    step.fixedSize = sizeof(std::uint32_t);
  } else if (step.kind == FlowKind::plain && row.value == &valueRecord<bool>) {
    step.fixedSize = 1;
  } else {
    step.variableSize = 1;
  }
  step.word = word;
  step.bit = bit;
  return step;
}

} // namespace

FlowPlan::FlowPlan(const TypeTable& type, ChildIs attachChild) : table(type), childIs(attachChild) {
  if (add(type) > maxWords) {
    throwInternalException("attribute log: " + String8(type.name) + " has too many bases");
  }
}

/// Adds the steps of a type, its base's first; yields how many words they take.
unsigned FlowPlan::add(const TypeTable& type) {
  const unsigned word = type.base != nullptr ? add(type.base()) : 0;
  if (word >= maxWords) {
    return word + 1;
  }
  // The lowest bit of the first word is not given out.
  std::uint32_t bit = word == 0 ? 2 : 1;
  for (const AttrRow& row : type.rows) {
    if (!row.flows() || (row.options & silent) != 0) {
      continue; // nobody is told of changes of a silent one
    }
    const auto place = static_cast<std::size_t>(row.id - firstEntityAttributeId);
    places.resize(std::max(places.size(), place + 1), none);
    places[place] = static_cast<std::uint8_t>(steps.size());
    steps.push_back(stepOf(row, word, bit));
    bit <<= 1;
  }
  return word + 1;
}

} // namespace Zel
