#include "mutator/Mutator.h"
#include "peers/QtStatus.h"

#include <memory>
#include <vector>

namespace {

class Subject {
public:
  explicit Subject(unsigned listeners) : status_(std::make_unique<Bench::QtStatus>()) {
    for (unsigned i = 0; i < listeners; ++i) {
      recorders_.push_back(std::make_unique<Bench::QtRecorder>());
      QObject::connect(status_.get(), &Bench::QtStatus::stateChanged, recorders_.back().get(),
                       &Bench::QtRecorder::onState, Qt::DirectConnection);
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
  std::unique_ptr<Bench::QtStatus> status_;
  std::vector<std::unique_ptr<Bench::QtRecorder>> recorders_;
};

} // namespace

void Bench::registerAll() { mutatorOperations<Subject>(); }
