// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/CommandLineEdit.h"

#include "settings/ThemeManager.h"
#include "support/EventCounter.h"
#include "support/TestProgram.h"
#include "ui/ManagementIcon.h"

#include <QAccessible>
#include <QApplication>
#include <QClipboard>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

const QString plainPrompt = u"Search apps or type cmd space args..."_s;
const QString argumentPrompt = u"Type arguments..."_s;

class Box : public CommandLineEdit
{
public:
    Box() { setCommands({u"app"_s, u"calc"_s, u"cd"_s, u"todo"_s}); }

    QLineEdit &edit() const { return *lineEdit(); }
    QLabel &badge() const { return *findChild<QLabel *>(u"commandBadge"_s); }
    ManagementIcon &icon() const { return *findChild<ManagementIcon *>(); }

    void type(const QString &text) const { QTest::keyClicks(&edit(), text); }
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) const
    {
        QTest::keyClick(&edit(), key, modifiers);
    }
    void paste(const QString &text) const
    {
        QGuiApplication::clipboard()->setText(text);
        edit().paste();
    }

    bool isPlain(const QString &text) const
    {
        return badge().isHidden() && edit().text() == text && this->text() == text;
    }
    bool isBadge(const QString &command, const QString &arguments) const
    {
        return !badge().isHidden() && badge().text() == command && edit().text() == arguments
               && text() == command + u' ' + arguments
               && edit().placeholderText() == argumentPrompt;
    }
};

} // namespace

class tst_CommandLineEdit : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void isOneFieldOfThreeWidgets();
    void givesTheFocusToItsEdit();
    void startsWithoutABadgeAndAPlaceholder();
    void hasNoCommandsAtFirst();
    void namesItsPartsForAssistiveTechnology();

    void detectsAKnownCommand_data();
    void detectsAKnownCommand();
    void pastedCommandBecomesTheBadgeInOneStep();
    void typedCommandKeepsItsBlankInTheArguments();
    void lettersAfterACommandBecomeArguments();
    void insertionAtTheStartCompletesACommand();
    void blankTypedWithABadgeStaysInTheArguments();
    void commandTypedAsArgumentStaysAnArgument();

    void backspaceAtTheStartDismissesTheBadge_data();
    void backspaceAtTheStartDismissesTheBadge();
    void backspaceAfterTheStartDeletesALetter();
    void backspaceWithASelectionDeletesItAndKeepsTheBadge();
    void backspaceWithoutABadgeReachesTheEdit();
    void otherKeysAtTheStartKeepTheBadge();
    void controlBackspaceJoinsTheArguments_data();
    void controlBackspaceJoinsTheArguments();
    void controlBackspaceAfterTheStartDeletesAWord();
    void joinedTextStaysPlainUntilItIsACommand();
    void tellsHowToSearchForANameThatBeginsWithACommand();
    void dismissedCommandComesBackWithABlank();
    void dismissedCommandComesBackWithItsLastLetterTypedOver();
    void dismissedCommandStaysPlainText();
    void keyReleaseOfBackspaceIsNotConsumed();

    void setTextInEitherState_data();
    void setTextInEitherState();
    void setTextMovesTheCursorToTheEnd();
    void newCommandsApplyFromTheNextEdit();
    void emitsEachChangeOfTheEdit();
    void tellsEachChangeOfTheText();
    void slotsSeeTheNewState();
    void forgetsManyChangesWhenItHides();

    void iconRequestsTheManagement();
    void showsTheFocusOfItsEdit_data();
    void showsTheFocusOfItsEdit();
    void focusChangeRepaints();
};

