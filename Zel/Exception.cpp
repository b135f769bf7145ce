#include <Zel/Exception>

#include <utility>

namespace Zel {

constinit thread_local const Expect* Expect::innermost_ = nullptr;

bool Expect::expects(ExceptionId id) noexcept {
  for (const Expect* scope = innermost_; scope != nullptr; scope = scope->outer_) {
    if (scope->id_ == id) {
      return true;
    }
  }
  return false;
}

Exception::Exception(String8 message, IdBitArray ids, bool /*announce*/)
    : message_(std::move(message)), details_(makeObject<Details>(ids.add(id))) {}

InternalException::InternalException(String8 message, IdBitArray ids)
    : Exception(std::move(message), ids.add(id), true) {}

RangeException::RangeException(String8 message, IdBitArray ids)
    : Exception(std::move(message), ids.add(id), true) {}

NameInUseException::NameInUseException(String8 message, IdBitArray ids)
    : Exception(std::move(message), ids.add(id), true) {}

AttrLogRecordException::AttrLogRecordException(String8 message, IdBitArray ids)
    : Exception(std::move(message), ids.add(id), true) {}

EntityIdUnavailableException::EntityIdUnavailableException(String8 message, IdBitArray ids)
    : Exception(std::move(message), ids.add(id), true) {}

ReadOnlyException::ReadOnlyException(String8 message, IdBitArray ids)
    : InternalException(std::move(message), ids.add(id)) {}

ConstException::ConstException(String8 message, IdBitArray ids)
    : InternalException(std::move(message), ids.add(id)) {}

BadIndexAttrException::BadIndexAttrException(String8 message, IdBitArray ids)
    : RangeException(std::move(message), ids.add(id)) {}

OpNotSupportedException::OpNotSupportedException(String8 message, IdBitArray ids)
    : RangeException(std::move(message), ids.add(id)) {}

TypeException::TypeException(String8 message, IdBitArray ids)
    : RangeException(std::move(message), ids.add(id)) {}

UnknownArgException::UnknownArgException(String8 message, IdBitArray ids)
    : RangeException(std::move(message), ids.add(id)) {}

UnknownAttrException::UnknownAttrException(String8 message, IdBitArray ids)
    : RangeException(std::move(message), ids.add(id)) {}

// The destructors stand here so that each class has one home for its type information.
Exception::~Exception() = default;
InternalException::~InternalException() = default;
RangeException::~RangeException() = default;
NameInUseException::~NameInUseException() = default;
AttrLogRecordException::~AttrLogRecordException() = default;
EntityIdUnavailableException::~EntityIdUnavailableException() = default;
ReadOnlyException::~ReadOnlyException() = default;
ConstException::~ConstException() = default;
BadIndexAttrException::~BadIndexAttrException() = default;
OpNotSupportedException::~OpNotSupportedException() = default;
TypeException::~TypeException() = default;
UnknownArgException::~UnknownArgException() = default;
UnknownAttrException::~UnknownAttrException() = default;

void throwRangeException(const char* message) { throw RangeException(message); }
void throwRangeException(const String8& message) { throw RangeException(message); }
void throwInternalException(const char* message) { throw InternalException(message); }
void throwInternalException(const String8& message) { throw InternalException(message); }

void throwReadOnlyException(const String8& attribute, const String8& entity) {
  throw ReadOnlyException("read-only attribute: " + attribute + " of " + entity);
}

} // namespace Zel
