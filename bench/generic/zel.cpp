#include "generic/Access.h"

#include <generic/Client.h>
#include <model/Unit/Status.h>

#include <array>

namespace {

using Maintenance::Unit::Status;
using Zel::GenericIf;

struct Recorder final : Zel::GenericIfEntity::Listener {
  void onAttribute(Zel::GenericIfEntity& /*object*/, Zel::AttributeId /*id*/) override { ++heard; }
  void onAttribute(Zel::GenericIfEntity& /*object*/, Zel::AttributeId /*id*/,
                   const Zel::Ptr<const GenericIf>& /*key*/) override {}
  std::uint64_t heard = 0;
};

/// A generic object of a status and two values of one of its attributes, in wrappers. The object
/// hears of the changes itself, unless it is switched off.
template <class V, Zel::AttributeId id>
class Object {
public:
  explicit Object(bool hears) { object_->hasNotificationActiveIs(hears); }

  std::uint64_t read() const {
    return static_cast<std::uint64_t>(Zel::readAttribute<V>(object_, id));
  }
  void write(bool second) { Zel::writeAttribute(object_, id, values_[second ? 1 : 0]); }

protected:
  GenericIf& object() const { return *object_; }

private:
  const std::array<Zel::Ptr<GenericIf>, 2> values_{Zel::generic(static_cast<V>(1)),
                                                   Zel::generic(static_cast<V>(2))};
  const Zel::Ptr<GenericIf> object_ = Zel::generic(Maintenance::Unit::statusFactory("unit"));
};

/// No listener at all.
template <class V, Zel::AttributeId id>
class Silent : public Object<V, id> {
public:
  explicit Silent(unsigned /*listeners*/) : Object<V, id>(false) {}
  static std::uint64_t heard() { return 0; }
};

/// The generic object is the one that hears, with at most one listener behind it.
class Hearing : public Object<unsigned, Status::Attr::genId> {
public:
  explicit Hearing(unsigned listeners) : Object(true) {
    listenerIs(listeners != 0 ? &recorder_ : nullptr);
  }
  ~Hearing() { listenerIs(nullptr); }
  Hearing(const Hearing&) = delete;
  Hearing& operator=(const Hearing&) = delete;

  std::uint64_t heard() const { return recorder_.heard; }

private:
  void listenerIs(Recorder* recorder) {
    dynamic_cast<Zel::GenericIfEntity&>(object()).listenerIs(recorder);
  }

  Recorder recorder_;
};

/// With the name at hand as a string, and made of a literal each time.
void addLookUp(const char* name) {
  using Bench::operation;
  const auto object = [] { return Zel::generic(Maintenance::Unit::statusFactory("unit")); };
  operation(std::string("look up ") + name, [=](benchmark::State& state) {
    const auto generic = object();
    const Zel::String8 string(name);
    Bench::lookUpAttribute(state, [&] { return generic->attributeId(string); });
  });
  operation(std::string("look up literal ") + name, [=](benchmark::State& state) {
    const auto generic = object();
    Bench::lookUpAttribute(state, [&] { return generic->attributeId(name); });
  });
}

} // namespace

void Bench::registerAll() {
  using Number = Silent<unsigned, Status::Attr::genId>;
  using Enumeration = Silent<Maintenance::Unit::State, Status::Attr::state>;
  operation("read", readAttribute<Number>);
  operation("read enumeration", readAttribute<Enumeration>);
  const auto write = [](const char* name, auto function, unsigned listeners) {
    operation(name, [=](benchmark::State& state) { function(state, listeners); });
  };
  write("write", writeAttribute<Number>, 0);
  write("write enumeration", writeAttribute<Enumeration>, 0);
  write("write hearing itself", writeAttribute<Hearing>, 0);
  write("write 1 listener", writeAttribute<Hearing>, 1);
  addLookUp("totalIntfTrafficViolations");
  addLookUp("genId");
}
