// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/MainWindow.h"

#include "support/TestProgram.h"
#include "ui/CommandLineEdit.h"
#include "ui/WindowTest.h"

#include <QAccessible>
#include <QBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace windowtest;

/// The structure of the window.
class tst_MainWindow : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { reset(); }

    void hasItsTitleAndFirstSize();
    void titleBarHoldsTitleAndCloseButton();
    void contentIsInOrder();
    void listIsTheFirstPage();
    void boxKnowsAllCommandsAndItsPlaceholder();
    void destructionKeepsTheServices();
    void namesItsPartsForAssistiveTechnology();
};

void tst_MainWindow::hasItsTitleAndFirstSize()
{
    const Window w;
    QCOMPARE(w.window.windowTitle(), u"Vaskel"_s);
    QCOMPARE(w.window.size(), QSize(760, 460));
    QCOMPARE(w.window.minimumWidth(), 720);
    QVERIFY(w.window.testAttribute(Qt::WA_DontCreateNativeAncestors));
}

void tst_MainWindow::titleBarHoldsTitleAndCloseButton()
{
    const Window w;
    QCOMPARE(w.titleBar->objectName(), u"windowTitleBar"_s);
    QCOMPARE(w.titleBar->minimumHeight(), 36);
    QCOMPARE(w.titleBar->maximumHeight(), 36);

    const QLayout *layout = w.titleBar->layout();
    QCOMPARE(layout->contentsMargins(), QMargins(14, 0, 6, 0));
    QCOMPARE(layout->count(), 3);
    const auto *title = qobject_cast<QLabel *>(layout->itemAt(0)->widget());
    QVERIFY(title);
    QCOMPARE(title->text(), u"Vaskel"_s);
    QCOMPARE(title->objectName(), u"windowTitle"_s);
    QVERIFY(layout->itemAt(1)->spacerItem());
    QCOMPARE(layout->itemAt(2)->widget(), &w.closeButton());
    QCOMPARE(w.closeButton().text(), u"\u00D7"_s);
    QCOMPARE(w.closeButton().minimumSize(), QSize(32, 28));
    QCOMPARE(w.closeButton().maximumSize(), QSize(32, 28));
}

void tst_MainWindow::contentIsInOrder()
{
    const Window w;
    const auto *root = qobject_cast<QVBoxLayout *>(w.window.layout());
    QVERIFY(root);
    QCOMPARE(root->itemAt(0)->widget(), w.titleBar);
    QCOMPARE(root->contentsMargins(), QMargins());
    QCOMPARE(root->spacing(), 0);
    QCOMPARE(root->stretch(1), 1);

    const auto *content = qobject_cast<QVBoxLayout *>(root->itemAt(1)->widget()->layout());
    QVERIFY(content);
    QCOMPARE(content->contentsMargins(), QMargins(20, 8, 20, 20));
    QCOMPARE(content->spacing(), 12);
    QCOMPARE(content->itemAt(0)->widget(), w.box);
    QCOMPARE(content->itemAt(1)->widget(), w.status);
    QCOMPARE(w.status->objectName(), u"muted"_s);
    QVERIFY(w.status->isHidden());
    QCOMPARE(content->itemAt(2)->widget(), w.strip);
    QCOMPARE(content->itemAt(3)->widget(), w.stack);
    QCOMPARE(content->stretch(3), 1);
}

void tst_MainWindow::listIsTheFirstPage()
{
    const Window w;
    QCOMPARE(w.stack->indexOf(w.list), 0);
    QCOMPARE(w.stack->count(), 1);
    QVERIFY(w.isListCurrent());
    QCOMPARE(w.list->iconSize(), QSize(40, 40));
    QCOMPARE(w.list->verticalScrollMode(), QAbstractItemView::ScrollPerPixel);
    QVERIFY(w.list->uniformItemSizes());
    QCOMPARE(w.list->contextMenuPolicy(), Qt::CustomContextMenu);
}

void tst_MainWindow::boxKnowsAllCommandsAndItsPlaceholder()
{
    Window w;
    QCOMPARE(w.edit->placeholderText(), u"Search apps or type cmd space args..."_s);
    for (const QString &command : {u"calc"_s, u"todo"_s, u"set"_s, u"user"_s}) {
        w.box->setText(command);
        QCOMPARE(w.box->text(), command + u' '); // the blank shows that there is a badge
    }
    w.settings.setPluginEnabled(u"calc"_s, false);
    w.box->setText(u"calc"_s);
    QCOMPARE(w.box->text(), u"calc "_s);
}

void tst_MainWindow::destructionKeepsTheServices()
{
    AppLauncher launcher;
    Settings settings;
    PluginManager plugins;
    Updater updater;
    {
        const MainWindow window(&launcher, &plugins, &settings, &updater);
    }
    launcher.pinApp(u"/a"_s, u"a"_s, QString());
    settings.setShowAllAppsWhenSearchEmpty(false);
    QVERIFY(launcher.isPinned(u"/a"_s));
}

void tst_MainWindow::namesItsPartsForAssistiveTechnology()
{
    const Window w;
    const auto name = [](QWidget *widget) {
        return QAccessible::queryAccessibleInterface(widget)->text(QAccessible::Name);
    };
    QCOMPARE(name(w.edit), u"Search apps or type cmd space args..."_s);
    QCOMPARE(name(&w.closeButton()), u"Hide main window"_s);
    QCOMPARE(name(w.list), u"Results"_s);
    QCOMPARE(name(w.pinButtons().at(0)), u"Calculator"_s);
}

VASKEL_TEST(tst_MainWindow, QApplication)
#include "tst_MainWindow.moc"
