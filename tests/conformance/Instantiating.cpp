#include "Subject.h"

#include <gmock/gmock.h>

namespace Conformance {

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// Collections that make their members.
class Instantiating : public testing::TestWithParam<Case> {
protected:
  const Subject& subject() const { return *GetParam().subject; }
  const Zel::AttrRow& row() const { return *GetParam().row; }
  const Zel::CollectionOps& ops() const { return *row().collection; }
  unsigned version() const {
    return object.entity != nullptr ? object.entity->versionCounter() : 0;
  }
  unsigned reads() const { return object.entity != nullptr ? object.entity->readCounter() : 0; }
  unsigned one() const { return object.entity != nullptr ? 1 : 0; }
  const std::vector<AnyValue>& keys() const { return samplesOf(*row().key); }

  /// Creates with the sample arguments of this number.
  Zel::Ptr<Zel::PtrInterface> create(const AnyValue& key, std::size_t number = 1) {
    std::vector<const void*> arguments;
    for (const Zel::ValueRecord* const record : ops().arguments) {
      arguments.push_back(samplesOf(*record).at(number).at());
    }
    return ops().create(object.at(), key.at(), arguments.data());
  }

  std::vector<AnyValue> heardKeys() {
    std::vector<AnyValue> heard;
    for (const Heard& entry : first.log->heard) {
      EXPECT_EQ(entry.id, row().id);
      heard.push_back(entry.key.value());
    }
    EXPECT_EQ(second.log->heard, first.log->heard);
    first.log->heard.clear();
    second.log->heard.clear();
    return heard;
  }

  void expectParent(const Zel::Ptr<Zel::PtrInterface>& member, const Zel::Entity* parent) {
    if (const auto entity = Zel::ptrCast<Zel::Entity>(member)) {
      EXPECT_EQ(entity->parent().ptr(), parent);
      EXPECT_EQ(entity->parentAttrId(), row().id);
    } else {
      EXPECT_EQ(object.entity, nullptr); // members of entities are entities
    }
  }

