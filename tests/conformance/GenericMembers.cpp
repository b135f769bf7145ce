#include "GenericSide.h"

namespace Conformance {

namespace {

using Support::messageOf;

/// Collections that make their members, through a generic object.
class GenericMembers : public GenericSide {
protected:
  const Zel::CollectionOps& ops() const { return *row().collection; }
  const Zel::ZelType& memberType() const { return *attr().attrType(); }
  const std::vector<AnyValue>& keys() const { return samplesOf(*row().key); }
  std::string keyName() const { return std::string(attr().keyAttrName().view()); }

  /// A key and the sample arguments of this number behind it.
  std::vector<std::optional<AnyValue>> arguments(const AnyValue& key,
                                                 std::size_t number = 1) const {
    std::vector<std::optional<AnyValue>> all = {key};
    for (const Zel::ValueRecord* const record : ops().arguments) {
      all.emplace_back(samplesOf(*record).at(number));
    }
    return all;
  }
  Generic create(const AnyValue& key, std::size_t number = 1) {
    return op(Op::opWrite, nullptr, listOf(arguments(key, number)));
  }
  std::vector<Heard> told(const AnyValue& key) const { return {{row().id, key}}; }

  /// Expects a generic object of this member and its type.
  void expectMember(const Generic& member, const Zel::Ptr<Zel::PtrInterface>& wanted) {
    ASSERT_TRUE(member);
    EXPECT_EQ(member->type().ptr(), &memberType());
    EXPECT_EQ(member->voidPtrIs(member->type()), wanted.ptr());
  }

