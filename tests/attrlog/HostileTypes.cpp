// Records for an entity of each type that are well formed and make no sense: an attribute that
// nobody has, a payload that is cut short, an enumerator that nobody knows where a known one is
// needed. They are passed over and counted, or end the connection, which says why; the mirror stays
// what it was, and goes on.

#include "Ends.h"
#include "HostileSubjects.h"

#include <Zel/StateDigest>
#include <Zel/ZelType>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <set>

namespace {

using Hostile::Payload;
using Hostile::Subject;
using Hostile::subjects;
using Zel::Entity;
using Zel::Ptr;

std::uint32_t number32(const std::string& bytes, std::size_t at) {
  std::uint32_t number = 0;
  for (std::size_t i = 0; i < 4; ++i) {
    number = number << 8 | static_cast<unsigned char>(bytes[at + i]);
  }
  return number;
}

void put32(std::string& bytes, std::size_t at, std::uint32_t number) {
  for (std::size_t i = 0; i < 4; ++i) {
    bytes[at + i] = static_cast<char>(number >> (24 - 8 * i));
  }
}

// Where the parts of a record are.
constexpr std::size_t attrAt = 12;
constexpr std::size_t variableAt = 16;
constexpr std::size_t fixedSizeAt = 17;
constexpr std::size_t tagAt = 21;
constexpr std::size_t payloadAt = 27;

std::vector<std::string> recordsOf(std::string bytes) {
  std::vector<std::string> records;
  while (!bytes.empty()) {
    const std::size_t length = number32(bytes, 0);
    records.push_back(bytes.substr(0, length));
    bytes.erase(0, length);
  }
  return records;
}

Zel::AttributeId attrOf(const std::string& record) {
  return static_cast<Zel::AttributeId>(number32(record, attrAt));
}
bool isForRoot(const std::string& record) { return record[4] == 2; }

/// The record with another payload, of which the header tells the truth.
std::string withPayload(const std::string& record, const std::string& payload) {
  std::string other = record.substr(0, payloadAt) + payload + "\x03";
  put32(other, 0, static_cast<std::uint32_t>(other.size()));
  if (other[variableAt] == 0) {
    put32(other, fixedSizeAt, static_cast<std::uint32_t>(payload.size()));
  }
  return other;
}
std::string payloadOf(const std::string& record) {
  return record.substr(payloadAt, record.size() - payloadAt - 1);
}

/// A record for the root.
std::string recordFor(Zel::AttributeId attr, const std::string& payload, bool isChild = false) {
  std::string record = bytesOf("00 00 00 00 02 00 00 00 00 00 00 00 00 00 00 00 01 "
                               "00 00 00 00 00 00 00 00 00 01");
  put32(record, attrAt, static_cast<std::uint32_t>(attr));
  put32(record, tagAt, isChild ? Zel::NboAttrLog::childRecordTag : 0);
  return withPayload(record, payload);
}

/// An honest end that has sent all of an entity, and a mirror that has received it.
class Pair {
public:
  explicit Pair(const Subject& subject) : subject_(subject), made(subject.make()) {
    sender.demuxer().exportIs(made);
    walk = bytesOf(sender.written());
    receiver.apply(hexOf(walk));
  }

  const Ptr<Entity> mirror() const {
    const auto& roots = receiver.roots->entities();
    return roots.empty() ? nullptr : roots.begin()->second;
  }
  std::uint64_t digest() const { return Zel::stateDigest(*mirror()); }
  const Zel::NboAttrLog::Demuxer::Counts& counts() const { return receiver.counts(); }
  void expectEqual() const { EXPECT_EQ(digest(), Zel::stateDigest(*made)); }

