// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/TestProgram.h"

#include <QWKWidgets/widgetwindowagent.h>

#include <QApplication>
#include <QDeadlineTimer>
#include <QLabel>
#include <QLineEdit>
#include <QProcess>
#include <QPushButton>
#include <QRegularExpression>
#include <QResizeEvent>
#include <QSignalSpy>
#include <QTest>
#include <QVBoxLayout>
#include <QWindow>

#include <cmath>
#include <optional>

using namespace Qt::StringLiterals;
using QWK::WidgetWindowAgent;
using QWK::WindowAgentBase;

namespace {

/// A window with its own title bar above a widget that fills the rest.
class Window : public QWidget
{
public:
    Window()
    {
        titleBar.setFixedHeight(36);
        auto *barLayout = new QHBoxLayout(&titleBar);
        barLayout->setContentsMargins(14, 0, 6, 0);
        barLayout->addWidget(&title);
        barLayout->addStretch();
        barLayout->addWidget(&extraButton);
        barLayout->addWidget(&closeButton);
        closeButton.setFixedSize(32, 28);
        extraButton.setFixedSize(32, 28);
        auto *layout = new QVBoxLayout(this);
        layout->setContentsMargins(0, 0, 0, 0);
        layout->setSpacing(0);
        layout->addWidget(&titleBar);
        layout->addWidget(&content, 1);
        content.setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
        content.setCursor(Qt::PointingHandCursor);
        setMinimumSize(300, 150);
        resize(400, 250);
    }

    void destroyNativeWindow() { destroy(); }

    void resizeEvent(QResizeEvent *event) override
    {
        spontaneousResizes += event->spontaneous();
        ownResizes += !event->spontaneous();
    }

    void moveEvent(QMoveEvent *event) override { spontaneousMoves += event->spontaneous(); }

