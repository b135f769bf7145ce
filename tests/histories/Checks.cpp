#include "AtRest.h"
#include "History.h"

/// What has to hold whenever everything has come to rest.
namespace Histories {

void History::broken(const std::string& why) const {
  throw Broken("epoch " + std::to_string(epochs_) + ": " + why);
}

void History::check() {
  checkLinks();
  checkMounts();
  checkModels();
  checkIdentity();
  checkEchoes();
}

void History::checkLinks() {
  for (unsigned hop = 0; hop < hops_.size(); ++hop) {
    const Simulation::Link& link = *hops_[hop].link;
    if (!link.failure().empty()) {
      broken("link " + std::to_string(hop) + " failed: " + link.failure().charPtr());
    }
    for (const End end : {End::first, End::second}) {
      if (const std::string wrong = unrest(*link.connection(end)); !wrong.empty()) {
        broken("link " + std::to_string(hop) + ", end " + std::to_string(place(end)) + ": " +
               wrong);
      }
      checkCounts(hop, end);
    }
  }
}

void History::checkCounts(unsigned hop, End end) {
  const Zel::NboAttrLog::Demuxer::Counts& counts =
      hops_[hop].link->connection(end)->demuxer()->counts();
  const Zel::NboAttrLog::Demuxer::Counts& expected = hops_[hop].expected[place(end)];
  const auto is = [&](const char* what, std::uint64_t counted, std::uint64_t wanted) {
    if (counted != wanted) {
      broken("link " + std::to_string(hop) + ", end " + std::to_string(place(end)) + ": " +
             std::to_string(counted) + " records with " + what + ", not " + std::to_string(wanted));
    }
  };
  is("unknown types", counts.unknownTypes, expected.unknownTypes);
  const auto passedOver = [](const Zel::NboAttrLog::Demuxer::Counts& of) {
    return of.unknownEntities + of.unknownAttributes + of.badValues;
  };
  if (!hops_[hop].hasWithdrawn) {
    is("unknown attributes", counts.unknownAttributes, expected.unknownAttributes);
    is("bad values", counts.badValues, expected.badValues);
  } else if (passedOver(counts) < passedOver(expected)) { // as some were for what has gone
    is("nothing of use", passedOver(counts), passedOver(expected));
  }
  // A model in the midst of a chain refuses what comes while its own mount is not live.
  if (!isOverSessions() || models_.size() == 2) {
    is("refused writes", counts.refused, 0);
  }
  if (!hops_[hop].hasWithdrawn && counts.unknownEntities < expected.unknownEntities) {
    is("unknown entities", counts.unknownEntities, expected.unknownEntities);
  }
  reached_.addIf(Branch::goneAddressed, counts.unknownEntities > expected.unknownEntities);
}

void History::checkMounts() {
  for (unsigned hop = 0; hop < hops_.size() && isOverSessions(); ++hop) {
    const Zel::Mounts::Members& mounts = hops_[hop].mounts->mounts();
    if (mounts.size() != models_[hop].roots()->entities().size()) {
      broken("link " + std::to_string(hop) + ": " + std::to_string(mounts.size()) + " mounts");
    }
    for (const auto& [name, mount] : mounts) {
      // Downstream of who may only read nobody writes.
      const bool mayWrite = std::none_of(hops_.begin(), hops_.begin() + hop + 1,
                                         [](const Hop& of) { return of.isReadOnly; });
      if (mount->state() != Zel::Mount::live || mount->isWritable() != mayWrite) {
        broken("link " + std::to_string(hop) + ": " + name.charPtr() + " is " +
               Zel::Mount::stateName(mount->state()));
      }
    }
  }
}

/// One of the roots is equal by the session's own word.
void History::checkDigest(unsigned hop) {
  if (!isOverSessions() || hops_[hop].mounts->mounts().empty()) {
    return;
  }
  const Zel::Mounts::Members& mounts = hops_[hop].mounts->mounts();
  const Zel::Name name = std::next(mounts.begin(), epochs_ % mounts.size())->first;
  auto result = Zel::Session::digestUnknown;
  hops_[hop].sessions[place(mirror(hops_[hop]))]->digestAsk(
      name, [&](Zel::Session::DigestResult answer) { result = answer; });
  Simulation::Link& link = *hops_[hop].link;
  link.wake(mirror(hops_[hop]));
  world_.random() = random_.fork();
  const bool isQuiet = world_.settle(link);
  if (isQuiet && !link.isUp()) {
    return; // it was to be cut after some more bytes
  }
  if (!isQuiet || result != Zel::Session::digestEqual) {
    broken("link " + std::to_string(hop) + ": digest of " + name.charPtr() + " has result " +
           std::to_string(result));
  }
}

void History::checkModels() {
  const std::string first = dump(*models_.front().roots());
  for (unsigned i = 1; i < models_.size(); ++i) {
    if (const std::string other = dump(*models_[i].roots()); other != first) {
      broken("models 0 and " + std::to_string(i) + " differ: " + difference(first, other));
    }
    if (!haveEqualDigests(*models_.front().roots(), *models_[i].roots())) {
      broken("models 0 and " + std::to_string(i) + " have different digests");
    }
  }
}

/// Entities that nobody has deleted are the same objects as before, in all models.
void History::checkIdentity() {
  for (const Model& model : models_) {
    std::unordered_map<Path, Zel::Entity*> now;
    forEntities(*model.roots(), [&](Zel::Entity& entity, Path path) { now[path] = &entity; });
    for (const auto& [path, entity] : model.known()) {
      if (deleted_.count(path) == 0 && now[path] != entity.ptr()) {
        broken("model " + std::to_string(model.number()) + ": another object in the place of " +
               std::string(tableOf(*entity).name) + " " + shown(path) + " " +
               entity->fullName().charPtr());
      }
    }
  }
}

/// Where only one model wrote, nothing came back to it.
void History::checkEchoes() {
  if (!onlyWriter_ || *onlyWriter_ > ownership_.lastOfAll()) {
    return;
  }
  for (unsigned i = 0; i < hops_.size(); ++i) {
    const Hop& hop = hops_[i];
    const End reader = i < *onlyWriter_ ? hop.exporter : mirror(hop);
    const std::uint64_t sent = hop.watch->changesSent(reader);
    const std::uint64_t expected = hop.sentBefore[place(reader)] + hop.strangers[place(reader)];
    if (sent != expected && !hop.hasRefused) {
      broken("link " + std::to_string(i) + ": " + std::to_string(sent - expected) +
             " records came back");
    }
  }
}

/// An end's adapters are those of the entities that it shares, and none of them is left in the
/// middle of anything.
void History::checkAdapters(unsigned hop, End end) {
  const Hop& own = hops_[hop];
  const unsigned number = end == own.exporter ? hop : hop + 1;
  if (const std::string wrong = unrestOfAdapters(*own.link, end, *models_[number].roots());
      !wrong.empty()) {
    broken("link " + std::to_string(hop) + ", end " + std::to_string(place(end)) + ": " + wrong);
  }
}

} // namespace Histories
