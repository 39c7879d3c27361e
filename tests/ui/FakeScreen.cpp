// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/FakeScreen.h"

#include <qpa/qplatformscreen.h>
#include <qpa/qwindowsysteminterface.h>

namespace windowtest {

namespace {

class Screen : public QPlatformScreen
{
public:
    explicit Screen(const QRect &geometry)
        : m_geometry(geometry)
    {
    }

    QRect geometry() const override { return m_geometry; }
    int depth() const override { return 32; }
    QImage::Format format() const override { return QImage::Format_RGB32; }

private:
    QRect m_geometry;
};

} // namespace

FakeScreen::FakeScreen(const QRect &geometry, bool isPrimary)
    : m_screen(new Screen(geometry))
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
