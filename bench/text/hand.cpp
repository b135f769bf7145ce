#include "peers/HandText.h"
#include "text/Text.h"

#include <vector>

namespace {

using Bench::HandProfile;
using Bench::HandText;

/// Prints to a buffer that is there, and reads into a value that is there.
class Profile {
public:
  std::string_view print() { return {buffer_.data(), HandText::print(value_, buffer_.data())}; }
  bool isText(std::string_view text) const { return text == text_; }
  const HandProfile* parse() { return HandText::parse(text_, parsed_) ? &parsed_ : nullptr; }
  bool isValue(const HandProfile* value) const {
    return value != nullptr && value->type == value_.type && value->name == value_.name;
  }

protected:
  HandProfile value_{1, Bench::Sample::profileName};
  std::string text_ = "Value('Maintenance::Profile::ProfileKey', ** {'type': 'profileTypeBgp', "
                      "'name': 'profile-0001234-p002'})";

private:
  std::vector<char> buffer_ = std::vector<char>(HandText::space(value_.name.size()));
  HandProfile parsed_;
};

/// Makes the text and the value anew each time, as the library does.
class NewProfile : public Profile {
public:
  std::string print() const { return HandText::print(value_); }
  HandProfile parse() const {
    HandProfile parsed;
    return HandText::parse(text_, parsed) ? parsed : HandProfile{};
  }
  bool isValue(const HandProfile& value) const { return Profile::isValue(&value); }
};

} // namespace

void Bench::registerAll() {
  textOperations<Profile>("profile key");
  textOperations<NewProfile>("new profile key");
}
