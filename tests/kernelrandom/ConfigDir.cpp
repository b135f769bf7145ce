#include "HashModel.h"
#include "Random.h"

#include <Zel/Exception>
#include <model/Profile/ConfigDir.h>

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

namespace {

using namespace KernelRandom;
using namespace Maintenance::Profile;

struct Recorder : ConfigDir::Notifiee {
  using ConfigDir::Notifiee::onConfig;
  void onConfig(const ProfileKey& key) override { heard.push_back(key); }
  std::vector<ProfileKey> heard;
};

/// A directory against its model, through the operations of clients.
class DirectoryRun {
public:
  DirectoryRun(std::uint64_t seed, unsigned names) : random_(seed), names_(names) {
    recorder_->isRegisteredNotifieeIs(true);
    recorder_->notifierIs(dir_);
  }

  void step() {
    const auto key = keyOf();
    const unsigned choice = random_.below(100);
    if (choice < 25) {
      const Zel::Ptr<Config> known = held(key);
      const Zel::Ptr<Config> member = dir_->configIs(key);
      if (known) {
        ASSERT_EQ(member, known);
      } else {
        model_.insert(key);
        tell(key);
      }
      ++version_;
      came(member);
    } else if (choice < 32) {
      if (model_.insert(key)) {
        came(dir_->newConfig(key));
      } else {
        ASSERT_THROW(dir_->newConfig(key), Zel::NameInUseException);
      }
    } else if (choice < 52) {
      gone(key, dir_->configDel(key));
    } else if (choice < 62) {
      ++reads_;
      ASSERT_EQ(dir_->config(key), held(key));
      ASSERT_EQ(static_cast<bool>(held(key)), model_.has(key));
    } else if (choice < 64) {
      dir_->configNotify(key);
      tell(key);
    } else if (random_.oneIn(300)) {
      deleteAll();
    } else {
      walk(key);
    }
    ASSERT_EQ(dir_->versionCounter(), version_);
    ASSERT_EQ(dir_->readCounter(), reads_);
    ASSERT_EQ(dir_->configMap().count(), model_.count());
    ASSERT_EQ(dir_->configMap().mapVersion(), model_.version());
    ASSERT_EQ(recorder_->heard, told_);
    recorder_->heard.clear();
    told_.clear();
  }

  void check() {
    auto expected = model_.members().begin();
    for (ConfigDir::ConfigMap::IteratorConst at(dir_->configMap()); at; at.advance(), ++expected) {
      ASSERT_EQ(at->zelKey(), expected->first.second);
      ASSERT_EQ(at->versionCounter(), expected->second);
      ASSERT_EQ(at->parent().ptr(), dir_.ptr());
      const bool isUnder = at_.ptr() == at.ptr();
      // The map's, the loop's, this test's, and that of the iterator that lives on.
      ASSERT_EQ(at->references(), isUnder ? 4U : 3U);
    }
    ASSERT_EQ(expected, model_.members().end());
  }

private:
  ProfileKey keyOf() {
    return {static_cast<ProfileType>(random_.below(4)),
            Zel::String8(std::to_string(random_.below(names_)))};
  }
  Zel::Ptr<Config> held(const ProfileKey& key) const {
    const auto at = members_.find(key);
    return at != members_.end() ? at->second : nullptr;
  }
  void tell(const ProfileKey& key) { told_.push_back(key); }

  void came(const Zel::Ptr<Config>& member) {
    ASSERT_EQ(member->parent().ptr(), dir_.ptr());
    ASSERT_EQ(member->parentAttrId(), ConfigDir::Attr::config);
    members_[member->zelKey()] = member;
  }

  void gone(const ProfileKey& key, const Zel::Ptr<Config>& member) {
    ASSERT_EQ(member, held(key));
    if (member) {
      ASSERT_EQ(member->versionCounter(), model_.erase(key));
      ASSERT_EQ(member->parent(), nullptr);
      ++version_;
      tell(key);
      members_.erase(key);
    }
  }

  void deleteAll() {
    for (const auto& [place, links] : model_.members()) {
      tell(place.second);
      ++version_;
    }
    dir_->configDelAll();
    while (model_.count() != 0) {
      model_.erase(model_.members().begin()->first.second);
    }
    for (const auto& [key, member] : members_) {
      ASSERT_EQ(member->parent(), nullptr);
    }
    members_.clear();
  }

  void walk(const ProfileKey& key) {
    const unsigned choice = random_.below(8);
    if (choice == 0) {
      at_ = ConfigDir::ConfigMap::Iterator(dir_->configMap());
      stands(model_.members().begin());
    } else if (choice == 1) {
      at_ = ConfigDir::ConfigMap::Iterator(dir_->configMap(), key);
      stands(model_.from(key));
    } else if (at_) {
      if (choice < 4) {
        // Of a member that has left already, or one whose key has come back, nothing is deleted.
        const ProfileKey under = at_->zelKey();
        const bool isIn = held(under) == at_.ptr();
        const auto member = dir_->configDel(at_);
        ASSERT_EQ(static_cast<bool>(member), isIn);
        if (isIn) {
          gone(under, member);
        }
      }
      const auto next = model_.after(HashModel<ProfileKey>::place(at_->zelKey()));
      at_.advance();
      stands(next);
    } else {
      ASSERT_EQ(dir_->configDel(at_), nullptr);
    }
  }

  void stands(HashModel<ProfileKey>::Members::const_iterator expected) {
    ASSERT_EQ(static_cast<bool>(at_), expected != model_.members().end());
    if (at_) {
      ASSERT_EQ(at_->zelKey(), expected->first.second);
      ASSERT_EQ(at_.ptr(), held(at_->zelKey()));
    }
  }

  Random random_;
  const unsigned names_;
  const Zel::Ptr<ConfigDir> dir_ = configDirFactory("profiles");
  const Zel::Ptr<Recorder> recorder_ = Zel::makeObject<Recorder>();
  HashModel<ProfileKey> model_;
  std::map<ProfileKey, Zel::Ptr<Config>> members_;
  std::vector<ProfileKey> told_;
  ConfigDir::ConfigMap::Iterator at_;
  unsigned version_ = 0;
  unsigned reads_ = 0;
};

class ConfigDirHistories : public testing::TestWithParam<unsigned> {};

TEST_P(ConfigDirHistories, KeepMembersCountersLinksAndNotifications) {
  for (std::uint64_t seed = 1; seed <= 4; ++seed) {
    SCOPED_TRACE(testing::Message() << "seed " << seed << " names " << GetParam());
    DirectoryRun run(seed, GetParam());
    for (unsigned i = 0; i < scaled(40'000); ++i) {
      ASSERT_NO_FATAL_FAILURE(run.step()) << i;
      if (i % 512 == 0) {
        ASSERT_NO_FATAL_FAILURE(run.check()) << i;
      }
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Kernel, ConfigDirHistories, testing::Values(2U, 20U, 500U));

} // namespace
