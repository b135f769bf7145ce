#include "Nearest.h"

#include <algorithm>
#include <cctype>
#include <numeric>

namespace Maintctl {

namespace {

char lower(char letter) {
  return static_cast<char>(std::tolower(static_cast<unsigned char>(letter)));
}

/// How many letters are missing, too many, wrong, or swapped with their neighbour; case does not
/// count.
std::size_t slips(std::string_view a, std::string_view b) {
  std::vector<std::size_t> beforeLast(b.size() + 1);
  std::vector<std::size_t> last(b.size() + 1);
  std::vector<std::size_t> now(b.size() + 1);
  std::iota(last.begin(), last.end(), std::size_t{0});
  for (std::size_t i = 0; i < a.size(); ++i) {
    now[0] = i + 1;
    for (std::size_t j = 0; j < b.size(); ++j) {
      const bool isSame = lower(a[i]) == lower(b[j]);
      now[j + 1] = std::min({last[j] + (isSame ? 0 : 1), last[j + 1] + 1, now[j] + 1});
      if (i > 0 && j > 0 && lower(a[i]) == lower(b[j - 1]) && lower(a[i - 1]) == lower(b[j])) {
        now[j + 1] = std::min(now[j + 1], beforeLast[j - 1] + 1);
      }
    }
    std::swap(beforeLast, last);
    std::swap(last, now);
  }
  return last[b.size()];
}

constexpr std::size_t fewNames = 8;

} // namespace

std::string nearest(std::string_view typed, const std::vector<std::string>& names) {
  const std::string* found = nullptr;
  const std::size_t most = typed.size() < 2 ? 0 : std::max<std::size_t>(1, typed.size() / 3);
  std::size_t least = most + 1;
  for (const std::string& name : names) {
    // The difference in length alone takes that many slips.
    const std::size_t atLeast =
        std::max(name.size(), typed.size()) - std::min(name.size(), typed.size());
    if (atLeast >= least) {
      continue;
    }
    if (const std::size_t count = slips(typed, name); count < least) {
      found = &name;
      least = count;
    }
  }
  if (found == nullptr && !typed.empty()) {
    const auto goesOn = [&](const std::string& name) { return name.starts_with(typed); };
    if (std::count_if(names.begin(), names.end(), goesOn) == 1) {
      found = &*std::find_if(names.begin(), names.end(), goesOn);
    }
  }
  return found != nullptr ? *found : std::string();
}

std::string listOf(const std::vector<std::string>& names, std::string_view last) {
  std::string text;
  for (std::size_t at = 0; at < names.size(); ++at) {
    if (at != 0 && at + 1 == names.size()) {
      text.append(" ").append(last).append(" ");
    } else if (at != 0) {
      text.append(", ");
    }
    text.append(names[at]);
  }
  return text;
}

std::string hint(std::string_view typed, const std::vector<std::string>& names,
                 std::string_view lead, std::string_view otherwise) {
  if (const std::string meant = nearest(typed, names); !meant.empty()) {
    return ", did you mean " + meant + "?";
  }
  if (!names.empty() && names.size() <= fewNames) {
    const bool isOne = names.size() == 1 && lead == "there are";
    return ", " + (isOne ? "there is only" : std::string(lead)) + " " + listOf(names);
  }
  return otherwise.empty() ? std::string() : ", " + std::string(otherwise);
}

} // namespace Maintctl
