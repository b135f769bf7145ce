#include <Zel/RbTreeMapGeneric>

#include <utility>

namespace Zel {

/// One operation's view of the tree. Handles are moved from link to link, so that rebalancing
/// touches no count.
class RbTreeMapGeneric::Balance {
public:
  Balance(RbTreeMapGeneric& tree, unsigned nodeOffset) noexcept
      : tree_(tree), offset_(nodeOffset) {}

  RbTreeNode* nodeOf(const Ptr<PtrInterface>& entry) const noexcept {
    return entry ? &node(offset_, entry.ptr()) : nullptr;
  }

  /// The link that holds a node: its parent's, or the root.
  Ptr<PtrInterface>& linkTo(const RbTreeNode* child) const noexcept {
    RbTreeNode* const parent = child->parent;
    if (parent == nullptr) {
      return tree_.root_;
    }
    return nodeOf(parent->left) == child ? parent->left : parent->right;
  }

  void afterInsertion(RbTreeNode* at) const noexcept {
    while (isRed(at->parent)) {
      RbTreeNode* parent = at->parent;
      RbTreeNode* const grandparent = parent->parent; // there is one: the root is black
      const bool left = nodeOf(grandparent->left) == parent;
      RbTreeNode* const uncle = nodeOf(left ? grandparent->right : grandparent->left);
      if (isRed(uncle)) {
        parent->state = uncle->state = RbTreeNode::black;
        grandparent->state = RbTreeNode::red;
        at = grandparent;
        continue;
      }
      if (at == nodeOf(left ? parent->right : parent->left)) {
        rotate(parent, left);
        parent = at;
      }
      parent->state = RbTreeNode::black;
      grandparent->state = RbTreeNode::red;
      rotate(grandparent, !left);
      break;
    }
    nodeOf(tree_.root_)->state = RbTreeNode::black;
  }

  /// `at`, which may be null, is a child of `parent` and one black short.
  void afterRemoval(RbTreeNode* at, RbTreeNode* parent) const noexcept {
    while (parent != nullptr && !isRed(at)) {
      const bool left = nodeOf(parent->left) == at;
      RbTreeNode* sibling = nodeOf(left ? parent->right : parent->left);
      if (isRed(sibling)) {
        sibling->state = RbTreeNode::black;
        parent->state = RbTreeNode::red;
        rotate(parent, left);
        sibling = nodeOf(left ? parent->right : parent->left);
      }
      RbTreeNode* const near = nodeOf(left ? sibling->left : sibling->right);
      RbTreeNode* far = nodeOf(left ? sibling->right : sibling->left);
      if (!isRed(near) && !isRed(far)) {
        sibling->state = RbTreeNode::red;
        at = parent;
        parent = at->parent;
        continue;
      }
      if (!isRed(far)) {
        near->state = RbTreeNode::black;
        sibling->state = RbTreeNode::red;
        rotate(sibling, !left);
        far = sibling;
        sibling = near;
      }
      sibling->state = parent->state;
      parent->state = far->state = RbTreeNode::black;
      rotate(parent, left);
      return;
    }
    if (at != nullptr) {
      at->state = RbTreeNode::black;
    }
  }

  static bool isRed(const RbTreeNode* at) noexcept {
    return at != nullptr && at->state == RbTreeNode::red;
  }

private:
  /// Turns the subtree at `top` to the left or to the right; there is a child to come up.
  void rotate(RbTreeNode* top, bool left) const noexcept {
    Ptr<PtrInterface>& holder = linkTo(top);
    Ptr<PtrInterface>& outer = left ? top->right : top->left;
    RbTreeNode* const riser = nodeOf(outer);
    Ptr<PtrInterface>& inner = left ? riser->left : riser->right;

    Ptr<PtrInterface> topEntry = std::move(holder);
    holder = std::move(outer);
    outer = std::move(inner);
    inner = std::move(topEntry);

    if (RbTreeNode* const moved = nodeOf(outer)) {
      moved->parent = top;
    }
    riser->parent = top->parent;
    top->parent = riser;
  }

