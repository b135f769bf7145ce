#include "text/Text.h"

#include <model/Profile/ProfileKey.h>
#include <model/Unit/Enumerations.h>
#include <model/Unit/TrafficRates.h>

namespace {

using namespace Maintenance;

template <class V>
class Subject {
public:
  Subject(V value, const char* text) : value_(std::move(value)), text_(text) {}

  Zel::String8 print() const { return valueToStrep(value_); }
  bool isText(const Zel::String8& text) const { return text == text_; }
  V parse() const { return Zel::strepToValue<V>(text_); }
  bool isValue(const V& value) const { return value == value_; }

private:
  V value_;
  Zel::String8 text_;
};

struct ProfileKeyText : Subject<Profile::ProfileKey> {
  ProfileKeyText()
      : Subject({Profile::profileTypeBgp, Bench::Sample::profileName},
                "Value('Maintenance::Profile::ProfileKey', ** {'type': 'profileTypeBgp', "
                "'name': 'profile-0001234-p002'})") {}
};

Unit::TrafficRates sampleRates() {
  Unit::TrafficRates rates;
  rates.outBitsRateIs(Bench::Sample::outBitsRate);
  rates.inBitsRateIs(Bench::Sample::inBitsRate);
  rates.statsUpdateTimeIs(Bench::Sample::statsUpdateTime);
  return rates;
}

struct TrafficRatesText : Subject<Unit::TrafficRates> {
  TrafficRatesText()
      : Subject(sampleRates(),
                "Value('Maintenance::Unit::TrafficRates', ** {'outBitsRate': 9876543210, "
                "'inBitsRate': 123456789, 'statsUpdateTime': 1700000000.25})") {}
};

struct StateText : Subject<Unit::State> {
  StateText() : Subject(Unit::underMaintenance, "'underMaintenance'") {}
};

/// 40 bytes, of which five are escaped.
struct StringText : Subject<Zel::String8> {
  StringText()
      : Subject("entered 'maintenance'\nby an operator\t\x01\xc3\xa9",
                R"('entered \'maintenance\'\nby an operator\t\x01)"
                "\xc3\xa9'") {}
};

} // namespace

void Bench::registerAll() {
  textOperations<ProfileKeyText>("profile key");
  textOperations<TrafficRatesText>("traffic rates");
  textOperations<StateText>("state");
  textOperations<StringText>("string");
}
