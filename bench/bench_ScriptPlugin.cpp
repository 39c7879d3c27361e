// SPDX-License-Identifier: GPL-3.0-or-later
//
// The cost of the user's own commands: reading their files at the start, the processor time of the
// GUI thread for a query, and the rows of an answer against reading its JSON alone.
#include "BenchHome.h"
#include "commands/CommandFolders.h"
#include "commands/ScriptAnswer.h"
#include "commands/ScriptPlugin.h"
#include "core/PluginManager.h"
#include "core/RowsChanged.h"
#include "launcher/AppLauncher.h"
#include "ui/ResultList.h"

#include <QApplication>
#include <QDir>
#include <QEventLoop>
#include <QFile>
#include <QJsonDocument>
#include <QLoggingCategory>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <ctime>

using namespace Qt::StringLiterals;

namespace {

constexpr int folderCount = 50;
constexpr int itemCount = 200;

/// The processor time of this thread, in milliseconds.
double threadTime()
{
    std::timespec time = {};
    ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
}

QByteArray itemsOutput()
{
    QByteArray items;
    for (int i = 0; i < itemCount; ++i) {
        const QByteArray number = QByteArray::number(i);
        items += (i == 0 ? "{\"uid\": \"" : ",\n{\"uid\": \"") + number
                 + "\", \"type\": \"default\", \"title\": \"A document with number " + number
                 + "\", \"subtitle\": \"/home/user/documents/of/this/year\", \"arg\": "
                   "\"/home/user/documents/of/this/year/document-"
                 + number + ".txt\", \"autocomplete\": \"document " + number
                 + "\", \"icon\": {\"path\": \"document.png\"}, \"valid\": true}";
    }
    return "{\"items\": [" + items + "]}\n";
}

void writeFile(const QString &path, const QByteArray &content)
{
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size()) {
        qFatal("cannot write the files");
    }
}

void writeFolders()
{
    const QString place = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
    for (int i = 0; i < folderCount; ++i) {
        writeFile(
            place + u"/commands/c%1/command.json"_s.arg(i),
            R"({"command": "c)" + QByteArray::number(i)
                + R"(", "name": "Command", "name[zh_CN]": "命令", "description": "What it does",
                          "description[zh_CN]": "用途", "icon": "icon.png",
                          "exec": ["./program", "{query}"], "output": "items"})");
    }
}

void readFolders(benchmark::State &state)
{
    const double start = threadTime();
    while (state.KeepRunning()) {
        PluginManager plugins;
        if (!commandfolders::registerAll(plugins).isEmpty()
            || plugins.commands().size() != folderCount) {
            qFatal("the commands are not registered");
        }
    }
    state.counters["value"] = (threadTime() - start) / static_cast<double>(state.iterations());
    state.SetLabel("ms");
}

CommandFile command(const QString &folder)
{
    CommandFile file;
    file.folder = folder;
    file.command = u"mine"_s;
    file.name = u"Mine"_s;
    file.exec = QStringList{u"cat"_s, folder + "/items"_L1};
    return file;
}

// All that the GUI thread does from a query to its rows, without waiting for the program.
void query(benchmark::State &state, const QString &folder)
{
    RowsChanged rowsChanged;
    ScriptPlugin plugin(command(folder), &rowsChanged);
    QEventLoop loop;
    QObject::connect(&rowsChanged, &RowsChanged::changed, &loop, &QEventLoop::quit);
    const double start = threadTime();
    while (state.KeepRunning()) {
        plugin.query(u"text"_s);
        do { // on a busy machine, old rows are dropped before there are new ones
            loop.exec();
        } while (plugin.query(u"text"_s).size() != itemCount);
    }
    state.counters["value"] = (threadTime() - start) / static_cast<double>(state.iterations());
    state.SetLabel("ms");
}

// From the complete output to the rows in the list. Painting the few that fit the window is
// measured by ResultDelegate.paint.
void showRows(benchmark::State &state, AppLauncher &launcher, const QByteArray &output)
{
    ResultList list(&launcher);
    list.resize(720, 344);
    list.show();
    const CommandFile file = command(u"/folder"_s);
    while (state.KeepRunning()) {
        list.updateRecords(ScriptAnswer::parse(output, file).records);
    }
    if (list.count() != itemCount) {
        qFatal("the list does not show the items");
    }
}

void readJson(benchmark::State &state, const QByteArray &output)
{
    while (state.KeepRunning()) {
        benchmark::DoNotOptimize(QJsonDocument::fromJson(output).isObject());
    }
}

} // namespace

int main(int argc, char *argv[])
{
    benchmark::Initialize(&argc, argv);
    const QTemporaryDir home;
    useHome(home.path());
    const QApplication app(argc, argv);
    QLoggingCategory::setFilterRules(u"*.debug=false"_s); // a line for each command
    writeFolders();
    const QByteArray output = itemsOutput();
    writeFile(home.path() + "/items"_L1, output);

    AppLauncher launcher;
    benchmark::RegisterBenchmark("commandfolders.registerAll/measured", readFolders);
    benchmark::RegisterBenchmark("ScriptPlugin.query/measured",
                                 [&](benchmark::State &state) { query(state, home.path()); });
    benchmark::RegisterBenchmark("ScriptAnswer.rows/measured", [&](benchmark::State &state) {
        showRows(state, launcher, output);
    });
    benchmark::RegisterBenchmark("ScriptAnswer.rows/floor",
                                 [&](benchmark::State &state) { readJson(state, output); });
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
