#pragma once

#include "Device.h"
#include "Failure.h"

#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

namespace Maintctl {

/// What all commands are told.
struct Options {
  std::string socket;             ///< of a server; empty for a tree in this process
  bool isLocal = false;           ///< a tree in this process is asked for
  std::vector<std::string> types; ///< libraries that bring some, besides the model's
  bool json = false;              ///< output for machines
  double timeout = 10;            ///< seconds that a server has to answer
  bool isTyped = false;           ///< at the prompt of `run`: Ctrl-C ends a command and no more
  bool inScript = false; ///< the words come from a line of `run`, where quotes are left on them
};

/// What a command runs with. The device is made when it is first asked for, so a command that does
/// without one, such as `serve`, connects to nothing.
class Context {
public:
  Context(const Options& options, std::ostream& out) : options_(options), out_(out) {}
  Context(const Context&) = delete;
  Context& operator=(const Context&) = delete;

  const Options& options() const noexcept { return options_; }
  /// Takes what the command prints; complaints and progress go to standard error.
  std::ostream& out() const noexcept { return out_; }
  /// Throws `Failure` if there is none.
  virtual Device& device() = 0;

protected:
  ~Context() = default;

private:
  const Options& options_;
  std::ostream& out_;
};

/// Where a command says what it takes on the command line. What it names is filled in before it
/// runs. `about` is what its help says of it.
class Parameters {
public:
  Parameters(const Parameters&) = delete;
  Parameters& operator=(const Parameters&) = delete;

  /// A word that has to be there.
  virtual void word(const char* name, std::string& to, const char* about) = 0;
  /// One that need not.
  virtual void optionalWord(const char* name, std::string& to, const char* about) = 0;
  virtual void optionalWord(const char* name, std::optional<std::string>& to,
                            const char* about) = 0;
  /// All words that are left.
  virtual void words(const char* name, std::vector<std::string>& to, const char* about) = 0;
  /// `--name`.
  virtual void flag(const char* name, bool& to, const char* about) = 0;
  /// `--name TYPE`. Help shows what `to` holds, which is what it is without the option.
  virtual void option(const char* name, const char* type, std::string& to, const char* about) = 0;
  /// One that may be given several times.
  virtual void option(const char* name, const char* type, std::vector<std::string>& to,
                      const char* about) = 0;
  /// One that may be left out, and empty.
  virtual void option(const char* name, const char* type, std::optional<std::string>& to,
                      const char* about) = 0;
  /// The same with a number above 0.
  virtual void option(const char* name, const char* type, std::size_t& to, const char* about) = 0;

protected:
  Parameters() = default;
  ~Parameters() = default;
};

/// One run of a command.
class Command {
public:
  Command() = default;
  Command(const Command&) = delete;
  Command& operator=(const Command&) = delete;
  virtual ~Command() = default;

  /// Says what the command takes; once, before `run`.
  virtual void declare(Parameters& parameters) = 0;
  /// Yields an exit code; throws `Failure`. Failures of the library may leave it too, see
  /// `Guard.h`.
  virtual int run(Context& context) = 0;
};

/// The tree that a command acts on where nothing names one.
enum class DefaultTree {
  server, ///< of the nearest server
  own,    ///< in this process
  served, ///< in this process, for others
};

/// What there is to know of a command before it runs.
struct CommandEntry {
  const char* name;
  const char* summary;  ///< one line, without a full stop
  const char* examples; ///< stands at the end of its help, lines with an indent of two
  std::unique_ptr<Command> (*make)();
  bool inScripts = true; ///< whether a line of `run` may be one
  bool isShown = true;   ///< whether the list of commands has it
  DefaultTree tree = DefaultTree::server;
};

/// All commands, in the order of the help. To add one, write its file and name it in
/// `Commands.cpp`.
const std::vector<CommandEntry>& commands();

/// The device that the options ask for. Throws `Failure` if there is none.
std::unique_ptr<Device> deviceFor(const Options& options);

} // namespace Maintctl
