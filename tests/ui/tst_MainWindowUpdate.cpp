// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/MainWindow.h"

#include "support/FakePlatform.h"
#include "support/TestProgram.h"
#include "ui/TypingPause.h"
#include "ui/WindowTest.h"
#include "update/HttpServer.h"

#include <QAbstractButton>
#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QProgressDialog>
#include <QScreen>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>
#include <QWindow>

#include <functional>

using namespace Qt::StringLiterals;
using namespace windowtest;

namespace {

/// Calls a function on the next message box, then dismisses the box if it is still open.
class MessageBoxHandler : public QTimer
{
    Q_OBJECT

public:
    explicit MessageBoxHandler(const std::function<void(QMessageBox &)> &use)
    {
        callOnTimeout(this, [this, use] {
            auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
            if (!box || !box->isVisible()) {
                return;
            }
            stop();
            ++count;
            use(*box);
            if (box->isVisible()) {
                box->reject();
            }
        });
        start(0);
    }

    int count = 0;
};

bool isOnScreen(const QWidget &widget)
{
    const QRect place(widget.mapToGlobal(QPoint()), widget.size());
    return widget.isVisible() && widget.screen()->availableGeometry().contains(place);
}

QString longText()
{
    QString text;
    for (int line = 0; line < 2000; ++line) {
        text += u"* change %1\n"_s.arg(line);
    }
    return text;
}

} // namespace

/// The dialogs of an update.
class tst_MainWindowUpdate : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { reset(); }
    void cleanup() { qunsetenv("VASKEL_TEST_UPDATE_SERVER"); }

    void checksOnceThreeSecondsAfterItWasBuilt();
    void asksBeforeItDownloads();
    void downloadsOnlyOnYes_data();
    void downloadsOnlyOnYes();
    void leavesTypedKeysToTheBox();
    void waitsForAPauseInTyping();
    void asksForAMandatoryUpdateTheSameWay();
    void showsTheChangeLogAsPlainText_data();
    void showsTheChangeLogAsPlainText();
    void keepsTheButtonsOnTheScreen_data();
    void keepsTheButtonsOnTheScreen();
    void shortensWhatTakesTooLong_data();
    void shortensWhatTakesTooLong();
    void shortensALongError();
    void staysSilentWithoutAnUpdate();
    void showsTheProgressOfTheDownload();
    void showsTheDialogWithoutASize();
    void closesTheDialogAtTheEnd();
    void usesTheSameDialogForTheNextDownload();
    void staysClosedWhenTheDownloadEndsDuringAReport();
    void warnsAboutAFailedDownload();
    void warnsWithoutADialogToClose();
    void showsTheErrorAsPlainText();
    void leadsFromTheOfferToTheWarning();
};

void tst_MainWindowUpdate::checksOnceThreeSecondsAfterItWasBuilt()
{
    HttpServer server;
    qputenv("VASKEL_TEST_UPDATE_SERVER", server.address().toLatin1());
    QElapsedTimer timer;
    timer.start();
    const Window w;
    QSignalSpy errors(&w.updater, &Updater::checkError);
    QVERIFY(errors.wait(20000));
    QVERIFY(timer.elapsed() >= 2850); // a coarse timer may be early
    QTest::qWait(300);
    QCOMPARE(server.requests.size(), 1);
    QVERIFY(!QApplication::activeModalWidget());
}

void tst_MainWindowUpdate::asksBeforeItDownloads()
{
    Window w;
    MessageBoxHandler handler([&w](const QMessageBox &box) {
        QCOMPARE(box.parentWidget(), &w.window);
        QCOMPARE(box.icon(), QMessageBox::Question);
        QCOMPARE(box.windowTitle(), u"Update available"_s);
        QCOMPARE(box.text(),
                 u"New version 2.0 %2 is available.\n\n- one %1\n- two\n\nUpdate now?"_s);
        QCOMPARE(box.standardButtons(), QMessageBox::Yes | QMessageBox::No);
        QVERIFY(!box.defaultButton());
    });
    Q_EMIT w.updater.updateAvailable(u"2.0 %2"_s, u"- one %1\n- two"_s, u"gopher://x"_s, false);
    QCOMPARE(handler.count, 1);
}

