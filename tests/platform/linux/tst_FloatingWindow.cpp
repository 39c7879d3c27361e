// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/FloatingWindow.h"

#include "platform/linux/X11.h"
#include "support/TestProgram.h"

#include <QList>
#include <QTest>
#include <QWindow>

using platform::XcbReply;

class tst_FloatingWindow : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { qunsetenv("SWAYSOCK"); }
    void asksNoOtherWindowManagerForAnything();
    void asksSwayForADialog();
    void keepsTheIconFromSway();
};

namespace {

bool isDialog(const QWindow &window)
{
    xcb_connection_t *connection = platform::x11Connection();
    const auto cookie =
        xcb_get_property(connection, false, xcb_window_t(window.winId()),
                         platform::x11Atom(connection, "_NET_WM_WINDOW_TYPE"), XCB_ATOM_ATOM, 0, 1);
    const XcbReply<xcb_get_property_reply_t> reply(
        xcb_get_property_reply(connection, cookie, nullptr));
    return reply && reply->format == 32 && reply->value_len == 1
           && *static_cast<const xcb_atom_t *>(xcb_get_property_value(reply.get()))
                  == platform::x11Atom(connection, "_NET_WM_WINDOW_TYPE_DIALOG");
}

} // namespace

void tst_FloatingWindow::asksNoOtherWindowManagerForAnything()
{
    QWindow window;
    window.create();
    platform::keepFloating(&window, platform::Floating::AsDialog);
    QVERIFY(!isDialog(window));
    platform::keepFloating(&window, platform::Floating::Unmanaged);
    QVERIFY(!window.flags().testFlag(Qt::BypassWindowManagerHint));
}

void tst_FloatingWindow::asksSwayForADialog()
{
    qputenv("SWAYSOCK", "/run/sway.sock");
    QWindow window;
    window.create();
    platform::keepFloating(&window, platform::Floating::AsDialog);
    QVERIFY(isDialog(window));
}

void tst_FloatingWindow::keepsTheIconFromSway()
{
    qputenv("SWAYSOCK", "/run/sway.sock");
    QWindow window;
    window.create();
    platform::keepFloating(&window, platform::Floating::Unmanaged);
    QVERIFY(window.flags().testFlag(Qt::BypassWindowManagerHint));
}

VASKEL_TEST(tst_FloatingWindow, QGuiApplication)
#include "tst_FloatingWindow.moc"
