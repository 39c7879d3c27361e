// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtGlobal>
#include <qnamespace.h>

#include <functional>
#include <memory>

/// The part of QHotkey that depends on the operating system.
class SystemHotkeys
{
public:
    /// Called for each press of a registered combination, from the native event filter.
    using Pressed = std::function<void(QKeyCombination)>;

    /// Null if the running platform has no global hotkeys.
    static std::unique_ptr<SystemHotkeys> create(Pressed pressed);

    static bool isSupported();

    SystemHotkeys() = default;
    /// Unregisters all combinations.
    virtual ~SystemHotkeys() = default;
    Q_DISABLE_COPY_MOVE(SystemHotkeys)

    /// Registers a combination that is not registered yet. Logs a warning and returns false on
    /// failure.
    virtual bool registerHotkey(QKeyCombination combination) = 0;

    virtual void unregisterHotkey(QKeyCombination combination) = 0;
};
