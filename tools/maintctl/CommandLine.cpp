#include "CommandLine.h"

#include "Nearest.h"
#include "Socket.h"
#include "Words.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <cctype>
#include <charconv>

namespace Maintctl {

namespace {

constexpr const char* summary =
    "Looks at and changes the state of a device's maintenance mode, value by value: in a\n"
    "server, which --socket or MAINTCTL_SOCKET may name, or with --local in an empty tree\n"
    "that lasts as long as the command.";

constexpr const char* exitStatus = R"(Exit status:
  0    done
  1    failed, for a reason that has no other number
  2    the command line makes no sense
  3    nothing under the path
  4    a text that is no value of the attribute's type, or a bad line of a file
  5    read-only, by the model or by the server, or no right to connect
  6    no server there, or the connection has ended
  7    it took too long
  8    the mirror differs, or the value is another than --if says
  9    a file could not be read or written
  130  stopped by Ctrl-C
  141  whoever read the output has gone

Examples:
  maintctl ls /status
  maintctl set /status/System/state underMaintenance
  maintctl run commands.txt)";

/// The library's own begin with a capital, and may end in a full stop.
std::string inOurManner(std::string message) {
  if (message.size() > 1 && std::islower(static_cast<unsigned char>(message[1])) != 0) {
    message[0] = static_cast<char>(std::tolower(static_cast<unsigned char>(message[0])));
  }
  std::replace(message.begin(), message.end(), '\n', ' ');
  while (message.ends_with('.') || message.ends_with(' ')) {
    message.pop_back();
  }
  return message;
}

/// The parser would take a value such as -1 for an option, and one in brackets for several. A byte
/// in front, which no path and no text form begins with, keeps it from that.
constexpr char guard = '\x1f';

std::string guarded(const std::string& word) {
  const bool isNumber =
      word.size() > 1 && word[0] == '-' &&
      (std::isdigit(static_cast<unsigned char>(word[1])) != 0 || word[1] == '.' || word == "-inf");
  return isNumber || word.starts_with('[') ? guard + word : word;
}

std::string unguarded(std::string word) {
  if (word.starts_with(guard)) {
    word.erase(0, 1);
  }
  return word;
}

/// For an option that takes a number of seconds.
std::string refuseUnlessSeconds(const std::string& text) {
  double seconds = 0;
  const auto [end, failure] = std::from_chars(text.data(), text.data() + text.size(), seconds);
  const bool isNumber = failure == std::errc() && end == text.data() + text.size();
  return isNumber && seconds >= 0 ? "" : printable(text) + " is no number of seconds";
}

std::string refuseUnlessCount(const std::string& text) {
  std::size_t count = 0;
  const auto [end, failure] = std::from_chars(text.data(), text.data() + text.size(), count);
  const bool isNumber = failure == std::errc() && end == text.data() + text.size();
  return isNumber && count > 0 ? "" : printable(text) + " is no whole number above 0";
}

/// The parameters of one command, as the parser knows them.
class Declared final : public Parameters {
public:
  explicit Declared(CLI::App& app) : app_(app) {}

  void word(const char* name, std::string& to, const char* about) override {
    app_.add_option(name, to, about)->required();
  }
  void optionalWord(const char* name, std::string& to, const char* about) override {
    app_.add_option(name, to, about);
  }
  void optionalWord(const char* name, std::optional<std::string>& to, const char* about) override {
    app_.add_option(name, to, about);
  }
  void words(const char* name, std::vector<std::string>& to, const char* about) override {
    app_.add_option(name, to, about);
  }
  void flag(const char* name, bool& to, const char* about) override {
    app_.add_flag(dashed(name), to, about);
  }
  void option(const char* name, const char* type, std::string& to, const char* about) override {
    app_.add_option(dashed(name), to, about)->type_name(type)->capture_default_str();
  }
  void option(const char* name, const char* type, std::vector<std::string>& to,
              const char* about) override {
    app_.add_option(dashed(name), to, about)->type_name(type)->allow_extra_args(false);
  }
  void option(const char* name, const char* type, std::optional<std::string>& to,
              const char* about) override {
    app_.add_option(dashed(name), to, about)->type_name(type);
  }
  void option(const char* name, const char* type, std::size_t& to, const char* about) override {
    app_.add_option(dashed(name), to, about)
        ->type_name(type)
        ->check(refuseUnlessCount)
        ->capture_default_str();
  }

private:
  static std::string dashed(const char* name) { return std::string("--") + name; }

