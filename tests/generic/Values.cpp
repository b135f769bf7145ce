#include "GenericFixture.h"

#include <type_traits>

namespace {

using namespace TestGeneric;
using namespace Maintenance;
using Maintenance::Profile::ProfileKey;
using Unit::StageMgrInstKey;
using Unit::TrafficRates;

const ProfileKey drain(Profile::profileTypeBgp, "drain");

TEST(ValueWrapper, OfANullAddressHoldsTheDefault) {
  const Handle key = defaultOf<ProfileKey>();
  EXPECT_EQ(Zel::value<ProfileKey>(key).type(), Profile::profileTypeNone);
  EXPECT_EQ(Zel::value<ProfileKey>(key).name(), Zel::String8());
  EXPECT_FALSE(key->isConst());
  EXPECT_TRUE(defaultOf<ProfileKey>(true)->isConst());
}

TEST(ValueWrapper, HoldsACopyOfTheValueAtTheAddress) {
  ProfileKey key = drain;
  const Handle wrapper = ProfileKey::_fwkType()->genericIf(static_cast<const void*>(&key), true);
  key = ProfileKey();
  EXPECT_EQ(Zel::value<ProfileKey>(wrapper), drain);
}

TEST(ValueWrapper, OfATextSaysTheSameText) {
  const char* const text =
      "Value('Maintenance::Profile::ProfileKey', ** {'type': 'profileTypeBgp', 'name': 'drain'})";
  const Handle wrapper = fromText<ProfileKey>(text);
  EXPECT_EQ(textOf(wrapper), text);
  EXPECT_EQ(Zel::value<ProfileKey>(wrapper), drain);
  EXPECT_TRUE(fromText<ProfileKey>(text, true)->isConst());
}

TEST(ValueWrapper, OfATextThatIsNoValueFailsAsTheReaderDoes) {
  EXPECT_EQ(messageOf<Zel::RangeException>([] { fromText<ProfileKey>("nonsense"); }),
            messageOf<Zel::RangeException>([] { Zel::strepToValue<ProfileKey>("nonsense"); }));
  EXPECT_EQ(messageOf<Zel::RangeException>([] { fromText<unsigned>("7 up"); }),
            messageOf<Zel::RangeException>([] { Zel::strepToValue<unsigned>("7 up"); }));
}

TEST(ValueWrapper, IsBornActiveRegisteredAndWithoutANotifier) {
  const Handle wrapper = defaultOf<ProfileKey>();
  EXPECT_TRUE(wrapper->hasNotificationActive());
  EXPECT_TRUE(wrapper->isRegisteredNotifiee());
  EXPECT_EQ(wrapper->notifier(), nullptr);
  EXPECT_EQ(wrapper->zel_bitSet().word(), 0U);
  EXPECT_EQ(wrapper->references(), 1U);
}

TEST(ValueWrapper, AddsTheValueAlone) {
  struct Like : GenericIf { // what any wrapper is without its value
    unsigned value;
  };
  EXPECT_EQ(sizeof(Zel::ValueGenericIf<unsigned>), sizeof(Like));
}

TEST(ValueWrapper, KnowsItsDescriptor) {
  EXPECT_EQ(defaultOf<ProfileKey>()->type(), typeOf<ProfileKey>());
  EXPECT_EQ(defaultOf<ProfileKey>()->fwkType(), GenericIf::_fwkType());
}

TEST(ValueWrapper, PassesForNoOtherType) {
  const Handle key = defaultOf<ProfileKey>();
  EXPECT_NE(key->voidPtrIs(typeOf<ProfileKey>()), nullptr);
  const auto as = [&](const Ptr<const Zel::ZelType>& type) {
    return messageOf<Zel::TypeException>([&] { key->voidPtrIs(type); });
  };
  EXPECT_EQ(as(typeOf<Profile::ProfileType>()),
            "argument missing or of the wrong type: ProfileKey");
  EXPECT_EQ(as(typeOf<Group::GroupKey>()), "argument missing or of the wrong type: ProfileKey");
  EXPECT_EQ(as(nullptr), "argument missing or of the wrong type: ProfileKey");
}

TEST(ValueWrapper, FindsItsAttributesByName) {
  const Handle key = defaultOf<ProfileKey>();
  EXPECT_EQ(key->attributeId("type"), 2);
  EXPECT_EQ(key->attributeId("name"), 3);
  EXPECT_EQ(key->attributeId("hash"), 4);
  EXPECT_EQ(messageOf<Zel::UnknownAttrException>([&] { key->attributeId("value"); }),
            "unknown attribute of ProfileKey: value");
}

TEST(ValueWrapper, CountsALookUpAtTheAttributeFound) {
  const Handle key = defaultOf<ProfileKey>();
  const Zel::ZelAttr& attr = *ProfileKey::_fwkType()->attr("type");
  const unsigned before = attr.readCounter();
  key->attributeId("type");
  key->attributeId("name");
  EXPECT_EQ(attr.readCounter(), before + 1);
}

TEST(ValueWrapper, NamesItsAttributes) {
  const Handle key = defaultOf<ProfileKey>();
  EXPECT_EQ(key->attributeString(2), "type");
  EXPECT_EQ(key->attributeString(4), "hash");
  EXPECT_EQ(key->attributeString(5), "unknown");
  EXPECT_EQ(key->attributeString(0), "unknown");
}

TEST(ValueWrapper, ReadsItsAttributesUnderTheirTypes) {
  const Handle key = writable(drain);
  EXPECT_EQ(Zel::readAttribute<Profile::ProfileType>(key, 2), Profile::profileTypeBgp);
  EXPECT_EQ(Zel::readAttribute<Zel::String8>(key, 3), "drain");
  EXPECT_EQ(Zel::readAttribute<unsigned>(key, 4), drain.hash());
}

TEST(ValueWrapper, ReadsTheConstantsOfItsType) {
  const Handle names = defaultOf<Unit::BuiltinUnitName>();
  EXPECT_EQ(Zel::readAttribute<Zel::Name>(names, 2), "System");
  EXPECT_EQ(Zel::readAttribute<Zel::Name>(names, 3), "Linecard");
  const Handle classes = defaultOf<Unit::MaintenanceStageClasses>();
  EXPECT_EQ(Zel::readAttribute<Zel::Name>(classes, 2), "maintEnter");
  EXPECT_EQ(Zel::readAttribute<Zel::Name>(classes, 3), "maintExit");
  const Handle stages = defaultOf<Unit::MaintenanceStageList>();
  EXPECT_EQ(Zel::readAttribute<Zel::String8>(stages, 2), "bgp");
  EXPECT_EQ(Zel::readAttribute<Zel::String8>(stages, 3), "ratemon");
  EXPECT_EQ(textOf(names), "");
}

TEST(ValueWrapper, HandsOnWhetherItIsConst) {
  EXPECT_TRUE(Zel::readAttribute(Zel::generic(drain, true), 2)->isConst());
  EXPECT_FALSE(Zel::readAttribute(Zel::generic(drain, false), 2)->isConst());
}

TEST(ValueWrapper, IsWrittenInItsOwnCopyAlone) {
  const Handle rates = defaultOf<TrafficRates>();
  const Handle clone = rates->clone();
  const Handle result = attributeOp(rates, 2, Op::opWrite, nullptr, Zel::generic(7ULL));
  EXPECT_EQ(result, nullptr);
  Zel::writeAttribute(rates, 3, 8ULL);
  Zel::writeAttribute(rates, 4, 2.5);
  EXPECT_EQ(textOf(rates), "Value('Maintenance::Unit::TrafficRates', ** {'outBitsRate': 7, "
                           "'inBitsRate': 8, 'statsUpdateTime': 2.5})");
  EXPECT_EQ(Zel::value<TrafficRates>(clone), TrafficRates());
}

TEST(ValueWrapper, WritesTheNameOfAStageManagerWithItsChecks) {
  const Handle key = defaultOf<StageMgrInstKey>();
  Zel::writeAttribute(key, 2, "unit#4");
  EXPECT_EQ(Zel::readAttribute<Zel::String8>(key, 3), "unit");
  EXPECT_EQ(Zel::readAttribute<unsigned>(key, 4), 4U);
  EXPECT_EQ(Zel::readAttribute<Zel::String8>(key, 2), "unit#4");
  EXPECT_EQ(messageOf<Zel::InternalException>([&] { Zel::writeAttribute(key, 2, "unit"); }),
            "Unexpected instanceName format");
  Zel::writeAttribute(key, 3, "other");
  Zel::writeAttribute(key, 4, 5U);
  EXPECT_EQ(Zel::readAttribute<Zel::String8>(key, 2), "other#5");
}

TEST(ValueWrapper, ThatIsConstRefusesEveryWriteFirst) {
  const char* const refusal = "attempting to modify a const instance";
  const Handle rates = defaultOf<TrafficRates>(true);
  const Handle key = defaultOf<ProfileKey>(true);
  const auto with = [&](const Handle& object, Zel::AttributeId id, int op) {
    return messageOf<Zel::ConstException>([&] {
      attributeOp(object, id, static_cast<Op::OpId>(op), Zel::generic(1U), Zel::generic(1U));
    });
  };
  EXPECT_EQ(with(rates, 2, 128), refusal);
  EXPECT_EQ(with(rates, 2, 129), refusal);
  EXPECT_EQ(with(rates, 99, 128), refusal);
  EXPECT_EQ(with(rates, 0, 1000), refusal);
  EXPECT_EQ(with(key, 2, 128), refusal);
  EXPECT_EQ(Zel::value<TrafficRates>(rates), TrafficRates());
}

TEST(ValueWrapper, TakesNoIndex) {
  const Handle rates = defaultOf<TrafficRates>();
  for (const Op::OpId op : {Op::opRead, Op::opWrite, Op::opCount, Op::opEquals}) {
    EXPECT_EQ(
        messageOf<Zel::BadIndexAttrException>([&] { attributeOp(rates, 3, op, Zel::generic(1U)); }),
        "attribute takes no index: inBitsRate");
  }
}

TEST(ValueWrapper, RefusesAWriteWithoutAValueOrWithAnother) {
  const Handle rates = defaultOf<TrafficRates>();
  EXPECT_EQ(messageOf<Zel::TypeException>([&] { attributeOp(rates, 2, Op::opWrite); }),
            "argument missing or of the wrong type: outBitsRate");
  EXPECT_EQ(messageOf<Zel::TypeException>([&] { Zel::writeAttribute(rates, 2, 7U); }),
            "argument missing or of the wrong type: U32");
  EXPECT_EQ(Zel::value<TrafficRates>(rates), TrafficRates());
}

TEST(ValueWrapper, HasNoOperationsOnAnAttributeButTheseTwo) {
  const Handle key = defaultOf<ProfileKey>();
  const auto with = [&](Zel::AttributeId id, int op) {
    return messageOf<Zel::OpNotSupportedException>(
        [&] { attributeOp(key, id, static_cast<Op::OpId>(op), nullptr, Zel::generic(1U)); });
  };
  EXPECT_EQ(with(2, Op::opWrite), "operation 128 not supported on type");
  EXPECT_EQ(with(3, Op::opWrite), "operation 128 not supported on name");
  EXPECT_EQ(with(4, Op::opWrite), "operation 128 not supported on hash");
  EXPECT_EQ(with(2, Op::opCount), "operation 1 not supported on type");
  EXPECT_EQ(with(2, Op::opEquals), "operation 100 not supported on type");
  EXPECT_EQ(with(2, 77), "operation 77 not supported on type");
}

TEST(ValueWrapper, ComparesItselfWithAnotherOfItsType) {
  const Handle key = writable(drain);
  const auto equals = [&](const Handle& other) {
    return Zel::value<bool>(attributeOp(key, 0, Op::opEquals, other));
  };
  EXPECT_TRUE(equals(Zel::generic(drain)));
  EXPECT_FALSE(equals(defaultOf<ProfileKey>()));
  EXPECT_FALSE(attributeOp(key, 0, Op::opEquals, key)->isConst());
  EXPECT_TRUE(attributeOp(Zel::generic(drain), 0, Op::opEquals, key)->isConst());
  EXPECT_EQ(messageOf<Zel::TypeException>([&] { equals(nullptr); }),
            "argument missing or of the wrong type: zelOpArg");
  EXPECT_EQ(messageOf<Zel::TypeException>([&] { equals(defaultOf<Group::GroupKey>()); }),
            "argument missing or of the wrong type: GroupKey");
}

TEST(ValueWrapper, OfConstantsEqualsEveryOther) {
  EXPECT_TRUE(Zel::value<bool>(attributeOp(defaultOf<Unit::BuiltinUnitName>(), 0, Op::opEquals,
                                           defaultOf<Unit::BuiltinUnitName>())));
}

TEST(ValueWrapper, LeavesAllElseToTheBase) {
  const Handle key = defaultOf<ProfileKey>();
  EXPECT_EQ(messageOf<Zel::UnknownAttrException>([&] { attributeOp(key, 0, Op::opRead); }),
            "unknown attribute of ProfileKey: 0");
  EXPECT_EQ(messageOf<Zel::UnknownAttrException>([&] { attributeOp(key, 5, Op::opWrite, key); }),
            "unknown attribute of ProfileKey: 5");
  EXPECT_EQ(messageOf<Zel::UnknownAttrException>([&] { key->attributeIteratorConst(2); }),
            "unknown attribute of ProfileKey: 2");
}

TEST(ValueWrapper, ClonesWithTheSameFlavour) {
  const Handle constant = Zel::generic(drain, true);
  const Handle clone = constant->clone();
  EXPECT_NE(clone, constant);
  EXPECT_TRUE(clone->isConst());
  EXPECT_EQ(Zel::value<ProfileKey>(clone), drain);
  EXPECT_FALSE(writable(drain)->clone()->isConst());
  const Ptr<const GenericIf> seen = constant;
  const Ptr<const GenericIf> copy = seen->clone();
  EXPECT_NE(copy, seen);
}

TEST(ValueWrapper, TakesANewValueFromWhoeverKnowsItsType) {
  const Ptr<ProfileKey::GenericIf_> wrapper = ProfileKey::GenericIf_::GenericIf_Is(drain, true);
  wrapper->valIs(ProfileKey());
  EXPECT_EQ(wrapper->val(), ProfileKey());
}

TEST(ValueWrapper, BecomesAZombieByItsMarkAlone) {
  const Handle wrapper = defaultOf<ProfileKey>();
  wrapper->zelDoZombieReactors(true);
  EXPECT_TRUE(wrapper->zelMarkedForDeletion());
  EXPECT_TRUE(wrapper->hasNotificationActive());
  wrapper->zelDoZombieReactors(false);
  EXPECT_FALSE(wrapper->zelMarkedForDeletion());
}

template <class V>
struct Builtin {
  V value;
  const char* text;
  const char* type;
};

template <class V>
void expectBuiltin(const Builtin<V>& sample) {
  const Handle wrapper = writable(sample.value);
  EXPECT_EQ(textOf(wrapper), sample.text);
  EXPECT_EQ(wrapper->type()->name(), sample.type);
  EXPECT_EQ(Zel::value<V>(fromText<V>(sample.text)), sample.value);
  EXPECT_EQ(Zel::value<V>(defaultOf<V>()), V());
  EXPECT_TRUE(Zel::value<bool>(attributeOp(wrapper, 0, Op::opEquals, wrapper->clone())));
  EXPECT_EQ(messageOf<Zel::UnknownAttrException>([&] { attributeOp(wrapper, 2, Op::opRead); }),
            std::string("unknown attribute of ") + sample.type + ": 2");
  EXPECT_EQ(messageOf<Zel::UnknownAttrException>([&] { wrapper->attributeId("value"); }),
            std::string("unknown attribute of ") + sample.type + ": value");
  EXPECT_EQ(wrapper->attributeString(1), "unknown");
}

TEST(ValueWrapper, OfATypeWithoutAttributesHasNone) {
  expectBuiltin<bool>({true, "true", "bool"});
  expectBuiltin<unsigned>({4000000000U, "4000000000", "U32"});
  expectBuiltin<unsigned long long>({~0ULL, "18446744073709551615", "U64"});
  expectBuiltin<double>({0.1, "0.1", "F64"});
  expectBuiltin<Zel::String8>({"it's", "'it\\'s'", "String"});
  expectBuiltin<Zel::Name>({"unit", "'unit'", "Name"});
  expectBuiltin<Vexil::IntfId>({Vexil::IntfId("Ethernet3/1"), "'Ethernet3/1'", "IntfId"});
}

TEST(ValueWrapper, OfAGroupKeyHasItsAttributes) {
  const Handle key = writable(Group::GroupKey(Group::groupTypeBgp, "peers"));
  EXPECT_EQ(Zel::readAttribute<Group::GroupType>(key, key->attributeId("type")),
            Group::groupTypeBgp);
  EXPECT_EQ(Zel::readAttribute<Zel::String8>(key, key->attributeId("name")), "peers");
}

} // namespace
