#pragma once

#include "Two.h"

/// A record of a session in words: "hello", "offer units", "grant units read-only", "walk is over";
/// any other as `Wiretap::brief` has it.
inline std::string says(const Wiretap::Seen& seen) {
  if (seen.attr == Zel::NboAttrLog::attrIdSyncMode) {
    return Wiretap::number(seen.payload) == 2 ? "walk begins" : "walk is over";
  }
  if (seen.attr != Zel::NboAttrLog::attrIdSession) {
    return Wiretap::brief(seen);
  }
  std::string_view rest = seen.payload;
  const auto kind = static_cast<unsigned char>(rest.front());
  rest.remove_prefix(1);
  const auto number = [&] {
    const std::uint32_t read = Wiretap::number(rest);
    rest.remove_prefix(sizeof read);
    return std::to_string(read);
  };
  const auto text = [&] {
    const std::size_t length = Wiretap::number(rest);
    const std::string read(rest.substr(sizeof(std::uint32_t), length));
    rest.remove_prefix(sizeof(std::uint32_t) + length);
    return read;
  };
  const auto access = [&] { return number() == "2" ? " read-write" : " read-only"; };
  switch (kind) {
  case 1:
    return "hello";
  case 2: {
    const std::string name = text();
    const std::string type = text();
    return "offer " + name + " " + type + access();
  }
  case 3:
    return "withdraw " + text();
  case 4: {
    const std::string name = text();
    return "ask " + name + access();
  }
  case 5: {
    const std::string name = text();
    return "grant " + name + access();
  }
  case 6: {
    const std::string name = text();
    return "refuse " + name + ": " + text();
  }
  case 7: {
    const std::string serial = number();
    return "digest? " + serial + " " + text();
  }
  case 8: {
    const std::string serial = number();
    const auto result = static_cast<unsigned>(rest.front());
    return "digest " + serial + " result " + std::to_string(result);
  }
  case 9:
    return "offers end";
  case 10:
    return "echo? " + number();
  case 11: {
    const std::string serial = number();
    const auto result = static_cast<unsigned>(rest.front());
    return "echo " + serial + (result == 0 ? "" : result == 1 ? ": unknown" : ": dropped");
  }
  case 12: {
    const auto ending = static_cast<unsigned>(rest.front());
    rest.remove_prefix(1);
    return "bye " + std::to_string(ending) + ": " + text();
  }
  case 13:
    return "write? " + number();
  case 15:
    return "new? " + number();
  case 14: {
    const std::string serial = number();
    return "written " + serial + " result " + std::to_string(static_cast<unsigned>(rest.front()));
  }
  case 16: {
    rest.remove_prefix(sizeof(Zel::EntityId));
    const std::string freezes = number();
    return "freeze " + freezes + (rest.front() != 0 ? " softly" : "");
  }
  case 17:
    rest.remove_prefix(sizeof(Zel::EntityId));
    return "frozen " + number();
  case 18: {
    rest.remove_prefix(sizeof(Zel::EntityId));
    const std::string freezes = number();
    rest.remove_prefix(sizeof(std::uint32_t)); // the upper half of what was dropped
    const std::string dropped = number();
    return "thaw " + freezes + (dropped == "0" ? "" : ", dropped " + dropped);
  }
  default:
    return "kind " + std::to_string(kind);
  }
}

inline std::vector<std::string> says(const std::vector<Wiretap::Seen>& seen) {
  std::vector<std::string> words;
  for (const Wiretap::Seen& one : seen) {
    words.push_back(says(one));
  }
  return words;
}
