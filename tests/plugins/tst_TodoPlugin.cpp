// SPDX-License-Identifier: GPL-3.0-or-later
#include "plugins/TodoPlugin.h"

#include "core/PluginManager.h"
#include "support/TestProgram.h"
#include "tasks/TaskFile.h"
#include "tasks/TodoView.h"

#include <QComboBox>
#include <QCoreApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QStackedWidget>
#include <QTest>
#include <QTranslator>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <memory>

using namespace Qt::StringLiterals;

namespace {

// Translates every text of one context; a text of another context stays English.
class TodoTranslator : public QTranslator
{
public:
    bool isEmpty() const override { return false; }

    QString translate(const char *context, const char *source, const char *, int) const override
    {
        return qstrcmp(context, "TodoPlugin") == 0 ? u'<' + QString::fromUtf8(source) + u'>'
                                                   : QString();
    }
};

QVariantList todoRecord(const QString &title, const QString &subtitle)
{
    return {QVariantMap{{u"title"_s, title}, {u"subtitle"_s, subtitle}, {u"icon"_s, QString()}}};
}

QVariantMap addTaskAction(const QString &title)
{
    return {{u"type"_s, u"addTask"_s}, {u"data"_s, title}, {u"plugin"_s, u"todo"_s}};
}

} // namespace

class tst_TodoPlugin : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void answersTheContract();
    void returnsOneRecordForAnyArguments_data();
    void returnsOneRecordForAnyArguments();
    void translatesItsTexts();
    void executesNothing();
    void offersToAddItsArguments_data();
    void offersToAddItsArguments();
    void addsATaskWithoutThePage();
    void addsNothingForABlankTitle_data();
    void addsNothingForABlankTitle();
    void showsTheAddedTaskOnTheOpenPage();
    void readsTheTasksInItsConstructor();
    void returnsTheSamePageEachTime();
    void eachOpeningUpdatesTheTasks();
    void eachOpeningFocusesTheEntryLine();
    void createsANewPageAfterTheOldOneIsDestroyed();
    void passesOnTheCloseRequest();
};

void tst_TodoPlugin::init()
{
    testhome::reset();
}

void tst_TodoPlugin::answersTheContract()
{
    const TodoPlugin plugin;
    QCOMPARE(plugin.command(), u"todo"_s);
    QVERIFY(plugin.aliases().isEmpty());
    QCOMPARE(plugin.description(), u"Task Management"_s);
    QVERIFY(plugin.hasView());
}

void tst_TodoPlugin::returnsOneRecordForAnyArguments_data()
{
    QTest::addColumn<QString>("args");
    QTest::newRow("none") << QString();
    QTest::newRow("blanks") << u"  "_s;
    QTest::newRow("text") << u"buy milk"_s;
}

void tst_TodoPlugin::returnsOneRecordForAnyArguments()
{
    QFETCH(const QString, args);
    TodoPlugin plugin;
    QCOMPARE(plugin.query(args),
             todoRecord(u"Task Management"_s, u"Manage TODO list and subtasks"_s));
    QVERIFY(!QFile::exists(taskfile::path()));
}

void tst_TodoPlugin::translatesItsTexts()
{
    TodoTranslator translator;
    QCoreApplication::installTranslator(&translator);
    TodoPlugin plugin;
    QCOMPARE(plugin.description(), u"<Task Management>"_s);
    QCOMPARE(plugin.query(QString()),
             todoRecord(u"<Task Management>"_s, u"<Manage TODO list and subtasks>"_s));
    QCoreApplication::removeTranslator(&translator);
}

void tst_TodoPlugin::executesNothing()
{
    TodoPlugin plugin;
    QVERIFY(plugin.execute({}));
    QVERIFY(plugin.execute({{u"type"_s, u"launch"_s}, {u"data"_s, u"/nowhere"_s}}));
}

void tst_TodoPlugin::offersToAddItsArguments_data()
{
    QTest::addColumn<QString>("args");
    QTest::addColumn<QVariantMap>("action");
    QTest::newRow("none") << QString() << QVariantMap();
    QTest::newRow("blanks") << u"  \t"_s << QVariantMap();
    QTest::newRow("text within blanks") << u"  buy  milk "_s << addTaskAction(u"buy  milk"_s);
}

void tst_TodoPlugin::offersToAddItsArguments()
{
    QFETCH(const QString, args);
    QFETCH(const QVariantMap, action);
    PluginManager manager;
    manager.registerPlugin(new TodoPlugin(&manager));
    QCOMPARE(manager.actionForArguments(u"todo"_s, args), action);
    QVERIFY(!QFile::exists(taskfile::path()));
}

void tst_TodoPlugin::addsATaskWithoutThePage()
{
    PluginManager manager;
    manager.registerPlugin(new TodoPlugin(&manager));
    QVERIFY(manager.executeAction(addTaskAction(u" buy milk"_s)));
    QVERIFY(manager.executeAction(addTaskAction(u"buy milk"_s)));
    const QJsonArray tasks = QJsonDocument::fromJson(taskfile::bytes()).array();
    QCOMPARE(tasks.size(), 2);
    for (const auto &task : tasks) {
        QCOMPARE(task.toObject().value("title"_L1).toString(), u"buy milk"_s);
        QCOMPARE(task.toObject().value("parentId"_L1).toString(), QString());
    }
}