    QWidget titleBar;
    QLabel title{u"Title"_s};
    QPushButton extraButton{u"+"_s};
    QPushButton closeButton{u"x"_s};
    QPushButton content;
    int spontaneousResizes = 0;
    int ownResizes = 0;
    int spontaneousMoves = 0;
};

constexpr int patience = 20000; // in milliseconds; a busy machine needs many seconds

/// Sends input through the X server, like a user. Positions are global.
QByteArray xdotool(const QStringList &arguments)
{
    QProcess process;
    QSignalSpy finished(&process, &QProcess::finished);
    process.start(u"xdotool"_s, arguments);
    // The window manager may be waiting for this process, so run the event loop.
    if (!finished.wait(patience)) {
        const QString message = u"xdotool does not end: "_s + arguments.join(u' ');
        QTest::qFail(qPrintable(message), __FILE__, __LINE__);
        return {};
    }
    if (process.exitCode() != 0) {
        qWarning() << "xdotool failed:" << arguments << process.readAllStandardError();
    }
    return process.readAllStandardOutput();
}

QStringList movingTo(const QPoint &position)
{
    const qreal scale = qGuiApp->devicePixelRatio();
    // The middle of the device-independent pixel, which covers several at a higher density.
    return {u"mousemove"_s, QString::number(int((position.x() + 0.5) * scale)),
            QString::number(int((position.y() + 0.5) * scale))};
}

void moveTo(const QPoint &position)
{
    xdotool(movingTo(position));
}

// Waits until the program has received the press: the drag starts at the pointer's position then.
void press()
{
    class Note : public QObject
    {
    public:
        bool eventFilter(QObject *, QEvent *event) override
        {
            taken = taken || event->type() == QEvent::MouseButtonPress;
            return false;
        }
        bool taken = false;
    } note;
    qApp->installEventFilter(&note);
    xdotool({u"mousedown"_s, u"1"_s});
    QTRY_VERIFY(note.taken);
}

// The window manager merges the motions in its queue, also with one after the release. So the
// pointer stays until the manager has answered a request that follows the release.
void release()
{
    static int desktops = 4;
    desktops = 9 - desktops;
    xdotool({u"mouseup"_s, u"1"_s, u"set_num_desktops"_s, QString::number(desktops)});
    QTRY_COMPARE_WITH_TIMEOUT(xdotool({u"get_num_desktops"_s}).trimmed().toInt(), desktops,
                              patience);
}

void clickAt(const QPoint &position)
{
    xdotool(movingTo(position) + QStringList{u"click"_s, u"1"_s});
}

// Repeats the motion until it has an effect: the window manager needs time to grab the pointer and
// misses earlier motion.
template <typename Condition>
bool dragUntil(const QPoint &from, const QPoint &to, Condition reached)
{
    moveTo(from);
    press();
    if (QTest::currentTestFailed()) {
        release();
        return false;
    }
    const QDeadlineTimer deadline(patience);
    while (!reached() && !deadline.hasExpired() && !QTest::currentTestFailed()) {
        moveTo((from + to) / 2);
        moveTo(to);
        QTest::qWait(10);
    }
    release();
    return reached();
}

void dragWithoutEffect(const QPoint &from, const QPoint &to)
{
    dragUntil(from, to, [attempt = 0]() mutable { return ++attempt > 5; });
}

// Window systems count in whole physical pixels.
bool isNear(int value, int expected)
{
    return std::abs(value - expected) <= 1;
}

bool isNear(const QPoint &point, const QPoint &expected)
{
    return isNear(point.x(), expected.x()) && isNear(point.y(), expected.y());
}

// The real position. A window manager may report it only after the move.
QPoint positionOnScreen(const QWidget &window)
{
    const QByteArray geometry =
        xdotool({u"getwindowgeometry"_s, u"--shell"_s, QString::number(window.winId())});
    static const QRegularExpression pattern(u"X=(-?\\d+)\nY=(-?\\d+)"_s);
    const auto match = pattern.match(QString::fromLatin1(geometry));
    const qreal scale = window.devicePixelRatio();
    return {qRound(match.captured(1).toInt() / scale), qRound(match.captured(2).toInt() / scale)};
}

// A window manager that still grabs the pointer would take the click.
bool isClickable(QPushButton &button)
{
    QSignalSpy clicked(&button, &QPushButton::clicked);
    for (int attempt = 0; attempt < 50 && clicked.isEmpty() && !QTest::currentTestFailed();
         ++attempt) {
        clickAt(button.mapToGlobal(button.rect().center()));
        clicked.wait(50);
    }
    return !clicked.isEmpty();
}

std::optional<Qt::CursorShape> shownCursor()
{
    const QCursor *cursor = QGuiApplication::overrideCursor();
    return cursor ? std::optional(cursor->shape()) : std::nullopt;
}

QPoint pointOn(const QRect &rect, Qt::Edges edges, int depth)
{
    QPoint point = rect.center();
    if (edges & Qt::LeftEdge) {
        point.setX(rect.left() + depth);
    }
    if (edges & Qt::RightEdge) {
        point.setX(rect.right() - depth);
    }
    if (edges & Qt::TopEdge) {
        point.setY(rect.top() + depth);
    }
    if (edges & Qt::BottomEdge) {
        point.setY(rect.bottom() - depth);
    }
    return point;
}

} // namespace

class tst_WidgetWindowAgent : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void takesOneTopLevelWidget();
    void remembersTheTitleBar();
    void remembersTheSystemButtons();
    void remembersWhatIsVisibleToHits();
    void takesTheFrameOff();
    void titleBarDragsTheWindow();
    void titleBarPressWithoutMotionDoesNothing();
    void doubleClickOnTheTitleBarDoesNotMaximise();
    void buttonInTheTitleBarIsClickedAndDoesNotDrag_data();
    void buttonInTheTitleBarIsClickedAndDoesNotDrag();
    void contentDoesNotDragTheWindow();
    void edgeResizesTheWindow_data();
    void edgeResizesTheWindow();
    void minimumSizeIsKept();
    void flatWindowHasOneOfTwoOppositeEdges();
    void programsOwnResizeIsNotSpontaneous();
    void widgetInsideTheBorderGetsItsClicks();
    void cursorTellsTheEdge_data();
    void cursorTellsTheEdge();
    void cursorIsRestoredOutside();
    void cursorIsRestoredWhenTheWindowHides();
    void fixedSizeHasNoEdges();
    void fixedHeightLeavesTheOtherEdges();
    void maximisedWindowHasNoEdges();
    void otherButtonsAndDragsPassTheEdges();
    void newNativeWindowIsServedToo();

