#include "Contents.h"

#include <set>
#include <string>

using Maintenance::Unit::Status;

namespace {

Zel::Name unitName(unsigned number) { return Zel::Name("unit" + std::to_string(number)); }

} // namespace

void Contents::fill(std::uint64_t seed, unsigned count) {
  random_.seed(seed);
  units_ = std::max(units_, count);
  std::set<unsigned> wanted;
  while (wanted.size() < count) {
    wanted.insert(draw(2 * units_));
  }
  for (unsigned number = 0; number < 2 * units_; ++number) {
    if (wanted.count(number) == 0) {
      dir_->statusDel(unitName(number));
    }
  }
  for (const unsigned number : wanted) {
    const Zel::Ptr<Status> unit = dir_->statusIs(unitName(number));
    for (int times = 0; times < 4; ++times) {
      write(*unit);
    }
  }
  for (int times = 0; times < 400; ++times) {
    others_.change(random_);
  }
}

void Contents::change(std::uint64_t seed, unsigned count) {
  random_.seed(seed);
  for (unsigned done = 0; done < count; ++done) {
    if (draw(4) == 0) {
      others_.change(random_);
      continue;
    }
    const Zel::Name name = unitName(draw(2 * units_));
    const Zel::Ptr<Status> unit = dir_->status(name);
    if (unit && draw(50) == 0) {
      dir_->statusDel(name);
    } else if (unit) {
      write(*unit);
    } else if (draw(25) == 0) {
      write(*dir_->statusIs(name));
    }
  }
}

void Contents::write(Status& unit) {
  switch (draw(6)) {
  case 0:
    unit.historySizeIs(draw(1000));
    break;
  case 1:
    unit.timeOfStateChangeIs(draw(1000000));
    break;
  case 2:
    unit.profileNameIs(Zel::String8("profile" + std::to_string(draw(100))));
    break;
  case 3:
    unit.stateIs(static_cast<Maintenance::Unit::State>(draw(7)));
    break;
  case 4:
    unit.historyIs(draw(20), Zel::String8("line " + std::to_string(draw(1000))));
    break;
  default:
    unit.historyDel(draw(20));
  }
}
