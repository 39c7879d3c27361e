// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <vector>

#include <sys/types.h>

/// A running program; the destructor ends it.
class Process
{
public:
    Process(std::vector<std::string> command, std::vector<std::string> environment);
    ~Process();
    Process(const Process &) = delete;
    Process &operator=(const Process &) = delete;

    /// Its memory in bytes, including its share of common pages (PSS).
    double proportionalMemory() const;

    /// The processor time of all its threads so far, in clock ticks.
    long processorTicks() const;

private:
    std::string file(const std::string &name) const;

    pid_t m_pid = 0;
};