void tst_CommandLineEdit::isOneFieldOfThreeWidgets()
{
    const Box box;
    QCOMPARE(box.objectName(), u"commandInput"_s);
    QCOMPARE(box.edit().objectName(), u"commandArgumentEdit"_s);
    QCOMPARE(box.icon().toolTip(), u"Open user management"_s);

    const auto *layout = qobject_cast<QHBoxLayout *>(box.layout());
    QVERIFY(layout);
    QCOMPARE(layout->contentsMargins(), QMargins(10, 4, 5, 4));
    QCOMPARE(layout->spacing(), 6);
    QCOMPARE(layout->count(), 3);
    QCOMPARE(layout->itemAt(0)->widget(), &box.badge());
    QCOMPARE(layout->itemAt(1)->widget(), &box.edit());
    QCOMPARE(layout->itemAt(2)->widget(), &box.icon());
    QCOMPARE(layout->stretch(0), 0);
    QCOMPARE(layout->stretch(1), 1);
    QCOMPARE(layout->stretch(2), 0);
}

void tst_CommandLineEdit::givesTheFocusToItsEdit()
{
    const Box box;
    QCOMPARE(box.focusProxy(), &box.edit());
}

void tst_CommandLineEdit::startsWithoutABadgeAndAPlaceholder()
{
    const Box box;
    QVERIFY(box.isPlain(QString()));
    QCOMPARE(box.edit().placeholderText(), QString());
}

void tst_CommandLineEdit::hasNoCommandsAtFirst()
{
    CommandLineEdit box;
    QTest::keyClicks(box.lineEdit(), u"calc 1"_s);
    QCOMPARE(box.lineEdit()->text(), u"calc 1"_s);
    box.setText(u"calc 2"_s);
    QCOMPARE(box.lineEdit()->text(), u"calc 2"_s);
}

void tst_CommandLineEdit::namesItsPartsForAssistiveTechnology()
{
    const Box box;
    const auto name = [](QWidget &widget) {
        return QAccessible::queryAccessibleInterface(&widget)->text(QAccessible::Name);
    };
    QCOMPARE(name(box.edit()), plainPrompt);
    QCOMPARE(name(box.icon()), u"Open user management"_s);
    box.type(u"calc"_s);
    QCOMPARE(name(box.badge()), u"calc"_s);
    QCOMPARE(name(box.edit()), argumentPrompt);
}

void tst_CommandLineEdit::detectsAKnownCommand_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("command");
    QTest::addColumn<QString>("arguments");

    QTest::newRow("command alone") << u"calc"_s << u"calc"_s << QString();
    QTest::newRow("command and blank") << u"calc "_s << u"calc"_s << QString();
    QTest::newRow("command and arguments") << u"calc 1+2"_s << u"calc"_s << u"1+2"_s;
    QTest::newRow("second blank stays") << u"calc  1"_s << u"calc"_s << u" 1"_s;
    QTest::newRow("capitals stay plain") << u"CALC"_s << QString() << QString();
    QTest::newRow("capitals with arguments stay plain") << u"Calc 1"_s << QString() << QString();
    QTest::newRow("leading blank stays plain") << u" calc"_s << QString() << QString();
    QTest::newRow("leading blank and arguments stay plain")
        << u" calc 1"_s << QString() << QString();
    QTest::newRow("longer command stays plain") << u"calculator"_s << QString() << QString();
    QTest::newRow("tab is no blank") << u"calc\t1"_s << QString() << QString();
    QTest::newRow("unknown command stays plain") << u"xyz calc"_s << QString() << QString();
    QTest::newRow("blanks alone stay plain") << u"  "_s << QString() << QString();
}

void tst_CommandLineEdit::detectsAKnownCommand()
{
    QFETCH(QString, text);
    QFETCH(QString, command);
    QFETCH(QString, arguments);

    const Box box;
    box.edit().setText(text);
    if (command.isEmpty()) {
        QVERIFY(box.isPlain(text));
    } else {
        QVERIFY(box.isBadge(command, arguments));
    }
}

void tst_CommandLineEdit::pastedCommandBecomesTheBadgeInOneStep()
{
    const Box box;
    box.paste(u"calc 1+2"_s);
    QVERIFY(box.isBadge(u"calc"_s, u"1+2"_s));
    QCOMPARE(box.text(), u"calc 1+2"_s);
    QCOMPARE(box.edit().cursorPosition(), 3);
}

