#pragma once

#include "Bytes.h"

#include <Places.h>
#include <fstream>
#include <map>
#include <stdexcept>

/// The dumps of docs/wire-format.md by name, in the form of `hexOf`.
inline const std::map<std::string, std::string>& dumps() {
  static const auto read = [] {
    std::ifstream document(WIRE_FORMAT);
    if (!document) {
      throw std::runtime_error("no wire-format.md");
    }
    constexpr std::string_view fence = "```hex ";
    std::map<std::string, std::string> found;
    std::string* dump = nullptr;
    for (std::string line; std::getline(document, line);) {
      if (line.starts_with(fence)) {
        dump = &found[line.substr(fence.size())];
        if (!dump->empty()) {
          throw std::runtime_error("dump twice: " + line);
        }
      } else if (line == "```") {
        dump = nullptr;
      } else if (dump != nullptr) {
        *dump += line.substr(0, line.find("  ")) + " ";
      }
    }
    for (auto& [name, text] : found) {
      text = plain(text);
    }
    return found;
  }();
  return read;
}

/// Throws `std::out_of_range` if there is none of that name.
inline std::string dump(const std::string& name) { return dumps().at(name); }

/// Records behind one another.
template <class... Hex>
std::string records(const Hex&... hex) {
  std::string all;
  ((all += (all.empty() ? "" : " ") + std::string(hex)), ...);
  return plain(all);
}
