// SPDX-License-Identifier: GPL-3.0-or-later
#include "plugins/TodoPlugin.h"

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
