// SPDX-License-Identifier: GPL-3.0-or-later
//
// The cost of the whole program compared with a bare window of the same size and with a bare list
// that has the same style sheet, measured from outside: the time and the instructions from its
// start to its first painted window, its memory two seconds later, the time from the hotkey or from
// --toggle to the window and from a key to its rows, and the processor time while it is hidden.
#include "Hotkey.h"
#include "ProgramHome.h"
#include "ProgramStart.h"
#include "ScreenWatcher.h"

#include <X11/keysym.h>
#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <functional>
#include <optional>
#include <string>
#include <thread>
#include <tuple>
#include <utility>
#include <vector>

namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

constexpr std::size_t fewPresses = 11;
constexpr std::size_t manyPresses = 200;
constexpr auto searchDelay = 120ms; // of the program, after the last key
constexpr auto searchTime = 200ms;  // more than a search and its rows take

/// The home and the screen of all measurements.
struct Fixture
{
    ProgramHome home;
    ProgramHome homeOfManyIcons{ProgramHome::Icons::Different};
    ScreenWatcher screen;
    Hotkey hotkey;
};

Fixture &fixture()
{
    static Fixture shared;
    return shared;
}

using Command = std::vector<std::string>;

// Another launcher that lists the programs with their icons.
const Command rofi{"rofi", "-normal-window", "-show", "drun", "-show-icons"};

enum class Until {
    Shown,
    Painted,
};

// The first start fills the icon cache, and the first one of each program reads it from disk.
bool warmUp(const Command &command)
{
    static std::vector<Command> warm;
    if (std::find(warm.begin(), warm.end(), command) == warm.end()) {
        const ProgramStart start(fixture().home, fixture().screen, command);
        if (!start.window) {
            return false;
        }
        warm.push_back(command);
    }
    fixture().screen.discardEvents();
    return command.front() != VASKEL_PROGRAM || fixture().home.hasIcons();
}

void startToWindow(benchmark::State &state, const Command &command, Until until)
{
    if (!warmUp(command)) {
        state.SkipWithError("The program does not start, or caches no icons.");
        return;
    }
    while (state.KeepRunning()) {
        const ProgramStart start(fixture().home, fixture().screen, command);
        if (!start.window) {
            state.SkipWithError("The program shows no window.");
            return;
        }
        const std::chrono::duration<double> untilShown = start.window->time - start.begin;
        state.SetIterationTime((until == Until::Shown ? untilShown : start.duration).count());
    }
}

void memoryAfterTwoSeconds(benchmark::State &state, const char *program)
{
    if (!warmUp({program})) {
        state.SkipWithError("The program does not start, or caches no icons.");
        return;
    }
    while (state.KeepRunning()) {
        const ProgramStart start(fixture().home, fixture().screen, {program});
        std::this_thread::sleep_for(2s);
        state.SetIterationTime(start.duration.count());
        state.counters["value"] = start.process.proportionalMemory() / (1024 * 1024);
    }
    state.SetLabel("MiB");
}

// All programs have different icons here. A first start draws them; the floor finds them drawn.
void startWithManyIcons(benchmark::State &state, bool isFirst)
{
    const ProgramHome &home = fixture().homeOfManyIcons;
    while (state.KeepRunning()) {
        if (isFirst) {
            home.forgetStarts();
        } else if (!home.hasIcons()) {
            const ProgramStart first(home, fixture().screen, {VASKEL_PROGRAM});
        }
        const ProgramStart start(home, fixture().screen, {VASKEL_PROGRAM});
        if (!home.hasIcons()) {
            state.SkipWithError("The program caches no icons.");
            return;
        }
        state.SetIterationTime(start.duration.count());
    }
}

/// What callgrind has written about one part of a run, in the first thread.
struct Part
{
    explicit Part(const std::filesystem::path &file);

    double instructions = 0; // remains 0 without the file
    bool paintsList = false;
};

