#include "Served.h"

#include "Run.h"

#include <Dump.h>
#include <Load.h>

#include <Zel/StateDigest>

namespace Maintctl::Test {

namespace {

/// The digests of all roots, each equal to the server's own.
std::map<std::string, std::uint64_t> digests(RemoteDevice& device) {
  std::map<std::string, std::uint64_t> all;
  for (const auto& [name, type] : device.roots()) {
    EXPECT_EQ(device.verify(name), Zel::Session::digestEqual) << name.charPtr();
    all[name.charPtr()] = Zel::stateDigest(*device.dir()->entity(name));
  }
  return all;
}

TEST(ServedTree, LoadedFromADumpOfAnotherServerHasTheSameDigests) {
  const Folder folder;
  const Served one(folder / "one");
  const Served other(folder / "other");
  const auto source = one.device();
  const auto target = other.device();
  loadFile(*source, MAINTCTL_SAMPLE);
  std::ostringstream dumped;
  dump(*source, dumped);
  const auto before = digests(*target);
  EXPECT_EQ(before.size(), 11U);
  std::istringstream in(dumped.str());
  EXPECT_GT(load(*target, in, "dumped"), 0U);
  const auto loaded = digests(*target);
  EXPECT_EQ(loaded, digests(*source));
  for (const auto& [root, digest] : loaded) { // of which the sample has something each
    EXPECT_NE(digest, before.at(root)) << root;
  }
}

} // namespace

} // namespace Maintctl::Test
