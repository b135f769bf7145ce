#include <text/Value.h>

// No guard: each file that includes this has the macro, and undefines it at its end.

/// Defines the functions of an enumeration that turn it into text and back, where it stands in the
/// enumeration's namespace. `EInstance` is the name of the conversions, such as `StateInstance`.
/// Whoever includes this for them ends the file with `#undef ZEL_ENUMERATION_TEXT`.
#define ZEL_ENUMERATION_TEXT(E, EInstance)                                                         \
  E EInstance(unsigned number) {                                                                   \
    return static_cast<E>(::Zel::enumInstance(::Zel::enumTableOf<E>, number));                     \
  }                                                                                                \
  E EInstance(::Zel::String8 name) {                                                               \
    return static_cast<E>(::Zel::enumInstance(::Zel::enumTableOf<E>, name.view()));                \
  }                                                                                                \
  ::Zel::String8 stringValue(E value) { return ::Zel::enumString(::Zel::enumTableOf<E>, value); }  \
  ::Zel::String8 valueToStrep(const E& value) { return ::Zel::textOf(value); }                     \
  E sequenceToValue(::Zel::String8::IteratorConst& first,                                          \
                    const ::Zel::String8::IteratorConst& last, E* /*selector*/) {                  \
    return ::Zel::enumeratorFrom<E>(first, last);                                                  \
  }                                                                                                \
  std::ostream& operator<<(std::ostream& out, const E& value) { return out << stringValue(value); }
