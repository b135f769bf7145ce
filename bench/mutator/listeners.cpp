#include "peers/Listeners.h"
#include "mutator/Mutator.h"

#include <memory>

namespace {

struct Recorder final : Bench::StateListener {
  void onState() override { ++heard; }
  std::uint64_t heard = 0;
};

class Subject {
public:
  explicit Subject(unsigned listeners) : status_(std::make_unique<Bench::ListenersStatus>()) {
    for (unsigned i = 0; i < listeners; ++i) {
      recorders_.push_back(std::make_unique<Recorder>());
      status_->listenerIs(recorders_.back().get());
    }
  }

  void stateIs(int value) { status_->stateIs(value); }

  std::uint64_t heard() const {
    std::uint64_t sum = 0;
    for (const auto& recorder : recorders_) {
      sum += recorder->heard;
    }
    return sum;
  }

private:
  std::unique_ptr<Bench::ListenersStatus> status_;
  std::vector<std::unique_ptr<Recorder>> recorders_;
};

} // namespace

void Bench::registerAll() { mutatorOperations<Subject>(); }
