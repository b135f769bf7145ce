#include "Plain.h"

#include "Times.h"
#include "Utf8.h"
#include "Values.h"
#include "Words.h"

#include <Zel/ValueBuilder>
#include <text/Value.h>

#include <array>
#include <cstdio>

namespace Maintctl {

namespace {

using Zel::AttrRow;
using Zel::ValueRecord;
using Zel::ValueSlot;

bool isRate(const AttrRow& row) {
  return row.value->name == Zel::valueName<unsigned long long>() && row.name.ends_with("BitsRate");
}

bool holds(std::string_view text, std::string_view part) { return text.find(part) != text.npos; }

} // namespace

std::string rateText(unsigned long long bits) {
  static constexpr std::array units = {"bit/s", "kbit/s", "Mbit/s", "Gbit/s", "Tbit/s", "Pbit/s"};
  auto value = static_cast<double>(bits);
  std::size_t unit = 0;
  while (value >= 999.5 && unit + 1 < units.size()) {
    value /= 1000;
    ++unit;
  }
  char text[32];
  std::snprintf(text, sizeof text, "%.3g %s", value, units[unit]);
  return text;
}

std::string plainText(const ValueRecord& record, const void* value) {
  if (record.table == nullptr) {
    return shown(unquoted(std::string(Zel::textOf(record, value).view())));
  }
  std::string text;
  for (const AttrRow& row : record.table().rows) {
    if (Zel::isStored(row)) {
      text.append(text.empty() ? "" : ", ").append(row.name).append(" ");
      text.append(plainText(value, row));
    }
  }
  return text;
}

std::string plainText(const void* owner, const AttrRow& row) {
  ValueSlot value(*row.value, [&](void* to) { row.read(owner, to); });
  if (isTime(row)) {
    return timeText(*static_cast<const double*>(value.at()));
  }
  if (isRate(row)) {
    return rateText(*static_cast<const unsigned long long*>(value.at()));
  }
  return plainText(*row.value, value.at());
}

std::string plainKey(const ValueRecord& record, const void* key) {
  if (record.name == Zel::valueName<double>()) {
    return timeText(*static_cast<const double*>(key));
  }
  return record.table == nullptr ? plainText(record, key) : segmentOf(record, key);
}

Cell::Colour colourOf(std::string_view enumerator) {
  if (holds(enumerator, "fail")) {
    return Cell::red;
  }
  if (enumerator == "active") {
    return Cell::green;
  }
  if (enumerator.starts_with("under")) {
    return Cell::yellow;
  }
  if (enumerator.ends_with("Enter") || enumerator.ends_with("Exit")) {
    return Cell::cyan;
  }
  return Cell::plain;
}

} // namespace Maintctl
