// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/WindowFrame.h"

#include "platform/linux/X11.h"
#include "platform/linux/X11Marker.h"
#include "support/TestProgram.h"

#include <QGuiApplication>
#include <QTest>
#include <QWindow>

#include <array>

namespace {

const QRect place(300, 200, 220, 120);

/// A window manager's window around another one. It is hidden and in the corner of the screen.
class Frame
{
public:
    Frame()
        : m_window(xcb_generate_id(m_connection))
    {
        const xcb_screen_t *screen = xcb_setup_roots_iterator(xcb_get_setup(m_connection)).data;
        const std::array<quint32, 1> withoutManager{1};
        xcb_create_window(m_connection, XCB_COPY_FROM_PARENT, m_window, screen->root, 0, 0, 400,
                          300, 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT,
                          XCB_CW_OVERRIDE_REDIRECT, withoutManager.data());
    }

    ~Frame() { xcb_disconnect(m_connection); } // the server removes the window
    Q_DISABLE_COPY_MOVE(Frame)

    void take(const QWindow &window)
    {
        xcb_reparent_window(m_connection, xcb_window_t(window.winId()), m_window, 0, 0);
    }

    void resize(const QWindow &window, const QSize &size)
    {
        const std::array<quint32, 2> values{quint32(size.width()), quint32(size.height())};
        xcb_configure_window(m_connection, xcb_window_t(window.winId()),
                             XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT, values.data());
        flush();
    }

    void move(const QPoint &position)
    {
        const std::array<quint32, 2> values{quint32(position.x()), quint32(position.y())};
        xcb_configure_window(m_connection, m_window, XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y,
                             values.data());
    }

    void show()
    {
        xcb_map_window(m_connection, m_window);
        flush();
    }

private:
    // Returns when the server has done everything.
    void flush()
    {
        const auto cookie = xcb_get_input_focus(m_connection);
        const platform::XcbReply<xcb_get_input_focus_reply_t> reply(
            xcb_get_input_focus_reply(m_connection, cookie, nullptr));
        QVERIFY(reply);
    }

    xcb_connection_t *m_connection = xcb_connect(nullptr, nullptr);
    xcb_window_t m_window;
};

/// A window that Qt has put to its place.
class PlacedWindow : public QWindow
{
public:
    PlacedWindow()
    {
        setFlags(Qt::FramelessWindowHint | Qt::BypassWindowManagerHint);
        setGeometry(place);
        show();
    }
};

/// Puts the window into the hidden frame and resizes it there, as a window manager does, until Qt
/// has got all events.
void takeOver(QWindow &window, Frame &frame)
{
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    frame.take(window);
    frame.resize(window, QSize(260, 160));
    const X11Marker marker(window);
    QTRY_VERIFY(marker.isNoticed());
}

} // namespace

class tst_WindowFrame : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { platform::ignoreMovesOfHiddenWindows(); }
    void hiddenFrameDoesNotMoveTheWindow();
    void framePlacesTheWindowWhenItShows();
    void shownFrameMovesTheWindow();
};

void tst_WindowFrame::hiddenFrameDoesNotMoveTheWindow()
{
    PlacedWindow window;
    Frame frame;
    takeOver(window, frame);
    QCOMPARE(window.geometry(), place);
}

void tst_WindowFrame::framePlacesTheWindowWhenItShows()
{
    PlacedWindow window;
    Frame frame;
    takeOver(window, frame);
    frame.move(QPoint(500, 400));
    frame.show();
    QTRY_COMPARE(window.geometry(), QRect(500, 400, 260, 160));
}

void tst_WindowFrame::shownFrameMovesTheWindow()
{
    PlacedWindow window;
    Frame frame;
    takeOver(window, frame);
    frame.show();
    QTRY_COMPARE(window.geometry(), QRect(0, 0, 260, 160));
    frame.move(QPoint(500, 400));
    frame.resize(window, QSize(280, 180));
    QTRY_COMPARE(window.geometry(), QRect(500, 400, 280, 180));
}

VASKEL_TEST(tst_WindowFrame, QGuiApplication)
#include "tst_WindowFrame.moc"
