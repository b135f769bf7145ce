#pragma once

#include <Group/GroupType>
#include <Zel/Layers>

namespace Maintenance {

/// Names what a profile selection says of one kind of group under one request. An immutable value,
/// changed only by assigning a whole new key.
class ZEL_API GroupProfileSelKey {
public:
  static constexpr std::string_view zelTypeName = "Maintenance::GroupProfileSelKey";
  static const Zel::TypeTable& zelTable();
  static const Zel::ZelType* _fwkType();
  const Zel::ZelType* fwkType() const { return _fwkType(); }
  using _Type = Zel::TypeOf<GroupProfileSelKey>;
  using GenericIf_ = Zel::ValueGenericIf<GroupProfileSelKey>;

  struct Attr {
    static constexpr Zel::AttributeId groupType = 2;
    static constexpr Zel::AttributeId profileSelReqId = 3;
    static constexpr Zel::AttributeId hash = 4;
  };

  /// Reads the text form. Throws `Zel::RangeException`.
  GroupProfileSelKey(Zel::String8::IteratorConst& first, const Zel::String8::IteratorConst& last);

  /// Reads the fields from the attribute log. Throws `Zel::RangeException`.
  GroupProfileSelKey(Zel::NboAttrLog::In* in, Zel::StreamBogon stream);

  GroupProfileSelKey() noexcept = default;
  GroupProfileSelKey(Group::GroupType groupType, unsigned profileSelReqId) noexcept
      : groupType_(groupType), profileSelReqId_(profileSelReqId) {}

  Group::GroupType groupType() const noexcept { return groupType_; }
  /// The number of the selection request.
  unsigned profileSelReqId() const noexcept { return profileSelReqId_; }

  /// Computed at each call: the one-at-a-time hash, Jenkins, of both numbers.
  unsigned hash() const noexcept;

  friend bool operator==(const GroupProfileSelKey& a, const GroupProfileSelKey& b) noexcept {
    return a.groupType_ == b.groupType_ && a.profileSelReqId_ == b.profileSelReqId_;
  }
  /// By type, then by request.
  friend bool operator<(const GroupProfileSelKey& a, const GroupProfileSelKey& b) noexcept {
    return a.groupType_ != b.groupType_ ? a.groupType_ < b.groupType_
                                        : a.profileSelReqId_ < b.profileSelReqId_;
  }
  friend bool operator<=(const GroupProfileSelKey& a, const GroupProfileSelKey& b) noexcept {
    return a < b || a == b;
  }
  friend bool operator>(const GroupProfileSelKey& a, const GroupProfileSelKey& b) noexcept {
    return !(a <= b);
  }
  friend bool operator>=(const GroupProfileSelKey& a, const GroupProfileSelKey& b) noexcept {
    return !(a < b);
  }

private:
  Group::GroupType groupType_ = Group::groupTypeUnknown;
  unsigned profileSelReqId_ = 0;
};

ZEL_API Zel::String8 valueToStrep(const GroupProfileSelKey& value);
ZEL_API std::ostream& operator<<(std::ostream& out, const GroupProfileSelKey& value);
ZEL_API void operator<<(const Zel::Ptr<Zel::NboAttrLog::Out>& out, const GroupProfileSelKey& value);

} // namespace Maintenance
