#include "Scopes.h"

#include <algorithm>

namespace Exploration {

namespace {

using Programs = std::vector<std::vector<Write>>;

Plot plotOf(const std::string& start, Programs programs, std::vector<unsigned> cuts) {
  Plot plot = startOf(start);
  programs.resize(plot.models());
  cuts.resize(plot.links.size());
  plot.programs = std::move(programs);
  plot.cuts = std::move(cuts);
  return plot;
}

/// All ways in which programs make up to so many writes out of those that each may make: in each
/// order at each model, the same one twice included.
void fill(const Plot& plot, const Programs& choices, unsigned writes, std::size_t from,
          std::vector<Plot>& to) {
  to.push_back(plot);
  for (std::size_t model = from; writes != 0 && model < plot.models(); ++model) {
    for (const Write& what : choices[model]) {
      Plot more = plot;
      more.programs[model].push_back(what);
      fill(more, choices, writes - 1, model, to);
    }
  }
}

/// All that there are of up to so many writes and cuts.
std::vector<Plot> plotsOf(const std::string& start, Programs choices, unsigned writes,
                          const std::vector<unsigned>& cuts) {
  std::vector<Plot> plots;
  std::vector<Plot> bare{plotOf(start, {}, {})};
  for (std::size_t link = 0; link < cuts.size(); ++link) {
    std::vector<Plot> more;
    for (const Plot& plot : bare) {
      for (unsigned i = 0; i <= cuts[link]; ++i) {
        more.push_back(plot);
        more.back().cuts[link] = i;
      }
    }
    bare = std::move(more);
  }
  choices.resize(bare.front().models());
  for (const Plot& plot : bare) {
    fill(plot, choices, writes, 0, plots);
  }
  return plots;
}

std::vector<Plot> operator+(std::vector<Plot> some, const std::vector<Plot>& others) {
  some.insert(some.end(), others.begin(), others.end());
  return some;
}

} // namespace

const std::vector<Scope>& scopes() {
  static const std::vector<Scope> all = {
      {"smallest", "two models, one write, one cut",
       plotsOf("sessions live rw -", {{"make:a"}}, 1, {1}) +
           plotsOf("sessions live rw -", {{}, {"make:a"}}, 1, {1})},
      {"writes", "two models, two writes of each, no cut",
       plotsOf("sessions live rw make:a",
               {{"urge:a:1", "make:b", "item:a:p:1"}, {"item:a:q:1", "make:c", "item:c:p:1"}}, 3,
               {})},
      {"two", "two models, two writes, one cut",
       plotsOf("sessions live rw make:a",
               {{"urge:a:1", "make:b", "item:a:p:1"}, {"item:a:q:1", "make:c", "item:c:p:1"}}, 2,
               {1})},
      {"three", "three models, one write, a cut",
       plotsOf("sessions live rw,rw make:a", {{"urge:a:1"}, {}, {"item:a:q:1"}}, 1, {1})},
      {"three2", "three models, two writes, a cut",
       plotsOf("sessions live rw,rw make:a", {{"urge:a:1"}, {}, {"item:a:q:1", "make:c"}}, 2, {1})},
  };
  return all;
}

const Scope* scopeOf(const std::string& name) {
  const auto at = std::find_if(scopes().begin(), scopes().end(),
                               [&](const Scope& scope) { return scope.name == name; });
  return at != scopes().end() ? &*at : nullptr;
}

} // namespace Exploration
