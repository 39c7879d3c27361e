// SPDX-License-Identifier: GPL-3.0-or-later
#include "tasks/TodoView.h"

#include "settings/ThemeManager.h"
#include "support/TestProgram.h"
#include "tasks/TaskFile.h"
#include "tasks/TaskRepository.h"
#include "tasks/TaskService.h"

#include <QAccessible>
#include <QApplication>
#include <QBoxLayout>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QHeaderView>
#include <QHelpEvent>
#include <QImage>
#include <QInputMethodEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPainter>
#include <QPushButton>
#include <QRegularExpression>
#include <QScrollBar>
#include <QSignalSpy>
#include <QStyle>
#include <QStyledItemDelegate>
#include <QTest>
#include <QTextDocument>
#include <QTimer>
#include <QToolTip>
#include <QTranslator>
#include <QTreeWidget>
#include <QWindow>

using namespace Qt::StringLiterals;

namespace {

enum Filter {
    Active,
    All,
    Completed,
};

/// The page in a window, with access to its widgets.
struct Page
{
    Page()
    {
        view.resize(720, 400);
        view.show();
        view.activateWindow();
    }

    TaskService service;
    TodoView view{&service};
    QLineEdit *input = view.findChild<QLineEdit *>(u"todoInput"_s);
    QPushButton *addButton = view.findChild<QPushButton *>(u"primary"_s);
    QPushButton *backButton = view.findChild<QPushButton *>(u"todoBackButton"_s);
    QComboBox *filter = view.findChild<QComboBox *>();
    QLabel *heading = view.findChild<QLabel *>(u"pageTitle"_s);
    QLabel *summary = view.findChild<QLabel *>(u"muted"_s);
    QTreeWidget *tree = view.findChild<QTreeWidget *>(u"todoTree"_s);

    QTreeWidgetItem *row(const QString &title) const
    {
        return tree->findItems(title, Qt::MatchExactly | Qt::MatchRecursive).value(0);
    }

    /// The centre of a row's text in the viewport.
    QPoint textOf(const QString &title) const { return tree->visualItemRect(row(title)).center(); }

    QPoint checkBoxOf(const QString &title) const
    {
        const QRect rect = tree->visualItemRect(row(title));
        const int width = tree->style()->pixelMetric(QStyle::PM_IndicatorWidth, nullptr, tree);
        return {rect.left() + width / 2 + 2, rect.center().y()};
    }

    void click(const QPoint &position) const
    {
        QTest::mouseClick(tree->viewport(), Qt::LeftButton, Qt::NoModifier, position);
    }

    /// Opens the editor of a row by a double click.
    QLineEdit *edit(const QString &title) const
    {
        const QPoint position = textOf(title);
        click(position);
        QTest::mouseDClick(tree->viewport(), Qt::LeftButton, Qt::NoModifier, position);
        return editor();
    }

    QLineEdit *editor() const { return tree->viewport()->findChild<QLineEdit *>(); }

    /// Closes the editor with a key and waits, since it commits in the event loop.
    void endEditor(Qt::Key key) const
    {
        QTest::keyClick(editor(), key);
        QTRY_VERIFY(!editor());
    }

    /// What the tree says while it shows no row, as a screen reader finds it.
    QString emptyText() const { return tree->accessibleDescription(); }

    void requestMenu(const QPoint &position) const
    {
        QContextMenuEvent event(QContextMenuEvent::Mouse, position,
                                tree->viewport()->mapToGlobal(position));
        QCoreApplication::sendEvent(tree->viewport(), &event);
    }

    void requestToolTip(const QString &title) const
    {
        const QPoint position = textOf(title);
        QHelpEvent event(QEvent::ToolTip, position, tree->viewport()->mapToGlobal(position));
        QCoreApplication::sendEvent(tree->viewport(), &event);
    }

    /// Sends the context menu event of the menu key to the focus widget.
    void requestMenuByKey() const
    {
        const QPoint position = tree->inputMethodQuery(Qt::ImCursorRectangle).toRect().center();
        QContextMenuEvent event(QContextMenuEvent::Keyboard, position, tree->mapToGlobal(position));
        QCoreApplication::sendEvent(tree, &event);
    }

    /// The visible rows with their check marks, indented by one dot per level.
    QStringList rows() const
    {
        QStringList lines;
        for (int i = 0; i < tree->topLevelItemCount(); ++i) {
            appendRows(tree->topLevelItem(i), QString(), lines);
        }
        return lines;
    }

private:
    void appendRows(QTreeWidgetItem *item, const QString &indentation, QStringList &lines) const
    {
        if (item->isHidden() || tree->visualItemRect(item).isEmpty()) {
            return;
        }
        const QString mark = item->checkState(0) == Qt::Checked ? u"[x] "_s : u"[ ] "_s;
        lines.append(indentation + mark + item->text(0));
        for (int i = 0; i < item->childCount(); ++i) {
            appendRows(item->child(i), indentation + u'.', lines);
        }
    }
};

/// Waits for the next menu, records its texts and triggers an entry, or none.
class MenuUser : public QObject
{
public:
    explicit MenuUser(const QString &choice = QString())
        : m_choice(choice)
    {
        connect(&m_timer, &QTimer::timeout, this, &MenuUser::lookForMenu);
        m_timer.start(1);
    }

    QStringList texts() const { return m_texts; }
    QPoint position() const { return m_position; }

private:
    void lookForMenu()
    {
        auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
        if (!menu) {
            return;
        }
        m_timer.stop();
        m_position = menu->pos();
        const QList<QAction *> actions = menu->actions();
        for (QAction *action : actions) {
            m_texts.append(action->text());
            if (action->text() == m_choice) {
                menu->setActiveAction(action);
            }
        }
        QTest::keyClick(menu, m_choice.isEmpty() ? Qt::Key_Escape : Qt::Key_Return);
    }

    QString m_choice;
    QStringList m_texts;
    QPoint m_position;
    QTimer m_timer;
};

/// Marks every text in the page's context, so that an untranslated text shows.
class MarkingTranslator : public QTranslator
{
public:
    bool isEmpty() const override { return false; }

    QString translate(const char *context, const char *source, const char *, int) const override
    {
        return qstrcmp(context, "TodoView") == 0 ? u'<' + QString::fromUtf8(source) + u'>'
                                                 : QString();
    }
};

/// Writes the task file from lines of the form "[x] title<parent"; titles are also the ids.
void writeTasks(const QStringList &lines)
{
    QJsonArray array;
    int second = 0;
    for (const QString &line : lines) {
        const QString title = line.mid(4).section(u'<', 0, 0);
        const QDateTime created(QDate(2026, 3, 1), QTime(9, 0).addSecs(++second));
        array.append(QJsonObject{{u"id"_s, title},
                                 {u"parentId"_s, line.section(u'<', 1)},
                                 {u"title"_s, title},
                                 {u"completed"_s, line.startsWith("[x]"_L1)},
                                 {u"createdTime"_s, created.toString(Qt::ISODate)}});
    }
    taskfile::write(QJsonDocument(array).toJson());
}

bool isCompletedOnDisk(const QString &title)
{
    return taskfile::tasksByTitle().value(title).value("completed"_L1).toBool();
}

QString parentOnDisk(const QString &title)
{
    return taskfile::tasksByTitle().value(title).value("parentId"_L1).toString();
}

QStringList titlesOnDisk()
{
    QStringList titles = taskfile::tasksByTitle().keys();
    titles.sort();
    return titles;
}

// More than fit on the page.
QStringList manyTasks()
{
    QStringList lines;
    for (int i = 10; i < 60; ++i) {
        lines.append(u"[ ] task %1"_s.arg(i));
    }
    return lines;
}

bool isGrey(const QTreeWidgetItem *row)
{
    return row->foreground(0) == QGuiApplication::palette().brush(QPalette::PlaceholderText);
}

} // namespace

