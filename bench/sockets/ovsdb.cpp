// A database server that clients monitor: transactions from one client, updates of rows to another.
// Neither client makes a tree of what it reads, which is in the server's favour.

#include "sockets/Server.h"

#include <cstdio>
#include <cstring>
#include <string>
#include <string_view>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>
#include <vector>

namespace {

using namespace Bench::Sockets;

/// A folder's database, and the server that has it.
class Database {
public:
  Database()
      : server_(
            {"sh", "-c",
             "echo '{\"name\":\"Bench\",\"version\":\"1.0.0\",\"tables\":{\"Unit\":{\"columns\":{"
             "\"name\":{\"type\":\"string\"},\"genId\":{\"type\":\"integer\"}},\"isRoot\":true"
             "}}}' >@/schema && ovsdb-tool create @/database @/schema && exec ovsdb-server "
             "--remote=punix:@/socket --unixctl=@/control --no-chdir -vconsole:off "
             "-vsyslog:off -vfile:off @/database"}) {}
  std::string socket() const { return server_.socket(); }

private:
  const Server server_;
};

/// Messages to the server and from it: objects of JSON, one behind the other.
class Client {
public:
  explicit Client(const std::string& path) : socket_(socket(AF_UNIX, SOCK_STREAM, 0)) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::strncpy(address.sun_path, path.c_str(), sizeof address.sun_path - 1);
    if (connect(socket_, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) {
      fail("no connection to the server");
    }
  }
  ~Client() { close(socket_); }
  Client(const Client&) = delete;
  Client& operator=(const Client&) = delete;

  void send(const std::string& message) { writeAll(socket_, message.data(), message.size()); }

  /// The next message; waits for it.
  std::string next() {
    for (;;) {
      std::string message;
      while (!taken(message)) {
        char bytes[65536];
        buffer_.append(bytes, readSome(socket_, bytes, sizeof bytes));
      }
      if (message.find("\"error\":{") != std::string::npos) {
        fail(message.substr(0, 300));
      }
      if (message.find("\"method\":\"echo\"") == std::string::npos) {
        return message;
      }
      send(R"({"id":"echo","error":null,"result":[]})");
    }
  }

private:
  bool taken(std::string& message) {
    for (; at_ < buffer_.size(); ++at_) {
      const char byte = buffer_[at_];
      if (isText_) {
        isText_ = byte != '"' || isEscaped_;
        isEscaped_ = byte == '\\' && !isEscaped_;
      } else if (byte == '"') {
        isText_ = true;
      } else if (byte == '{' || byte == '[') {
        ++depth_;
      } else if ((byte == '}' || byte == ']') && --depth_ == 0) {
        message = buffer_.substr(0, ++at_);
        buffer_.erase(0, at_);
        at_ = 0;
        return true;
      }
    }
    return false;
  }

  const int socket_;
  std::string buffer_;
  std::size_t at_ = 0;
  int depth_ = 0;
  bool isText_ = false;
  bool isEscaped_ = false;
};

const char* const monitor =
    R"({"method":"monitor","id":0,"params":["Bench",null,{"Unit":{"columns":["name","genId"]}}]})";

/// No other value begins with it.
constexpr std::size_t lastValue = 1'000'000'000;

std::string transaction(const std::string& operations) {
  return R"({"method":"transact","id":1,"params":["Bench")" + operations + "]}";
}

std::size_t occurrences(std::string_view text, std::string_view of) {
  std::size_t count = 0;
  for (std::size_t at = 0; (at = text.find(of, at)) != std::string_view::npos; at += of.size()) {
    ++count;
  }
  return count;
}

/// Fills the table; yields the ids of its rows.
std::vector<std::string> filled(Client& client, std::size_t count) {
  std::vector<std::string> ids;
  while (ids.size() < count) {
    std::string operations;
    for (std::size_t i = 0; i < 1000; ++i) {
      char text[160];
      const std::size_t number = ids.size() + i;
      std::snprintf(text, sizeof text,
                    R"(,{"op":"insert","table":"Unit","row":{"name":"profile-%07zu-p%03zu",)"
                    R"("genId":0}})",
                    number, number % 8);
      operations += text;
    }
    client.send(transaction(operations));
    const std::string answer = client.next();
    constexpr std::string_view mark = "[\"uuid\",\"";
    for (std::size_t at = 0; (at = answer.find(mark, at)) != std::string::npos; at += mark.size()) {
      ids.push_back(answer.substr(at + mark.size(), 36));
    }
  }
  return ids;
}

/// Changes of ten thousand rows, so many in a transaction, and so many transactions on their way.
double changes(std::size_t count, std::size_t together, std::size_t window) {
  const SharedBoard board;
  const Database database;
  {
    Client client(database.socket());
    const std::vector<std::string> ids = filled(client, 10'000);
    const Process reader([&] {
      placeIs(Place::last);
      Client own(database.socket());
      own.send(monitor);
      own.next();
      board->readersReady = 1;
      // A row that changes twice between two messages is told once.
      const std::string last = "\"genId\":" + std::to_string(lastValue);
      std::size_t seen = 0;
      for (std::string message; message.find(last) == std::string::npos;) {
        message = own.next();
        seen += occurrences(message, "\"new\":");
      }
      board->endedAt(now());
      if (seen != count) {
        fail("seen " + std::to_string(seen) + " changes");
      }
    });
    placeIs(Place::last);
    waitFor([&] { return board->readersReady == 1; });
    board->started = now();
    std::size_t sent = 0;
    for (std::size_t answered = 0; answered < count / together; ++answered) {
      for (; sent < count && sent / together < answered + window;) {
        std::string operations;
        for (std::size_t i = 0; i < together; ++i) {
          char text[200];
          ++sent;
          std::snprintf(text, sizeof text,
                        R"(,{"op":"update","table":"Unit","where":[["_uuid","==",["uuid","%s"]]],)"
                        R"("row":{"genId":%zu}})",
                        ids[sent * 7919 % ids.size()].c_str(), sent == count ? lastValue : sent);
          operations += text;
        }
        client.send(transaction(operations));
      }
      client.next();
    }
  }
  return (board->ended - board->started) / static_cast<double>(count) * 1e9;
}

/// All rows to a client that begins to monitor them.
double walk(std::size_t count) {
  const Database database;
  placeIs(Place::last);
  {
    Client client(database.socket());
    filled(client, count);
  }
  const double started = now();
  Client client(database.socket());
  client.send(monitor);
  const std::string rows = client.next();
  const double took = now() - started;
  if (occurrences(rows, "\"new\":") != count) {
    fail("rows are missing");
  }
  return took / static_cast<double>(count) * 1e9;
}

} // namespace

Bench::Sockets::Operations Bench::Sockets::operations() {
  return {
      {"changes", [] { return changes(100'000, 100, 8); }},
      {"walk", [] { return walk(100'000); }},
  };
}
