#include "Descriptors.h"
#include "GenericSide.h"

namespace Conformance {

namespace {

using Support::messageOf;
using Support::rangeFailure;

bool isValue(const ExpectedDescriptor& type) { return (type.flags.first & 0x1) != 0; }
bool isEnumeration(const ExpectedDescriptor& type) { return (type.flags.first & 0x10) != 0; }

std::vector<ExpectedDescriptor> typesThat(bool (*wanted)(const ExpectedDescriptor&)) {
  std::vector<ExpectedDescriptor> some;
  for (const ExpectedDescriptor& type : expectedDescriptors()) {
    if (wanted(type)) {
      some.push_back(type);
    }
  }
  return some;
}

std::string typeName(const testing::TestParamInfo<ExpectedDescriptor>& type) {
  std::string name(type.param.name);
  std::erase(name, ':');
  return name;
}

std::string inQuotes(std::string_view text) { return std::string("'").append(text).append("'"); }

/// Wrappers of all value types and enumerations.
class GenericValueType : public testing::TestWithParam<ExpectedDescriptor> {
protected:
  const ExpectedDescriptor& expected() const { return GetParam(); }
  const Zel::ZelType& type() const { return *Zel::ZelType::type(expected().name); }
  const Zel::ValueRecord& record() const { return *type().record(); }
  std::string shortName() const { return std::string(type().name().view()); }
  const std::vector<AnyValue>& samples() const { return samplesOf(record()); }

