#pragma once

#include "Samples.h"

#include <Zel/Entity>
#include <Zel/TypeTable>

#include <functional>
#include <initializer_list>
#include <map>
#include <memory>
#include <optional>
#include <ostream>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace Conformance {

/// One callback: the attribute, and the key if one was told.
struct Heard {
  Zel::AttributeId id;
  std::optional<AnyValue> key;

  friend bool operator==(const Heard& a, const Heard& b) = default;
  friend void PrintTo(const Heard& heard, std::ostream* out) {
    *out << heard.id << ' ' << testing::PrintToString(heard.key);
  }
};

/// What a recording notifiee has heard.
class Log {
public:
  std::vector<Heard> heard;
  std::vector<Zel::AttributeId> failures; ///< what `onNotificationException` reported
  bool throws = false;                    ///< whether callbacks throw, after they have recorded

protected:
  void hear(Zel::AttributeId id) { record({id, std::nullopt}); }
  template <class Key>
  void hear(Zel::AttributeId id, const Key& key) {
    record({id, AnyValue::of(key)});
  }
  void record(Heard entry) {
    heard.push_back(std::move(entry));
    if (throws) {
      throw std::runtime_error("a notifiee that fails");
    }
  }
};

/// Base of the recording notifiees of `T`: each overrides every callback of its type and says by
/// its own hand which attribute that is.
template <class T>
class Recorder : public T::Notifiee, public Log {
  using Base = typename T::Notifiee;

public:
  using Base::onNotificationException;
  void onNotificationException(Zel::AttributeId id) override { failures.push_back(id); }
};

struct Listener {
  Zel::Ptr<Zel::PtrInterface::NotifieeConst> notifiee;
  Log* log;
};

/// An instance of a type, without its type.
struct Object {
  std::shared_ptr<void> address;
  Zel::Entity* entity;        ///< null if it is no entity
  Zel::PtrInterface* counted; ///< null if it is a value

  void* at() const { return address.get(); }
};

/// A walk through a collection with the iterator of its type.
struct Walk {
  std::function<std::optional<AnyValue>()> key; ///< of the current member; none at the end
  std::function<void()> advance;
};

/// The typed side of one attribute, to hold against its row.
struct TypedAccess {
  std::optional<AnyValue> initial; ///< the value in a new object
  std::vector<AnyValue> samples;   ///< instead of those of the value's type, if any
  std::function<AnyValue(const void* owner)> read;
  std::function<AnyValue(const void* owner, const void* key)> lookUp;
  std::function<AnyValue(const AnyValue& value)> keyOfValue; ///< of values that bring their key
  std::function<Zel::Ptr<Zel::PtrInterface>(const void* owner, const void* key)> find;
  std::function<Walk(const void* owner)> walk;
  std::function<AnyValue(const Zel::PtrInterface& member)> keyOfMember;
  const Zel::TypeTable* memberTable = nullptr;
};

/// A type under test.
struct Subject {
  std::string name;
  const Zel::TypeTable* table = nullptr;
  std::size_t size = 0;
  std::string_view base; ///< the name of the base's table, if any
  std::function<Object()> make;
  /// A new notifiee, registered; null on a type without notifiees.
  std::function<Listener(const Object&)> listen;
  std::map<Zel::AttributeId, TypedAccess> typed;

  /// Its rows and those of its bases.
  std::vector<const Zel::AttrRow*> rows() const;
};

/// Builds the subject of `T`, whose recording notifiee is `R`.
template <class T, class R = void>
class SubjectOf : public Subject {
  template <class Read>
  struct Signature;
  template <class C, class V, class K>
  struct Signature<V (C::*)(K) const> {
    using Value = V;
    using Key = std::remove_cvref_t<K>;
  };

  template <class Access>
  struct MapOf;
  template <class C, class M>
  struct MapOf<const M& (C::*)() const noexcept> {
    using Map = M;
  };

  /// A typed walk through the collection that `Access` yields.
  template <auto Access>
  static Walk walk(const void* owner) {
    using Iterator = typename MapOf<decltype(Access)>::Map::IteratorConst;
    using Key = typename MapOf<decltype(Access)>::Map::KeyType;
    const auto at = std::make_shared<Iterator>((in(owner).*Access)());
    return {[at] { return *at ? std::optional(AnyValue::of<Key>((*at)->zelKey())) : std::nullopt; },
            [at] { at->advance(); }};
  }

  template <auto Read>
  using ValueOf = std::remove_cvref_t<decltype((std::declval<const T&>().*Read)())>;