private:
    QRect geometryOnScreen() const
    {
        return {m_window->mapToGlobal(QPoint(0, 0)), m_window->size()};
    }
    QPoint titlePoint() const { return m_window->titleBar.mapToGlobal(QPoint(80, 18)); }
    bool show();

    std::unique_ptr<Window> m_window;
    WidgetWindowAgent *m_agent = nullptr;
};

void tst_WidgetWindowAgent::init()
{
    m_window = std::make_unique<Window>();
    m_agent = new WidgetWindowAgent(m_window.get());
    QVERIFY(m_agent->setup(m_window.get()));
    m_agent->setTitleBar(&m_window->titleBar);
    m_agent->setSystemButton(WindowAgentBase::SystemButton::Close, &m_window->closeButton);
    m_agent->setHitTestVisible(&m_window->closeButton, true);
}

void tst_WidgetWindowAgent::cleanup()
{
    xdotool({u"mouseup"_s, u"1"_s, u"mousemove"_s, u"0"_s, u"0"_s});
    m_window.reset();
    QVERIFY(!QGuiApplication::overrideCursor());
}

bool tst_WidgetWindowAgent::show()
{
    m_window->move(200, 150);
    m_window->show();
    const bool isShown = QTest::qWaitForWindowActive(m_window.get()) && QTest::qWaitFor([this] {
                             return geometryOnScreen().topLeft() == QPoint(200, 150);
                         });
    if (!isShown) {
        qWarning() << "The active window is" << QApplication::activeWindow() << "and this one at"
                   << geometryOnScreen();
    }
    m_window->spontaneousResizes = m_window->ownResizes = m_window->spontaneousMoves = 0;
    return isShown;
}

void tst_WidgetWindowAgent::takesOneTopLevelWidget()
{
    WidgetWindowAgent agent;
    QVERIFY(!agent.setup(nullptr));
    QVERIFY(!agent.setup(&m_window->content));
    QWidget one;
    QVERIFY(agent.setup(&one));
    QWidget another;
    QVERIFY(!agent.setup(&another));
    QVERIFY(!agent.setup(&one));
    QVERIFY(!(another.windowFlags() & Qt::FramelessWindowHint));
}

void tst_WidgetWindowAgent::remembersTheTitleBar()
{
    QSignalSpy changed(m_agent, &WidgetWindowAgent::titleBarChanged);
    QCOMPARE(m_agent->titleBar(), &m_window->titleBar);
    m_agent->setTitleBar(&m_window->titleBar);
    QCOMPARE(changed.size(), 0);
    m_agent->setTitleBar(&m_window->content);
    QCOMPARE(changed.size(), 1);
    QCOMPARE(m_agent->titleBar(), &m_window->content);
}

void tst_WidgetWindowAgent::remembersTheSystemButtons()
{
    QSignalSpy changed(m_agent, &WidgetWindowAgent::systemButtonChanged);
    QCOMPARE(m_agent->systemButton(WindowAgentBase::Close), &m_window->closeButton);
    QCOMPARE(m_agent->systemButton(WindowAgentBase::Maximize), nullptr);
    m_agent->setSystemButton(WindowAgentBase::Close, &m_window->closeButton);
    QCOMPARE(changed.size(), 0);
    m_agent->setSystemButton(WindowAgentBase::Help, &m_window->extraButton);
    QCOMPARE(changed.size(), 1);
    QCOMPARE(changed.first().at(0).value<WindowAgentBase::SystemButton>(), WindowAgentBase::Help);
}