void tst_CommandLineEdit::typedCommandKeepsItsBlankInTheArguments()
{
    const Box box;
    box.type(u"cal"_s);
    QVERIFY(box.isPlain(u"cal"_s));
    box.type(u"c"_s);
    QVERIFY(box.isBadge(u"calc"_s, QString()));
    QCOMPARE(box.text(), u"calc "_s);
    box.type(u" 1+2"_s);
    QVERIFY(box.isBadge(u"calc"_s, u" 1+2"_s));
    QCOMPARE(box.text(), u"calc  1+2"_s);
    QCOMPARE(box.edit().cursorPosition(), 4);
}

void tst_CommandLineEdit::lettersAfterACommandBecomeArguments()
{
    const Box box;
    box.type(u"calculator"_s);
    QVERIFY(box.isBadge(u"calc"_s, u"ulator"_s));
}

void tst_CommandLineEdit::insertionAtTheStartCompletesACommand()
{
    const Box box;
    box.edit().setText(u"alc 1+2"_s);
    box.press(Qt::Key_Home);
    box.type(u"c"_s);
    QVERIFY(box.isBadge(u"calc"_s, u"1+2"_s));
    QCOMPARE(box.edit().cursorPosition(), 3);
}

void tst_CommandLineEdit::blankTypedWithABadgeStaysInTheArguments()
{
    Box box;
    box.setText(u"calc 1"_s);
    box.press(Qt::Key_Home);
    box.type(u" "_s);
    QVERIFY(box.isBadge(u"calc"_s, u" 1"_s));
    QCOMPARE(box.text(), u"calc  1"_s);
}

void tst_CommandLineEdit::commandTypedAsArgumentStaysAnArgument()
{
    const Box box;
    box.type(u"appcalc x"_s);
    QVERIFY(box.isBadge(u"app"_s, u"calc x"_s));
}

void tst_CommandLineEdit::backspaceAtTheStartDismissesTheBadge_data()
{
    QTest::addColumn<QString>("arguments");
    QTest::newRow("empty arguments") << QString();
    QTest::newRow("arguments are lost") << u"1+2"_s;
}

void tst_CommandLineEdit::backspaceAtTheStartDismissesTheBadge()
{
    QFETCH(QString, arguments);

    Box box;
    box.setText(u"calc "_s + arguments);
    box.press(Qt::Key_Home);
    box.press(Qt::Key_Backspace);
    QVERIFY(box.isPlain(u"calc"_s));
    QCOMPARE(box.edit().placeholderText(), plainPrompt);
    QCOMPARE(box.edit().cursorPosition(), 4);
}

void tst_CommandLineEdit::backspaceAfterTheStartDeletesALetter()
{
    Box box;
    box.setText(u"calc 12"_s);
    box.press(Qt::Key_Backspace);
    QVERIFY(box.isBadge(u"calc"_s, u"1"_s));
    box.press(Qt::Key_Backspace);
    QVERIFY(box.isBadge(u"calc"_s, QString()));
}

void tst_CommandLineEdit::backspaceWithASelectionDeletesItAndKeepsTheBadge()
{
    Box box;
    box.setText(u"calc 1+2"_s);
    box.edit().setSelection(2, -2); // backwards: the cursor is at 0
    QCOMPARE(box.edit().cursorPosition(), 0);
    box.press(Qt::Key_Backspace);
    QVERIFY(box.isBadge(u"calc"_s, u"2"_s));
}

void tst_CommandLineEdit::backspaceWithoutABadgeReachesTheEdit()
{
    const Box box;
    box.type(u"xy"_s);
    box.press(Qt::Key_Backspace);
    QVERIFY(box.isPlain(u"x"_s));
    box.press(Qt::Key_Home);
    box.press(Qt::Key_Backspace);
    QVERIFY(box.isPlain(u"x"_s));
}

