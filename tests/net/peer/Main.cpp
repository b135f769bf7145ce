/// What the tests of this folder start: a server of a whole tree, of which `inputs` is to be
/// written and all else to be read, or a mirror of all roots of one. It takes commands from
/// standard input, a line each, and answers each with a line; the server can be told to offer
/// another root.
///
///     net-peer serve SOCKET [fill=UNITS] [seed=N] [clients=N] [hello=SECONDS]
///                           [mode=OCTAL] [group=NAME]
///     net-peer mirror SOCKET

#include "Contents.h"
#include "Lines.h"

#include <Zel/Exception>
#include <Zel/StateDigest>
#include <net/Client.h>
#include <net/Server.h>

#include <algorithm>
#include <csignal>
#include <fstream>
#include <map>
#include <sstream>

namespace {

using Maintenance::Unit::Status;
using Maintenance::Unit::StatusDir;
using Zel::Mount;
using Zel::Ptr;
using Zel::Session;

using Settings = std::map<std::string, std::string>;

void logLine(Net::Level level, const std::string& line) {
  std::cerr << Net::levelName(level) << ' ' << line << std::endl;
}

std::string memory() {
  std::ifstream in("/proc/self/status");
  for (std::string line; std::getline(in, line);) {
    if (line.rfind("VmRSS:", 0) == 0) {
      return std::to_string(std::stoul(line.substr(6)));
    }
  }
  return "unknown";
}

std::string digestOf(const Ptr<Zel::Entity>& root) {
  return root ? std::to_string(Zel::stateDigest(*root)) : "none";
}

class Server {
public:
  Server(asio::io_context& io, const std::string& path, const Settings& settings)
      : turns_(io), server_(turns_, optionsOf(path, settings), exports(settings)),
        lines_(io, [this](const std::string& line) { command(line); }), churn_(io) {
    answer("listening");
  }

private:
  static Net::ServerOptions optionsOf(const std::string& path, const Settings& settings) {
    const auto setting = [&](const char* name, const char* otherwise) {
      const auto at = settings.find(name);
      return at != settings.end() ? at->second : std::string(otherwise);
    };
    Net::ServerOptions options;
    options.path = path;
    options.maxClients = std::stoul(setting("clients", "64"));
    options.access.mode = static_cast<unsigned>(std::stoul(setting("mode", "600"), nullptr, 8));
    if (settings.count("group") != 0) {
      options.access.group = Net::groupId(settings.at("group"));
    }
    options.session.name = "server";
    options.session.helloTime = std::stod(setting("hello", "30"));
    options.log = logLine;
    return options;
  }

  Ptr<Zel::Exports> exports(const Settings& settings) {
    if (settings.count("fill") != 0) {
      contents_.fill(settings.count("seed") != 0 ? std::stoull(settings.at("seed")) : 1,
                     static_cast<unsigned>(std::stoul(settings.at("fill"))));
    }
    exports_->entityIs(units_);
    for (const Ptr<Zel::Entity>& root : contents_.others().roots()) {
      exports_->entityIs(root);
    }
    exports_->entityIs(inputs_, Zel::accessReadWrite);
    return exports_;
  }

