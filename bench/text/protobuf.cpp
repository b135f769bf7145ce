#include "peers/ProtobufText.h"
#include "text/Text.h"

namespace {

class Subject {
public:
  Subject(Bench::ProtobufText text, std::string expected)
      : text_(std::move(text)), expected_(std::move(expected)) {}

  const std::string& print() { return text_.print(); }
  bool isText(const std::string& text) const {
    return text == expected_ && text_.text() == expected_;
  }
  bool parse() { return text_.parse(); }
  bool isValue(bool parsed) const { return parsed && text_.isEqual(); }

private:
  Bench::ProtobufText text_;
  std::string expected_;
};

struct Profile : Subject {
  Profile()
      : Subject(Bench::ProtobufText::profileKey(1, Bench::Sample::profileName),
                "type: profileTypeBgp name: \"profile-0001234-p002\" ") {}
};

struct Rates : Subject {
  Rates()
      : Subject(Bench::ProtobufText::trafficRates(Bench::Sample::outBitsRate,
                                                  Bench::Sample::inBitsRate,
                                                  Bench::Sample::statsUpdateTime),
                "outBitsRate: 9876543210 inBitsRate: 123456789 statsUpdateTime: 1700000000.25 ") {}
};

} // namespace

void Bench::registerAll() {
  textOperations<Profile>("profile key");
  textOperations<Rates>("traffic rates");
}