  CLI::App& app_;
};

void declareCommon(CLI::App& app, Options& options) {
  app.set_help_flag("-h,--help", "Print this help");
  app.add_flag("--json", options.json, "Print JSON, for machines");
  if (!options.inScript) {
    app.add_option("--socket", options.socket, "Socket of a server")
        ->type_name("PATH")
        ->check([](const std::string& path) { return path.empty() ? "it is empty" : ""; });
    app.add_flag("--local", options.isLocal, "Use an empty tree of its own, with no server");
    app.add_option("--types", options.types, "Library with types of its own")
        ->type_name("LIB")
        ->allow_extra_args(false);
    app.add_option("--timeout", options.timeout, "How long a server may take to answer")
        ->type_name("SECONDS")
        ->check(refuseUnlessSeconds);
    app.set_version_flag("-V,--version", "maintctl " MAINTCTL_VERSION, "Print the version");
  }
}

CLI::App& declare(CLI::App& app, const CommandEntry& entry, Command& command) {
  CLI::App& sub = *app.add_subcommand(entry.name, entry.summary);
  sub.fallthrough();
  sub.footer(std::string("Examples:\n") + entry.examples);
  sub.group(entry.isShown ? "Commands" : "");
  Declared declared(sub);
  command.declare(declared);
  for (CLI::Option* const option : sub.get_options()) {
    if (option->get_items_expected_max() > 0) {
      option->transform(unguarded);
    }
    if (option->get_positional()) {
      option->type_name(""); // all are texts
    }
  }
  return sub;
}

std::string seeHelp(const Options& options, const std::string& command) {
  return std::string(", see '") + (options.inScript ? "" : "maintctl ") +
         (command.empty() ? "" : command + " ") + "--help'";
}

/// What to say of words that nobody wanted, of which the first counts.
std::string tooMuch(const std::vector<std::string>& words, const std::vector<std::string>& extras,
                    const Options& options, const std::string& command) {
  const auto first = std::find_if(words.begin(), words.end(), [&](const std::string& word) {
    return std::find(extras.begin(), extras.end(), guarded(word)) != extras.end();
  });
  const std::string word = first != words.end() ? *first : extras.front();
  if (!word.starts_with('-')) {
    return command + " takes no " + printable(word) + seeHelp(options, command);
  }
  const std::vector<std::string> names = optionNames(command, options.inScript);
  const bool hasNear = !nearest(word, names).empty();
  return "no option " + printable(word) + (hasNear ? hint(word, names, "", "") : "") +
         (hasNear ? "" : seeHelp(options, command));
}

} // namespace

const CommandEntry* entryOf(std::string_view name, bool inScript) {
  for (const CommandEntry& entry : commands()) {
    if (entry.name == name && (entry.inScripts || !inScript)) {
      return &entry;
    }
  }
  return nullptr;
}

std::vector<std::string> commandNames(bool inScript) {
  std::vector<std::string> names;
  for (const CommandEntry& entry : commands()) {
    if (entry.isShown && (entry.inScripts || !inScript)) {
      names.emplace_back(entry.name);
    }
  }
  return names;
}

std::size_t placeOfCommand(const std::vector<std::string>& words) {
  std::size_t at = 0;
  while (at < words.size() && words[at].starts_with('-')) {
    at += words[at] == "--socket" || words[at] == "--types" || words[at] == "--timeout" ? 2 : 1;
  }
  return std::min(at, words.size());
}

