#include <simulation/Hand.h>

#include <Zel/Exception>
#include <Zel/NboAttrLog>

#include <cstring>

namespace Simulation {

std::size_t Hand::next(End to) const {
  const Link::Side& own = link_->side(to);
  if (own.incoming.empty() || !own.connection->isUp()) {
    return 0;
  }
  std::uint32_t word = 0;
  std::memcpy(&word, own.incoming.front().data(), sizeof word);
  return Zel::WireWriter::networkOrder(word) & ~Zel::NboAttrLog::chunkFollowsBit;
}

void Hand::send(End from) const {
  const Zel::Connection& connection = *link_->side(from).connection;
  for (auto bytes = connection.pendingOutput(); !bytes.empty();
       bytes = connection.pendingOutput()) {
    if (link_->isUp_) {
      link_->put(from, bytes);
    }
    link_->side(from).connection->outputConsumed(bytes.size());
  }
}

void Hand::receive(End to) const {
  const Zel::NboAttrLog::Demuxer& demuxer = *link_->side(to).connection->demuxer();
  const std::uint64_t before = demuxer.counts().records;
  for (std::size_t left = next(to); left != 0;) {
    const std::size_t moved = link_->arrive(to, left);
    if (moved == 0) {
      Zel::throwInternalException("no room for a record");
    }
    left -= moved;
  }
  link_->serve(to, 0);
  if (!link_->failureNote(to) && demuxer.counts().records != before + 1) {
    Zel::throwInternalException("a record that was not applied by itself");
  }
}

void Hand::service(End end, std::size_t budget) const {
  if (link_->connection(end)->isUp()) {
    link_->serve(end, budget);
    link_->failureNote(end);
  }
}

void Hand::hear(End end) const {
  if (link_->isUp_) {
    link_->isUp_ = false;
    ++link_->cuts_;
  }
  link_->close(end, "link cut");
}

} // namespace Simulation
