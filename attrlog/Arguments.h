#pragma once

#include <Zel/TypeTable>

namespace Zel {

/// The last rows of constructor arguments, as many as a member is made with behind its key.
template <class Visit>
void forArguments(const CollectionOps& ops, Visit&& visit) {
  if (ops.arguments.empty()) {
    return;
  }
  const TypeTable& members = ops.memberTable();
  std::size_t place = members.named ? 1 : 0;
  for (const AttrRow& row : members.rows) {
    if (isConstructorArgument(row) &&
        place++ >= members.constructor.arguments.size() - ops.arguments.size()) {
      visit(row);
    }
  }
}

} // namespace Zel