void tst_CommandLineEdit::otherKeysAtTheStartKeepTheBadge()
{
    Box box;
    box.setText(u"calc 12"_s);
    box.press(Qt::Key_Home);
    box.press(Qt::Key_Left);
    QVERIFY(box.isBadge(u"calc"_s, u"12"_s));
    box.press(Qt::Key_Delete);
    QVERIFY(box.isBadge(u"calc"_s, u"2"_s));
    box.press(Qt::Key_Delete);
    QVERIFY(box.isBadge(u"calc"_s, QString()));
}

void tst_CommandLineEdit::controlBackspaceJoinsTheArguments_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("joined");
    QTest::newRow("rest of a name") << u"calculator"_s << u"calculator"_s;
    QTest::newRow("empty arguments") << u"calc"_s << u"calc"_s;
    QTest::newRow("arguments after a blank") << u"calc 1"_s << u"calc 1"_s;
    QTest::newRow("another command") << u"appcalc"_s << u"appcalc"_s;
}

void tst_CommandLineEdit::controlBackspaceJoinsTheArguments()
{
    QFETCH(QString, typed);
    QFETCH(QString, joined);

    const Box box;
    box.type(typed);
    box.press(Qt::Key_Home);
    box.press(Qt::Key_Backspace, Qt::ControlModifier);
    QVERIFY(box.isPlain(joined));
    QCOMPARE(box.edit().placeholderText(), plainPrompt);
    QCOMPARE(box.edit().cursorPosition(), joined.size());
}

void tst_CommandLineEdit::controlBackspaceAfterTheStartDeletesAWord()
{
    const Box box;
    box.type(u"calculator"_s);
    box.press(Qt::Key_Backspace, Qt::ControlModifier);
    QVERIFY(box.isBadge(u"calc"_s, QString()));
}

void tst_CommandLineEdit::joinedTextStaysPlainUntilItIsACommand()
{
    const Box box;
    box.type(u"calculator"_s);
    box.press(Qt::Key_Home);
    box.press(Qt::Key_Backspace, Qt::ControlModifier);
    box.type(u"s"_s);
    QVERIFY(box.isPlain(u"calculators"_s));
    for (int letter = 0; letter < 6; ++letter) {
        box.press(Qt::Key_Backspace);
    }
    QVERIFY(box.isPlain(u"calcu"_s));
    box.press(Qt::Key_Backspace);
    QVERIFY(box.isBadge(u"calc"_s, QString()));
}

void tst_CommandLineEdit::tellsHowToSearchForANameThatBeginsWithACommand()
{
    const Box box;
    QVERIFY(box.toolTip().contains(u"type a blank first"_s));
    QVERIFY(box.toolTip().contains(u"Ctrl+Backspace"_s));
    QCOMPARE(box.edit().toolTip(), QString()); // so that of the box shows
}

void tst_CommandLineEdit::dismissedCommandComesBackWithABlank()
{
    const Box box;
    box.type(u"calc"_s);
    box.press(Qt::Key_Backspace);
    QVERIFY(box.isPlain(u"calc"_s));
    box.type(u" "_s);
    QVERIFY(box.isBadge(u"calc"_s, QString()));
    QCOMPARE(box.text(), u"calc "_s);
}

void tst_CommandLineEdit::dismissedCommandComesBackWithItsLastLetterTypedOver()
{
    const Box box;
    box.type(u"cd"_s);
    box.press(Qt::Key_Backspace);
    QVERIFY(box.isPlain(u"cd"_s));
    box.press(Qt::Key_Left, Qt::ShiftModifier);
    box.type(u"d"_s);
    QVERIFY(box.isBadge(u"cd"_s, QString()));
}

void tst_CommandLineEdit::dismissedCommandStaysPlainText()
{
    const Box box;
    box.type(u"calc"_s);
    box.press(Qt::Key_Backspace);
    box.type(u"ulator"_s);
    QVERIFY(box.isPlain(u"calculator"_s));
}

