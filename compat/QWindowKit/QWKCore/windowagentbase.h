// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>

namespace QWK {

/// What window agents of all kinds have in common.
class WindowAgentBase : public QObject
{
    Q_OBJECT

public:
    /// The roles that a title bar's buttons can have.
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