  RbTreeMapGeneric& tree_;
  const unsigned offset_;
};

RbTreeMapGeneric::~RbTreeMapGeneric() = default;

void RbTreeMapGeneric::memberNewChild(unsigned nodeOffset, int /*option*/,
                                      const Ptr<PtrInterface>& parent,
                                      const Ptr<PtrInterface>& entry, bool left) noexcept {
  const Balance balance(*this, nodeOffset);
  RbTreeNode& fresh = node(nodeOffset, entry.ptr());
  fresh.state = RbTreeNode::red;
  fresh.parent = balance.nodeOf(parent);
  if (fresh.parent == nullptr) {
    root_ = entry;
  } else {
    (left ? fresh.parent->left : fresh.parent->right) = entry;
  }
  balance.afterInsertion(&fresh);
  ++count_;
  ++treeVersion_;
}

void RbTreeMapGeneric::memberReplace(unsigned nodeOffset, int /*option*/,
                                     const Ptr<PtrInterface>& former,
                                     const Ptr<PtrInterface>& entry) noexcept {
  const Balance balance(*this, nodeOffset);
  const Ptr<PtrInterface> kept = former;
  RbTreeNode& old = node(nodeOffset, former.ptr());
  RbTreeNode& fresh = node(nodeOffset, entry.ptr());
  balance.linkTo(&old) = entry;
  fresh.parent = std::exchange(old.parent, nullptr);
  fresh.left = std::move(old.left);
  fresh.right = std::move(old.right);
  fresh.state = std::exchange(old.state, RbTreeNode::unlinked);
  for (RbTreeNode* const child : {balance.nodeOf(fresh.left), balance.nodeOf(fresh.right)}) {
    if (child != nullptr) {
      child->parent = &fresh;
    }
  }
  ++treeVersion_;
}

void RbTreeMapGeneric::_memberDelG(unsigned nodeOffset, int /*option*/,
                                   const PtrInterface* entry) noexcept {
  const Balance balance(*this, nodeOffset);
  RbTreeNode& leaving = node(nodeOffset, entry);
  RbTreeNode* shortChild;
  RbTreeNode* shortParent;
  unsigned removedColour = leaving.state;
  Ptr<PtrInterface>& holder = balance.linkTo(&leaving);
  Ptr<PtrInterface> self = std::move(holder);

  if (leaving.left && leaving.right) {
    // The next entry in order, which has no left child, comes into the place of the leaving one.
    RbTreeNode* at = balance.nodeOf(leaving.right);
    while (at->left) {
      at = balance.nodeOf(at->left);
    }
    removedColour = at->state;
    shortChild = balance.nodeOf(at->right);
    if (at->parent == &leaving) {
      shortParent = at;
      holder = std::move(leaving.right);
    } else {
      shortParent = at->parent;
      holder = std::move(shortParent->left);
      shortParent->left = std::move(at->right);
      if (shortChild != nullptr) {
        shortChild->parent = shortParent;
      }
      at->right = std::move(leaving.right);
      balance.nodeOf(at->right)->parent = at;
    }
    at->left = std::move(leaving.left);
    balance.nodeOf(at->left)->parent = at;
    at->parent = leaving.parent;
    at->state = leaving.state;
  } else {
    shortParent = leaving.parent;
    holder = std::move(leaving.left ? leaving.left : leaving.right);
    shortChild = balance.nodeOf(holder);
    if (shortChild != nullptr) {
      shortChild->parent = shortParent;
    }
  }
  leaving.parent = nullptr;
  leaving.state = RbTreeNode::unlinked;
  if (removedColour == RbTreeNode::black) {
    balance.afterRemoval(shortChild, shortParent);
  }
  --count_;
  ++treeVersion_;
}

PtrInterface* RbTreeMapGeneric::successor(unsigned nodeOffset, const PtrInterface* entry) noexcept {
  const RbTreeNode* at = &node(nodeOffset, entry);
  if (at->right) {
    PtrInterface* next = at->right.ptr();
    while (PtrInterface* const left = node(nodeOffset, next).left.ptr()) {
      next = left;
    }
    return next;
  }
  const PtrInterface* from = entry;
  while (at->parent != nullptr) {
    const RbTreeNode* const parent = at->parent;
    auto* const parentEntry = reinterpret_cast<PtrInterface*>(
        const_cast<char*>(reinterpret_cast<const char*>(parent)) - nodeOffset);
    if (parent->left.ptr() == from) {
      return parentEntry;
    }
    at = parent;
    from = parentEntry;
  }
  return nullptr;
}

PtrInterface* RbTreeMapGeneric::leftmost(unsigned nodeOffset) const noexcept {
  PtrInterface* entry = root_.ptr();
  while (entry != nullptr) {
    PtrInterface* const left = node(nodeOffset, entry).left.ptr();
    if (left == nullptr) {
      break;
    }
    entry = left;
  }
  return entry;
}

void RbTreeMapGeneric::deleteAll(unsigned nodeOffset) noexcept {
  if (!root_) {
    return;
  }
  count_ = 0;
  ++treeVersion_;
  // Left children are turned up one by one until the spine runs to the right, from which entries
  // drop off at the top.
  Ptr<PtrInterface> top = std::move(root_);
  while (top) {
    RbTreeNode& at = node(nodeOffset, top.ptr());
    if (at.left) {
      Ptr<PtrInterface> riser = std::move(at.left);
      RbTreeNode& up = node(nodeOffset, riser.ptr());
      at.left = std::move(up.right);
      up.right = std::move(top);
      top = std::move(riser);
    } else {
      at.parent = nullptr;
      at.state = RbTreeNode::unlinked;
      top = Ptr<PtrInterface>(std::move(at.right));
    }
  }
}

} // namespace Zel