void tst_WidgetWindowAgent::remembersWhatIsVisibleToHits()
{
    QVERIFY(m_agent->isHitTestVisible(&m_window->closeButton));
    QVERIFY(!m_agent->isHitTestVisible(&m_window->extraButton));
    QVERIFY(!m_agent->isHitTestVisible(nullptr));
    m_agent->setHitTestVisible(&m_window->closeButton, false);
    QVERIFY(!m_agent->isHitTestVisible(&m_window->closeButton));
}

void tst_WidgetWindowAgent::takesTheFrameOff()
{
    QVERIFY(show());
    QTRY_COMPARE(m_window->frameGeometry(), m_window->geometry());
}

void tst_WidgetWindowAgent::titleBarDragsTheWindow()
{
    QVERIFY(show());
    const QPoint target(320, 230);
    QVERIFY(dragUntil(titlePoint(), titlePoint() + QPoint(120, 80),
                      [&] { return isNear(positionOnScreen(*m_window), target); }));
    QTRY_VERIFY(isNear(m_window->pos(), target));
    QVERIFY(m_window->spontaneousMoves > 0);
    QCOMPARE(m_window->size(), QSize(400, 250));

    // The pointer is no longer grabbed.
    QVERIFY(isClickable(m_window->content));
    QVERIFY(isNear(positionOnScreen(*m_window), target));
}

void tst_WidgetWindowAgent::titleBarPressWithoutMotionDoesNothing()
{
    QVERIFY(show());
    clickAt(titlePoint());
    moveTo(titlePoint() + QPoint(60, 60));
    QVERIFY(isClickable(m_window->content));
    QCOMPARE(positionOnScreen(*m_window), QPoint(200, 150));
}

void tst_WidgetWindowAgent::doubleClickOnTheTitleBarDoesNotMaximise()
{
    QVERIFY(show());
    xdotool(movingTo(titlePoint()) + QStringList{u"click"_s, u"--repeat"_s, u"2"_s, u"1"_s});
    QVERIFY(isClickable(m_window->content));
    QVERIFY(!m_window->isMaximized());
    QCOMPARE(geometryOnScreen(), QRect(200, 150, 400, 250));
}

void tst_WidgetWindowAgent::buttonInTheTitleBarIsClickedAndDoesNotDrag_data()
{
    QTest::addColumn<bool>("isSystemButton");
    QTest::addColumn<bool>("isHitTestVisible");
    QTest::addColumn<bool>("clicks");

    QTest::newRow("system button that is hit: clicks") << true << true << true;
    QTest::newRow("system button: clicks") << true << false << true;
    QTest::newRow("any button that is hit: clicks") << false << true << true;
    QTest::newRow("any button: drags") << false << false << false;
}

void tst_WidgetWindowAgent::buttonInTheTitleBarIsClickedAndDoesNotDrag()
{
    QFETCH(bool, isSystemButton);
    QFETCH(bool, isHitTestVisible);
    QFETCH(bool, clicks);
    QPushButton &button = m_window->extraButton;
    if (isSystemButton) {
        m_agent->setSystemButton(WindowAgentBase::Help, &button);
    }
    m_agent->setHitTestVisible(&button, isHitTestVisible);
    QVERIFY(show());

    const QPoint center = button.mapToGlobal(button.rect().center());
    QSignalSpy clicked(&button, &QPushButton::clicked);
    clickAt(center);
    if (clicks) {
        QTRY_COMPARE(clicked.size(), 1);
        dragWithoutEffect(center, center + QPoint(90, 60));
        QCOMPARE(m_window->pos(), QPoint(200, 150));
    } else {
        QVERIFY(dragUntil(center, center + QPoint(90, 60),
                          [&] { return isNear(positionOnScreen(*m_window), QPoint(290, 210)); }));
        QCOMPARE(clicked.size(), 0);
    }
}