void tst_MainWindowUpdate::downloadsOnlyOnYes_data()
{
    QTest::addColumn<QMessageBox::StandardButton>("button");
    QTest::addColumn<int>("requests");
    QTest::newRow("yes") << QMessageBox::Yes << 1;
    QTest::newRow("no") << QMessageBox::No << 0;
    QTest::newRow("escape") << QMessageBox::NoButton << 0;
}

void tst_MainWindowUpdate::downloadsOnlyOnYes()
{
    QFETCH(QMessageBox::StandardButton, button);
    QFETCH(int, requests);
    HttpServer server;
    server.answerBody(u"/new"_s, "new");
    Window w;
    const QSignalSpy finished(&w.updater, &Updater::downloadFinished);
    MessageBoxHandler handler([button](QMessageBox &box) {
        if (button != QMessageBox::NoButton) {
            box.button(button)->click();
        } else {
            QTest::keyClick(&box, Qt::Key_Escape);
        }
    });
    Q_EMIT w.updater.updateAvailable(u"2"_s, u"text"_s, server.url(u"/new"_s), true);
    QCOMPARE(handler.count, 1);
    QTRY_COMPARE(finished.size(), requests);
    w.settle();
    QCOMPARE(server.requests.size(), requests);
    QCOMPARE(fakePlatform().startedUpdateScripts.size(), requests);
}

void tst_MainWindowUpdate::leavesTypedKeysToTheBox()
{
    HttpServer server;
    server.answerBody(u"/new"_s, "new");
    Window w;
    QVERIFY(w.showActive());
    MessageBoxHandler handler([&w](const QMessageBox &box) {
        for (const Qt::Key key : {Qt::Key_N, Qt::Key_Space, Qt::Key_Y}) {
            QTest::keyClick(box.windowHandle(), key);
            QVERIFY(box.isVisible());
        }
        QCOMPARE(w.edit->text(), u"n y"_s);
    });
    Q_EMIT w.updater.updateAvailable(u"2"_s, u"text"_s, server.url(u"/new"_s), false);
    QCOMPARE(handler.count, 1);
    QCOMPARE(server.requests.size(), 0);
}

void tst_MainWindowUpdate::waitsForAPauseInTyping()
{
    Window w;
    QVERIFY(w.showActive());
    QElapsedTimer pause;
    std::chrono::milliseconds pauseLength{};
    MessageBoxHandler handler(
        [&](const QMessageBox &) { pauseLength = std::chrono::milliseconds(pause.elapsed()); });
    QTest::keyClick(w.edit, Qt::Key_A);
    Q_EMIT w.updater.updateAvailable(u"1"_s, u"text"_s, QString(), false);
    Q_EMIT w.updater.updateAvailable(u"2"_s, u"text"_s, QString(), false);
    for (int i = 0; i < 3; ++i) {
        QCOMPARE(handler.count, 0);
        QTest::qWait(50);
        pause.start(); // first, as the key is counted before it is handled
        QTest::keyClick(w.edit, Qt::Key_A);
    }
    QTRY_COMPARE(handler.count, 1);
    QVERIFY(pauseLength >= TypingPause::duration);
    QCOMPARE(w.edit->text(), u"aaaa"_s);
    QTest::qWait(50);
    QCOMPARE(handler.count, 1);
}

void tst_MainWindowUpdate::asksForAMandatoryUpdateTheSameWay()
{
    Window w;
    QStringList texts;
    MessageBoxHandler atFirst([&texts](const QMessageBox &box) { texts.append(box.text()); });
    Q_EMIT w.updater.updateAvailable(u"2"_s, u"text"_s, QString(), false);
    MessageBoxHandler atSecond([&texts](const QMessageBox &box) {
        texts.append(box.text());
        QCOMPARE(box.standardButtons(), QMessageBox::Yes | QMessageBox::No);
    });
    Q_EMIT w.updater.updateAvailable(u"2"_s, u"text"_s, QString(), true);
    QCOMPARE(texts.size(), 2);
    QCOMPARE(texts.at(0), texts.at(1));
}

