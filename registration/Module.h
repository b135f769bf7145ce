#pragma once

#include <registration/TypeOf.h>

/// The registration of a module's types. A program that defines types of its own does as the
/// library does:
///
///     constexpr std::string_view scopes[] = {"Chassis"};
///     constinit Zel::ModuleOf<Zel::TypeList<FanState, Fan>> chassis(scopes);
///     const Zel::LoadModule atLoad(chassis);
///
///     const Zel::ZelType* Fan::_fwkType() { return chassis.fwkType<Fan>(); }
namespace Zel {

/// The types of a module in the order of declaration: a type comes behind its base, and behind the
/// values and members that its attributes name.
template <class... T>
struct TypeList {};

/// A type of a module.
struct ModuleType {
  std::string_view name;           ///< fully qualified
  Ptr<ZelType> (*make)();          ///< makes the descriptor
  void (*forceAccess)() = nullptr; ///< of an entity, see `forcePointerAccessH`
  ZelType* type = nullptr;         ///< the descriptor, once there is one
  bool inTree = false;             ///< whether it stands in the tree of types
};

/// The module's part of the registration, the same for all.
class ZEL_API Module {
public:
  constexpr Module(std::span<const std::string_view> scopes, std::span<ModuleType> types) noexcept
      : scopes_(scopes), types_(types) {}
  Module(const Module&) = delete;
  Module& operator=(const Module&) = delete;

  /// The registration procedure: makes all descriptors of the module and fills them from their
  /// tables. It runs once; while the reactor is not ready it does nothing, and may be called again.
  void zelInit();

  /// What happens when the library is loaded: enters all types in the tree of types and runs the
  /// procedure.
  void load();

  /// Whether the procedure has run.
  bool registered() const noexcept { return registered_; }

  /// The descriptor of the type at a place, made at the first request.
  const ZelType* fwkType(std::size_t place) {
    const ModuleType& wanted = types_[place];
    return wanted.type != nullptr ? wanted.type : make(place);
  }

private:
  const ZelType* make(std::size_t place);

  const std::span<const std::string_view> scopes_;
  const std::span<ModuleType> types_;
  bool registered_ = false;
};

/// Is handed the accessors of an entity's handle, so that they exist out of line: a debugger on a
/// running process can follow handles by them.
ZEL_API void forcePointerAccessH(const void* accessor);

namespace Detail {

template <class T>
void forceAccess() {
  static constexpr auto reference = &Ptr<T>::operator*;
  static constexpr auto pointer = &Ptr<T>::operator->;
  forcePointerAccessH(&reference);
  forcePointerAccessH(&pointer);
}

} // namespace Detail

template <class List>
class ModuleOf;

/// A module of these types.
template <class... T>
class ModuleOf<TypeList<T...>> : public Module {
public:
  /// `scopes` are the name scopes from the outermost in; they must outlive the module.
  constexpr explicit ModuleOf(std::span<const std::string_view> scopes) noexcept
      : Module(scopes, types_) {}

  template <class Wanted>
  const ZelType* fwkType() {
    constexpr std::size_t place = [] {
      std::size_t at = 0;
      static_cast<void>(((std::is_same_v<T, Wanted> ? true : (++at, false)) || ...));
      return at;
    }();
    static_assert(place < sizeof...(T), "the type is not in the module's list");
    return Module::fwkType(place);
  }

private:
  template <class U>
  static constexpr ModuleType typeOf() {
    ModuleType type{valueName<U>(), [] { return Ptr<ZelType>(makeObject<TypeOf<U>>()); }};
    if constexpr (std::derived_from<U, Entity>) {
      type.forceAccess = Detail::forceAccess<U>;
    }
    return type;
  }

  ModuleType types_[sizeof...(T)] = {typeOf<T>()...};
};

/// Loads a module from a static initialiser. A failure, of which there is none but for want of
/// memory, ends the process.
class LoadModule {
public:
  explicit LoadModule(Module& module) noexcept { module.load(); }
};

} // namespace Zel
