#include "Tree.h"

#include <simulation/Random.h>

#include <Zel/ZelType>
#include <text/Value.h>

#include <algorithm>
#include <sstream>

namespace Histories {

using Simulation::Random;

namespace {

std::uint64_t bytesHash(std::string_view bytes) {
  std::uint64_t hash = 0xcbf29ce484222325;
  for (const char byte : bytes) {
    hash = (hash ^ static_cast<unsigned char>(byte)) * 0x100000001b3;
  }
  return Random::mixed(hash);
}

std::string valueText(const Zel::ValueRecord& record, const void* value) {
  constexpr std::size_t most = 200;
  const Zel::String8 text = Zel::textOf(record, value);
  if (text.length() <= most) {
    return std::string(text.view());
  }
  return std::to_string(text.length()) + " bytes, hash " + std::to_string(bytesHash(text.view()));
}

Zel::CollectionPosition positionOf(const Zel::Entity& entity, const Zel::AttrRow& row) {
  const Zel::IterationOps& ops = row.collection->iteration;
  return Zel::CollectionPosition(ops, [&](void* to) { ops.first(to, &entity); });
}

/// Each line begins with the number under which the entity is told of elsewhere.
void dump(const Zel::Entity& entity, Path path, const std::string& name, std::string& to) {
  const auto line = [&](const std::string& what, const std::string& value) {
    to += shown(path) + " " + name + "/" + what + " = " + value + "\n";
  };
  forFlowingRows(tableOf(entity), [&](const Zel::AttrRow& row) {
    const std::string attribute(row.name);
    if (!row.isCollection()) {
      Zel::ValueSlot value(*row.value, [&](void* at) { row.read(&entity, at); });
      line(attribute, valueText(*row.value, value.at()));
      return;
    }
    for (Zel::CollectionPosition at = positionOf(entity, row); at; at.advance()) {
      Zel::ValueSlot key(*row.key, [&](void* slot) { at.key(slot); });
      const std::string member = attribute + "[" + valueText(*row.key, key.at()) + "]";
      if (row.kind == Zel::AttrKind::instantiating) {
        line(member, std::string(tableOf(static_cast<Zel::Entity&>(*at.member())).name));
        dump(static_cast<Zel::Entity&>(*at.member()),
             memberPath(path, row.id, valueHash(*row.key, key.at())), name + "/" + member, to);
      } else {
        line(member, valueText(*row.value, at.value()));
      }
    }
  });
}

} // namespace

std::string shown(Path path) { return std::to_string(path % 10000); }

Path rootPath(const Zel::Name& root) { return bytesHash(root.view()); }
Path memberPath(Path directory, Zel::AttributeId collection, std::uint64_t key) {
  return Random::mixed(Random::mixed(directory + static_cast<std::uint64_t>(collection)) + key);
}
std::uint64_t valueHash(const Zel::ValueRecord& record, const void* value) {
  return bytesHash(Zel::textOf(record, value).view());
}

const Zel::TypeTable& tableOf(const Zel::Entity& entity) { return *entity.fwkType()->table(); }

void forFlowingRows(const Zel::TypeTable& table,
                    const std::function<void(const Zel::AttrRow&)>& visit) {
  if (table.base != nullptr) {
    forFlowingRows(table.base(), visit);
  }
  for (const Zel::AttrRow& row : table.rows) {
    if (row.flows()) {
      visit(row);
    }
  }
}

void forEntities(Zel::Entity& entity, Path path,
                 const std::function<void(Zel::Entity&, Path)>& visit) {
  visit(entity, path);
  forFlowingRows(tableOf(entity), [&](const Zel::AttrRow& row) {
    if (row.kind != Zel::AttrKind::instantiating) {
      return;
    }
    for (Zel::CollectionPosition at = positionOf(entity, row); at; at.advance()) {
      Zel::ValueSlot key(*row.key, [&](void* slot) { at.key(slot); });
      forEntities(static_cast<Zel::Entity&>(*at.member()),
                  memberPath(path, row.id, valueHash(*row.key, key.at())), visit);
    }
  });
}

void forEntities(const Zel::Dir& roots, const std::function<void(Zel::Entity&, Path)>& visit) {
  for (const auto& [name, root] : roots.entities()) {
    forEntities(*root, rootPath(name), visit);
  }
}

namespace {

void forEntities(Zel::Entity& entity, const std::function<void(Zel::Entity&)>& visit) {
  visit(entity);
  forFlowingRows(tableOf(entity), [&](const Zel::AttrRow& row) {
    if (row.kind == Zel::AttrKind::instantiating) {
      for (Zel::CollectionPosition at = positionOf(entity, row); at; at.advance()) {
        forEntities(static_cast<Zel::Entity&>(*at.member()), visit);
      }
    }
  });
}

} // namespace

void forEntities(const Zel::Dir& roots, const std::function<void(Zel::Entity&)>& visit) {
  for (const auto& [name, root] : roots.entities()) {
    forEntities(*root, visit);
  }
}

std::string dump(const Zel::Dir& roots) {
  std::string text;
  for (const auto& [name, root] : roots.entities()) {
    text += "/" + std::string(name.view()) + " = " + std::string(tableOf(*root).name) + "\n";
    dump(*root, rootPath(name), "/" + std::string(name.view()), text);
  }
  return text;
}

std::string difference(const std::string& a, const std::string& b) {
  std::istringstream linesA(a);
  std::istringstream linesB(b);
  for (;;) {
    std::string lineA;
    std::string lineB;
    const bool hasA = static_cast<bool>(std::getline(linesA, lineA));
    const bool hasB = static_cast<bool>(std::getline(linesB, lineB));
    if (!hasA && !hasB) {
      return {};
    }
    if (lineA != lineB || hasA != hasB) {
      const auto shown = [](std::string& line) {
        std::replace_if(
            line.begin(), line.end(), [](char byte) { return byte < ' ' || byte > '~'; }, '?');
      };
      shown(lineA);
      shown(lineB);
      return "\n  " + (hasA ? lineA : "nothing") + "\n  " + (hasB ? lineB : "nothing");
    }
  }
}

std::size_t markedEntries(const Zel::Entity& entity) {
  std::size_t marked = 0;
  forFlowingRows(tableOf(entity), [&](const Zel::AttrRow& row) {
    if (!row.isCollection()) {
      return;
    }
    for (Zel::CollectionPosition at = positionOf(entity, row); at; at.advance()) {
      marked += at.entry()->zelMarkedForDeletion() ? 1 : 0;
    }
  });
  return marked;
}

} // namespace Histories
