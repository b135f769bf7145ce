#include "Texts.h"

#include <Zel/Dir>
#include <Zel/GenericIf>
#include <model/Profile.h>

namespace {

using namespace TestText;
using namespace Maintenance::Profile;
using Maintenance::Unit::Status;
using Maintenance::Unit::StatusDir;
using Maintenance::Unit::statusDirFactory;
using Zel::Dir;
using Zel::Entity;
using Zel::Ptr;
using Zel::PtrInterface;

std::string reference(const Ptr<PtrInterface>& object, const Zel::ZelType* type = nullptr) {
  return std::string(Zel::valueToStrepOfRawPtr(object.ptr(), type).view());
}

/// A program with roots, in which text resolves.
class References : public testing::Test {
protected:
  References() {
    dir_->entityIs(units_);
    dir_->entityIs(profiles_);
  }

  const Ptr<Dir> dir_ = Zel::makeObject<Dir>();
  const Ptr<StatusDir> units_ = statusDirFactory("units");
  const Ptr<ConfigDir> profiles_ = configDirFactory("profiles");
  const Dir::Active scope_{dir_};
};

TEST_F(References, ReadBackAsTheSameObject) {
  const Ptr<Status> unit = units_->statusIs("it's/3%");
  EXPECT_EQ(reference(unit), "'/units/status/it\\'s%2F3%25'");
  EXPECT_EQ(read<Ptr<Status>>(reference(unit)), unit);
  EXPECT_EQ(read<Ptr<Entity>>(reference(unit)), unit);
  EXPECT_EQ(read<Ptr<PtrInterface>>(reference(unit)), unit);
  EXPECT_EQ(read<Ptr<StatusDir>>("'/units'"), units_);
  const Ptr<Config> profile = profiles_->configIs(ProfileKey(profileTypeBgp, "p"));
  EXPECT_EQ(reference(profile), "'/profiles/config/profileTypeBgp,p'");
  EXPECT_EQ(read<Ptr<Config>>(reference(profile)), profile);
}

TEST_F(References, AreReadInTheShortFormToo) {
  const Ptr<Status> unit = units_->statusIs("System");
  EXPECT_EQ(read<Ptr<Status>>(" \"/units/System\""), unit);
}

TEST_F(References, MayBeNull) {
  EXPECT_EQ(reference(nullptr), "null");
  EXPECT_FALSE(read<Ptr<Status>>("null"));
  EXPECT_FALSE(read<Ptr<Entity>>("\tnull"));
  EXPECT_FALSE(read<Ptr<PtrInterface>>("null"));
}

TEST_F(References, ToAnObjectOfAnotherTypeAreRefused) {
  EXPECT_EQ(refusal<Ptr<Status>>("'/units'"), "object is no Maintenance::Unit::Status at column 8");
  EXPECT_EQ(refusal<Ptr<Dir>>(" '/units' "), "object is no Zel::Dir at column 9");
}

TEST_F(References, ThatLeadNowhereAreRefusedWithThePath) {
  EXPECT_EQ(refusal<Ptr<Status>>("'/units/status/gone'"), "no entity at /units/status/gone");
  EXPECT_EQ(refusal<Ptr<Status>>("''"), "no entity at ");
}

TEST_F(References, ToWhatHasBeenTakenOutAreRefused) {
  const Ptr<Status> unit = units_->statusIs("System");
  units_->statusDel("System");
  EXPECT_EQ(reference(unit), "object(Maintenance::Unit::Status)");
  EXPECT_EQ(refusal<Ptr<Status>>("'/units/status/System'"), "no entity at /units/status/System");
}

TEST_F(References, ToWhatStandsUnderNoRootAreTokensThatNobodyReads) {
  const auto other = statusDirFactory("other");
  const Ptr<Status> unit = other->statusIs("System");
  EXPECT_EQ(reference(other), "object(Maintenance::Unit::StatusDir)");
  EXPECT_EQ(reference(unit), "object(Maintenance::Unit::Status)");
  EXPECT_EQ(reference(unit, Entity::_fwkType()), "object(Maintenance::Unit::Status)");
  EXPECT_EQ(refusal<Ptr<Status>>(reference(unit)), "expected null or a quoted path at column 0");
}

TEST_F(References, ToANamesakeOfARootAreNotTakenForTheRoot) {
  const auto namesake = statusDirFactory("units");
  EXPECT_EQ(reference(namesake), "object(Maintenance::Unit::StatusDir)");
  EXPECT_EQ(reference(namesake->statusIs("System")), "object(Maintenance::Unit::Status)");
}

TEST_F(References, ToWhatIsNoEntityAreTokensThatNobodyReads) {
  EXPECT_EQ(reference(dir_), "object(unknown)");
  EXPECT_EQ(reference(dir_, Status::_fwkType()), "object(Maintenance::Unit::Status)");
  EXPECT_EQ(refusal<Ptr<PtrInterface>>(reference(dir_)),
            "expected null or a quoted path at column 0");
}

TEST_F(References, NeedAnActiveDirectory) {
  const Ptr<Status> unit = units_->statusIs("System");
  const Dir::Active none(nullptr);
  EXPECT_EQ(reference(unit), "object(Maintenance::Unit::Status)");
  EXPECT_EQ(refusal<Ptr<Status>>("'/units/status/System'"),
            "no directory to look up /units/status/System");
  EXPECT_FALSE(read<Ptr<Status>>("null"));
}

TEST_F(References, AreRefusedWhereTheyAreBadlyFormed) {
  EXPECT_EQ(refusal<Ptr<Status>>(""), "expected null or a quoted path at column 0");
  EXPECT_EQ(refusal<Ptr<Status>>(" /units"), "expected null or a quoted path at column 1");
  EXPECT_EQ(refusal<Ptr<Status>>("nul"), "expected \"null\" at column 3");
  EXPECT_EQ(refusal<Ptr<Status>>("nullx"), "junk at column 4 deserializing nullx");
  EXPECT_EQ(refusal<Ptr<Status>>("'/units"), "expected the closing quote at column 7");
  EXPECT_EQ(refusal<Ptr<StatusDir>>("'/units' "), "junk at column 8 deserializing '/units' ");
}

TEST_F(References, LeaveNoReferenceBehind) {
  const Ptr<Status> unit = units_->statusIs("System");
  const unsigned before = unit->references();
  EXPECT_EQ(read<Ptr<Status>>(reference(unit)), unit);
  EXPECT_EQ(refusal<Ptr<StatusDir>>(reference(unit)),
            "object is no Maintenance::Unit::StatusDir at column 22");
  EXPECT_EQ(unit->references(), before);
}

} // namespace