void tst_MainWindowUpdate::showsTheChangeLogAsPlainText_data()
{
    QTest::addColumn<QString>("version");
    QTest::addColumn<QString>("changelog");
    QTest::newRow("markup in the version") << u"<b>2</b>"_s << u"text"_s;
    QTest::newRow("markup in the change log") << u"2"_s << u"<h1>big</h1><img src=\"x\">"_s;
    QTest::newRow("an XML document") << u"2"_s << u"<?xml version=\"1.0\"?><a/>"_s;
    QTest::newRow("references") << u"2"_s << u"&lt;a&gt; &amp; &file"_s;
}

void tst_MainWindowUpdate::showsTheChangeLogAsPlainText()
{
    QFETCH(QString, version);
    QFETCH(QString, changelog);
    Window w;
    MessageBoxHandler handler([&](const QMessageBox &box) {
        QCOMPARE(box.text(),
                 u"New version %1 is available.\n\n%2\n\nUpdate now?"_s.arg(version, changelog));
        QCOMPARE(box.textFormat(), Qt::PlainText);
        const auto *label = box.findChild<QLabel *>(u"qt_msgbox_label"_s);
        QVERIFY(label->isVisible());
        QCOMPARE(label->text(), box.text());
        QCOMPARE(label->textFormat(), Qt::PlainText);
    });
    Q_EMIT w.updater.updateAvailable(version, changelog, QString(), false);
    QCOMPARE(handler.count, 1);
}

void tst_MainWindowUpdate::keepsTheButtonsOnTheScreen_data()
{
    QTest::addColumn<QString>("changelog");
    QTest::addColumn<bool>("isScrolled");
    QTest::newRow("short") << u"one\ntwo"_s << false;
    QTest::newRow("many lines") << longText() << true;
    QTest::newRow("few lines too many") << u"line\n"_s.repeated(60) << true;
    QTest::newRow("one long line") << u"word "_s.repeated(3000) << true;
    QTest::newRow("one long word") << QString(3000, u'x') << true;
    QTest::newRow("as long as is shown") << QString(30000, u'x') << true;
    QTest::newRow("markup") << u"<p>x</p>"_s.repeated(1000) << true;
}

void tst_MainWindowUpdate::keepsTheButtonsOnTheScreen()
{
    QFETCH(QString, changelog);
    QFETCH(bool, isScrolled);
    Window w;
    QVERIFY(w.showActive());
    MessageBoxHandler handler([&](QMessageBox &box) {
        QVERIFY(box.text().contains(changelog));
        QVERIFY(isOnScreen(*box.button(QMessageBox::Yes)));
        QVERIFY(isOnScreen(*box.button(QMessageBox::No)));
        QVERIFY(box.height() <= box.screen()->availableSize().height());
        const auto *page = box.findChild<QPlainTextEdit *>();
        QCOMPARE(page != nullptr, isScrolled);
        QCOMPARE(box.findChild<QLabel *>(u"qt_msgbox_label"_s)->isVisible(), !isScrolled);
        if (page) {
            QVERIFY(page->isVisible());
            QVERIFY(page->isReadOnly());
            QCOMPARE(page->toPlainText(), box.text());
        }
        box.button(QMessageBox::No)->click();
    });
    Q_EMIT w.updater.updateAvailable(u"2"_s, changelog, QString(), false);
    QCOMPARE(handler.count, 1);
}

void tst_MainWindowUpdate::shortensWhatTakesTooLong_data()
{
    QTest::addColumn<QString>("version");
    QTest::addColumn<QString>("changelog");
    QTest::addColumn<QString>("text");
    const QString line = u"New version %1 is available.\n\n%2\n\nUpdate now?"_s;
    QTest::newRow("a megabyte with blanks")
        << u"2"_s << u"some text, "_s.repeated(100000)
        << line.arg(u"2"_s, u"some text, "_s.repeated(3000).left(30000) + u"…"_s);
    QTest::newRow("200,000 characters without a blank")
        << u"2"_s << QString(200000, u'x') << line.arg(u"2"_s, QString(30000, u'x') + u"…"_s);
    QTest::newRow("a long version")
        << QString(1000000, u'2') << u"text"_s << line.arg(QString(100, u'2') + u"…"_s, u"text"_s);
}

