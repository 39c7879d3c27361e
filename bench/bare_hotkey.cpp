// SPDX-License-Identifier: GPL-3.0-or-later
//
// A minimal program with a hotkey: Ctrl+Alt+Space shows and hides its bare window.
#include <QAbstractNativeEventFilter>
#include <QApplication>
#include <QWidget>

#include <X11/keysym.h>
#include <xcb/xcb.h>

#include <cstdlib>

namespace {

class HotkeyFilter : public QAbstractNativeEventFilter
{
public:
    HotkeyFilter(QWidget *window, xcb_connection_t *connection)
        : m_window(window)
        , m_root(xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root)
    {
        const xcb_setup_t *setup = xcb_get_setup(connection);
        const auto count = quint8(setup->max_keycode - setup->min_keycode + 1);
        auto *reply = xcb_get_keyboard_mapping_reply(
            connection, xcb_get_keyboard_mapping(connection, setup->min_keycode, count), nullptr);
        for (int i = 0; reply && i < count; ++i) {
            if (xcb_get_keyboard_mapping_keysyms(reply)[i * reply->keysyms_per_keycode]
                == XK_space) {
                xcb_grab_key(connection, false, m_root, XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_1,
                             xcb_keycode_t(setup->min_keycode + i), XCB_GRAB_MODE_ASYNC,
                             XCB_GRAB_MODE_ASYNC);
            }
        }
        std::free(reply);
    }

    bool nativeEventFilter(const QByteArray &, void *message, qintptr *) override
    {
        const auto *event = static_cast<const xcb_key_press_event_t *>(message);
        if (event->response_type == XCB_KEY_PRESS && event->event == m_root) {
            m_window->setVisible(!m_window->isVisible());
        }
        return false;
    }

private:
    QWidget *m_window;
    xcb_window_t m_root;
};

} // namespace

int main(int argc, char *argv[])
{
    QApplication app(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    QWidget window;
    window.resize(760, 460);
    window.show();
    HotkeyFilter filter(&window,
                        app.nativeInterface<QNativeInterface::QX11Application>()->connection());
    app.installNativeEventFilter(&filter);
    return QApplication::exec();
}
