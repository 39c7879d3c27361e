// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/QuitFilter.h"
#include "support/TestProgram.h"

#include <QCloseEvent>
#include <QTest>
#include <QTimer>
#include <QWidget>

namespace {

class StubbornWindow : public QWidget
{
public:
    int refused = 0;

protected:
    void closeEvent(QCloseEvent *event) override
    {
        ++refused;
        event->ignore();
    }
};

} // namespace

class tst_QuitFilter : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void quitsAlthoughAWindowRefusesToClose_data();
    void quitsAlthoughAWindowRefusesToClose();
    void leavesTheWindowsAlone();
    void leavesOtherEventsAlone();

private:
    QuitFilter m_filter;
};

void tst_QuitFilter::initTestCase()
{
    QGuiApplication::setQuitOnLastWindowClosed(false);
    QCoreApplication::instance()->installEventFilter(&m_filter);
}

void tst_QuitFilter::quitsAlthoughAWindowRefusesToClose_data()
{
    QTest::addColumn<bool>("visible");

    QTest::newRow("visible window") << true;
    QTest::newRow("hidden window") << false;
}

void tst_QuitFilter::quitsAlthoughAWindowRefusesToClose()
{
    QFETCH(const bool, visible);
    StubbornWindow window;
    window.setVisible(visible);

    QTimer::singleShot(0, &window, &QCoreApplication::quit);
    // Ends the event loop with 1 if the test fails.
    QTimer::singleShot(5000, &window, [] { QCoreApplication::exit(1); });
    QCOMPARE(QCoreApplication::exec(), 0);
    QCOMPARE(window.isVisible(), visible);
}

void tst_QuitFilter::leavesTheWindowsAlone()
{
    StubbornWindow window;
    window.show();
    QTimer::singleShot(0, &window, &QCoreApplication::quit);
    QTimer::singleShot(5000, &window, [] { QCoreApplication::exit(1); });
    QCOMPARE(QCoreApplication::exec(), 0);
    QCOMPARE(window.refused, 0);

    QVERIFY(!window.close());
    QCOMPARE(window.refused, 1);
}

void tst_QuitFilter::leavesOtherEventsAlone()
{
    QObject other;
    QEvent quit(QEvent::Quit);
    QEvent timer(QEvent::Timer);
    QVERIFY(!m_filter.eventFilter(&other, &quit));
    QVERIFY(!m_filter.eventFilter(QCoreApplication::instance(), &timer));
}

VASKEL_TEST(tst_QuitFilter, QApplication)
#include "tst_QuitFilter.moc"
