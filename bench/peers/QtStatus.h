#pragma once

#include "peers/Peer.h"

#include <QObject>

#include <cstdint>

namespace Bench {

class BENCH_PEER QtStatus : public QObject {
  Q_OBJECT

public:
  ~QtStatus() override;
  void stateIs(int value);

Q_SIGNALS:
  void stateChanged();

private:
  int state_ = 0;
};

class BENCH_PEER QtRecorder : public QObject {
  Q_OBJECT

public:
  ~QtRecorder() override;
  std::uint64_t heard = 0;

public Q_SLOTS:
  void onState();
};

} // namespace Bench
