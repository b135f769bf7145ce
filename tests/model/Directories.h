#pragma once

#include "Listeners.h"

#include <string>

namespace TestModel {

// The directories under common names, so that one set of tests does for all.

struct Profiles {
  using Dir = Maintenance::Profile::ConfigDir;
  using Member = Maintenance::Profile::Config;
  using Key = Maintenance::Profile::ProfileKey;
  using Map = Dir::ConfigMap;
  using Listener = ConfigDirListener;
  static constexpr const char* attribute = "config";
  static constexpr std::size_t allocations = 1; ///< of a member

  static Ptr<Dir> make(const char* name) { return Maintenance::Profile::configDirFactory(name); }
  static Key key(int number) {
    return Key(Maintenance::Profile::profileTypeBgp,
               Zel::String8(joined("k", std::to_string(number))));
  }
  static Key keyOf(const Member& member) { return member.key(); }
  static const Map& map(const Dir& dir) { return dir.configMap(); }

  static auto read(const Dir& dir, const Key& key) { return dir.config(key); }
  static auto add(Dir& dir, const Key& key) { return dir.newConfig(key); }
  static auto is(Dir& dir, const Key& key) { return dir.configIs(key); }
  static auto del(Dir& dir, const Key& key) { return dir.configDel(key); }
  static auto del(Dir& dir, Map::Iterator& at) { return dir.configDel(at); }
  static void delAll(Dir& dir) { dir.configDelAll(); }
  static void notify(Dir& dir, const Key& key) { dir.configNotify(key); }
};

struct Units {
  using Dir = Maintenance::Unit::StatusDir;
  using Member = Maintenance::Unit::Status;
  using Key = Zel::Name;
  using Map = Dir::StatusMap;
  using Listener = StatusDirListener;
  static constexpr const char* attribute = "status";
  static constexpr std::size_t allocations = 1; ///< of a member

  static Ptr<Dir> make(const char* name) { return Maintenance::Unit::statusDirFactory(name); }
  static Key key(int number) { return Zel::String8(joined("k", std::to_string(number))); }
  static Key keyOf(const Member& member) { return member.fwkKey(); }
  static const Map& map(const Dir& dir) { return dir.statusMap(); }

  static auto read(const Dir& dir, const Key& key) { return dir.status(key); }
  static auto add(Dir& dir, const Key& key) { return dir.newStatus(key); }
  static auto is(Dir& dir, const Key& key) { return dir.statusIs(key); }
  static auto del(Dir& dir, const Key& key) { return dir.statusDel(key); }
  static auto del(Dir& dir, Map::Iterator& at) { return dir.statusDel(at); }
  static void delAll(Dir& dir) { dir.statusDelAll(); }
  static void notify(Dir& dir, const Key& key) { dir.statusNotify(key); }
};

struct UnitConfigs {
  using Dir = Maintenance::Unit::ConfigDir;
  using Member = Maintenance::Unit::Config;
  using Key = Zel::Name;
  using Map = Dir::ConfigMap;
  using Listener = UnitConfigDirListener;
  static constexpr const char* attribute = "config";
  static constexpr std::size_t allocations = 1; ///< of a member

  static Ptr<Dir> make(const char* name) { return Maintenance::Unit::configDirFactory(name); }
  static Key key(int number) { return Zel::String8(joined("k", std::to_string(number))); }
  static Key keyOf(const Member& member) { return member.fwkKey(); }
  static const Map& map(const Dir& dir) { return dir.configMap(); }

  static auto read(const Dir& dir, const Key& key) { return dir.config(key); }
  static auto add(Dir& dir, const Key& key) { return dir.newConfig(key); }
  static auto is(Dir& dir, const Key& key) { return dir.configIs(key); }
  static auto del(Dir& dir, const Key& key) { return dir.configDel(key); }
  static auto del(Dir& dir, Map::Iterator& at) { return dir.configDel(at); }
  static void delAll(Dir& dir) { dir.configDelAll(); }
  static void notify(Dir& dir, const Key& key) { dir.configNotify(key); }
};

struct MergedInputs {
  using Dir = Maintenance::Unit::MergedInputDir;
  using Member = Maintenance::Unit::MergedInput;
  using Key = Zel::Name;
  using Map = Dir::UnitMap;
  using Listener = MergedInputDirListener;
  static constexpr const char* attribute = "unit";
  static constexpr std::size_t allocations = 1; ///< of a member
  static constexpr auto priority = Maintenance::Unit::srcOnBootCli;

  static Ptr<Dir> make(const char* name) { return Maintenance::Unit::mergedInputDirFactory(name); }
  static Key key(int number) { return Zel::String8(joined("k", std::to_string(number))); }
  static Key keyOf(const Member& member) { return member.fwkKey(); }
  static const Map& map(const Dir& dir) { return dir.unitMap(); }

  static auto read(const Dir& dir, const Key& key) { return dir.unit(key); }
  static auto add(Dir& dir, const Key& key) { return dir.newUnit(key, priority); }
  static auto is(Dir& dir, const Key& key) { return dir.unitIs(key, priority); }
  static auto del(Dir& dir, const Key& key) { return dir.unitDel(key); }
  static auto del(Dir& dir, Map::Iterator& at) { return dir.unitDel(at); }
  static void delAll(Dir& dir) { dir.unitDelAll(); }
  static void notify(Dir& dir, const Key& key) { dir.unitNotify(key); }
};

struct GroupsOfUnits {
  using Dir = Maintenance::GroupToUnitDir;
  using Member = Maintenance::GroupToUnit;
  using Key = Group::GroupKey;
  using Map = Dir::GroupToUnitMap;
  using Listener = GroupToUnitDirListener;
  static constexpr const char* attribute = "groupToUnit";
  static constexpr std::size_t allocations = 1; ///< of a member

