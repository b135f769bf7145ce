#include "Scope.h"

#include "Failure.h"
#include "Nearest.h"
#include "Tree.h"
#include "Values.h"
#include "Words.h"

#include <Zel/ZelType>

namespace Maintctl {

namespace {

using Zel::AttrKind;
using Zel::AttrRow;
using Zel::TypeTable;

std::vector<std::string_view> segmentsOf(std::string_view path) {
  std::vector<std::string_view> segments;
  while (!path.empty()) {
    path.remove_prefix(1);
    const std::size_t end = std::min(path.find('/'), path.size());
    segments.push_back(path.substr(0, end));
    path.remove_prefix(end);
  }
  if (!segments.empty() && segments.back().empty()) {
    segments.pop_back(); // the path ends in "/"
  }
  return segments;
}

/// The collection that makes members, if there is exactly one; else null.
const AttrRow* onlyMembers(const std::vector<const AttrRow*>& rows) {
  const AttrRow* found = nullptr;
  for (const AttrRow* const row : rows) {
    if (row->kind == AttrKind::instantiating) {
      if (found != nullptr) {
        return nullptr;
      }
      found = row;
    }
  }
  return found;
}

std::string keyOf(const AttrRow& row, const std::string& segment, const std::string& path) {
  Zel::ValueSlot key(*row.key);
  readKey(segment, *row.key, key.at(), "the key in " + path + "/" + escaped(segment));
  return segmentOf(*row.key, key.at());
}

[[noreturn]] void noAttribute(const std::string& segment, const std::string& path,
                              const std::vector<const AttrRow*>& rows) {
  std::vector<std::string> names;
  names.reserve(rows.size());
  for (const AttrRow* const row : rows) {
    names.emplace_back(row->name);
  }
  throw Failure(exitNotFound, "no attribute " + printable(segment) + " of " + path +
                                  hint(segment, names, "it has", "'ls " + path + "' lists them"));
}

} // namespace

/// Goes on from the root, below an entity of a type at each step.
void Scope::follow(const TypeTable* table, const std::vector<std::string_view>& segments) {
  std::size_t at = 1;
  while (at < segments.size()) {
    const std::vector<const AttrRow*> rows = shownRows(*table);
    row_ = nullptr;
    for (const AttrRow* const one : rows) {
      row_ = one->name == segments[at] ? one : row_;
    }
    if (row_ != nullptr) {
      ++at;
    } else if (row_ = onlyMembers(rows); row_ == nullptr) { // else a key, its collection left out
      noAttribute(std::string(segments[at]), path_, rows);
    }
    path_.append("/").append(row_->name);
    hasKey_ = at < segments.size();
    if (!hasKey_) {
      return;
    }
    if (!row_->isCollection()) {
      throw Failure(exitNotFound, "nothing is below " + path_ + ", which is one value");
    }
    std::string segment(segments[at++]);
    const bool hasMembers = row_->kind == AttrKind::instantiating;
    while (!hasMembers && at < segments.size()) { // one key, which holds "/"
      segment.append("%2F").append(segments[at++]);
    }
    const std::string key = keyOf(*row_, segment, path_);
    path_.append("/").append(key);
    table = hasMembers ? &row_->collection->memberTable() : nullptr;
  }
}

Scope::Scope(Device& device, const std::string& typed) {
  const std::string path = unquoted(typed);
  if (!path.starts_with('/')) {
    throw Failure(exitNotFound, "a path begins with /, got " + printable(path) +
                                    (path.empty() ? "" : ", did you mean /" + path + "?"));
  }
  const std::vector<std::string_view> segments = segmentsOf(path);
  if (segments.empty()) {
    return;
  }
  const std::string first(segments[0]);
  readKey(first, Zel::valueRecord<Zel::Name>, &root_, "a root");
  std::vector<std::string> names;
  for (const auto& [name, type] : device.roots()) {
    names.push_back(segmentOf(Zel::valueRecord<Zel::Name>, &name));
    if (name == root_) {
      const Zel::ZelType* const known = Zel::ZelType::type(type.view());
      if (known == nullptr) {
        throw Failure(exitNotFound, "/" + first +
                                        " is of a type that is not known here, see --types: " +
                                        printable(type.view()));
      }
      path_ += names.back(); // behind the "/"
      follow(known->table(), segments);
      return;
    }
  }
  throw Failure(exitNotFound, "no root " + printable(first) +
                                  hint(first, names, "there are", "'ls /' lists all"));
}

} // namespace Maintctl
