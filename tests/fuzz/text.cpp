// Texts of values, enumerations, keys in paths and references. The first byte of an input selects
// what the rest is read as, 'A' the first reader below. Whatever is read must print as something
// that reads back as the same; a failure must be one of the library's own.

#include <Group/GroupKey>
#include <Vexil/IntfId>
#include <Zel/Dir>
#include <Zel/Exception>
#include <Zel/GenericIf>
#include <model/MaintenanceAgentInfo.h>
#include <model/MaintenanceGroup.h>
#include <model/MaintenanceUnitProfile.h>
#include <model/Mapping.h>
#include <model/Profile.h>
#include <model/Unit.h>
#include <model/Unit/Constants.h>
#include <model/Unit/StageMgrInstKey.h>
#include <text/Path.h>
#include <text/Value.h>

#include <cstdio>
#include <cstdlib>

namespace {

using Zel::String8;

void require(bool holds, const String8& text) {
  if (!holds) {
    std::fprintf(stderr, "does not read back: %s\n", text.charPtr());
    std::abort();
  }
}

/// Equal by the type's own equality, or both with the same text, as what is no number has.
template <class V>
bool isSame(const V& a, const V& b) {
  return a == b || Zel::textOf(a) == Zel::textOf(b);
}

template <class V>
void value(const String8& text) {
  const V read = Zel::strepToValue<V>(text);
  const String8 printed = valueToStrep(read);
  const V again = Zel::strepToValue<V>(printed);
  require(isSame(again, read) && valueToStrep(again) == printed, text);
}

/// A type that holds nothing has a text that is not read back.
template <class V>
void constant(const String8& text) {
  require(Zel::strepToValue<V>(text) == V() && valueToStrep(V()).empty(), text);
}

template <class V>
void readBare(std::string_view text, V& to) {
  Zel::readPathSegment(text, Zel::valueRecord<V>, &to);
}

template <class V>
void key(const String8& text) {
  V read{};
  readBare(text.view(), read);
  const String8 printed = Zel::pathSegment(Zel::valueRecord<V>, &read);
  require(printed.view().find('/') == std::string_view::npos, text);
  V again{};
  readBare(printed.view(), again);
  require(isSame(again, read), text);
}

template <class T>
T primitive(const String8& text) {
  return Zel::strepToValue<T>(text);
}

void string(const String8& text) {
  const String8 read = primitive<String8>(text);
  require(primitive<String8>(Zel::valueToStrep(read)) == read, text);
}

void integer(const String8& text) {
  const auto read = static_cast<unsigned long long>(primitive<long long>(text));
  require(static_cast<unsigned long long>(primitive<long long>(Zel::valueToStrep(read))) == read,
          text);
}

void number(const String8& text) {
  const auto read = static_cast<double>(primitive<long double>(text));
  const String8 printed = Zel::valueToStrep(read);
  require(Zel::valueToStrep(static_cast<double>(primitive<long double>(printed))) == printed, text);
}

/// A program with roots of all types.
Zel::Ptr<Zel::Dir> makeRoots() {
  const auto roots = Zel::makeObject<Zel::Dir>();
  const auto units = Maintenance::Unit::statusDirFactory("units");
  units->statusIs("System");
  units->statusIs("slot/3");
  units->statusIs("");
  const auto profiles = Maintenance::Profile::configDirFactory("profiles");
  profiles->configIs({Maintenance::Profile::profileTypeBgp, "a,b"});
  const auto groups = Maintenance::groupToUnitDirFactory("groups");
  groups->groupToUnitIs({Group::groupTypeBgp, "a/b"});
  const auto configured = Maintenance::Unit::configDirFactory("configured");
  configured->configIs("a b");
  const auto merged = Maintenance::Unit::mergedInputDirFactory("merged");
  merged->unitIs("System", Maintenance::Unit::srcCli);
  const auto grouped = Maintenance::MaintenanceGroup::configDirFactory("grouped");
  grouped->maintenanceGroupIs({Group::groupTypeInterface, "a,b"});
  const auto unitProfiles = MaintenanceUnitProfile::configDirFactory("unit profiles");
  unitProfiles->configIs("100%");
  roots->entityIs(units);
  roots->entityIs(groups);
  roots->entityIs(profiles);
  roots->entityIs(Maintenance::Profile::defaultProfileFactory(""));
  roots->entityIs(configured);
  roots->entityIs(merged);
  roots->entityIs(grouped);
  roots->entityIs(unitProfiles);
  roots->entityIs(Maintenance::Unit::inputFactory("input"));
  roots->entityIs(Maintenance::agentInfoFactory("agent"));
  roots->entityIs(Zel::makeObject<Maintenance::MemberToGroup>("member"));
  return roots;
}

const Zel::Ptr<Zel::Dir>& roots() {
  static const Zel::Ptr<Zel::Dir> made = makeRoots();
  return made;
}

template <class X>
void reference(const String8& text) {
  const Zel::Dir::Active scope(roots());
  const auto read = Zel::strepToValue<Zel::Ptr<X>>(text);
  const String8 printed = Zel::valueToStrepOfRawPtr(read.ptr(), nullptr);
  require(Zel::strepToValue<Zel::Ptr<X>>(printed) == read, text);
}

void path(const String8& text) {
  const Zel::PathEnd end = Zel::pathEnd(*roots(), text.view());
  if (end.entity) {
    require(Zel::entityAt(*roots(), end.entity->uriPath().text().view()) == end.entity, text);
  }
}

using namespace Maintenance;

/// New ones go to the end: the kept corpus holds to the places.
constexpr void (*readers[])(const String8& text) = {
    value<Profile::ProfileKey>,                   // A
    value<Group::GroupKey>,                       // B
    value<Unit::TrafficRates>,                    // C
    value<Unit::StageMgrInstKey>,                 // D
    constant<Unit::BuiltinUnitName>,              // E
    constant<Unit::MaintenanceStageClasses>,      // F
    constant<Unit::MaintenanceStageList>,         // G
    value<Vexil::IntfId>,                         // H
    value<Profile::ProfileType>,                  // I
    value<Group::GroupType>,                      // J
    value<Unit::UnitType>,                        // K
    value<Unit::MaintenanceOp>,                   // L
    value<Unit::InputSrc>,                        // M
    value<Unit::State>,                           // N
    string,                                       // O
    integer,                                      // P
    number,                                       // Q
    key<Group::GroupKey>,                         // R
    key<Vexil::IntfId>,                           // S
    key<String8>,                                 // T
    key<double>,                                  // U
    reference<Unit::Status>,                      // V
    reference<Zel::PtrInterface>,                 // W
    path,                                         // X
    value<ProfileChangeCause>,                    // Y
    key<Profile::ProfileType>,                    // Z
    reference<GroupToUnit>,                       // [
    value<GroupProfileSelKey>,                    // backslash
    value<UnitProfileSelKey>,                     // ]
    value<OnBootUnitAndReason>,                   // ^
    key<Profile::ProfileKey>,                     // _
    key<GroupProfileSelKey>,                      // `
    key<UnitProfileSelKey>,                       // a
    reference<Unit::StatusDir>,                   // b
    reference<Unit::Config>,                      // c
    reference<Unit::ConfigDir>,                   // d
    reference<Unit::Input>,                       // e
    reference<Unit::MergedInput>,                 // f
    reference<Unit::MergedInputDir>,              // g
    reference<Profile::Config>,                   // h
    reference<Profile::ConfigDir>,                // i
    reference<Profile::DefaultProfile>,           // j
    reference<GroupToUnitDir>,                    // k
    reference<MemberToGroup>,                     // l
    reference<MaintenanceGroup::Config>,          // m
    reference<MaintenanceGroup::ConfigDir>,       // n
    reference<MaintenanceUnitProfile::Config>,    // o
    reference<MaintenanceUnitProfile::ConfigDir>, // p
    reference<AgentInfo>,                         // q
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) {
    return -1; // not to be kept
  }
  const auto selector = static_cast<std::uint8_t>(data[0] - 'A');
  const String8 text(std::string_view(reinterpret_cast<const char*>(data) + 1, size - 1));
  try {
    readers[selector % std::size(readers)](text);
  } catch (const Zel::Exception&) { // the text is refused
  }
  return 0;
}