void tst_WidgetWindowAgent::contentDoesNotDragTheWindow()
{
    QVERIFY(show());
    const QPoint center = m_window->content.mapToGlobal(m_window->content.rect().center());
    dragWithoutEffect(center, center + QPoint(90, 60));
    QCOMPARE(geometryOnScreen(), QRect(200, 150, 400, 250));
}

void tst_WidgetWindowAgent::edgeResizesTheWindow_data()
{
    QTest::addColumn<Qt::Edges>("edges");
    QTest::addColumn<int>("depth");

    QTest::newRow("left") << Qt::Edges(Qt::LeftEdge) << 0;
    QTest::newRow("right") << Qt::Edges(Qt::RightEdge) << 0;
    QTest::newRow("top") << Qt::Edges(Qt::TopEdge) << 0;
    QTest::newRow("bottom") << Qt::Edges(Qt::BottomEdge) << 0;
    QTest::newRow("top left") << (Qt::TopEdge | Qt::LeftEdge) << 0;
    QTest::newRow("top right") << (Qt::TopEdge | Qt::RightEdge) << 0;
    QTest::newRow("bottom left") << (Qt::BottomEdge | Qt::LeftEdge) << 0;
    QTest::newRow("bottom right") << (Qt::BottomEdge | Qt::RightEdge) << 0;
    QTest::newRow("inner side of bottom") << Qt::Edges(Qt::BottomEdge) << 5;
    QTest::newRow("inner side of bottom right") << (Qt::BottomEdge | Qt::RightEdge) << 5;
}

void tst_WidgetWindowAgent::edgeResizesTheWindow()
{
    QFETCH(Qt::Edges, edges);
    QFETCH(int, depth);
    QVERIFY(show());

    const QRect before = geometryOnScreen();
    QRect after = before;
    QPoint delta;
    if (edges & Qt::LeftEdge) {
        delta.setX(-60);
        after.setLeft(before.left() - 60);
    }
    if (edges & Qt::RightEdge) {
        delta.setX(60);
        after.setRight(before.right() + 60);
    }
    if (edges & Qt::TopEdge) {
        delta.setY(-40);
        after.setTop(before.top() - 40);
    }
    if (edges & Qt::BottomEdge) {
        delta.setY(40);
        after.setBottom(before.bottom() + 40);
    }

    const QPoint from = pointOn(before, edges, depth);
    QVERIFY(dragUntil(from, from + delta, [&] {
        const QRect now = geometryOnScreen();
        return isNear(now.topLeft(), after.topLeft())
               && isNear(now.bottomRight(), after.bottomRight());
    }));
    QVERIFY(m_window->spontaneousResizes > 0);
    QCOMPARE(m_window->ownResizes, 0);

    // The pointer is no longer grabbed.
    const QRect reached = geometryOnScreen();
    QVERIFY(isClickable(m_window->content));
    QCOMPARE(geometryOnScreen(), reached);
}

void tst_WidgetWindowAgent::minimumSizeIsKept()
{
    QVERIFY(show());
    const QPoint corner = geometryOnScreen().bottomRight();
    QVERIFY(dragUntil(corner, corner - QPoint(300, 200),
                      [&] { return m_window->size() == QSize(300, 150); }));
    QCOMPARE(m_window->size(), QSize(300, 150));
}

void tst_WidgetWindowAgent::flatWindowHasOneOfTwoOppositeEdges()
{
    QTest::failOnWarning(QRegularExpression(u"Invalid edges"_s));
    m_window->layout()->setSizeConstraint(QLayout::SetNoConstraint);
    m_window->setMinimumSize(300, 8);
    m_window->resize(400, 10);
    QVERIFY(show());
    QTRY_VERIFY(m_window->windowHandle()->height() <= 10); // not each size exists at 1.5
    const QPoint middle = geometryOnScreen().topLeft() + QPoint(200, 5);
    moveTo(middle);
    QTRY_COMPARE(shownCursor(), Qt::SizeVerCursor);
    QVERIFY(dragUntil(middle, middle - QPoint(0, 40), [&] { return m_window->height() >= 30; }));
}