void tst_MainWindowUpdate::shortensWhatTakesTooLong()
{
    QFETCH(QString, version);
    QFETCH(QString, changelog);
    QFETCH(QString, text);
    Window w;
    QVERIFY(w.showActive());
    const MessageBoxHandler handler([&](QMessageBox &box) {
        QCOMPARE(box.text(), text);
        QVERIFY(isOnScreen(*box.button(QMessageBox::Yes)));
    });
    Q_EMIT w.updater.updateAvailable(version, changelog, QString(), false);
    QCOMPARE(handler.count, 1);
}

void tst_MainWindowUpdate::shortensALongError()
{
    Window w;
    const MessageBoxHandler handler(
        [](const QMessageBox &box) { QCOMPARE(box.text(), QString(30000, u'x') + u"…"_s); });
    Q_EMIT w.updater.downloadError(QString(200000, u'x'));
    QCOMPARE(handler.count, 1);
}

void tst_MainWindowUpdate::staysSilentWithoutAnUpdate()
{
    Window w;
    Q_EMIT w.updater.noUpdateAvailable();
    Q_EMIT w.updater.checkError(u"error"_s);
    w.settle();
    QVERIFY(!QApplication::activeModalWidget());
    QVERIFY(!w.window.findChild<QProgressDialog *>());
}

void tst_MainWindowUpdate::showsTheProgressOfTheDownload()
{
    Window w;
    QVERIFY(w.showActive());
    QVERIFY(!w.window.findChild<QProgressDialog *>());
    constexpr qint64 total = 40'000'000'000;
    Q_EMIT w.updater.downloadProgress(total / 4 + total / 200, total);
    const auto *dialog = w.window.findChild<QProgressDialog *>();
    QVERIFY(dialog);
    QVERIFY(dialog->isVisible());
    QCOMPARE(dialog->parentWidget(), &w.window);
    QCOMPARE(dialog->labelText(), u"Downloading update..."_s);
    QCOMPARE(dialog->minimum(), 0);
    QCOMPARE(dialog->maximum(), 100);
    QCOMPARE(dialog->value(), 25);
    QCOMPARE(dialog->windowModality(), Qt::WindowModal);
    QVERIFY(!dialog->findChild<QAbstractButton *>());

    Q_EMIT w.updater.downloadProgress(total / 2, total);
    QCOMPARE(dialog->value(), 50);
    Q_EMIT w.updater.downloadProgress(total, total);
    QVERIFY(dialog->isVisible());
    QCOMPARE(w.window.findChildren<QProgressDialog *>().size(), 1);
}

void tst_MainWindowUpdate::showsTheDialogWithoutASize()
{
    Window w;
    QVERIFY(w.showActive());
    for (const qint64 total : {-1, 0}) {
        Q_EMIT w.updater.downloadProgress(1000, total);
        const auto *dialog = w.window.findChild<QProgressDialog *>();
        QVERIFY(dialog->isVisible());
        QVERIFY(dialog->value() <= 0);
    }
}

void tst_MainWindowUpdate::closesTheDialogAtTheEnd()
{
    Window w;
    QVERIFY(w.showActive());
    Q_EMIT w.updater.downloadFinished();
    QVERIFY(!w.window.findChild<QProgressDialog *>());
    Q_EMIT w.updater.downloadProgress(1, 2);
    const auto *dialog = w.window.findChild<QProgressDialog *>();
    QVERIFY(dialog->isVisible());
    Q_EMIT w.updater.downloadFinished();
    QVERIFY(!dialog->isVisible());
}

