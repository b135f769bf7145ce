#pragma once

#include <Zel/Entity>
#include <registration/Module.h>

/// A few types whose modules a test registers when it wants to: each number is a set of types of
/// its own.
namespace Workshop {

enum Wood : int { oak = 1, beech = 4 };

inline constexpr Zel::Enumerator woodRows[] = {{oak, "oak"}, {beech, "beech"}};

const Zel::ZelType* _fwkType_Wood();
constexpr Zel::EnumTable enumTable(Wood) {
  return {"Workshop::Wood", "Wood", woodRows, _fwkType_Wood};
}

/// A value with one member.
class Plank {
public:
  static constexpr std::string_view zelTypeName = "Workshop::Plank";
  static const Zel::TypeTable& zelTable();
  static const Zel::ZelType* _fwkType();

  Wood wood() const noexcept { return wood_; }
  void woodIs(Wood wood) noexcept { wood_ = wood; }
  friend bool operator==(const Plank& a, const Plank& b) noexcept = default;

private:
  Wood wood_ = oak;
};

/// An entity with a constant, of another module.
class Bench : public Zel::Entity {
public:
  static constexpr std::string_view zelTypeName = "Workshop::Tools::Bench";
  static const Zel::TypeTable& zelTable();
  static const Zel::ZelType* _fwkType();
  const Zel::ZelType* fwkType() const override { return _fwkType(); }
  class NotifieeConst;
  class Notifiee;
  class GenericIf_;

  explicit Bench(Zel::Name name) : Entity(std::move(name)) {}
  unsigned legs() const noexcept { return 4; }

  void zeroReferencesIs(bool zero) override;
  Zel::ListRaw<NotifieeConst>& zelNotifieeList() const noexcept { return notifiees_; }

protected:
  ~Bench() override;

private:
  mutable Zel::ListRaw<NotifieeConst> notifiees_;
};

class Bench::NotifieeConst
    : public Zel::NotifieeOf<Bench, Bench::NotifieeConst, Zel::Entity::NotifieeConst> {};
class Bench::Notifiee : public Bench::NotifieeConst {};

/// The module of `Wood` and `Plank`, and that of `Bench`. Nobody loads them but a test.
Zel::Module& materials();
Zel::Module& tools();

} // namespace Workshop