class tst_TodoView : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() { qApp->setStyleSheet(QString()); }

    void laysOutItsWidgets();
    void setsUpTheTree();
    void offersTheFilters();
    void translatesItsTexts();
    void namesItsControlsForAssistiveTools();
    void tabReachesEveryControl();

    void startsEmpty();
    void showsTheTreeInOrder();
    void rowsStoreIdAndState();
    void completedRowsHaveTheGreyOfTheStyleSheet();
    void greyFollowsTheStyleSheet();
    void returnAddsATask();
    void buttonAddsATask();
    void newTaskIsShown();
    void newTaskIsNotShownIfTheFilterHidesIt();
    void blankEntryChangesNothing_data();
    void blankEntryChangesNothing();

    void filters_data();
    void filters();
    void unknownFilterMatchesNothing();
    void summaryCountsSubtasksUnderAnyFilter();

    void tickingGreysTheSubtreeAndTicksTheParent();
    void tickingUnderActiveHidesTheRow();
    void untickingUnderCompletedHidesTheRow();
    void spaceTicksTheCurrentRow();

    void editsByDoubleClick();
    void editsByTheEditKey();
    void escapeLeavesTheTitle();
    void emptyTitleIsRefused_data();
    void emptyTitleIsRefused();
    void clickElsewhereCommitsTheTitle();
    void clickThatCommitsATitleActsOnTheRowUnderThePointer();
    void tabCommitsTheTitle();
    void rebuildCommitsAnOpenEditor();
    void rebuildRightAfterEnterFindsNoEditor();
    void noOtherTriggerEdits();
    void leavesKeysToTheInputMethod_data();
    void leavesKeysToTheInputMethod();
    void editorKeepsWithinItsRow_data();
    void editorKeepsWithinItsRow();
    void editorKeepsTheTitleInItsPlace();
    void onlyATitleThatIsCutHasAToolTip();
    void changeOfARowIsShownAtOnce();
    void changedRowSurvivesTheRebuild();

    void menuOffersToAddAndDelete();
    void menuAddsASubtask();
    void menuShowsTheNewSubtask();
    void menuAddsNothingBelowLevelFive();
    void menuAddsBelowACompletedRow();
    void menuDeletesTheSubtree();
    void emptySpaceHasNoMenu();
    void keyOpensTheMenuOfTheCurrentRow();

    void deleteKeyDeletesTheSubtreeOfTheCurrentRow();
    void undoKeyRestoresDeletionsOneByOne();
    void undoKeyShowsTheRestoredRow();
    void undoKeyRestoresWhatTheMenuDeleted();
    void undoKeyRestoresAfterTheNextOpening();
    void insertKeyAddsASubtask();
    void keysOfTheTreeNeedARow();
    void keysBelongToAnOpenEditor();

    void rebuildOpensEveryRowAndForgetsTheSelection();
    void rebuildScrollsToTheTop();
    void currentRowKeepsItsPlaceInTheTree();
    void currentRowRemainsAfterEachAction();
    void currentRowAfterAnActionIsVisible();
    void currentRowIsOutlined_data();
    void currentRowIsOutlined();
    void emptyTreeSaysWhatToDo_data();
    void emptyTreeSaysWhatToDo();
    void emptyTreeTellsOfTheUndoKey();
    void activateRebuildsAndKeepsTheFilter();
    void backAsksToClose();

    void survivesACycle_data();
    void survivesACycle();
    void survivesALongChain();
};

void tst_TodoView::init()
{
    testhome::reset();
    QTest::failOnWarning(QRegularExpression(u"^QAbstractItemView"_s));
}

void tst_TodoView::laysOutItsWidgets()
{
    const Page page;
    QCOMPARE(page.view.objectName(), u"todoView"_s);
    QCOMPARE(page.heading->text(), u"Todo"_s);
    QCOMPARE(page.backButton->text(), u"Back"_s);
    QCOMPARE(page.input->placeholderText(), u"Add a task and press Enter"_s);
    QCOMPARE(page.addButton->text(), u"Add"_s);
    QVERIFY(page.filter->objectName().isEmpty());

    auto *layout = qobject_cast<QVBoxLayout *>(page.view.layout());
    QVERIFY(layout);
    QCOMPARE(layout->contentsMargins(), QMargins(18, 16, 18, 18));
    QCOMPARE(layout->spacing(), 10);
    QCOMPARE(layout->count(), 4);
    QCOMPARE(layout->itemAt(3)->widget(), page.tree);
    QCOMPARE(layout->stretch(3), 1);

    auto *heading = qobject_cast<QHBoxLayout *>(layout->itemAt(0)->layout());
    QCOMPARE(heading->count(), 3);
    QCOMPARE(heading->itemAt(0)->widget(), page.heading);
    QVERIFY(heading->itemAt(1)->spacerItem());
    QCOMPARE(heading->itemAt(2)->widget(), page.backButton);

    auto *entry = qobject_cast<QHBoxLayout *>(layout->itemAt(1)->layout());
    QCOMPARE(entry->count(), 2);
    QCOMPARE(entry->spacing(), 8);
    QCOMPARE(entry->itemAt(0)->widget(), page.input);
    QCOMPARE(entry->itemAt(1)->widget(), page.addButton);
    QCOMPARE(entry->stretch(0), 1);
    QCOMPARE(entry->stretch(1), 0);

    auto *filter = qobject_cast<QHBoxLayout *>(layout->itemAt(2)->layout());
    QCOMPARE(filter->count(), 3);
    QCOMPARE(filter->itemAt(0)->widget(), page.filter);
    QVERIFY(filter->itemAt(1)->spacerItem());
    QCOMPARE(filter->itemAt(2)->widget(), page.summary);
}

void tst_TodoView::setsUpTheTree()
{
    const Page page;
    QVERIFY(page.tree->isHeaderHidden());
    QCOMPARE(page.tree->columnCount(), 1);
    QCOMPARE(page.tree->indentation(), 22);
    QVERIFY(!page.tree->isAnimated());
    QVERIFY(page.tree->uniformRowHeights());
    QCOMPARE(page.tree->selectionMode(), QAbstractItemView::SingleSelection);
    QCOMPARE(page.tree->editTriggers(),
             QAbstractItemView::EditTriggers(QAbstractItemView::DoubleClicked
                                             | QAbstractItemView::EditKeyPressed));
    QCOMPARE(page.tree->contextMenuPolicy(), Qt::CustomContextMenu);
    QVERIFY(page.tree->header()->stretchLastSection());
}

void tst_TodoView::offersTheFilters()
{
    const Page page;
    QCOMPARE(page.filter->count(), 3);
    QCOMPARE(page.filter->itemText(0), u"Active"_s);
    QCOMPARE(page.filter->itemText(1), u"All"_s);
    QCOMPARE(page.filter->itemText(2), u"Completed"_s);
    for (int i = 0; i < 3; ++i) {
        QCOMPARE(page.filter->itemData(i), QVariant(i));
    }
    QCOMPARE(page.filter->currentIndex(), int(Active));
}

void tst_TodoView::translatesItsTexts()
{
    MarkingTranslator translator;
    QCoreApplication::installTranslator(&translator);
    writeTasks({u"[ ] task"_s});
    const Page page;
    MenuUser user(u"<Add Subtask>"_s);
    page.requestMenu(page.textOf(u"task"_s));
    QCoreApplication::removeTranslator(&translator);

    QCOMPARE(page.heading->text(), u"<Todo>"_s);
    QCOMPARE(page.backButton->text(), u"<Back>"_s);
    QCOMPARE(page.input->placeholderText(), u"<Add a task and press Enter>"_s);
    QCOMPARE(page.addButton->text(), u"<Add>"_s);
    QCOMPARE(page.filter->itemText(0), u"<Active>"_s);
    QCOMPARE(page.filter->itemText(1), u"<All>"_s);
    QCOMPARE(page.filter->itemText(2), u"<Completed>"_s);
    QCOMPARE(page.summary->text(), u"<2 active · 2 total>"_s);
    QCOMPARE(user.texts(), QStringList({u"<Add Subtask>"_s, u"<Delete>"_s}));
    QCOMPARE(parentOnDisk(u"<New Subtask>"_s), u"task"_s);
}

