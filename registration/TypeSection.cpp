#include <registration/MaintenanceAgentInfo.h>
#include <registration/MaintenanceGroup.h>
#include <registration/MaintenanceUnitProfile.h>
#include <registration/Mapping.h>
#include <registration/Profile.h>
#include <registration/Unit.h>

/// The section `.zel.type` of the library: the full names of its types, each with a zero byte
/// behind it, module by module and in each module from the last declared to the first. Nothing here
/// refers to it: it is there for tools that read it out of the file.
namespace {

constexpr std::size_t sectionAlignment = 32;

template <class... T>
consteval std::size_t sizeOfNames(Zel::TypeList<T...> /*types*/) noexcept {
  return ((Zel::valueName<T>().size() + 1) + ... + 0);
}

template <class... T>
constexpr void putNames(char*& at, Zel::TypeList<T...> /*types*/) noexcept {
  constexpr std::string_view names[] = {Zel::valueName<T>()...};
  for (std::size_t i = sizeof...(T); i-- != 0;) {
    at += names[i].copy(at, names[i].size());
    *at++ = '\0';
  }
}

template <class... Modules>
consteval auto sectionOf() noexcept {
  std::array<char, (sizeOfNames(Modules()) + ...)> names{};
  char* at = names.data();
  (putNames(at, Modules()), ...);
  return names;
}

#ifdef __clang__
[[clang::no_sanitize("address")]] // which would pad it, and names alone are to stand there
#endif
[[gnu::used, gnu::section(".zel.type"), gnu::aligned(sectionAlignment)]] constinit auto typeNames =
    sectionOf<Maintenance::Profile::Types, Maintenance::Unit::Types, Maintenance::MappingTypes,
              Maintenance::MaintenanceGroup::Types, MaintenanceUnitProfile::Types,
              Maintenance::MaintenanceAgentInfoTypes>();

} // namespace
