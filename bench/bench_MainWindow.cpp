// SPDX-License-Identifier: GPL-3.0-or-later
//
// The cost of MainWindow::performSearch for the largest catalogue, in milliseconds and compared
// with a bare list of the same texts and icons. All include painting.
#include "BenchHome.h"
#include "core/PluginManager.h"
#include "core/ResultRecord.h"
#include "launcher/AppLauncher.h"
#include "settings/Settings.h"
#include "ui/CommandLineEdit.h"
#include "ui/MainWindow.h"
#include "update/Updater.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QListWidget>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <ctime>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

constexpr int entryCount = 10000;

// In the subtitle of every start-menu entry, but of no built-in one.
const QString query = u"menu"_s;

struct Row
{
    QString text;
    QString icon;
};

void writeFile(const QString &path, const QByteArray &content)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size()) {
        qFatal("cannot write %s", qUtf8Printable(path));
    }
}

/// Creates a start menu of real desktop entries, each with an icon file of its own.
void writeStartMenu(const QString &home)
{
    const QString folder = home + "/data/applications"_L1;
    QDir().mkpath(folder);
    const QString icon = home + "/icon.png"_L1;
    QImage image(64, 64, QImage::Format_ARGB32);
    image.fill(Qt::darkCyan);
    image.save(icon);
    for (int index = 0; index < entryCount; ++index) {
        writeFile(folder + u"/%1.desktop"_s.arg(index),
                  "[Desktop Entry]\nType=Application\nExec=true\nName=Application "
                      + QByteArray::number(index) + "\nIcon=" + QFile::encodeName(icon) + '\n');
    }
}

std::vector<Row> rowsOf(const AppLauncher &launcher)
{
    std::vector<Row> rows;
    const QVariantList records = launcher.search(query);
    for (const QVariant &record : records) {
        const QVariantMap fields = record.toMap();
        rows.push_back({recordTitle(fields) + u'\n' + recordSubtitle(fields), recordIcon(fields)});
        if (!QFile::exists(rows.back().icon)) {
            qFatal("an entry has no icon file");
        }
    }
    if (rows.size() != entryCount) {
        qFatal("the query matches %zu entries", rows.size());
    }
    return rows;
}

/// Returns the processor time of a search in seconds.
double measured(benchmark::State &state, AppLauncher &launcher)
{
    Settings settings;
    PluginManager plugins;
    Updater updater;
    MainWindow window(&launcher, &plugins, &settings, &updater);
    window.show();
    window.findChild<CommandLineEdit *>()->setText(query);
    const std::clock_t start = std::clock();
    while (state.KeepRunning()) {
        QMetaObject::invokeMethod(&window, "performSearch");
        QCoreApplication::processEvents();
    }
    const double seconds = double(std::clock() - start) / CLOCKS_PER_SEC;
    if (window.findChild<QListWidget *>()->count() != entryCount) {
        qFatal("the list does not show the entries");
    }
    return seconds / double(state.iterations());
}

// As a time of its own, since it has to end within a frame.
void measuredTime(benchmark::State &state, AppLauncher &launcher)
{
    state.counters["value"] = measured(state, launcher) * 1000;
    state.SetLabel("ms");
}

void measureFloor(benchmark::State &state, const std::vector<Row> &rows)
{
    QListWidget list;
    list.resize(720, 344);
    list.setIconSize(QSize(40, 40));
    list.setUniformItemSizes(true);
    list.show();
    while (state.KeepRunning()) {
        list.clear();
        for (const Row &row : rows) {
            list.addItem(new QListWidgetItem(QIcon(row.icon), row.text));
        }
        list.setCurrentRow(0);
        QCoreApplication::processEvents();
    }
}

} // namespace

int main(int argc, char *argv[])
{
    benchmark::Initialize(&argc, argv);
    const QTemporaryDir home;
    useHome(home.path());
    writeStartMenu(home.path());
    const QApplication app(argc, argv);

    AppLauncher launcher;
    const std::vector<Row> rows = rowsOf(launcher);

    benchmark::RegisterBenchmark("perform_search/measured", [&launcher](benchmark::State &state) {
        measured(state, launcher);
    })->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark("search_frame/measured", [&launcher](benchmark::State &state) {
        measuredTime(state, launcher);
    })->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark("perform_search/floor", [&rows](benchmark::State &state) {
        measureFloor(state, rows);
    })->Unit(benchmark::kMillisecond);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
