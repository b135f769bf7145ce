#include "LocalValues.h"
#include "Texts.h"

#include <model/Profile.h>
#include <text/Path.h>

namespace {

using namespace TestText;
using namespace Maintenance::Profile;
using Maintenance::Unit::Status;
using Maintenance::Unit::StatusDir;
using Maintenance::Unit::statusDirFactory;
using Zel::Dir;
using Zel::Entity;
using Zel::Name;
using Zel::Ptr;

template <class V>
std::string segment(const V& key) {
  return std::string(Zel::pathSegment(Zel::valueRecord<V>, &key).view());
}

template <class V>
V fromSegment(const std::string& text) {
  V key{};
  Zel::readPathSegment(text, Zel::valueRecord<V>, &key);
  return key;
}

template <class V>
void expectSegment(const V& key, const std::string& text) {
  EXPECT_EQ(segment(key), text);
  EXPECT_TRUE(fromSegment<V>(text) == key) << text;
}

template <class V>
std::string segmentRefusal(const std::string& text) {
  return Support::rangeFailure([&] { fromSegment<V>(text); });
}

TEST(PathSegment, OfAStringIsTheBareText) {
  expectSegment(String8("System"), "System");
  expectSegment(String8(""), "");
  expectSegment(Name("it's \"so\""), "it's \"so\"");
  expectSegment(String8("a/b%c,d"), "a%2Fb%25c,d");
  expectSegment(String8(std::string_view("\0\n\xff", 3)), std::string("\0\n\xff", 3));
}

TEST(PathSegment, OfAnEnumeratorIsItsName) {
  expectSegment(Maintenance::Unit::underMaintenance, "underMaintenance");
  EXPECT_EQ(segmentRefusal<State>("'init'"), "State");
  EXPECT_EQ(segmentRefusal<State>(""), "State");
}

TEST(PathSegment, OfAnInterfaceIsItsName) {
  expectSegment(IntfId("Ethernet3/1"), "Ethernet3%2F1");
  expectSegment(IntfId(), "none");
  expectSegment(IntfId(0xffffffff, 0), "Intf(0xffffffff,0x00000000)");
}

TEST(PathSegment, OfANumberIsItsText) {
  expectSegment(~0ULL, "18446744073709551615");
  expectSegment(4294967295U, "4294967295");
  expectSegment(-0.5, "-0.5");
  expectSegment(true, "true");
  EXPECT_EQ(segmentRefusal<double>("1x"), "junk at column 1 deserializing 1x");
}

TEST(PathSegment, OfAValueIsWhatItStoresJoinedByCommas) {
  expectSegment(ProfileKey(profileTypeBgp, "drain"), "profileTypeBgp,drain");
  expectSegment(ProfileKey(), "profileTypeNone,");
  expectSegment(GroupKey(Group::groupTypeBgp, "a,b/c%d'"), "groupTypeBgp,a%2Cb%2Fc%25d'");
  expectSegment(Wide(1, 2, 3, 4, 5, 6, 7, 8, "x,"), "1,2,3,4,5,6,7,8,x%2C");
  expectSegment(BuiltinUnitName(), "");
}

TEST(PathSegment, OfAValueInAValueIsEscapedOnceMore) {
  Mixed value("n", "", ProfileKey(profileTypeBgp, "a,b"));
  value.numberIs(3);
  expectSegment(value, "n,3,profileTypeBgp%2Ca%252Cb,0%2C0%2C0,true");
}

TEST(PathSegment, OfAnyStringReadsBack) {
  Random random(7);
  for (int round = 0; round < 2000; ++round) {
    const String8 text = randomString(random);
    ASSERT_EQ(fromSegment<String8>(segment(text)), text);
    ASSERT_EQ(segment(text).find('/'), std::string::npos);
    const GroupKey key(Group::groupTypeInterface, text);
    ASSERT_TRUE(fromSegment<GroupKey>(segment(key)) == key) << text;
    ASSERT_EQ(segment(key).find('/'), std::string::npos);
  }
}

TEST(PathSegment, IsRefusedWithBadEscapesAndTooFewOrManyCommas) {
  EXPECT_EQ(segmentRefusal<String8>("a%2"), "bad escape in a%2");
  EXPECT_EQ(segmentRefusal<String8>("%"), "bad escape in %");
  EXPECT_EQ(segmentRefusal<String8>("%+1"), "bad escape in %+1");
  EXPECT_EQ(segmentRefusal<String8>("%2x"), "bad escape in %2x");
  EXPECT_EQ(segmentRefusal<ProfileKey>("profileTypeBgp"), "too few attributes in profileTypeBgp");
  EXPECT_EQ(segmentRefusal<ProfileKey>("profileTypeBgp,a,b"),
            "too many attributes in profileTypeBgp,a,b");
  EXPECT_EQ(segmentRefusal<ProfileKey>("bgp,a"), "ProfileType");
  EXPECT_EQ(segmentRefusal<BuiltinUnitName>("x"), "too many attributes in x");
}

TEST(PathSegment, ThatIsRefusedLeavesTheKeyAsItWas) {
  ProfileKey key(profileTypeUnit, "before");
  EXPECT_EQ(Support::rangeFailure([&] {
              Zel::readPathSegment("profileTypeBgp,a,b", Zel::valueRecord<ProfileKey>, &key);
            }),
            "too many attributes in profileTypeBgp,a,b");
  EXPECT_TRUE(key == ProfileKey(profileTypeUnit, "before"));
}

/// A program with two roots.
class Paths : public testing::Test {
protected:
  Paths() {
    dir_->entityIs(units_);
    dir_->entityIs(profiles_);
  }

