#include <simulation/Link.h>

#include <Zel/Exception>

#include <algorithm>
#include <cstring>

namespace Simulation {

Link::Link(Traits traits, MakeEnd make)
    : traits_(traits), make_(std::move(make)), sides_{Side(traits.inFlight),
                                                      Side(traits.inFlight)} {
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
    made.connection = nullptr;
    made.connection = make_(end);
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

bool Link::tries(Random& random) const { return random.chance(traits_.haste, 8); }

void Link::step(Random& random, Time now) {
  now_ = now;
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
    if (!isUp_ && now_ >= side(end).hearsAt) {
      close(end, "link cut");
    } else if (isUp_ && !side(end).connection->isUp()) {
      failure_ = side(end).connection->failure();
      cutNow(random, 0);
    }
  }
}

void Link::service(Random& random, End end) {
  Side& own = side(end);
  if (own.connection->isUp() && (own.mayDoMore || own.connection->demuxer()->scheduled() != 0)) {
    own.mayDoMore = own.connection->service(random.size(traits_.pieces));
  }
}

void Link::send(Random& random, End from) {
  Side& own = side(from);
  Side& to = side(other(from));
  const auto pending = own.connection->pendingOutput();
  std::size_t count = std::min<std::size_t>(pending.size(), random.size(traits_.pieces));
  if (!isUp_) {
    own.connection->outputConsumed(count); // nobody will receive them
    return;
  }
  count = std::min(count, to.incoming.room());
  if (to.cutAfter && count >= *to.cutAfter) {
    count = static_cast<std::size_t>(*to.cutAfter);
  }
  to.incoming.put(pending.first(count));
  own.connection->outputConsumed(count);
  if (to.cutAfter && (*to.cutAfter -= count) == 0) {
    to.cutAfter.reset();
    // All that was sent so far may still arrive; what the other end has in flight may not.
    const std::size_t whole = to.incoming.size();
    cutNow(random, armedHears_);
    static_cast<void>(whole);
  }
}

void Link::receive(Random& random, End to) {
  Side& own = side(to);
  if (now_ < own.stalledUntil || !own.connection->isUp()) {
    return;
  }
  const auto space = own.connection->inputSpace();
  const std::size_t count = std::min<std::size_t>(
      {own.incoming.size(), space.size(), random.size(traits_.pieces)});
  if (count == 0) {
    return;
  }
  std::memcpy(space.data(), own.incoming.front().data(), count);
  own.incoming.taken(count);
  own.connection->inputReceived(count);
  own.mayDoMore = true;
  bytesCarried_ += count;
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
    if (now_ < own.stalledUntil && (!first || own.stalledUntil < *first)) {
      first = own.stalledUntil;
    }
  }
  return first;
}

} // namespace Simulation
