// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/X11.h"

#include "support/TestProgram.h"

#include <QTest>

using platform::XcbReply;

class tst_X11 : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void isTheAtomOfTheServer();
    void asksTheServerOnce();
};

namespace {

constexpr char name[] = "_VASKEL_TEST";

} // namespace

void tst_X11::isTheAtomOfTheServer()
{
    xcb_connection_t *connection = platform::x11Connection();
    QVERIFY(connection);
    const xcb_atom_t atom = platform::x11Atom(connection, name);
    const XcbReply<xcb_get_atom_name_reply_t> reply(
        xcb_get_atom_name_reply(connection, xcb_get_atom_name(connection, atom), nullptr));
    QVERIFY(reply);
    QCOMPARE(QByteArray(xcb_get_atom_name_name(reply.get()), reply->name_len), QByteArray(name));
}

void tst_X11::asksTheServerOnce()
{
    xcb_connection_t *connection = platform::x11Connection();
    QVERIFY(connection);
    const xcb_atom_t atom = platform::x11Atom(connection, name);
    // The number of a request tells how many there were.
    const unsigned before = xcb_no_operation(connection).sequence;
    QCOMPARE(platform::x11Atom(connection, name), atom);
    QCOMPARE(xcb_no_operation(connection).sequence, before + 1);
}

VASKEL_TEST(tst_X11, QGuiApplication)
#include "tst_X11.moc"
