// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "settings/HotkeyOrigin.h"

#include <QList>
#include <QObject>

#include <functional>

class HotkeyEdit;

/// Tells under a hotkey field where the hotkey comes from, that another program holds it, or that
/// it takes a single key from all programs.
class HotkeyHints : public QObject
{
    Q_OBJECT

public:
    /// Whether another program holds the stored hotkey of a command; of the window if the command
    /// is empty.
    using Check = std::function<bool(const QString &command)>;

    /// Where the stored hotkey of a command comes from, or of the window.
    using Origins = std::function<HotkeyOrigin(const QString &command)>;

    using QObject::QObject;

    /// Without a check, no hotkey counts as held.
    void setCheck(const Check &check) { m_check = check; }

    /// Without origins, the page does not tell them.
    void setOrigins(const Origins &origins) { m_origins = origins; }

    /// Adds the field for the hotkey of a command; it must live as long as the hints.
    void add(HotkeyEdit *edit, const QString &command);

    /// Takes what the fields show as stored. Call this after they are loaded or saved.
    void takeStored();

    /// Call this when the holder of a hotkey may have changed, whatever the fields show.
    void refresh();

private:
    struct Field
    {
        HotkeyEdit *edit;
        QString command;
        QString stored;
        bool isHeld;
        HotkeyOrigin origin;
    };

    static void showHint(const Field &field);
    static QString originText(const HotkeyOrigin &origin);
    void showHintOf(const HotkeyEdit *edit) const;

    QList<Field> m_fields;
    Check m_check;
    Origins m_origins;
};
