#pragma once

#include <Zel/FlowOut>
#include <Zel/HashMap>
#include <Zel/RbTreeMap>

#include <optional>

namespace Zel {

class EntityFlowOut;

/// The keys of one collection that a `FlowOut` owes, untyped. Presence counts; the bool is false
/// for a member that the peer has to hear the deletion of, even if there is another under the key
/// since.
class ZEL_API DirtyKeysGeneric {
public:
  DirtyKeysGeneric(const DirtyKeysGeneric&) = delete;
  DirtyKeysGeneric& operator=(const DirtyKeysGeneric&) = delete;

  AttributeId attr() const noexcept { return attr_; }
  DirtyKeysGeneric* next() const noexcept { return next_; }

  /// The key is owed; with false, a deletion is, which stays so until the key is taken out: a
  /// member that is made again meanwhile is another one.
  /// Whether the key was not owed before.
  virtual bool mark(const void* key, bool dirty) = 0;
  virtual bool has(const void* key) const = 0;
  /// Whether a key is marked with a false.
  virtual bool isFalse(const void* key) const = 0;
  virtual bool del(const void* key) = 0;
  virtual bool empty() const = 0;
  virtual std::size_t count() const = 0;
  virtual void clear() = 0;
  /// Takes the first key out: constructs it at `to`, and yields its bool. There must be one.
  virtual bool takeFirst(void* to) = 0;

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

  /// The collection whose walk is over and whose end marker is owed; 0 if there is none.
  AttributeId endDeferred() const noexcept {
    return hasDataBit(dataBitEndDeferred) ? endDeferred_ : 0;
  }
  void endDeferredIs(AttributeId attr) {
    endDeferred_ = attr;
    dataBitIs(dataBitEndDeferred, attr != 0);
  }

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
  AttributeId endDeferred_ = 0;
  DirtyKeysGeneric* dirtyKeys_ = nullptr;
};

inline DirtyKeysGeneric::DirtyKeysGeneric(EntityFlowOut& flowOut, AttributeId attr) noexcept
    : attr_(attr), next_(flowOut.dirtyKeys_) {
  flowOut.dirtyKeys_ = this;
}

/// The keys of one collection, in a map. Of keys that equal nothing the last is kept, beside it.
template <class Map>
class DirtyKeys final : public DirtyKeysGeneric {
  using Entry = typename Map::EntryType;
  using Key = typename Map::KeyType;

public:
  DirtyKeys(EntityFlowOut& flowOut, AttributeId attr) noexcept : DirtyKeysGeneric(flowOut, attr) {}

  const Map& map() const noexcept { return map_; }

  /// Whether the key was not there before.
  bool is(const Key& key, bool dirty) {
    if (!(key == key)) {
      unordered_ = key;
    } else if (Entry* const entry = find(key)) {
      entry->zelValueIs(dirty);
      return false;
    } else {
      add(key, dirty);
    }
    return true;
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

  bool del(const Key& key) {
    if (!(key == key)) {
      const bool was = unordered_.has_value();
      unordered_.reset();
      return was;
    }
    return map_.count() != 0 && map_.deleteKey(key);
  }
  /// The key under the iterator; nothing happens at its end.
  bool del(const typename Map::Iterator& at) {
    const auto entry = at.ptr();
    return entry && del(entry->zelKey());
  }

  bool mark(const void* at, bool dirty) override {
    return is(*static_cast<const Key*>(at), dirty && !isFalse(at));
  }
  bool has(const void* at) const override {
    const Key& key = *static_cast<const Key*>(at);
    return key == key ? find(key) != nullptr : unordered_.has_value();
  }
  bool isFalse(const void* key) const override {
    const Entry* const entry = find(*static_cast<const Key*>(key));
    return entry != nullptr && !entry->zelValue();
  }
  bool del(const void* key) override { return del(*static_cast<const Key*>(key)); }
  bool empty() const override { return map_.count() == 0 && !unordered_; }
  std::size_t count() const override { return map_.count() + (unordered_ ? 1 : 0); }
  void clear() override {
    while (map_.count() != 0) {
      map_.deleteMember(typename Map::Iterator(map_).ptr());
    }
    unordered_.reset();
  }
  bool takeFirst(void* to) override {
    if (unordered_) {
      new (to) Key(*unordered_);
      unordered_.reset();
      return true;
    }
    const Ptr<Entry> entry = typename Map::Iterator(map_).ptr();
    map_.deleteMember(entry);
    new (to) Key(entry->zelKey());
    return entry->zelValue();
  }

private:
  /// A walk asks for each key, mostly of no marks at all: that takes no hash of the key.
  Entry* find(const Key& key) const noexcept { return map_.count() != 0 ? map_[key] : nullptr; }

  Map map_;
  std::optional<Key> unordered_;
};

} // namespace Zel
