#include "peers/QtProperties.h"

namespace Bench {

QtProperties::~QtProperties() = default;

void QtProperties::genIdIs(unsigned id) {
  if (id != genId_) {
    genId_ = id;
    Q_EMIT genIdChanged();
  }
}

} // namespace Bench
