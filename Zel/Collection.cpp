#include <Zel/Collection>

namespace Zel {

BaseCollection::~BaseCollection() = default;

void BaseCollection::iteratorDelete(StrepIterator& iterator) const {
  const Ptr<PtrInterface> last = Ptr<PtrInterface>::adopt(iterator.current_);
  iterator.current_ = nullptr;
}

void BaseCollection::iteratorSpaceCopy(const StrepIterator& iterator) const {
  if (iterator.current_ != nullptr) {
    iterator.current_->referencesInc();
  }
}

} // namespace Zel
