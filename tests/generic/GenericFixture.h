#pragma once

#include "support/Failure.h"
#include "support/Recorder.h"

#include <generic/Client.h>
#include <generic/Profile.h>
#include <generic/Unit.h>

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace TestGeneric {

using Support::Log;
using Support::messageOf;
using Zel::GenericIf;
using Zel::Ptr;
using Handle = Ptr<GenericIf>;
using Op = GenericIf::AttributeOp;

/// The general form, with nothing left out.
inline Handle attributeOp(const Handle& object, Zel::AttributeId id, Op::OpId op,
                          const Handle& index = nullptr, const Handle& value = nullptr) {
  return object->attributeOp({id, op}, index, value);
}

inline std::string textOf(const Ptr<const GenericIf>& object) {
  return object ? std::string(object->strRep().view()) : "no object";
}

/// A wrapper of the default value, of a copy, and of what a text says.
template <class V>
Handle defaultOf(bool isConst = false) {
  return Zel::valueRecord<V>.type()->genericIf(static_cast<const void*>(nullptr), isConst);
}
template <class V>
Handle writable(const V& value) {
  return Zel::generic(value, false);
}
template <class V>
Handle fromText(const char* text, bool isConst = false) {
  return Zel::valueRecord<V>.type()->genericIf(Zel::String8(text), isConst);
}

template <class V>
Ptr<const Zel::ZelType> typeOf() {
  return Ptr<const Zel::ZelType>(Zel::fwkTypeOf<V>());
}

/// Writes down what a generic object is told: "262", or "260 'key'".
class Listener : public Zel::GenericIfEntity::Listener {
public:
  explicit Listener(Log& log, std::string label = "") : log_(log), label_(std::move(label)) {}
  virtual ~Listener() = default;

  void onAttribute(Zel::GenericIfEntity& object, Zel::AttributeId id) override {
    log_.push_back(label_ + std::to_string(id));
    if (onCall) {
      onCall(object);
    }
  }
  void onAttribute(Zel::GenericIfEntity& object, Zel::AttributeId id,
                   const Ptr<const GenericIf>& key) override {
    log_.push_back(label_ + std::to_string(id) + ' ' + textOf(key));
    if (onCall) {
      onCall(object);
    }
  }

  std::function<void(Zel::GenericIfEntity&)> onCall;

private:
  Log& log_;
  const std::string label_;
};

/// A generic object that tells a listener.
inline Handle told(const Handle& object, Listener& listener) {
  dynamic_cast<Zel::GenericIfEntity&>(*object).listenerIs(&listener);
  return object;
}

/// How far the counters of an entity move during `work`.
struct Moves {
  unsigned changes;
  unsigned reads;
  friend bool operator==(Moves a, Moves b) = default;
  friend void PrintTo(Moves moves, std::ostream* out) {
    *out << moves.changes << " changes, " << moves.reads << " reads";
  }
};
template <class Work>
Moves movesOf(const Zel::Entity& entity, Work&& work) {
  const Moves before{entity.versionCounter(), entity.readCounter()};
  work();
  return {entity.versionCounter() - before.changes, entity.readCounter() - before.reads};
}

} // namespace TestGeneric
