// SPDX-License-Identifier: GPL-3.0-or-later
#include "SystemHotkeys.h"

#include "X11Connection.h"
#include "X11GrabWatchdog.h"
#include "X11Keyboard.h"
#include "X11KeyboardHold.h"

#include <QAbstractNativeEventFilter>
#include <QDebug>
#include <QGuiApplication>
#include <QHash>
#include <QKeySequence>
#include <QObject>

#include <algorithm>
#include <cstdlib>
#include <iterator>
#include <set>
#include <vector>

#include <xcb/xcb.h>

namespace {

// From the XKEYBOARD protocol: all its events share one type, and pad0 holds their kind.
constexpr quint8 xkbNewKeyboardNotify = 0;
constexpr quint8 xkbMapNotify = 1;

quint8 xkbEventType(xcb_connection_t *display)
{
    constexpr char name[] = "XKEYBOARD";
    const auto cookie = xcb_query_extension(display, sizeof(name) - 1, name);
    auto *reply = xcb_query_extension_reply(display, cookie, nullptr);
    const quint8 type = reply && reply->present ? reply->first_event : 0;
    std::free(reply);
    return type;
}

/// Registers combinations by passive grabs on the root window of the first screen. The server
/// compares all modifiers, locks included, so each key is grabbed once for every set of locks.
class X11Hotkeys final : public SystemHotkeys, private QAbstractNativeEventFilter
{
public:
    explicit X11Hotkeys(Pressed pressed)
        : m_pressed(std::move(pressed))
        , m_keyboard(x11Connection())
        , m_watchdog(x11Connection(), x11DisplayName())
        , m_xkbEventType(xkbEventType(x11Connection()))
    {
        QCoreApplication::instance()->installNativeEventFilter(this);
    }

    ~X11Hotkeys() override
    {
        m_keys.clear();
        updateGrabs();
    }

    Q_DISABLE_COPY_MOVE(X11Hotkeys)

    bool registerHotkey(QKeyCombination combination) override;
    void unregisterHotkey(QKeyCombination combination) override;

private:
    bool nativeEventFilter(const QByteArray &type, void *message, qintptr *result) override;
    void handlePress(const xcb_key_press_event_t &event);
    void updateKeyboard();
    std::set<X11Key> withLocks(const QList<X11Key> &keys) const;
    bool isGrabbed(const QList<X11Key> &keys) const;
    void updateGrabs();
    void grab(const std::vector<X11Key> &keys);
    void ungrab(const std::vector<X11Key> &keys);