void tst_TodoView::namesItsControlsForAssistiveTools()
{
    const Page page;
    const QList<QPair<QWidget *, QString>> names{
        {page.input, u"Add a task and press Enter"_s},
        {page.addButton, u"Add"_s},
        {page.tree, u"Todo"_s},
        {page.backButton, u"Back"_s},
    };
    for (const auto &[widget, name] : names) {
        QCOMPARE(QAccessible::queryAccessibleInterface(widget)->text(QAccessible::Name), name);
    }
    // Some accessibility interfaces report the current entry in place of the name.
    QCOMPARE(page.filter->accessibleName(), u"Active / All / Completed"_s);
    QVERIFY(!QAccessible::queryAccessibleInterface(page.filter)->text(QAccessible::Name).isEmpty());
}

void tst_TodoView::tabReachesEveryControl()
{
    writeTasks({u"[ ] task"_s});
    const Page page;
    QVERIFY(QTest::qWaitForWindowActive(page.view.windowHandle()));
    QCOMPARE(QApplication::focusWidget(), page.input);
    for (QWidget *next :
         {static_cast<QWidget *>(page.addButton), static_cast<QWidget *>(page.filter),
          static_cast<QWidget *>(page.tree), static_cast<QWidget *>(page.backButton),
          static_cast<QWidget *>(page.input)}) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        QCOMPARE(QApplication::focusWidget(), next);
    }
}

void tst_TodoView::startsEmpty()
{
    const Page page;
    QCOMPARE(page.tree->topLevelItemCount(), 0);
    QCOMPARE(page.summary->text(), u"0 active · 0 total"_s);
    QVERIFY(!QFile::exists(taskfile::path()));
}

void tst_TodoView::showsTheTreeInOrder()
{
    writeTasks({u"[ ] b"_s, u"[ ] b1<b"_s, u"[ ] a"_s, u"[ ] b2<b"_s, u"[ ] b11<b1"_s,
                u"[ ] orphan<gone"_s});
    const Page page;
    QCOMPARE(page.rows(),
             QStringList({u"[ ] b"_s, u".[ ] b1"_s, u"..[ ] b11"_s, u".[ ] b2"_s, u"[ ] a"_s}));
    QCOMPARE(page.summary->text(), u"6 active · 6 total"_s);
}

void tst_TodoView::rowsStoreIdAndState()
{
    writeTasks({u"[ ] open"_s, u"[x] done"_s});
    const Page page;
    QCOMPARE(page.row(u"open"_s)->data(0, Qt::UserRole), QVariant(u"open"_s));
    QCOMPARE(page.row(u"open"_s)->data(0, Qt::UserRole + 1), QVariant(false));
    QCOMPARE(page.row(u"done"_s)->data(0, Qt::UserRole + 1), QVariant(true));
    QVERIFY(page.row(u"open"_s)->flags().testFlags(Qt::ItemIsEditable | Qt::ItemIsUserCheckable));
    QCOMPARE(page.row(u"open"_s)->data(0, Qt::ForegroundRole), QVariant());
    QVERIFY(isGrey(page.row(u"done"_s)));
    QVERIFY(!page.row(u"done"_s)->font(0).strikeOut());
}

void tst_TodoView::completedRowsHaveTheGreyOfTheStyleSheet()
{
    const QBrush without = QGuiApplication::palette().brush(QPalette::PlaceholderText);
    qApp->setStyleSheet(u"QWidget { color: #f5f5f7; }"_s);
    writeTasks({u"[x] done"_s, u"[ ] open<done"_s});
    const Page page;
    const QBrush grey = page.view.palette().brush(QPalette::PlaceholderText);
    QVERIFY(grey != without);
    QCOMPARE(page.row(u"done"_s)->foreground(0), grey);
}

void tst_TodoView::greyFollowsTheStyleSheet()
{
    writeTasks({u"[x] done"_s, u"[ ] open<done"_s});
    const Page page;
    QLineEdit *editor = page.edit(u"done"_s);
    QTest::keyClicks(editor, u"renamed"_s);
    for (const QString &color : {u"#f5f5f7"_s, u"#1d1d1f"_s}) {
        const QBrush before = page.row(u"done"_s)->foreground(0);
        qApp->setStyleSheet(u"QWidget { color: %1; }"_s.arg(color));
        const QBrush grey = page.view.palette().brush(QPalette::PlaceholderText);
        QVERIFY(grey != before);
        QCOMPARE(page.row(u"done"_s)->foreground(0), grey);
    }
    QCOMPARE(editor->text(), u"renamed"_s);
    QVERIFY(!isCompletedOnDisk(u"open"_s));
}

void tst_TodoView::returnAddsATask()
{
    const Page page;
    for (const QString &title : {u"first"_s, u"second"_s}) {
        QTest::keyClicks(page.input, u"  "_s + title + u' ');
        QTest::keyClick(page.input, Qt::Key_Return);
        QVERIFY(page.input->text().isEmpty());
        QVERIFY(taskfile::tasksByTitle().contains(title));
        QCOMPARE(parentOnDisk(title), QString());
        // The creation time determines the order.
        const QString id = page.row(title)->data(0, Qt::UserRole).toString();
        const QDateTime created = page.service.repository()->task(id).createdTime;
        QTRY_VERIFY(QDateTime::currentMSecsSinceEpoch() > created.toMSecsSinceEpoch());
    }
    QCOMPARE(page.rows(), QStringList({u"[ ] first"_s, u"[ ] second"_s}));
    QCOMPARE(page.summary->text(), u"2 active · 2 total"_s);
}

void tst_TodoView::buttonAddsATask()
{
    const Page page;
    QTest::keyClicks(page.input, u"task"_s);
    QTest::mouseClick(page.addButton, Qt::LeftButton);
    QVERIFY(page.input->text().isEmpty());
    QCOMPARE(page.rows(), QStringList{u"[ ] task"_s});
    QCOMPARE(titlesOnDisk(), QStringList{u"task"_s});
}

void tst_TodoView::newTaskIsShown()
{
    writeTasks(manyTasks());
    const Page page;
    QVERIFY(QTest::qWaitForWindowActive(page.view.windowHandle()));
    QTest::keyClicks(page.input, u"new"_s);
    QTest::keyClick(page.input, Qt::Key_Return);
    QTreeWidgetItem *row = page.row(u"new"_s);
    QVERIFY(page.tree->viewport()->rect().contains(page.tree->visualItemRect(row)));
    QCOMPARE(page.tree->currentItem(), row);
    QVERIFY(page.tree->selectedItems().isEmpty());
    QCOMPARE(QApplication::focusWidget(), page.input);
}

void tst_TodoView::newTaskIsNotShownIfTheFilterHidesIt()
{
    writeTasks({u"[x] done"_s});
    const Page page;
    page.filter->setCurrentIndex(Completed);
    QTest::keyClicks(page.input, u"new"_s);
    QTest::keyClick(page.input, Qt::Key_Return);
    QCOMPARE(page.rows(), QStringList{u"[x] done"_s});
    QVERIFY(!page.tree->currentItem());
}

void tst_TodoView::blankEntryChangesNothing_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("empty") << QString();
    QTest::newRow("blanks") << u"   "_s;
}

void tst_TodoView::blankEntryChangesNothing()
{
    QFETCH(const QString, text);
    const Page page;
    page.input->setText(text);
    QTest::keyClick(page.input, Qt::Key_Return);
    QTest::mouseClick(page.addButton, Qt::LeftButton);
    QCOMPARE(page.input->text(), text);
    QCOMPARE(page.tree->topLevelItemCount(), 0);
    QVERIFY(!QFile::exists(taskfile::path()));
}

