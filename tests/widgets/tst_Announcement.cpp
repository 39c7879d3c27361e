// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/Announcement.h"

#include "support/TestProgram.h"

#include <QAccessible>
#include <QStringList>
#include <QTest>
#include <QWidget>

#include <private/qguiapplication_p.h>
#include <qpa/qplatformaccessibility.h>
#include <qpa/qplatformintegration.h>

using namespace Qt::StringLiterals;

namespace {

QStringList announced;

void record(QAccessibleEvent *event)
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 8, 0)
    if (event->type() == QAccessible::Announcement) {
        announced.append(static_cast<QAccessibleAnnouncementEvent *>(event)->message());
    }
#else
    const QAccessibleInterface *shown = event->accessibleInterface();
    if (event->type() == QAccessible::ObjectShow && shown
        && shown->role() == QAccessible::Notification && !shown->state().invisible) {
        announced.append(shown->text(QAccessible::Name));
    }
#endif
}

void setScreenReaderRunning(bool isRunning)
{
    QGuiApplicationPrivate::platformIntegration()->accessibility()->setActive(isRunning);
}

} // namespace

class tst_Announcement : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { announced.clear(); }
    void cleanupTestCase() { setScreenReaderRunning(false); }
    void tellsScreenReaders();
    void isNoChildOfTheWindow();
    void isSilentWithoutAScreenReader();
};

void tst_Announcement::tellsScreenReaders()
{
    setScreenReaderRunning(true);
    QAccessible::installUpdateHandler(record);
    QWidget window;
    QWidget inner(&window);
    announce(&inner, u"One"_s);
    announce(&inner, u"Two"_s);
    QCOMPARE(announced, (QStringList{u"One"_s, u"Two"_s}));
}

void tst_Announcement::isNoChildOfTheWindow()
{
    setScreenReaderRunning(true);
    QWidget window;
    announce(&window, u"Text"_s);
    QCOMPARE(QAccessible::queryAccessibleInterface(&window)->childCount(), 0);
    QCOMPARE(window.findChildren<QWidget *>().size(), 0);
}

void tst_Announcement::isSilentWithoutAScreenReader()
{
    QAccessible::installUpdateHandler(record);
    setScreenReaderRunning(false);
    QWidget window;
    announce(&window, u"Text"_s);
    QCOMPARE(announced, QStringList());
    QCOMPARE(window.children().size(), 0);
}

VASKEL_TEST(tst_Announcement, QApplication)
#include "tst_Announcement.moc"
