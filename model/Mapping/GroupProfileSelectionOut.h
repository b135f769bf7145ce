#pragma once

#include <Zel/Attribute>
#include <model/Mapping/GroupProfileSelKey.h>

namespace Maintenance {

/// What came out of a profile selection for one kind of group under one request. Its being there is
/// all that it says; nobody can be told of it but by the collection that holds it.
class ZEL_API GroupProfileSelectionOut : public Zel::PtrInterface {
public:
  static constexpr std::string_view zelTypeName = "Maintenance::GroupProfileSelectionOut";
  static const Zel::TypeTable& zelTable();
  static const Zel::ZelType* _fwkType();
  const Zel::ZelType* fwkType() const override { return _fwkType(); }
  using _Type = Zel::TypeOf<GroupProfileSelectionOut>;
  class GenericIf_;

  struct Attr {
    static constexpr Zel::AttributeId groupProfileSelKey = 130;
  };

  explicit GroupProfileSelectionOut(const GroupProfileSelKey& groupProfileSelKey);

  const GroupProfileSelKey& groupProfileSelKey() const noexcept {
    return Zel::read(*this, groupProfileSelKey_);
  }
  /// The key, under the name that collections ask for.
  const GroupProfileSelKey& fwkKey() const noexcept {
    return Zel::read(*this, groupProfileSelKey_);
  }

  const GroupProfileSelKey& zelKey() const noexcept { return groupProfileSelKey_; }
  static constexpr Zel::Ptr<GroupProfileSelectionOut> GroupProfileSelectionOut::*
  zelMemberNext() noexcept {
    return &GroupProfileSelectionOut::memberNext_;
  }

protected:
  ~GroupProfileSelectionOut() override;

private:
  const GroupProfileSelKey groupProfileSelKey_;
  Zel::Ptr<GroupProfileSelectionOut> memberNext_;
};

ZEL_API Zel::Ptr<GroupProfileSelectionOut>
groupProfileSelectionOutFactory(const GroupProfileSelKey& groupProfileSelKey);

} // namespace Maintenance
