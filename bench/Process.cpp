// SPDX-License-Identifier: GPL-3.0-or-later
#include "Process.h"

#include <csignal>
#include <spawn.h>
#include <sys/wait.h>

#include <fstream>
#include <iterator>
#include <sstream>

namespace {

std::vector<char *> pointersTo(std::vector<std::string> &strings)
{
    std::vector<char *> pointers;
    pointers.reserve(strings.size() + 1);
    for (std::string &string : strings) {
        pointers.push_back(string.data());
    }
    pointers.push_back(nullptr);
    return pointers;
}

} // namespace

Process::Process(std::vector<std::string> command, std::vector<std::string> environment)
{
    const std::vector<char *> arguments = pointersTo(command);
    const std::vector<char *> variables = pointersTo(environment);
    posix_spawnp(&m_pid, arguments.front(), nullptr, nullptr, arguments.data(), variables.data());
}

Process::~Process()
{
    if (m_pid > 0) {
        kill(m_pid, SIGTERM);
        waitpid(m_pid, nullptr, 0);
    }
}

double Process::proportionalMemory() const
{
    std::istringstream lines(file("smaps_rollup"));
    for (std::string line; std::getline(lines, line);) {
        if (line.starts_with("Pss:")) {
            return std::stod(line.substr(4)) * 1024;
        }
    }
    return 0;
}

long Process::processorTicks() const
{
    // The name in parentheses may contain spaces; the third field follows it.
    const std::string line = file("stat");
    std::istringstream fields(line.substr(line.rfind(')') + 1));
    const std::vector<std::string> values{std::istream_iterator<std::string>(fields), {}};
    return std::stol(values.at(14 - 3)) + std::stol(values.at(15 - 3));
}

std::string Process::file(const std::string &name) const
{
    const std::ifstream stream("/proc/" + std::to_string(m_pid) + '/' + name);
    std::ostringstream text;
    text << stream.rdbuf();
    return text.str();
}
