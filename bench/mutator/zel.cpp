#include "mutator/Mutator.h"

#include <model/Unit.h>

#include <vector>

namespace {

using namespace Maintenance::Unit;

struct Recorder : Status::Notifiee {
  void onState() override { ++heard; }
  std::uint64_t heard = 0;
};

class Subject {
public:
  explicit Subject(unsigned listeners) : status_(statusFactory("unit")) {
    for (unsigned i = 0; i < listeners; ++i) {
      const auto recorder = Zel::makeObject<Recorder>();
      recorder->isRegisteredNotifieeIs(true);
      recorder->notifierIs(status_);
      recorders_.push_back(recorder);
    }
  }

  void stateIs(int value) { status_->stateIs(static_cast<State>(value)); }

  std::uint64_t heard() const {
    std::uint64_t sum = 0;
    for (const auto& recorder : recorders_) {
      sum += recorder->heard;
    }
    return sum;
  }

private:
  Zel::Ptr<Status> status_;
  std::vector<Zel::Ptr<Recorder>> recorders_;
};

} // namespace

void Bench::registerAll() { mutatorOperations<Subject>(); }
