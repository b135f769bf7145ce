#include "Driver.h"

#include "Turns.h"

#include <asio/buffer.hpp>
#include <asio/error.hpp>

#include <chrono>

namespace Net {

namespace {

/// Bytes that a session applies, and about as many that it writes, in one turn.
constexpr std::size_t turnBytes = std::size_t{1} << 16;

/// And that it may send: a ring is to be emptied.
constexpr std::size_t mostSent = std::size_t{1} << 18;

} // namespace

Driver::Driver(Turns& turns, Socket socket, Zel::Ptr<Zel::Session> session, Ended ended)
    : turns_(&turns), socket_(std::move(socket)), session_(std::move(session)),
      ended_(std::move(ended)), patience_(socket_.get_executor()) {
  socket_.non_blocking(true);
}

std::shared_ptr<Driver> Driver::start(Turns& turns, Socket socket, Zel::Ptr<Zel::Session> session,
                                      Ended ended) {
  std::shared_ptr<Driver> driver(
      new Driver(turns, std::move(socket), std::move(session), std::move(ended)));
  turns.driverIs(driver);
  return driver;
}

/// Reads what is there, as far as there is room, and lets the session apply it. Whether there is
/// more to do at once.
bool Driver::take(double now) {
  if (mayRead_) {
    readIn();
  }
  const bool more = session_->service(now, turnBytes);
  if (!session_->isUp()) {
    return false;
  }
  if (isAtEnd_ && !more) { // all that has come is applied
    session_->close(now, why_.empty() ? Zel::String8("the peer has gone") : why_);
    return false;
  }
  return more || (mayRead_ && !session_->connection()->inputSpace().empty());
}

void Driver::readIn() {
  for (std::size_t count = 0; count < turnBytes;) {
    const auto space = session_->connection()->inputSpace();
    if (space.empty()) {
      return; // the socket keeps it meanwhile
    }
    asio::error_code failed;
    const std::size_t came = socket_.read_some(asio::buffer(space.data(), space.size()), failed);
    if (failed) {
      mayRead_ = false;
      if (failed != asio::error::would_block && failed != asio::error::interrupted) {
        isAtEnd_ = true;
        if (failed != asio::error::eof) {
          lose(failed);
        }
      } else if (why_.empty()) {
        waitRead();
      } else {
        isAtEnd_ = true; // the peer does not read, and says nothing
      }
      return;
    }
    session_->connection()->inputReceived(came);
    count += came;
  }
}

/// Writes what the session owes. Whether there is more to do at once.
bool Driver::give(double now) {
  const auto applied = [this] { return session_->connection()->demuxer()->counts().records; };
  const std::uint64_t before = applied();
  std::size_t sent = 0;
  bool more = false;
  while (mayWrite_ && session_->isUp() && sent < mostSent) {
    if (!session_->connection()->wantsWrite()) { // there is room again for what waits for it
      more = session_->service(now, turnBytes);
    }
    if (!session_->connection()->wantsWrite() || !writeOut(sent)) {
      break;
    }
  }
  // What has been applied may be owed to others, who have had their part in this turn.
  return more || applied() != before ||
         (session_->isUp() && mayWrite_ && session_->connection()->wantsWrite());
}

bool Driver::writeOut(std::size_t& sent) {
  const auto bytes = session_->connection()->pendingOutput();
  asio::error_code failed;
  const std::size_t went = socket_.write_some(asio::buffer(bytes.data(), bytes.size()), failed);
  if (!failed) {
    session_->connection()->outputConsumed(went);
    sent += went;
    return true;
  }
  mayWrite_ = false;
  if (failed == asio::error::would_block || failed == asio::error::interrupted) {
    waitWrite();
  } else {
    lose(failed);
  }
  return false;
}

/// Nothing can be written any more; what the peer has said before is still applied.
void Driver::lose(const asio::error_code& why) {
  mayWrite_ = false;
  why_ = why == asio::error::broken_pipe || why == asio::error::connection_reset
             ? Zel::String8("the peer has gone")
             : Zel::String8(why.message());
  if (!isAtEnd_) {
    mayRead_ = true;
    if (turns_ != nullptr) {
      turns_->soon();
    }
  }
}

void Driver::waitRead() {
  socket_.async_wait(Socket::wait_read, [self = shared_from_this()](const asio::error_code& ended) {
    if (!ended && self->turns_ != nullptr) {
      self->mayRead_ = true;
      self->turns_->soon();
    }
  });
}

void Driver::waitWrite() {
  socket_.async_wait(Socket::wait_write,
                     [self = shared_from_this()](const asio::error_code& ended) {
                       if (!ended && self->turns_ != nullptr && self->why_.empty()) {
                         self->mayWrite_ = true;
                         self->turns_->soon();
                       }
                     });
}

void Driver::close(const Zel::String8& why, double patience) {
  const std::shared_ptr<Driver> kept = shared_from_this();
  if (!isFinished_) {
    give(Turns::now());
    session_->close(Turns::now(), why);
  }
  finish(patience);
}

/// Tells the peer why, as far as the socket takes that at once. Whether there is no more to tell,
/// or nobody to tell it to.
bool Driver::lastWords() {
  const std::string& words = session_->lastWords();
  asio::error_code failed;
  while (told_ < words.size() && !failed) {
    told_ += socket_.write_some(asio::buffer(words.data() + told_, words.size() - told_), failed);
  }
  return !failed || (failed != asio::error::would_block && failed != asio::error::interrupted);
}

void Driver::lastWordsLater() {
  socket_.async_wait(Socket::wait_write,
                     [self = shared_from_this()](const asio::error_code& ended) {
                       if (ended || self->isGone_) {
                         return;
                       }
                       if (self->lastWords()) {
                         self->gone();
                       } else {
                         self->lastWordsLater();
                       }
                     });
}

void Driver::finish(double patience) {
  if (isGone_) {
    return;
  }
  if (!std::exchange(isFinished_, true) && turns_ != nullptr) {
    turns_->driverDel(*this); // and with it the session, unless somebody else holds that
  }
  if (lastWords() || patience <= 0) {
    gone();
    return;
  }
  patience_.expires_after(std::chrono::duration_cast<std::chrono::nanoseconds>(
      std::chrono::duration<double>(patience)));
  patience_.async_wait([self = shared_from_this()](const asio::error_code& ended) {
    if (!ended && !self->isGone_) {
      self->gone();
    }
  });
  lastWordsLater();
}

void Driver::gone() {
  isGone_ = true;
  asio::error_code ignored;
  patience_.cancel();
  socket_.close(ignored);
  if (const Ended ended = std::exchange(ended_, nullptr)) {
    ended(session_);
  }
}

void Driver::turnsGone() {
  const std::shared_ptr<Driver> kept = shared_from_this();
  session_->close(Turns::now(), "the program ends");
  finish();
  turns_ = nullptr;
}

} // namespace Net
