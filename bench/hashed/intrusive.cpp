#include "hashed/Profiles.h"
#include "peers/IntrusiveProfiles.h"

namespace {

using Maintenance::Profile::ProfileKey;

class Map : public Bench::IntrusiveProfiles {
public:
  using Holder = std::unique_ptr<Entity>;

  static const auto& pool(std::size_t size) { return Bench::profilePool(size); }
  static Holder make(const ProfileKey& key) { return std::make_unique<Entity>(key); }
  static bool mark(const Entity& entity) { return Bench::profileMark(entity.key()); }

  void insert(const Holder& holder) { IntrusiveProfiles::insert(*holder); }
  std::size_t sum() const {
    std::size_t all = 0;
    for (const Entity& entity : *this) {
      all += mark(entity);
    }
    return all;
  }
};

} // namespace

void Bench::registerAll() { profileOperations<Map>(); }
