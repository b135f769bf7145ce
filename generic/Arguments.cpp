#include <generic/Arguments.h>

namespace Zel {

namespace {

const GenericIf::List::Queue& queueOf(const GenericIf* list) {
  const auto* const typed = dynamic_cast<const GenericIf::List_*>(list);
  if (typed == nullptr) {
    GenericIf::throwTypeException("Zel::GenericIf::List_");
  }
  const void* const queue = typed->voidPtrIs(Ptr<const ZelType>(GenericIf::List::_fwkType()));
  if (queue == nullptr) { // a derived list may have none
    GenericIf::throwTypeException("List");
  }
  return *static_cast<const GenericIf::List::Queue*>(queue);
}

} // namespace

ArgumentReader::ArgumentReader(const GenericIf* list)
    : queue_(queueOf(list)), next_(queue_.head().ptr()) {}

const void* ArgumentReader::next(const ValueRecord& wanted, std::string_view name) {
  const GenericIf* argument = nullptr;
  if (next_ != nullptr) {
    argument = next_->zelValue().ptr();
    next_ = next_->zelNext().ptr();
  }
  return unpacked(argument, wanted, name);
}

void ArgumentReader::finish(std::string_view owner) const {
  if (!atEnd()) {
    GenericIf::throwUnknownArgException(String8(owner).charPtr());
  }
}

std::vector<const void*> constructorArguments(const TypeTable& table, ArgumentReader& in) {
  std::vector<const void*> arguments;
  for (const ValueRecord* const wanted : table.constructor.arguments) {
    arguments.push_back(in.next(*wanted, constructorArgumentName(table, arguments.size())));
  }
  in.finish(table.type()->name().view());
  return arguments;
}

} // namespace Zel