  const Object object = subject().make();
  const Listener first = subject().listen(object);
  const Listener second = subject().listen(object);
};

TEST_P(Instantiating, MakesTheMemberOfAnAbsentKeyCountsOnceAndTellsIt) {
  unsigned count = 0;
  for (const AnyValue& key : keys()) {
    SCOPED_TRACE(testing::PrintToString(key));
    const unsigned mapVersion = ops().version(object.at());
    EXPECT_FALSE(ops().exists(object.at(), key.at()));

    const auto member = create(key);

    ASSERT_TRUE(member);
    EXPECT_EQ(ops().count(object.at()), ++count);
    EXPECT_EQ(version(), count * one());
    EXPECT_EQ(ops().version(object.at()), mapVersion + 1);
    EXPECT_TRUE(ops().exists(object.at(), key.at()));
    EXPECT_EQ(GetParam().typed().keyOfMember(*member), key);
    EXPECT_THAT(heardKeys(), ElementsAre(key));
    expectParent(member, object.entity);
  }
  EXPECT_GE(count, 3U);
  EXPECT_EQ(reads(), 0U);
}

TEST_P(Instantiating, YieldsTheSameMemberOnAHitCountedButSilent) {
  const auto member = create(keys()[1]);
  heardKeys();
  const unsigned mapVersion = ops().version(object.at());

  EXPECT_EQ(create(keys()[1]), member);

  EXPECT_EQ(version(), 2 * one());
  EXPECT_EQ(ops().version(object.at()), mapVersion);
  EXPECT_EQ(ops().count(object.at()), 1U);
  EXPECT_THAT(heardKeys(), IsEmpty());
}

TEST_P(Instantiating, YieldsTheMemberOfAKeyAndNullWithoutOne) {
  const auto member = create(keys()[1]);
  const unsigned readsBefore = reads();

  EXPECT_EQ(ops().member(object.at(), keys()[1].at()), member);
  EXPECT_EQ(GetParam().typed().find(object.at(), keys()[1].at()), member);
  EXPECT_EQ(ops().member(object.at(), keys()[2].at()), nullptr);
  EXPECT_EQ(GetParam().typed().find(object.at(), keys()[2].at()), nullptr);

  EXPECT_EQ(reads(), readsBefore + 4 * one());
  EXPECT_EQ(ops().count(object.at()), 1U);
}

TEST_P(Instantiating, ErasesOneMemberWhichLivesOnWithItsHandle) {
  create(keys()[0]);
  const auto member = create(keys()[1]);
  create(keys()[2]);
  heardKeys();
  const unsigned before = version();

  EXPECT_TRUE(ops().erase(object.at(), keys()[1].at()));

  EXPECT_EQ(version(), before + one());
  EXPECT_EQ(ops().count(object.at()), 2U);
  EXPECT_FALSE(ops().exists(object.at(), keys()[1].at()));
  EXPECT_THAT(heardKeys(), ElementsAre(keys()[1]));
  EXPECT_EQ(GetParam().typed().keyOfMember(*member), keys()[1]);
  EXPECT_EQ(member->references(), 1U);
  expectParent(member, nullptr);

  EXPECT_FALSE(ops().erase(object.at(), keys()[1].at()));
  EXPECT_EQ(version(), before + one());
  EXPECT_THAT(heardKeys(), IsEmpty());
}

TEST_P(Instantiating, TakesOneMemberAndYieldsIt) {
  const auto member = create(keys()[1]);
  heardKeys();
  const unsigned before = version();

  EXPECT_EQ(ops().takeMember(object.at(), keys()[1].at()), member);

  EXPECT_EQ(version(), before + one());
  EXPECT_THAT(heardKeys(), ElementsAre(keys()[1]));
  expectParent(member, nullptr);
  EXPECT_EQ(ops().takeMember(object.at(), keys()[1].at()), nullptr);
  EXPECT_EQ(version(), before + one());
  EXPECT_THAT(heardKeys(), IsEmpty());
}

TEST_P(Instantiating, HasAPlaceForAPendingKeyInEachNotifiee) {
  const Zel::PendingSlot slot = ops().pending(*first.notifiee);
  EXPECT_NE(slot.lastKey, ops().pending(*second.notifiee).lastKey);
  EXPECT_EQ(*slot.count, 0);
  EXPECT_TRUE(row().key->equal(slot.lastKey, AnyValue(*row().key).at()));
}

TEST_P(Instantiating, ErasesAllMembersOneByOne) {
  for (const AnyValue& key : keys()) {
    create(key);
  }
  heardKeys();
  const unsigned before = version();

  ops().eraseAll(object.at());

  EXPECT_EQ(ops().count(object.at()), 0U);
  EXPECT_EQ(version(), before + keys().size() * one());
  EXPECT_THAT(heardKeys(), testing::UnorderedElementsAreArray(keys()));
}

TEST_P(Instantiating, AnnouncesAnyKeyWithoutAChange) {
  ops().announce(object.at(), keys()[1].at());

  EXPECT_THAT(heardKeys(), ElementsAre(keys()[1]));
  EXPECT_EQ(version(), 0U);
  EXPECT_EQ(ops().count(object.at()), 0U);
}

TEST_P(Instantiating, ReportsItsIdToANotifieeThatThrowsAndGoesOn) {
  first.log->throws = true;

  EXPECT_TRUE(create(keys()[1]));
  EXPECT_TRUE(ops().erase(object.at(), keys()[1].at()));

  EXPECT_THAT(first.log->failures, ElementsAre(row().id, row().id));
  EXPECT_THAT(heardKeys(), ElementsAre(keys()[1], keys()[1]));
  EXPECT_EQ(version(), 2 * one());
}

TEST_P(Instantiating, NamesItsOwnCallbacksInTheRow) {
  ops().tellKey(*first.notifiee, keys()[1].at());
  ops().tell(*first.notifiee);

  EXPECT_THAT(first.log->heard,
              ElementsAre(Heard{row().id, keys()[1]}, Heard{row().id, std::nullopt}));
  EXPECT_TRUE(second.log->heard.empty());
  EXPECT_EQ(row().tell, nullptr);
}

TEST_P(Instantiating, HasNoOperationsOfPlainValues) {
  EXPECT_EQ(ops().read, nullptr);
  EXPECT_EQ(ops().write, nullptr);
  EXPECT_EQ(ops().take, nullptr);
  EXPECT_EQ(ops().iteration.value, nullptr);
  EXPECT_EQ(&ops().memberTable(), GetParam().typed().memberTable);
  EXPECT_EQ(row().value, nullptr);
  EXPECT_EQ(row().read, nullptr);
  EXPECT_EQ(row().write, nullptr);
  EXPECT_EQ(row().increment, nullptr);
  EXPECT_TRUE(row().flows());
}

bool isInstantiating(const Zel::AttrRow& row) { return row.kind == Zel::AttrKind::instantiating; }

INSTANTIATE_TEST_SUITE_P(Attributes, Instantiating, testing::ValuesIn(casesOf(isInstantiating)),
                         caseName);

class WithArguments : public Instantiating {};

TEST_P(WithArguments, PassesThemToTheMemberOnAMissAndOnAHit) {
  // Creation arguments are the member's writable constructor arguments, in the order of its rows.
  std::vector<const Zel::AttrRow*> attributes;
  for (const Zel::AttrRow& attribute : GetParam().typed().memberTable->rows) {
    if ((attribute.options & Zel::constructorArgument) != 0) {
      attributes.push_back(&attribute);
    }
  }
  ASSERT_EQ(ops().arguments.size(), attributes.size());

  for (std::size_t number : {1U, 2U}) {
    const auto member = create(keys()[1], number);
    for (std::size_t i = 0; i < attributes.size(); ++i) {
      const Zel::AttrRow& attribute = *attributes[i];
      const AnyValue value(*attribute.value, [&](void* to) { attribute.read(member.ptr(), to); });
      EXPECT_EQ(value, samplesOf(*ops().arguments[i])[number]) << attribute.name;
    }
  }
  EXPECT_THAT(heardKeys(), ElementsAre(keys()[1]));
  EXPECT_EQ(version(), 2 * one());
}

INSTANTIATE_TEST_SUITE_P(Attributes, WithArguments,
                         testing::ValuesIn(casesOf([](const Zel::AttrRow& attribute) {
                           return isInstantiating(attribute) &&
                                  !attribute.collection->arguments.empty();
                         })),
                         caseName);

} // namespace

} // namespace Conformance
