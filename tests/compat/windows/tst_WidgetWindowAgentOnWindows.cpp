// SPDX-License-Identifier: GPL-3.0-or-later
#include <QWKWidgets/widgetwindowagent.h>

#include "compat/windows/RealInput.h"
#include "support/TestProgram.h"

#include <QPushButton>
#include <QResizeEvent>
#include <QSignalSpy>
#include <QTest>
#include <QVBoxLayout>
#include <QWindow>

#include <memory>

#include <windows.h>

using namespace Qt::StringLiterals;

namespace {

/// A window like the launcher's: a title bar with a button, and a widget below.
class Window : public QWidget
{
public:
    Window()
    {
        auto *layout = new QVBoxLayout(this);
        layout->setContentsMargins(0, 0, 0, 0);
        layout->setSpacing(0);
        layout->addWidget(&bar);
        layout->addWidget(&content, 1);
        bar.setFixedHeight(36);
        auto *barLayout = new QHBoxLayout(&bar);
        barLayout->setContentsMargins(0, 0, 10, 0);
        barLayout->addStretch();
        barLayout->addWidget(&button);
        button.setFixedSize(32, 28);
        agent.setup(this);
        agent.setTitleBar(&bar);
        agent.setSystemButton(QWK::WindowAgentBase::SystemButton::Close, &button);
        agent.setHitTestVisible(&button, true);
        resize(400, 300);
        setMinimumWidth(200);
        move(100, 100);
    }

    HWND handle() const { return reinterpret_cast<HWND>(winId()); }

    // In physical pixels.
    QPoint onScreen(const QPoint &position) const
    {
        const qreal ratio = devicePixelRatio();
        POINT point{LONG(position.x() * ratio + ratio / 2), LONG(position.y() * ratio + ratio / 2)};
        ClientToScreen(handle(), &point);
        return {point.x, point.y};
    }

    LRESULT hitAt(const QPoint &position) const
    {
        const QPoint point = onScreen(position);
        return SendMessageW(handle(), WM_NCHITTEST, 0, MAKELPARAM(point.x(), point.y()));
    }

    QWidget bar;
    QWidget content;
    QPushButton button{&bar};
    QWK::WidgetWindowAgent agent;
    int userResizes = 0; ///< spontaneous resize events

protected:
    void resizeEvent(QResizeEvent *event) override
    {
        userResizes += event->spontaneous() ? 1 : 0;
        QWidget::resizeEvent(event);
    }
};

QString number(int value)
{
    return QString::number(value);
}

// Presses at one point of the screen and releases at another.
void drag(const QPoint &from, const QPoint &by)
{
    QStringList commands{u"mousemove"_s, number(from.x()), number(from.y()), u"sleep"_s, u"0.3"_s,
                         u"mousedown"_s, u"1"_s,           u"sleep"_s,       u"0.3"_s};
    for (int step = 1; step <= 4; ++step) {
        commands += {u"mousemove"_s, number(from.x() + by.x() * step / 4),
                     number(from.y() + by.y() * step / 4), u"sleep"_s, u"0.1"_s};
    }
    commands += {u"mouseup"_s, u"1"_s};
    realinput::send(commands);
}

} // namespace

class tst_WidgetWindowAgentOnWindows : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() { m_window.reset(); }

    void hasNoVisibleFrame();
    void hasTheStylesForSnapAndShadow();
    void keepsItsSizeWhenShownAgain();
    void reportsItsFrameSections_data();
    void reportsItsFrameSections();
    void fixedHeightIsNotResized();
    void titleBarDragsTheWindow();
    void doubleClickOnTheTitleBarDoesNotMaximise();
    void contentDoesNotDragTheWindow();
    void edgeResizesTheWindowAsItsUserDoes();
    void closeButtonIsClicked();
    void maximisedWindowFillsTheWorkArea();

private:
    std::unique_ptr<Window> m_window;
};

void tst_WidgetWindowAgentOnWindows::init()
{
    m_window = std::make_unique<Window>();
    m_window->show();
    QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
    // Start with the pointer outside the window.
    SetCursorPos(1, 1);
}

