#include "Commands.h"

#include "CommandList.h"

namespace Maintctl {

const std::vector<CommandEntry>& commands() {
  static const std::vector<CommandEntry> all = {
      showCommand(),  historyCommand(), lsCommand(),   getCommand(),
      setCommand(),   addCommand(),     delCommand(),  dumpCommand(),
      loadCommand(),  watchCommand(),   waitCommand(), verifyCommand(),
      serveCommand(), runCommand(),     helpCommand(), completeCommand(),
  };
  return all;
}

} // namespace Maintctl
