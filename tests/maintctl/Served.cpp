#include "Run.h"

#include <Dump.h>
#include <Load.h>
#include <Places.h>
#include <RemoteDevice.h>

#include <Zel/StateDigest>

#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

namespace Maintctl::Test {

namespace {

/// A server in a process of its own, which ends with the object.
class Served {
public:
  explicit Served(std::string socket) : socket_(std::move(socket)) {
    process_ = fork();
    if (process_ == 0) {
      close(STDERR_FILENO);
      execl(MAINTCTL_PROGRAM, MAINTCTL_PROGRAM, "--socket", socket_.c_str(), "serve", nullptr);
      _exit(127);
    }
  }
  Served(const Served&) = delete;
  Served& operator=(const Served&) = delete;
  ~Served() {
    kill(process_, SIGTERM);
    waitpid(process_, nullptr, 0);
  }

  /// What a client has of it.
  std::unique_ptr<RemoteDevice> device() const {
    RemoteDevice::Settings settings;
    settings.path = socket_;
    settings.timeout = 60;
    settings.waits = true;
    return std::make_unique<RemoteDevice>(settings);
  }

private:
  const std::string socket_;
  pid_t process_ = -1;
};

/// The digests of all roots, each equal to the server's own.
std::map<std::string, std::uint64_t> digests(RemoteDevice& device) {
  std::map<std::string, std::uint64_t> all;
  for (const auto& [name, type] : device.roots()) {
    EXPECT_EQ(device.verify(name), Zel::Session::digestEqual) << name.charPtr();
    all[name.charPtr()] = Zel::stateDigest(*device.dir()->entity(name));
  }
  return all;
}

TEST(ServedTree, LoadedFromADumpOfAnotherServerHasTheSameDigests) {
  const Folder folder;
  const Served one(folder / "one");
  const Served other(folder / "other");
  const auto source = one.device();
  const auto target = other.device();
  loadFile(*source, MAINTCTL_SAMPLE);
  std::ostringstream dumped;
  dump(*source, dumped);
  const auto before = digests(*target);
  EXPECT_EQ(before.size(), 11U);
  std::istringstream in(dumped.str());
  EXPECT_GT(load(*target, in, "dumped"), 0U);
  const auto loaded = digests(*target);
  EXPECT_EQ(loaded, digests(*source));
  for (const auto& [root, digest] : loaded) { // of which the sample has something each
    EXPECT_NE(digest, before.at(root)) << root;
  }
}

} // namespace

} // namespace Maintctl::Test
