// SPDX-License-Identifier: GPL-3.0-or-later
//
// The cost of "file" without the index, from the search to the painted rows: the maximum number of
// hits with cached icons, from an index that answers at once.
#include "BenchHome.h"
#include "core/PluginManager.h"
#include "launcher/AppLauncher.h"
#include "platform/FileIndex.h"
#include "plugins/FilePlugin.h"
#include "settings/Settings.h"
#include "ui/CommandLineEdit.h"
#include "ui/MainWindow.h"
#include "update/Updater.h"

#include <QApplication>
#include <QFile>
#include <QListWidget>
#include <QStringList>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <ctime>

using namespace Qt::StringLiterals;

namespace {

constexpr int hitCount = 50;
constexpr double frame = 1.0 / 60; // seconds

QStringList &hits()
{
    static QStringList paths;
    return paths;
}

void writeFiles(const QString &folder)
{
    for (int index = 0; index < hitCount; ++index) {
        const QString path = folder + u"/Document %1.txt"_s.arg(index);
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly)) {
            qFatal("cannot write the files");
        }
        hits().append(path);
    }
}

// In frames of a screen at 60 Hz. Uses processor time, since nothing here waits.
void measured(benchmark::State &state, AppLauncher &launcher)
{
    Settings settings;
    PluginManager plugins;
    plugins.setSettings(&settings);
    plugins.registerPlugin(new FilePlugin(&plugins));
    Updater updater;
    MainWindow window(&launcher, &plugins, &settings, &updater);
    window.show();
    window.findChild<CommandLineEdit *>()->setText(u"file document"_s);
    QMetaObject::invokeMethod(&window, "performSearch"); // draws the icons

    const std::clock_t start = std::clock();
    while (state.KeepRunning()) {
        QMetaObject::invokeMethod(&window, "performSearch");
        QCoreApplication::processEvents();
    }
    const double seconds = static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
    if (window.findChild<QListWidget *>()->count() != hitCount) {
        qFatal("the list does not show the hits");
    }
    state.counters["value"] = seconds / static_cast<double>(state.iterations()) / frame;
    state.SetLabel("frames");
}

} // namespace

// Replaces the system's index with one that answers at once.
namespace platform::fileindex {

QString name()
{
    return u"bench"_s;
}

void watch(QObject * /*context*/, const std::function<void()> & /*completed*/) {}

Answer search(const QString & /*text*/, unsigned /*limit*/)
{
    return {{}, hits()};
}

} // namespace platform::fileindex

int main(int argc, char *argv[])
{
    benchmark::Initialize(&argc, argv);
    const QTemporaryDir home;
    useHome(home.path());
    writeFiles(home.path());
    const QApplication app(argc, argv);

    AppLauncher launcher;
    benchmark::RegisterBenchmark("FilePlugin.query/measured", [&launcher](benchmark::State &state) {
        measured(state, launcher);
    });
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
