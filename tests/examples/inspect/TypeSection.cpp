#include "support/Shell.h"

#include <Places.h>
#include <elf.h>

#include <cstring>

namespace {

using namespace Support;

Result inspectSection(const std::string& file) {
  return shell("'" INSPECT_PROGRAM "' --section '" + file + "'");
}

TEST(TypeSection, OfTheLibraryListsItsTypesInTheirOrder) {
  const Result result = inspectSection(MODEL_LIBRARY);
  EXPECT_EQ(result.out, "Maintenance::Profile::DefaultProfile\n"
                        "Maintenance::Profile::ConfigDir\n"
                        "Maintenance::Profile::Config\n"
                        "Maintenance::Profile::ProfileKey\n"
                        "Maintenance::Profile::ProfileType\n"
                        "Maintenance::Unit::StageMgrInstKey\n"
                        "Maintenance::Unit::MaintenanceOp\n"
                        "Maintenance::Unit::MergedInputDir\n"
                        "Maintenance::Unit::MergedInput\n"
                        "Maintenance::Unit::Input\n"
                        "Maintenance::Unit::StatusDir\n"
                        "Maintenance::Unit::Status\n"
                        "Maintenance::Unit::State\n"
                        "Maintenance::Unit::ConfigDir\n"
                        "Maintenance::Unit::Config\n"
                        "Maintenance::Unit::TrafficRates\n"
                        "Maintenance::Unit::MaintenanceStageList\n"
                        "Maintenance::Unit::MaintenanceStageClasses\n"
                        "Maintenance::Unit::BuiltinUnitName\n"
                        "Maintenance::Unit::InputSrc\n"
                        "Maintenance::Unit::UnitType\n"
                        "Maintenance::ProfileKeySet\n"
                        "Maintenance::ProfileSelection\n"
                        "Maintenance::UnitProfileSelection\n"
                        "Maintenance::UnitProfileSelKey\n"
                        "Maintenance::GroupProfileSelectionOut\n"
                        "Maintenance::GroupProfileSelectionIn\n"
                        "Maintenance::GroupProfileSelKey\n"
                        "Maintenance::GroupToUnitDir\n"
                        "Maintenance::GroupToUnit\n"
                        "Maintenance::MemberToGroup\n"
                        "Maintenance::ProfileChangeCause\n"
                        "Maintenance::MaintenanceGroup::ConfigDir\n"
                        "Maintenance::MaintenanceGroup::Config\n"
                        "MaintenanceUnitProfile::ConfigDir\n"
                        "MaintenanceUnitProfile::Config\n"
                        "Maintenance::AgentInfo\n"
                        "Maintenance::OnBootUnitAndReason\n");
  EXPECT_EQ(result.err, "");
  EXPECT_EQ(result.status, 0);
}

TEST(TypeSection, OfAFileThatIsNotThereCannotBeRead) {
  const Result result = inspectSection("/nowhere/at/all.so");
  EXPECT_EQ(result.out, "");
  EXPECT_EQ(result.err, "inspect: cannot read /nowhere/at/all.so\n");
  EXPECT_EQ(result.status, 1);
}

TEST(TypeSection, OfAProgramWithoutOneIsMissed) {
  const Result result = inspectSection("/bin/sh");
  EXPECT_EQ(result.err, "inspect: no section .zel.type in /bin/sh\n");
  EXPECT_EQ(result.status, 1);
}

TEST(TypeSection, OfATextIsRefused) {
  const Folder folder;
  const Result result = inspectSection(folder.write("text", std::string(100, 'x')));
  EXPECT_EQ(result.err, "inspect: no 64-bit ELF file of this machine's byte order\n");
  EXPECT_EQ(result.status, 1);
}

/// The library's file with `change` made to its header.
template <class Change>
std::string damaged(const Folder& folder, Change change) {
  std::string bytes = contentOf(MODEL_LIBRARY);
  Elf64_Ehdr header;
  std::memcpy(&header, bytes.data(), sizeof header);
  change(header);
  std::memcpy(bytes.data(), &header, sizeof header);
  return folder.write("damaged.so", bytes);
}

TEST(TypeSection, WithOffsetsOutsideTheFileIsRefused) {
  const Folder folder;
  const auto refused = [&](auto change) {
    const Result result = inspectSection(damaged(folder, change));
    EXPECT_EQ(result.err, "inspect: the file is cut short\n");
    EXPECT_EQ(result.status, 1);
  };
  refused([](Elf64_Ehdr& header) { header.e_shoff = ~0ULL - 8; });
  refused([](Elf64_Ehdr& header) { header.e_shoff = 1ULL << 40; });
  refused([](Elf64_Ehdr& header) { header.e_shnum = 0xffff; });
  refused([](Elf64_Ehdr& header) { header.e_shstrndx = header.e_shnum; });
}

TEST(TypeSection, OfEveryShortenedFileIsRefused) {
  const Folder folder;
  const std::string bytes = contentOf(MODEL_LIBRARY);
  for (const std::size_t size : {std::size_t{0}, std::size_t{1}, std::size_t{63}, std::size_t{64},
                                 bytes.size() / 2, bytes.size() - 1}) {
    const Result result = inspectSection(folder.write("cut.so", bytes.substr(0, size)));
    EXPECT_EQ(result.out, "") << size;
    EXPECT_EQ(result.status, 1) << size;
  }
}

} // namespace
