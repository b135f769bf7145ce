#include "Two.h"

#include <gtest/gtest.h>

// Sessions that end, and originals that are out of reach, in the midst of a write that is decided.

namespace {

using namespace Maintenance::Unit;
using Zel::Ptr;
using Zel::Session;
using Result = Session::WriteResult;
using Results = std::vector<Result>;

class WritesThatEnd : public testing::Test, public TwoUnits {
protected:
  WritesThatEnd() {
    units->statusIs("a")->stateIs(active);
    share(Zel::accessReadWrite);
    settle();
  }
  ~WritesThatEnd() override {
    if (server) {
      server->close(now);
    }
    if (client) {
      client->close(now);
    }
  }
  void stateIf(Session& session, const Ptr<Status>& unit, const Session::WriteAnswer& answer) {
    session.writeIf({unit, Status::Attr::state, {}, active, init}, answer);
  }

  Results results;
};

TEST_F(WritesThatEnd, TheSessionInTheAnswer) {
  stateIf(*client, mirror("a"), [this](Result result) {
    results.push_back(result);
    client->close(now, "enough");
    client = nullptr;
  });
  stateIf(*client, mirror("a"), [this](Result result) { results.push_back(result); });
  serve(*client);
  move(*client, *server);
  serve(*server);
  move(*server, *client);
  client->service(now); // which nobody else holds
  EXPECT_FALSE(client);
  EXPECT_EQ(results, (Results{Session::writeDone, Session::writeLost}));
}

TEST_F(WritesThatEnd, TheSessionInTheAnswerThatTheEndBrings) {
  stateIf(*client, mirror("a"), [this](Result result) {
    results.push_back(result);
    stateIf(*client, mirror("a"), [this](Result again) {
      results.push_back(again);
      client = nullptr;
    });
  });
  client->close(now);
  EXPECT_EQ(results, (Results{Session::writeLost, Session::writeLost}));
}

TEST_F(WritesThatEnd, TheSessionInTheMutator) {
  const auto unit = units->status("a");
  struct Closing : Status::Notifiee {
    void onState() override { work(); }
    std::function<void()> work;
  };
  const auto closing = Zel::makeObject<Closing>();
  closing->isRegisteredNotifieeIs(true);
  closing->notifierIs(unit);
  closing->work = [this] {
    server->close(now, "enough");
    server = nullptr;
  };
  stateIf(*client, mirror("a"), [this](Result result) { results.push_back(result); });
  client->service(now);
  move(*client, *server);
  server->service(now);
  EXPECT_FALSE(server);
  EXPECT_EQ(unit->state(), init);
  client->close(now);
  EXPECT_EQ(results, Results{Session::writeLost});
}

TEST_F(WritesThatEnd, OfWhatTheOriginalIsOutOfReachAreRefused) {
  Two last;
  last.exports->entityIs(mirror(), Zel::accessReadWrite);
  last.mounts->mountIs("units", Zel::accessReadWrite);
  last.settle();
  cut();
  last.settle();
  const auto theirs = Zel::ptrCast<StatusDir>(last.mounts->mount("units")->entity());
  stateIf(*last.client, theirs->status("a"), [this](Result result) { results.push_back(result); });
  last.settle();
  last.client->writeIf({theirs->status("a"), Status::Attr::history, 1.5, {}, Zel::String8("new")},
                       [this](Result result) { results.push_back(result); });
  last.settle();
  EXPECT_EQ(results, (Results{Session::writeRefused, Session::writeRefused}));
  EXPECT_EQ(mirror("a")->state(), active);
  EXPECT_EQ(theirs->status("a")->state(), active);
  EXPECT_EQ(mirror("a")->historyMap().count(), 0U);
  EXPECT_EQ(theirs->status("a")->historyMap().count(), 0U);
  last.cut();
}

} // namespace