  static const T& in(const void* owner) { return *static_cast<const T*>(owner); }

public:
  /// `create` yields a handle on a new object, or a new value.
  template <class Create>
  SubjectOf(std::string subjectName, Create create) {
    name = std::move(subjectName);
    table = &T::zelTable();
    size = sizeof(T);
    if constexpr (std::derived_from<T, Zel::PtrInterface>) {
      make = [create] {
        const Zel::Ptr<T> object = create();
        Zel::Entity* entity = nullptr;
        if constexpr (std::derived_from<T, Zel::Entity>) {
          entity = object.ptr();
        }
        return Object{std::shared_ptr<void>(object.ptr(), [object](void*) {}), entity,
                      object.ptr()};
      };
    } else {
      make = [create] { return Object{std::make_shared<T>(create()), nullptr, nullptr}; };
    }
    if constexpr (!std::is_void_v<R>) {
      listen = [](const Object& object) {
        const auto recorder = Zel::makeObject<R>();
        recorder->isRegisteredNotifieeIs(true);
        recorder->notifierIs(Zel::Ptr<const Zel::PtrInterface>(static_cast<T*>(object.at())));
        return Listener{recorder, recorder.ptr()};
      };
    }
  }

  SubjectOf& derivedFrom(std::string_view baseName) {
    base = baseName;
    return *this;
  }

  template <auto Read>
  SubjectOf& reads(Zel::AttributeId id, std::type_identity_t<ValueOf<Read>> initial,
                   std::initializer_list<ValueOf<Read>> samples = {}) {
    TypedAccess& access = typed[id];
    access.initial = AnyValue::of(initial);
    access.read = [](const void* owner) {
      return AnyValue::of(ValueOf<Read>((in(owner).*Read)()));
    };
    for (const ValueOf<Read>& sample : samples) {
      access.samples.push_back(AnyValue::of(sample));
    }
    return *this;
  }

  template <auto Read, auto Access>
  SubjectOf& looksUp(Zel::AttributeId id) {
    using Types = Signature<decltype(Read)>;
    typed[id].walk = walk<Access>;
    typed[id].lookUp = [](const void* owner, const void* key) {
      return AnyValue::of((in(owner).*Read)(*static_cast<const typename Types::Key*>(key)));
    };
    return *this;
  }

  template <auto Read, auto Access, auto KeyOf>
  SubjectOf& looksUpOwn(Zel::AttributeId id) {
    using Value = typename Signature<decltype(Read)>::Value;
    looksUp<Read, Access>(id);
    typed[id].keyOfValue = [](const AnyValue& value) {
      return AnyValue::of((value.as<Value>().*KeyOf)());
    };
    return *this;
  }

  template <auto Read, auto Access>
  SubjectOf& finds(Zel::AttributeId id) {
    using Types = Signature<decltype(Read)>;
    using Member = typename Types::Value::Element;
    typed[id].walk = walk<Access>;
    typed[id].find = [](const void* owner, const void* key) {
      return Zel::Ptr<Zel::PtrInterface>(
          (in(owner).*Read)(*static_cast<const typename Types::Key*>(key)));
    };
    typed[id].memberTable = &Member::zelTable();
    typed[id].keyOfMember = [](const Zel::PtrInterface& member) {
      return AnyValue::of<typename Types::Key>(dynamic_cast<const Member&>(member).zelKey());
    };
    return *this;
  }
};

/// All types under test.
const std::vector<Subject>& subjects();
void addProfileSubjects(std::vector<Subject>& all);
void addUnitSubjects(std::vector<Subject>& all);
void addMappingSubjects(std::vector<Subject>& all);
void addMaintenanceGroupSubjects(std::vector<Subject>& all);
void addMaintenanceUnitProfileSubjects(std::vector<Subject>& all);
void addMaintenanceAgentInfoSubjects(std::vector<Subject>& all);
void addForeignSubjects(std::vector<Subject>& all);

/// One attribute of one type.
struct Case {
  const Subject* subject;
  const Zel::AttrRow* row;

  const TypedAccess& typed() const { return subject->typed.at(row->id); }
  const std::vector<AnyValue>& samples() const {
    return typed().samples.empty() ? samplesOf(*row->value) : typed().samples;
  }
  AnyValue read(const Object& object) const {
    return AnyValue(*row->value, [&](void* to) { row->read(object.at(), to); });
  }

  friend void PrintTo(const Case& attribute, std::ostream* out) {
    *out << attribute.subject->name << ' ' << attribute.row->name;
  }
};

std::vector<Case> casesOf(bool (*wanted)(const Zel::AttrRow&));

/// `Type_attribute`.
std::string caseName(const testing::TestParamInfo<Case>& info);

} // namespace Conformance