  Generic fromList(const std::vector<std::optional<AnyValue>>& arguments) const {
    return type().genericIf(listOf(arguments).ptr(), true);
  }
};

TEST_P(GenericValueType, IsTheDefaultOfNothing) {
  for (const bool isConst : {false, true}) {
    const Generic made = type().genericIf(static_cast<const void*>(nullptr), isConst);
    EXPECT_EQ(unpack(made, record()), AnyValue(record()));
    EXPECT_EQ(unpack(made, record()), samples()[0]);
    EXPECT_EQ(made->isConst(), isConst);
    EXPECT_EQ(made->references(), 1U);
  }
}

TEST_P(GenericValueType, HearsNothingButIsReadyTo) {
  const Generic made = pack(samples().back());
  EXPECT_TRUE(made->isRegisteredNotifiee());
  EXPECT_TRUE(made->hasNotificationActive());
  EXPECT_EQ(made->notifier(), nullptr);
}

TEST_P(GenericValueType, IsSeenAsItsOwnTypeOnly) {
  const Generic made = pack(samples().back());
  const std::string message = "argument missing or of the wrong type: " + shortName();
  EXPECT_EQ(made->type().ptr(), &type());
  for (const Zel::ZelType* const other : Zel::ZelType::types()) {
    if (other != &type()) {
      EXPECT_EQ(messageOf<Zel::TypeException>(
                    [&] { made->voidPtrIs(Zel::Ptr<const Zel::ZelType>(other)); }),
                message);
    }
  }
  EXPECT_NE(made->voidPtrIs(Zel::Ptr<const Zel::ZelType>(&type())), nullptr);
}

TEST_P(GenericValueType, IsClonedWithItsValueAndNothingElse) {
  for (const bool isConst : {false, true}) {
    const Generic made = pack(samples().back(), isConst);
    const Generic copy = made->clone();
    EXPECT_NE(copy, made);
    EXPECT_EQ(copy->isConst(), isConst);
    const Zel::Ptr<const Zel::ZelType> own(&type());
    EXPECT_NE(copy->voidPtrIs(own), made->voidPtrIs(own));
    EXPECT_TRUE(copy->isRegisteredNotifiee());
    EXPECT_TRUE(copy->hasNotificationActive());
    record().assign(copy->voidPtrIs(own), samples()[0].at());
    EXPECT_EQ(unpack(copy, record()), samples()[0]);
    EXPECT_EQ(unpack(made, record()), samples().back());
  }
}

TEST_P(GenericValueType, HasATextThatReadsBackThroughItsDescriptor) {
  const bool onlyConstants = !type().isEnumType() && samples().size() == 1;
  for (const AnyValue& sample : samples()) {
    const Zel::String8 text = pack(sample)->strRep();
    SCOPED_TRACE(text);
    if (onlyConstants) {
      EXPECT_EQ(text, "");
      EXPECT_NE(rangeFailure([&] { type().genericIf(text, false); }), "");
      continue;
    }
    for (const bool isConst : {false, true}) {
      const Generic read = type().genericIf(text, isConst);
      EXPECT_EQ(unpack(read, record()), sample);
      EXPECT_EQ(read->isConst(), isConst);
      EXPECT_EQ(read->strRep(), text);
    }
    EXPECT_EQ(rangeFailure([&] { type().genericIf(text + "x", false); }),
              "junk at column " + std::to_string(text.length()) + " deserializing " +
                  std::string(text.view()) + "x");
  }
}

TEST_P(GenericValueType, WithNoFieldsIsReadFromAnEmptyFrame) {
  const std::string frame = "Value('" + std::string(expected().name) + "', ** {})";
  if (type().isEnumType()) {
    EXPECT_NE(rangeFailure([&] { type().genericIf(Zel::String8(frame), false); }), "");
  } else {
    // What is missing keeps its default, and all may be missing.
    EXPECT_EQ(unpack(type().genericIf(Zel::String8(frame), false), record()), AnyValue(record()));
  }
}

TEST_P(GenericValueType, IsMadeFromAListOfItsArguments) {
  if (!expected().madeByList) {
    const auto list = listOf({});
    EXPECT_EQ(messageOf<Zel::OpNotSupportedException>([&] { type().genericIf(list.ptr(), false); }),
              "operation 128 not supported on " + shortName());
    return;
  }
  std::vector<std::optional<AnyValue>> arguments;
  for (const Zel::ValueRecord* const argument : type().table()->constructor.arguments) {
    arguments.emplace_back(argument->name == "Zel::String" ? AnyValue::of(Zel::String8("B:7"))
                                                           : samplesOf(*argument)[1]);
  }
  if (expected().name == "Maintenance::Unit::StageMgrInstKey") {
    arguments[0] = AnyValue::of(Zel::String8("System#3"));
  }
  const Generic made = fromList(arguments);
  EXPECT_FALSE(made->isConst());
  EXPECT_EQ(made->type().ptr(), &type());
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    const Zel::AttributeId id = made->attributeId(type().constructorArgNameQ()[i]);
    EXPECT_EQ(unpack(made->attributeOp({id, Op::opRead}, nullptr, nullptr), arguments[i]->record()),
              *arguments[i]);
  }
}

TEST_P(GenericValueType, TakesAllArgumentsOrNone) {
  if (!expected().madeByList) {
    EXPECT_TRUE(type().isEnumType());
    return;
  }
  EXPECT_EQ(unpack(fromList({}), record()), AnyValue(record()));
  std::vector<std::optional<AnyValue>> arguments;
  for (const Zel::ValueRecord* const argument : type().table()->constructor.arguments) {
    if (!arguments.empty()) {
      EXPECT_EQ(messageOf<Zel::TypeException>([&] { fromList(arguments); }),
                "argument missing or of the wrong type: " +
                    std::string(expected().arguments[arguments.size()].name));
    }
    arguments.emplace_back(AnyValue(*argument));
    auto withNull = arguments;
    withNull.back().reset();
    EXPECT_EQ(messageOf<Zel::TypeException>([&] { fromList(withNull); }),
              "argument missing or of the wrong type: " +
                  std::string(expected().arguments[arguments.size() - 1].name));
  }
  arguments.emplace_back(AnyValue::of(true));
  EXPECT_EQ(messageOf<Zel::UnknownArgException>([&] { fromList(arguments); }),
            "too many arguments: " + shortName());
  EXPECT_EQ(messageOf<Zel::TypeException>(
                [&] { type().genericIf(pack(AnyValue::of(true)).ptr(), false); }),
            "argument missing or of the wrong type: Zel::GenericIf::List_");
  EXPECT_EQ(messageOf<Zel::TypeException>(
                [&] { type().genericIf(static_cast<const Zel::GenericIf*>(nullptr), false); }),
            "argument missing or of the wrong type: Zel::GenericIf::List_");
}

TEST_P(GenericValueType, IsComparedByOperation) {
  const Generic made = pack(samples().back());
  const auto equals = [&](const GenericConst& other) {
    return made->attributeOp({0, Op::opEquals}, other, nullptr);
  };
  if (type().isEnumType()) {
    EXPECT_EQ(messageOf<Zel::UnknownAttrException>([&] { equals(made); }),
              "unknown attribute of " + shortName());
    return;
  }
  for (const AnyValue& sample : samples()) {
    const Generic result = equals(pack(sample));
    EXPECT_EQ(unpack(result, Zel::valueRecord<bool>), AnyValue::of(sample == samples().back()));
    EXPECT_EQ(result->isConst(), made->isConst());
  }
  EXPECT_EQ(messageOf<Zel::TypeException>([&] { equals(nullptr); }),
            "argument missing or of the wrong type: zelOpArg");
  const Stranger stranger = strangerTo(record());
  EXPECT_EQ(messageOf<Zel::TypeException>([&] { equals(stranger.value); }),
            "argument missing or of the wrong type: " + stranger.name);
}

TEST_P(GenericValueType, KnowsNoOtherAttributes) {
  const Generic made = pack(samples().back(), false);
  const Zel::AttributeId unknown = 100;
  EXPECT_EQ(messageOf<Zel::UnknownAttrException>([&] { made->attributeId("noSuchAttribute"); }),
            "unknown attribute of " + shortName() + ": noSuchAttribute");
  EXPECT_EQ(made->attributeString(unknown), "unknown");
  EXPECT_EQ(messageOf<Zel::UnknownAttrException>([&] {
              made->attributeOp({unknown, Op::opRead}, nullptr, nullptr);
            }),
            "unknown attribute of " + shortName() + (type().isEnumType() ? "" : ": 100"));
  const Generic sealed = pack(samples().back(), true);
  const auto write = [&] { sealed->attributeOp({unknown, Op::opWrite}, nullptr, nullptr); };
  if (type().isEnumType()) {
    EXPECT_EQ(messageOf<Zel::UnknownAttrException>(write), "unknown attribute of " + shortName());
  } else {
    EXPECT_EQ(messageOf<Zel::ConstException>(write), "attempting to modify a const instance");
  }
}

TEST_P(GenericValueType, IsNoObject) {
  const auto object = Zel::makeObject<Zel::GenericIf::List_>();
  EXPECT_EQ(
      messageOf<Zel::OpNotSupportedException>([&] { type().genericIf_(object.ptr(), false); }),
      "operation 0 not supported on " + shortName());
}

INSTANTIATE_TEST_SUITE_P(Types, GenericValueType, testing::ValuesIn(typesThat(isValue)), typeName);

/// Wrappers of enumerations.
class GenericEnumeration : public GenericValueType {};

TEST_P(GenericEnumeration, YieldsItsNumberWhateverTheOperation) {
  for (const AnyValue& sample : samples()) {
    for (const bool isConst : {false, true}) {
      const Generic made = pack(sample, isConst);
      for (const Op::OpId id : {Op::opRead, Op::opCount, Op::opEquals, Op::opWrite, Op::opDelete}) {
        const Generic read = made->attributeOp({1, id}, made, made);
        EXPECT_EQ(unpack(read, record()), sample);
        EXPECT_FALSE(read->isConst());
        EXPECT_NE(read, made);
      }
    }
  }
}

TEST_P(GenericEnumeration, HasOneAttributeOfItsOwn) {
  const Generic made = pack(samples().back());
  const unsigned looks = type().attr("value")->readCounter();
  EXPECT_EQ(made->attributeId("value"), 1);
  EXPECT_EQ(type().attr("value")->readCounter(), looks + 1);
  for (const Zel::Enumerator& enumerator : type().enumeration()->rows) {
    const Zel::ZelAttr& attr = *type().attr(enumerator.name);
    const unsigned before = attr.readCounter();
    EXPECT_EQ(messageOf<Zel::UnknownAttrException>([&] { made->attributeId(attr.name()); }),
              "unknown attribute of " + shortName() + ": " + std::string(enumerator.name));
    EXPECT_EQ(attr.readCounter(), before + 1); // looked up all the same
  }
}

TEST_P(GenericEnumeration, IsWrittenByNameAndByNumberWithoutOne) {
  for (const Zel::Enumerator& enumerator : type().enumeration()->rows) {
    const int number = enumerator.number;
    EXPECT_EQ(type().genericIf(static_cast<const void*>(&number), true)->strRep().view(),
              inQuotes(enumerator.name));
  }
  const int none = 1000;
  const Zel::String8 text = type().genericIf(static_cast<const void*>(&none), true)->strRep();
  EXPECT_EQ(text.view(), inQuotes(shortName() + "(1000)"));
  EXPECT_EQ(rangeFailure([&] { type().genericIf(text, true); }), shortName());
}

INSTANTIATE_TEST_SUITE_P(Types, GenericEnumeration, testing::ValuesIn(typesThat(isEnumeration)),
                         typeName);

} // namespace

} // namespace Conformance
