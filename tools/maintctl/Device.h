#pragma once

#include <Zel/Session>

#include <functional>
#include <map>
#include <memory>

namespace Maintctl {

/// The tree that commands act on: one in this process, or a server's. Its operations throw
/// `Failure`, see `Failure.h`.
class Device {
public:
  Device() = default;
  Device(const Device&) = delete;
  Device& operator=(const Device&) = delete;
  virtual ~Device() = default;

  /// What has been mounted so far; paths resolve in it.
  virtual const Zel::Ptr<Zel::Dir>& dir() const = 0;
  /// All roots there are: names, and names of types.
  virtual std::map<Zel::Name, Zel::String8> roots() = 0;
  /// Sees that a root is in `dir` and in step; with `toWrite`, that it may be written.
  virtual void need(const Zel::Name& root, bool toWrite) = 0;
  /// Returns once the device holds all that was changed.
  virtual void flush() = 0;
  /// Lets things happen until `isDone` yields true, which is asked after each change, or until the
  /// seconds are over (negative: never). Whether it is done.
  virtual bool wait(const std::function<bool()>& isDone, double seconds) = 0;
  /// Writes a value if another stands there, as whoever has the original decides.
  virtual Zel::Session::WriteResult writeIf(const Zel::Session::WriteIf& what) {
    return Zel::Session::decide(what);
  }
  /// Whether it is of use: not once the connection to its server has ended.
  virtual bool isThere() { return true; }
  /// Whether a mirror holds what the device does.
  virtual Zel::Session::DigestResult verify(const Zel::Name& root) = 0;
};

} // namespace Maintctl
