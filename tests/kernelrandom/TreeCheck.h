#pragma once

#include <Zel/RbTreeMap>

#include <gtest/gtest.h>

#include <vector>

namespace KernelRandom {

/// The entries of a tree in order, found by a walk over its nodes alone. Fails the test unless it
/// is a red-black tree with right parent links.
template <class Map>
class TreeCheck {
  using Entry = typename Map::EntryType;

public:
  explicit TreeCheck(const Map& map) {
    const auto& root = map.root();
    if (root) {
      EXPECT_EQ(nodeOf(root.ptr()).state, Zel::RbTreeNode::black);
    }
    blacks(root.ptr(), nullptr);
    EXPECT_EQ(entries_.size(), map.count());
  }

  const std::vector<const Entry*>& entries() const { return entries_; }

private:
  static const Zel::RbTreeNode& nodeOf(const Zel::PtrInterface* entry) {
    return Map::node(static_cast<unsigned>(Zel::memberOffset(Entry::zelNode())), entry);
  }

  /// Black entries on each way down from `entry`. A tree of a million is forty deep.
  unsigned blacks(const Zel::PtrInterface* entry, const Zel::RbTreeNode* parent) {
    if (entry == nullptr) {
      return 0;
    }
    const Zel::RbTreeNode& node = nodeOf(entry);
    EXPECT_EQ(node.parent, parent);
    const bool red = node.state == Zel::RbTreeNode::red;
    EXPECT_TRUE(red || node.state == Zel::RbTreeNode::black);
    EXPECT_FALSE(red && parent != nullptr && parent->state == Zel::RbTreeNode::red);
    const unsigned left = blacks(node.left.ptr(), &node);
    entries_.push_back(static_cast<const Entry*>(entry));
    const unsigned right = blacks(node.right.ptr(), &node);
    EXPECT_EQ(left, right);
    return left + (red ? 0 : 1);
  }

  std::vector<const Entry*> entries_;
};

} // namespace KernelRandom