Part::Part(const std::filesystem::path &file)
{
    std::ifstream lines(file);
    for (std::string line; std::getline(lines, line);) {
        if (line.starts_with("totals:")) {
            instructions = std::stod(line.substr(7));
        }
        paintsList = paintsList || line.find("QListView::paintEvent(") != std::string::npos;
    }
}

/// The instructions until the list is flushed to the screen; nothing if no part paints it.
std::optional<double> instructionsToList(const std::filesystem::path &folder)
{
    double count = 0;
    for (int number = 1;; ++number) {
        const Part part(folder / ("part." + std::to_string(number) + "-01"));
        if (part.instructions == 0) {
            return {};
        }
        count += part.instructions;
        if (part.paintsList) {
            return count;
        }
    }
}

// Valgrind's count does not depend on the load of the machine. It writes a part at each flush.
void instructionsToShownList(benchmark::State &state, const char *program)
{
    if (!warmUp({program})) {
        state.SkipWithError("The program does not start, or caches no icons.");
        return;
    }
    while (state.KeepRunning()) {
        const std::filesystem::path folder = fixture().home.emptyFolder("callgrind");
        const ProgramStart start(fixture().home, fixture().screen,
                                 {"valgrind", "--quiet", "--tool=callgrind",
                                  "--separate-threads=yes", "--dump-before=QBackingStore::flush*",
                                  "--callgrind-out-file=" + (folder / "part").string(), program},
                                 10min); // valgrind runs a program a hundred times as long
        if (!start.window) {
            state.SkipWithError("The program does not start under valgrind.");
            return;
        }
        const std::optional<double> count = instructionsToList(folder);
        if (!count) {
            state.SkipWithError("Valgrind sees no list on the screen.");
            return;
        }
        state.counters["value"] = *count / 1e6;
        state.SetIterationTime(start.duration.count());
    }
    state.SetLabel("M");
}

/// Shows the window of the running program; returns the time just before.
using Summon = std::function<Clock::time_point()>;

Clock::time_point pressHotkey()
{
    return fixture().hotkey.press();
}

/// The time from a press of the hotkey, or from another order, until the hidden window is shown;
/// nothing after a minute.
std::optional<double> timeToShow(xcb_window_t window, Until until,
                                 const Summon &summon = pressHotkey)
{
    fixture().hotkey.press();
    if (!fixture().screen.waitForHiddenWindow(window)) {
        return {};
    }
    // The program is still busy hiding for a moment after its window has gone.
    std::this_thread::sleep_for(300ms);
    fixture().screen.discardEvents();

    const Clock::time_point begin = summon();
    if (!fixture().screen.waitForShownWindow(window)
        || (until == Until::Painted && !fixture().screen.waitForPaint())) {
        return {};
    }
    const std::chrono::duration<double> duration = Clock::now() - begin;
    std::this_thread::sleep_for(100ms);
    return duration.count();
}

/// The sorted times of some presses, of a program that has created its window; empty on failure.
std::vector<double> timesToShow(const char *program, Until until, std::size_t presses)
{
    const ProgramStart start(fixture().home, fixture().screen, {program});
    // The program registers the hotkey after it has shown the window.
    std::this_thread::sleep_for(1s);
    std::vector<double> times;
    while (times.size() < presses) {
        const std::optional<double> time = timeToShow(start.window->id, until);
        if (!time) {
            return {};
        }
        times.push_back(*time);
    }
    std::sort(times.begin(), times.end());
    return times;
}

// Both programs already run and have created their window.
void hotkeyToWindow(benchmark::State &state, const char *program, Until until)
{
    if (!warmUp({program})) {
        state.SkipWithError("The program does not start, or caches no icons.");
        return;
    }
    while (state.KeepRunning()) {
        const std::vector<double> times = timesToShow(program, until, fewPresses);
        if (times.empty()) {
            state.SkipWithError("The hotkey does not hide and show the window.");
            return;
        }
        state.SetIterationTime(times[fewPresses / 2]);
    }
}

double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

double percentile99(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values[values.size() * 99 / 100 - 1];
}

