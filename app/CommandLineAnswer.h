// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/CommandLine.h"

#include <optional>

/// What can be done about a command line before the program opens a display.
namespace commandlineanswer {

/// Checks a command, prints the help, the version or an error, or sends the request to the running
/// instance. Returns the exit status, failed also if no instance can carry out the request. Returns
/// nothing if the program has to start. Call it without an application object.
std::optional<int> answer(const CommandLine &commandLine, int argc, char *argv[]);

/// Takes the program's own options out of the arguments.
void keepQtArguments(const CommandLine &commandLine, int &argc, char *argv[]);

} // namespace commandlineanswer
