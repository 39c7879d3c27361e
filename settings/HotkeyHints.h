// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QList>
#include <QObject>

#include <functional>

class HotkeyEdit;

/// Tells under a hotkey field if the hotkey does not work, or works against other programs.
class HotkeyHints : public QObject
{
    Q_OBJECT

public:
    /// Whether another program holds the stored hotkey of a command; of the window if the command
    /// is empty.
    using Check = std::function<bool(const QString &command)>;

    using QObject::QObject;

    /// Without a check, no hotkey counts as held.
    void setCheck(const Check &check) { m_check = check; }

    /// Adds the field for the hotkey of a command; it must live as long as the hints.
    void add(HotkeyEdit *edit, const QString &command);

    /// Call this when the fields show what is stored: after they are loaded or saved.
    void update();

private:
    struct Field
    {
        HotkeyEdit *edit;
        QString command;
        QString stored;
        bool isHeld;
    };

    static void showHint(const Field &field);
    void showHintOf(const HotkeyEdit *edit) const;

    QList<Field> m_fields;
    Check m_check;
};
