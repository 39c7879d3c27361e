// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QKeySequence>
#include <QObject>

/// A key combination that is noticed whatever window has the focus. To be used on the GUI thread.
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
    /// Gives the combination back, without registeredChanged().
    ~QHotkey() override;

    bool isRegistered() const;
    QKeySequence shortcut() const;

public Q_SLOTS:
    /// Takes or gives back the combination; true if it then is as asked for. A refusal is logged as
    /// a warning. Any number of objects of this process may hold the same combination.
    bool setRegistered(bool registered);

    /// Sets the combination, of which only the first is used if there are several. While registered
    /// it is changed only with autoRegister, which registers the new one, too; true if that is
    /// done.
    bool setShortcut(const QKeySequence &shortcut, bool autoRegister = false);

Q_SIGNALS:
    /// The combination was pressed. Comes from the event loop, once however long the key is held.
    void activated(QPrivateSignal);

    void registeredChanged(bool registered);

private:
    friend class HotkeyTable;

    QKeySequence m_shortcut;
    bool m_registered = false;
};
