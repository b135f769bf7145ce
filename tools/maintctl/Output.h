#pragma once

#include <array>
#include <ostream>
#include <streambuf>
#include <string>

namespace Maintctl {

/// Writes to a file descriptor, which it does not own. A write that fails throws a `Failure` with
/// the name, `exitPipe` if there is no reader any more. What is left is to be flushed: an end
/// without it drops it.
class FileBuffer : public std::streambuf {
public:
  FileBuffer(int file, std::string name);
  FileBuffer(const FileBuffer&) = delete;
  FileBuffer& operator=(const FileBuffer&) = delete;
  ~FileBuffer() override = default;

protected:
  int_type overflow(int_type character) override;
  int sync() override;

private:
  const int file_;
  const std::string name_;
  std::array<char, std::size_t{1} << 16> bytes_;
};

/// A stream over one, whose operations let the `Failure` through.
class Output : public std::ostream {
public:
  Output(int file, std::string name);
  Output(const Output&) = delete;
  Output& operator=(const Output&) = delete;
  ~Output() override = default;

private:
  FileBuffer buffer_;
};

/// A file that is written anew: what is there stays until all of the new has been written. It then
/// takes the old one's place and mode. What is no ordinary file, a pipe or a device, is written to
/// as it is. All throw `Failure` with `exitFile`.
class NewFile {
public:
  explicit NewFile(const std::string& name);
  NewFile(const NewFile&) = delete;
  NewFile& operator=(const NewFile&) = delete;
  /// Without `done` before, leaves no trace.
  ~NewFile();

  std::ostream& out() noexcept { return out_; }
  void done();

private:
  struct Place {
    int file = -1;
    std::string path;      ///< where it is to stand
    std::string temporary; ///< where it is written; empty if that is where it is to stand
  };
  static Place placeFor(const std::string& name);

  const std::string name_;
  Place place_;
  Output out_;
};

} // namespace Maintctl
