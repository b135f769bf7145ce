#include <Vexil/IntfId>

#include <Zel/Hash>
#include <Zel/Text>

#include <array>
#include <charconv>
#include <ostream>
#include <string>

namespace Vexil {

using Zel::String8;

namespace {

constexpr std::uint32_t maxShort = 0xffff;

/// By kind; the identifier of none is not in it.
constexpr std::array<std::string_view, 6> kindNames = {"",         "Ethernet", "Port-Channel",
                                                       "Loopback", "Vlan",     "Management"};

constexpr std::string_view noneName = "none";
constexpr const char* wordsPattern = "Intf(0x%08x,0x%08x)";

/// The numbers of an identifier that has the regular form.
struct Numbers {
  std::array<std::uint32_t, 3> value{};
  unsigned count = 0; ///< 0 if the identifier has another form
};

Numbers numbersOf(IntfId id) {
  const std::uint32_t high = id.first() & maxShort;
  const unsigned count = id.first() >> 16 & 0xff;
  if (id.kind() == IntfId::none || id.kind() >= kindNames.size() || count == 0 || count > 3 ||
      (count < 3 && high != 0)) {
    return {};
  }
  switch (count) {
  case 1:
    return {{id.second()}, 1};
  case 2:
    return {{id.second() >> 16, id.second() & maxShort}, 2};
  default:
    return {{high, id.second() >> 16, id.second() & maxShort}, 3};
  }
}

/// A decimal number without sign or leading zeros at the head of `text`, which moves behind it.
bool takeNumber(std::string_view& text, std::uint32_t& number) {
  if (text.empty() || text[0] < '0' || text[0] > '9' ||
      (text[0] == '0' && text.size() > 1 && text[1] >= '0' && text[1] <= '9')) {
    return false;
  }
  const auto result = std::from_chars(text.data(), text.data() + text.size(), number);
  text.remove_prefix(static_cast<std::size_t>(result.ptr - text.data()));
  return result.ec == std::errc();
}

bool takeNumbers(std::string_view text, Numbers& numbers) {
  while (numbers.count < numbers.value.size()) {
    if (!takeNumber(text, numbers.value[numbers.count++])) {
      return false;
    }
    if (text.empty()) {
      return true;
    }
    if (text[0] != '/') {
      return false;
    }
    text.remove_prefix(1);
  }
  return false;
}

/// The identifier of a regular name; false if the name has another form.
bool parseRegular(std::string_view name, IntfId& id) {
  for (std::uint32_t kind = 1; kind < kindNames.size(); ++kind) {
    if (!name.starts_with(kindNames[kind])) {
      continue;
    }
    Numbers numbers;
    if (!takeNumbers(name.substr(kindNames[kind].size()), numbers)) {
      return false;
    }
    std::array<std::uint32_t, 3> value = numbers.value;
    if (numbers.count == 1) {
      id = IntfId(kind << 24 | 1U << 16, value[0]);
      return true;
    }
    if (numbers.count == 2) {
      value = {0, value[0], value[1]};
    }
    if (value[0] > maxShort || value[1] > maxShort || value[2] > maxShort) {
      return false;
    }
    id = IntfId(kind << 24 | numbers.count << 16 | value[0], value[1] << 16 | value[2]);
    return true;
  }
  return false;
}

bool parseWords(std::string_view name, IntfId& id) {
  constexpr std::string_view shape = "Intf(0x........,0x........)";
  if (name.size() != shape.size()) {
    return false;
  }
  std::uint32_t first = 0;
  std::uint32_t second = 0;
  std::from_chars(name.data() + 7, name.data() + 15, first, 16);
  std::from_chars(name.data() + 18, name.data() + 26, second, 16);
  id = IntfId(first, second);
  return true;
}

IntfId parse(const String8& name) {
  IntfId id;
  // What was understood must print as what was read: one name for each identifier.
  if (name.view() != noneName && !(parseRegular(name.view(), id) || parseWords(name.view(), id))) {
    Zel::throwRangeException("IntfId: " + name);
  }
  if (!(stringValue(id) == name)) {
    Zel::throwRangeException("IntfId: " + name);
  }
  return id;
}

} // namespace

IntfId::IntfId(const String8& name) : IntfId(parse(name)) {}

IntfId::IntfId(String8::IteratorConst& first, const String8::IteratorConst& last)
    : IntfId(parse(Zel::sequenceToValue(first, last, static_cast<String8*>(nullptr)))) {}

unsigned IntfId::hash() const noexcept {
  return Zel::oneAtATimeEnd(Zel::oneAtATimeStep(Zel::oneAtATimeStep(0, first_), second_));
}

String8 stringValue(IntfId id) {
  if (id == IntfId()) {
    return String8(noneName);
  }
  const Numbers numbers = numbersOf(id);
  if (numbers.count == 0) {
    return Zel::format(wordsPattern, id.first(), id.second());
  }
  std::string name(kindNames[id.kind()]);
  for (unsigned i = 0; i < numbers.count; ++i) {
    name += i == 0 ? "" : "/";
    name += std::to_string(numbers.value[i]);
  }
  return String8(name);
}

String8 valueToStrep(const IntfId& id) { return Zel::valueToStrep(stringValue(id)); }

void appendStrep(Zel::TextBuffer& out, const IntfId& id) { Zel::appendStrep(out, stringValue(id)); }

void readStrep(Zel::TextReader& in, IntfId& id) { id = parse(in.string()); }

std::ostream& operator<<(std::ostream& out, const IntfId& id) { return out << stringValue(id); }

void appendWire(Zel::WireWriter& out, IntfId id) {
  out.put32(id.first());
  out.put32(id.second());
}

void readWire(Zel::ByteConnection::In& in, IntfId& id) {
  const std::uint32_t first = in.nextU32();
  id = IntfId(first, in.nextU32());
}

} // namespace Vexil