  /// The mirror takes what comes next.
  void expectGoesOn() const {
    ASSERT_EQ(receiver.failure(), "");
    if (subject_.change != nullptr) {
      const std::uint64_t before = digest();
      subject_.change(*made);
      receiver.apply(sender.written());
      EXPECT_NE(digest(), before);
    }
    expectEqual();
  }

private:
  const Subject& subject_;

public:
  const Ptr<Entity> made;
  const Sender sender;
  const Receiver receiver;
  std::string walk;
};

class HostileTo : public testing::TestWithParam<Subject> {
protected:
  const Zel::TypeTable& table() const { return *Zel::ZelType::type(GetParam().type)->table(); }
};

TEST_P(HostileTo, AnHonestPeerIsMirrored) {
  const Pair pair(GetParam());
  ASSERT_TRUE(pair.mirror());
  EXPECT_EQ(pair.mirror()->fwkType()->fullName(), GetParam().type);
  pair.expectEqual();
  pair.expectGoesOn();
}

TEST_P(HostileTo, AttributesThatNobodyHasArePassedOver) {
  const Pair pair(GetParam());
  std::uint64_t sent = 0;
  for (const Zel::AttributeId attr : {table().rows.back().id + 128, 350, 500, 100000, 2147483647}) {
    for (const Zel::AttributeId id : {attr, -attr}) {
      for (const char* const payload : {"", "00 00 00 01", "ff * 300"}) {
        pair.receiver.apply(hexOf(recordFor(id, bytesOf(payload))));
        EXPECT_EQ(pair.counts().unknownAttributes, ++sent) << id;
      }
    }
  }
  EXPECT_EQ(pair.counts().badValues, 0U);
  pair.expectGoesOn();
}

TEST_P(HostileTo, PayloadsThatAreCutShortArePassedOver) {
  // A line's time and the length of its text. What there is of a text is a part of the framing, so
  // that one which is not told truly ends the connection.
  constexpr std::size_t lengthOfLine = 8 + 4;
  std::set<Zel::AttributeId> cut;
  const Pair honest(GetParam());
  std::string sent = honest.walk;
  if (GetParam().change != nullptr) { // for what a walk passes over
    GetParam().change(*honest.made);
    sent += bytesOf(honest.sender.written());
  }
  for (const std::string& record : recordsOf(sent)) {
    const Zel::AttrRow* const row = table().row(std::abs(attrOf(record)));
    if (!isForRoot(record) || row == nullptr || !row->flows() ||
        (!row->isCollection() && row->value == &Zel::valueRecord<Zel::String8>)) {
      continue; // of a text, any part is one
    }
    cut.insert(row->id);
    const std::string payload = payloadOf(record);
    for (std::size_t length = 0; length < payload.size(); ++length) {
      const Pair pair(GetParam());
      pair.receiver.apply(hexOf(withPayload(record, payload.substr(0, length))));
      pair.expectEqual();
      if (row->kind == Zel::AttrKind::ordered && length >= lengthOfLine) {
        EXPECT_EQ(pair.receiver.failure(), "malformed record: a chunk of 4 bytes in " +
                                               std::to_string(length - lengthOfLine));
      } else {
        EXPECT_EQ(pair.counts().badValues, 1U) << row->name << " " << length;
        pair.expectGoesOn();
      }
    }
  }
  std::set<Zel::AttributeId> flowing;
  for (const Zel::AttrRow& row : table().rows) {
    if (row.flows() && (row.isCollection() || row.value != &Zel::valueRecord<Zel::String8>)) {
      flowing.insert(row.id);
    }
  }
  EXPECT_EQ(cut, flowing);
}

TEST_P(HostileTo, ARootWhoseRecordIsCutShortIsNotMade) {
  const std::string record = recordsOf(Pair(GetParam()).walk).front();
  ASSERT_EQ(attrOf(record), Zel::NboAttrLog::attrIdOrphan);
  const std::string payload = payloadOf(record);
  for (std::size_t length = 0; length < payload.size(); ++length) {
    const Receiver receiver;
    receiver.apply(hexOf(withPayload(record, payload.substr(0, length))));
    EXPECT_TRUE(receiver.roots->entities().empty()) << length;
    const auto& counts = receiver.counts();
    const bool isCounted = counts.badValues + counts.unknownTypes == 1;
    EXPECT_EQ(isCounted, receiver.failure().empty()) << length << receiver.failure();
    EXPECT_TRUE(isCounted || receiver.failure().starts_with("malformed record: "))
        << receiver.failure();
  }
}

TEST_P(HostileTo, EnumeratorsThatNobodyKnowsArePassedOverWhereOneIsNeeded) {
  const Pair pair(GetParam());
  std::uint64_t sent = 0;
  for (const Payload& payload : GetParam().unknown) {
    const Zel::AttrRow& row = *table().row(std::abs(payload.attr));
    const bool isChild = payload.attr > 0 && row.kind == Zel::AttrKind::instantiating;
    pair.receiver.apply(hexOf(recordFor(payload.attr, bytesOf(payload.hex), isChild)));
    EXPECT_EQ(pair.counts().badValues, ++sent) << payload.attr << " " << payload.hex;
    // With one that is known, the same record is no bad one.
    std::string known = bytesOf(payload.hex);
    known[known.find('\x63')] = 1;
    pair.receiver.apply(hexOf(recordFor(payload.attr, known, isChild)));
    EXPECT_EQ(pair.counts().badValues, sent) << payload.attr << " " << payload.hex;
  }
  EXPECT_EQ(pair.receiver.failure(), "");
}

TEST(HostileRoots, OfAKeyOrAPriorityThatNobodyKnowsAreNotMade) {
  std::set<std::string> types;
  for (const Subject& subject : subjects()) {
    const auto& arguments = Zel::ZelType::type(subject.type)->table()->constructor.arguments;
    const Zel::ValueRecord& last = *arguments.back();
    if (last.enumeration == nullptr && last.table == nullptr) {
      continue; // made of its name
    }
    types.insert(subject.type);
    const std::string record = recordsOf(Pair(subject).walk).front();
    std::string payload = payloadOf(record);
    // Behind the type, and behind the name if there is one: a number, whatever the argument is.
    const std::size_t at = 1 + 4 + std::string_view(subject.type).size() + 1 +
                           (arguments.size() == 2 ? 4 + std::string_view("root").size() : 0);
    ASSERT_LT(number32(payload, at), 4U);
    put32(payload, at, 99);
    const Receiver receiver;
    receiver.apply(hexOf(withPayload(record, payload)));
    EXPECT_EQ(receiver.counts().badValues, 1U) << subject.type;
    EXPECT_EQ(receiver.failure(), "");
    EXPECT_TRUE(receiver.roots->entities().empty());
    receiver.apply(hexOf(record));
    EXPECT_EQ(receiver.roots->entities().size(), 1U);
  }
  EXPECT_EQ(types, (std::set<std::string>{
                       "Maintenance::GroupToUnit", "Maintenance::MaintenanceGroup::Config",
                       "Maintenance::Profile::Config", "Maintenance::Unit::MergedInput"}));
}

INSTANTIATE_TEST_SUITE_P(Type, HostileTo, testing::ValuesIn(subjects()),
                         [](const testing::TestParamInfo<Subject>& subject) {
                           std::string name = subject.param.type;
                           std::erase(name, ':');
                           return name;
                         });

TEST(HostileSubjects, AreAllTypesOfEntities) {
  EXPECT_EQ(subjects().size(), 18U);
  std::size_t enumerators = 0;
  for (const Subject& subject : subjects()) {
    const Zel::TypeTable& table = *Zel::ZelType::type(subject.type)->table();
    std::set<Zel::AttributeId> needed; // whose keys have an enumerator
    for (const Zel::AttrRow& row : table.rows) {
      if (row.flows() && row.isCollection() &&
          (row.key->enumeration != nullptr || row.key == &Zel::valueRecord<Group::GroupKey> ||
           row.key == &Zel::valueRecord<Maintenance::Profile::ProfileKey>)) {
        needed.insert(row.id);
      }
    }
    for (const Zel::AttributeId attr : needed) {
      const auto has = [&](Zel::AttributeId wanted) {
        return std::any_of(subject.unknown.begin(), subject.unknown.end(),
                           [&](const Payload& payload) { return payload.attr == wanted; });
      };
      EXPECT_TRUE(has(attr) && has(-attr)) << subject.type << " " << attr;
      ++enumerators;
    }
  }
  EXPECT_EQ(enumerators, 8U);
}

} // namespace
