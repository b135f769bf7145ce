#include "Run.h"

#include <Places.h>
#include <RemoteDevice.h>

#include <foreign/model/Depot.h>
#include <foreign/model/Perishable.h>
#include <net/Server.h>

#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

namespace Maintctl::Test {

namespace {

/// A server of a model that maintctl does not know, in a process of its own that ends with the
/// object.
class ForeignServer {
public:
  explicit ForeignServer(const std::string& socket) {
    process_ = fork();
    if (process_ == 0) {
      prctl(PR_SET_PDEATHSIG, SIGKILL);
      serve(socket);
      _exit(0);
    }
  }
  ForeignServer(const ForeignServer&) = delete;
  ForeignServer& operator=(const ForeignServer&) = delete;
  ~ForeignServer() {
    kill(process_, SIGKILL);
    waitpid(process_, nullptr, 0);
  }

private:
  static void serve(const std::string& socket) {
    const auto depot = Zel::makeObject<Foreign::Depot>("depot");
    const auto perishables = Zel::makeObject<Foreign::PerishableDir>("perishables");
    perishables->perishableIs("milk");
    const auto exports = Zel::makeObject<Zel::Exports>();
    exports->entityIs(depot, Zel::accessReadWrite);
    exports->entityIs(perishables, Zel::accessReadWrite);
    asio::io_context io;
    Net::Turns turns(io);
    Net::ServerOptions options;
    options.path = socket;
    const Net::Server server(turns, options, exports);
    io.run();
  }

  pid_t process_ = -1;
};

class TypesOfALibrary : public testing::Test {
protected:
  TypesOfALibrary() {
    RemoteDevice::Settings settings;
    settings.path = socket;
    settings.timeout = 60;
    settings.waits = true;
    RemoteDevice(settings).roots();
  }

  Result run(const std::string& words) const {
    return Support::shell("'" MAINTCTL_PROGRAM "' --timeout 60 --socket '" + socket + "' " + words);
  }

  const Folder folder;
  const std::string socket = folder / "socket";
  const ForeignServer server{socket};
};

TEST_F(TypesOfALibrary, AreShownOnceItIsLoaded) {
  EXPECT_EQ(run("ls").out, "/depot        Foreign::Depot\n"
                           "/perishables  Foreign::PerishableDir\n");
  const Result unknown = run("get /depot");
  EXPECT_EQ(unknown.out, "");
  EXPECT_EQ(unknown.err, "maintctl: /depot is of a type that is not known here, see --types: "
                         "Foreign::Depot\n");
  EXPECT_EQ(unknown.status, 5);
  const std::string types = "--types '" FOREIGN_TYPES "' ";
  const Result known = run(types + "get /depot");
  EXPECT_EQ(known.out, "pid = 0\nrestarts = 0\nopen = false\n");
  EXPECT_EQ(known.err, "");
  EXPECT_EQ(run(types + "set /depot/pid 7").err, "");
  EXPECT_EQ(run(types + "add /depot/alarm gate,routine").err, "");
  EXPECT_EQ(run(types + "show /depot").out, "/depot\n"
                                            "  pid       7\n"
                                            "  restarts  0\n"
                                            "  alarm     gate  sensor gate, urgency routine\n"
                                            "  open      false\n");
  EXPECT_EQ(run(types + "ls /perishables/perishable").out, "milk  Foreign::Perishable\n");
  EXPECT_EQ(run(types + "verify").out, "/depot: equal\n/perishables: equal\n");
}

TEST(TypesOfNoLibrary, AreToldOf) {
  const Folder folder;
  EXPECT_EQ(refusal(9, "--types /nowhere.so ls"),
            "maintctl: cannot load types: /nowhere.so: cannot open shared object file: No such "
            "file or directory\n");
  const std::string text = folder.write("text", "no library");
  EXPECT_EQ(refusal(9, "--types '" + text + "' ls"),
            "maintctl: cannot load types: " + text + ": file too short\n");
  EXPECT_EQ(refusal(2, "--types /lib/x86_64-linux-gnu/libedit.so.2 ls"),
            "maintctl: /lib/x86_64-linux-gnu/libedit.so.2 brings no types, or has the model's own "
            "library within it\n");
}

} // namespace

} // namespace Maintctl::Test
