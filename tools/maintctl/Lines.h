#pragma once

#include <istream>
#include <string>

namespace Maintctl {

/// Lines that hold commands, from wherever.
class Lines {
public:
  Lines() = default;
  Lines(const Lines&) = delete;
  Lines& operator=(const Lines&) = delete;
  virtual ~Lines() = default;

  /// Whether there was one more. Throws `Failure` if nobody can tell.
  virtual bool next(std::string& line) = 0;
  /// What goes before a complaint about the line, such as "FILE:7: ".
  virtual std::string where() const = 0;
};

/// Those of a file.
class FileLines : public Lines {
public:
  FileLines(std::istream& in, std::string name) : in_(in), name_(std::move(name)) {}

  bool next(std::string& line) override;
  std::string where() const override { return name_ + ":" + std::to_string(number_) + ": "; }

private:
  std::istream& in_;
  const std::string name_;
  std::size_t number_ = 0;
};

} // namespace Maintctl
