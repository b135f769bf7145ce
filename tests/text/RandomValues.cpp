#include "Texts.h"

namespace {

using namespace TestText;

/// Equal, with all that is not a number taken for the same.
template <class V>
bool isSame(const V& a, const V& b) {
  return a == b;
}

bool isSame(const TrafficRates& a, const TrafficRates& b) {
  return a.outBitsRate() == b.outBitsRate() && a.inBitsRate() == b.inBitsRate() &&
         (a.statsUpdateTime() == b.statsUpdateTime() ||
          (a.statsUpdateTime() != a.statsUpdateTime() &&
           b.statsUpdateTime() != b.statsUpdateTime()));
}

template <class V>
class AnyText : public testing::Test {};
using Types =
    testing::Types<ProfileKey, GroupKey, TrafficRates, StageMgrInstKey, IntfId, ProfileType,
                   UnitType, MaintenanceOp, InputSrc, State, GroupType, ProfileChangeCause,
                   GroupProfileSelKey, UnitProfileSelKey, OnBootUnitAndReason>;
TYPED_TEST_SUITE(AnyText, Types);

TYPED_TEST(AnyText, OfARandomValueReadsBack) {
  for (unsigned seed = 0; seed < 2000; ++seed) {
    Random random(seed);
    const auto value = randomValue<TypeParam>(random);
    const std::string text = print(value);
    SCOPED_TRACE(testing::Message() << "seed " << seed << ' ' << text);
    const auto back = read<TypeParam>(text);
    ASSERT_TRUE(isSame(back, value));
    ASSERT_EQ(print(back), text);
  }
}

TYPED_TEST(AnyText, CutShortAnywhereIsRefused) {
  for (unsigned seed = 0; seed < 20; ++seed) {
    Random random(seed);
    const std::string text = print(randomValue<TypeParam>(random));
    for (std::size_t length = 0; length < text.size(); ++length) {
      SCOPED_TRACE(testing::Message() << "seed " << seed << ' ' << text.substr(0, length));
      const std::string message = refusal<TypeParam>(text.substr(0, length));
      ASSERT_TRUE(message.find("expected ") != std::string::npos ||
                  message.starts_with("premature end of value type "))
          << message;
    }
  }
}

TYPED_TEST(AnyText, CutShortByItsEndIsReadNoFurther) {
  Random random(1);
  const String8 text(print(randomValue<TypeParam>(random)));
  for (int length = 0; length < static_cast<int>(text.length()); ++length) {
    String8::IteratorConst first(text);
    const String8::IteratorConst last(text, length);
    Support::rangeFailure([&] {
      if constexpr (std::is_enum_v<TypeParam>) {
        sequenceToValue(first, last, static_cast<TypeParam*>(nullptr));
      } else {
        TypeParam(first, last);
      }
    });
    ASSERT_LE(first.position(), length);
  }
}

/// A few bytes changed, inserted or taken out.
std::string mutated(std::string text, Random& random) {
  constexpr std::string_view bytes("'\"\\{}(),:* x0-19.eInfna\0\n", 26);
  for (auto edits = 1 + random() % 4; edits > 0; --edits) {
    const std::size_t at = random() % (text.size() + 1);
    const char byte =
        random() % 4 == 0 ? static_cast<char>(random()) : bytes[random() % bytes.size()];
    if (random() % 3 == 0) {
      text.insert(at, 1, byte);
    } else if (at < text.size()) {
      if (random() % 2 == 0) {
        text[at] = byte;
      } else {
        text.erase(at, 1 + random() % 5);
      }
    }
  }
  return text;
}

/// Reads a text of which nothing is known: what is read must print as something that reads back as
/// the same. Yields whether it could be read.
template <class V>
bool survives(const std::string& text) {
  try {
    const auto value = read<V>(text);
    EXPECT_TRUE(isSame(read<V>(print(value)), value)) << text;
    return true;
  } catch (const Zel::Exception& failure) {
    EXPECT_FALSE(failure.message().empty());
    return false;
  }
}

TYPED_TEST(AnyText, ThatIsDamagedIsReadOrRefused) {
  unsigned taken = 0;
  for (unsigned seed = 0; seed < 20000; ++seed) {
    Random random(seed);
    const std::string text = mutated(print(randomValue<TypeParam>(random)), random);
    SCOPED_TRACE(testing::Message() << "seed " << seed << ' ' << text);
    taken += survives<TypeParam>(text) ? 1 : 0;
    ASSERT_FALSE(testing::Test::HasFailure());
  }
  EXPECT_GT(taken, 20U);
  EXPECT_LT(taken, 15000U);
}

TYPED_TEST(AnyText, ThatIsNoiseIsRefused) {
  for (unsigned seed = 0; seed < 2000; ++seed) {
    Random random(seed);
    std::string text(random() % 100, '\0');
    for (char& byte : text) {
      byte = static_cast<char>(random());
    }
    ASSERT_FALSE(survives<TypeParam>(text)) << "seed " << seed;
  }
}

} // namespace
