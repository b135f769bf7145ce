#include "peers/IntrusiveTimes.h"

#include <model/Unit/Status.h>

namespace Bench {

static_assert(sizeof(IntrusiveTimes::Entity) == sizeof(Maintenance::Unit::Status::ZelHistory));

IntrusiveTimes::IntrusiveTimes() = default;

IntrusiveTimes::~IntrusiveTimes() {
  if (owning_) {
    set_.clear_and_dispose([](Entity* entity) { delete entity; });
  } else {
    set_.clear();
  }
}

void IntrusiveTimes::insert(Entity& entity) { set_.insert(entity); }

void IntrusiveTimes::insertNew(double time, const Zel::String8& text) {
  owning_ = true;
  insert(*new Entity(time, text));
}

void IntrusiveTimes::erase(double time) { set_.erase(time, Less()); }

Zel::String8 IntrusiveTimes::text(double time) const {
  const Entity* const entity = find(time);
  return entity != nullptr ? entity->text() : Zel::String8();
}

} // namespace Bench
