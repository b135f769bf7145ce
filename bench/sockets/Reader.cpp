#include "sockets/Reader.h"

#include <Zel/Demuxer>

#include <unistd.h>

namespace Bench::Sockets {

using Maintenance::Unit::Status;
using Maintenance::Unit::StatusDir;
using Zel::Ptr;

namespace {

struct Recorder : Status::Notifiee {
  explicit Recorder(std::uint64_t& sum) : heard(sum) {}
  void onGenId() override { ++heard; }
  void onTimeOfStateChange() override { ++heard; }
  std::uint64_t& heard;
};

} // namespace

Reader::Reader(int socket, const SharedBoard& board) : mirror_(socket, "units"), board_(board) {
  mirror_.settle();
  units_ = std::make_unique<Units>(Zel::ptrCast<StatusDir>(mirror_.mount->entity()));
  applied_ = records();
}

void Reader::listen() {
  for (const Ptr<Status>& unit : units_->all()) {
    recorders_.push_back(listener<Recorder>(unit, heard_));
  }
}

void Reader::run(std::size_t rounds) {
  const double before = processorTime();
  ++board_->readersReady;
  while (records() - applied_ < rounds * Units::count) {
    mirror_.driver.receive();
  }
  board_->endedAt(now());
  board_->readerTime = processorTime() - before;
  const Zel::NboAttrLog::Demuxer::Counts& counts = mirror_.driver.connection().demuxer()->counts();
  if (records() - applied_ != rounds * Units::count || counts.badValues + counts.refused != 0 ||
      counts.unknownEntities + counts.unknownAttributes != 0 || !units_->areChanged(rounds) ||
      heard_ != (recorders_.empty() ? 0 : rounds * Units::count)) {
    fail("not every change has been applied");
  }
}

void Reader::runSlowly(std::size_t rounds) {
  ++board_->readersReady;
  while (!board_->isOver) {
    mirror_.driver.receive(4096);
    usleep(10'000);
  }
  while (!units_->areChanged(rounds)) {
    mirror_.driver.receive();
  }
  if (records() - applied_ >= rounds * Units::count) {
    fail("the slow reader was not slow");
  }
}

std::uint64_t Reader::records() const {
  return mirror_.driver.connection().demuxer()->counts().records;
}

} // namespace Bench::Sockets
