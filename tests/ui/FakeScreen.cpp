// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/FakeScreen.h"

#include <qpa/qplatformscreen.h>
#include <qpa/qwindowsysteminterface.h>

namespace windowtest {

namespace {

class Screen : public QPlatformScreen
{
public:
    Screen(const QRect &geometry, qreal factor)
        : m_geometry(geometry)
        , m_factor(factor)
    {
        s_screens.append(this);
    }

    ~Screen() override { s_screens.removeOne(this); }

    QRect geometry() const override { return m_geometry; }
    int depth() const override { return 32; }
    QImage::Format format() const override { return QImage::Format_RGB32; }
    QDpi logicalBaseDpi() const override { return {usualDpi, usualDpi}; }
    QDpi logicalDpi() const override { return {m_factor * usualDpi, m_factor * usualDpi}; }
    // A window keeps its native window when it moves from one to another.
    QList<QPlatformScreen *> virtualSiblings() const override { return s_screens; }

private:
    static constexpr qreal usualDpi = 96;

    inline static QList<QPlatformScreen *> s_screens;

    QRect m_geometry;
    qreal m_factor;
};

} // namespace

FakeScreen::FakeScreen(const QRect &geometry, bool isPrimary, qreal factor)
    : m_screen(new Screen(geometry, factor))
{
    QWindowSystemInterface::handleScreenAdded(m_screen, isPrimary);
}

FakeScreen::~FakeScreen()
{
    QWindowSystemInterface::handleScreenRemoved(m_screen); // deletes it
}

void FakeScreen::setAvailableGeometry(const QRect &available)
{
    QWindowSystemInterface::handleScreenGeometryChange(m_screen->screen(), m_screen->geometry(),
                                                       available);
    QWindowSystemInterface::flushWindowSystemEvents();
}

} // namespace windowtest
