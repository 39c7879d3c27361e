// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/DesktopHotkeys.h"
#include "support/FakePlatform.h"

#include <QHash>
#include <QList>

/// What createDesktopHotkeys() returns with the fakes. It has bound the hotkeys once a test sets
/// hasBound. fakePlatform().desktopHotkeys is the newest one.
class FakeDesktopHotkeys : public platform::DesktopHotkeys
{
public:
    FakeDesktopHotkeys() { fakePlatform().desktopHotkeys = this; }
    ~FakeDesktopHotkeys() override { fakePlatform().desktopHotkeys = nullptr; }
    Q_DISABLE_COPY_MOVE(FakeDesktopHotkeys)

    QList<QList<Hotkey>> bindCalls;
    bool hasBound = false;
    QHash<QString, QString> triggers; // by command
    bool hasDialog = false;
    int configureCalls = 0;

    void bind(const QList<Hotkey> &hotkeys) override { bindCalls.append(hotkeys); }
    bool isBound() const override { return hasBound; }
    bool canConfigure() const override { return hasBound && hasDialog; }
    void configure() override { ++configureCalls; }

    std::optional<QString> trigger(const QString &command) const override
    {
        const auto found = triggers.constFind(command);
        return hasBound && found != triggers.cend() ? std::optional(*found) : std::nullopt;
    }

    void setBound(bool isBound)
    {
        hasBound = isBound;
        Q_EMIT changed();
    }
};
