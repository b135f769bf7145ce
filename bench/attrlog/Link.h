#pragma once

#include <Zel/Demuxer>
#include <Zel/Dir>
#include <model/Profile.h>
#include <model/Unit.h>

#include <algorithm>
#include <cstdio>
#include <cstring>

namespace Bench {

/// Two ends in one process: `there` mirrors what `here` exports, into `mirrors`.
class Link {
public:
  Link() {
    roots_ = Zel::makeObject<Zel::Dir>();
    here = Zel::makeObject<Zel::Connection>(Zel::Connection::End::first);
    there = Zel::makeObject<Zel::Connection>(
        Zel::Connection::End::second, Zel::String8(), Zel::ConnectionLimits(),
        Zel::makeObject<Zel::NboAttrLog::DirMounts>(
            roots_, Zel::PtrInterface::NotifieeConst::Zel_BitSet()));
  }
  Link(const Link&) = delete;
  Link& operator=(const Link&) = delete;
  ~Link() {
    here->close();
    there->close();
  }

  void exportIs(const Zel::Ptr<Zel::Entity>& root) { here->demuxer()->exportIs(root); }
  Zel::Ptr<Zel::Entity> mirror(const char* name) const { return roots_->entity(name); }

  /// One step of each end; whether anything happened.
  bool exporterStep() { return here->service(); }
  bool mirrorStep() {
    const auto bytes = here->pendingOutput();
    const auto space = there->inputSpace();
    const std::size_t count = std::min(bytes.size(), space.size());
    if (count != 0) {
      std::memcpy(space.data(), bytes.data(), count);
      here->outputConsumed(count);
      there->inputReceived(count);
    }
    return there->service() || count != 0;
  }
  void settle() {
    for (bool more = true; more;) {
      more = exporterStep();
      more = mirrorStep() || more;
    }
  }

  Zel::Ptr<Zel::Connection> here;
  Zel::Ptr<Zel::Connection> there;

private:
  Zel::Ptr<Zel::Dir> roots_;
};

/// A name of 20 bytes.
inline Zel::String8 linkName(std::size_t number) {
  char text[48];
  std::snprintf(text, sizeof text, "profile-%07zu-p%03zu", number, number % 8);
  return text;
}

inline Zel::Ptr<Maintenance::Profile::ConfigDir> profiles(std::size_t count) {
  using namespace Maintenance::Profile;
  auto dir = configDirFactory("profiles");
  for (std::size_t i = 0; i < count; ++i) {
    dir->configIs(ProfileKey(profileTypeBgp, linkName(i)));
  }
  return dir;
}

inline Zel::Ptr<Maintenance::Unit::StatusDir> units(std::size_t count) {
  auto dir = Maintenance::Unit::statusDirFactory("units");
  for (std::size_t i = 0; i < count; ++i) {
    dir->statusIs(linkName(i));
  }
  return dir;
}

} // namespace Bench