/// How much longer "--toggle" takes than the hotkey, in seconds; nothing on failure.
std::optional<double> delayOfToggle()
{
    const ProgramStart start(fixture().home, fixture().screen, {VASKEL_PROGRAM});
    // The program registers the hotkey after it has shown the window.
    std::this_thread::sleep_for(1s);
    std::optional<Process> toggle;
    const Summon orderToggle = [&] {
        const Clock::time_point begin = Clock::now();
        toggle.emplace(std::vector<std::string>{VASKEL_PROGRAM, "--toggle"},
                       fixture().home.environment());
        return begin;
    };
    std::vector<double> byHotkey;
    std::vector<double> byToggle;
    while (byToggle.size() < fewPresses) {
        const std::optional<double> pressed = timeToShow(start.window->id, Until::Shown);
        const std::optional<double> ordered =
            timeToShow(start.window->id, Until::Shown, orderToggle);
        if (!pressed || !ordered) {
            return {};
        }
        byHotkey.push_back(*pressed);
        byToggle.push_back(*ordered);
    }
    return median(byToggle) - median(byHotkey);
}

// In milliseconds.
void toggleToWindow(benchmark::State &state)
{
    if (!warmUp({VASKEL_PROGRAM})) {
        state.SkipWithError("The program does not start, or caches no icons.");
        return;
    }
    while (state.KeepRunning()) {
        const std::optional<double> delay = delayOfToggle();
        if (!delay) {
            state.SkipWithError("The hotkey or --toggle does not show the window.");
            return;
        }
        state.counters["value"] = *delay * 1000;
        state.SetIterationTime(*delay);
    }
    state.SetLabel("ms");
}

// The 99th percentile, in milliseconds.
void slowSummons(benchmark::State &state)
{
    if (!warmUp({VASKEL_PROGRAM})) {
        state.SkipWithError("The program does not start, or caches no icons.");
        return;
    }
    while (state.KeepRunning()) {
        const std::vector<double> times = timesToShow(VASKEL_PROGRAM, Until::Painted, manyPresses);
        if (times.empty()) {
            state.SkipWithError("The hotkey does not hide and show the window.");
            return;
        }
        const double slow = percentile99(times);
        state.counters["value"] = slow * 1000;
        state.SetIterationTime(slow);
    }
    state.SetLabel("ms");
}

// Letters of the names of all programs, digits of some, and back, so that each search has other
// rows.
constexpr xcb_keysym_t typedKeys[] = {XK_p, XK_r, XK_o, XK_BackSpace, XK_BackSpace, XK_BackSpace,
                                      XK_1, XK_2, XK_x, XK_BackSpace, XK_BackSpace, XK_BackSpace};

// The 99th percentile of the time from a key to its rows, without the delay of the search.
void slowSearches(benchmark::State &state)
{
    if (!warmUp({VASKEL_PROGRAM})) {
        state.SkipWithError("The program does not start, or caches no icons.");
        return;
    }
    while (state.KeepRunning()) {
        const ProgramStart start(fixture().home, fixture().screen, {VASKEL_PROGRAM});
        std::this_thread::sleep_for(1s);
        std::vector<double> times;
        while (times.size() < manyPresses) {
            fixture().screen.discardEvents();
            const auto begin =
                fixture().hotkey.type(typedKeys[times.size() % std::size(typedKeys)]);
            const auto end = fixture().screen.lastPaint(searchDelay + searchTime);
            const std::chrono::duration<double> own = end.value_or(begin) - begin - searchDelay;
            // Only the letter has been painted if the rows are not there yet.
            times.push_back((own < -searchDelay / 2 ? searchTime : own).count());
        }
        state.counters["value"] = percentile99(times) * 1000;
        state.SetIterationTime(start.duration.count());
    }
    state.SetLabel("ms");
}