void tst_TodoView::filters_data()
{
    QTest::addColumn<int>("filter");
    QTest::addColumn<QStringList>("rows");
    QTest::newRow("active with completed parents of open tasks")
        << int(Active)
        << QStringList{u"[x] done parent"_s, u".[ ] open child"_s, u"[ ] open parent"_s};
    QTest::newRow("all") << int(All) << QStringList{u"[x] done parent"_s,      u".[ ] open child"_s,
                                                    u".[x] done child"_s,      u"[ ] open parent"_s,
                                                    u".[x] done below open"_s, u"[x] done alone"_s};
    QTest::newRow("completed with open parents of completed tasks")
        << int(Completed)
        << QStringList{u"[x] done parent"_s, u".[x] done child"_s, u"[ ] open parent"_s,
                       u".[x] done below open"_s, u"[x] done alone"_s};
}

void tst_TodoView::filters()
{
    QFETCH(const int, filter);
    QFETCH(const QStringList, rows);
    writeTasks({u"[x] done parent"_s, u"[ ] open child<done parent"_s,
                u"[x] done child<done parent"_s, u"[ ] open parent"_s,
                u"[x] done below open<open parent"_s, u"[x] done alone"_s});
    const QByteArray stored = taskfile::bytes();
    const Page page;
    page.filter->setCurrentIndex((filter + 1) % 3);
    page.filter->setCurrentIndex(filter);

    QCOMPARE(page.rows(), rows);
    QCOMPARE(page.summary->text(), u"2 active · 6 total"_s);
    QCOMPARE(taskfile::bytes(), stored);
}

void tst_TodoView::unknownFilterMatchesNothing()
{
    writeTasks({u"[ ] open"_s, u"[x] done"_s});
    const Page page;
    page.filter->addItem(u"other"_s, 3);
    page.filter->setCurrentIndex(3);
    QCOMPARE(page.rows(), QStringList());
}

void tst_TodoView::summaryCountsSubtasksUnderAnyFilter()
{
    writeTasks({u"[ ] a"_s, u"[x] a1<a"_s, u"[ ] a2<a"_s});
    const Page page;
    for (const int filter : {Active, All, Completed}) {
        page.filter->setCurrentIndex(filter);
        QCOMPARE(page.summary->text(), u"2 active · 3 total"_s);
    }
}

void tst_TodoView::tickingGreysTheSubtreeAndTicksTheParent()
{
    writeTasks({u"[ ] parent"_s, u"[x] done<parent"_s, u"[ ] last<parent"_s, u"[ ] below<last"_s});
    const Page page;
    page.filter->setCurrentIndex(All);
    page.click(page.checkBoxOf(u"last"_s));

    QCOMPARE(page.rows(),
             QStringList({u"[x] parent"_s, u".[x] done"_s, u".[x] last"_s, u"..[x] below"_s}));
    for (const QString &title : {u"parent"_s, u"done"_s, u"last"_s, u"below"_s}) {
        QVERIFY(isGrey(page.row(title)));
        QVERIFY(isCompletedOnDisk(title));
    }
    QCOMPARE(page.summary->text(), u"0 active · 4 total"_s);

    page.click(page.checkBoxOf(u"below"_s));
    QCOMPARE(page.rows(),
             QStringList({u"[ ] parent"_s, u".[x] done"_s, u".[ ] last"_s, u"..[ ] below"_s}));
    QVERIFY(!isCompletedOnDisk(u"parent"_s));
}

void tst_TodoView::tickingUnderActiveHidesTheRow()
{
    writeTasks({u"[ ] a"_s, u"[ ] a1<a"_s, u"[ ] b"_s});
    const Page page;
    page.click(page.checkBoxOf(u"a"_s));

    QCOMPARE(page.rows(), QStringList{u"[ ] b"_s});
    QCOMPARE(page.summary->text(), u"1 active · 3 total"_s);
    QVERIFY(isCompletedOnDisk(u"a"_s));
    QVERIFY(isCompletedOnDisk(u"a1"_s));
}

void tst_TodoView::untickingUnderCompletedHidesTheRow()
{
    writeTasks({u"[x] a"_s, u"[x] b"_s});
    const Page page;
    page.filter->setCurrentIndex(Completed);
    page.click(page.checkBoxOf(u"a"_s));
    QCOMPARE(page.rows(), QStringList{u"[x] b"_s});
    QVERIFY(!isCompletedOnDisk(u"a"_s));
}

void tst_TodoView::spaceTicksTheCurrentRow()
{
    writeTasks({u"[ ] a"_s, u"[ ] b"_s});
    const Page page;
    page.tree->setFocus();
    QTest::keyClick(page.tree, Qt::Key_Down);
    QTest::keyClick(page.tree, Qt::Key_Down);
    QTest::keyClick(page.tree, Qt::Key_Space);
    QVERIFY(isCompletedOnDisk(u"b"_s));
    QVERIFY(!isCompletedOnDisk(u"a"_s));
    QCOMPARE(page.rows(), QStringList{u"[ ] a"_s});
}

void tst_TodoView::editsByDoubleClick()
{
    writeTasks({u"[ ] parent"_s, u"[ ] child<parent"_s});
    const Page page;
    QLineEdit *editor = page.edit(u"child"_s);
    QVERIFY(editor);
    editor->setText(u"  renamed "_s);
    page.endEditor(Qt::Key_Return);

    QCOMPARE(page.rows(), QStringList({u"[ ] parent"_s, u".[ ] renamed"_s}));
    QCOMPARE(parentOnDisk(u"renamed"_s), u"parent"_s);
    QCOMPARE(titlesOnDisk(), QStringList({u"parent"_s, u"renamed"_s}));
}

void tst_TodoView::editsByTheEditKey()
{
    writeTasks({u"[ ] task"_s});
    const Page page;
    QVERIFY(QTest::qWaitForWindowActive(page.view.windowHandle()));
    page.tree->setFocus();
    page.tree->setCurrentItem(page.row(u"task"_s));
    QTest::keyClick(page.tree, Qt::Key_F2);
    QLineEdit *editor = page.editor();
    QVERIFY(editor);
    QCOMPARE(editor->selectedText(), u"task"_s);
    QTest::keyClicks(editor, u"renamed"_s);
    page.endEditor(Qt::Key_Return);
    QCOMPARE(page.rows(), QStringList{u"[ ] renamed"_s});
    QCOMPARE(QApplication::focusWidget(), page.tree);
    QCOMPARE(titlesOnDisk(), QStringList{u"renamed"_s});
}

void tst_TodoView::escapeLeavesTheTitle()
{
    writeTasks({u"[ ] task"_s});
    const QByteArray stored = taskfile::bytes();
    const Page page;
    QLineEdit *editor = page.edit(u"task"_s);
    QTest::keyClicks(editor, u"renamed"_s);
    page.endEditor(Qt::Key_Escape);
    QCOMPARE(page.rows(), QStringList{u"[ ] task"_s});
    QCOMPARE(taskfile::bytes(), stored);
}

void tst_TodoView::emptyTitleIsRefused_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("empty") << QString();
    QTest::newRow("blanks") << u"  "_s;
}

void tst_TodoView::emptyTitleIsRefused()
{
    QFETCH(const QString, text);
    writeTasks({u"[ ] parent"_s, u"[ ] child<parent"_s});
    const QByteArray stored = taskfile::bytes();
    const Page page;
    QLineEdit *editor = page.edit(u"child"_s);
    editor->setText(text);
    page.endEditor(Qt::Key_Return);
    QCOMPARE(page.rows(), QStringList({u"[ ] parent"_s, u".[ ] child"_s}));
    QCOMPARE(taskfile::bytes(), stored);
}

void tst_TodoView::clickElsewhereCommitsTheTitle()
{
    writeTasks({u"[ ] a"_s, u"[ ] a1<a"_s, u"[ ] b"_s});
    const Page page;
    QVERIFY(QTest::qWaitForWindowActive(page.view.windowHandle()));
    QLineEdit *editor = page.edit(u"a1"_s);
    QTest::keyClicks(editor, u"renamed"_s);
    page.click(page.checkBoxOf(u"b"_s));
    QCOMPARE(page.rows(), QStringList({u"[ ] a"_s, u".[ ] renamed"_s}));
    QTRY_VERIFY(!page.editor());
    QVERIFY(isCompletedOnDisk(u"b"_s));
    QCOMPARE(parentOnDisk(u"renamed"_s), u"a"_s);
}

