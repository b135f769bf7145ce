#pragma once

#include "Scope.h"

#include <nlohmann/json_fwd.hpp>

#include <functional>
#include <map>
#include <memory>

namespace Maintctl {

/// Hears of every change below an entity that a scope holds, whatever the types are, and tells it
/// as it happens. What cannot be in any scope is not listened to; of all else it keeps the values,
/// as who is told of a change wants to know from what.
class WatchedTree {
public:
  /// Takes what happens. The values live for the call.
  class Teller {
  public:
    virtual bool wants(std::string_view path) const = 0;
    virtual bool isBehind(std::string_view path) const = 0;
    /// `old` is what was there before; null if nothing was.
    virtual void changed(const std::string& path, const Zel::ValueRecord& record, const void* value,
                         const void* old) = 0;
    virtual void added(const std::string& path) = 0;
    virtual void deleted(const std::string& path) = 0;
    virtual void deleted(const std::string& path, const Zel::ValueRecord& record,
                         const void* old) = 0;

  protected:
    ~Teller() = default;
  };

  /// `path` is the entity's.
  WatchedTree(Zel::Ptr<Zel::Entity> entity, std::string path, Teller& teller);
  WatchedTree(const WatchedTree&) = delete;
  WatchedTree& operator=(const WatchedTree&) = delete;
  ~WatchedTree();

private:
  class Node;

  const std::unique_ptr<Node> top_;
};

} // namespace Maintctl