void tst_WidgetWindowAgent::programsOwnResizeIsNotSpontaneous()
{
    QVERIFY(show());
    // At a density of 1.5 a window only has every second size, counted from its minimum.
    m_window->resize(500, 302);
    QTRY_COMPARE(m_window->windowHandle()->size(), QSize(500, 302));
    moveTo(geometryOnScreen().center());
    QTest::qWait(50);
    QCOMPARE(m_window->ownResizes, 1);
    QCOMPARE(m_window->spontaneousResizes, 0);
}

void tst_WidgetWindowAgent::widgetInsideTheBorderGetsItsClicks()
{
    QVERIFY(show());
    QSignalSpy clicked(&m_window->content, &QPushButton::clicked);
    const QRect rect = geometryOnScreen();
    clickAt(QPoint(rect.left() + 6, rect.center().y()));
    QTRY_COMPARE(clicked.size(), 1);
    clickAt(QPoint(rect.center().x(), rect.bottom() - 6));
    QTRY_COMPARE(clicked.size(), 2);
    QCOMPARE(geometryOnScreen(), rect);
}

void tst_WidgetWindowAgent::cursorTellsTheEdge_data()
{
    QTest::addColumn<Qt::Edges>("edges");
    QTest::addColumn<Qt::CursorShape>("shape");

    QTest::newRow("left") << Qt::Edges(Qt::LeftEdge) << Qt::SizeHorCursor;
    QTest::newRow("right") << Qt::Edges(Qt::RightEdge) << Qt::SizeHorCursor;
    QTest::newRow("top") << Qt::Edges(Qt::TopEdge) << Qt::SizeVerCursor;
    QTest::newRow("bottom") << Qt::Edges(Qt::BottomEdge) << Qt::SizeVerCursor;
    QTest::newRow("top left") << (Qt::TopEdge | Qt::LeftEdge) << Qt::SizeFDiagCursor;
    QTest::newRow("bottom right") << (Qt::BottomEdge | Qt::RightEdge) << Qt::SizeFDiagCursor;
    QTest::newRow("top right") << (Qt::TopEdge | Qt::RightEdge) << Qt::SizeBDiagCursor;
    QTest::newRow("bottom left") << (Qt::BottomEdge | Qt::LeftEdge) << Qt::SizeBDiagCursor;
}

void tst_WidgetWindowAgent::cursorTellsTheEdge()
{
    QFETCH(Qt::Edges, edges);
    QFETCH(Qt::CursorShape, shape);
    QVERIFY(show());
    moveTo(pointOn(geometryOnScreen(), edges, 2));
    QTRY_COMPARE(shownCursor(), shape);
}

void tst_WidgetWindowAgent::cursorIsRestoredOutside()
{
    QVERIFY(show());
    const QRect rect = geometryOnScreen();
    moveTo(pointOn(rect, Qt::LeftEdge, 2));
    QTRY_COMPARE(shownCursor(), Qt::SizeHorCursor);
    moveTo(rect.center());
    QTRY_VERIFY(!shownCursor());
    QCOMPARE(m_window->windowHandle()->cursor().shape(), Qt::PointingHandCursor);

    moveTo(pointOn(rect, Qt::BottomEdge, 2));
    QTRY_COMPARE(shownCursor(), Qt::SizeVerCursor);
    moveTo(rect.bottomLeft() + QPoint(50, 50));
    QTRY_VERIFY(!shownCursor());
}

void tst_WidgetWindowAgent::cursorIsRestoredWhenTheWindowHides()
{
    QVERIFY(show());
    moveTo(pointOn(geometryOnScreen(), Qt::RightEdge, 2));
    QTRY_COMPARE(shownCursor(), Qt::SizeHorCursor);
    m_window->hide();
    QTRY_VERIFY(!shownCursor());
}

