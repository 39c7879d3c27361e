// SPDX-License-Identifier: GPL-3.0-or-later
#include "systemframe.h"

#include <QAbstractNativeEventFilter>
#include <QCoreApplication>
#include <QGuiApplication>
#include <QPoint>
#include <QWindow>
#include <QtMath>

#include <utility>

#include <windows.h>
#include <windowsx.h>

#include <dwmapi.h>

namespace QWK {

namespace {

// The styles that let Windows resize, snap, shadow and animate a window.
constexpr LONG_PTR frameStyle =
    WS_CAPTION | WS_THICKFRAME | WS_SYSMENU | WS_MINIMIZEBOX | WS_MAXIMIZEBOX;

LRESULT hitTestCode(Qt::WindowFrameSection section)
{
    switch (section) {
    case Qt::LeftSection:
        return HTLEFT;
    case Qt::TopLeftSection:
        return HTTOPLEFT;
    case Qt::TopSection:
        return HTTOP;
    case Qt::TopRightSection:
        return HTTOPRIGHT;
    case Qt::RightSection:
        return HTRIGHT;
    case Qt::BottomRightSection:
        return HTBOTTOMRIGHT;
    case Qt::BottomSection:
        return HTBOTTOM;
    case Qt::BottomLeftSection:
        return HTBOTTOMLEFT;
    case Qt::TitleBarArea:
        return HTCAPTION;
    case Qt::NoSection:
        break;
    }
    return HTCLIENT;
}

class WindowsFrame final : public SystemFrame, private QAbstractNativeEventFilter
{
public:
    WindowsFrame(QWindow *window, SectionAt sectionAt)
        : m_window(window)
        , m_handle(reinterpret_cast<HWND>(window->winId()))
        , m_sectionAt(std::move(sectionAt))
    {
        QCoreApplication::instance()->installNativeEventFilter(this);
        SetWindowLongPtrW(m_handle, GWL_STYLE, GetWindowLongPtrW(m_handle, GWL_STYLE) | frameStyle);
        // Without a frame in the client area the desktop draws no shadow.
        const MARGINS shadow{1, 1, 1, 1};
        DwmExtendFrameIntoClientArea(m_handle, &shadow);
        SetWindowPos(m_handle, nullptr, 0, 0, 0, 0,
                     SWP_FRAMECHANGED | SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_NOOWNERZORDER
                         | SWP_NOACTIVATE);
    }

private:
    bool nativeEventFilter(const QByteArray &, void *message, qintptr *result) override
    {
        const auto *event = static_cast<const MSG *>(message);
        if (event->hwnd != m_handle) {
            return false;
        }
        switch (event->message) {
        case WM_NCCALCSIZE:
            return event->wParam && removeFrame(event->lParam, result);
        case WM_NCHITTEST:
            *result = hitTest({GET_X_LPARAM(event->lParam), GET_Y_LPARAM(event->lParam)});
            return true;
        case WM_NCPAINT:
            *result = 0;
            return true;
        case WM_NCACTIVATE:
            // With -1 the default procedure does not repaint the title bar, which the client area
            // covers.
            *result = DefWindowProcW(m_handle, WM_NCACTIVATE, event->wParam, -1);
            return true;
        case WM_NCLBUTTONDBLCLK:
            // Filter it, because Windows would maximise the window. A posted message has no result.
            return event->wParam == HTCAPTION;
        default:
            return false;
        }
    }

    bool removeFrame(LPARAM parameters, qintptr *result) const
    {
        // A maximised window extends beyond the screen by the width of its frame.
        if (IsZoomed(m_handle)) {
            RECT &client = reinterpret_cast<NCCALCSIZE_PARAMS *>(parameters)->rgrc[0];
            const UINT dpi = GetDpiForWindow(m_handle);
            const int padding = GetSystemMetricsForDpi(SM_CXPADDEDBORDER, dpi);
            InflateRect(&client, -GetSystemMetricsForDpi(SM_CXSIZEFRAME, dpi) - padding,
                        -GetSystemMetricsForDpi(SM_CYSIZEFRAME, dpi) - padding);
        }
        *result = 0;
        return true;
    }

    LRESULT hitTest(POINT point) const
    {
        ScreenToClient(m_handle, &point);
        const qreal ratio = m_window->devicePixelRatio();
        return hitTestCode(m_sectionAt({qFloor(point.x / ratio), qFloor(point.y / ratio)}));
    }

    QWindow *m_window = nullptr;
    HWND m_handle = nullptr;
    SectionAt m_sectionAt;
};

} // namespace

std::unique_ptr<SystemFrame> SystemFrame::create(QWindow *window, const SectionAt &sectionAt)
{
    if (QGuiApplication::platformName() != QLatin1StringView("windows")) {
        return nullptr;
    }
    return std::make_unique<WindowsFrame>(window, sectionAt);
}

} // namespace QWK
