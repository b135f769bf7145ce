#include "Values.h"

#include "Failure.h"
#include "Nearest.h"
#include "Ranges.h"
#include "Utf8.h"
#include "Words.h"

#include <Zel/ValueBuilder>
#include <text/Path.h>
#include <text/Value.h>

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cmath>

namespace Maintctl {

namespace {

using Zel::AttrRow;
using Zel::String8;
using Zel::ValueRecord;
using Zel::ValueSlot;

bool isQuote(char byte) { return byte == '\'' || byte == '"'; }

/// Whether the texts of a type stand in quotes; its default tells.
bool isQuoted(const ValueRecord& record) {
  ValueSlot value(record);
  return record.table == nullptr && textForm(record, value.at()).starts_with('\'');
}

std::string choices(std::string_view typed, const std::vector<std::string>& names) {
  const std::string meant = nearest(typed, names);
  return meant.empty() ? ", it is one of " + listOf(names) : ", did you mean " + meant + "?";
}

/// Of parts joined by commas, what to say of the first that should be an enumerator and is none;
/// empty if something else is wrong.
std::string wrongName(std::string_view parts, const Zel::TypeTable& table) {
  for (const AttrRow& row : table.rows) {
    if (!Zel::isStored(row)) {
      continue;
    }
    const std::size_t comma = parts.find(',');
    const std::string_view part = parts.substr(0, comma);
    const std::vector<std::string> names = namesOf(*row.value);
    if (!names.empty() && std::find(names.begin(), names.end(), part) == names.end()) {
      return "no " + std::string(row.name) + " " + printable(part) + choices(part, names);
    }
    if (comma == std::string_view::npos) {
      break;
    }
    parts.remove_prefix(comma + 1);
  }
  return {};
}

template <class Read>
void reading(const std::string& text, const ValueRecord& record, const std::string& place,
             const Read& read) {
  const Zel::Expect failures(Zel::exceptionId);
  try {
    read();
  } catch (const Zel::Exception& failure) {
    std::string message = "bad value " + printable(text) + " for " + place;
    if (const std::vector<std::string> names = namesOf(record); !names.empty()) {
      message += choices(text, names);
    } else {
      const bool hasParts = record.table != nullptr && !text.starts_with("Value(");
      const std::string wrong = hasParts ? wrongName(text, record.table()) : "";
      message += ": " + (wrong.empty() ? std::string(failure.what()) : wrong);
    }
    throw Failure(exitBadValue, message);
  }
}

nlohmann::json numberOf(double number) {
  if (std::isfinite(number)) {
    return number;
  }
  return Zel::valueToStrep(number).charPtr();
}

} // namespace

std::string textForm(const ValueRecord& record, const void* value) {
  return shown(Zel::textOf(record, value).view());
}

void readText(const std::string& text, const ValueRecord& record, void* fresh,
              const std::string& place) {
  const bool isSegment = record.table != nullptr && !text.starts_with("Value(");
  refuseOutOfRange(text, isSegment, record, place);
  reading(text, record, place, [&] {
    const bool hasQuotes = !text.empty() && isQuote(text[0]);
    if (isSegment) {
      Zel::readPathSegment(text, record, fresh);
    } else if (record.table == nullptr && !hasQuotes && isQuoted(record)) {
      Zel::readWhole(Zel::valueToStrep(String8(std::string_view(text))), record, fresh);
    } else {
      Zel::readWhole(String8(std::string_view(text)), record, fresh);
    }
  });
}

void readKey(const std::string& segment, const ValueRecord& record, void* fresh,
             const std::string& place) {
  refuseOutOfRange(segment, true, record, place);
  reading(segment, record, place, [&] { Zel::readPathSegment(segment, record, fresh); });
}

std::string segmentOf(const ValueRecord& record, const void* key) {
  return escaped(Zel::pathSegment(record, key).view());
}

std::string escaped(std::string_view path) {
  static constexpr char digits[] = "0123456789ABCDEF";
  std::string result;
  while (!path.empty()) {
    const std::size_t bytes = shownBytes(path);
    if (bytes != 0 && std::string_view(" '\"\\#()[]{}").find(path.front()) == path.npos) {
      result += path.substr(0, bytes);
    } else {
      for (const char character : path.substr(0, std::max<std::size_t>(bytes, 1))) {
        const auto byte = static_cast<unsigned char>(character);
        result += {'%', digits[byte >> 4], digits[byte & 15]};
      }
    }
    path.remove_prefix(std::max<std::size_t>(bytes, 1));
  }
  return result;
}

nlohmann::json jsonOf(const ValueRecord& record, const void* value) {
  if (record.table != nullptr) {
    nlohmann::json object = nlohmann::json::object();
    for (const AttrRow& row : record.table().rows) {
      if (Zel::isStored(row)) {
        ValueSlot field(*row.value, [&](void* to) { row.read(value, to); });
        object[std::string(row.name)] = jsonOf(*row.value, field.at());
      }
    }
    return object;
  }
  if (record.name == Zel::valueName<bool>()) {
    return *static_cast<const bool*>(value);
  }
  if (record.name == Zel::valueName<unsigned>()) {
    return *static_cast<const unsigned*>(value);
  }
  if (record.name == Zel::valueName<unsigned long long>()) {
    return *static_cast<const unsigned long long*>(value);
  }
  if (record.name == Zel::valueName<double>()) {
    return numberOf(*static_cast<const double*>(value));
  }
  return unquoted(textForm(record, value));
}

std::string lineOf(const nlohmann::json& json) {
  return json.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
}

std::vector<std::string> namesOf(const ValueRecord& record) {
  std::vector<std::string> names;
  if (record.enumeration != nullptr) {
    for (const Zel::Enumerator& row : record.enumeration->rows) {
      names.emplace_back(row.name);
    }
  } else if (record.name == Zel::valueName<bool>()) {
    names = {"true", "false"};
  }
  return names;
}

} // namespace Maintctl
