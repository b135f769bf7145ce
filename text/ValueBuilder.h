#pragma once

#include <Zel/TypeTable>

#include <memory>
#include <optional>

namespace Zel {

/// Whether a value holds the attribute itself.
constexpr bool isStored(const AttrRow& row) {
  return row.kind == AttrKind::key || row.kind == AttrKind::valueMember;
}

/// Puts a value with a table together from its attributes, whichever come, on top of a fresh value.
/// Members are written at once. Constructor arguments, which nothing else can set, are kept until
/// `finish`; up to eight need no allocation.
class ZEL_API ValueBuilder {
public:
  ValueBuilder(const ValueRecord& record, const TypeTable& table, void* fresh);

  /// Takes an attribute whose value `read` puts into a default one, by address. One that is neither
  /// stored nor an argument is dropped.
  template <class Read>
  void take(const AttrRow& row, Read&& read) {
    if (row.kind == AttrKind::key) {
      std::optional<ValueSlot>& argument = argumentOf(row);
      argument.emplace(*row.value);
      read(argument->at());
      hasArguments_ = true;
      return;
    }
    ValueSlot member(*row.value);
    read(member.at());
    if (row.kind == AttrKind::valueMember) {
      row.write(value_, member.at());
    }
  }

  /// Makes the value anew if an argument was taken. Arguments that were not taken keep what the
  /// value has; members are carried over.
  void finish();

private:
  using Argument = std::optional<ValueSlot>;
  static constexpr std::size_t fewArguments = 8;

  Argument& argumentOf(const AttrRow& row);
  Argument& argument(std::size_t place) { return many_ ? many_[place] : few_[place]; }
  void remake(const void** arguments);

  const ValueRecord& record_;
  const TypeTable& table_;
  void* const value_;
  bool hasArguments_ = false;
  std::array<Argument, fewArguments> few_;
  std::unique_ptr<Argument[]> many_;
};

} // namespace Zel
