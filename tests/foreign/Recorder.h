#pragma once

#include <Zel/Attribute>

#include <string>
#include <vector>

namespace Foreign {

/// Words that say what has been heard, in order.
using Words = std::vector<std::string>;

inline std::string word(const char* callback, const Zel::String8& key) {
  return std::string(callback) + " " + std::string(key.view());
}

/// A notifiee of class `R`, registered with the object.
template <class R, class T>
Zel::Ptr<R> listen(const T& object) {
  const auto recorder = Zel::makeObject<R>();
  recorder->isRegisteredNotifieeIs(true);
  recorder->notifierIs(Zel::Ptr<const Zel::PtrInterface>(object.ptr()));
  return recorder;
}

} // namespace Foreign
