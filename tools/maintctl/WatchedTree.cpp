#include "WatchedTree.h"

#include "Tree.h"
#include "Values.h"

#include <Zel/GenericIf>
#include <Zel/ZelType>

namespace Maintctl {

using Zel::AttrKind;
using Zel::AttrRow;
using Zel::Entity;
using Zel::GenericIf;
using Zel::GenericIfEntity;
using Zel::Ptr;

/// An entity that is listened to, and its members that are.
class WatchedTree::Node final : public GenericIfEntity::Listener {
public:
  Node(Ptr<Entity> entity, std::string path, Teller& teller)
      : entity_(std::move(entity)), path_(std::move(path)), teller_(teller),
        object_(
            entity_->fwkType()->genericIf(static_cast<Zel::PtrInterface*>(entity_.ptr()), true)) {
    dynamic_cast<GenericIfEntity&>(*object_).listenerIs(this);
    for (const AttrRow* const row : rowsOf(*entity_)) {
      if (concerns(pathOf(*row))) {
        take(*row);
      }
    }
  }
  Node(const Node&) = delete;
  Node& operator=(const Node&) = delete;
  ~Node() { dynamic_cast<GenericIfEntity&>(*object_).listenerIs(nullptr); }

  void onAttribute(GenericIfEntity& /*object*/, Zel::AttributeId id) override {
    const AttrRow* const row = rowOf(id);
    if (row != nullptr && !row->isCollection() && teller_.wants(pathOf(*row))) {
      Zel::ValueSlot value(*row->value, [&](void* to) { row->read(entity_.ptr(), to); });
      changed(pathOf(*row), *row->value, value.at());
    }
  }

  void onAttribute(GenericIfEntity& /*object*/, Zel::AttributeId id,
                   const Ptr<const GenericIf>& key) override {
    const AttrRow* const row = rowOf(id);
    if (row == nullptr) {
      return;
    }
    const void* const raw = key->voidPtrIs(Ptr<const Zel::ZelType>(row->key->type()));
    const std::string segment = segmentOf(*row->key, raw);
    const std::string path = pathOf(*row) + "/" + segment;
    if (!concerns(path)) {
      return;
    }
    if (row->kind == AttrKind::instantiating) {
      member(*row, segment, path, raw);
    } else if (row->collection->exists(entity_.ptr(), raw)) {
      Zel::ValueSlot value(*row->value,
                           [&](void* to) { row->collection->read(entity_.ptr(), raw, to); });
      changed(path, *row->value, value.at());
    } else if (const auto old = values_.extract(path)) {
      teller_.deleted(path, *row->value, old.mapped().at());
    } else {
      teller_.deleted(path);
    }
  }

private:
  const AttrRow* rowOf(Zel::AttributeId id) const {
    for (const AttrRow* const row : rowsOf(*entity_)) {
      if (row->id == id) {
        return row;
      }
    }
    return nullptr;
  }

  std::string pathOf(const AttrRow& row) const { return path_ + "/" + std::string(row.name); }
  bool concerns(std::string_view path) const {
    return teller_.wants(path) || teller_.isBehind(path);
  }

  /// What is there at first.
  void take(const AttrRow& row) {
    if (!row.isCollection()) {
      Zel::ValueSlot value(*row.value, [&](void* to) { row.read(entity_.ptr(), to); });
      keep(pathOf(row), *row.value, value.at());
      return;
    }
    for (const Item& item : itemsOf(*entity_, row)) {
      if (row.kind == AttrKind::instantiating) {
        memberIs(row, item.segment, Zel::ptrCast<Entity>(item.held));
      } else {
        keep(pathOf(row) + "/" + item.segment, *row.value,
             row.collection->entryValue(item.held.ptr()));
      }
    }
  }

  void keep(const std::string& path, const Zel::ValueRecord& record, const void* value) {
    if (teller_.wants(path)) {
      values_.try_emplace(path, record, [&](void* at) { record.copy(at, value); });
    }
  }

  void changed(const std::string& path, const Zel::ValueRecord& record, const void* value) {
    const auto old = values_.find(path);
    if (old == values_.end()) {
      teller_.changed(path, record, value, nullptr);
      keep(path, record, value);
    } else {
      teller_.changed(path, record, value, old->second.at());
      record.assign(old->second.at(), value);
    }
  }

  /// A member has come or gone, or been told of again.
  void member(const AttrRow& row, const std::string& segment, const std::string& path,
              const void* key) {
    const auto known = members_.find(path);
    const Ptr<Entity> now =
        Zel::ptrCast<Entity>(Ptr<Zel::PtrInterface>(row.collection->entry(entity_.ptr(), key)));
    if (known != members_.end()) {
      if (known->second->entity_ == now) {
        return;
      }
      members_.erase(known);
      teller_.deleted(path);
    }
    if (now) {
      teller_.added(path);
      memberIs(row, segment, now);
    }
  }

  void memberIs(const AttrRow& row, const std::string& segment, const Ptr<Entity>& member) {
    const std::string path = pathOf(row) + "/" + segment;
    if (member && concerns(path)) {
      members_.emplace(path, std::make_unique<Node>(member, path, teller_));
    }
  }

  const Ptr<Entity> entity_;
  const std::string path_;
  Teller& teller_;
  const Ptr<GenericIf> object_;
  std::map<std::string, std::unique_ptr<Node>> members_;
  std::map<std::string, Zel::ValueSlot> values_; // by their paths, as they were told of last
};

WatchedTree::WatchedTree(Ptr<Entity> entity, std::string path, Teller& teller)
    : top_(std::make_unique<Node>(std::move(entity), std::move(path), teller)) {}

WatchedTree::~WatchedTree() = default;

} // namespace Maintctl