// The rebuild after the edit scrolls to the top.
void tst_TodoView::clickThatCommitsATitleActsOnTheRowUnderThePointer()
{
    writeTasks(manyTasks());
    const Page page;
    QVERIFY(QTest::qWaitForWindowActive(page.view.windowHandle()));
    page.tree->scrollToBottom();
    QTest::keyClicks(page.edit(u"task 55"_s), u"renamed"_s);
    const QPoint position = page.checkBoxOf(u"task 57"_s);
    QTest::mouseClick(page.view.windowHandle(), Qt::LeftButton, Qt::NoModifier,
                      page.tree->viewport()->mapTo(&page.view, position));
    QTRY_VERIFY(!page.editor());
    QTRY_VERIFY(!page.row(u"task 55"_s));
    QVERIFY(isCompletedOnDisk(u"task 57"_s));
    QCOMPARE(page.summary->text(), u"49 active · 50 total"_s);
    QVERIFY(titlesOnDisk().contains(u"renamed"_s));
}

void tst_TodoView::tabCommitsTheTitle()
{
    writeTasks({u"[ ] a"_s, u"[ ] b"_s});
    const Page page;
    QVERIFY(QTest::qWaitForWindowActive(page.view.windowHandle()));
    QTest::keyClicks(page.edit(u"a"_s), u"renamed"_s);
    page.endEditor(Qt::Key_Tab);
    QCOMPARE(page.rows(), QStringList({u"[ ] renamed"_s, u"[ ] b"_s}));
    QCOMPARE(titlesOnDisk(), QStringList({u"b"_s, u"renamed"_s}));
    QCOMPARE(QApplication::focusWidget(), page.tree);
}

void tst_TodoView::rebuildCommitsAnOpenEditor()
{
    writeTasks({u"[ ] a"_s, u"[ ] a1<a"_s});
    Page page;
    QVERIFY(QTest::qWaitForWindowActive(page.view.windowHandle()));
    QTest::keyClicks(page.edit(u"a1"_s), u"renamed"_s);
    page.view.activate();
    QCOMPARE(page.rows(), QStringList({u"[ ] a"_s, u".[ ] renamed"_s}));
    QCOMPARE(parentOnDisk(u"renamed"_s), u"a"_s);
    QCOMPARE(QApplication::focusWidget(), page.input);
    QTRY_VERIFY(!page.editor());
}

void tst_TodoView::rebuildRightAfterEnterFindsNoEditor()
{
    writeTasks({u"[ ] a"_s, u"[ ] a1<a"_s});
    Page page;
    QVERIFY(QTest::qWaitForWindowActive(page.view.windowHandle()));
    QLineEdit *editor = page.edit(u"a1"_s);
    QTest::keyClicks(editor, u"renamed"_s);
    QTest::keyClick(editor, Qt::Key_Return);
    page.view.activate(); // as a hotkey does
    QTRY_VERIFY(!page.editor());
    QCOMPARE(page.rows(), QStringList({u"[ ] a"_s, u".[ ] renamed"_s}));
    QCOMPARE(parentOnDisk(u"renamed"_s), u"a"_s);
}

void tst_TodoView::noOtherTriggerEdits()
{
    writeTasks({u"[ ] task"_s});
    const Page page;
    page.tree->setCurrentItem(page.row(u"task"_s));
    page.click(page.textOf(u"task"_s));
    page.click(page.textOf(u"task"_s));
    QTest::keyClick(page.tree, Qt::Key_X);
    QVERIFY(!page.editor());
}

void tst_TodoView::leavesKeysToTheInputMethod_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::newRow("Enter") << Qt::Key_Return;
    QTest::newRow("Tab") << Qt::Key_Tab;
    QTest::newRow("Escape") << Qt::Key_Escape;
}

void tst_TodoView::leavesKeysToTheInputMethod()
{
    QFETCH(Qt::Key, key);
    writeTasks({u"[ ] task"_s});
    const Page page;
    QVERIFY(QTest::qWaitForWindowActive(page.view.windowHandle()));
    const auto compose = [](QLineEdit *edit, const QString &preedit) {
        QInputMethodEvent event(preedit, {});
        QCoreApplication::sendEvent(edit, &event);
    };

    page.input->setFocus();
    page.input->setText(u"new"_s);
    compose(page.input, u"ni"_s);
    QTest::keyClick(page.input, key);
    QVERIFY(page.input->hasFocus());
    QCOMPARE(page.input->text(), u"new"_s);
    compose(page.input, {});

    QLineEdit *editor = page.edit(u"task"_s);
    QVERIFY(editor);
    compose(editor, u"hao"_s);
    QTest::keyClick(editor, key);
    QCoreApplication::processEvents();
    QCOMPARE(page.editor(), editor);
    QVERIFY(editor->hasFocus());
    compose(editor, {});
    page.endEditor(key);
    QCOMPARE(page.tree->topLevelItemCount(), 1);
}

void tst_TodoView::editorKeepsWithinItsRow_data()
{
    QTest::addColumn<QString>("title");
    QTest::newRow("short title") << u"a"_s;
    QTest::newRow("title that does not fit") << u"long "_s.repeated(40).trimmed();
    QTest::newRow("fifth level") << u"5"_s;
}

void tst_TodoView::editorKeepsWithinItsRow()
{
    QFETCH(const QString, title);
    QTest::failOnWarning(QRegularExpression(u"Negative sizes"_s));
    qApp->setStyleSheet(ThemeManager().styleSheet());
    writeTasks({u"[ ] "_s + u"long "_s.repeated(40).trimmed(), u"[ ] a"_s, u"[ ] 2<a"_s,
                u"[ ] 3<2"_s, u"[ ] 4<3"_s, u"[ ] 5<4"_s});
    Page page;
    page.view.resize(720, 600);
    const QLineEdit *editor = page.edit(title);
    QVERIFY(editor);
    const QRect row = page.tree->visualItemRect(page.row(title));
    QVERIFY(row.contains(editor->geometry()));
    QVERIFY(qAbs(editor->geometry().center().y() - row.center().y()) <= 1);
    QVERIFY(editor->height() >= editor->minimumSizeHint().height());
    // The check box remains visible.
    QVERIFY(editor->x() > page.checkBoxOf(title).x());
}

void tst_TodoView::editorKeepsTheTitleInItsPlace()
{
    qApp->setStyleSheet(ThemeManager().styleSheet());
    writeTasks({u"[ ] task"_s});
    const Page page;
    const QStyle *style = page.tree->style();
    QStyleOptionViewItem option;
    option.initFrom(page.tree);
    option.rect = page.tree->visualItemRect(page.row(u"task"_s));
    option.features = QStyleOptionViewItem::HasDisplay | QStyleOptionViewItem::HasCheckIndicator;
    option.text = u"task"_s;
    const int left = style->subElementRect(QStyle::SE_ItemViewItemText, &option, page.tree).left()
                     + style->pixelMetric(QStyle::PM_FocusFrameHMargin, &option, page.tree) + 1;

    QLineEdit *editor = page.edit(u"task"_s);
    editor->home(false);
    const QRect cursor = editor->inputMethodQuery(Qt::ImCursorRectangle).toRect();
    QVERIFY(qAbs(editor->x() + cursor.center().x() - left) <= 2);
}

void tst_TodoView::onlyATitleThatIsCutHasAToolTip()
{
    qApp->setStyleSheet(ThemeManager().styleSheet());
    const QString title = u"long &amp; "_s.repeated(20).trimmed();
    writeTasks({u"[ ] short"_s, u"[ ] "_s + title});
    Page page;
    QVERIFY(QTest::qWaitForWindowExposed(&page.view));
    page.requestToolTip(u"short"_s);
    QVERIFY(!QToolTip::isVisible());
    page.requestToolTip(title);
    QVERIFY(QToolTip::isVisible());
    QTextDocument text;
    text.setHtml(QToolTip::text());
    QCOMPARE(text.toPlainText(), title);
    QToolTip::hideText();
}

