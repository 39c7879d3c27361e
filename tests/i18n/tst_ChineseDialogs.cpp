// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/Translation.h"
#include "core/PluginManager.h"
#include "settings/Settings.h"
#include "settings/SettingsView.h"
#include "ui/PlainMessage.h"

#include "support/TestHome.h"
#include "support/TestProgram.h"

#include <QAction>
#include <QApplication>
#include <QContextMenuEvent>
#include <QDialogButtonBox>
#include <QKeySequence>
#include <QKeySequenceEdit>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QTest>
#include <QTimer>
#include <QTranslator>

#include <memory>

using namespace Qt::StringLiterals;

namespace {

/// The texts of a menu without their shortcuts.
QStringList entries(const QMenu &menu)
{
    QStringList texts;
    const QList<QAction *> actions = menu.actions();
    for (const QAction *action : actions) {
        if (!action->isSeparator()) {
            texts.append(action->text().section(u'\t', 0, 0));
        }
    }
    return texts;
}

/// Opens the context menu of a widget, closes it and returns its texts.
QStringList entriesOfContextMenu(QWidget &widget)
{
    QStringList texts;
    QTimer poll;
    poll.callOnTimeout(&poll, [&] {
        if (auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget())) {
            poll.stop();
            texts = entries(*menu);
            menu->close();
        }
    });
    poll.start(0);
    const QPoint position = widget.rect().center();
    QContextMenuEvent event(QContextMenuEvent::Mouse, position, widget.mapToGlobal(position));
    QCoreApplication::sendEvent(&widget, &event);
    // Qt 6.11 does not wait until the menu is closed.
    [[maybe_unused]] const bool isClosed = QTest::qWaitFor([&texts] { return !texts.isEmpty(); });
    return texts;
}

/// Shows a message box, dismisses it and returns the texts of its buttons.
QStringList buttonsOfMessage(QMessageBox::StandardButtons buttons)
{
    QStringList texts;
    QTimer poll;
    poll.callOnTimeout(&poll, [&] {
        if (auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget())) {
            poll.stop();
            const QList<QAbstractButton *> shown = box->buttons();
            for (const QAbstractButton *button : shown) {
                texts.append(button->text());
            }
            box->done(0);
        }
    });
    poll.start(0);
    showPlainMessage(nullptr, QMessageBox::Question, u"title"_s, u"text"_s, buttons);
    texts.sort();
    return texts;
}

} // namespace

/// The texts of Qt in what the program shows, in Simplified Chinese.
class tst_ChineseDialogs : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void buttonsOfTheSettingsPage();
    void placeholderOfAHotkey();
    void nameOfAKey();
    void buttonsOfMessages();
    void menuOfALineEdit();
    void menuOfAReadOnlyText();
    void menuOfAScrollBar();
    void errorOfADownload();

private:
    QTranslator m_translator;
};

void tst_ChineseDialogs::initTestCase()
{
    testhome::reset();
    QVERIFY(loadTranslation(m_translator, {u"zh-CN"_s}, u"/nonexistent"_s));
    QVERIFY(QCoreApplication::installTranslator(&m_translator));
}

void tst_ChineseDialogs::buttonsOfTheSettingsPage()
{
    Settings settings;
    PluginManager plugins;
    const SettingsView view(&settings, &plugins);
    const auto *buttons = view.findChild<QDialogButtonBox *>();
    QCOMPARE(buttons->button(QDialogButtonBox::Save)->text(), u"保存"_s);
    QCOMPARE(buttons->button(QDialogButtonBox::Cancel)->text(), u"取消"_s);
}

void tst_ChineseDialogs::placeholderOfAHotkey()
{
    Settings settings;
    settings.setGlobalHotkey(QString());
    PluginManager plugins;
    const SettingsView view(&settings, &plugins);
    const auto *edit = view.findChild<QKeySequenceEdit *>()->findChild<QLineEdit *>();
    QCOMPARE(edit->placeholderText(), u"请按快捷键"_s);
}

void tst_ChineseDialogs::nameOfAKey()
{
    const QKeySequence sequence(u"Ctrl+Alt+Space"_s, QKeySequence::PortableText);
    QCOMPARE(sequence.toString(QKeySequence::NativeText), u"Ctrl+Alt+空格"_s);
    QCOMPARE(sequence.toString(QKeySequence::PortableText), u"Ctrl+Alt+Space"_s);
}

void tst_ChineseDialogs::buttonsOfMessages()
{
    QCOMPARE(buttonsOfMessage(QMessageBox::Yes | QMessageBox::No),
             QStringList({u"否(&N)"_s, u"是(&Y)"_s}));
    QCOMPARE(buttonsOfMessage(QMessageBox::Ok), QStringList(u"确定"_s));
}

void tst_ChineseDialogs::menuOfALineEdit()
{
    QLineEdit edit;
    const std::unique_ptr<QMenu> menu(edit.createStandardContextMenu());
    QCOMPARE(entries(*menu), QStringList({u"撤消(&U)"_s, u"恢复(&R)"_s, u"剪切(&T)"_s,
                                          u"复制(&C)"_s, u"粘贴(&P)"_s, u"删除"_s, u"全选"_s}));
}

void tst_ChineseDialogs::menuOfAReadOnlyText()
{
    QPlainTextEdit edit;
    edit.setReadOnly(true);
    const std::unique_ptr<QMenu> menu(edit.createStandardContextMenu());
    QCOMPARE(entries(*menu), QStringList({u"复制(&C)"_s, u"全选"_s}));
}

void tst_ChineseDialogs::menuOfAScrollBar()
{
    QScrollBar bar(Qt::Vertical);
    bar.show();
    QCOMPARE(entriesOfContextMenu(bar),
             QStringList({u"滚动到此处"_s, u"顶部"_s, u"底部"_s, u"向上翻页"_s, u"向下翻页"_s,
                          u"向上滚动"_s, u"向下滚动"_s}));
}

void tst_ChineseDialogs::errorOfADownload()
{
    QNetworkAccessManager network;
    const std::unique_ptr<QNetworkReply> reply(
        network.get(QNetworkRequest(QUrl(u"nonesuch://host/file"_s))));
    QTRY_VERIFY(reply->isFinished());
    QCOMPARE(reply->errorString(), u"未知的协议“nonesuch”"_s);
}

VASKEL_TEST(tst_ChineseDialogs, QApplication)
#include "tst_ChineseDialogs.moc"
