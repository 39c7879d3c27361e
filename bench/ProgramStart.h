// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Process.h"
#include "ProgramHome.h"
#include "ScreenWatcher.h"

#include <chrono>
#include <optional>
#include <string>
#include <utility>
#include <vector>

/// One start of a program, from the new process to the painted window.
struct ProgramStart
{
    using Clock = ScreenWatcher::Clock;

    ProgramStart(const ProgramHome &home, ScreenWatcher &screen, std::vector<std::string> command,
                 std::chrono::minutes patience = std::chrono::minutes(1))
        : process(std::move(command), home.environment())
        , window(screen.waitForPaintedWindow(patience))
    {
    }

    Clock::time_point begin = Clock::now();
    Process process;
    std::optional<ScreenWatcher::ShownWindow> window; ///< nothing if none was painted in that time
    std::chrono::duration<double> duration = Clock::now() - begin;
};
