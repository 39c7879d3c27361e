// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/AnswerGuard.h"

#include "support/TestProgram.h"

#include <QApplication>
#include <QCloseEvent>
#include <QLineEdit>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QVBoxLayout>
#include <QWindow>
#include <QtTest/qtestspontaneevent.h>

#include <algorithm>
#include <chrono>
#include <functional>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr auto longerThanTheTest = 24h;

/// A window with a field, and a guarded question above it.
struct Question
{
    explicit Question(std::chrono::milliseconds duration)
        : box(QMessageBox::Question, u"title"_s, u"text"_s, QMessageBox::Yes | QMessageBox::No,
              &window)
        , finished(&box, &QMessageBox::finished)
    {
        (new QVBoxLayout(&window))->addWidget(&edit);
        window.show();
        window.activateWindow();
        edit.setFocus();
        isReady = QTest::qWaitForWindowActive(&window);
        guard = new AnswerGuard(&box, &window, duration);
        box.open();
        isReady = isReady && QTest::qWaitForWindowActive(&box);
    }

    /// Waits until the guard lets answers through.
    bool waits() const
    {
        const auto *timer = guard->findChild<QTimer *>();
        return QTest::qWaitFor([timer] { return !timer->isActive(); });
    }

    /// Types a key as the window system reports it, so that it may be the shortcut of a button.
    void type(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::keyClick(box.windowHandle(), key, modifiers);
    }

    void click(QMessageBox::StandardButton which)
    {
        const QPushButton *button = qobject_cast<QPushButton *>(box.button(which));
        const QPoint place = button->mapTo(&box, button->rect().center());
        QTest::mouseClick(box.windowHandle(), Qt::LeftButton, {}, place);
    }

    void closeByTheWindowManager()
    {
        QCloseEvent event;
        QSpontaneKeyEvent::setSpontaneous(&event);
        qApp->notify(&box, &event); // sendEvent() would reset the flag
    }

    bool isOpen() const { return box.isVisible() && finished.isEmpty(); }

    /// Whether a button is pressed, and answers in a moment.
    bool isPressed() const
    {
        const QList<QAbstractButton *> buttons = box.buttons();
        return std::any_of(buttons.cbegin(), buttons.cend(),
                           [](const QAbstractButton *button) { return button->isDown(); });
    }

    QWidget window;
    QLineEdit edit;
    QMessageBox box;
    QSignalSpy finished;
    AnswerGuard *guard = nullptr;
    bool isReady = false;
};

} // namespace

class tst_AnswerGuard : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void passesKeysOnAtFirst();
    void passesKeysOnToTheWidgetThatHasTheFocusThen();
    void dropsKeysThatWereMeantForAnotherProgram();
    void nothingAnswersAtFirst();
    void callOfClickAnswersAtOnce();
    void lastsASecond();
    void startsWhenTheBoxShows();
    void keysNeedAMovedFocus_data();
    void keysNeedAMovedFocus();
    void keyNeedsTheFocusOnAButton();
    void letterNeedsAlt();
    void clickAnswersLater();
    void escapeDeclinesLater();
};

void tst_AnswerGuard::passesKeysOnAtFirst()
{
    Question q(longerThanTheTest);
    QVERIFY(q.isReady);
    const QSignalSpy returned(&q.edit, &QLineEdit::returnPressed);
    for (const Qt::Key key : {Qt::Key_Y, Qt::Key_Space, Qt::Key_N, Qt::Key_Return}) {
        q.type(key);
    }
    QCOMPARE(q.edit.text(), u"y n"_s);
    QCOMPARE(returned.size(), 1);
    q.type(Qt::Key_Backspace);
    QCOMPARE(q.edit.text(), u"y "_s);
    QVERIFY(q.isOpen());
}

void tst_AnswerGuard::passesKeysOnToTheWidgetThatHasTheFocusThen()
{
    Question q(longerThanTheTest);
    QVERIFY(q.isReady);
    auto *other = new QLineEdit(&q.window);
    other->show();
    other->setFocus();
    q.type(Qt::Key_A);
    QCOMPARE(other->text(), u"a"_s);
    QCOMPARE(q.edit.text(), QString());
}

void tst_AnswerGuard::dropsKeysThatWereMeantForAnotherProgram()
{
    QWidget window;
    QLineEdit edit(&window);
    edit.setFocus();
    QMessageBox box(QMessageBox::Question, u"title"_s, u"text"_s, QMessageBox::Yes, &window);
    new AnswerGuard(&box, &window, longerThanTheTest);
    box.open();
    QVERIFY(QTest::qWaitForWindowActive(&box));
    QTest::keyClick(box.windowHandle(), Qt::Key_Y);
    QVERIFY(box.isVisible());
    QCOMPARE(edit.text(), QString());
}

