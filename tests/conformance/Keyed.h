#pragma once

#include "Subject.h"

#include <gtest/gtest.h>

namespace Conformance {

/// Collections of plain values: keyed, ordered and with their own key, told and silent.
class Keyed : public testing::TestWithParam<Case> {
protected:
  /// One key with two values that differ, neither of which need be the type's default.
  struct Entry {
    AnyValue key;
    AnyValue value;
    AnyValue other;
  };

  Keyed() {
    if (subject().listen) {
      first = subject().listen(object);
      second = subject().listen(object);
    }
  }

  const Subject& subject() const { return *GetParam().subject; }
  const Zel::AttrRow& row() const { return *GetParam().row; }
  const Zel::CollectionOps& ops() const { return *row().collection; }
  unsigned version() const {
    return object.entity != nullptr ? object.entity->versionCounter() : 0;
  }
  unsigned reads() const { return object.entity != nullptr ? object.entity->readCounter() : 0; }
  unsigned one() const { return object.entity != nullptr ? 1 : 0; }
  bool silent() const { return (row().options & Zel::silent) != 0; }

  AnyValue read(const AnyValue& key) const {
    return AnyValue(*row().value, [&](void* to) { ops().read(object.at(), key.at(), to); });
  }
  void write(const AnyValue& key, const AnyValue& value) {
    ops().write(object.at(), key.at(), value.at());
  }

  /// The sample keys in ascending order, each with values.
  std::vector<Entry> entries() const {
    const std::vector<AnyValue>& values = samplesOf(*row().value);
    std::vector<Entry> all;
    if (const auto& keyOf = GetParam().typed().keyOfValue) {
      for (std::size_t i = 0; i + 1 < values.size(); i += 2) {
        EXPECT_EQ(keyOf(values[i]), keyOf(values[i + 1]));
        all.push_back({keyOf(values[i]), values[i], values[i + 1]});
      }
      return all;
    }
    for (const AnyValue& key : samplesOf(*row().key)) {
      all.push_back({key, values[1], values[0]});
    }
    return all;
  }

  /// What is heard of keys by each notifiee, since the last look.
  std::vector<AnyValue> heardKeys() {
    std::vector<AnyValue> keys;
    if (first.log == nullptr) {
      return keys;
    }
    for (const Heard& heard : first.log->heard) {
      EXPECT_EQ(heard.id, row().id);
      EXPECT_TRUE(heard.key.has_value());
      keys.push_back(heard.key.value());
    }
    EXPECT_EQ(second.log->heard.size(), keys.size());
    first.log->heard.clear();
    second.log->heard.clear();
    return keys;
  }

  /// The same where it must be this one key, or nothing on a silent collection.
  void expectTold(const AnyValue& key) {
    EXPECT_EQ(heardKeys(), silent() ? std::vector<AnyValue>() : std::vector{key});
  }

  const Object object = subject().make();
  Listener first{nullptr, nullptr};
  Listener second{nullptr, nullptr};
};

inline bool isOfPlainValues(const Zel::AttrRow& row) {
  return row.isCollection() && row.kind != Zel::AttrKind::instantiating;
}

} // namespace Conformance