  Ptr<Entity> at(const std::string& path) const { return Zel::entityAt(*dir_, path); }
  std::string refusalAt(const std::string& path) const {
    return Support::rangeFailure([&] { at(path); });
  }
  std::vector<std::string> rest(const std::string& path, const Ptr<Entity>& expected) const {
    const Zel::PathEnd end = Zel::pathEnd(*dir_, path);
    EXPECT_EQ(end.entity, expected) << path;
    return {end.rest.begin(), end.rest.end()};
  }

  const Ptr<Dir> dir_ = Zel::makeObject<Dir>();
  const Ptr<StatusDir> units_ = statusDirFactory("units");
  const Ptr<ConfigDir> profiles_ = configDirFactory("the/profiles");
};

TEST_F(Paths, OfRootsAndMembersLeadBack) {
  const Ptr<Status> unit = units_->statusIs("slot/3%");
  EXPECT_EQ(unit->uriPath().text(), String8("/units/status/slot%2F3%25"));
  EXPECT_EQ(at("/units/status/slot%2F3%25"), unit);
  EXPECT_EQ(units_->uriPath().text(), String8("/units"));
  EXPECT_EQ(at("/units"), units_);
  EXPECT_EQ(profiles_->uriPath().text(), String8("/the%2Fprofiles"));
  EXPECT_EQ(at("/the%2Fprofiles"), profiles_);
}

TEST_F(Paths, NameMembersByTheirKeyNotByTheirName) {
  const Ptr<Config> profile = profiles_->configIs(ProfileKey(profileTypeBgp, "a/b,c"));
  EXPECT_EQ(profile->name(), Name(""));
  EXPECT_EQ(profile->uriPath().text(), String8("/the%2Fprofiles/config/profileTypeBgp,a%2Fb%2Cc"));
  EXPECT_EQ(at("/the%2Fprofiles/config/profileTypeBgp,a%2Fb%2Cc"), profile);
}

TEST_F(Paths, OfAnyMemberLeadBack) {
  Random random(99);
  for (int round = 0; round < 500; ++round) {
    const Ptr<Entity> unit = units_->statusIs(randomString(random));
    ASSERT_EQ(at(std::string(unit->uriPath().text().view())), unit);
    const Ptr<Entity> profile = profiles_->configIs(randomValue<ProfileKey>(random));
    ASSERT_EQ(at(std::string(profile->uriPath().text().view())), profile);
  }
}

TEST_F(Paths, OfMergedInputsNameTheUnitAndNotThePriority) {
  using namespace Maintenance::Unit;
  const auto merged = mergedInputDirFactory("merged");
  dir_->entityIs(merged);
  const Ptr<Entity> input = merged->unitIs("slot/3", srcCli);
  EXPECT_EQ(input->uriPath().text(), String8("/merged/unit/slot%2F3"));
  EXPECT_EQ(at("/merged/unit/slot%2F3"), input);
  EXPECT_EQ(at("/merged/slot%2F3"), input);
}

TEST_F(Paths, MayLeaveOutTheOneCollection) {
  const Ptr<Status> unit = units_->statusIs("System");
  EXPECT_EQ(at("/units/System"), unit);
  const Ptr<Config> profile = profiles_->configIs(ProfileKey(profileTypeBgp, "p"));
  EXPECT_EQ(at("/the%2Fprofiles/profileTypeBgp,p"), profile);
}

TEST_F(Paths, AreTriedInTheFullFormFirst) {
  const Ptr<Status> namesake = units_->statusIs("status");
  EXPECT_EQ(at("/units/status"), namesake);
  EXPECT_EQ(at("/units/status/status"), namesake);
  EXPECT_EQ(rest("/units/status/state", namesake), std::vector<std::string>{"state"});
  const Ptr<Status> other = units_->statusIs("state");
  EXPECT_EQ(at("/units/status/state"), other);
}

TEST_F(Paths, WithEmptyNamesLeadBack) {
  const auto nameless = statusDirFactory("");
  dir_->entityIs(nameless);
  const Ptr<Status> unit = nameless->statusIs("");
  EXPECT_EQ(nameless->uriPath().text(), String8("/"));
  EXPECT_EQ(at("/"), nameless);
  EXPECT_EQ(unit->uriPath().text(), String8("//status/"));
  EXPECT_EQ(at("//status/"), unit);
  EXPECT_EQ(at("//"), unit);
}

TEST_F(Paths, ThatLeadNowhereAreRefused) {
  units_->statusIs("System");
  for (const char* const path :
       {"", "units", "units/status/System", "/", "/other", "/units/", "/units/status",
        "/units/status/", "/units/status/Other", "/units/Other", "/units/state/System",
        "/units/status/System/", "/units/status/System/state", "/units//status/System",
        "/the/profiles", "/%", "/the%2Fprofiles/config/profileTypeBgp",
        "/the%2Fprofiles/config/bgp,a", "/the%2Fprofiles/config/profileTypeBgp,%"}) {
    EXPECT_EQ(refusalAt(path), std::string("no entity at ") + path);
  }
}

TEST_F(Paths, LeaveTheSegmentsBehindTheLastEntity) {
  const Ptr<Status> unit = units_->statusIs("System");
  EXPECT_EQ(rest("/units/status/System", unit), std::vector<std::string>{});
  EXPECT_EQ(rest("/units/status/System/state", unit), std::vector<std::string>{"state"});
  EXPECT_EQ(rest("/units/System/group/groupTypeBgp,a%2Cb", unit),
            (std::vector<std::string>{"group", "groupTypeBgp,a%2Cb"}));
  EXPECT_EQ(rest("/units/status/Other/state", units_),
            (std::vector<std::string>{"status", "Other", "state"}));
  EXPECT_EQ(rest("/units/", units_), std::vector<std::string>{""});
  EXPECT_EQ(rest("/other/a", nullptr), (std::vector<std::string>{"other", "a"}));
  EXPECT_EQ(rest("units", nullptr), std::vector<std::string>{});
}

TEST_F(Paths, MakeNoMembers) {
  refusalAt("/units/status/Other");
  refusalAt("/units/Other");
  EXPECT_EQ(units_->statusMap().count(), 0U);
}

TEST_F(Paths, OfEntitiesWithoutATableGoByTheirNamesAndEndThere) {
  struct Plain : Entity {
    explicit Plain(Name name) : Entity(std::move(name)) {}
  };
  const auto root = Zel::makeObject<Plain>("plain");
  const auto child = Zel::makeObject<Plain>("a/b");
  child->parentIs(root);
  child->parentAttrIdIs(258);
  EXPECT_EQ(child->uriPath().text(), String8("/plain/unknown/a%2Fb"));
  dir_->entityIs(root);
  EXPECT_EQ(at("/plain"), root);
  EXPECT_EQ(rest("/plain/unknown/a%2Fb", root), (std::vector<std::string>{"unknown", "a%2Fb"}));
}

} // namespace
