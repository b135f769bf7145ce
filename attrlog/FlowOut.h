#pragma once

#include <Zel/FlowOut>
#include <Zel/HashMap>
#include <Zel/RbTreeMap>

namespace Zel {

class EntityFlowOut;

/// The keys of one collection that a `FlowOut` owes, untyped. Presence counts, the bool does not.
class ZEL_API DirtyKeysGeneric {
public:
  DirtyKeysGeneric(const DirtyKeysGeneric&) = delete;
  DirtyKeysGeneric& operator=(const DirtyKeysGeneric&) = delete;

  AttributeId attr() const noexcept { return attr_; }
  DirtyKeysGeneric* next() const noexcept { return next_; }

  virtual void mark(const void* key, bool dirty) = 0;
  virtual bool del(const void* key) = 0;
  virtual bool empty() const = 0;
  /// Takes the first key out: constructs it at `to`. There must be one.
  virtual void takeFirst(void* to) = 0;

protected:
  DirtyKeysGeneric(EntityFlowOut& flowOut, AttributeId attr) noexcept;
  ~DirtyKeysGeneric() = default;

private:
  const AttributeId attr_;
  DirtyKeysGeneric* const next_;
};

/// What an entity's adapter owes: a bit for each attribute that flows, and keys for each
/// collection.
class ZEL_API EntityFlowOut : public NboAttrLog::FlowOut {
public:
  /// Attributes from `start` on are owed.
  EntityFlowOut(const Ptr<NboAttrLog::Out>& out, const Ptr<Entity::ZelNboAttrLogSa>& adapter,
                const ConnectDesc& connect, bool flag, AttributeId start);

  bool hasDirtyAttributes() const override;

  /// The table of a collection.
  DirtyKeysGeneric& dirtyKeys(AttributeId attr) const noexcept;

protected:
  ~EntityFlowOut() override;

  void zelBitIs(AttributeId attr, bool set) noexcept { bitIs(*plan_.step(attr), set); }

  /// A word of bits, as the prescribed setters of a type know it.
  class Bits {
  public:
    explicit Bits(EntityFlowOut& flowOut) noexcept : flowOut_(flowOut) {}

  protected:
    void is(AttributeId attr, bool set) noexcept { flowOut_.zelBitIs(attr, set); }
    unsigned wordOf(unsigned number) const noexcept { return flowOut_.bits(number); }

  private:
    EntityFlowOut& flowOut_;
  };

private:
  friend class DirtyKeysGeneric;

  const FlowPlan& plan_;
  DirtyKeysGeneric* dirtyKeys_ = nullptr;
};

inline DirtyKeysGeneric::DirtyKeysGeneric(EntityFlowOut& flowOut, AttributeId attr) noexcept
    : attr_(attr), next_(flowOut.dirtyKeys_) {
  flowOut.dirtyKeys_ = this;
}

/// The keys of one collection, in a map of entries `Entry`. A key that equals nothing is kept once.
template <class Map>
class DirtyKeys final : public DirtyKeysGeneric {
  using Entry = typename Map::EntryType;
  using Key = typename Map::KeyType;

public:
  DirtyKeys(EntityFlowOut& flowOut, AttributeId attr) noexcept : DirtyKeysGeneric(flowOut, attr) {}

  const Map& map() const noexcept { return map_; }

  void is(const Key& key, bool dirty) {
    if (!(key == key)) {
      if (hasUnordered_) {
        return;
      }
      hasUnordered_ = true;
    } else if (Entry* const entry = map_[key]) {
      entry->zelValueIs(dirty);
      return;
    }
    add(key, dirty);
  }

  Ptr<Entry> add(const Key& key, bool dirty) {
    auto entry = makeObject<Entry>(key, dirty);
    if constexpr (std::derived_from<Map, HashMapGeneric>) {
      map_.newMemberG(entry, &entry->zelKey());
    } else {
      map_.newMember(entry);
    }
    return entry;
  }

  bool del(const Key& key) { return static_cast<bool>(map_.deleteKey(key)); }
  /// The key under the iterator; nothing happens at its end.
  bool del(const typename Map::Iterator& at) {
    const auto entry = at.ptr();
    return entry && del(entry->zelKey());
  }

  void mark(const void* key, bool dirty) override { is(*static_cast<const Key*>(key), dirty); }
  bool del(const void* key) override { return del(*static_cast<const Key*>(key)); }
  bool empty() const override { return map_.count() == 0; }
  void takeFirst(void* to) override {
    const Ptr<Entry> entry = typename Map::Iterator(map_).ptr();
    map_.deleteMember(entry);
    if (!(entry->zelKey() == entry->zelKey())) {
      hasUnordered_ = false;
    }
    new (to) Key(entry->zelKey());
  }

private:
  Map map_;
  bool hasUnordered_ = false;
};

} // namespace Zel
