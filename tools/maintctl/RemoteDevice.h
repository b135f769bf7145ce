#pragma once

#include "Device.h"
#include "Failure.h"

#include <asio/signal_set.hpp>
#include <net/Client.h>

#include <optional>

namespace Maintctl {

/// A server's tree, mirrored as far as it is needed. Nothing happens in the mirror but within the
/// operations here: they let it happen until what they are for has come.
class RemoteDevice : public Device {
public:
  struct Settings {
    std::string path;
    double timeout = 10;     ///< seconds that the server has for each answer
    bool waits = false;      ///< for a server that is not there at first, else a failure
    bool reconnects = false; ///< when the connection has ended, else a failure
    bool isStopped = false;  ///< by SIGINT, which is a failure then
  };

  /// Throws `Failure` if there is no server and it does not wait for one.
  explicit RemoteDevice(Settings settings);
  ~RemoteDevice() override;

  const Zel::Ptr<Zel::Dir>& dir() const override { return dir_; }
  std::map<Zel::Name, Zel::String8> roots() override;
  /// A root that is there already takes in what the server has sent by now.
  void need(const Zel::Name& root, bool toWrite) override;
  void flush() override;
  bool isThere() override;
  bool wait(const std::function<bool()>& isDone, double seconds) override;
  Zel::Session::WriteResult writeIf(const Zel::Session::WriteIf& what) override;
  Zel::Session::DigestResult verify(const Zel::Name& root) override;

  asio::io_context& io() noexcept { return io_; }
  Net::Turns& turns() noexcept { return turns_; }
  /// What the server has offered by now; nothing while there is none.
  const std::map<Zel::Name, Zel::String8>& offers() const;
  /// What is mirrored; replaced, as the mirrors are, when a root is needed for writing that was
  /// there for reading.
  const Zel::Ptr<Zel::Mounts>& mounts() const noexcept { return mounts_; }

private:
  void awaitStop();
  void forgetStops();
  void connect();
  bool isOfAnotherVersion() const;
  std::optional<Failure> trouble() const;
  void await(const std::function<bool()>& isDone, const std::string& what);
  bool until(const std::function<bool()>& isDone, double seconds);
  Zel::Session::EchoResult catchUp();
  Zel::Ptr<Zel::Mount> mount(const Zel::Name& root, Zel::Access access);
  void awaitLive(const Zel::Ptr<Zel::Mount>& mount);

  const Settings settings_;
  const Zel::Ptr<Zel::Dir> dir_ = Zel::makeObject<Zel::Dir>();
  Zel::Ptr<Zel::Mounts> mounts_;
  asio::io_context io_;
  asio::signal_set signals_{io_};
  Zel::Session::EchoResult unsaid_ = Zel::Session::echoApplied; // of what was written before
  bool isStopped_ = false;
  Net::Turns turns_{io_};
  std::optional<Net::Client> client_;
};

} // namespace Maintctl
