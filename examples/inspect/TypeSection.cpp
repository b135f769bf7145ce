#include "TypeSection.h"

#include <elf.h>

#include <bit>
#include <cstring>
#include <fstream>
#include <iterator>
#include <optional>
#include <stdexcept>
#include <string_view>

namespace {

constexpr std::string_view sectionName = ".zel.type";

std::string contentsOf(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  std::string bytes{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
  if (!file || bytes.empty()) {
    throw std::runtime_error("cannot read " + path);
  }
  return bytes;
}

/// `size` bytes at `offset`; fails if the file has less.
std::string_view part(std::string_view file, std::uint64_t offset, std::uint64_t size) {
  if (offset > file.size() || size > file.size() - offset) {
    throw std::runtime_error("the file is cut short");
  }
  return file.substr(offset, size);
}

template <class Record>
Record recordAt(std::string_view file, std::uint64_t offset) {
  Record record;
  std::memcpy(&record, part(file, offset, sizeof record).data(), sizeof record);
  return record;
}

Elf64_Ehdr headerOf(std::string_view file) {
  const auto header = recordAt<Elf64_Ehdr>(file, 0);
  constexpr unsigned char order =
      std::endian::native == std::endian::little ? ELFDATA2LSB : ELFDATA2MSB;
  if (std::memcmp(header.e_ident, ELFMAG, SELFMAG) != 0 || header.e_ident[EI_CLASS] != ELFCLASS64 ||
      header.e_ident[EI_DATA] != order || header.e_shentsize != sizeof(Elf64_Shdr)) {
    throw std::runtime_error("no 64-bit ELF file of this machine's byte order");
  }
  return header;
}

std::optional<std::string_view> sectionOf(std::string_view file, std::string_view wanted) {
  const Elf64_Ehdr header = headerOf(file);
  const auto section = [&](std::uint64_t number) {
    // The product fits: both factors have 16 bits.
    const std::string_view table =
        part(file, header.e_shoff, std::uint64_t{header.e_shnum} * sizeof(Elf64_Shdr));
    return recordAt<Elf64_Shdr>(table, number * sizeof(Elf64_Shdr));
  };
  const Elf64_Shdr names = section(header.e_shstrndx);
  const std::string_view allNames = part(file, names.sh_offset, names.sh_size);
  for (std::uint64_t number = 0; number < header.e_shnum; ++number) {
    const Elf64_Shdr at = section(number);
    const std::string_view name = part(allNames, at.sh_name, allNames.size() - at.sh_name);
    if (name.substr(0, name.find('\0')) == wanted && at.sh_type != SHT_NOBITS) {
      return part(file, at.sh_offset, at.sh_size);
    }
  }
  return std::nullopt;
}

} // namespace

std::vector<std::string> typeNamesOf(const std::string& path) {
  const std::string file = contentsOf(path);
  const std::optional<std::string_view> section = sectionOf(file, sectionName);
  if (!section) {
    throw std::runtime_error("no section .zel.type in " + path);
  }
  std::vector<std::string> names;
  for (std::string_view rest = *section; !rest.empty();) {
    const std::size_t end = rest.find('\0');
    if (end == rest.npos) {
      throw std::runtime_error("the last type name is not terminated");
    }
    names.emplace_back(rest.substr(0, end));
    rest.remove_prefix(end + 1);
  }
  return names;
}
