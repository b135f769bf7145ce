#pragma once

#include <Zel/Ptr>

#include <set>
#include <utility>

namespace Replay {

/// Makes a notifiee of class `Watch` that hears of `subject`, for as long as the handle that is
/// yielded, or a copy of it, is there.
///
/// A notifiee hears when it is registered and has a notifier, and the order of the two steps does
/// not matter. The subject's list of notifiees holds no count, so the only owner is whoever keeps
/// this handle; when it goes, the notifiee leaves the list by itself. The notifiee in turn holds
/// its subject by a count: what is watched cannot die under its watch.
template <class Watch, class Subject, class... Arguments>
Zel::Ptr<Watch> watch(const Zel::Ptr<Subject>& subject, Arguments&&... arguments) {
  auto notifiee = Zel::makeObject<Watch>(std::forward<Arguments>(arguments)...);
  notifiee->isRegisteredNotifieeIs(true);
  notifiee->notifierIs(subject);
  return notifiee;
}

/// What happened to the keys of a collection. A callback names the key and nothing else: whether it
/// is there now, a look-up tells; whether it was there before, only a memory of one's own.
template <class Key>
class Known {
public:
  /// What has happened to a key that is now there, or is not.
  const char* fate(const Key& key, bool isThere) {
    if (!isThere) {
      keys_.erase(key);
      return "removed";
    }
    return keys_.insert(key).second ? "added" : "changed";
  }

private:
  std::set<Key> keys_;
};

} // namespace Replay
