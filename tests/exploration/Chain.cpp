#include "Chain.h"

#include "histories/AtRest.h"

#include <Zel/Exception>

#include <algorithm>

namespace Exploration {

using Simulation::Hand;
using Simulation::Link;

namespace {

constexpr double now = 100; // of no matter, as nobody waits for a time

Zel::ConnectionLimits smallRings() {
  Zel::ConnectionLimits limits;
  limits.outCapacity = limits.inCapacity = Zel::ConnectionLimits::smallestRing;
  return limits;
}

std::string nameOf(unsigned link, Link::End end) {
  const char at = static_cast<char>('A' + link + (end == Link::End::second ? 1 : 0));
  const char there = static_cast<char>('A' + link + (end == Link::End::second ? 0 : 1));
  return std::string(1, at) + "'s end to " + there;
}

} // namespace

Chain::Chain(const Plot& plot) : plot_(plot), models_(plot.models()), hops_(plot.links.size()) {
  for (const Zel::Ptr<Zel::Entity>& root : makeRoots(plot)) {
    models_[0].roots->entityIs(root);
  }
  for (const Write& what : plot.before) {
    Exploration::write(*models_[0].roots, what);
  }
  for (unsigned i = 0; i < hops_.size(); ++i) {
    Hop& hop = hops_[i];
    hop.exports = Zel::makeObject<Zel::Exports>();
    hop.mounts = Zel::makeObject<Zel::Mounts>(models_[i + 1].roots);
    hop.mounts->allIs(plot.links[i]);
    rootsExport(i);
    hop.link =
        std::make_unique<Link>(Link::Traits(), [this, i](End end) { return peerIs(i, end); });
  }
  for (unsigned i = 0; i < models_.size(); ++i) {
    programRuns(i);
  }
  if (plot.start != Plot::Start::fresh) {
    settle();
    check();
  }
  for (Model& model : models_) {
    Histories::forEntities(*model.roots, [&](Zel::Entity& entity, Histories::Path path) {
      model.known.emplace(path, Zel::Ptr<Zel::Entity>(&entity));
    });
  }
  for (const std::string& word : plot.taken) {
    const Step step = stepOf(word);
    hops_[step.link].cutsLeft = 1; // of which there may be none
    take(step);
    settle();
  }
  for (Model& model : models_) {
    model.written = 0;
  }
  for (unsigned i = 0; i < hops_.size(); ++i) {
    hops_[i].cutsLeft = plot.cuts[i];
  }
}

Chain::~Chain() {
  for (Hop& hop : hops_) {
    hop.link = nullptr;
  }
}

Link::Peer Chain::peerIs(unsigned link, End end) {
  return plot_.over == Plot::Over::sessions ? sessionIs(link, end) : connectionIs(link, end);
}

Link::Peer Chain::sessionIs(unsigned link, End end) {
  Hop& hop = hops_[link];
  const bool isExporter = end == End::first;
  Zel::SessionOptions options;
  options.name = isExporter ? "exporter" : "mirror";
  options.limits = smallRings();
  options.helloTime = options.digestTime = Zel::Session::never;
  const auto session = Zel::makeObject<Zel::Session>(
      end, options, isExporter ? hop.exports : nullptr, isExporter ? nullptr : hop.mounts);
  (isExporter ? hop.exportersSession : hop.mirrorsSession) = session;
  return {session->connection(),
          [session](std::size_t budget) { return session->service(now, budget); }};
}

Link::Peer Chain::connectionIs(unsigned link, End end) {
  const bool isReadOnly = plot_.links[link] == Zel::accessReadOnly;
  Zel::StreamAdapter::Zel_BitSet flags;
  flags.bitsIs(end == End::first ? Zel::StreamAdapter::flagRemoteReadOnly
                                 : Zel::StreamAdapter::flagReadOnly,
               isReadOnly);
  Zel::Ptr<Zel::NboAttrLog::MountPolicy> policy;
  if (end == End::second) {
    policy = Zel::makeObject<Zel::NboAttrLog::DirMounts>(models_[link + 1].roots, flags);
  }
  const auto made = Zel::makeObject<Zel::Connection>(end, "peer", smallRings(), policy);
  if (end == End::first) {
    for (const auto& [name, root] : models_[link].roots->entities()) {
      made->demuxer()->exportIs(root, flags);
    }
  }
  return {made};
}

/// A model passes on what it mirrors, as soon as it does. Whether there was anything new.
bool Chain::rootsExport(unsigned model) {
  if (model >= hops_.size()) {
    return false;
  }
  Hop& hop = hops_[model];
  bool isNew = false;
  for (const auto& [name, root] : models_[model].roots->entities()) {
    if (plot_.over == Plot::Over::sessions) {
      if (hop.exports->roots().count(name) == 0) {
        hop.exports->entityIs(root, plot_.links[model]);
        isNew = true;
      }
    } else if (hop.link && hop.link->connection(End::first)->isUp()) {
      const Zel::Connection& connection = *hop.link->connection(End::first);
      if (!root->zelNboAttrLogSa(Zel::Ptr<const Zel::NboAttrLog::Out>(connection.out()))) {
        Zel::StreamAdapter::Zel_BitSet flags;
        flags.bitsIs(Zel::StreamAdapter::flagRemoteReadOnly,
                     plot_.links[model] == Zel::accessReadOnly);
        connection.demuxer()->exportIs(root, flags);
        isNew = true;
      }
    }
  }
  return isNew;
}

/// What a program does whenever anything has happened: its sessions get time, and what they have
/// said is sent.
void Chain::programRuns(unsigned model) {
  rootsExport(model);
  for (unsigned link = model == 0 ? 0 : model - 1; link <= model && link < hops_.size(); ++link) {
    const Hand hand(*hops_[link].link);
    const End end = endOf(model, link);
    hand.service(end, 0);
    hand.send(end);
    if (!hops_[link].link->failure().empty()) {
      throw Broken(nameOf(link, end) + " fails: " + hops_[link].link->failure().charPtr());
    }
  }
}

void Chain::stepsOfEnd(unsigned model, unsigned link, Steps& to) const {
  const Hop& hop = hops_[link];
  const End end = endOf(model, link);
  if (!hop.link->connection(end)->isUp()) {
    return;
  }
  if (Hand(*hop.link).next(end) != 0) {
    to.push_back({Step::Kind::receive, model, link, {}});
  }
  if (hop.link->connection(end)->demuxer()->scheduled() != 0) {
    to.push_back({Step::Kind::flow, model, link, {}});
  }
  if (hop.cutsLeft != 0 || !hop.link->isUp()) {
    to.push_back({Step::Kind::hear, model, link, {}});
  }
}

Steps Chain::enabled() const {
  Steps steps;
  for (unsigned model = 0; model < models_.size(); ++model) {
    if (model != 0) {
      stepsOfEnd(model, model - 1, steps);
    }
    if (model < hops_.size()) {
      stepsOfEnd(model, model, steps);
      if (hops_[model].link->isDown() && (!plot_.isAnewLast || isFinishing_)) {
        steps.push_back({Step::Kind::reconnect, model, model, {}});
      }
    }
    if (models_[model].written < plot_.programs[model].size()) {
      steps.push_back({Step::Kind::write, model, 0, plot_.programs[model][models_[model].written]});
    }
  }
  return steps;
}

bool Chain::awaits(unsigned model, unsigned link) const {
  const Hop& hop = hops_[link];
  const End end = endOf(model, link);
  return hop.link->isUp() ? Hand(*hop.link).next(end) == 0
                          : !hop.link->connection(end)->isUp() && !hop.link->isDown();
}

void Chain::take(const Step& step) try {
  const Hand hand(*hops_[step.link].link);
  const End end = endOf(step.model, step.link);
  switch (step.kind) {
  case Step::Kind::write:
    write(step);
    break;
  case Step::Kind::receive:
    hand.receive(end);
    break;
  case Step::Kind::flow:
    hand.service(end, 1);
    break;
  case Step::Kind::hear:
    hops_[step.link].cutsLeft -= hops_[step.link].link->isUp() ? 1 : 0;
    hand.hear(end);
    break;
  case Step::Kind::reconnect:
    reconnect(step.link);
    break;
  }
  programRuns(step.model);
} catch (const Zel::Exception& failure) {
  throw Broken(text(step) + " throws: " + failure.what());
}

void Chain::reconnect(unsigned link) {
  const Hop& hop = hops_[link];
  hop.link->reconnect();
  programRuns(link + 1);
  programRuns(link);
  if (plot_.start != Plot::Start::live || plot_.over != Plot::Over::sessions) {
    return;
  }
  // Until the exporter has granted what there is, which is before it tells of any of it.
  const auto isGranted = [&] {
    const Zel::Exports::Roots& names = hop.exports->roots();
    return std::all_of(names.begin(), names.end(), [&](const auto& member) {
      return hop.exportersSession->exported(member.first);
    });
  };
  const Hand hand(*hop.link);
  while (!isGranted()) {
    const End to = hand.next(End::second) != 0 ? End::second : End::first;
    hand.receive(to);
    programRuns(to == End::first ? link : link + 1);
  }
}

void Chain::write(const Step& step) {
  Model& model = models_[step.model];
  ++model.written;
  const std::string& what = step.what;
  const std::string of = what.substr(what.find(':') + 1);
  for (const std::string asks : {"walk:", "mute:", "unmute:"}) {
    if (what == asks + of) {
      forAdapters(step.model, Zel::Name(of), [&](Zel::Entity::ZelNboAttrLogSa& adapter) {
        if (asks == "walk:") {
          isSilent_ = false;
          adapter.doThis();
        } else {
          muted_ += asks == "mute:" ? 1 : -1;
          adapter.flagsIs(Zel::StreamAdapter::flagMuted, asks == "mute:");
        }
      });
      return;
    }
  }
  isSilent_ = isSilent_ || muted_ != 0;
  if (what.rfind("del:", 0) == 0) {
    deleted_.insert(of);
  }
  const bool isRefusing = mayNotWrite(step.model);
  const std::string before = isRefusing ? Histories::dump(*model.roots) : "";
  try {
    Exploration::write(*model.roots, what);
  } catch (const Zel::ReadOnlyException&) {
    ++refused_;
    return;
  }
  if (isRefusing && Histories::dump(*model.roots) != before) {
    throw Broken(text(step) + " is not refused, and changes a mirror that may not be written to");
  }
}

/// Whether none of what a model mirrors may be written to.
bool Chain::mayNotWrite(unsigned model) const {
  if (model == 0 || plot_.over != Plot::Over::sessions) {
    return false;
  }
  const Zel::Mounts::Members& mounts = hops_[model - 1].mounts->mounts();
  return std::none_of(mounts.begin(), mounts.end(),
                      [](const auto& member) { return member.second->isWritable(); });
}

void Chain::forAdapters(unsigned model, const Zel::Name& name,
                        const std::function<void(Zel::Entity::ZelNboAttrLogSa&)>& visit) const {
  const Zel::Ptr<Zel::Entity> root = models_[model].roots->entity(name);
  for (unsigned link = model == 0 ? 0 : model - 1; root && link <= model && link < hops_.size();
       ++link) {
    const Zel::Connection& connection = *hops_[link].link->connection(endOf(model, link));
    if (const auto adapter =
            root->zelNboAttrLogSa(Zel::Ptr<const Zel::NboAttrLog::Out>(connection.out()))) {
      visit(*adapter);
    }
  }
}

/// Brings everything to rest, in one of the ways.
void Chain::settle() {
  for (bool more = true; more;) {
    more = false;
    for (const Step& step : enabled()) {
      if (step.kind == Step::Kind::receive || step.kind == Step::Kind::flow) {
        take(step);
        more = true;
        break;
      }
    }
  }
}

void Chain::finish() {
  isFinishing_ = true;
  while (!isAtRest()) {
    settle();
    for (const Step& step : enabled()) {
      const bool isOfCut = step.kind == Step::Kind::hear && !hops_[step.link].link->isUp();
      if (isOfCut || step.kind == Step::Kind::reconnect) {
        take(step);
        break;
      }
    }
    if (muted_ != 0 || isSilent_) {
      return; // by a program that goes no further
    }
  }
}

bool Chain::isAtRest() const {
  const bool areUp =
      std::all_of(hops_.begin(), hops_.end(), [](const Hop& hop) { return hop.link->isUp(); });
  const Steps steps = enabled();
  return areUp && muted_ == 0 && !isSilent_ &&
         std::all_of(steps.begin(), steps.end(), [](const Step& step) {
           return step.kind == Step::Kind::write || step.kind == Step::Kind::hear;
         });
}

void Chain::check() const {
  for (unsigned link = 0; link < hops_.size(); ++link) {
    for (const End end : {End::first, End::second}) {
      if (const std::string wrong = Histories::unrest(*hops_[link].link->connection(end));
          !wrong.empty()) {
        throw Broken(nameOf(link, end) + ": " + wrong);
      }
    }
    for (const auto& [name, mount] : hops_[link].mounts->mounts()) {
      // Downstream of who may only read nobody writes.
      const auto upTo = plot_.links.begin() + link + 1;
      const bool mayWrite = std::all_of(plot_.links.begin(), upTo, [](Zel::Access access) {
        return access == Zel::accessReadWrite;
      });
      if (mount->state() != Zel::Mount::live || mount->isWritable() != mayWrite) {
        throw Broken(nameOf(link, End::second) + ": " + name.charPtr() + " is " +
                     Zel::Mount::stateName(mount->state()));
      }
    }
  }
  for (unsigned i = 1; i < models_.size(); ++i) {
    if (!Histories::haveEqualDigests(*models_[0].roots, *models_[i].roots)) {
      throw Broken("A and " + std::string(1, static_cast<char>('A' + i)) + " differ: " +
                   Histories::difference(Histories::dump(*models_[0].roots),
                                         Histories::dump(*models_[i].roots)));
    }
  }
  for (unsigned link = 0; link < hops_.size(); ++link) {
    for (const End end : {End::first, End::second}) {
      const unsigned model = end == End::first ? link : link + 1;
      if (const std::string wrong =
              Histories::unrestOfAdapters(*hops_[link].link, end, *models_[model].roots);
          !wrong.empty()) {
        throw Broken(nameOf(link, end) + ": " + wrong);
      }
    }
  }
  checkIdentity();
}

/// What nobody has deleted is the same object as at the start, in all models.
void Chain::checkIdentity() const {
  for (const Model& model : models_) {
    std::unordered_map<Histories::Path, Zel::Entity*> there;
    Histories::forEntities(
        *model.roots, [&](Zel::Entity& entity, Histories::Path path) { there[path] = &entity; });
    for (const auto& [path, entity] : model.known) {
      const std::string name(entity->name().view());
      if (deleted_.count(name) == 0 && there[path] != entity.ptr()) {
        throw Broken("another object in the place of " + name);
      }
    }
  }
}

void Chain::checkAtEnd() {
  check();
  const std::string first = dump();
  for (unsigned i = 1; i < models_.size(); ++i) {
    if (const std::string other = Histories::dump(*models_[i].roots); other != first) {
      throw Broken("A and " + std::string(1, static_cast<char>('A' + i)) +
                   " differ: " + Histories::difference(first, other));
    }
  }
  for (unsigned link = 0; link < hops_.size() && plot_.over == Plot::Over::sessions; ++link) {
    for (const auto& [name, mount] : hops_[link].mounts->mounts()) {
      auto result = Zel::Session::digestUnknown;
      hops_[link].mirrorsSession->digestAsk(
          name, [&](Zel::Session::DigestResult answer) { result = answer; });
      programRuns(link + 1);
      settle();
      if (result != Zel::Session::digestEqual) {
        throw Broken(nameOf(link, End::second) + ": digest of " + name.charPtr() + " has result " +
                     std::to_string(result));
      }
    }
  }
}

std::string Chain::dump() const { return Histories::dump(*models_[0].roots); }

} // namespace Exploration
