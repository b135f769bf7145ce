// Redis: PUBLISH of 32 bytes to one subscriber, pipelined. The server runs on the first CPU, and
// both clients on the last.

#include "sockets/Server.h"

#include <algorithm>
#include <cstring>
#include <hiredis/hiredis.h>
#include <memory>
#include <string>

namespace {

using namespace Bench::Sockets;

using Context = std::unique_ptr<redisContext, decltype(&redisFree)>;
using Reply = std::unique_ptr<redisReply, decltype(&freeReplyObject)>;

Context connected(const Server& server) {
  Context context(redisConnectUnix(server.socket().c_str()), redisFree);
  if (context == nullptr || context->err != 0) {
    fail("no connection to the server");
  }
  return context;
}

Reply next(const Context& context) {
  void* reply = nullptr;
  if (redisGetReply(context.get(), &reply) != REDIS_OK) {
    fail(context->errstr);
  }
  Reply taken(static_cast<redisReply*>(reply), freeReplyObject);
  if (taken->type == REDIS_REPLY_ERROR) {
    fail(taken->str);
  }
  return taken;
}

double changes(std::size_t count, std::size_t window) {
  const SharedBoard board;
  const Server server({"redis-server", "--port", "0", "--unixsocket", "@/socket", "--save", "",
                       "--appendonly", "no", "--dir", "@", "--logfile", "@/log"});
  {
    const Process reader([&] {
      placeIs(Place::last);
      const Context context = connected(server);
      redisAppendCommand(context.get(), "SUBSCRIBE changes");
      next(context);
      board->readersReady = 1;
      std::uint64_t sum = 0;
      for (std::size_t i = 0; i < count; ++i) {
        const Reply message = next(context);
        std::uint64_t value = 0;
        if (message->elements != 3 || message->element[2]->len != 32) {
          fail("not a message");
        }
        std::memcpy(&value, message->element[2]->str, sizeof value);
        sum += value;
      }
      board->endedAt(now());
      if (sum != std::uint64_t{count} * (count - 1) / 2) {
        fail("messages missing");
      }
    });
    placeIs(Place::last);
    const Context context = connected(server);
    waitFor([&] { return board->readersReady == 1; });
    std::size_t sent = 0;
    std::size_t answered = 0;
    board->started = now();
    while (answered < count) {
      for (; sent < count && sent - answered < window; ++sent) {
        char bytes[32] = {};
        const std::uint64_t value = sent;
        std::memcpy(bytes, &value, sizeof value);
        redisAppendCommand(context.get(), "PUBLISH changes %b", bytes, sizeof bytes);
      }
      for (const std::size_t enough = std::min(sent, answered + window / 2); answered < enough;
           ++answered) {
        next(context);
      }
    }
  }
  return (board->ended - board->started) / static_cast<double>(count) * 1e9;
}

} // namespace

Bench::Sockets::Operations Bench::Sockets::operations() {
  return {{"changes", [] { return changes(500'000, 1024); }}};
}