void tst_TodoView::changeOfARowIsShownAtOnce()
{
    writeTasks({u"[ ] a"_s, u"[ ] a1<a"_s});
    const Page page;
    page.row(u"a1"_s)->setText(0, u"renamed"_s);
    QCOMPARE(page.rows(), QStringList({u"[ ] a"_s, u".[ ] renamed"_s}));
    page.row(u"renamed"_s)->setText(0, QString());
    QCOMPARE(page.rows(), QStringList({u"[ ] a"_s, u".[ ] renamed"_s}));
    page.row(u"renamed"_s)->setCheckState(0, Qt::Checked);
    QCOMPARE(page.rows(), QStringList());
    QCOMPARE(page.summary->text(), u"0 active · 2 total"_s);
}

void tst_TodoView::changedRowSurvivesTheRebuild()
{
    writeTasks({u"[ ] a"_s, u"[ ] a1<a"_s});
    const Page page;
    // Called after the page's slot. Like the rest of QTreeWidgetItem::setData(), it uses the row.
    QString title;
    connect(page.tree, &QTreeWidget::itemChanged, this,
            [&title](const QTreeWidgetItem *row) { title = row->text(0); });
    page.row(u"a1"_s)->setCheckState(0, Qt::Checked);
    QCOMPARE(page.rows(), QStringList());
    QCOMPARE(title, u"a1"_s);
}

void tst_TodoView::menuOffersToAddAndDelete()
{
    writeTasks({u"[ ] a"_s, u"[ ] b"_s});
    const QByteArray stored = taskfile::bytes();
    const Page page;
    const MenuUser user;
    const QPoint position = page.textOf(u"b"_s);
    page.requestMenu(position);

    QCOMPARE(user.texts(), QStringList({u"Add Subtask"_s, u"Delete"_s}));
    QCOMPARE(user.position(), page.tree->viewport()->mapToGlobal(position));
    QCOMPARE(page.tree->currentItem(), page.row(u"b"_s));
    QCOMPARE(taskfile::bytes(), stored);
}

void tst_TodoView::menuAddsASubtask()
{
    writeTasks({u"[ ] a"_s, u"[ ] b"_s});
    const Page page;
    const MenuUser user(u"Add Subtask"_s);
    page.requestMenu(page.textOf(u"a"_s));

    QCOMPARE(page.rows(), QStringList({u"[ ] a"_s, u".[ ] New Subtask"_s, u"[ ] b"_s}));
    QCOMPARE(parentOnDisk(u"New Subtask"_s), u"a"_s);
    QVERIFY(!page.editor());
}

void tst_TodoView::menuShowsTheNewSubtask()
{
    QStringList lines{u"[ ] parent"_s};
    for (const QString &line : manyTasks()) {
        lines.append(line + u"<parent"_s);
    }
    writeTasks(lines);
    const Page page;
    const MenuUser user(u"Add Subtask"_s);
    page.requestMenu(page.textOf(u"parent"_s));
    const QRect row = page.tree->visualItemRect(page.row(u"New Subtask"_s));
    QVERIFY(page.tree->viewport()->rect().contains(row));
}

void tst_TodoView::menuAddsNothingBelowLevelFive()
{
    writeTasks({u"[ ] 1"_s, u"[ ] 2<1"_s, u"[ ] 3<2"_s, u"[ ] 4<3"_s, u"[ ] 5<4"_s});
    const QByteArray stored = taskfile::bytes();
    const Page page;
    {
        const MenuUser user(u"Add Subtask"_s);
        page.requestMenu(page.textOf(u"5"_s));
    }
    QCOMPARE(page.row(u"5"_s)->childCount(), 0);
    QCOMPARE(taskfile::bytes(), stored);
    QCOMPARE(page.tree->currentItem(), page.row(u"5"_s));

    const MenuUser user(u"Add Subtask"_s);
    page.requestMenu(page.textOf(u"4"_s));
    QCOMPARE(page.row(u"4"_s)->childCount(), 2);
}

void tst_TodoView::menuAddsBelowACompletedRow()
{
    writeTasks({u"[x] done"_s, u"[ ] open<done"_s});
    const Page page;
    {
        const MenuUser user(u"Add Subtask"_s);
        page.requestMenu(page.textOf(u"done"_s));
    }
    QCOMPARE(page.rows(), QStringList({u"[x] done"_s, u".[ ] open"_s, u".[ ] New Subtask"_s}));

    page.filter->setCurrentIndex(Completed);
    const MenuUser user(u"Add Subtask"_s);
    page.requestMenu(page.textOf(u"done"_s));
    QCOMPARE(page.rows(), QStringList{u"[x] done"_s});
    QCOMPARE(page.summary->text(), u"3 active · 4 total"_s);
}

void tst_TodoView::menuDeletesTheSubtree()
{
    writeTasks({u"[ ] a"_s, u"[ ] a1<a"_s, u"[ ] a2<a1"_s, u"[ ] b"_s});
    const Page page;
    const MenuUser user(u"Delete"_s);
    page.requestMenu(page.textOf(u"a"_s));
    QCOMPARE(page.rows(), QStringList{u"[ ] b"_s});
    QCOMPARE(titlesOnDisk(), QStringList{u"b"_s});
}

void tst_TodoView::emptySpaceHasNoMenu()
{
    writeTasks({u"[ ] a"_s});
    const Page page;
    const MenuUser user;
    page.requestMenu(page.tree->viewport()->rect().bottomLeft() + QPoint(40, -5));
    QVERIFY(user.texts().isEmpty());
    QVERIFY(!page.tree->currentItem());
}

void tst_TodoView::keyOpensTheMenuOfTheCurrentRow()
{
    writeTasks({u"[ ] a"_s, u"[ ] b"_s});
    const Page page;
    page.tree->setCurrentItem(page.row(u"b"_s));
    const MenuUser user(u"Delete"_s);
    page.requestMenuByKey();
    QCOMPARE(page.rows(), QStringList{u"[ ] a"_s});
}

void tst_TodoView::deleteKeyDeletesTheSubtreeOfTheCurrentRow()
{
    writeTasks({u"[ ] a"_s, u"[ ] b"_s, u"[ ] b1<b"_s, u"[ ] b2<b1"_s, u"[ ] c"_s});
    const Page page;
    QVERIFY(QTest::qWaitForWindowActive(page.view.windowHandle()));
    page.tree->setFocus();
    page.tree->setCurrentItem(page.row(u"b"_s));
    QTest::keyClick(page.tree, Qt::Key_Delete);
    QCOMPARE(page.rows(), QStringList({u"[ ] a"_s, u"[ ] c"_s}));
    QCOMPARE(titlesOnDisk(), QStringList({u"a"_s, u"c"_s}));
    QCOMPARE(page.tree->currentItem(), page.row(u"c"_s));
    QCOMPARE(QApplication::focusWidget(), page.tree);
    QCOMPARE(page.summary->text(), u"2 active · 2 total"_s);
}

