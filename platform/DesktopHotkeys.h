// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QList>
#include <QObject>
#include <QString>

#include <memory>
#include <optional>

class QWindow;

namespace platform {

/// System-wide hotkeys that the desktop holds for the program. A Wayland desktop needs them: what a
/// program grabs there works only while an X11 window has the focus.
class DesktopHotkeys : public QObject
{
    Q_OBJECT

public:
    struct Hotkey
    {
        QString command;     ///< empty for the hotkey of the window
        QString sequence;    ///< in QKeySequence::PortableText form; the desktop may choose another
        QString description; ///< for the desktop's settings

        friend bool operator==(const Hotkey &, const Hotkey &) = default;
    };

    using QObject::QObject;

    /// Asks the desktop for these hotkeys in place of the earlier ones, unless they are the same.
    /// Returns at once. changed() follows when they are bound. A failure is logged, and emits
    /// changed() only if hotkeys were bound before.
    virtual void bind(const QList<Hotkey> &hotkeys) = 0;

    /// Whether the desktop holds the hotkeys. Remains true while it is asked for others, and
    /// becomes false if it refuses them or stops holding them.
    virtual bool isBound() const = 0;

    /// The keys of a hotkey in the desktop's own words, which are empty on some desktops. Nothing
    /// if the desktop does not hold the hotkey.
    virtual std::optional<QString> trigger(const QString &command) const = 0;

    /// Whether the desktop has a dialog for the keys of its hotkeys.
    virtual bool canConfigure() const = 0;

    /// Opens that dialog; does nothing if there is none. A failure is logged.
    virtual void configure() = 0;

Q_SIGNALS:
    /// The user pressed the hotkey of the window, or of a command. Sent once per press, however
    /// long the key is held.
    void activated();
    void commandActivated(const QString &command);

    /// isBound(), canConfigure() or a trigger() has changed.
    void changed();
};

/// Null if the desktop holds no hotkeys since programs can grab every key: on Windows, and in an
/// X11 session. Dialogs of the desktop are placed over the window.
std::unique_ptr<DesktopHotkeys> createDesktopHotkeys(QWindow *window);

} // namespace platform
