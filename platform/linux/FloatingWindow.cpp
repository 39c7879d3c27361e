// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/FloatingWindow.h"

#include "platform/linux/X11.h"

#include <QEvent>
#include <QGuiApplication>
#include <QList>
#include <QObject>
#include <QPoint>
#include <QWindow>

#include <array>

namespace platform {

namespace {

// The atoms of EWMH that the window manager supports.
QList<xcb_atom_t> supportedAtoms(xcb_connection_t *connection)
{
    constexpr quint32 limit = 1024; // EWMH defines far fewer
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
    const auto cookie = xcb_get_property(
        connection, false, root, x11Atom(connection, "_NET_SUPPORTED"), XCB_ATOM_ATOM, 0, limit);
    const XcbReply<xcb_get_property_reply_t> reply(
        xcb_get_property_reply(connection, cookie, nullptr));
    if (!reply || reply->format != 32) {
        return {};
    }
    const auto *first = static_cast<const xcb_atom_t *>(xcb_get_property_value(reply.get()));
    return {first, first + reply->value_len};
}

// A window manager that cannot keep a window above others tiles its windows. Newer versions of sway
// can, and tile nevertheless.
bool isTiling(xcb_connection_t *connection)
{
    if (!qEnvironmentVariableIsEmpty("SWAYSOCK")) {
        return true;
    }
    const QList<xcb_atom_t> supported = supportedAtoms(connection);
    return !supported.isEmpty() && !supported.contains(x11Atom(connection, "_NET_WM_STATE_ABOVE"));
}

// By XCB: Qt would have to create the window anew.
void setDialogType(xcb_connection_t *connection, xcb_window_t window)
{
    const std::array<xcb_atom_t, 2> types{x11Atom(connection, "_NET_WM_WINDOW_TYPE_DIALOG"),
                                          x11Atom(connection, "_NET_WM_WINDOW_TYPE_NORMAL")};
    xcb_change_property(connection, XCB_PROP_MODE_REPLACE, window,
                        x11Atom(connection, "_NET_WM_WINDOW_TYPE"), XCB_ATOM_ATOM, 32, types.size(),
                        types.data());
}

// The window manager of Xfce lowers a window that stays above others when another window of its
// group shows.
void leaveGroup(xcb_connection_t *connection, xcb_window_t window)
{
    constexpr quint32 length = 9; // of WM_HINTS; flags in its first field tell which others are set
    constexpr quint32 windowGroup = 1 << 6;
    const auto cookie = xcb_get_property(connection, false, window, XCB_ATOM_WM_HINTS,
                                         XCB_ATOM_WM_HINTS, 0, length);
    const XcbReply<xcb_get_property_reply_t> reply(
        xcb_get_property_reply(connection, cookie, nullptr));
    if (!reply || reply->format != 32 || reply->value_len != length) {
        return;
    }
    auto *hints = static_cast<quint32 *>(xcb_get_property_value(reply.get()));
    hints[0] &= ~windowGroup;
    xcb_change_property(connection, XCB_PROP_MODE_REPLACE, window, XCB_ATOM_WM_HINTS,
                        XCB_ATOM_WM_HINTS, 32, length, hints);
}

/// Puts the window back to its place when it shows: the window manager may have moved it by the
/// size of the frame, which would add up from show to show.
class PlaceKeeper : public QObject
{
public:
    explicit PlaceKeeper(QWindow *window)
        : QObject(window)
        , m_window(window)
        , m_place(window->position())
    {
        window->installEventFilter(this);
    }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Expose && m_window->isExposed()) {
            m_window->removeEventFilter(this);
            m_window->setPosition(m_place);
            deleteLater();
        }
        return QObject::eventFilter(watched, event);
    }

private:
    QWindow *m_window;
    QPoint m_place;
};

} // namespace

void keepFloating(QWindow *window, Floating floating)
{
    xcb_connection_t *connection = x11Connection();
    if (!connection) {
        return;
    }
    const bool tiles = isTiling(connection);
    if (floating == Floating::Unmanaged) {
        window->setFlag(Qt::BypassWindowManagerHint, tiles);
        leaveGroup(connection, xcb_window_t(window->winId()));
    } else if (tiles) {
        setDialogType(connection, xcb_window_t(window->winId()));
        new PlaceKeeper(window);
    }
}

bool canPlaceWindows()
{
    return !QGuiApplication::platformName().startsWith(QLatin1StringView("wayland"));
}

} // namespace platform