  void command(const std::string& line) {
    std::istringstream in(line);
    std::string word;
    std::string name;
    std::uint64_t seed = 0;
    unsigned count = 0;
    in >> word;
    if (word == "fill" && in >> seed >> count) {
      contents_.fill(seed, count);
      answer("filled");
    } else if (word == "change" && in >> seed >> count) {
      contents_.change(seed, count);
      answer("changed");
    } else if (word == "churn" && in >> seed) {
      churn(seed);
      answer("churning");
    } else if (word == "rest") {
      churn_.cancel();
      answer("resting");
    } else if (word == "offer" && in >> name) {
      exports_->entityIs(Maintenance::Unit::statusDirFactory(Zel::Name(name)));
      answer("offered");
    } else if (word == "withdraw" && in >> name) {
      answer(exports_->entityDel(Zel::Name(name)) ? "withdrawn" : "none");
    } else if (word == "set" && in >> name >> count) {
      units_->statusIs(Zel::Name(name))->historySizeIs(count);
      answer("set");
    } else if (word == "text" && in >> name >> count) {
      units_->statusIs(Zel::Name(name))->profileNameIs(Zel::String8(std::string(count, 'x')));
      answer("set");
    } else if (word == "input" && in >> name) {
      const Ptr<Status> input = inputs_->status(Zel::Name(name));
      answer(input ? std::to_string(input->historySize()) : "none");
    } else if (double patience = 0; word == "end" && in >> patience) {
      server_.end(patience, [this] { turns_.io().stop(); });
    } else if (word == "digest") {
      std::string all = digestOf(units_);
      for (const Ptr<Zel::Entity>& root : contents_.others().roots()) {
        all += " " + digestOf(root);
      }
      answer(all);
    } else if (word == "memory") {
      answer(memory());
    } else if (word == "clients") {
      answer(std::to_string(server_.clients()));
    } else if (word == "turns") {
      answer(std::to_string(turns_.count()));
    } else {
      answer("what? " + line);
    }
    turns_.soon();
  }

  /// Changes something all the time.
  void churn(std::uint64_t seed) {
    contents_.change(seed, 200);
    turns_.soon();
    churn_.expires_after(std::chrono::milliseconds(1));
    churn_.async_wait([this, seed](const asio::error_code& ended) {
      if (!ended) {
        churn(seed + 1);
      }
    });
  }

  const Ptr<StatusDir> units_ = Maintenance::Unit::statusDirFactory("units");
  const Ptr<StatusDir> inputs_ = Maintenance::Unit::statusDirFactory("inputs");
  const Ptr<Zel::Exports> exports_ = Zel::makeObject<Zel::Exports>();
  Contents contents_{units_};
  Net::Turns turns_;
  Net::Server server_;
  Lines lines_;
  asio::steady_timer churn_;
};

class Mirror {
public:
  Mirror(asio::io_context& io, const std::string& path)
      : units_(mounts_->mountIs("units")),
        inputs_(mounts_->mountIs("inputs", Zel::accessReadWrite)), turns_(io),
        client_(turns_, optionsOf(path), mounts_),
        lines_(io, [this](const std::string& line) { command(line); }) {
    for (const Zel::Name& name : Others::names()) {
      others_.push_back(mounts_->mountIs(name));
    }
    turns_.afterEachIs([this] { look(); });
    client_.start();
    answer("mirroring");
  }

private:
  static Net::ClientOptions optionsOf(const std::string& path) {
    Net::ClientOptions options;
    options.path = path;
    options.seed = 1;
    options.backoff = {0.005, 0.05, 2, 0.5};
    options.session.name = "mirror";
    options.log = logLine;
    return options;
  }

  Ptr<StatusDir> units() const { return Zel::ptrCast<StatusDir>(units_->entity()); }
  Ptr<StatusDir> inputs() const { return Zel::ptrCast<StatusDir>(inputs_->entity()); }

  void command(const std::string& line) {
    std::istringstream in(line);
    std::string word;
    std::string name;
    unsigned count = 0;
    in >> word;
    if (word == "await" && in >> name) {
      awaited_ = name;
      look();
    } else if (word == "freeze") {
      isToFreeze_ = true;
    } else if (word == "state") {
      answer(Mount::stateName(units_->state()) + std::string(" ") +
             Mount::stateName(inputs_->state()));
    } else if (word == "verify") {
      if (!client_.session()) {
        answer("no session");
        return;
      }
      verify();
    } else if (word == "digest") {
      std::string all = digestOf(units_->entity());
      for (const Ptr<Mount>& mount : others_) {
        all += " " + digestOf(mount->entity());
      }
      answer(all);
    } else if (word == "get" && in >> name) {
      const Ptr<Status> unit = units()->status(Zel::Name(name));
      answer(unit ? std::to_string(unit->historySize()) : "none");
    } else if (word == "length" && in >> name) {
      answer(std::to_string(units()->status(Zel::Name(name))->profileName().length()));
    } else if (word == "set" && in >> name >> count) {
      set(*units(), name, count);
    } else if (word == "input" && in >> name >> count) {
      set(*inputs(), name, count);
    } else if (word == "flush") {
      client_.session()->echoAsk([](Zel::Session::EchoResult fate) {
        answer(fate == Zel::Session::echoApplied   ? "flushed"
               : fate == Zel::Session::echoDropped ? "dropped"
                                                   : "ended");
      });
    } else if (word == "remember") {
      remembered_.clear();
      for (StatusDir::StatusMap::IteratorConst at(units()->statusMap()); at; at.advance()) {
        remembered_.emplace(at->name(), units()->status(at->name()));
      }
      answer(std::to_string(remembered_.size()));
    } else if (word == "replaced") {
      answer(std::to_string(replaced()));
    } else if (word == "memory") {
      answer(memory());
    } else if (word == "turns") {
      answer(std::to_string(turns_.count()));
    } else {
      answer("what? " + line);
    }
    turns_.soon();
  }

