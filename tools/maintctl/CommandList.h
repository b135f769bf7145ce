#pragma once

#include "Commands.h"

/// The commands, each in a file of its own; `Commands.cpp` puts them in order.
namespace Maintctl {

/// What the entries of commands name.
template <class C>
std::unique_ptr<Command> make() {
  return std::make_unique<C>();
}

CommandEntry showCommand();
CommandEntry historyCommand();
CommandEntry lsCommand();
CommandEntry getCommand();
CommandEntry setCommand();
CommandEntry addCommand();
CommandEntry delCommand();
CommandEntry dumpCommand();
CommandEntry loadCommand();
CommandEntry watchCommand();
CommandEntry waitCommand();
CommandEntry verifyCommand();
CommandEntry serveCommand();
CommandEntry runCommand();
CommandEntry helpCommand();
CommandEntry completeCommand();

} // namespace Maintctl
