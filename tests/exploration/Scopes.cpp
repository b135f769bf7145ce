#include "Scopes.h"

#include <istream>
#include <optional>
#include <sstream>
#include <stdexcept>

namespace Exploration {

namespace {

/// A block of a scope as it stands.
struct Block {
  std::optional<Plot> plot;
  std::optional<unsigned> writes;
};

/// With up to so many more writes from those that each model chooses from, of this model or a later
/// one.
void choose(const Plot& plot, const Plot& choices, unsigned writes, std::size_t from,
            std::vector<Plot>& to) {
  to.push_back(plot);
  for (std::size_t model = from; writes != 0 && model < plot.models(); ++model) {
    for (const Write& what : choices.programs[model]) {
      Plot more = plot;
      more.programs[model].push_back(what);
      choose(more, choices, writes - 1, model, to);
    }
  }
}

/// With the programs as they are, each up to any of its writes.
void shorten(const Plot& plot, std::size_t model, std::vector<Plot>& to) {
  if (model == plot.models()) {
    to.push_back(plot);
    return;
  }
  for (Plot shorter = plot;; shorter.programs[model].pop_back()) {
    shorten(shorter, model + 1, to);
    if (shorter.programs[model].empty()) {
      return;
    }
  }
}

/// With each link cut up to as often.
std::vector<Plot> withCuts(const Plot& plot) {
  std::vector<Plot> plots{plot};
  for (std::size_t link = 0; link < plot.links.size(); ++link) {
    for (std::size_t i = plots.size(); i-- > 0;) {
      for (Plot fewer = plots[i]; fewer.cuts[link] != 0;) {
        --fewer.cuts[link];
        plots.push_back(fewer);
      }
    }
  }
  return plots;
}

void lineRead(Block& block, const std::string& line) {
  std::istringstream in(line);
  std::string what;
  in >> what;
  if (what == "start") {
    block.plot = startOf(line.substr(what.size() + 1));
    return;
  }
  if (line == "anew last" && block.plot) {
    block.plot->isAnewLast = true;
    return;
  }
  if (what == "writes") {
    in >> block.writes.emplace();
  } else if (what == "cuts" && block.plot) {
    for (unsigned& cuts : block.plot->cuts) {
      in >> cuts;
    }
  } else if (what.size() == 1 && block.plot && what[0] >= 'A' &&
             static_cast<std::size_t>(what[0] - 'A') < block.plot->models()) {
    std::vector<Write>& program = block.plot->programs[static_cast<std::size_t>(what[0] - 'A')];
    for (Write write; in >> write;) {
      program.push_back(write);
    }
    return;
  } else {
    throw std::invalid_argument("no line of a scope: " + line);
  }
  if (!in || !(in >> std::ws).eof()) {
    throw std::invalid_argument("no numbers: " + line);
  }
}

void blockEnd(Block& block, std::vector<Plot>& to) {
  if (!block.plot) {
    return;
  }
  for (const Plot& plot : withCuts(*block.plot)) {
    if (block.writes) {
      Plot bare = plot;
      bare.programs.assign(plot.models(), {});
      choose(bare, plot, *block.writes, 0, to);
    } else {
      shorten(plot, 0, to);
    }
  }
  block = {};
}

} // namespace

std::vector<Plot> scopeOf(std::istream& text) {
  std::vector<Plot> plots;
  Block block;
  for (std::string line; std::getline(text, line);) {
    if (line.empty()) {
      blockEnd(block, plots);
    } else if (line[0] != '#') {
      lineRead(block, line);
    }
  }
  blockEnd(block, plots);
  return plots;
}

} // namespace Exploration
