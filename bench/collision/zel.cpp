#include "collision/Names.h"

#include <model/Profile.h>

namespace {

using namespace Maintenance::Profile;

class Directory {
public:
  void insertNew(const ProfileKey& key) { directory_->newConfig(key); }
  Zel::Ptr<Config> member(const ProfileKey& key) const { return directory_->config(key); }
  void erase(const ProfileKey& key) { directory_->configDel(key); }

private:
  Zel::Ptr<ConfigDir> directory_ = configDirFactory("profiles");
};

} // namespace

void Bench::registerAll() { collisionOperations<Directory>(); }
