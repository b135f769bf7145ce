#pragma once

#include <asio/posix/stream_descriptor.hpp>
#include <asio/streambuf.hpp>

#include <functional>
#include <iostream>
#include <string>

/// Reads lines from standard input as they come; the end of it ends the program.
class Lines {
public:
  using Taken = std::function<void(const std::string&)>;

  Lines(asio::io_context& io, Taken taken);

private:
  void next();

  asio::io_context& io_;
  asio::posix::stream_descriptor in_;
  asio::streambuf buffer_;
  const Taken taken_;
};

/// What the test reads.
inline void answer(const std::string& line) { std::cout << line << std::endl; }
