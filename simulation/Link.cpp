#include <simulation/Link.h>

#include <Zel/Exception>

#include <algorithm>
#include <cstring>

namespace Simulation {

Link::Link(Traits traits, MakeEnd make)
    : traits_(traits),
      make_(std::move(make)), sides_{Side(traits.inFlight), Side(traits.inFlight)} {
  madeIs();
}

Link::~Link() {
  for (const End end : ends) {
    close(end, "simulation over");
  }
}

void Link::madeIs() {
  for (const End end : ends) {
    Side& made = side(end);
    made.serve = nullptr; // which may hold the connection
    made.connection = nullptr;
    Peer peer = make_(end);
    made.connection = std::move(peer.connection);
    made.serve = std::move(peer.serve);
    made.incoming.clear();
    made.mayDoMore = true;
    made.cutAfter.reset();
  }
  cutHears_.reset();
  failure_ = Zel::String8();
  isUp_ = true;
}

bool Link::isDown() const {
  return !isUp_ && !sides_[0].connection->isUp() && !sides_[1].connection->isUp();
}

void Link::stall(End to, Time duration) {
  side(to).stalledUntil = std::max(side(to).stalledUntil, now_ + duration);
}

void Link::cut(Time hears) {
  if (isUp_) {
    cutHears_ = hears;
  }
}

void Link::cutAfter(End to, std::uint64_t bytes, Time hears) {
  side(to).cutAfter = bytes;
  armedHears_ = hears;
}

void Link::reconnect() {
  if (!isDown()) {
    Zel::throwInternalException("reconnect of a link that is not down");
  }
  madeIs();
}

void Link::healthyIs(bool healthy) {
  isHealthy_ = healthy;
  if (!healthy) {
    return;
  }
  cutHears_.reset();
  for (const End end : ends) {
    Side& own = side(end);
    own.stalledUntil = 0;
    own.cutAfter.reset();
    if (!isUp_ && own.connection->isUp()) {
      close(end, "link cut");
    }
  }
}

bool Link::tries(Random& random) const { return isHealthy_ || random.chance(traits_.haste, 8); }

std::size_t Link::piece(Random& random) const {
  return isHealthy_ ? traits_.pieces : static_cast<std::size_t>(random.size(traits_.pieces));
}

bool Link::step(Random& random, Time now) {
  now_ = now;
  acted_ = false;
  if (cutHears_) {
    const Time hears = *cutHears_;
    cutHears_.reset();
    cutNow(random, hears);
  }
  for (const End end : ends) {
    if (tries(random)) {
      service(random, end);
    }
    if (tries(random)) {
      send(random, end);
    }
    if (tries(random)) {
      receive(random, end);
    }
  }
  for (const End end : ends) {
    if (!isUp_ && side(end).connection->isUp() && now_ >= side(end).hearsAt) {
      close(end, "link cut");
      acted_ = true;
    } else if (failureNote(end)) {
      cutNow(random, 0);
    }
  }
  return acted_;
}

void Link::service(Random& random, End end) {
  Side& own = side(end);
  if (own.connection->isUp() && (own.mayDoMore || own.connection->demuxer()->scheduled() != 0)) {
    const std::uint64_t written = own.connection->out()->bytesWritten();
    acted_ = acted_ || own.mayDoMore;
    own.mayDoMore = serve(end, piece(random));
    acted_ = acted_ || own.connection->out()->bytesWritten() != written;
  }
}

bool Link::serve(End end, std::size_t budget) {
  Side& own = side(end);
  return own.serve ? own.serve(budget) : own.connection->service(budget);
}

void Link::send(Random& random, End from) {
  Side& own = side(from);
  const auto pending = own.connection->pendingOutput();
  std::size_t count = std::min(pending.size(), piece(random));
  if (!isUp_) {
    own.connection->outputConsumed(count); // nobody will receive them
    return;
  }
  count = std::min(count, side(other(from)).incoming.room());
  put(from, pending.first(count));
  own.connection->outputConsumed(count);
  own.mayDoMore = own.mayDoMore || (own.serve && count != 0); // it may wait for room
  acted_ = acted_ || count != 0;
}

void Link::put(End from, std::span<const std::uint8_t> bytes) {
  side(other(from)).incoming.put(bytes);
  if (watcher_ != nullptr && !bytes.empty()) {
    watcher_->sent(from, bytes);
  }
}

void Link::receive(Random& random, End to) {
  Side& own = side(to);
  if (now_ < own.stalledUntil || !own.connection->isUp()) {
    return;
  }
  std::size_t most = piece(random);
  if (own.cutAfter) {
    most = static_cast<std::size_t>(std::min<std::uint64_t>(most, *own.cutAfter));
  }
  const std::size_t count = arrive(to, most);
  if (count == 0) {
    return;
  }
  own.mayDoMore = true;
  acted_ = true;
  if (own.cutAfter && (*own.cutAfter -= count) == 0) {
    own.incoming.clear();
    cutNow(random, armedHears_);
  }
}

/// Up to `most` of the bytes in flight, as far as there is room for them in one piece.
std::size_t Link::arrive(End to, std::size_t most) {
  Side& own = side(to);
  const auto space = own.connection->inputSpace();
  const std::size_t count = std::min({own.incoming.size(), space.size(), most});
  if (count != 0) {
    std::memcpy(space.data(), own.incoming.front().data(), count);
    own.incoming.taken(count);
    own.connection->inputReceived(count);
    if (watcher_ != nullptr) {
      watcher_->arrived(to, space.first(count));
    }
    bytesCarried_ += count;
  }
  return count;
}

/// Whether the end has taken its connection down by itself; keeps why.
bool Link::failureNote(End end) {
  const bool isNew = isUp_ && !side(end).connection->isUp();
  if (isNew) {
    failure_ = side(end).connection->failure();
  }
  return isNew;
}

void Link::cutNow(Random& random, Time hears) {
  if (!isUp_) {
    return;
  }
  isUp_ = false;
  ++cuts_;
  for (const End end : ends) {
    Side& own = side(end);
    own.incoming.truncate(random.below(own.incoming.size() + 1));
    own.hearsAt = now_ + random.below(hears + 1);
    own.cutAfter.reset();
  }
}

void Link::close(End end, const Zel::String8& why) {
  Side& own = side(end);
  own.incoming.clear();
  if (own.connection) {
    own.connection->close(why);
  }
  if (own.serve) {
    own.serve(1);
  }
}

bool Link::isQuiet() const {
  if (cutHears_) {
    return false;
  }
  return std::all_of(sides_.begin(), sides_.end(), [this](const Side& own) {
    if (!own.connection->isUp()) {
      return !isUp_;
    }
    return isUp_ && own.incoming.empty() && !own.mayDoMore && !own.connection->wantsWrite() &&
           own.connection->demuxer()->scheduled() == 0;
  });
}

std::optional<Time> Link::wakes() const {
  std::optional<Time> first;
  for (const Side& own : sides_) {
    for (const Time at : {own.stalledUntil, isUp_ ? 0 : own.hearsAt}) {
      if (now_ < at && (!first || at < *first)) {
        first = at;
      }
    }
  }
  return first;
}

} // namespace Simulation
