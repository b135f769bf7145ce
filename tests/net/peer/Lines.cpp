#include "Lines.h"

#include <asio/read_until.hpp>

#include <unistd.h>

Lines::Lines(asio::io_context& io, Taken taken)
    : io_(io), in_(io, ::dup(STDIN_FILENO)), taken_(std::move(taken)) {
  next();
}

void Lines::next() {
  asio::async_read_until(in_, buffer_, '\n',
                         [this](const asio::error_code& failed, std::size_t /*length*/) {
                           if (failed) {
                             io_.stop();
                             return;
                           }
                           std::istream in(&buffer_);
                           std::string line;
                           std::getline(in, line);
                           taken_(line);
                           next();
                         });
}
