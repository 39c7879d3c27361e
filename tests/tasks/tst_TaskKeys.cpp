// SPDX-License-Identifier: GPL-3.0-or-later
#include "tasks/TaskKeys.h"

#include "support/TestProgram.h"

#include <QKeyEvent>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTest>
#include <QTreeWidget>

using namespace Qt::StringLiterals;

namespace {

/// A tree with one row and the keys of the task page.
struct Keys
{
    Keys()
    {
        auto *row = new QTreeWidgetItem(&tree, {u"title"_s});
        row->setFlags(row->flags() | Qt::ItemIsEditable);
        tree.setCurrentItem(row);
        tree.show();
    }

    /// The signals since the start: deletions, insertions, undone deletions.
    QList<int> counts() const
    {
        return {int(deleted.size()), int(inserted.size()), int(undone.size())};
    }

    QTreeWidget tree;
    TaskKeys keys{&tree};
    QSignalSpy deleted{&keys, &TaskKeys::deletePressed};
    QSignalSpy inserted{&keys, &TaskKeys::insertPressed};
    QSignalSpy undone{&keys, &TaskKeys::undoPressed};
};

} // namespace

class tst_TaskKeys : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void reportsItsKeys_data();
    void reportsItsKeys();
    void ignoresARepeatedKeyThatChangesTheList();
    void leavesItsKeysToAnEditor_data();
    void leavesItsKeysToAnEditor();
    void takesItsKeysBackAfterTheEditor();
};

void tst_TaskKeys::reportsItsKeys_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
    QTest::addColumn<QList<int>>("counts");
    const auto row = [](const char *name, Qt::Key key, Qt::KeyboardModifiers modifiers,
                        const QList<int> &counts) {
        QTest::newRow(name) << key << modifiers << counts;
    };
    row("Delete", Qt::Key_Delete, Qt::NoModifier, {1, 0, 0});
    row("Delete of the keypad", Qt::Key_Delete, Qt::KeypadModifier, {1, 0, 0});
    row("Insert", Qt::Key_Insert, Qt::NoModifier, {0, 1, 0});
    row("Ctrl+Z", Qt::Key_Z, Qt::ControlModifier, {0, 0, 1});
    row("Shift+Delete", Qt::Key_Delete, Qt::ShiftModifier, {0, 0, 0});
    row("Ctrl+Insert", Qt::Key_Insert, Qt::ControlModifier, {0, 0, 0});
    row("Ctrl+D", Qt::Key_D, Qt::ControlModifier, {0, 0, 0});
    row("Backspace", Qt::Key_Backspace, Qt::NoModifier, {0, 0, 0});
    row("Z", Qt::Key_Z, Qt::NoModifier, {0, 0, 0});
}

void tst_TaskKeys::reportsItsKeys()
{
    QFETCH(const Qt::Key, key);
    QFETCH(const Qt::KeyboardModifiers, modifiers);
    QFETCH(const QList<int>, counts);
    Keys keys;
    QTest::keyClick(&keys.tree, key, modifiers);
    QCOMPARE(keys.counts(), counts);
}

void tst_TaskKeys::ignoresARepeatedKeyThatChangesTheList()
{
    Keys keys;
    for (const Qt::Key key : {Qt::Key_Delete, Qt::Key_Insert}) {
        QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier, QString(), true);
        QCoreApplication::sendEvent(&keys.tree, &event);
    }
    QKeyEvent event(QEvent::KeyPress, Qt::Key_Z, Qt::ControlModifier, QString(), true);
    QCoreApplication::sendEvent(&keys.tree, &event);
    QCOMPARE(keys.counts(), QList<int>({0, 0, 1}));
}

void tst_TaskKeys::leavesItsKeysToAnEditor_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
    QTest::addColumn<QString>("text");
    QTest::newRow("Delete deletes a letter") << Qt::Key_Delete << Qt::KeyboardModifiers() << u"y"_s;
    // The editor ignores this key, so it goes on to the tree.
    QTest::newRow("Insert does nothing") << Qt::Key_Insert << Qt::KeyboardModifiers() << u"xy"_s;
    QTest::newRow("Ctrl+Z undoes the typing")
        << Qt::Key_Z << Qt::KeyboardModifiers(Qt::ControlModifier) << u"title"_s;
}

void tst_TaskKeys::leavesItsKeysToAnEditor()
{
    QFETCH(const Qt::Key, key);
    QFETCH(const Qt::KeyboardModifiers, modifiers);
    QFETCH(const QString, text);
    Keys keys;
    keys.tree.editItem(keys.tree.currentItem());
    auto *editor = keys.tree.viewport()->findChild<QLineEdit *>();
    QVERIFY(editor);
    QTest::keyClicks(editor, u"xy"_s);
    if (key == Qt::Key_Delete) {
        QTest::keyClick(editor, Qt::Key_Home);
    }
    QTest::keyClick(editor, key, modifiers);
    QCOMPARE(editor->text(), text);
    QCOMPARE(keys.counts(), QList<int>({0, 0, 0}));
}

void tst_TaskKeys::takesItsKeysBackAfterTheEditor()
{
    Keys keys;
    keys.tree.editItem(keys.tree.currentItem());
    QTest::keyClick(keys.tree.viewport()->findChild<QLineEdit *>(), Qt::Key_Escape);
    QTRY_VERIFY(!keys.tree.viewport()->findChild<QLineEdit *>());
    QTest::keyClick(&keys.tree, Qt::Key_Delete);
    QCOMPARE(keys.counts(), QList<int>({1, 0, 0}));
}

VASKEL_TEST(tst_TaskKeys, QApplication)
#include "tst_TaskKeys.moc"
