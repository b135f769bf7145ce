#include <Places.h>
#include <gtest/gtest.h>

#include <cstring>
#include <elf.h>
#include <fstream>
#include <iterator>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace {

/// A section of the library's file.
struct Section {
  Elf64_Shdr header;
  std::string bytes;
};

std::string fileOf(const char* path) {
  std::ifstream file(path, std::ios::binary);
  EXPECT_TRUE(file.is_open()) << path;
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

template <class Record>
Record recordAt(const std::string& file, std::size_t offset) {
  Record record{};
  EXPECT_LE(offset + sizeof(Record), file.size());
  std::memcpy(&record, file.data() + offset, sizeof(Record));
  return record;
}

/// All sections of this name, read out of the file as a tool would do it.
std::vector<Section> sectionsNamed(const std::string& file, std::string_view name) {
  const auto elf = recordAt<Elf64_Ehdr>(file, 0);
  EXPECT_EQ(std::memcmp(elf.e_ident, ELFMAG, SELFMAG), 0);
  EXPECT_EQ(elf.e_ident[EI_CLASS], ELFCLASS64);
  const auto headerAt = [&](std::size_t number) {
    return recordAt<Elf64_Shdr>(file, elf.e_shoff + number * elf.e_shentsize);
  };
  const Elf64_Shdr names = headerAt(elf.e_shstrndx);
  std::vector<Section> found;
  for (std::size_t number = 0; number < elf.e_shnum; ++number) {
    const Elf64_Shdr header = headerAt(number);
    if (name == file.data() + names.sh_offset + header.sh_name) {
      found.push_back({header, file.substr(header.sh_offset, header.sh_size)});
    }
  }
  return found;
}

TEST(TypeSection, NamesTheTypesOfTheLibraryModuleByModuleFromTheLastToTheFirst) {
  const auto sections = sectionsNamed(fileOf(MODEL_LIBRARY), ".zel.type");
  ASSERT_EQ(sections.size(), 1U);
  std::string expected;
  for (const char* name : {"Maintenance::Profile::DefaultProfile",
                           "Maintenance::Profile::ConfigDir",
                           "Maintenance::Profile::Config",
                           "Maintenance::Profile::ProfileKey",
                           "Maintenance::Profile::ProfileType",
                           "Maintenance::Unit::StageMgrInstKey",
                           "Maintenance::Unit::MaintenanceOp",
                           "Maintenance::Unit::MergedInputDir",
                           "Maintenance::Unit::MergedInput",
                           "Maintenance::Unit::Input",
                           "Maintenance::Unit::StatusDir",
                           "Maintenance::Unit::Status",
                           "Maintenance::Unit::State",
                           "Maintenance::Unit::ConfigDir",
                           "Maintenance::Unit::Config",
                           "Maintenance::Unit::TrafficRates",
                           "Maintenance::Unit::MaintenanceStageList",
                           "Maintenance::Unit::MaintenanceStageClasses",
                           "Maintenance::Unit::BuiltinUnitName",
                           "Maintenance::Unit::InputSrc",
                           "Maintenance::Unit::UnitType",
                           "Maintenance::ProfileKeySet",
                           "Maintenance::ProfileSelection",
                           "Maintenance::UnitProfileSelection",
                           "Maintenance::UnitProfileSelKey",
                           "Maintenance::GroupProfileSelectionOut",
                           "Maintenance::GroupProfileSelectionIn",
                           "Maintenance::GroupProfileSelKey",
                           "Maintenance::GroupToUnitDir",
                           "Maintenance::GroupToUnit",
                           "Maintenance::MemberToGroup",
                           "Maintenance::ProfileChangeCause",
                           "Maintenance::MaintenanceGroup::ConfigDir",
                           "Maintenance::MaintenanceGroup::Config",
                           "MaintenanceUnitProfile::ConfigDir",
                           "MaintenanceUnitProfile::Config",
                           "Maintenance::AgentInfo",
                           "Maintenance::OnBootUnitAndReason"}) {
    expected.append(name).push_back('\0');
  }
  EXPECT_EQ(sections[0].bytes, expected);
}

TEST(TypeSection, IsWritableDataInASectionOfItsOwnAlignedTo32Bytes) {
  const auto sections = sectionsNamed(fileOf(MODEL_LIBRARY), ".zel.type");
  ASSERT_EQ(sections.size(), 1U);
  const Elf64_Shdr& header = sections[0].header;
  EXPECT_EQ(header.sh_type, static_cast<Elf64_Word>(SHT_PROGBITS));
  EXPECT_EQ(header.sh_flags, static_cast<Elf64_Xword>(SHF_ALLOC | SHF_WRITE));
  EXPECT_EQ(header.sh_addralign, 32U);
  EXPECT_EQ(header.sh_addr % 32, 0U);
}

} // namespace
