#include "GenericSide.h"

#include <random>

namespace Conformance {

namespace {

using Support::messageOf;
using Position = Zel::GenericIf::AttributeIteratorConst;

/// Walks through collections, generic and typed side by side.
class GenericIteration : public GenericSide {
protected:
  bool makesMembers() const { return row().kind == Zel::AttrKind::instantiating; }
  bool ordered() const { return row().kind == Zel::AttrKind::ordered; }

  void add(const AnyValue& key) {
    const Zel::CollectionOps& ops = *row().collection;
    if (makesMembers()) {
      std::vector<const void*> arguments;
      for (const Zel::ValueRecord* const record : ops.arguments) {
        arguments.push_back(samplesOf(*record)[1].at());
      }
      ops.create(owner(), key.at(), arguments.data());
    } else {
      ops.write(owner(), key.at(), valueOf(key).at());
    }
  }
  void erase(const AnyValue& key) { row().collection->erase(owner(), key.at()); }

  /// What is stored under a key of plain values.
  AnyValue valueOf(const AnyValue& key) const {
    if (row().kind == Zel::AttrKind::ownKey) {
      const std::vector<std::optional<AnyValue>> arguments = {
          key, samplesOf(*attr().attrType()->table()->constructor.arguments[1])[1]};
      return unpack(attr().attrType()->genericIf(listOf(arguments).ptr(), false), *row().value);
    }
    return samplesOf(*row().value)[1];
  }

