#include "peers/QtStatus.h"

namespace Bench {

QtStatus::~QtStatus() = default;

void QtStatus::stateIs(int value) {
  if (value != state_) {
    state_ = value;
    Q_EMIT stateChanged();
  }
}

QtRecorder::~QtRecorder() = default;
void QtRecorder::onState() { ++heard; }

} // namespace Bench