  void expectNothing() {
    EXPECT_EQ(numberOp(Op::opCount), 0U);
    EXPECT_EQ(version(), 0U);
    expectHeard({});
  }
};

TEST_P(GenericMembers, AreMadeFromAListAndToldOnce) {
  unsigned count = 0;
  for (const AnyValue& key : keys()) {
    SCOPED_TRACE(testing::PrintToString(key));
    const unsigned readsBefore = reads();
    const unsigned mapVersion = numberOp(Op::opVersion);
    EXPECT_FALSE(boolOp(Op::opExists, key));

    const Generic member = create(key);

    EXPECT_EQ(reads(), readsBefore);
    EXPECT_EQ(version(), ++count * one());
    expectHeard(told(key));
    EXPECT_TRUE(boolOp(Op::opExists, key));
    EXPECT_EQ(numberOp(Op::opCount), count);
    EXPECT_EQ(numberOp(Op::opVersion), mapVersion + 1);
    EXPECT_FALSE(member->isConst());
    expectMember(member, typed().find(owner(), key.at()));
  }
  EXPECT_GE(count, 3U);
}

TEST_P(GenericMembers, AreTheSameOnesOnAHit) {
  const Generic first = create(keys()[1]);
  expectHeard(told(keys()[1]));

  const Generic second = create(keys()[1]);

  EXPECT_NE(first, second);
  expectMember(second, typed().find(owner(), keys()[1].at()));
  EXPECT_EQ(first->voidPtrIs(first->type()), second->voidPtrIs(second->type()));
  EXPECT_EQ(version(), 2 * one());
  EXPECT_EQ(numberOp(Op::opCount), 1U);
  expectHeard({});
}

TEST_P(GenericMembers, AreReadByKeyWhichIsCounted) {
  create(keys()[1]);
  const unsigned readsBefore = reads();

  const Generic member = op(Op::opRead, pack(keys()[1]));
  EXPECT_EQ(reads(), readsBefore + one());
  EXPECT_EQ(op(Op::opRead, pack(keys()[2])), nullptr);
  EXPECT_EQ(reads(), readsBefore + 2 * one());

  expectMember(member, typed().find(owner(), keys()[1].at()));
  EXPECT_FALSE(member->isConst());
  EXPECT_TRUE(sealedOp(Op::opRead, pack(keys()[1]))->isConst());
}

TEST_P(GenericMembers, TellTheirKeyAsTheAttributeThatTheDescriptorNames) {
  const Generic member = create(keys()[1]);
  const Zel::AttributeId id = member->attributeId(attr().keyAttrName());

  EXPECT_EQ(id, attr().keyAttr()->id());
  EXPECT_EQ(unpack(member->attributeOp({id, Op::opRead}, nullptr, nullptr), *row().key), keys()[1]);
}

TEST_P(GenericMembers, LeaveByKeyAndLiveOnWithTheirGenericObject) {
  create(keys()[0]);
  create(keys()[1]);
  expectHeard({{row().id, keys()[0]}, {row().id, keys()[1]}});
  const Zel::Ptr<Zel::PtrInterface> object1 = typed().find(owner(), keys()[1].at());
  const unsigned versionBefore = version();

  const Generic gone = op(Op::opDelete, pack(keys()[1]), strangerTo(*row().key).value);

  expectMember(gone, object1);
  EXPECT_EQ(version(), versionBefore + one());
  expectHeard(told(keys()[1]));
  EXPECT_FALSE(boolOp(Op::opExists, keys()[1]));
  EXPECT_EQ(numberOp(Op::opCount), 1U);
  EXPECT_EQ(typed().keyOfMember(*object1), keys()[1]);

  EXPECT_EQ(op(Op::opDelete, pack(keys()[1])), nullptr);
  EXPECT_EQ(version(), versionBefore + one());
  expectHeard({});
}

TEST_P(GenericMembers, TakeTheirArgumentsOnAMissAndOnAHit) {
  const auto wanted = ops().arguments;
  const auto& names = memberType().constructorArgNameQ();
  // The key, before which a directory may give a name of its making, and then the arguments.
  const std::size_t key = typed().memberTable->named && keyName() != "name" ? 1 : 0;
  ASSERT_EQ(names.size(), key + 1 + wanted.size());
  EXPECT_EQ(names[key].view(), keyName());
  for (const std::size_t number : {1U, 2U}) {
    const Generic member = create(keys()[1], number);
    for (std::size_t i = 0; i < wanted.size(); ++i) {
      const Zel::Name name = names[key + 1 + i];
      EXPECT_EQ(
          unpack(member->attributeOp({member->attributeId(name), Op::opRead}, nullptr, nullptr),
                 *wanted[i]),
          samplesOf(*wanted[i])[number])
          << name;
    }
  }
}

TEST_P(GenericMembers, WantAKeyOfTheirOwnTypeWhereOneIsLookedFor) {
  const Stranger stranger = strangerTo(*row().key);
  for (const Op::OpId id : {Op::opRead, Op::opExists, Op::opDelete}) {
    SCOPED_TRACE(id);
    EXPECT_EQ(messageOf<Zel::TypeException>([&] { op(id); }),
              "argument missing or of the wrong type: " + keyName());
    EXPECT_EQ(messageOf<Zel::TypeException>([&] { op(id, stranger.value); }),
              "argument missing or of the wrong type: " + stranger.name);
  }
  expectNothing();
}

TEST_P(GenericMembers, AreMadeFromAListOnlyAndWithoutAnIndex) {
  const auto made = listOf(arguments(keys()[1]));
  EXPECT_EQ(messageOf<Zel::BadIndexAttrException>([&] { op(Op::opWrite, pack(keys()[1]), made); }),
            "attribute takes no index: " + attribute());
  EXPECT_EQ(messageOf<Zel::TypeException>([&] { op(Op::opWrite, nullptr, pack(keys()[1])); }),
            "argument missing or of the wrong type: Zel::GenericIf::List_");
  EXPECT_EQ(messageOf<Zel::TypeException>([&] { op(Op::opWrite); }),
            "argument missing or of the wrong type: Zel::GenericIf::List_");
  expectNothing();
}

TEST_P(GenericMembers, WantEachArgumentAndNoMore) {
  const auto all = arguments(keys()[1]);
  for (std::size_t i = 0; i < all.size(); ++i) {
    const std::string name =
        i == 0 ? keyName() : std::string(memberType().constructorArgNameQ()[i].view());
    const std::string message = "argument missing or of the wrong type: " + name;
    std::vector<std::optional<AnyValue>> tooFew(all.begin(), all.begin() + static_cast<int>(i));
    EXPECT_EQ(messageOf<Zel::TypeException>([&] { op(Op::opWrite, nullptr, listOf(tooFew)); }),
              message);
    auto withNull = all;
    withNull[i].reset();
    EXPECT_EQ(messageOf<Zel::TypeException>([&] { op(Op::opWrite, nullptr, listOf(withNull)); }),
              message);
  }
  auto tooMany = all;
  tooMany.emplace_back(AnyValue::of(true));
  EXPECT_EQ(messageOf<Zel::UnknownArgException>([&] { op(Op::opWrite, nullptr, listOf(tooMany)); }),
            "too many arguments: " + attribute());
  expectNothing();
}

TEST_P(GenericMembers, LeaveTheirListAsItWas) {
  const auto made = listOf(arguments(keys()[1]));
  const Zel::String8 text = made->strRep();
  op(Op::opWrite, nullptr, made);
  op(Op::opDelete, pack(keys()[1]));
  op(Op::opWrite, nullptr, made);

  EXPECT_EQ(made->strRep(), text);
  EXPECT_EQ(numberOp(Op::opCount), 1U);
}

TEST_P(GenericMembers, HaveNoOtherOperations) {
  for (const Op::OpId id : {Op::opEquals, static_cast<Op::OpId>(4), static_cast<Op::OpId>(130)}) {
    EXPECT_EQ(messageOf<Zel::OpNotSupportedException>(
                  [&] { op(id, pack(keys()[1]), listOf(arguments(keys()[1]))); }),
              "operation " + std::to_string(id) + " not supported on " + attribute());
  }
  expectNothing();
}

TEST_P(GenericMembers, CannotBeMadeOrDeletedThroughAConstObject) {
  create(keys()[1]);
  expectHeard(told(keys()[1]));

  expectRefusedOnConst(Op::opWrite, nullptr, listOf(arguments(keys()[2])));
  expectRefusedOnConst(Op::opWrite, pack(keys()[2]));
  expectRefusedOnConst(Op::opDelete, pack(keys()[1]));
  EXPECT_EQ(numberOp(Op::opCount), 1U);
  // A member read through it is const too.
  const Generic member = sealedOp(Op::opRead, pack(keys()[1]));
  EXPECT_EQ(messageOf<Zel::ConstException>([&] {
              member->attributeOp({Zel::AttributeId{100000}, Op::opWrite}, nullptr, nullptr);
            }),
            "attempting to modify a const instance");
}

INSTANTIATE_TEST_SUITE_P(Attributes, GenericMembers, testing::ValuesIn(casesOf([](const auto& row) {
                           return row.kind == Zel::AttrKind::instantiating;
                         })),
                         caseName);

} // namespace

} // namespace Conformance
