// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtGlobal>
#include <qnamespace.h>

#include <functional>
#include <memory>

class QPoint;
class QWindow;

namespace QWK {

/// Keeps the system's frame around a window invisible, but at work: the system moves, resizes,
/// snaps and shadows the window as it does its own, with the places that it is told.
class SystemFrame
{
public:
    /// The part of the frame at a place in the window, in the window's device-independent pixels;
    /// Qt::NoSection for what belongs to the widgets.
    using SectionAt = std::function<Qt::WindowFrameSection(const QPoint &)>;

    /// Null where the system has no such frame, or not for this window. The window must be there
    /// in the system, and outlive the frame there.
    static std::unique_ptr<SystemFrame> create(QWindow *window, const SectionAt &sectionAt);

    SystemFrame() = default;
    virtual ~SystemFrame() = default;
    Q_DISABLE_COPY_MOVE(SystemFrame)
};

} // namespace QWK
