#include "collision/Names.h"
#include "peers/IntrusiveProfiles.h"

namespace {

class Directory : public Bench::IntrusiveProfiles {
public:
  void erase(const Maintenance::Profile::ProfileKey& key) {
    const std::unique_ptr<const Entity> entity(member(key));
    IntrusiveProfiles::erase(entity->key());
  }
};

} // namespace

void Bench::registerAll() { collisionOperations<Directory>(); }