void tst_MainWindowUpdate::usesTheSameDialogForTheNextDownload()
{
    Window w;
    QVERIFY(w.showActive());
    Q_EMIT w.updater.downloadProgress(1, 2);
    const auto *dialog = w.window.findChild<QProgressDialog *>();
    MessageBoxHandler handler([](QMessageBox &box) { box.button(QMessageBox::Ok)->click(); });
    Q_EMIT w.updater.downloadError(u"error"_s);
    QCOMPARE(handler.count, 1);
    QVERIFY(!dialog->isVisible());

    Q_EMIT w.updater.downloadProgress(1, 4);
    QCOMPARE(w.window.findChildren<QProgressDialog *>(),
             QList<QProgressDialog *>{const_cast<QProgressDialog *>(dialog)});
    QVERIFY(dialog->isVisible());
    QCOMPARE(dialog->value(), 25);
}

// A modal progress dialog that was visible for a while runs the event loop in setValue().
void tst_MainWindowUpdate::staysClosedWhenTheDownloadEndsDuringAReport()
{
    Window w;
    QVERIFY(w.showActive());
    Q_EMIT w.updater.downloadProgress(0, 100);
    QTest::qWait(200);
    Q_EMIT w.updater.downloadProgress(1, 100);
    Q_EMIT w.updater.downloadProgress(2, 100);
    QMetaObject::invokeMethod(&w.updater, &Updater::downloadFinished, Qt::QueuedConnection);
    Q_EMIT w.updater.downloadProgress(3, 100);
    w.settle();
    QVERIFY(!w.window.findChild<QProgressDialog *>()->isVisible());
}

void tst_MainWindowUpdate::warnsAboutAFailedDownload()
{
    Window w;
    QVERIFY(w.showActive());
    Q_EMIT w.updater.downloadProgress(1, 2);
    MessageBoxHandler handler([&w](const QMessageBox &box) {
        QCOMPARE(box.parentWidget(), &w.window);
        QCOMPARE(box.icon(), QMessageBox::Warning);
        QCOMPARE(box.windowTitle(), u"Update failed"_s);
        QCOMPARE(box.text(), u"Failed to create download file"_s);
        QCOMPARE(box.standardButtons(), QMessageBox::Ok);
        QVERIFY(!w.window.findChild<QProgressDialog *>()->isVisible());
    });
    Q_EMIT w.updater.downloadError(u"Failed to create download file"_s);
    QCOMPARE(handler.count, 1);
}

void tst_MainWindowUpdate::warnsWithoutADialogToClose()
{
    Window w;
    MessageBoxHandler handler([](QMessageBox &) {});
    Q_EMIT w.updater.downloadError(u"error"_s);
    QCOMPARE(handler.count, 1);
    QVERIFY(!w.window.findChild<QProgressDialog *>());
}

void tst_MainWindowUpdate::showsTheErrorAsPlainText()
{
    Window w;
    const QString message = u"<b>server</b> replied: &amp;"_s;
    MessageBoxHandler handler([&message](const QMessageBox &box) {
        QCOMPARE(box.text(), message);
        QCOMPARE(box.textFormat(), Qt::PlainText);
    });
    Q_EMIT w.updater.downloadError(message);
    QCOMPARE(handler.count, 1);
}

void tst_MainWindowUpdate::leadsFromTheOfferToTheWarning()
{
    HttpServer server;
    Window w;
    QVERIFY(w.showActive());
    MessageBoxHandler atQuestion([](QMessageBox &box) { box.button(QMessageBox::Yes)->click(); });
    Q_EMIT w.updater.updateAvailable(u"2"_s, u"text"_s, server.url(u"/missing"_s), false);
    QCOMPARE(atQuestion.count, 1);
    QString text;
    MessageBoxHandler atWarning([&text](const QMessageBox &box) { text = box.text(); });
    QTRY_COMPARE(atWarning.count, 1);
    QCOMPARE(text,
             u"Error transferring %1 - server replied: Not Found"_s.arg(server.url(u"/missing"_s)));
}

VASKEL_TEST(tst_MainWindowUpdate, QApplication)
#include "tst_MainWindowUpdate.moc"
