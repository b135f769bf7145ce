#pragma once

#include "Device.h"

#include <Zel/TypeTable>

#include <string>
#include <string_view>
#include <vector>

namespace Maintctl {

/// What a path names by the types alone, whether it is there or not yet: in full, each key as it is
/// printed.
class Scope {
public:
  /// The types of the roots come from the device. Throws `Failure` with `exitNotFound` if there can
  /// be nothing under the path.
  Scope(Device& device, const std::string& typed);

  /// The root; empty at the top, which is above all of them.
  const Zel::Name& root() const noexcept { return root_; }
  const std::string& path() const noexcept { return path_; }
  /// The attribute or the collection that the path ends in, or that the key at its end is of. Null
  /// if the path is a root's.
  const Zel::AttrRow* row() const noexcept { return row_; }
  /// Whether the path is that of one value.
  bool isValue() const noexcept {
    return row_ != nullptr &&
           (row_->isCollection() ? hasKey_ && row_->kind != Zel::AttrKind::instantiating : true);
  }
  /// Whether a path that is printed is the scope's or below it.
  bool holds(std::string_view path) const { return isBelow(path, path_); }
  /// Whether it is on the way to it.
  bool isBehind(std::string_view path) const { return isBelow(path_, path); }

private:
  static bool isBelow(std::string_view path, std::string_view above) {
    return above == "/" || (path.substr(0, above.size()) == above &&
                            (path.size() == above.size() || path[above.size()] == '/'));
  }

  void follow(const Zel::TypeTable* table, const std::vector<std::string_view>& segments);

  Zel::Name root_;
  std::string path_ = "/";
  const Zel::AttrRow* row_ = nullptr;
  bool hasKey_ = false; // of the collection
};

} // namespace Maintctl