void tst_WidgetWindowAgentOnWindows::hasNoVisibleFrame()
{
    RECT outside{};
    RECT inside{};
    QVERIFY(GetWindowRect(m_window->handle(), &outside));
    QVERIFY(GetClientRect(m_window->handle(), &inside));
    const QSize wholeSize(outside.right - outside.left, outside.bottom - outside.top);
    QCOMPARE(QSize(inside.right, inside.bottom), wholeSize);
    QCOMPARE(wholeSize, QSize(400, 300) * m_window->devicePixelRatio());
    QCOMPARE(m_window->size(), QSize(400, 300));
    QCOMPARE(m_window->frameGeometry(), m_window->geometry());
}

void tst_WidgetWindowAgentOnWindows::hasTheStylesForSnapAndShadow()
{
    const LONG_PTR style = GetWindowLongPtrW(m_window->handle(), GWL_STYLE);
    for (const LONG_PTR part : {LONG_PTR(WS_CAPTION), LONG_PTR(WS_THICKFRAME),
                                LONG_PTR(WS_MAXIMIZEBOX), LONG_PTR(WS_SYSMENU)}) {
        QCOMPARE(style & part, part);
    }
}

void tst_WidgetWindowAgentOnWindows::keepsItsSizeWhenShownAgain()
{
    const QRect geometry = m_window->geometry();
    for (int round = 0; round < 3; ++round) {
        m_window->hide();
        m_window->show();
        QVERIFY(QTest::qWaitForWindowExposed(m_window.get()));
        QCOMPARE(m_window->geometry(), geometry);
    }
    m_window->resize(300, 200);
    QTRY_COMPARE(m_window->content.size(), QSize(300, 164));
}

void tst_WidgetWindowAgentOnWindows::reportsItsFrameSections_data()
{
    QTest::addColumn<QPoint>("position");
    QTest::addColumn<int>("expected");
    QTest::newRow("title bar") << QPoint(100, 20) << HTCAPTION;
    QTest::newRow("close button") << QPoint(372, 18) << HTCLIENT;
    QTest::newRow("content") << QPoint(100, 100) << HTCLIENT;
    QTest::newRow("left edge") << QPoint(0, 100) << HTLEFT;
    QTest::newRow("last pixel of the left edge") << QPoint(5, 100) << HTLEFT;
    QTest::newRow("beside the left edge") << QPoint(6, 100) << HTCLIENT;
    QTest::newRow("right edge") << QPoint(399, 100) << HTRIGHT;
    QTest::newRow("top edge") << QPoint(100, 0) << HTTOP;
    QTest::newRow("bottom edge") << QPoint(100, 299) << HTBOTTOM;
    QTest::newRow("top left corner") << QPoint(0, 0) << HTTOPLEFT;
    QTest::newRow("top right corner") << QPoint(399, 0) << HTTOPRIGHT;
    QTest::newRow("bottom left corner") << QPoint(0, 299) << HTBOTTOMLEFT;
    QTest::newRow("bottom right corner") << QPoint(399, 299) << HTBOTTOMRIGHT;
}

void tst_WidgetWindowAgentOnWindows::reportsItsFrameSections()
{
    QFETCH(QPoint, position);
    QTEST(int(m_window->hitAt(position)), "expected");
}

void tst_WidgetWindowAgentOnWindows::fixedHeightIsNotResized()
{
    m_window->setFixedHeight(300);
    QCOMPARE(int(m_window->hitAt({100, 299})), HTCLIENT);
    QCOMPARE(int(m_window->hitAt({100, 0})), HTCAPTION);
    QCOMPARE(int(m_window->hitAt({0, 100})), HTLEFT);
}

void tst_WidgetWindowAgentOnWindows::titleBarDragsTheWindow()
{
    const QPoint before = m_window->pos();
    const qreal ratio = m_window->devicePixelRatio();
    drag(m_window->onScreen({100, 20}), QPoint(60, 90));
    QTRY_COMPARE_WITH_TIMEOUT(m_window->pos(), before + (QPointF(60, 90) / ratio).toPoint(), 20000);
    QCOMPARE(m_window->size(), QSize(400, 300));
}

