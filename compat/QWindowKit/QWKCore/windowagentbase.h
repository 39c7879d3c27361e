// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>

namespace QWK {

/// Base class of window agents.
class WindowAgentBase : public QObject
{
    Q_OBJECT

public:
    /// The buttons of a title bar.
    enum SystemButton {
        Unknown,
        WindowIcon,
        Help,
        Minimize,
        Maximize,
        Close,
    };
    Q_ENUM(SystemButton)

protected:
    using QObject::QObject;
};

} // namespace QWK