  /// All roots but the one that is written here.
  void verify() {
    const auto left = std::make_shared<std::size_t>(others_.size() + 1);
    const auto worst = std::make_shared<int>(Session::digestEqual);
    const auto ask = [&](const Zel::Name& name) {
      client_.session()->digestAsk(name, [=](Session::DigestResult result) {
        static const char* const names[] = {"equal", "differs", "busy", "unknown"};
        *worst = std::max<int>(*worst, result);
        if (--*left == 0) {
          answer(names[*worst]);
        }
      });
    };
    ask("units");
    for (const Zel::Name& name : Others::names()) {
      ask(name);
    }
  }

  static void set(StatusDir& dir, const std::string& name, unsigned count) {
    try {
      const Ptr<Status> unit = dir.statusIs(Zel::Name(name));
      unit->historySizeIs(count);
      answer("set");
    } catch (const Zel::Exception& failure) {
      answer(failure.message().charPtr());
    }
  }

  /// How many of the units that are remembered and still there are other objects now.
  std::size_t replaced() const {
    std::size_t count = 0;
    for (const auto& [name, unit] : remembered_) {
      const Ptr<Status> now = units()->status(name);
      count += now && now != unit ? 1 : 0;
    }
    return count;
  }

  void look() {
    if (isToFreeze_ && units_->state() == Mount::resyncing) {
      isToFreeze_ = false;
      answer("frozen");
      std::raise(SIGSTOP);
    }
    const auto isAwaited = [this](const auto& mount) {
      return awaited_ == Mount::stateName(mount->state());
    };
    if (!awaited_.empty() && isAwaited(units_) && isAwaited(inputs_) &&
        std::all_of(others_.begin(), others_.end(), isAwaited)) {
      answer(std::exchange(awaited_, {}));
    }
  }

  const Ptr<Zel::Mounts> mounts_ = Zel::makeObject<Zel::Mounts>();
  const Ptr<Mount> units_;
  const Ptr<Mount> inputs_;
  std::vector<Ptr<Mount>> others_;
  std::map<Zel::Name, Ptr<Status>> remembered_;
  std::string awaited_;
  bool isToFreeze_ = false; // when the walk has begun
  Net::Turns turns_;
  Net::Client client_;
  Lines lines_;
};

} // namespace

int main(int argc, char** argv) try {
  const std::vector<std::string> words(argv + 1, argv + argc);
  asio::io_context io;
  if (words.size() >= 2 && words[0] == "serve") {
    Settings settings;
    for (auto at = words.begin() + 2; at != words.end(); ++at) {
      settings.emplace(at->substr(0, at->find('=')), at->substr(at->find('=') + 1));
    }
    Server server(io, words[1], settings);
    io.run();
  } else if (words.size() == 2 && words[0] == "mirror") {
    Mirror mirror(io, words[1]);
    io.run();
  } else {
    std::cerr << "net-peer: serve SOCKET [NAME=VALUE...], or mirror SOCKET\n";
    return 2;
  }
  return 0;
} catch (const std::exception& failure) {
  std::cerr << "net-peer: " << failure.what() << std::endl;
  return 1;
}