void tst_WidgetWindowAgentOnWindows::doubleClickOnTheTitleBarDoesNotMaximise()
{
    QSignalSpy clicked(&m_window->button, &QPushButton::clicked);
    const QPoint title = m_window->onScreen({100, 20});
    const QPoint button = m_window->onScreen(m_window->button.geometry().center());
    realinput::send({u"mousemove"_s, number(title.x()), number(title.y()), u"sleep"_s, u"0.3"_s,
                     u"click"_s, u"--repeat"_s, u"2"_s, u"1"_s, u"sleep"_s, u"0.3"_s,
                     u"mousemove"_s, number(button.x()), number(button.y()), u"click"_s, u"1"_s});
    QVERIFY(clicked.wait(20000));
    QVERIFY(!m_window->isMaximized());
    QCOMPARE(m_window->geometry(), QRect(100, 100, 400, 300));

    // It can still be maximised, by keyboard or at an edge of the screen.
    SendMessageW(m_window->handle(), WM_SYSCOMMAND, SC_MAXIMIZE, 0);
    QVERIFY(IsZoomed(m_window->handle()));
}

void tst_WidgetWindowAgentOnWindows::contentDoesNotDragTheWindow()
{
    const QPoint before = m_window->pos();
    QSignalSpy clicked(&m_window->button, &QPushButton::clicked);
    drag(m_window->onScreen({100, 100}), QPoint(60, 90));
    // Once this click arrives, the drag is over.
    const QPoint button = m_window->onScreen(m_window->button.geometry().center());
    realinput::send({u"sleep"_s, u"2"_s, u"mousemove"_s, number(button.x()), number(button.y()),
                     u"click"_s, u"1"_s});
    QVERIFY(clicked.wait(20000));
    QCOMPARE(m_window->pos(), before);
}

void tst_WidgetWindowAgentOnWindows::edgeResizesTheWindowAsItsUserDoes()
{
    const int before = m_window->userResizes;
    const qreal ratio = m_window->devicePixelRatio();
    drag(m_window->onScreen({399, 299}), QPoint(60, 90));
    QTRY_COMPARE_WITH_TIMEOUT(m_window->size(), QSize(400, 300) + (QSizeF(60, 90) / ratio).toSize(),
                              20000);
    QVERIFY(m_window->userResizes > before);
    QCOMPARE(m_window->pos(), QPoint(100, 100));
}

void tst_WidgetWindowAgentOnWindows::closeButtonIsClicked()
{
    QSignalSpy clicked(&m_window->button, &QPushButton::clicked);
    const QPoint button = m_window->onScreen(m_window->button.geometry().center());
    realinput::send({u"mousemove"_s, number(button.x()), number(button.y()), u"click"_s, u"1"_s});
    QVERIFY(clicked.wait(20000));
}

void tst_WidgetWindowAgentOnWindows::maximisedWindowFillsTheWorkArea()
{
    m_window->showMaximized();
    RECT workArea{};
    QVERIFY(SystemParametersInfoW(SPI_GETWORKAREA, 0, &workArea, 0));
    const auto clientOnScreen = [this] {
        RECT client{};
        GetClientRect(m_window->handle(), &client);
        POINT origin{};
        ClientToScreen(m_window->handle(), &origin);
        return QRect(origin.x, origin.y, client.right, client.bottom);
    };
    QTRY_COMPARE(clientOnScreen(),
                 QRect(workArea.left, workArea.top, workArea.right - workArea.left,
                       workArea.bottom - workArea.top));
    // No part of a maximised window resizes it.
    QCOMPARE(int(m_window->hitAt({0, 100})), HTCLIENT);
}

VASKEL_TEST(tst_WidgetWindowAgentOnWindows, QApplication)
#include "tst_WidgetWindowAgentOnWindows.moc"