void tst_WidgetWindowAgent::fixedSizeHasNoEdges()
{
    m_window->setFixedSize(400, 250);
    QVERIFY(show());
    const QPoint corner = geometryOnScreen().bottomRight();
    dragWithoutEffect(corner, corner + QPoint(60, 40));
    QCOMPARE(m_window->size(), QSize(400, 250));
    moveTo(corner);
    QVERIFY(!shownCursor());
}

void tst_WidgetWindowAgent::fixedHeightLeavesTheOtherEdges()
{
    m_window->setFixedHeight(250);
    QVERIFY(show());
    const QPoint bottom = pointOn(geometryOnScreen(), Qt::BottomEdge, 0);
    dragWithoutEffect(bottom, bottom + QPoint(0, 40));
    QCOMPARE(m_window->size(), QSize(400, 250));

    const QPoint corner = geometryOnScreen().bottomRight();
    QVERIFY(
        dragUntil(corner, corner + QPoint(60, 40), [&] { return isNear(m_window->width(), 460); }));
    QCOMPARE(m_window->height(), 250);
}

void tst_WidgetWindowAgent::maximisedWindowHasNoEdges()
{
    QVERIFY(show());
    m_window->showMaximized();
    QTRY_COMPARE(m_window->size(), m_window->screen()->availableSize());
    const QSize size = m_window->size();
    moveTo(pointOn(geometryOnScreen(), Qt::LeftEdge, 100));
    moveTo(pointOn(geometryOnScreen(), Qt::LeftEdge, 2));
    QSignalSpy clicked(&m_window->content, &QPushButton::clicked);
    clickAt(pointOn(geometryOnScreen(), Qt::LeftEdge, 2));
    QTRY_COMPARE(clicked.size(), 1);
    QVERIFY(!shownCursor());
    QCOMPARE(m_window->size(), size);
}

// A drag may start in the content and cross an edge, and the right button resizes nothing.
void tst_WidgetWindowAgent::otherButtonsAndDragsPassTheEdges()
{
    QVERIFY(show());
    const QRect rect = geometryOnScreen();
    QSignalSpy released(&m_window->content, &QPushButton::released);
    dragUntil(rect.center(), pointOn(rect, Qt::BottomEdge, 2),
              [attempt = 0]() mutable { return shownCursor() || ++attempt > 5; });
    QTRY_COMPARE(released.size(), 1);
    QCOMPARE(m_window->size(), QSize(400, 250));
    QVERIFY(!shownCursor());

    m_window->content.setContextMenuPolicy(Qt::CustomContextMenu);
    QSignalSpy menu(&m_window->content, &QWidget::customContextMenuRequested);
    xdotool(movingTo(pointOn(rect, Qt::BottomEdge, 2)) + QStringList{u"click"_s, u"3"_s});
    QTRY_COMPARE(menu.size(), 1);
}

void tst_WidgetWindowAgent::newNativeWindowIsServedToo()
{
    QVERIFY(show());
    const QPointer<QWindow> before = m_window->windowHandle();
    m_window->hide();
    m_window->setWindowFlag(Qt::WindowStaysOnTopHint);
    m_window->destroyNativeWindow();
    QVERIFY(show());
    QVERIFY(!before);

    const QPoint corner = geometryOnScreen().bottomRight();
    QVERIFY(
        dragUntil(corner, corner + QPoint(60, 40), [&] { return isNear(m_window->width(), 460); }));
    QVERIFY(isClickable(m_window->content));
    QVERIFY(dragUntil(titlePoint(), titlePoint() + QPoint(50, 0),
                      [&] { return isNear(positionOnScreen(*m_window), QPoint(250, 150)); }));
}

VASKEL_TEST(tst_WidgetWindowAgent, QApplication)
#include "tst_WidgetWindowAgent.moc"