void tst_AnswerGuard::nothingAnswersAtFirst()
{
    Question q(longerThanTheTest);
    QVERIFY(q.isReady);
    const QList<std::function<void()>> inputs = {
        [&q] { q.type(Qt::Key_Y); },
        [&q] { q.type(Qt::Key_N, Qt::ShiftModifier); },
        [&q] { q.type(Qt::Key_Y, Qt::AltModifier); },
        [&q] { q.type(Qt::Key_Space); },
        [&q] { q.type(Qt::Key_Return); },
        [&q] { q.type(Qt::Key_Enter, Qt::KeypadModifier); },
        [&q] { q.type(Qt::Key_Escape); },
        [&q] { q.type(Qt::Key_Tab); },
        [&q] { q.click(QMessageBox::Yes); },
        [&q] { q.closeByTheWindowManager(); },
    };
    for (int event = 0; event < 1000; ++event) {
        inputs.at(event % inputs.size())();
        QVERIFY2(q.isOpen() && !q.isPressed(), qPrintable(QString::number(event)));
    }
}

void tst_AnswerGuard::callOfClickAnswersAtOnce()
{
    Question q(longerThanTheTest);
    QVERIFY(q.isReady);
    q.box.button(QMessageBox::Yes)->click();
    QCOMPARE(q.box.result(), int(QMessageBox::Yes));
    QVERIFY(!q.isOpen());
}

void tst_AnswerGuard::lastsASecond()
{
    QMessageBox box;
    const AnswerGuard guard(&box, nullptr);
    const auto *timer = guard.findChild<QTimer *>();
    QCOMPARE(timer->intervalAsDuration(), 1s);
    QCOMPARE(timer->timerType(), Qt::PreciseTimer);
    QVERIFY(timer->isSingleShot());
}

void tst_AnswerGuard::startsWhenTheBoxShows()
{
    QMessageBox box;
    const AnswerGuard guard(&box, nullptr, longerThanTheTest);
    const auto *timer = guard.findChild<QTimer *>();
    QVERIFY(!timer->isActive());
    box.open();
    QVERIFY(timer->isActive());
}

void tst_AnswerGuard::keysNeedAMovedFocus_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::newRow("Return") << Qt::Key_Return;
    QTest::newRow("Enter") << Qt::Key_Enter;
    QTest::newRow("Space") << Qt::Key_Space;
}

void tst_AnswerGuard::keysNeedAMovedFocus()
{
    QFETCH(const Qt::Key, key);
    Question q(0ms);
    QVERIFY(q.isReady);
    QVERIFY(q.waits());
    QVERIFY(!qobject_cast<QPushButton *>(QApplication::focusWidget()));
    q.type(key);
    QVERIFY(q.isOpen());
    // The window manager may give the focus to a button.
    q.box.button(QMessageBox::Yes)->setFocus(Qt::ActiveWindowFocusReason);
    q.type(key);
    QVERIFY(q.isOpen());

    q.type(Qt::Key_Tab);
    QCOMPARE(QApplication::focusWidget(), q.box.button(QMessageBox::No));
    q.type(key);
    QCOMPARE(q.finished.size(), 1);
    QCOMPARE(q.box.result(), int(QMessageBox::No));
    QCOMPARE(q.edit.text(), QString());
}

void tst_AnswerGuard::keyNeedsTheFocusOnAButton()
{
    Question q(0ms);
    QVERIFY(q.isReady);
    QVERIFY(q.waits());
    q.type(Qt::Key_Tab);
    QCOMPARE(QApplication::focusWidget(), q.box.button(QMessageBox::Yes));
    q.box.setFocus(Qt::MouseFocusReason);
    q.type(Qt::Key_Return);
    QVERIFY(q.isOpen());
}

void tst_AnswerGuard::letterNeedsAlt()
{
    Question q(0ms);
    QVERIFY(q.isReady);
    QVERIFY(q.waits());
    q.type(Qt::Key_Y);
    q.type(Qt::Key_N, Qt::ShiftModifier);
    q.type(Qt::Key_Tab);
    q.type(Qt::Key_Y);
    QCoreApplication::processEvents();
    QVERIFY(q.isOpen());
    q.type(Qt::Key_Y, Qt::AltModifier);
    QTRY_COMPARE(q.finished.size(), 1);
    QCOMPARE(q.box.result(), int(QMessageBox::Yes));
}

void tst_AnswerGuard::clickAnswersLater()
{
    Question q(0ms);
    QVERIFY(q.isReady);
    QVERIFY(q.waits());
    q.click(QMessageBox::Yes);
    QCOMPARE(q.finished.size(), 1);
    QCOMPARE(q.box.result(), int(QMessageBox::Yes));
}

void tst_AnswerGuard::escapeDeclinesLater()
{
    Question q(0ms);
    QVERIFY(q.isReady);
    QVERIFY(q.waits());
    q.type(Qt::Key_Escape);
    QCOMPARE(q.finished.size(), 1);
    QCOMPARE(q.box.result(), int(QMessageBox::No));
}

VASKEL_TEST(tst_AnswerGuard, QApplication)
#include "tst_AnswerGuard.moc"