    Pressed m_pressed;
    X11Keyboard m_keyboard;
    X11GrabWatchdog m_watchdog;
    X11KeyboardHold m_hold;
    QHash<QKeyCombination, QList<X11Key>> m_keys;
    std::set<X11Key> m_grabbed;      ///< with every set of locks
    xcb_keycode_t m_releasedKey = 0; ///< the key that was released last
    xcb_timestamp_t m_releaseTime = 0;
    quint8 m_xkbEventType = 0;
    bool m_isKeyboardOutdated = false;
    QObject m_context; ///< of queued calls, which end with this object
};

bool X11Hotkeys::registerHotkey(QKeyCombination combination)
{
    const QList<X11Key> keys = m_keyboard.keysOf(combination);
    if (keys.isEmpty()) {
        qWarning() << "QHotkey: the keyboard has no key for" << QKeySequence(combination);
        return false;
    }
    m_keys.insert(combination, keys);
    updateGrabs();
    if (!isGrabbed(keys)) {
        qWarning() << "QHotkey: another program holds" << QKeySequence(combination);
        unregisterHotkey(combination);
        return false;
    }
    return true;
}

void X11Hotkeys::unregisterHotkey(QKeyCombination combination)
{
    m_keys.remove(combination);
    updateGrabs();
}

bool X11Hotkeys::nativeEventFilter(const QByteArray &type, void *message, qintptr *)
{
    if (type != "xcb_generic_event_t") {
        return false;
    }
    // An event from SendEvent has a further bit in its type and matches none of these.
    const auto *event = static_cast<const xcb_generic_event_t *>(message);
    if (event->response_type == XCB_KEY_PRESS) {
        handlePress(*static_cast<const xcb_key_press_event_t *>(message));
    } else if (event->response_type == XCB_KEY_RELEASE) {
        const auto *keyRelease = static_cast<const xcb_key_release_event_t *>(message);
        m_releasedKey = keyRelease->detail;
        m_releaseTime = keyRelease->time;
    } else if (event->response_type == XCB_MAPPING_NOTIFY
               || (m_xkbEventType != 0 && event->response_type == m_xkbEventType
                   && (event->pad0 == xkbNewKeyboardNotify || event->pad0 == xkbMapNotify))) {
        // One change causes several events.
        if (!std::exchange(m_isKeyboardOutdated, true)) {
            QMetaObject::invokeMethod(
                &m_context, [this] { updateKeyboard(); }, Qt::QueuedConnection);
        }
    }
    // Let Qt see the press too: a window may take the focus only with the time of a press.
    return false;
}

void X11Hotkeys::handlePress(const xcb_key_press_event_t &event)
{
    // Auto-repeat sends a release and a press with the same time.
    const bool isRepeated = event.detail == m_releasedKey && event.time == m_releaseTime;
    if (event.event != event.root) {
        return;
    }
    m_hold.begin(event.time);
    if (isRepeated) {
        m_hold.end();
        return;
    }
    constexpr quint16 allModifiers = 0xff;
    const X11Key pressed{event.detail, quint16(event.state & allModifiers & ~m_keyboard.locks())};
    for (auto it = m_keys.cbegin(); it != m_keys.cend(); ++it) {
        if (it.value().contains(pressed)) {
            m_pressed(it.key());
        }
    }
    // After what the press has queued.
    QMetaObject::invokeMethod(&m_hold, &X11KeyboardHold::endWithFocus, Qt::QueuedConnection);
}

void X11Hotkeys::updateKeyboard()
{
    m_isKeyboardOutdated = false;
    if (!x11Connection()) {
        return;
    }
    m_keyboard = X11Keyboard(x11Connection());
    for (auto it = m_keys.begin(); it != m_keys.end(); ++it) {
        // A letter that the new layout lacks keeps its key.
        const QList<X11Key> keys = m_keyboard.keysOf(it.key());
        if (!keys.isEmpty()) {
            it.value() = keys;
        }
    }
    updateGrabs();
    for (auto it = m_keys.cbegin(); it != m_keys.cend(); ++it) {
        if (!isGrabbed(it.value())) {
            qWarning() << "QHotkey: with this keyboard layout another program holds"
                       << QKeySequence(it.key());
        }
    }
}

std::set<X11Key> X11Hotkeys::withLocks(const QList<X11Key> &keys) const
{
    const quint16 locks = m_keyboard.locks();
    std::set<X11Key> result;
    for (const X11Key &key : keys) {
        // Enumerates all subsets of the lock bits.
        for (quint16 mask = locks;; mask = quint16((mask - 1) & locks)) {
            result.insert({key.code, quint16(key.modifiers | mask)});
            if (mask == 0) {
                break;
            }
        }
    }
    return result;
}

bool X11Hotkeys::isGrabbed(const QList<X11Key> &keys) const
{
    const std::set<X11Key> masks = withLocks(keys);
    return std::includes(m_grabbed.begin(), m_grabbed.end(), masks.begin(), masks.end());
}

void X11Hotkeys::updateGrabs()
{
    std::set<X11Key> wanted;
    for (const QList<X11Key> &keys : std::as_const(m_keys)) {
        wanted.merge(withLocks(keys));
    }
    std::vector<X11Key> missing;
    std::set_difference(wanted.begin(), wanted.end(), m_grabbed.begin(), m_grabbed.end(),
                        std::back_inserter(missing));
    std::vector<X11Key> surplus;
    std::set_difference(m_grabbed.begin(), m_grabbed.end(), wanted.begin(), wanted.end(),
                        std::back_inserter(surplus));
    ungrab(surplus);
    grab(missing);
}

void X11Hotkeys::grab(const std::vector<X11Key> &keys)
{
    xcb_connection_t *display = x11Connection();
    if (!display) {
        return;
    }
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(display)).data->root;
    std::vector<xcb_void_cookie_t> cookies;
    cookies.reserve(keys.size());
    for (const X11Key &key : keys) {
        cookies.push_back(xcb_grab_key_checked(display, false, root, key.modifiers, key.code,
                                               XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_SYNC));
    }
    for (size_t i = 0; i < keys.size(); ++i) {
        xcb_generic_error_t *error = xcb_request_check(display, cookies[i]);
        if (!error) {
            m_grabbed.insert(keys[i]);
        }
        std::free(error);
    }
}

void X11Hotkeys::ungrab(const std::vector<X11Key> &keys)
{
    for (const X11Key &key : keys) {
        m_grabbed.erase(key);
    }
    xcb_connection_t *display = x11Connection();
    if (!display || keys.empty()) {
        return;
    }
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(display)).data->root;
    xcb_void_cookie_t last{};
    for (const X11Key &key : keys) {
        last = xcb_ungrab_key_checked(display, key.code, root, key.modifiers);
    }
    // Waits until the server has processed them, so that other programs can grab the keys now.
    std::free(xcb_request_check(display, last));
}

} // namespace

std::unique_ptr<SystemHotkeys> SystemHotkeys::create(Pressed pressed)
{
    return isSupported() ? std::make_unique<X11Hotkeys>(std::move(pressed)) : nullptr;
}

bool SystemHotkeys::isSupported()
{
    return x11Connection() != nullptr;
}