void tst_TodoView::undoKeyRestoresDeletionsOneByOne()
{
    writeTasks({u"[ ] a"_s, u"[ ] a1<a"_s, u"[x] a2<a"_s, u"[ ] b"_s, u"[ ] c"_s});
    const Page page;
    page.filter->setCurrentIndex(All);
    const QStringList rows = page.rows();
    for (const QString &title : {u"b"_s, u"a1"_s, u"a"_s}) {
        page.tree->setCurrentItem(page.row(title));
        QTest::keyClick(page.tree, Qt::Key_Delete);
    }
    QCOMPARE(page.rows(), QStringList{u"[ ] c"_s});
    QTest::keyClick(page.tree, Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(page.rows(), QStringList({u"[ ] a"_s, u".[x] a2"_s, u"[ ] c"_s}));
    QTest::keyClick(page.tree, Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(page.rows(), QStringList({u"[ ] a"_s, u".[ ] a1"_s, u".[x] a2"_s, u"[ ] c"_s}));
    QTest::keyClick(page.tree, Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(page.rows(), rows);
    QCOMPARE(taskfile::tasksByTitle().value(u"a1"_s).value("createdTime"_L1).toString(),
             u"2026-03-01T09:00:02"_s);
    QCOMPARE(parentOnDisk(u"a1"_s), u"a"_s);

    const QByteArray stored = taskfile::bytes();
    QTest::keyClick(page.tree, Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(taskfile::bytes(), stored);
}

void tst_TodoView::undoKeyShowsTheRestoredRow()
{
    writeTasks(manyTasks());
    const Page page;
    QVERIFY(QTest::qWaitForWindowActive(page.view.windowHandle()));
    page.tree->setFocus();
    page.tree->setCurrentItem(page.row(u"task 58"_s));
    QTest::keyClick(page.tree, Qt::Key_Delete);
    QTest::keyClick(page.tree, Qt::Key_Home);
    QTest::keyClick(page.tree, Qt::Key_Z, Qt::ControlModifier);
    QTreeWidgetItem *row = page.row(u"task 58"_s);
    QCOMPARE(page.tree->currentItem(), row);
    QVERIFY(page.tree->viewport()->rect().contains(page.tree->visualItemRect(row)));
}

void tst_TodoView::undoKeyRestoresWhatTheMenuDeleted()
{
    writeTasks({u"[ ] a"_s, u"[ ] a1<a"_s, u"[ ] b"_s});
    const Page page;
    const MenuUser user(u"Delete"_s);
    page.requestMenu(page.textOf(u"a"_s));
    QCOMPARE(page.rows(), QStringList{u"[ ] b"_s});
    QTest::keyClick(page.tree, Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(page.rows(), QStringList({u"[ ] a"_s, u".[ ] a1"_s, u"[ ] b"_s}));
}

void tst_TodoView::undoKeyRestoresAfterTheNextOpening()
{
    writeTasks({u"[ ] a"_s});
    Page page;
    page.tree->setCurrentItem(page.row(u"a"_s));
    QTest::keyClick(page.tree, Qt::Key_Delete);
    QCOMPARE(page.rows(), QStringList());
    page.view.activate();
    QTest::keyClick(page.tree, Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(page.rows(), QStringList{u"[ ] a"_s});
    QCOMPARE(titlesOnDisk(), QStringList{u"a"_s});
}

void tst_TodoView::insertKeyAddsASubtask()
{
    writeTasks({u"[ ] a"_s, u"[ ] a1<a"_s, u"[ ] b"_s});
    const Page page;
    page.tree->setCurrentItem(page.row(u"a"_s));
    QTest::keyClick(page.tree, Qt::Key_Insert);
    QCOMPARE(page.rows(),
             QStringList({u"[ ] a"_s, u".[ ] a1"_s, u".[ ] New Subtask"_s, u"[ ] b"_s}));
    QCOMPARE(parentOnDisk(u"New Subtask"_s), u"a"_s);
    QCOMPARE(page.tree->currentItem(), page.row(u"New Subtask"_s));

    // The fifth level is the deepest.
    for (int i = 0; i < 5; ++i) {
        QTest::keyClick(page.tree, Qt::Key_Insert);
    }
    QCOMPARE(page.rows(),
             QStringList({u"[ ] a"_s, u".[ ] a1"_s, u".[ ] New Subtask"_s, u"..[ ] New Subtask"_s,
                          u"...[ ] New Subtask"_s, u"....[ ] New Subtask"_s, u"[ ] b"_s}));
}

void tst_TodoView::keysOfTheTreeNeedARow()
{
    const Page page;
    for (const Qt::Key key : {Qt::Key_Delete, Qt::Key_Insert}) {
        QTest::keyClick(page.tree, key);
    }
    QTest::keyClick(page.tree, Qt::Key_Z, Qt::ControlModifier);
    QVERIFY(!QFile::exists(taskfile::path()));
}

void tst_TodoView::keysBelongToAnOpenEditor()
{
    writeTasks({u"[ ] gone"_s, u"[ ] task"_s});
    const Page page;
    QVERIFY(QTest::qWaitForWindowActive(page.view.windowHandle()));
    page.tree->setCurrentItem(page.row(u"gone"_s));
    QTest::keyClick(page.tree, Qt::Key_Delete);
    QLineEdit *editor = page.edit(u"task"_s);
    QTest::keyClick(editor, Qt::Key_Insert);
    QTest::keyClick(editor, Qt::Key_Delete);
    QCOMPARE(editor->text(), QString());
    QTest::keyClick(editor, Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(editor->text(), u"task"_s);
    QCOMPARE(page.editor(), editor);
    QCOMPARE(page.rows(), QStringList{u"[ ] task"_s});
    QCOMPARE(titlesOnDisk(), QStringList{u"task"_s});
    page.endEditor(Qt::Key_Escape);
}

void tst_TodoView::rebuildOpensEveryRowAndForgetsTheSelection()
{
    writeTasks({u"[ ] a"_s, u"[ ] a1<a"_s});
    Page page;
    page.tree->setCurrentItem(page.row(u"a1"_s));
    page.row(u"a"_s)->setExpanded(false);
    page.view.activate();
    QVERIFY(page.row(u"a"_s)->isExpanded());
    QVERIFY(!page.tree->currentItem());
    QVERIFY(page.tree->selectedItems().isEmpty());
}

void tst_TodoView::rebuildScrollsToTheTop()
{
    writeTasks(manyTasks());
    Page page;
    const QScrollBar *bar = page.tree->verticalScrollBar();
    page.tree->scrollToBottom();
    QVERIFY(bar->value() > 0);
    page.view.activate();
    QCOMPARE(bar->value(), 0);

    page.tree->scrollToBottom();
    page.row(u"task 30"_s)->setCheckState(0, Qt::Checked);
    QCOMPARE(bar->value(), 0);
}

void tst_TodoView::currentRowKeepsItsPlaceInTheTree()
{
    writeTasks({u"[ ] a"_s, u"[ ] a1<a"_s, u"[x] done"_s, u"[ ] b"_s, u"[ ] c"_s, u"[ ] d"_s});
    const Page page;
    QVERIFY(QTest::qWaitForWindowActive(page.view.windowHandle()));
    page.tree->setFocus();
    page.tree->setCurrentItem(page.row(u"b"_s));
    for (const QString &next : {u"c"_s, u"d"_s, u"a1"_s}) {
        QTest::keyClick(page.tree, Qt::Key_Space);
        QCOMPARE(page.tree->currentItem(), page.row(next));
        QVERIFY(page.tree->selectedItems().isEmpty());
    }
    QTest::keyClick(page.tree, Qt::Key_Up);
    QCOMPARE(page.tree->selectedItems(), QList<QTreeWidgetItem *>{page.row(u"a"_s)});
    QTest::keyClick(page.tree, Qt::Key_Space);
    QCOMPARE(page.rows(), QStringList());
    QVERIFY(!page.tree->currentItem());

    // A row that stays visible stays the current one.
    page.filter->setCurrentIndex(All);
    page.tree->setCurrentItem(page.row(u"c"_s));
    QTest::keyClick(page.tree, Qt::Key_Space);
    QTest::keyClick(page.tree, Qt::Key_Space);
    QVERIFY(isCompletedOnDisk(u"c"_s));
    QCOMPARE(page.tree->currentItem(), page.row(u"c"_s));
}

void tst_TodoView::currentRowRemainsAfterEachAction()
{
    writeTasks({u"[ ] a"_s, u"[ ] b"_s, u"[ ] c"_s});
    const Page page;
    QVERIFY(QTest::qWaitForWindowActive(page.view.windowHandle()));
    page.tree->setFocus();
    page.tree->setCurrentItem(page.row(u"b"_s));
    {
        const MenuUser user(u"Add Subtask"_s);
        page.requestMenuByKey();
    }
    QCOMPARE(page.rows(), QStringList({u"[ ] a"_s, u"[ ] b"_s, u".[ ] New Subtask"_s, u"[ ] c"_s}));
    QCOMPARE(page.tree->currentItem(), page.row(u"b"_s));

    // On the offscreen platform an open menu is the active window.
    page.view.windowHandle()->requestActivate();
    QTRY_COMPARE(QApplication::focusWidget(), page.tree);
    QTest::keyClick(page.tree, Qt::Key_F2);
    QTest::keyClicks(page.editor(), u"renamed"_s);
    page.endEditor(Qt::Key_Return);
    QCOMPARE(page.tree->currentItem(), page.row(u"renamed"_s));

    const MenuUser user(u"Delete"_s);
    page.requestMenuByKey();
    QCOMPARE(page.rows(), QStringList({u"[ ] a"_s, u"[ ] c"_s}));
    QCOMPARE(page.tree->currentItem(), page.row(u"c"_s));
}

void tst_TodoView::currentRowAfterAnActionIsVisible()
{
    writeTasks(manyTasks());
    const Page page;
    QVERIFY(QTest::qWaitForWindowActive(page.view.windowHandle()));
    page.tree->setFocus();
    page.tree->setCurrentItem(page.row(u"task 57"_s));
    QTest::keyClick(page.tree, Qt::Key_Space);
    QTreeWidgetItem *next = page.row(u"task 58"_s);
    QCOMPARE(page.tree->currentItem(), next);
    QVERIFY(page.tree->viewport()->rect().contains(page.tree->visualItemRect(next)));
}

void tst_TodoView::currentRowIsOutlined_data()
{
    QTest::addColumn<bool>("hasFocus");
    QTest::addColumn<bool>("byKeyboard");
    QTest::addColumn<bool>("isSelected");
    QTest::addColumn<bool>("isOutlined");
    QTest::newRow("by keyboard") << true << true << true << true;
    QTest::newRow("by mouse") << true << false << true << false;
    QTest::newRow("without the focus") << false << true << true << false;
    QTest::newRow("by keyboard, not selected") << true << true << false << true;
    QTest::newRow("by mouse, not selected") << true << false << false << true;
    QTest::newRow("neither selected nor with the focus") << false << true << false << false;
}

void tst_TodoView::currentRowIsOutlined()
{
    QFETCH(const bool, hasFocus);
    QFETCH(const bool, byKeyboard);
    QFETCH(const bool, isSelected);
    QFETCH(const bool, isOutlined);
    // The program's style sheet removes the view's own outline.
    qApp->setStyleSheet(u"QTreeView { outline: none; }"_s);
    writeTasks({u"[ ] a"_s});
    const Page page;

    QStyleOptionViewItem option;
    option.widget = page.tree;
    option.rect = QRect(0, 0, 200, 40);
    option.palette.setColor(QPalette::Highlight, Qt::blue);
    option.palette.setColor(QPalette::HighlightedText, Qt::white);
    option.palette.setColor(QPalette::Text, Qt::white);
    option.state = QStyle::State_Enabled;
    option.state.setFlag(QStyle::State_HasFocus, hasFocus);
    option.state.setFlag(QStyle::State_KeyboardFocusChange, byKeyboard);
    option.state.setFlag(QStyle::State_Selected, isSelected);
    QImage image(option.rect.size(), QImage::Format_RGB32);
    image.fill(Qt::black);
    QPainter painter(&image);
    page.tree->itemDelegate()->paint(&painter, option, page.tree->model()->index(0, 0));
    painter.end();
    QCOMPARE(image.pixelColor(100, 1) == QColor(Qt::white), isOutlined);
    QCOMPARE(image.pixelColor(1, 20) == QColor(Qt::white), isOutlined);
}

void tst_TodoView::emptyTreeSaysWhatToDo_data()
{
    QTest::addColumn<QStringList>("tasks");
    QTest::addColumn<int>("filter");
    QTest::addColumn<QString>("title");
    const QStringList none;
    const QStringList open{u"[ ] open"_s};
    const QStringList done{u"[x] done"_s};
    QTest::newRow("no task under active") << none << int(Active) << u"No tasks yet"_s;
    QTest::newRow("no task under all") << none << int(All) << u"No tasks yet"_s;
    QTest::newRow("no task under completed") << none << int(Completed) << u"No tasks yet"_s;
    QTest::newRow("none is active") << done << int(Active) << u"No active tasks"_s;
    QTest::newRow("none is completed") << open << int(Completed) << u"No completed tasks"_s;
}

void tst_TodoView::emptyTreeSaysWhatToDo()
{
    QFETCH(const QStringList, tasks);
    QFETCH(const int, filter);
    QFETCH(const QString, title);
    writeTasks(tasks);
    const Page page;
    page.filter->setCurrentIndex(filter);
    QCOMPARE(page.rows(), QStringList());
    QCOMPARE(page.emptyText().section(u'\n', 0, 0), title);

    page.filter->setCurrentIndex(filter == Completed ? All : Completed);
    QCOMPARE(page.rows().isEmpty(), !page.emptyText().isEmpty());
}

void tst_TodoView::emptyTreeTellsOfTheUndoKey()
{
    writeTasks({u"[ ] task"_s});
    const Page page;
    page.tree->setCurrentItem(page.row(u"task"_s));
    QTest::keyClick(page.tree, Qt::Key_Delete);
    QVERIFY(page.emptyText().contains("Ctrl+Z"_L1));
    QTest::keyClick(page.tree, Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(page.emptyText(), QString());
}

void tst_TodoView::activateRebuildsAndKeepsTheFilter()
{
    Page page;
    QVERIFY(QTest::qWaitForWindowActive(page.view.windowHandle()));
    page.filter->setCurrentIndex(All);
    page.tree->setFocus();
    page.service.setCompleted(page.service.createTask(u"task"_s), true);
    QCOMPARE(page.rows(), QStringList());

    page.view.activate();
    QCOMPARE(page.rows(), QStringList{u"[x] task"_s});
    QCOMPARE(page.filter->currentIndex(), int(All));
    QCOMPARE(QApplication::focusWidget(), page.input);
}

void tst_TodoView::backAsksToClose()
{
    const Page page;
    QSignalSpy closed(&page.view, &TodoView::closeRequested);
    QTest::mouseClick(page.backButton, Qt::LeftButton);
    QCOMPARE(closed.size(), 1);
    QVERIFY(!QFile::exists(taskfile::path()));
}

void tst_TodoView::survivesACycle_data()
{
    QTest::addColumn<QStringList>("circle");
    QTest::newRow("its own parent") << QStringList{u"[ ] a<a"_s};
    QTest::newRow("two in a circle") << QStringList{u"[ ] a<b"_s, u"[x] b<a"_s};
    QTest::newRow("long circle with a tail")
        << QStringList{u"[ ] a<d"_s, u"[x] b<a"_s, u"[ ] c<b"_s, u"[ ] d<c"_s, u"[ ] tail<a"_s};
}

void tst_TodoView::survivesACycle()
{
    QFETCH(const QStringList, circle);
    writeTasks(circle + QStringList{u"[ ] good"_s, u"[ ] good child<good"_s});
    const Page page;
    QCOMPARE(page.rows(), QStringList({u"[ ] good"_s, u".[ ] good child"_s}));

    page.click(page.checkBoxOf(u"good child"_s));
    QCOMPARE(page.rows(), QStringList());
    QCOMPARE(titlesOnDisk().size(), circle.size() + 2);

    page.filter->setCurrentIndex(All);
    const MenuUser user(u"Delete"_s);
    page.requestMenu(page.textOf(u"good"_s));
    QCOMPARE(titlesOnDisk().size(), circle.size());
}

void tst_TodoView::survivesALongChain()
{
    constexpr int length = 100000;
    QJsonArray array;
    for (int i = 0; i < length; ++i) {
        array.append(QJsonObject{{u"id"_s, QString::number(i)},
                                 {u"parentId"_s, i == 0 ? QString() : QString::number(i - 1)}});
    }
    taskfile::write(QJsonDocument(array).toJson());
    const Page page;
    QCOMPARE(page.tree->topLevelItemCount(), 1);
    QCOMPARE(page.summary->text(), u"100000 active · 100000 total"_s);
}

VASKEL_TEST(tst_TodoView, QApplication)
#include "tst_TodoView.moc"
