#pragma once

#include <Zel/ValueRecord>

#include <gtest/gtest.h>

#include <memory>
#include <ostream>
#include <utility>

namespace Support {

/// A value of any type that has a record: copyable, and equal to another of the same type if that
/// type says so.
class AnyValue {
public:
  /// The value that `make` constructs in raw storage.
  template <class Make>
  AnyValue(const Zel::ValueRecord& record, Make&& make)
      : record_(&record), storage_(new std::byte[record.size]) {
    make(static_cast<void*>(storage_.get()));
  }

  /// The type's default value.
  explicit AnyValue(const Zel::ValueRecord& record) : AnyValue(record, record.construct) {}

  template <class V>
  static AnyValue of(const V& value) {
    return AnyValue(Zel::valueRecord<V>, [&](void* to) { new (to) V(value); });
  }

  AnyValue(const AnyValue& other)
      : AnyValue(*other.record_, [&](void* to) { other.record_->copy(to, other.at()); }) {}
  AnyValue(AnyValue&& other) noexcept = default;
  AnyValue& operator=(AnyValue other) noexcept {
    std::swap(record_, other.record_);
    std::swap(storage_, other.storage_);
    return *this;
  }

  ~AnyValue() {
    if (storage_) {
      record_->destroy(storage_.get());
    }
  }

  const Zel::ValueRecord& record() const { return *record_; }
  const void* at() const { return storage_.get(); }
  void* at() { return storage_.get(); }

  /// The value under its type, which must be its own.
  template <class V>
  const V& as() const {
    EXPECT_EQ(record_->name, Zel::valueName<V>());
    return *static_cast<const V*>(at());
  }

  /// Records are compared by name: there may be several of one type in a process.
  friend bool operator==(const AnyValue& a, const AnyValue& b) {
    return a.record_->name == b.record_->name && a.record_->equal(a.at(), b.at());
  }

  friend void PrintTo(const AnyValue& value, std::ostream* out) {
    const std::string_view name = value.record_->name;
    *out << name << ' ';
    if (name == "bool") {
      *out << value.as<bool>();
    } else if (name == "U32") {
      *out << value.as<unsigned>();
    } else if (name == "U64") {
      *out << value.as<unsigned long long>();
    } else if (name == "F64") {
      *out << value.as<double>();
    } else if (name == "Zel::String") {
      *out << value.as<Zel::String8>();
    } else if (name == "Zel::Name") {
      *out << value.as<Zel::Name>();
    }
  }

private:
  const Zel::ValueRecord* record_;
  std::unique_ptr<std::byte[]> storage_;
};

} // namespace Support
