// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtGlobal>
#include <qnamespace.h>

#include <functional>
#include <memory>

class QPoint;
class QWindow;

namespace QWK {

/// Hides the system's frame of a window but keeps its functions: the system moves, resizes, snaps
/// and shadows the window.
class SystemFrame
{
public:
    /// Maps a position in the window, in device-independent pixels, to a part of the frame, or to
    /// Qt::NoSection for the widgets.
    using SectionAt = std::function<Qt::WindowFrameSection(const QPoint &)>;

    /// Null if the platform has no such frame. The native window must exist and outlive the frame.
    static std::unique_ptr<SystemFrame> create(QWindow *window, const SectionAt &sectionAt);

    SystemFrame() = default;
    virtual ~SystemFrame() = default;
    Q_DISABLE_COPY_MOVE(SystemFrame)
};

} // namespace QWK