void tst_TodoPlugin::addsNothingForABlankTitle_data()
{
    QTest::addColumn<QVariantMap>("action");
    QTest::newRow("empty") << addTaskAction(QString());
    QTest::newRow("blanks") << addTaskAction(u"  "_s);
    QTest::newRow("missing") << QVariantMap{{u"type"_s, u"addTask"_s}, {u"plugin"_s, u"todo"_s}};
}

void tst_TodoPlugin::addsNothingForABlankTitle()
{
    QFETCH(const QVariantMap, action);
    TodoPlugin plugin;
    QVERIFY(!plugin.execute(action));
    QVERIFY(!QFile::exists(taskfile::path()));
}

void tst_TodoPlugin::showsTheAddedTaskOnTheOpenPage()
{
    TodoPlugin plugin;
    QWidget window;
    QVBoxLayout layout(&window);
    QLineEdit box;
    layout.addWidget(&box);
    layout.addWidget(plugin.createView());
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    QCoreApplication::processEvents(); // the page takes the focus when its window shows
    box.setFocus();
    QVERIFY(plugin.execute(addTaskAction(u"buy milk"_s)));

    const auto *tree = window.findChild<QTreeWidget *>();
    QCOMPARE(tree->topLevelItemCount(), 1);
    QCOMPARE(tree->topLevelItem(0)->text(0), u"buy milk"_s);
    QVERIFY(box.hasFocus());
}

void tst_TodoPlugin::readsTheTasksInItsConstructor()
{
    taskfile::write(R"([{"id":"a","title":"task"}])");
    TodoPlugin plugin;
    QVERIFY(QFile::remove(taskfile::path()));
    const std::unique_ptr<QWidget> page(plugin.createView());
    QCOMPARE(page->findChild<QTreeWidget *>()->topLevelItemCount(), 1);
}

void tst_TodoPlugin::returnsTheSamePageEachTime()
{
    TodoPlugin plugin;
    const std::unique_ptr<QWidget> page(plugin.createView());
    QVERIFY(qobject_cast<TodoView *>(page.get()));
    QVERIFY(!page->parent());
    QCOMPARE(plugin.createView(), page.get());
}

void tst_TodoPlugin::eachOpeningUpdatesTheTasks()
{
    taskfile::write(R"([{"id":"a","title":"task"}])");
    TodoPlugin plugin;
    const std::unique_ptr<QWidget> page(plugin.createView());
    page->show();
    QVERIFY(QTest::qWaitForWindowActive(page->windowHandle()));
    auto *tree = page->findChild<QTreeWidget *>();
    auto *filter = page->findChild<QComboBox *>();
    filter->setCurrentIndex(1);
    tree->setCurrentItem(tree->topLevelItem(0));
    tree->setFocus();

    plugin.createView();
    QVERIFY(!tree->currentItem());
    QCOMPARE(filter->currentIndex(), 1);
    QVERIFY(page->findChild<QLineEdit *>(u"todoInput"_s)->hasFocus());
}

void tst_TodoPlugin::eachOpeningFocusesTheEntryLine()
{
    TodoPlugin plugin;
    QWidget window;
    QVBoxLayout layout(&window);
    QLineEdit box;
    QStackedWidget stack;
    layout.addWidget(&box);
    layout.addWidget(&stack);
    stack.addWidget(new QWidget);
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    for (int opening = 0; opening < 3; ++opening) {
        box.setFocus();
        QVERIFY(box.hasFocus());
        QWidget *page = plugin.createView();
        stack.addWidget(page);
        stack.setCurrentWidget(page);
        QTRY_VERIFY(page->findChild<QLineEdit *>(u"todoInput"_s)->hasFocus());
        stack.setCurrentIndex(0);
    }
}

void tst_TodoPlugin::createsANewPageAfterTheOldOneIsDestroyed()
{
    TodoPlugin plugin;
    QWidget *first = plugin.createView();
    first->findChild<QComboBox *>()->setCurrentIndex(2);
    QSignalSpy destroyed(first, &QObject::destroyed);
    delete first;
    QCOMPARE(destroyed.size(), 1);

    const std::unique_ptr<QWidget> second(plugin.createView());
    QCOMPARE(second->findChild<QComboBox *>()->currentIndex(), 0);
}

void tst_TodoPlugin::passesOnTheCloseRequest()
{
    TodoPlugin plugin;
    const std::unique_ptr<QWidget> page(plugin.createView());
    plugin.createView();
    QSignalSpy closed(&plugin, &IPlugin::viewCloseRequested);
    page->findChild<QPushButton *>(u"todoBackButton"_s)->click();
    QCOMPARE(closed.size(), 1);
}

VASKEL_TEST(tst_TodoPlugin, QApplication)
#include "tst_TodoPlugin.moc"
