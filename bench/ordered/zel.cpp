#include "ordered/Times.h"

#include <model/Unit.h>

namespace {

using namespace Maintenance::Unit;

/// The tree alone, below its owner's own steps.
class Tree {
public:
  using Entry = Status::ZelHistory;
  using Holder = Zel::Ptr<Entry>;

  static const auto& pool(std::size_t size) { return Bench::timePool(size); }
  static Holder make(double time) { return Zel::makeObject<Entry>(time, Bench::line()); }
  static bool mark(const Entry& entry) { return Bench::timeMark(entry.zelKey()); }

  void insert(const Holder& entry) { tree_.newMember(entry); }
  void insertNew(double time) { insert(make(time)); }
  void erase(double time) { tree_.deleteKey(time); }
  unsigned count() const { return tree_.count(); }

  const Entry* find(double time) const { return tree_[time]; }
  std::size_t sum() const {
    std::size_t all = 0;
    for (Status::HistoryMap::IteratorConst at(tree_); at; at.advance()) {
      all += mark(*at);
    }
    return all;
  }

private:
  Status::HistoryMap tree_;
};

class Owner {
public:
  static const auto& pool(std::size_t size) { return Bench::timePool(size); }
  void insertNew(double time) { status_->newHistory(time, Bench::line()); }
  Zel::String8 text(double time) const { return status_->history(time); }

private:
  Zel::Ptr<Status> status_ = statusFactory("unit");
};

} // namespace

void Bench::registerAll() { timeOperations<Tree, Owner>(); }
