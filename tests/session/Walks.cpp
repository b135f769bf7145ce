#include "Says.h"

#include "attrlog/Ear.h"

#include <gtest/gtest.h>

// The end of a walk is announced once nothing below the root is owed that was there at its start.

namespace {

using Wiretap::listen;
using Words = std::vector<std::string>;
using Zel::Mount;
using Zel::Name;
using Zel::Ptr;
using Zel::String8;

class Walks : public testing::Test, public TwoUnits {
protected:
  /// What the server says once it is asked for the units, in records, without those inside of
  /// entities.
  Words saidOnAsk() {
    share();
    serve(*server);
    move(*server, *client);
    serve(*client);
    move(*client, *server); // its hello
    serve(*server);
    move(*server, *client); // the offer
    serve(*client);
    move(*client, *server); // what it asks for
    return said(*server);
  }
  Words said(Session& from) const {
    Words words;
    for (bool more = true; more;) {
      more = from.service(now);
      for (const Wiretap::Seen& seen : Wiretap::records(*from.connection())) {
        more = true;
        words.push_back(says(seen));
      }
    }
    return words;
  }
};

TEST_F(Walks, TheGrantTheRootAndTheMarksStandInThisOrder) {
  units->statusIs("a");
  EXPECT_EQ(saidOnAsk(), (Words{"grant units read-only",
                                "root",
                                "walk begins",
                                "begin 258",
                                "258",
                                "end 258",
                                "259",
                                "begin 260",
                                "end 260",
                                "261",
                                "262",
                                "263",
                                "264",
                                "265",
                                "267",
                                "begin 268",
                                "end 268",
                                "269",
                                "270",
                                "271",
                                "begin 272",
                                "end 272",
                                "273",
                                "274",
                                "walk is over"}));
}

TEST_F(Walks, AnEmptyRootIsWalkedToo) {
  EXPECT_EQ(saidOnAsk(), (Words{"grant units read-only", "root", "walk begins", "begin 258",
                                "end 258", "walk is over"}));
}

TEST_F(Walks, ALargeDirectoryIsLiveWithItsLastMember) {
  connectTightly();
  fillUnits(3000, 100);
  const Ptr<Mount> mount = share();
  const auto ear = listen<MountEar>(mount);
  std::size_t members = 0;
  bool wasEqual = false;
  ear->onHeard = [&](const std::string& word) {
    if (word == "live at 100") {
      members = mirror()->statusMap().count();
      wasEqual = isEqual();
    }
  };
  settle();
  EXPECT_EQ(mount->state(), Mount::live);
  EXPECT_EQ(members, 3000U);
  EXPECT_TRUE(wasEqual);
}

TEST_F(Walks, TheLastRecordOfALargeWalkIsItsEnd) {
  connectTightly();
  fillUnits(3000, 100);
  const Words words = saidOnAsk();
  EXPECT_EQ(std::count(words.begin(), words.end(), "258"), 3000);
  EXPECT_EQ(std::count(words.begin(), words.end(), "walk begins"), 1);
  EXPECT_EQ(std::count(words.begin(), words.end(), "walk is over"), 1);
  EXPECT_EQ(words.back(), "walk is over");
}

TEST_F(Walks, ALongTextIsPartOfTheWalk) {
  connectTightly();
  const String8 text(std::string(500000, 't'));
  units->statusIs("a")->profileNameIs(text);
  units->status("a")->historyIs(1.5, text);
  const Ptr<Mount> mount = share();
  const auto ear = listen<MountEar>(mount);
  bool wasEqual = false;
  ear->onHeard = [&](const std::string& word) { wasEqual = word == "live at 100" && isEqual(); };
  settle();
  EXPECT_TRUE(wasEqual);
  EXPECT_EQ(mirror("a")->profileName(), text);
}

TEST_F(Walks, ChangesMeanwhileDoNotHoldItUp) {
  connectTightly();
  fillUnits(1000, 100);
  const Ptr<Mount> mount = share();
  unsigned rounds = 0;
  while (mount->state() != Mount::live && rounds < 5000) {
    ++rounds;
    const std::string name = std::to_string(rounds * 7 % 1000);
    units->status(Name(name))->genIdIs(rounds);
    units->statusDel(Name(std::to_string(rounds * 13 % 1000)));
    units->statusIs(Name(std::to_string(rounds * 13 % 1000)))->genIdIs(rounds);
    units->statusIs(Name("new" + std::to_string(rounds)));
    server->service(now, 4096);
    client->service(now);
    move(*server, *client, 3000); // a slow reader
    move(*client, *server);
  }
  EXPECT_EQ(mount->state(), Mount::live);
  EXPECT_LT(rounds, 5000U);
  // What it was to hold from the start it holds by now, but for what has been changed since.
  std::size_t lacking = 0;
  for (unsigned i = 0; i < 1000; ++i) {
    lacking += mirror(std::to_string(i).c_str()) ? 0 : 1;
  }
  EXPECT_LE(lacking, server->exported("units")->owed() + 1);
  settle();
  EXPECT_EQ(mount->state(), Mount::live);
  EXPECT_TRUE(isEqual());
}

TEST_F(Walks, AStalledReaderIsNotToldOfAnEnd) {
  connectTightly();
  fillUnits(1000, 100);
  const Ptr<Mount> mount = share();
  for (unsigned i = 0; i < 10; ++i) {
    serve(*server);
    serve(*client);
    move(*client, *server);
    move(*server, *client, 200);
  }
  const Ptr<Zel::NboAttrLog::Root> root = server->exported("units");
  ASSERT_TRUE(root);
  EXPECT_FALSE(root->isMarkedSent());
  EXPECT_GT(root->owed(), 0U);
  EXPECT_EQ(server->connection()->out()->capacity(), Zel::ConnectionLimits::smallestRing);
  units->statusDelAll(); // which leaves nothing of the walk
  settle();
  EXPECT_TRUE(root->isMarkedSent());
  EXPECT_EQ(mount->state(), Mount::live);
  EXPECT_TRUE(isEqual());
}

} // namespace
