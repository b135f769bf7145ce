#include "Output.h"

#include "Failure.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <system_error>

namespace Maintctl {

namespace {

std::string reason(int error) { return std::generic_category().message(error); }

[[noreturn]] void cannotWrite(const std::string& name, int error) {
  throw Failure(error == EPIPE ? exitPipe : exitFile,
                "cannot write " + name + ": " + reason(error));
}

mode_t modeOfNewFiles() {
  const mode_t mask = umask(0); // there is no other way to learn it
  umask(mask);
  return mode_t{0666} & ~mask;
}

} // namespace

FileBuffer::FileBuffer(int file, std::string name) : file_(file), name_(std::move(name)) {
  setp(bytes_.data(), bytes_.data() + bytes_.size());
}

FileBuffer::int_type FileBuffer::overflow(int_type character) {
  sync();
  if (!traits_type::eq_int_type(character, traits_type::eof())) {
    sputc(traits_type::to_char_type(character));
  }
  return traits_type::not_eof(character);
}

int FileBuffer::sync() {
  const char* at = pbase();
  const char* const end = pptr();
  setp(bytes_.data(),
       bytes_.data() + bytes_.size()); // on a failure, what could not be written goes
  while (at != end) {
    const ssize_t written = write(file_, at, static_cast<std::size_t>(end - at));
    if (written > 0) {
      at += written;
    } else if (errno != EINTR) {
      cannotWrite(name_, errno);
    }
  }
  return 0;
}

Output::Output(int file, std::string name) : std::ostream(nullptr), buffer_(file, std::move(name)) {
  rdbuf(&buffer_);
  exceptions(std::ios::badbit);
}

NewFile::Place NewFile::placeFor(const std::string& name) {
  Place place;
  std::error_code none;
  // What a symbolic link points at is replaced, not the link.
  const std::filesystem::path whole = std::filesystem::canonical(name, none);
  place.path = none ? name : whole.string();
  struct stat old = {};
  const bool isThere = stat(place.path.c_str(), &old) == 0;
  if (isThere && !S_ISREG(old.st_mode)) {
    place.file = open(place.path.c_str(), O_WRONLY | O_CLOEXEC);
  } else {
    place.temporary = place.path + ".XXXXXX";
    place.file = mkostemp(place.temporary.data(), O_CLOEXEC);
  }
  if (place.file < 0) {
    cannotWrite(name, errno);
  }
  if (!place.temporary.empty()) {
    fchmod(place.file, isThere ? old.st_mode & mode_t{07777} : modeOfNewFiles());
  }
  return place;
}

NewFile::NewFile(const std::string& name)
    : name_(name), place_(placeFor(name)), out_(place_.file, name) {}

NewFile::~NewFile() {
  if (place_.file >= 0) {
    close(place_.file);
    if (!place_.temporary.empty()) {
      unlink(place_.temporary.c_str());
    }
  }
}

void NewFile::done() {
  out_.flush();
  // A disk may turn out to be full as late as this.
  if (!place_.temporary.empty() && fsync(place_.file) != 0) {
    cannotWrite(name_, errno);
  }
  const int file = place_.file;
  if (close(file) != 0) {
    place_.file = -1;
    if (!place_.temporary.empty()) {
      unlink(place_.temporary.c_str());
    }
    cannotWrite(name_, errno);
  }
  place_.file = -1;
  if (!place_.temporary.empty() &&
      std::rename(place_.temporary.c_str(), place_.path.c_str()) != 0) {
    const int error = errno;
    unlink(place_.temporary.c_str());
    cannotWrite(name_, error);
  }
}

} // namespace Maintctl
