#include "Plot.h"

#include <foreign/model/Order.h>
#include <foreign/model/Rack.h>
#include <model/Profile/DefaultProfile.h>

#include <algorithm>
#include <sstream>
#include <stdexcept>

namespace Exploration {

using Foreign::Order;
using Foreign::OrderDir;
using Foreign::Rack;
using Maintenance::Profile::DefaultProfile;
using Zel::Name;
using Zel::Ptr;
using Zel::String8;

namespace {

const std::string startNames[] = {"live", "opened", "fresh"};

std::vector<std::string> split(const std::string& text, char at) {
  std::vector<std::string> parts;
  std::istringstream in(text);
  for (std::string part; std::getline(in, part, at);) {
    parts.push_back(part);
  }
  return parts;
}

template <class Parts, class Text>
std::string joined(const Parts& parts, const Text& text) {
  std::string all;
  for (const auto& part : parts) {
    all += (all.empty() ? "" : ",") + text(part);
  }
  return all.empty() ? "-" : all;
}

/// An item's key. Two long ones, and what stands about them, are a run of a flow.
String8 itemOf(const std::string& word) {
  constexpr std::size_t large = 15000;
  return word.size() < 2 ? String8(word) : String8(word + std::string(large, '.'));
}

unsigned numberOf(const std::string& word) { return static_cast<unsigned>(std::stoul(word)); }

/// Bytes of a text that is sent in so many chunks.
std::size_t lengthOf(unsigned chunks) {
  constexpr std::size_t chunk = 32500;
  return (chunks - 1) * chunk + 100;
}

void writeOrder(OrderDir& orders, const std::vector<std::string>& words) {
  const std::string& what = words.at(0);
  const Name key(words.at(1));
  const Ptr<Order> order = orders.order(key);
  if (what == "make") {
    if (!order) {
      const Ptr<Order> made = orders.orderIs(key, Foreign::Urgency{});
      if (words.size() > 2) {
        made->itemIs(itemOf(words[2]), 1);
      }
    }
  } else if (what == "tell") {
    if (order) {
      orders.orderNotify(key);
    }
  } else if (what == "del") {
    orders.orderDel(key);
  } else if (what == "urge") {
    const auto urgency = static_cast<Foreign::Urgency>(numberOf(words.at(2)));
    if (order) {
      order->urgencyIs(urgency);
    }
  } else if (what == "item") {
    const unsigned pieces = numberOf(words.at(3));
    if (order) {
      order->itemIs(itemOf(words.at(2)), pieces);
    }
  } else if (what == "unitem") {
    if (order) {
      order->itemDel(itemOf(words.at(2)));
    }
  } else {
    throw std::invalid_argument("no such write: " + what);
  }
}

} // namespace

std::vector<Ptr<Zel::Entity>> makeRoots(const Plot& plot) {
  std::vector<Ptr<Zel::Entity>> roots{Zel::makeObject<OrderDir>(Name("orders"))};
  const auto writes = [&](const std::string& what) {
    const auto has = [&](const std::vector<Write>& among) {
      return std::any_of(among.begin(), among.end(),
                         [&](const Write& one) { return one.rfind(what, 0) == 0; });
    };
    return has(plot.before) || std::any_of(plot.programs.begin(), plot.programs.end(), has);
  };
  if (writes("text:")) {
    roots.push_back(Zel::makeObject<DefaultProfile>(Name("profile")));
  }
  if (writes("reserve:") || writes("label:")) {
    roots.push_back(Zel::makeObject<Rack>(Name("rack")));
  }
  return roots;
}

void write(const Zel::Dir& roots, const Write& what) try {
  const std::vector<std::string> words = split(what, ':');
  if (words.empty()) {
    throw std::invalid_argument("no write");
  }
  if (words[0] == "text") {
    const String8 text(std::string(lengthOf(numberOf(words.at(1))), words.at(2).at(0)));
    if (const Ptr<Zel::Entity> profile = roots.entity(Name("profile"))) {
      Zel::ptrCast<DefaultProfile>(profile)->profileNameIs(text);
    }
  } else if (words[0] == "reserve" || words[0] == "label") {
    if (const Ptr<Zel::Entity> entity = roots.entity(Name("rack"))) {
      const Ptr<Rack> rack = Zel::ptrCast<Rack>(entity);
      words[0] == "reserve" ? rack->reservationIs(itemOf(words.at(1)), true)
                            : rack->labelIs(Name(words.at(1)), String8(words.at(1)));
    }
  } else if (const Ptr<Zel::Entity> orders = roots.entity(Name("orders"))) {
    writeOrder(*Zel::ptrCast<OrderDir>(orders), words);
  }
} catch (const std::out_of_range&) {
  throw std::invalid_argument("a word is missing in " + what);
}

std::string startText(const Plot& plot) {
  return std::string(plot.over == Plot::Over::sessions ? "sessions" : "connections") + " " +
         startNames[static_cast<std::size_t>(plot.start)] + " " +
         joined(plot.links,
                [](Zel::Access access) {
                  return std::string(access == Zel::accessReadWrite ? "rw" : "ro");
                }) +
         " " + joined(plot.before, [](const Write& one) { return one; }) +
         (plot.taken.empty() ? "" : " " + joined(plot.taken, [](const std::string& one) {
                                      return one;
                                    }));
}

Plot startOf(const std::string& text) {
  const std::vector<std::string> words = split(text, ' ');
  if (words.size() != 4 && words.size() != 5) {
    throw std::invalid_argument("no start: " + text);
  }
  Plot plot;
  plot.over = words[0] == "sessions" ? Plot::Over::sessions : Plot::Over::connections;
  const auto* const start = std::find(std::begin(startNames), std::end(startNames), words[1]);
  if (start == std::end(startNames)) {
    throw std::invalid_argument("no start: " + text);
  }
  plot.start = static_cast<Plot::Start>(start - startNames);
  for (const std::string& access : split(words[2], ',')) {
    plot.links.push_back(access == "rw" ? Zel::accessReadWrite : Zel::accessReadOnly);
  }
  if (words[3] != "-") {
    plot.before = split(words[3], ',');
  }
  if (words.size() == 5) {
    plot.taken = split(words[4], ',');
  }
  plot.programs.resize(plot.models());
  plot.cuts.resize(plot.links.size());
  if (startText(plot) != text) {
    throw std::invalid_argument("no start: " + text);
  }
  return plot;
}

} // namespace Exploration
