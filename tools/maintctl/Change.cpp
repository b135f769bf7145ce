#include "Change.h"

#include "Failure.h"
#include "Ranges.h"
#include "Values.h"
#include "Words.h"

#include <Zel/ZelType>

#include <deque>
#include <optional>

namespace Maintctl {

namespace {

using Zel::AttrKind;
using Zel::AttrRow;
using Zel::ValueRecord;
using Zel::ValueSlot;

/// As many values as there are records, read from as many texts.
class Arguments {
public:
  explicit Arguments(std::string place) : place_(std::move(place)) {}

  void add(const std::string& text, const ValueRecord& record) {
    ValueSlot& slot = slots_.emplace_back(record);
    readText(text, record, slot.at(), place_);
    refuseTooLong(record, slot.at(), place_);
    addresses_.push_back(slot.at());
  }
  const void* const* addresses() const { return addresses_.data(); }

private:
  const std::string place_;
  std::deque<ValueSlot> slots_; // which cannot move
  std::vector<const void*> addresses_;
};

std::string counted(std::size_t count, const char* what) {
  return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
}

[[noreturn]] void readOnly(const Target& target) {
  const AttrKind kind = target.row->kind;
  const char* const why = kind == AttrKind::constant ? "it is the same for all of its type"
                          : kind == AttrKind::key    ? "it is the key, make a new one with add"
                                                     : "it follows from other values";
  throw Failure(exitRefused, target.path() + " cannot be written: " + why);
}

/// The key of an entry, in a slot.
class Key {
public:
  explicit Key(const Target& target) : slot_(*target.row->key) {
    readKey(target.segment, *target.row->key, slot_.at(), "the key in " + target.path());
  }
  void* at() { return slot_.at(); }

private:
  ValueSlot slot_;
};

/// Reads what an attribute or an entry is to hold.
void readContent(const Target& target, const std::string& text, ValueSlot& value) {
  readText(text, value.record(), value.at(), target.path());
  if (&value.record() != &Zel::valueRecord<Zel::String8>) { // which travels in parts
    refuseTooLong(value.record(), value.at(), target.path());
  }
}

bool isLongText(ValueSlot& value) {
  return &value.record() == &Zel::valueRecord<Zel::String8> &&
         static_cast<const Zel::String8*>(value.at())->length() > Zel::maxWholeString;
}

/// The attribute of a value that is its key in a collection.
const AttrRow& ownKeyRow(const AttrRow& collection) {
  const AttrRow* const row = collection.value->table().row(Zel::keyAttributeName(collection));
  if (row == nullptr) {
    throw Failure(exitFailed, "the values of " + std::string(collection.name) + " have no key");
  }
  return *row;
}

/// Of an entry whose value brings its key.
void requireOwnKey(const Target& target, ValueSlot& value, const std::string& text) {
  const AttrRow& row = *target.row;
  Key key(target);
  ValueSlot own(*row.key, [&](void* to) { ownKeyRow(row).read(value.at(), to); });
  if (!row.key->equal(key.at(), own.at())) {
    throw Failure(exitBadValue, "bad value " + printable(text) + " for " + target.path() +
                                    ": its key is " + segmentOf(*row.key, own.at()));
  }
}

void writeOwnKey(const Target& target, const std::string& text) {
  const AttrRow& row = *target.row;
  ValueSlot value(*row.value);
  readContent(target, text, value);
  if (target.kind == Target::collection) {
    ValueSlot own(*row.key, [&](void* to) { ownKeyRow(row).read(value.at(), to); });
    refuseUnfitKey(*row.key, own.at(), target.path());
  } else {
    requireOwnKey(target, value, text);
  }
  row.collection->write(target.owner.ptr(), nullptr, value.at());
}

/// The entry of a value that brings its key.
Target underOwnKey(const Target& collection, const std::string& text) {
  const AttrRow& row = *collection.row;
  ValueSlot value(*row.value);
  readContent(collection, text, value);
  ValueSlot own(*row.key, [&](void* to) { ownKeyRow(row).read(value.at(), to); });
  return {Target::entry, collection.owner, &row, segmentOf(*row.key, own.at())};
}

void writeEntry(const Target& target, const std::string& text) {
  const AttrRow& row = *target.row;
  if (row.kind == AttrKind::ownKey) {
    writeOwnKey(target, text);
    return;
  }
  Key key(target);
  ValueSlot value(*row.value);
  readContent(target, text, value);
  row.collection->write(target.owner.ptr(), key.at(), value.at());
}

/// The members of a collection are made from their key and what its operations say.
void create(const Target& target, const std::vector<std::string>& arguments) {
  const AttrRow& row = *target.row;
  const auto& wanted = row.collection->arguments;
  if (arguments.size() != wanted.size()) {
    throw Failure(exitUsage, target.path() + " takes " +
                                 (wanted.empty() ? "nothing" : counted(wanted.size(), "argument")) +
                                 " behind its path, got " + counted(arguments.size(), "argument"));
  }
  Key key(target);
  Arguments values(target.path());
  for (std::size_t at = 0; at < wanted.size(); ++at) {
    values.add(arguments[at], *wanted[at]);
  }
  row.collection->create(target.owner.ptr(), key.at(), values.addresses());
}

/// What a write that the server decides came to, if it is neither done nor too late.
[[noreturn]] void notWritten(const Target& target, Zel::Session::WriteResult result) {
  if (result == Zel::Session::writeRefused) {
    throw Failure(exitRefused, "the server refuses to write " + target.path());
  }
  throw Failure(exitNotFound, target.path() + " has gone meanwhile, nothing was written");
}

/// The one value that an entry is made of.
std::string valueOf(const Target& target, const std::vector<std::string>& arguments) {
  if (arguments.size() == 1) {
    return arguments[0];
  }
  const ValueRecord& record = *target.row->value;
  if (!arguments.empty()) {
    throw Failure(exitUsage, target.path() + " takes one value, got " +
                                 std::to_string(arguments.size()) +
                                 "; a value with blanks in it stands in quotes");
  }
  if (record.name != Zel::valueName<bool>()) {
    throw Failure(exitUsage, target.path() + " needs a value, of type " + std::string(record.name));
  }
  return "true";
}

[[noreturn]] void notOne(const Target& target, const char* command) {
  const std::string path = target.path();
  switch (target.kind) {
  case Target::top:
    throw Failure(exitUsage,
                  std::string(command) + " needs a path below /, 'ls /' lists the roots");
  case Target::collection:
    throw Failure(exitUsage, path + " is a collection, name one of it: " + path + "/KEY");
  case Target::attribute:
    throw Failure(exitUsage, path + " is a value and always there, write it with set");
  default:
    throw Failure(exitUsage, path + " is no value, 'ls " + path + "' lists what it has");
  }
}

void refuseUnfitKeyOf(const Target& target) {
  if (target.kind == Target::entry) {
    refuseUnfitKey(*target.row->key, Key(target).at(), target.path());
  }
}

void requireEntry(const Target& target) {
  if (!target.isThere()) {
    noneThere(target);
  }
}

/// Something that `set` can write.
void requireValue(const Target& target) {
  if (target.kind == Target::entry) {
    requireEntry(target);
  } else if (target.kind != Target::attribute) {
    notOne(target, "set");
  } else if (target.row->write == nullptr) {
    readOnly(target);
  }
}

/// Makes an entry if there is none, as whoever has the original decides; whether it did.
bool isMade(Device& device, const Target& target, const std::string& text) {
  using Zel::Session;
  const AttrRow& row = *target.row;
  Key key(target);
  ValueSlot value(*row.value);
  readContent(target, text, value);
  if (row.kind == AttrKind::ownKey) {
    requireOwnKey(target, value, text);
  }
  if (isLongText(value)) { // which travels in parts, as a change alone does
    row.collection->write(target.owner.ptr(), key.at(), value.at());
    return true;
  }
  const Session::WriteResult result =
      device.writeIf({target.owner, row.id, {*row.key, key.at()}, {}, {*row.value, value.at()}});
  if (result != Session::writeDone && result != Session::writeDiffers) {
    notWritten(target, result);
  }
  return result == Session::writeDone;
}

/// A member as what it is in the collection that holds it; a root as it is.
Target asEntry(const Target& target) {
  const Zel::Ptr<Zel::Entity> holder = target.owner->parent();
  if (!holder) {
    return target;
  }
  const AttrRow& row = *holder->fwkType()->table()->row(target.owner->parentAttrId());
  ValueSlot key(*row.key, [&](void* to) { row.collection->memberKey(target.owner.ptr(), to); });
  return {Target::entry, holder, &row, segmentOf(*row.key, key.at())};
}

} // namespace

void setValue(const Target& target, const std::string& text) {
  requireValue(target);
  if (target.kind == Target::entry) {
    writeEntry(target, text);
  } else {
    ValueSlot value(*target.row->value);
    readContent(target, text, value);
    target.row->write(target.owner.ptr(), value.at());
  }
}

void setValueIf(Device& device, const Target& target, const std::string& old,
                const std::string& text) {
  using Zel::Session;
  requireValue(target);
  const AttrRow& row = *target.row;
  ValueSlot expected(*row.value);
  ValueSlot value(*row.value);
  readText(old, *row.value, expected.at(), target.path());
  readContent(target, text, value);
  std::optional<Key> key;
  Session::WriteIf what{
      target.owner, row.id, {}, {*row.value, expected.at()}, {*row.value, value.at()}};
  if (target.kind == Target::entry) {
    key.emplace(target);
    what.key = {*row.key, key->at()};
  }
  const Session::WriteResult result = device.writeIf(what);
  device.flush();
  switch (result) {
  case Session::writeDone:
    return;
  case Session::writeDiffers:
    throw Failure(exitDiffers, target.path() + " is another than " +
                                   textForm(*row.value, expected.at()) + ", nothing was written");
  default:
    notWritten(target, result);
  }
}

void add(Device& device, const Target& target, const std::vector<std::string>& arguments,
         bool mayExist) {
  const bool bringsKey = target.kind == Target::collection && target.row->kind == AttrKind::ownKey;
  const Target entry = bringsKey ? underOwnKey(target, valueOf(target, arguments)) : target;
  refuseUnfitKeyOf(entry);
  bool isThere = entry.kind == Target::entity || (entry.kind == Target::entry && entry.isThere());
  if (!isThere && entry.kind != Target::entry) {
    notOne(entry, "add");
  }
  if (!isThere && entry.row->kind == AttrKind::instantiating) {
    create(entry, arguments);
  } else if (!isThere) {
    isThere = !isMade(device, entry, valueOf(entry, arguments));
  }
  if (isThere && !mayExist) {
    throw Failure(exitFailed, entry.path() + " is there already");
  }
}

void remove(const Target& target) {
  if (target.kind != Target::entry && target.kind != Target::entity) {
    notOne(target, "del");
  }
  const Target entry = target.kind == Target::entity ? asEntry(target) : target;
  if (entry.kind == Target::entity) {
    throw Failure(exitRefused, target.path() + " is a root, which stays");
  }
  requireEntry(entry);
  Key key(entry);
  entry.row->collection->erase(entry.owner.ptr(), key.at());
}

void put(const Target& target, const std::vector<std::string>& arguments) {
  refuseUnfitKeyOf(target);
  switch (target.kind) {
  case Target::attribute:
    if (arguments.size() != 1) {
      throw Failure(exitUsage, target.path() + " needs a value, of type " +
                                   std::string(target.row->value->name));
    }
    setValue(target, arguments[0]);
    break;
  case Target::collection:
    if (target.row->kind != AttrKind::ownKey) {
      notOne(target, "add");
    }
    writeEntry(target, valueOf(target, arguments));
    break;
  case Target::entry:
    if (target.row->kind == AttrKind::instantiating) {
      create(target, arguments);
    } else {
      writeEntry(target, valueOf(target, arguments));
    }
    break;
  case Target::entity:
    if (!arguments.empty()) {
      const Target entry = asEntry(target);
      if (entry.kind == Target::entity) {
        notOne(target, "set");
      }
      create(entry, arguments); // one that is there takes them over
    }
    break;
  case Target::top:
    notOne(target, "add");
  }
}

} // namespace Maintctl
