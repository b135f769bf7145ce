#include "Step.h"

#include <algorithm>
#include <sstream>
#include <stdexcept>

namespace Exploration {

namespace {

char nameOf(unsigned model) { return static_cast<char>('A' + model); }

} // namespace

unsigned footprint(const Step& step) noexcept {
  return (step.kind == Step::Kind::reconnect ? 3U : 1U) << step.model;
}

std::string text(const Step& step) {
  const unsigned other = step.link == step.model ? step.model + 1 : step.link;
  const std::string at(1, nameOf(step.model));
  const std::string there(1, nameOf(other));
  switch (step.kind) {
  case Step::Kind::write:
    return at + "." + step.what;
  case Step::Kind::receive:
    return there + ">" + at;
  case Step::Kind::flow:
    return at + "~" + there;
  case Step::Kind::hear:
    return at + "!" + there;
  case Step::Kind::reconnect:
    break;
  }
  return at + "=" + there;
}

Step stepOf(const std::string& word) {
  const auto isModel = [](char letter) { return letter >= 'A' && letter <= 'Z'; };
  if (word.size() > 2 && isModel(word[0]) && word[1] == '.') {
    return {Step::Kind::write, static_cast<unsigned>(word[0] - 'A'), 0, word.substr(2)};
  }
  if (word.size() == 3 && isModel(word[0]) && isModel(word[2])) {
    auto at = static_cast<unsigned>(word[0] - 'A');
    auto there = static_cast<unsigned>(word[2] - 'A');
    const unsigned link = std::min(at, there);
    if (std::max(at, there) == link + 1) {
      switch (word[1]) {
      case '>':
        return {Step::Kind::receive, there, link, {}};
      case '~':
        return {Step::Kind::flow, at, link, {}};
      case '!':
        return {Step::Kind::hear, at, link, {}};
      case '=':
        return {Step::Kind::reconnect, link, link, {}};
      default:
        break;
      }
    }
  }
  throw std::invalid_argument("no step: " + word);
}

std::string text(const Steps& steps) {
  std::string all;
  for (const Step& step : steps) {
    all += (all.empty() ? "" : " ") + text(step);
  }
  return all;
}

Steps stepsOf(const std::string& words) {
  Steps steps;
  std::istringstream in(words);
  for (std::string word; in >> word;) {
    steps.push_back(stepOf(word));
  }
  return steps;
}

} // namespace Exploration
