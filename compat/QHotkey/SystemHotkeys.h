// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtGlobal>
#include <qnamespace.h>

#include <functional>
#include <memory>

/// The operating system's half of QHotkey: takes key combinations away from all other programs.
class SystemHotkeys
{
public:
    /// Told each press of a held combination, from inside the native event filter.
    using Pressed = std::function<void(QKeyCombination)>;

    /// Null if the running platform has no global hotkeys.
    static std::unique_ptr<SystemHotkeys> create(Pressed pressed);

    static bool isSupported();

    SystemHotkeys() = default;
    /// Releases everything.
    virtual ~SystemHotkeys() = default;
    Q_DISABLE_COPY_MOVE(SystemHotkeys)

    /// Takes a combination that is not held yet. A refusal is logged, and nothing is kept of it.
    virtual bool hold(QKeyCombination combination) = 0;

    virtual void release(QKeyCombination combination) = 0;
};
