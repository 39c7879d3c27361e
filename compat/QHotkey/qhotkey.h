// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QKeySequence>
#include <QObject>

/// A system-wide hotkey. Use on the GUI thread only. The properties and registeredChanged() are
/// there because the library has them; the program does not use them.
class QHotkey : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool registered READ isRegistered WRITE setRegistered NOTIFY registeredChanged)
    Q_PROPERTY(QKeySequence shortcut READ shortcut WRITE setShortcut)

public:
    /// Whether the running platform has global hotkeys; without them no registration succeeds.
    static bool isPlatformSupported();

    explicit QHotkey(QObject *parent = nullptr);
    explicit QHotkey(const QKeySequence &shortcut, bool autoRegister = false,
                     QObject *parent = nullptr);
    /// Unregisters the hotkey without emitting registeredChanged().
    ~QHotkey() override;

    bool isRegistered() const;
    QKeySequence shortcut() const;

public Q_SLOTS:
    /// Registers or unregisters the hotkey; returns whether isRegistered() now has that value. Logs
    /// a warning if the system refuses. Several objects of this process may register the same
    /// combination.
    bool setRegistered(bool registered);

    /// Sets the combination; only the first of a sequence is used. A registered hotkey changes only
    /// with autoRegister, which registers the new combination too. Returns whether all of this
    /// succeeded; a hotkey whose new combination is refused is no longer registered.
    bool setShortcut(const QKeySequence &shortcut, bool autoRegister = false);

Q_SIGNALS:
    /// The combination was pressed. Emitted from the event loop, once per press without
    /// auto-repeat.
    void activated(QPrivateSignal);

    void registeredChanged(bool registered);

private:
    friend class HotkeyTable;

    QKeySequence m_shortcut;
    bool m_registered = false;
};
