// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/ClosedPipe.h"

#include "Recording.h"
#include "platform/Link.h"
#include "support/TestHome.h"
#include "support/TestProgram.h"

#include <QJsonObject>
#include <QProcess>
#include <QTest>

#include <csignal>

using namespace Qt::StringLiterals;

class tst_ClosedPipe : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void doesNotAffectStartedPrograms_data();
    void doesNotAffectStartedPrograms();
};

void tst_ClosedPipe::init()
{
    testhome::reset();
    std::signal(SIGPIPE, SIG_DFL);
    platform::ignoreClosedPipes();
}

void tst_ClosedPipe::doesNotAffectStartedPrograms_data()
{
    QTest::addColumn<bool>("isLink");

    QTest::newRow("a program by its path") << false;
    QTest::newRow("a desktop entry") << true;
}

void tst_ClosedPipe::doesNotAffectStartedPrograms()
{
    QFETCH(const bool, isLink);

    recording::prepare();
    if (isLink) {
        const QString entry =
            testhome::writeFile(u"data/applications/recorder.desktop"_s,
                                "[Desktop Entry]\nType=Application\nName=Recorder\nExec=\""
                                    + recording::program().toUtf8() + "\"\n");
        QVERIFY(platform::openLink(entry));
    } else {
        QVERIFY(QProcess::startDetached(recording::program(), {}));
    }
    QTRY_VERIFY(!recording::record().isEmpty());
    const QJsonObject masks = recording::record().value("signals"_L1).toObject();
    QCOMPARE(masks.value("SigIgn"_L1).toString(), u"0"_s.repeated(16));
}

VASKEL_TEST(tst_ClosedPipe, QCoreApplication)
#include "tst_ClosedPipe.moc"