  static Ptr<Dir> make(const char* name) { return Maintenance::groupToUnitDirFactory(name); }
  static Key key(int number) {
    return Key(Group::groupTypeBgp, Zel::String8(joined("k", std::to_string(number))));
  }
  static Key keyOf(const Member& member) { return member.key(); }
  static const Map& map(const Dir& dir) { return dir.groupToUnitMap(); }

  static auto read(const Dir& dir, const Key& key) { return dir.groupToUnit(key); }
  static auto add(Dir& dir, const Key& key) { return dir.newGroupToUnit(key); }
  static auto is(Dir& dir, const Key& key) { return dir.groupToUnitIs(key); }
  static auto del(Dir& dir, const Key& key) { return dir.groupToUnitDel(key); }
  static auto del(Dir& dir, Map::Iterator& at) { return dir.groupToUnitDel(at); }
  static void delAll(Dir& dir) { dir.groupToUnitDelAll(); }
  static void notify(Dir& dir, const Key& key) { dir.groupToUnitNotify(key); }
};

struct MaintenanceGroups {
  using Dir = Maintenance::MaintenanceGroup::ConfigDir;
  using Member = Maintenance::MaintenanceGroup::Config;
  using Key = Group::GroupKey;
  using Map = Dir::MaintenanceGroupMap;
  using Listener = GroupDirListener;
  static constexpr const char* attribute = "maintenanceGroup";
  static constexpr std::size_t allocations = 2; ///< of a member, with its name

  static Ptr<Dir> make(const char* name) {
    return Maintenance::MaintenanceGroup::configDirFactory(name);
  }
  static Key key(int number) {
    return Key(Group::groupTypeBgp, Zel::String8(joined("k", std::to_string(number))));
  }
  static Key keyOf(const Member& member) { return member.key(); }
  static const Map& map(const Dir& dir) { return dir.maintenanceGroupMap(); }

  static auto read(const Dir& dir, const Key& key) { return dir.maintenanceGroup(key); }
  static auto add(Dir& dir, const Key& key) { return dir.newMaintenanceGroup(key); }
  static auto is(Dir& dir, const Key& key) { return dir.maintenanceGroupIs(key); }
  static auto del(Dir& dir, const Key& key) { return dir.maintenanceGroupDel(key); }
  static auto del(Dir& dir, Map::Iterator& at) { return dir.maintenanceGroupDel(at); }
  static void delAll(Dir& dir) { dir.maintenanceGroupDelAll(); }
  static void notify(Dir& dir, const Key& key) { dir.maintenanceGroupNotify(key); }
};

struct UnitProfiles {
  using Dir = MaintenanceUnitProfile::ConfigDir;
  using Member = MaintenanceUnitProfile::Config;
  using Key = Zel::String8;
  using Map = Dir::ConfigMap;
  using Listener = UnitProfileDirListener;
  static constexpr const char* attribute = "config";
  static constexpr std::size_t allocations = 1; ///< of a member

  static Ptr<Dir> make(const char* name) { return MaintenanceUnitProfile::configDirFactory(name); }
  static Key key(int number) { return Key(joined("k", std::to_string(number))); }
  static Key keyOf(const Member& member) { return member.profileName(); }
  static const Map& map(const Dir& dir) { return dir.configMap(); }

  static auto read(const Dir& dir, const Key& key) { return dir.config(key); }
  static auto add(Dir& dir, const Key& key) { return dir.newConfig(key); }
  static auto is(Dir& dir, const Key& key) { return dir.configIs(key); }
  static auto del(Dir& dir, const Key& key) { return dir.configDel(key); }
  static auto del(Dir& dir, Map::Iterator& at) { return dir.configDel(at); }
  static void delAll(Dir& dir) { dir.configDelAll(); }
  static void notify(Dir& dir, const Key& key) { dir.configNotify(key); }
};

struct DirectoryNames {
  /// The name of the directory's type without its punctuation.
  template <class D>
  static std::string GetName(int /*index*/) {
    std::string name(D::Dir::zelTypeName);
    std::erase(name, ':');
    return name;
  }
};
using AllDirectories = testing::Types<Profiles, Units, UnitConfigs, MergedInputs, GroupsOfUnits,
                                      MaintenanceGroups, UnitProfiles>;

template <class D>
struct Directory : testing::Test {
  using Key = typename D::Key;
  using Map = typename D::Map;

  static std::string heard(int number) { return joined("on ", textOf(D::key(number))); }

  Ptr<typename D::Listener> listener(std::string label = "") {
    return listen<typename D::Listener>(dir, log, std::move(label));
  }

  void fill(int count) {
    for (int number = 0; number < count; ++number) {
      D::is(*dir, D::key(number));
    }
  }

  /// What a notifiee hears when all members go, in the order of iteration.
  Log allHeard() const {
    Log all;
    for (typename Map::IteratorConst at(D::map(*dir)); at; at.advance()) {
      all.push_back(joined("on ", textOf(D::keyOf(*at))));
    }
    return all;
  }

  Ptr<typename D::Dir> dir = D::make("directory");
  Log log;
};

} // namespace TestModel
