#pragma once

#include <Zel/Demuxer>
#include <Zel/TypeTable>

#include <cstdint>
#include <functional>
#include <string>

/// The entities of a model, walked by the rows of their types.
namespace Histories {

/// Stands for an entity by its way from the root: the same in all models.
using Path = std::uint64_t;

Path rootPath(const Zel::Name& root);
Path memberPath(Path directory, Zel::AttributeId collection, std::uint64_t key);
/// Its last digits, which tell entities apart for a reader.
std::string shown(Path path);
/// A number for a value.
std::uint64_t valueHash(const Zel::ValueRecord& record, const void* value);

const Zel::TypeTable& tableOf(const Zel::Entity& entity);

/// All rows that flow, those of a base first.
void forFlowingRows(const Zel::TypeTable& table,
                    const std::function<void(const Zel::AttrRow&)>& visit);

/// The entity and all those below it.
void forEntities(Zel::Entity& entity, Path path,
                 const std::function<void(Zel::Entity&, Path)>& visit);
void forEntities(const Zel::Dir& roots, const std::function<void(Zel::Entity&, Path)>& visit);

/// The same without their paths, which cost the most.
void forEntities(const Zel::Dir& roots, const std::function<void(Zel::Entity&)>& visit);

/// Everything that mirrors are to agree on, as text: a line for each value, in the order of the
/// collections. Long texts stand as their length and a hash.
std::string dump(const Zel::Dir& roots);

/// The first line in which two dumps differ, of either.
std::string difference(const std::string& a, const std::string& b);

/// How many entries of the entity's collections are marked for deletion.
std::size_t markedEntries(const Zel::Entity& entity);

} // namespace Histories
