#pragma once

#include <model/Profile/Config.h>

#include <array>
#include <cstddef>

namespace Bench {

/// What the peers store: `Base`, with the peer's hook if there is one, and a key, in an object of
/// the size of a `Config`.
template <class Base>
class ProfileFields : public Base {
public:
  explicit ProfileFields(const Maintenance::Profile::ProfileKey& key) : key_(key) {}
  virtual ~ProfileFields() = default;
  const Maintenance::Profile::ProfileKey& key() const noexcept { return key_; }

private:
  const Maintenance::Profile::ProfileKey key_;
};

template <class Base>
class ProfileEntity : public ProfileFields<Base> {
public:
  using ProfileFields<Base>::ProfileFields;

private:
  [[maybe_unused]] std::array<std::byte,
                              sizeof(Maintenance::Profile::Config) - sizeof(ProfileFields<Base>)>
      rest_{};
};

struct NoHook {};

} // namespace Bench