  /// Expects the same position on both sides, with key and member, and yields whether it is on one.
  bool expectSame(const Position& at, const Walk& walk) {
    const std::optional<AnyValue> key = walk.key();
    EXPECT_EQ(static_cast<bool>(at), key.has_value());
    if (!key || !at) {
      EXPECT_EQ(at.key(), nullptr);
      EXPECT_EQ(at.obj(), nullptr);
      return false;
    }
    const GenericConst told = at.key();
    EXPECT_EQ(unpack(told, *row().key), *key);
    EXPECT_TRUE(told->isConst());
    const GenericConst member = at.obj();
    EXPECT_EQ(member->isConst(), at.genericIf()->isConst());
    if (makesMembers()) {
      EXPECT_EQ(member->type().ptr(), attr().attrType());
      const auto* const met = static_cast<Zel::PtrInterface*>(member->voidPtrIs(member->type()));
      EXPECT_EQ(typed().keyOfMember(*met), *key);
    } else {
      EXPECT_EQ(unpack(member, *row().value), valueOf(*key));
    }
    return true;
  }
};

TEST_P(GenericIteration, OfAnEmptyCollectionEndsAtOnce) {
  const Position at = generic->attributeIteratorConst(row().id);
  EXPECT_FALSE(at);
  EXPECT_FALSE(expectSame(at, typed().walk(owner())));
  EXPECT_EQ(at.genericIf(), generic);
  EXPECT_EQ(at.attributeId(), row().id);
}

TEST_P(GenericIteration, MeetsTheSameKeysAndMembersInTheSameOrderAsTheTypedOne) {
  for (unsigned i = 0; i < 40; ++i) {
    add(numberedKey(*row().key, i));
  }
  for (const Generic& through : {generic, sealed}) {
    Position at = through->attributeIteratorConst(row().id);
    const Walk walk = typed().walk(owner());
    const unsigned readsBefore = reads();
    unsigned met = 0;
    while (expectSame(at, walk)) {
      ++met;
      ++at;
      walk.advance();
    }
    EXPECT_EQ(met, 40U);
    EXPECT_EQ(reads(), readsBefore);
  }
}

TEST_P(GenericIteration, GoesOnWithTheTypedOneWhateverComesAndGoesBetweenSteps) {
  for (const unsigned seed : {1U, 2U, 3U, 4U, 5U, 6U, 7U, 8U}) {
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    row().collection->eraseAll(owner());
    for (unsigned i = 0; i < 30; ++i) {
      add(numberedKey(*row().key, static_cast<unsigned>(random() % 60)));
    }
    Position at = generic->attributeIteratorConst(row().id);
    const Walk walk = typed().walk(owner());
    unsigned steps = 0;
    while (expectSame(at, walk)) {
      ASSERT_LE(++steps, 200U);
      switch (random() % 4) {
      case 0:
        erase(*walk.key()); // the current one stays readable
        EXPECT_TRUE(expectSame(at, walk));
        break;
      case 1:
        erase(numberedKey(*row().key, static_cast<unsigned>(random() % 60)));
        break;
      case 2:
        add(numberedKey(*row().key, static_cast<unsigned>(random() % 60)));
        break;
      default:
        break;
      }
      ++at;
      walk.advance();
    }
    EXPECT_GE(steps, 5U);
  }
}

TEST_P(GenericIteration, EndsAfterAllOfItIsDeletedUnderIt) {
  for (unsigned i = 0; i < 5; ++i) {
    add(numberedKey(*row().key, i));
  }
  Position at = generic->attributeIteratorConst(row().id);
  const Walk walk = typed().walk(owner());
  row().collection->eraseAll(owner());

  EXPECT_TRUE(expectSame(at, walk));
  ++at;
  walk.advance();
  EXPECT_FALSE(expectSame(at, walk));
}

TEST_P(GenericIteration, GoesOnIndependentlyInACopy) {
  for (unsigned i = 0; i < 5; ++i) {
    add(numberedKey(*row().key, i));
  }
  Position at = generic->attributeIteratorConst(row().id);
  ++at;
  const Position copy = at;
  const AnyValue second = unpack(copy.key(), *row().key);
  ++at;

  EXPECT_EQ(unpack(copy.key(), *row().key), second);
  EXPECT_NE(unpack(at.key(), *row().key), second);
  Position assigned = generic->attributeIteratorConst(row().id);
  assigned = copy;
  ++assigned;
  EXPECT_EQ(unpack(assigned.key(), *row().key), unpack(at.key(), *row().key));
}

TEST_P(GenericIteration, BeginsAtAKeyThatIsThere) {
  for (unsigned i = 0; i < 5; ++i) {
    add(numberedKey(*row().key, i));
  }
  const AnyValue wanted = numberedKey(*row().key, 3);
  Position at = generic->attributeIteratorKeyConst(row().id, pack(wanted));
  const Walk walk = typed().walk(owner());
  while (walk.key() && !(*walk.key() == wanted)) {
    walk.advance();
  }

  ASSERT_TRUE(at);
  EXPECT_TRUE(expectSame(at, walk));
  do {
    ++at;
    walk.advance();
  } while (expectSame(at, walk));
}

TEST_P(GenericIteration, BeginsAtTheEndForAnAbsentKeyUnlessThereIsAnOrder) {
  add(numberedKey(*row().key, 2));
  add(numberedKey(*row().key, 4));
  const auto from = [&](unsigned number) {
    return generic->attributeIteratorKeyConst(row().id, pack(numberedKey(*row().key, number)));
  };
  EXPECT_FALSE(from(5));
  EXPECT_EQ(static_cast<bool>(from(3)), ordered());
  EXPECT_EQ(static_cast<bool>(from(0)), ordered());
  if (ordered()) {
    EXPECT_EQ(unpack(from(3).key(), *row().key), numberedKey(*row().key, 4));
    EXPECT_EQ(unpack(from(0).key(), *row().key), numberedKey(*row().key, 2));
  } else {
    EXPECT_EQ(from(3).obj(), nullptr);
  }
}

TEST_P(GenericIteration, WantsAKeyOfItsOwnTypeToBeginAt) {
  const bool brought = makesMembers() || row().kind == Zel::AttrKind::ownKey;
  EXPECT_EQ(
      messageOf<Zel::TypeException>([&] { generic->attributeIteratorKeyConst(row().id, nullptr); }),
      "argument missing or of the wrong type: " +
          (brought ? std::string(attr().keyAttrName().view()) : "zel_index"));
  const Stranger stranger = strangerTo(*row().key);
  EXPECT_EQ(messageOf<Zel::TypeException>(
                [&] { generic->attributeIteratorKeyConst(row().id, stranger.value); }),
            "argument missing or of the wrong type: " + stranger.name);
}

TEST_P(GenericIteration, KeepsTheObjectAliveThatItWalks) {
  add(numberedKey(*row().key, 1));
  const unsigned references = generic->references();
  {
    const Position at = generic->attributeIteratorConst(row().id);
    const Position copy = at;
    EXPECT_EQ(generic->references(), references + 2);
  }
  EXPECT_EQ(generic->references(), references);
}

TEST_P(GenericIteration, YieldsMembersToWriteThroughWhereTheObjectCanBeWritten) {
  add(numberedKey(*row().key, 1));
  const Zel::GenericIf::AttributeIterator at = generic->attributeIterator(row().id);
  const Zel::GenericIf::AttributeIterator byKey =
      generic->attributeIteratorKey(row().id, pack(numberedKey(*row().key, 1)));

  EXPECT_FALSE(at.obj()->isConst());
  EXPECT_FALSE(byKey.obj()->isConst());
  EXPECT_TRUE(byKey.key()->isConst());
  EXPECT_TRUE(sealed->attributeIteratorConst(row().id).obj()->isConst());
}

INSTANTIATE_TEST_SUITE_P(Attributes, GenericIteration,
                         testing::ValuesIn(casesOf([](const Zel::AttrRow& row) {
                           return row.isCollection();
                         })),
                         caseName);

/// What is no collection cannot be walked.
class GenericNoIteration : public GenericSide {};

TEST_P(GenericNoIteration, IsRefused) {
  const std::string message =
      "unknown attribute of " + std::string(type().name().view()) + ": " + std::to_string(row().id);
  EXPECT_EQ(
      messageOf<Zel::UnknownAttrException>([&] { generic->attributeIteratorConst(row().id); }),
      message);
  EXPECT_EQ(messageOf<Zel::UnknownAttrException>(
                [&] { generic->attributeIteratorKeyConst(row().id, pack(AnyValue::of(true))); }),
            message);
}

INSTANTIATE_TEST_SUITE_P(Attributes, GenericNoIteration,
                         testing::ValuesIn(casesOf([](const Zel::AttrRow& row) {
                           return !row.isCollection();
                         })),
                         caseName);

} // namespace

} // namespace Conformance
