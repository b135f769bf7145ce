#pragma once

#include "Commands.h"

namespace Maintctl {

/// The command that words ask for, with its arguments, and with the common options put into
/// `options`. Null if they ask for help, which is printed to `out` then. Those of a line of a
/// script have options of their own for that line alone, and not all of them. Throws `Failure` with
/// `exitUsage`.
std::unique_ptr<Command> commandOf(const std::vector<std::string>& words, Options& options,
                                   std::ostream& out);

/// The entry of a name; null if there is none for scripts, or at all.
const CommandEntry* entryOf(std::string_view name, bool inScript);

/// The first word that is neither an option nor its value: the command, or where it would stand;
/// the number of words if there is none.
std::size_t placeOfCommand(const std::vector<std::string>& words);

/// Names of commands that people are shown, in order.
std::vector<std::string> commandNames(bool inScript);

/// The options of a command, or those that all have if there is none of the name.
std::vector<std::string> optionNames(const std::string& command, bool inScript);

} // namespace Maintctl