void tst_CommandLineEdit::keyReleaseOfBackspaceIsNotConsumed()
{
    Box box;
    box.setText(u"calc "_s);
    QTest::keyRelease(&box.edit(), Qt::Key_Backspace);
    QVERIFY(box.isBadge(u"calc"_s, QString()));
}

void tst_CommandLineEdit::setTextInEitherState_data()
{
    QTest::addColumn<QString>("before");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("command");
    QTest::addColumn<QString>("arguments");

    const QString none;
    QTest::newRow("plain to known command") << u"x"_s << u"cd"_s << u"cd"_s << none;
    QTest::newRow("plain to known command and blank") << u"x"_s << u"cd "_s << u"cd"_s << none;
    QTest::newRow("plain to command") << none << u"cd /tmp x"_s << u"cd"_s << u"/tmp x"_s;
    QTest::newRow("plain to plain") << u"x"_s << u"xyz abc"_s << none << none;
    QTest::newRow("plain to empty") << u"x"_s << none << none << none;
    QTest::newRow("plain to capitals") << u"x"_s << u"CD /"_s << none << none;
    QTest::newRow("badge to another command") << u"calc 1"_s << u"cd /"_s << u"cd"_s << u"/"_s;
    QTest::newRow("badge to the same command") << u"calc 1"_s << u"calc 2"_s << u"calc"_s << u"2"_s;
    QTest::newRow("badge to plain") << u"calc 1"_s << u"firefox"_s << none << none;
    QTest::newRow("badge to empty") << u"calc 1"_s << none << none << none;
    QTest::newRow("badge to leading blank") << u"calc 1"_s << u" calc 1"_s << none << none;
}

void tst_CommandLineEdit::setTextInEitherState()
{
    QFETCH(QString, before);
    QFETCH(QString, text);
    QFETCH(QString, command);
    QFETCH(QString, arguments);

    Box box;
    box.setText(before);
    box.setText(text);
    if (command.isEmpty()) {
        QVERIFY(box.isPlain(text));
        QCOMPARE(box.edit().placeholderText(), plainPrompt);
    } else {
        QVERIFY(box.isBadge(command, arguments));
    }
}

void tst_CommandLineEdit::setTextMovesTheCursorToTheEnd()
{
    Box box;
    box.setText(u"firefox"_s);
    QCOMPARE(box.edit().cursorPosition(), 7);
    box.press(Qt::Key_Home);
    box.setText(u"firefox"_s);
    QCOMPARE(box.edit().cursorPosition(), 7);
    box.setText(u"calc 1+2"_s);
    QCOMPARE(box.edit().cursorPosition(), 3);
}

void tst_CommandLineEdit::newCommandsApplyFromTheNextEdit()
{
    Box box;
    box.type(u"file"_s);
    QVERIFY(box.isPlain(u"file"_s));
    box.setCommands({u"file"_s});
    QVERIFY(box.isPlain(u"file"_s));
    box.type(u" "_s);
    QVERIFY(box.isBadge(u"file"_s, QString()));
    box.setText(u"calc 1"_s);
    QVERIFY(box.isPlain(u"calc 1"_s));
}

void tst_CommandLineEdit::emitsEachChangeOfTheEdit()
{
    Box box;
    const QSignalSpy changed(&box.edit(), &QLineEdit::textChanged);
    box.paste(u"calc 1+2"_s);
    QCOMPARE(changed.count(), 2); // the pasted text and its arguments
    box.setText(u"cd 1+2"_s);
    QCOMPARE(changed.count(), 2); // another badge, the same arguments
    box.setText(u"plain"_s);
    QCOMPARE(changed.count(), 3);
}

void tst_CommandLineEdit::tellsEachChangeOfTheText()
{
    Box box;
    const QSignalSpy changed(&box, &CommandLineEdit::textChanged);
    box.paste(u"calc cd"_s);
    QCOMPARE(changed.count(), 2); // the pasted text and its arguments
    box.setText(u"cd cd"_s);
    QCOMPARE(changed.count(), 3); // another badge, the same arguments
    box.setText(u"cd cd"_s);
    QCOMPARE(changed.count(), 4);
    box.press(Qt::Key_Home);
    box.press(Qt::Key_Backspace);
    QVERIFY(box.isPlain(u"cd"_s));
    QCOMPARE(changed.count(), 5); // no badge, the same text in the edit
    box.press(Qt::Key_End);
    QCOMPARE(changed.count(), 5);
}

