#include "CommandLine.h"
#include "CommandList.h"

namespace Maintctl {

namespace {

class Help : public Command {
public:
  void declare(Parameters& parameters) override {
    parameters.optionalWord("COMMAND", command_, "What to print the help of; all without it");
  }

  int run(Context& context) override {
    std::vector<std::string> words;
    if (!command_.empty()) {
      words.push_back(command_);
    }
    words.emplace_back("--help");
    Options options = context.options();
    commandOf(words, options, context.out());
    return exitDone;
  }

private:
  std::string command_;
};

} // namespace

CommandEntry helpCommand() {
  return {"help", "Print help, of a command if one is named",
          "  maintctl help\n"
          "  maintctl help set",
          make<Help>};
}

} // namespace Maintctl
