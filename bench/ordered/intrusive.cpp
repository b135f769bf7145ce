#include "ordered/Times.h"
#include "peers/IntrusiveTimes.h"

namespace {

class Tree : public Bench::IntrusiveTimes {
public:
  using Holder = std::unique_ptr<Entity>;

  static const auto& pool(std::size_t size) { return Bench::timePool(size); }
  static Holder make(double time) { return std::make_unique<Entity>(time, Bench::line()); }
  static bool mark(const Entity& entity) { return Bench::timeMark(entity.time()); }

  void insert(const Holder& holder) { IntrusiveTimes::insert(*holder); }
  void insertNew(double time) { IntrusiveTimes::insertNew(time, Bench::line()); }
  std::size_t sum() const {
    std::size_t all = 0;
    for (const Entity& entity : *this) {
      all += mark(entity);
    }
    return all;
  }
};

} // namespace

void Bench::registerAll() { timeOperations<Tree>(); }
