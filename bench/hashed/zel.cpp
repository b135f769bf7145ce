#include "hashed/Profiles.h"

#include <model/Profile.h>

namespace {

using namespace Maintenance::Profile;

/// The map alone, below a directory's own steps.
class Map {
public:
  using Holder = Zel::Ptr<Config>;

  static const auto& pool(std::size_t size) { return Bench::profilePool(size); }
  static Holder make(const ProfileKey& key) { return Zel::makeObject<Config>(key); }
  static bool mark(const Config& config) { return Bench::profileMark(config.zelKey()); }

  void insert(const Holder& config) { map_.newMemberG(config, &config->zelKey()); }
  void insertNew(const ProfileKey& key) { insert(make(key)); }
  void erase(const ProfileKey& key) { map_.deleteKey(key); }
  unsigned count() const { return map_.count(); }

  const Config* find(const ProfileKey& key) const { return map_[key]; }
  std::size_t sum() const {
    std::size_t all = 0;
    for (ConfigDir::ConfigMap::IteratorConst at(map_); at; at.advance()) {
      all += mark(*at);
    }
    return all;
  }

private:
  ConfigDir::ConfigMap map_;
};

class Directory {
public:
  static const auto& pool(std::size_t size) { return Bench::profilePool(size); }
  static bool mark(const Config& config) { return Map::mark(config); }
  void insertNew(const ProfileKey& key) { directory_->newConfig(key); }
  Zel::Ptr<Config> member(const ProfileKey& key) const { return directory_->config(key); }

private:
  Zel::Ptr<ConfigDir> directory_ = configDirFactory("profiles");
};

} // namespace

void Bench::registerAll() { profileOperations<Map, Directory>(); }