void tst_CommandLineEdit::slotsSeeTheNewState()
{
    Box box;
    QStringList texts;
    connect(&box.edit(), &QLineEdit::textChanged, this, [&] { texts.append(box.text()); });
    box.type(u"cd"_s);
    box.press(Qt::Key_Backspace);
    // A nested textChanged, from the box's own change of the edit, arrives before the outer one.
    // Both slots see the newest state.
    QCOMPARE(texts, QStringList({u"c"_s, u"cd "_s, u"cd "_s, u"cd"_s}));
}

void tst_CommandLineEdit::forgetsManyChangesWhenItHides()
{
    Box box;
    box.show();
    box.type(QString(10, u'x'));
    box.hide();
    QVERIFY(box.edit().isUndoAvailable());

    box.show();
    box.type(QString(200, u'y'));
    box.edit().setSelection(30, -20);
    const QSignalSpy changed(&box.edit(), &QLineEdit::textChanged);
    box.hide();
    QVERIFY(!box.edit().isUndoAvailable());
    QCOMPARE(box.edit().text(), QString(QString(10, u'x') + QString(200, u'y')));
    QCOMPARE(box.edit().selectionStart(), 10);
    QCOMPARE(box.edit().selectionLength(), 20);
    QCOMPARE(box.edit().cursorPosition(), 10);
    QCOMPARE(changed.count(), 0);
}

void tst_CommandLineEdit::iconRequestsTheManagement()
{
    const Box box;
    const QSignalSpy requested(&box, &CommandLineEdit::managementRequested);
    QTest::mouseClick(&box.icon(), Qt::LeftButton);
    QCOMPARE(requested.count(), 1);
}

void tst_CommandLineEdit::showsTheFocusOfItsEdit_data()
{
    QTest::addColumn<QString>("theme");
    QTest::newRow("dark") << u"dark"_s;
    QTest::newRow("light") << u"light"_s;
}

void tst_CommandLineEdit::showsTheFocusOfItsEdit()
{
    QFETCH(QString, theme);
    ThemeManager manager;
    manager.setTheme(theme);
    QWidget window;
    window.setStyleSheet(manager.styleSheet());
    Box box;
    box.setParent(&window);
    QPushButton other(&window);
    other.move(0, 100);
    box.resize(300, 44);
    box.setFocus();
    window.show();
    window.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    QTRY_VERIFY(box.edit().hasFocus());

    const auto color = [&](const QPoint &place) {
        return box.grab().toImage().pixelColor(place);
    };
    for (const QPoint &frame : {QPoint(150, 0), QPoint(150, 1), QPoint(0, 22), QPoint(299, 22)}) {
        QCOMPARE(color(frame), manager.borderFocus());
    }
    QCOMPARE(color(QPoint(150, 2)), manager.surface());

    other.setFocus();
    const QImage screen = window.grab().toImage();
    QCOMPARE(screen.pixelColor(150, 0), manager.border());
    QCOMPARE(screen.pixelColor(150, 1), manager.surface());
}

void tst_CommandLineEdit::focusChangeRepaints()
{
    QWidget window;
    Box box;
    box.setParent(&window);
    QPushButton other(&window);
    other.move(0, 100);
    window.show();
    window.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    other.setFocus();
    QCoreApplication::processEvents();

    EventCounter paints(QEvent::Paint);
    box.installEventFilter(&paints);
    box.setFocus();
    QTRY_VERIFY(paints.count > 0);
    paints.count = 0;
    other.setFocus();
    QTRY_VERIFY(paints.count > 0);
}

VASKEL_TEST(tst_CommandLineEdit, QApplication)
#include "tst_CommandLineEdit.moc"
