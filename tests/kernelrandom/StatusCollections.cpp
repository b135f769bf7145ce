#include "HashModel.h"
#include "Random.h"
#include "TreeCheck.h"

#include <model/Unit/Status.h>

#include <gtest/gtest.h>

#include <map>
#include <string>

namespace {

using namespace KernelRandom;
using Group::GroupKey;
using Maintenance::Unit::Status;
using Maintenance::Unit::statusFactory;

struct Recorder : Status::Notifiee {
  using Status::Notifiee::onGroup;
  using Status::Notifiee::onHistory;
  void onGroup(const GroupKey& key) override { groups.push_back(key); }
  void onHistory(const double& time) override { times.push_back(time); }
  std::vector<GroupKey> groups;
  std::vector<double> times;
};

Zel::Ptr<Recorder> recorderOf(const Zel::Ptr<Status>& unit) {
  auto recorder = Zel::makeObject<Recorder>();
  recorder->isRegisteredNotifieeIs(true);
  recorder->notifierIs(unit);
  return recorder;
}

Zel::String8 textOf(unsigned number) { return Zel::String8(std::to_string(number)); }

TEST(StatusCollections, GroupsKeepValuesCountersAndNotificationsInOrder) {
  for (std::uint64_t seed = 1; seed <= 6; ++seed) {
    SCOPED_TRACE(testing::Message() << "seed " << seed);
    Random random(seed);
    const auto unit = statusFactory("unit");
    const auto recorder = recorderOf(unit);
    HashModel<GroupKey> order;
    std::map<GroupKey, bool> values;
    std::vector<GroupKey> told;
    unsigned version = 0;
    unsigned reads = 0;
    const auto changed = [&](const GroupKey& key) {
      ++version;
      told.push_back(key);
    };
    const auto removed = [&](const GroupKey& key) {
      order.erase(key);
      values.erase(key);
      changed(key);
    };
    const auto stored = [&](const GroupKey& key) { return values.contains(key) && values[key]; };

    for (unsigned i = 0; i < scaled(40'000); ++i) {
      const GroupKey key(static_cast<Group::GroupType>(random.below(3)),
                         textOf(random.below(seed % 2 != 0 ? 40 : 400)));
      const bool value = random.oneIn(2);
      switch (random.below(8)) {
      case 0:
      case 1:
      case 2:
        if (order.insert(key) || values[key] != value) {
          values[key] = value;
          changed(key);
        }
        unit->groupIs(key, value);
        break;
      case 3:
        if (order.insert(key)) {
          values[key] = value;
          ASSERT_EQ(unit->newGroup(key, value)->references(), 2U);
        } else {
          ASSERT_THROW(unit->newGroup(key, value), Zel::NameInUseException);
        }
        break;
      case 4:
      case 5: {
        const bool was = stored(key);
        if (order.has(key)) {
          removed(key);
        }
        ASSERT_EQ(unit->groupDel(key), was);
        break;
      }
      case 6:
        ++reads;
        ASSERT_EQ(unit->group(key), stored(key));
        break;
      default:
        // A walk over a few from the key on that deletes some.
        Status::GroupMap::Iterator at(unit->groupMap(), key);
        auto expected = order.from(key);
        for (unsigned steps = random.below(6); steps > 0 && at; --steps) {
          const GroupKey under = at->zelKey();
          ASSERT_EQ(under, expected->first.second);
          if (random.oneIn(3)) {
            const bool was = stored(under);
            removed(under);
            ASSERT_EQ(unit->groupDel(at), was);
            ASSERT_FALSE(unit->groupDel(at)); // has left already
          }
          at.advance();
          expected = order.after(HashModel<GroupKey>::place(under));
          ASSERT_EQ(static_cast<bool>(at), expected != order.members().end());
        }
      }
      ASSERT_EQ(unit->versionCounter(), version) << i;
      ASSERT_EQ(unit->readCounter(), reads) << i;
      ASSERT_EQ(unit->groupMap().mapVersion(), order.version()) << i;
      ASSERT_EQ(unit->groupMap().count(), order.count()) << i;
      ASSERT_EQ(recorder->groups, told) << i;
      recorder->groups.clear();
      told.clear();
    }
    for (const auto& [place, links] : order.members()) {
      changed(place.second);
    }
    unit->groupDelAll();
    ASSERT_EQ(recorder->groups, told);
    ASSERT_EQ(unit->versionCounter(), version);
    ASSERT_EQ(unit->groupMap().count(), 0U);
  }
}

TEST(StatusCollections, HistoryKeepsTextsBalanceCountersAndNotificationsInOrder) {
  for (std::uint64_t seed = 1; seed <= 6; ++seed) {
    SCOPED_TRACE(testing::Message() << "seed " << seed);
    Random random(seed);
    const auto unit = statusFactory("unit");
    const auto recorder = recorderOf(unit);
    std::map<double, Zel::String8> texts;
    std::vector<double> told;
    unsigned version = 0;
    unsigned treeVersion = 1;
    unsigned reads = 0;
    const auto removed = [&](double time) {
      texts.erase(time);
      ++treeVersion;
      ++version;
      told.push_back(time);
    };
    const auto stored = [&](double time) {
      const auto at = texts.find(time);
      return at != texts.end() ? at->second : Zel::String8();
    };

    for (unsigned i = 0; i < scaled(40'000); ++i) {
      const double time = (random.below(seed % 2 != 0 ? 60 : 600) - 20.0) / 4;
      const auto text = textOf(random.below(3));
      switch (random.below(8)) {
      case 0:
      case 1:
      case 2:
        if (!texts.contains(time) || !(texts[time] == text)) {
          treeVersion += texts.contains(time) ? 0 : 1;
          texts[time] = text;
          ++version;
          told.push_back(time);
        }
        unit->historyIs(time, text);
        break;
      case 3:
        texts[time] = text;
        ++treeVersion;
        ASSERT_EQ(unit->newHistory(time, text)->references(), 2U);
        break;
      case 4:
      case 5: {
        const auto was = stored(time);
        if (texts.contains(time)) {
          removed(time);
        }
        ASSERT_EQ(unit->historyDel(time), was);
        break;
      }
      case 6:
        ++reads;
        ASSERT_EQ(unit->history(time), stored(time));
        break;
      default:
        Status::HistoryMap::Iterator at(unit->historyMap(), time);
        auto expected = texts.lower_bound(time);
        for (unsigned steps = random.below(6); steps > 0 && at; --steps) {
          const double under = at->zelKey();
          ASSERT_EQ(under, expected->first);
          if (random.oneIn(3)) {
            const auto was = stored(under);
            removed(under);
            ASSERT_EQ(unit->historyDel(at), was);
            ASSERT_EQ(unit->historyDel(at), Zel::String8()); // has left already
          }
          at.advance();
          expected = texts.upper_bound(under);
          ASSERT_EQ(static_cast<bool>(at), expected != texts.end());
        }
      }
      ASSERT_EQ(unit->versionCounter(), version) << i;
      ASSERT_EQ(unit->readCounter(), reads) << i;
      ASSERT_EQ(unit->historyMap().treeVersion(), treeVersion) << i;
      ASSERT_EQ(recorder->times, told) << i;
      recorder->times.clear();
      told.clear();
      if (i % 512 == 0) {
        auto expected = texts.begin();
        const TreeCheck<Status::HistoryMap> tree(unit->historyMap());
        for (const auto* const entry : tree.entries()) {
          ASSERT_EQ(entry->zelKey(), expected->first);
          ASSERT_EQ(entry->zelValue(), (expected++)->second);
        }
        ASSERT_FALSE(HasFailure());
      }
    }
    for (const auto& [time, text] : texts) {
      told.push_back(time);
    }
    version += static_cast<unsigned>(texts.size());
    unit->historyDelAll();
    ASSERT_EQ(recorder->times, told);
    ASSERT_EQ(unit->versionCounter(), version);
    ASSERT_EQ(unit->historyMap().count(), 0U);
  }
}

} // namespace
