#include "Operation.h"

#include <generic/Client.h>
#include <model/Profile/ProfileKey.h>
#include <model/Unit/StatusDir.h>
#include <model/Unit/TrafficRates.h>

#include <string>

namespace Instructions {

namespace {

using namespace Maintenance;
using Attr = Unit::Status::Attr;
using Zel::GenericIf;
using Zel::Name;
using Zel::Ptr;
using Zel::String8;

/// Counts the printing of a value and the reading of its text.
template <class V>
void text(const std::string& what, const V& value) {
  using Zel::valueToStrep;
  const String8 printed = valueToStrep(value);
  operation(("print " + what).c_str(), [&](unsigned /*i*/) { use(valueToStrep(value)); });
  operation(("parse " + what).c_str(), [&](unsigned /*i*/) { use(Zel::strepToValue<V>(printed)); });
  expect(Zel::strepToValue<V>(printed) == value, what.c_str());
}

} // namespace

void texts() {
  Unit::TrafficRates rates;
  rates.outBitsRateIs(9876543210);
  rates.inBitsRateIs(123456789);
  rates.statsUpdateTimeIs(1700000000.25);
  text("a profile key", Profile::ProfileKey(Profile::profileTypeBgp, "profile-0001234-p002"));
  text("traffic rates", rates);
  text("an enumerator", Unit::underMaintenance);
  text("a number", 4711U);
  text("a time", 1700000000.25);
  text("a string", String8("entered 'maintenance'\nby an operator\t\x01\xc3\xa9"));
}

void generics() {
  const auto status = Unit::statusFactory("unit");
  const Ptr<GenericIf> unit = Zel::generic(status);
  const Ptr<GenericIf> states[] = {Zel::generic(Unit::active), Zel::generic(Unit::failedExit)};
  const String8 attribute("aggTrafficRate");
  operation("generic: attribute by name",
            [&](unsigned /*i*/) { use(unit->attributeId(attribute)); });
  operation("generic: read a number",
            [&](unsigned /*i*/) { use(Zel::readAttribute<unsigned>(unit, Attr::genId)); });
  operation("generic: read a text",
            [&](unsigned /*i*/) { use(Zel::readAttribute<String8>(unit, Attr::profileName)); });
  operation("generic: write a number",
            [&](unsigned i) { Zel::writeAttribute(unit, Attr::genId, i + 1); });
  expect(status->genId() == 2 * times, "what is written is there");
  operation("generic: write an enumerator",
            [&](unsigned i) { Zel::writeAttribute(unit, Attr::state, states[i % 2]); });
  operation("generic: write an enumerator's text", [&](unsigned i) {
    Zel::writeText(unit, Attr::state, i % 2 == 0 ? "'active'" : "'failedExit'");
  });
  expect(status->versionCounter() == 6 * times, "each write was a change");
  operation("generic: set an entry",
            [&](unsigned i) { Zel::setMember(unit, Attr::history, double(i), "line"); });
  operation("generic: read an entry",
            [&](unsigned i) { use(Zel::readMember<String8>(unit, Attr::history, double(i))); });
  auto at = unit->attributeIteratorConst(Attr::history);
  operation("generic: step over entries", [&](unsigned /*i*/) { ++at; });
  expect(!at, "the steps have come to their end");

  const auto dir = Unit::statusDirFactory("units");
  const Ptr<GenericIf> units = Zel::generic(dir);
  operation("generic: make a member", [&](unsigned i) {
    Zel::createMember(units, Unit::StatusDir::Attr::status, Name(std::to_string(1000 + i)));
  });
  expect(dir->statusMap().count() == 2 * times, "the members are there");
}

} // namespace Instructions
