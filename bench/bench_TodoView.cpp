// SPDX-License-Identifier: GPL-3.0-or-later
//
// The cost of the task list compared with the work that any such list needs: creating the rows of
// the tree, and writing the file.
#include "tasks/TaskRepository.h"
#include "tasks/TaskService.h"
#include "tasks/TodoView.h"

#include <QApplication>
#include <QComboBox>
#include <QJsonArray>
#include <QJsonDocument>
#include <QLoggingCategory>
#include <QSaveFile>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTreeWidget>

#include <benchmark/benchmark.h>

#include <vector>

using namespace Qt::StringLiterals;

namespace {

constexpr int taskCount = 2000;
// Gives a tree five levels deep.
constexpr int childCount = 7;

const QString rootId = u"task 0"_s;

/// One root with all other tasks below it; every third task is completed.
Task makeTask(int index)
{
    static const QDateTime firstMoment(QDate(2026, 3, 1), QTime(9, 30));
    Task task;
    task.id = u"task %1"_s.arg(index);
    task.parentId = index == 0 ? QString() : u"task %1"_s.arg((index - 1) / childCount);
    task.title = u"Call the bank about account %1"_s.arg(index);
    task.completed = index % 3 == 2;
    task.createdTime = firstMoment.addSecs(index);
    task.updatedTime = task.createdTime;
    return task;
}

void fill(TaskRepository *repository)
{
    for (int i = 0; i < taskCount; ++i) {
        repository->addTask(makeTask(i));
    }
}

QTreeWidgetItem *makeRow(const Task &task, const QBrush &completedBrush)
{
    auto *row = new QTreeWidgetItem;
    row->setText(0, task.title);
    row->setData(0, Qt::UserRole, task.id);
    row->setData(0, Qt::UserRole + 1, task.completed);
    row->setCheckState(0, task.completed ? Qt::Checked : Qt::Unchecked);
    row->setFlags(row->flags() | Qt::ItemIsEditable | Qt::ItemIsUserCheckable);
    if (task.completed) {
        row->setForeground(0, completedBrush);
    }
    return row;
}

int countRows(const QTreeWidgetItem *row)
{
    int count = 1;
    for (int i = 0; i < row->childCount(); ++i) {
        count += countRows(row->child(i));
    }
    return count;
}

// Paints outside the measured time; both sides paint the same rows.
void paint(benchmark::State &state)
{
    state.PauseTiming();
    QCoreApplication::processEvents();
    state.ResumeTiming();
}

void rebuild(benchmark::State &state)
{
    TaskService service;
    fill(service.repository());
    TodoView view(&service);
    view.findChild<QComboBox *>()->setCurrentIndex(1);
    view.resize(720, 400);
    view.show();
    const auto *tree = view.findChild<QTreeWidget *>();
    for ([[maybe_unused]] auto _ : state) {
        view.activate();
        // The page deletes its earlier rows from the event loop.
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        paint(state);
    }
    if (countRows(tree->topLevelItem(0)) != taskCount) {
        state.SkipWithError("The page does not show all tasks.");
    }
}

void bareRows(benchmark::State &state)
{
    std::vector<Task> tasks;
    tasks.reserve(taskCount);
    for (int i = 0; i < taskCount; ++i) {
        tasks.push_back(makeTask(i));
    }
    QTreeWidget tree;
    tree.setHeaderHidden(true);
    tree.setUniformRowHeights(true);
    tree.resize(720, 400);
    tree.show();
    const QBrush completedBrush = tree.palette().brush(QPalette::PlaceholderText);
    std::vector<QTreeWidgetItem *> rows(taskCount);
    for ([[maybe_unused]] auto _ : state) {
        tree.clear();
        for (int i = 0; i < taskCount; ++i) {
            rows[i] = makeRow(tasks[i], completedBrush);
            if (i > 0) {
                rows[(i - 1) / childCount]->addChild(rows[i]);
            }
        }
        tree.addTopLevelItem(rows[0]);
        tree.expandAll();
        paint(state);
    }
}

void setCompleted(benchmark::State &state)
{
    TaskService service;
    fill(service.repository());
    bool isCompleted = false;
    for ([[maybe_unused]] auto _ : state) {
        isCompleted = !isCompleted;
        service.setCompleted(rootId, isCompleted);
    }
}

void writeDocument(benchmark::State &state)
{
    TaskService service;
    fill(service.repository());
    service.persist();
    const QString path =
        QStandardPaths::writableLocation(QStandardPaths::AppDataLocation) + u"/todo.json"_s;
    const QJsonDocument document(service.repository()->toJson());
    for ([[maybe_unused]] auto _ : state) {
        QSaveFile file(path);
        if (!file.open(QIODevice::WriteOnly)
            || file.write(document.toJson(QJsonDocument::Compact)) <= 0 || !file.commit()) {
            state.SkipWithError("The file cannot be written.");
            return;
        }
    }
}

} // namespace

BENCHMARK(rebuild)->Name("TodoView.rebuild/measured")->Unit(benchmark::kMillisecond);
BENCHMARK(bareRows)->Name("TodoView.rebuild/floor")->Unit(benchmark::kMillisecond);

// Real time, since writing mostly waits.
BENCHMARK(setCompleted)
    ->Name("TaskService.setCompleted/measured")
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();
BENCHMARK(writeDocument)
    ->Name("TaskService.setCompleted/floor")
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();

int main(int argc, char **argv)
{
    // Keeps the user's task file safe.
    const QTemporaryDir home;
    qputenv("HOME", home.path().toLocal8Bit());
    qputenv("XDG_DATA_HOME", home.path().toLocal8Bit());
    QStandardPaths::setTestModeEnabled(true);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QLoggingCategory::setFilterRules(u"*.debug=false"_s);
    const QApplication app(argc, argv);

    benchmark::Initialize(&argc, argv);
    if (!home.isValid() || benchmark::ReportUnrecognizedArguments(argc, argv)) {
        return 1;
    }
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
