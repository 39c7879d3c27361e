// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/TestProgram.h"

#include <cstdio>
#include <filesystem>
#include <map>
#include <string>

namespace {

std::map<std::string, testprogram::Run> &tests()
{
    static std::map<std::string, testprogram::Run> runs;
    return runs;
}

// A class that runs on the fakes and on the bodies of the system has two symbolic links. The name
// of the one for the fakes has this ending.
std::string className(const std::string &programName)
{
    const std::string ending = "OnFake";
    const auto size = programName.size();
    return size > ending.size() && programName.substr(size - ending.size()) == ending
               ? programName.substr(0, size - ending.size())
               : programName;
}

} // namespace

testprogram::Registration::Registration(const char *name, Run run)
{
    tests().emplace(name, run);
}

int main(int argc, char *argv[])
{
    const std::string name = std::filesystem::path(argv[0]).stem().string();
    const auto test = tests().find(className(name));
    if (test != tests().end()) {
        return test->second(argc, argv);
    }
    std::fprintf(stderr, "%s: start it by a symbolic link with the name of one of its tests:\n",
                 name.c_str());
    for (const auto &[known, run] : tests()) {
        std::fprintf(stderr, "    %s\n", known.c_str());
    }
    return 2;
}
