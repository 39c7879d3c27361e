// SPDX-License-Identifier: GPL-3.0-or-later
//
// The start and the memory of other launchers, measured like those of Vaskel in bench_process, in a
// home with the same programs. Only those that are installed are measured.
#include "ProgramHome.h"
#include "ProgramStart.h"
#include "ScreenWatcher.h"

#include <benchmark/benchmark.h>

#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

namespace {

using namespace std::chrono_literals;

struct Launcher
{
    std::string name;
    std::vector<std::string> command;
};

const Launcher launchers[] = {
    {"rofi", {"rofi", "-normal-window", "-show", "drun", "-show-icons"}},
    {"synapse", {"synapse"}},
    {"xfce4-appfinder", {"xfce4-appfinder", "--disable-server"}},
};

/// The home and the screen of all measurements.
struct Fixture
{
    ProgramHome home;
    ScreenWatcher screen;
};

Fixture &fixture()
{
    static Fixture shared;
    return shared;
}

bool isInstalled(const std::string &program)
{
    const char *path = std::getenv("PATH");
    std::istringstream folders(path ? path : "");
    for (std::string folder; std::getline(folders, folder, ':');) {
        if (access((std::filesystem::path(folder) / program).c_str(), X_OK) == 0) {
            return true;
        }
    }
    return false;
}

// The first start reads the program from disk, and may fill a cache of its own.
void startToShownWindow(benchmark::State &state, const Launcher &launcher)
{
    while (state.KeepRunning()) {
        fixture().screen.discardEvents();
        const ProgramStart start(fixture().home, fixture().screen, launcher.command);
        if (!start.window) {
            state.SkipWithError("The program shows no window.");
            return;
        }
        state.SetIterationTime(start.duration.count());
    }
}

void memoryAfterTwoSeconds(benchmark::State &state, const Launcher &launcher)
{
    while (state.KeepRunning()) {
        fixture().screen.discardEvents();
        const ProgramStart start(fixture().home, fixture().screen, launcher.command);
        if (!start.window) {
            state.SkipWithError("The program shows no window.");
            return;
        }
        std::this_thread::sleep_for(2s);
        state.SetIterationTime(start.duration.count());
        state.counters["value"] = start.process.proportionalMemory() / (1024 * 1024);
    }
    state.SetLabel("MiB");
}

} // namespace

int main(int argc, char *argv[])
{
    for (const Launcher &launcher : launchers) {
        if (isInstalled(launcher.name)) {
            benchmark::RegisterBenchmark(("other_start/" + launcher.name).c_str(),
                                         startToShownWindow, launcher)
                ->UseManualTime()
                ->Iterations(1)
                ->Repetitions(31);
            benchmark::RegisterBenchmark(("other_memory/" + launcher.name).c_str(),
                                         memoryAfterTwoSeconds, launcher)
                ->UseManualTime()
                ->Iterations(1)
                ->Repetitions(5);
        }
    }
    benchmark::Initialize(&argc, argv);
    if (!fixture().screen.isConnected()) {
        std::fputs("bench_Launchers: there is no X display\n", stderr);
        return 1;
    }
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
