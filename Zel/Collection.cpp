#include <Zel/Collection>

namespace Zel {

BaseCollection::~BaseCollection() = default;

void BaseCollection::iteratorDelete(StrepIterator& iterator) const {
  Ptr<PtrInterface> const last = Ptr<PtrInterface>::adopt(iterator.current_);
  iterator.current_ = nullptr;
}

void BaseCollection::iteratorSpaceCopy(StrepIterator const& iterator) const {
  if (iterator.current_ != nullptr) {
    iterator.current_->referencesInc();
  }
}

} // namespace Zel
