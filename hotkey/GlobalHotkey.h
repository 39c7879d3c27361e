// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QHash>
#include <QObject>
#include <QString>

class QHotkey;

/// The system-wide hotkeys of the program: one main hotkey and one for each plugin that is given
/// any. Key sequences come in QKeySequence::PortableText form. A sequence that another program
/// holds, or that the system refuses, is reported by the result alone and never tried again. The
/// signals come from the event loop.
class GlobalHotkey : public QObject
{
    Q_OBJECT

public:
    /// Has no hotkey yet.
    explicit GlobalHotkey(QObject *parent = nullptr);

    /// Releases the main hotkey, whatever comes of the new one; true when that is registered. An
    /// empty or unreadable sequence leaves no main hotkey.
    bool setMainHotkey(const QString &sequence);

    /// Adds a hotkey for a command word; true when it is registered. A word that has one already
    /// keeps that too: clear first.
    bool registerPluginHotkey(const QString &command, const QString &sequence);

    /// Releases all plugin hotkeys, and leaves the main one alone.
    void clearPluginHotkeys();

Q_SIGNALS:
    /// The main hotkey was pressed.
    void activated();
    /// The plugin hotkey of this command word was pressed.
    void commandActivated(const QString &command);

private:
    QHotkey *m_mainHotkey = nullptr;
    QHash<QString, QHotkey *> m_pluginHotkeys; ///< by command word, failed ones included
};
