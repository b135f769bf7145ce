// Measures what the members of large directories take, all told: prints a line for each figure,
// with the name, a tab and the number of bytes for one member.

#include "Allocations.h"
#include "attrlog/Link.h"
#include "mixed/Units.h"

#include <Zel/StateDigest>

#ifdef BENCH_INTRUSIVE
#include "peers/IntrusiveProfiles.h"
#endif

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <string>
#include <unistd.h>

namespace {

using namespace Maintenance;

std::size_t residentBytes() {
  std::ifstream file("/proc/self/statm");
  std::size_t all = 0;
  std::size_t resident = 0;
  file >> all >> resident;
  return resident * static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
}

/// Runs `fill`, which makes `count` members and nothing else that stays.
template <class Fill>
void measure(const char* name, std::size_t count, Fill&& fill) {
  const std::size_t bytes = Bench::Allocations::liveBytes;
  const std::size_t resident = residentBytes();
  fill();
  const auto each = [count](std::size_t before, std::size_t after) {
    return static_cast<double>(after - before) / static_cast<double>(count);
  };
  std::cout << name << ", allocated\t" << each(bytes, Bench::Allocations::liveBytes) << '\n'
            << name << ", resident\t" << each(resident, residentBytes()) << '\n';
}

Zel::String8 name(std::size_t number) {
  char text[32];
  std::snprintf(text, sizeof text, "profile-%07zu-p%03zu", number, number % 8);
  return text;
}

/// Mirrors the `count` members of a directory that `make` makes, and tells what each takes by
/// itself, and on either side when it is mirrored, the entities included. Ends the process if the
/// mirror differs.
template <class Make>
void measureMirror(std::size_t count, const char* name, const Make& make) {
  std::size_t exported = 0;
  std::size_t mirrored = 0;
  const auto counted = [](std::size_t& sum, auto&& work) {
    const std::size_t before = Bench::Allocations::liveBytes;
    const bool more = work();
    sum += Bench::Allocations::liveBytes - before; // wraps back where memory was freed
    return more;
  };
  Bench::Link link;
  decltype(make(count)) dir;
  counted(exported, [&] {
    dir = make(count);
    return true;
  });
  const std::size_t alone = exported;
  counted(exported, [&] {
    link.exportIs(dir);
    return true;
  });
  for (bool more = true; more;) {
    more = counted(exported, [&] { return link.exporterStep(); });
    more = counted(mirrored, [&] { return link.mirrorStep(); }) || more;
  }
  const auto each = [count](std::size_t bytes) {
    return static_cast<double>(bytes) / static_cast<double>(count);
  };
  const auto mirror = link.mirror(name);
  if (!mirror || Zel::stateDigest(*mirror) != Zel::stateDigest(*dir)) {
    std::cerr << "the mirror differs\n";
    std::exit(1);
  }
  std::cout << "alone\t" << each(alone) << "\nexported\t" << each(exported) << "\nmirrored\t"
            << each(mirrored) << '\n';
}

Profile::ProfileKey key(std::size_t number) { return {Profile::profileTypeBgp, name(number)}; }

} // namespace

int main(int argc, char** argv) {
  constexpr std::size_t million = 1'000'000;
  const std::string what = argc > 1 ? argv[1] : "";
  if (what == "profile") {
    const auto profiles = Profile::configDirFactory("profiles");
    measure("profile", million, [&] {
      for (std::size_t i = 0; i < million; ++i) {
        profiles->configIs(key(i));
      }
    });
  } else if (what == "status") {
    const auto units = Unit::statusDirFactory("units");
    measure("status", million, [&] {
      for (std::size_t i = 0; i < million; ++i) {
        units->statusIs(name(i));
      }
    });
  } else if (what == "mirror" && argc > 2) {
    measureMirror(std::stoul(argv[2]), "profiles", Bench::profiles);
  } else if (what == "full" && argc > 2) {
    measureMirror(std::stoul(argv[2]), "units", Bench::Mixed::made);
#ifdef BENCH_INTRUSIVE
  } else if (what == "intrusive") {
    Bench::IntrusiveProfiles profiles;
    measure("intrusive", million, [&] {
      for (std::size_t i = 0; i < million; ++i) {
        profiles.insertNew(key(i));
      }
    });
#endif
  } else {
    std::cerr << "usage: " << argv[0] << " profile|status|intrusive|mirror COUNT|full COUNT\n";
    return 2;
  }
  return 0;
}
