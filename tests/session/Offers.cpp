#include "Alone.h"
#include "support/Failure.h"

#include <Zel/Exception>
#include <model/Profile.h>

#include <gtest/gtest.h>

namespace {

using Words = std::vector<std::string>;
using End = Zel::Connection::End;
using Zel::Mount;
using Zel::Ptr;
using Zel::String8;

/// A client whose server is the test.
class Client : public Alone, public testing::Test {
protected:
  Client() : Alone(End::first) {
    hear(hello(accepting));
    said();
    log.clear();
  }
};

/// A server whose client is the test.
class Server : public Alone, public testing::Test {
protected:
  Server() {
    hear(hello());
    said();
    log.clear();
  }
  const Ptr<Maintenance::Unit::StatusDir> units = Maintenance::Unit::statusDirFactory("units");
};

TEST_F(Server, WhatIsExportedLaterIsOffered) {
  exports->entityIs(units, Zel::accessReadWrite);
  EXPECT_EQ(said(), Words{"offer units Maintenance::Unit::StatusDir read-write"});
  EXPECT_EQ(exports->entityDel("units"), units);
  EXPECT_EQ(said(), Words{"withdraw units"});
  EXPECT_FALSE(exports->entityDel("units"));
  EXPECT_EQ(said(), Words());
}

TEST_F(Server, AnAskIsAnsweredAsItDeserves) {
  exports->entityIs(units);
  said();
  hear(ask("nothing"));
  EXPECT_EQ(said(), Words{"refuse nothing: no such root"});
  hear(ask("units", 0) + ask("units", 3));
  EXPECT_EQ(said(), (Words{"refuse units: not granted", "refuse units: not granted"}));
  hear(ask("units", 2)); // more than is offered
  EXPECT_EQ(said().front(), "grant units read-only");
  hear(ask("units")); // as one that has crossed a withdrawal and an offer does
  EXPECT_EQ(said(), Words());
  EXPECT_EQ(log, (Words{"warning: refused peer the root nothing: no such root",
                        "warning: refused peer the root units: not granted",
                        "warning: refused peer the root units: not granted",
                        "debug: peer mounts units, read-only"}));
}

TEST_F(Server, AWithdrawnRootIsSentNoMoreAndCanBeMountedAnew) {
  exports->entityIs(units);
  hear(ask("units"));
  said();
  ASSERT_TRUE(session->exported("units"));
  exports->entityDel("units");
  units->statusIs("a");
  EXPECT_EQ(said(), Words{"withdraw units"});
  EXPECT_FALSE(session->exported("units"));
  EXPECT_EQ(session->connection()->demuxer()->adapters(), 0U);
  exports->entityIs(units);
  hear(ask("units"));
  const Words again = said();
  EXPECT_EQ(again[1], "grant units read-only");
  EXPECT_EQ(again[2], "root");
}

TEST_F(Server, AnAskForWhatIsWithdrawnMeanwhileIsRefused) {
  exports->entityIs(units);
  exports->entityDel("units");
  said();
  hear(ask("units"));
  EXPECT_EQ(said(), Words{"refuse units: no such root"});
}

/// Grants as its test says.
class Strict : public Zel::Exports {
public:
  Zel::Access grant(const Zel::Session& session, const Zel::Name& name,
                    Zel::Access wanted) const override {
    asked.push_back(std::string(session.peer().name.view()) + " " + std::string(name.view()) + " " +
                    std::to_string(wanted));
    return answer;
  }
  mutable Words asked;
  Zel::Access answer = Zel::accessNone;
};

TEST(Grants, AreTheProgramsToGiveButNeverMoreThanIsWanted) {
  const auto strict = Zel::makeObject<Strict>();
  strict->entityIs(Maintenance::Unit::statusDirFactory("units"));
  const auto session = Zel::makeObject<Zel::Session>(End::second, Zel::SessionOptions(),
                                                     Ptr<Zel::Exports>(strict), nullptr);
  const auto hear = [&](const std::string& bytes) {
    Wiretap::taken(*session->connection());
    std::memcpy(session->connection()->inputSpace().data(), bytes.data(), bytes.size());
    session->connection()->inputReceived(bytes.size());
    session->service(1);
    return says(Wiretap::records(*session->connection()));
  };
  hear(Alone::hello());
  EXPECT_EQ(hear(Alone::ask("units")), Words{"refuse units: not granted"});
  strict->answer = Zel::accessReadWrite;
  EXPECT_EQ(hear(Alone::ask("units")).front(), "grant units read-only");
  EXPECT_EQ(strict->asked, (Words{"peer units 1", "peer units 1"}));
}

/// An entity without an attribute log.
struct Plain : Zel::Entity {
  Plain() : Entity("plain") {}
};

TEST(Exports, TakeRootsOnly) {
  const auto exports = Zel::makeObject<Zel::Exports>();
  const auto units = Maintenance::Unit::statusDirFactory("units");
  EXPECT_THROW(exports->entityIs(nullptr), Zel::RangeException);
  EXPECT_THROW(exports->entityIs(Maintenance::Unit::statusDirFactory("")), Zel::RangeException);
  EXPECT_THROW(exports->entityIs(units->newStatus("a")), Zel::RangeException);
  EXPECT_THROW(exports->entityIs(units, Zel::accessNone), Zel::RangeException);
  EXPECT_THROW(
      exports->entityIs(Maintenance::Unit::statusDirFactory(String8(std::string(16001, 'n')))),
      Zel::RangeException);
  EXPECT_EQ(Support::rangeFailure([&] { exports->entityIs(Zel::makeObject<Plain>()); }),
            "no attribute log: plain");
  exports->entityIs(units);
  EXPECT_THROW(exports->entityIs(Maintenance::Unit::statusDirFactory("units")),
               Zel::NameInUseException);
  EXPECT_EQ(exports->roots().size(), 1U);
}

TEST_F(Client, OffersAreNotedAndWhatIsWantedIsAskedFor) {
  mounts->mountIs("units", Zel::accessReadWrite);
  hear(offer("other") + offer("units"));
  EXPECT_EQ(said(), Words{"ask units read-write"});
  EXPECT_FALSE(session->hasOffers());
  hear(named(9, ""));
  EXPECT_TRUE(session->hasOffers());
  EXPECT_EQ(session->offers(),
            (std::map<Zel::Name, String8>{{"other", "Maintenance::Unit::StatusDir"},
                                          {"units", "Maintenance::Unit::StatusDir"}}));
  mounts->mountIs("other"); // offered already
  EXPECT_EQ(said(), Words{"ask other read-only"});
  hear(offer("units")); // again
  EXPECT_EQ(said(), Words());
}

TEST_F(Client, AllIsAskedForWhetherOfferedBeforeOrLater) {
  hear(offer("a"));
  mounts->allIs(Zel::accessReadOnly);
  EXPECT_EQ(said(), Words{"ask a read-only"});
  hear(offer("b"));
  EXPECT_EQ(said(), Words{"ask b read-only"});
}

TEST_F(Client, OfUnknownTypesNothingIsAskedFor) {
  const Ptr<Mount> mount = mounts->mountIs("units");
  mounts->allIs(Zel::accessReadOnly);
  hear(offer("units", "Nobody::Nothing") + offer("state", "Maintenance::Unit::State"));
  EXPECT_EQ(said(), Words());
  EXPECT_EQ(mount->state(), Mount::refused);
  EXPECT_EQ(mount->reason(), "unknown type: Nobody::Nothing");
  EXPECT_EQ(log,
            (Words{"warning: the root units is refused: unknown type: Nobody::Nothing",
                   "warning: the root state is refused: unknown type: Maintenance::Unit::State"}));
  hear(offer("units")); // it is another one by now
  EXPECT_EQ(said(), Words{"ask units read-only"});
}

TEST_F(Client, ThePeersRefusalIsTold) {
  const Ptr<Mount> mount = mounts->mountIs("units");
  hear(offer("units") + refuse("units", "not\ngranted"));
  EXPECT_EQ(mount->state(), Mount::refused);
  EXPECT_EQ(mount->reason(), "not?granted");
  EXPECT_EQ(mount->since(), 100);
}

TEST_F(Client, MoreOffersThanAreKeptEndTheSession) {
  for (unsigned i = 0; i < 1024; ++i) {
    hear(offer(String8(std::to_string(i))));
  }
  hear(offer("7")); // known
  EXPECT_TRUE(session->isUp());
  hear(named(3, "7") + offer("new"));
  EXPECT_TRUE(session->isUp());
  hear(offer("one more"));
  EXPECT_EQ(failure(), "the peer offers more roots than are kept");
}

TEST_F(Client, MoreThanAreMountedAreLeft) {
  const auto few = Zel::makeObject<Zel::Mounts>(nullptr, 2U);
  few->allIs(Zel::accessReadOnly);
  few->mountIs("c");
  session->close(now);
  const auto other = Zel::makeObject<Zel::Session>(End::first, Zel::SessionOptions(), nullptr, few);
  const std::string bytes = hello(accepting) + offer("a") + offer("b") + offer("c");
  std::memcpy(other->connection()->inputSpace().data(), bytes.data(), bytes.size());
  other->connection()->inputReceived(bytes.size());
  other->service(1);
  EXPECT_EQ(says(Wiretap::records(*other->connection())),
            (Words{"hello", "offers end", "ask a read-only", "ask c read-only"}));
}

TEST_F(Client, OffersOfNothingArePassedOver) {
  hear(offer("") + offer("units", "Maintenance::Unit::StatusDir", 0));
  EXPECT_EQ(counts().badValues, 2U);
  EXPECT_EQ(session->offers().size(), 0U);
  EXPECT_TRUE(session->isUp());
}

} // namespace