void processorTimeWhileHidden(benchmark::State &state)
{
    if (!warmUp({VASKEL_PROGRAM})) {
        state.SkipWithError("The program does not start, or caches no icons.");
        return;
    }
    while (state.KeepRunning()) {
        const ProgramStart start(fixture().home, fixture().screen, {VASKEL_PROGRAM});
        std::this_thread::sleep_for(1s);
        fixture().screen.requestClose(start.window->id);
        if (!fixture().screen.waitForHiddenWindow(start.window->id)) {
            state.SkipWithError("The window does not hide.");
            return;
        }
        // The program is still busy hiding for a moment after its window has gone.
        std::this_thread::sleep_for(1s);
        const long before = start.process.processorTicks();
        std::this_thread::sleep_for(10s);
        state.counters["value"] = static_cast<double>(start.process.processorTicks() - before);
        state.SetIterationTime(start.duration.count());
    }
    state.SetLabel("ticks");
}

void repeat(benchmark::internal::Benchmark *benchmark, int repetitions)
{
    benchmark->UseManualTime()->Iterations(1)->Unit(benchmark::kMillisecond);
    benchmark->Repetitions(repetitions);
}

void registerStarts()
{
    for (const auto &[name, command, until] : {
             std::tuple("start/measured", Command{VASKEL_PROGRAM}, Until::Painted),
             {"start/floor", {BARE_WINDOW}, Until::Painted},
             {"start_list/measured", {VASKEL_PROGRAM}, Until::Painted},
             {"start_list/floor", {BARE_LIST}, Until::Painted},
             {"shown_list/measured", {VASKEL_PROGRAM}, Until::Shown},
             {"shown_list/floor", {BARE_LIST}, Until::Shown},
             {"shown_rofi/measured", {VASKEL_PROGRAM}, Until::Shown},
             {"shown_rofi/floor", rofi, Until::Shown},
         }) {
        repeat(benchmark::RegisterBenchmark(name, startToWindow, command, until), 31);
    }
    repeat(benchmark::RegisterBenchmark("first_start/measured", startWithManyIcons, true), 5);
    repeat(benchmark::RegisterBenchmark("first_start/floor", startWithManyIcons, false), 5);
    repeat(benchmark::RegisterBenchmark("instructions/measured", instructionsToShownList,
                                        VASKEL_PROGRAM),
           3);
    repeat(benchmark::RegisterBenchmark("instructions/floor", instructionsToShownList, BARE_LIST),
           3);
}

void registerMemory()
{
    repeat(benchmark::RegisterBenchmark("memory/measured", memoryAfterTwoSeconds, VASKEL_PROGRAM),
           5);
    repeat(benchmark::RegisterBenchmark("memory/floor", memoryAfterTwoSeconds, BARE_WINDOW), 5);
    repeat(
        benchmark::RegisterBenchmark("memory_list/measured", memoryAfterTwoSeconds, VASKEL_PROGRAM),
        5);
    repeat(benchmark::RegisterBenchmark("memory_list/floor", memoryAfterTwoSeconds, BARE_LIST), 5);
}

void registerRunningProgram()
{
    for (const auto &[side, program] :
         {std::pair("measured", VASKEL_PROGRAM), {"floor", BARE_HOTKEY}}) {
        repeat(benchmark::RegisterBenchmark((std::string("hotkey/") + side).c_str(), hotkeyToWindow,
                                            program, Until::Shown),
               5);
        repeat(benchmark::RegisterBenchmark((std::string("hotkey_painted/") + side).c_str(),
                                            hotkeyToWindow, program, Until::Painted),
               5);
    }
    repeat(benchmark::RegisterBenchmark("toggle/measured", toggleToWindow), 5);
    repeat(benchmark::RegisterBenchmark("summon_p99/measured", slowSummons), 1);
    repeat(benchmark::RegisterBenchmark("search_p99/measured", slowSearches), 1);
    repeat(benchmark::RegisterBenchmark("idle/measured", processorTimeWhileHidden), 1);
}

} // namespace

int main(int argc, char *argv[])
{
    registerStarts();
    registerMemory();
    registerRunningProgram();
    benchmark::Initialize(&argc, argv);
    if (!fixture().screen.isConnected()) {
        std::fputs("bench_process: there is no X display\n", stderr);
        return 1;
    }
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
