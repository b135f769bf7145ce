#pragma once

#include "peers/Peer.h"

#include <QObject>
#include <QString>

#include <cstdint>

namespace Bench {

/// The singular attributes of a status as properties: `genId` with its mutator and its signal, the
/// others for the length of the list of names.
class BENCH_PEER QtProperties : public QObject {
  Q_OBJECT
  Q_PROPERTY(QString unitName MEMBER text_)
  Q_PROPERTY(int unitType MEMBER number_)
  Q_PROPERTY(QString profileName MEMBER text_)
  Q_PROPERTY(int state MEMBER number_)
  Q_PROPERTY(int reason MEMBER number_)
  Q_PROPERTY(double timeOfStateChange MEMBER time_)
  Q_PROPERTY(double onBootMaintExitTime MEMBER time_)
  Q_PROPERTY(int defaultHistorySize MEMBER number_)
  Q_PROPERTY(int historySize MEMBER number_)
  Q_PROPERTY(QString maintEnterInstance MEMBER text_)
  Q_PROPERTY(QString maintExitInstance MEMBER text_)
  Q_PROPERTY(int totalIntfTrafficViolations MEMBER number_)
  Q_PROPERTY(unsigned genId READ genId WRITE genIdIs NOTIFY genIdChanged)

public:
  ~QtProperties() override;

  unsigned genId() const { return genId_; }
  void genIdIs(unsigned id);

Q_SIGNALS:
  void genIdChanged();

private:
  QString text_;
  int number_ = 0;
  double time_ = 0;
  unsigned genId_ = 0;
};

} // namespace Bench