std::vector<std::string> optionNames(const std::string& command, bool inScript) {
  Options options;
  options.inScript = inScript;
  CLI::App app;
  declareCommon(app, options);
  std::unique_ptr<Command> made;
  std::vector<const CLI::App*> apps = {&app};
  if (const CommandEntry* const entry = entryOf(command, inScript)) {
    made = entry->make();
    apps.push_back(&declare(app, *entry, *made));
  }
  std::vector<std::string> names;
  for (const CLI::App* const one : apps) {
    for (const CLI::Option* const option : one->get_options()) {
      for (const std::string& name : option->get_lnames()) {
        names.push_back("--" + name);
      }
    }
  }
  std::sort(names.begin(), names.end());
  names.erase(std::unique(names.begin(), names.end()), names.end());
  return names;
}

std::unique_ptr<Command> commandOf(const std::vector<std::string>& words, Options& options,
                                   std::ostream& out) {
  const std::size_t place = placeOfCommand(words);
  const std::string name = place < words.size() ? words[place] : "";
  const CommandEntry* const chosen = entryOf(name, options.inScript);
  if (chosen == nullptr) {
    const std::vector<std::string> known = optionNames("", options.inScript);
    for (std::size_t at = 0; at < place && at < words.size(); ++at) {
      const std::string option = words[at].substr(0, words[at].find('='));
      if (option.starts_with("--") &&
          std::find(known.begin(), known.end(), option) == known.end()) {
        throw Failure(exitUsage, tooMuch(words, {words[at]}, options, ""));
      }
    }
  }
  if (chosen == nullptr && !name.empty()) {
    throw Failure(
        exitUsage,
        "no command " + printable(name) +
            hint(name, commandNames(options.inScript), "there are", "") +
            (nearest(name, commandNames(options.inScript)).empty() ? seeHelp(options, "") : ""));
  }
  CLI::App app(summary, options.inScript ? "" : "maintctl");
  declareCommon(app, options);
  app.require_subcommand(1);
  app.footer(exitStatus);
  app.get_formatter()->label("SUBCOMMAND", "COMMAND");
  std::vector<std::unique_ptr<Command>> made; // all, for the help, where none is chosen
  for (const CommandEntry& entry : commands()) {
    if (chosen == nullptr ? entry.inScripts || !options.inScript : &entry == chosen) {
      made.push_back(entry.make());
      declare(app, entry, *made.back());
    }
  }
  const auto optionsEnd =
      static_cast<std::size_t>(std::find(words.begin(), words.end(), "--") - words.begin());
  std::vector<std::string> reversed; // as the parser wants them
  for (std::size_t at = words.size(); at-- > 0;) {
    const std::string& word = words[at];
    if (at < optionsEnd && word.starts_with("--") && word.find('=') == word.size() - 1) {
      reversed.emplace_back(); // else the parser would take the next word for the value
      reversed.push_back(word.substr(0, word.size() - 1));
    } else {
      reversed.push_back(at > place ? guarded(word) : word);
    }
  }
  try {
    app.parse(std::move(reversed));
  } catch (const CLI::CallForHelp&) {
    out << app.help();
    return nullptr;
  } catch (const CLI::CallForVersion& version) {
    out << version.what() << '\n';
    return nullptr;
  } catch (const CLI::ExtrasError&) {
    throw Failure(exitUsage, tooMuch(words, app.remaining(true), options, name));
  } catch (const CLI::ParseError& failure) {
    throw Failure(exitUsage,
                  (name.empty() ? std::string("no command given") : inOurManner(failure.what())) +
                      seeHelp(options, name));
  }
  if (!options.inScript) {
    settleSocket(options, chosen->tree, SocketPlaces::here());
  }
  return std::move(made.front());
}

} // namespace Maintctl
