// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/LogRetention.h"

#include "support/TestHome.h"
#include "support/TestProgram.h"

#include <QDate>
#include <QDir>
#include <QFile>
#include <QTest>

using namespace Qt::StringLiterals;

class tst_LogRetention : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void usesTheDateInTheName_data();
    void usesTheDateInTheName();
    void removesAllThatHaveExpired();
    void leavesFoldersAlone();
    void ignoresAMissingFolder();

private:
    QString m_folder;
    QDate m_today{2026, 11, 13};
};

void tst_LogRetention::init()
{
    testhome::reset();
    m_folder = testhome::path() + "/Vaskel"_L1;
}

void tst_LogRetention::usesTheDateInTheName_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("stays");

    QTest::newRow("today: stays") << u"Vaskel_2026-11-13.log"_s << true;
    QTest::newRow("7 days: stays") << u"Vaskel_2026-11-06.log"_s << true;
    QTest::newRow("8 days: goes") << u"Vaskel_2026-11-05.log"_s << false;
    QTest::newRow("a year: goes") << u"Vaskel_2025-11-13.log"_s << false;
    QTest::newRow("29 February: goes") << u"Vaskel_2024-02-29.log"_s << false;
    QTest::newRow("year 1: goes") << u"Vaskel_0001-01-01.log"_s << false;
    QTest::newRow("in the future: stays") << u"Vaskel_2027-01-01.log"_s << true;
    QTest::newRow("a word for the date: stays") << u"Vaskel_notes.log"_s << true;
    QTest::newRow("no date: stays") << u"Vaskel.log"_s << true;
    QTest::newRow("an empty date: stays") << u"Vaskel_.log"_s << true;
    QTest::newRow("month 13: stays") << u"Vaskel_2025-13-01.log"_s << true;
    QTest::newRow("30 February: stays") << u"Vaskel_2025-02-30.log"_s << true;
    QTest::newRow("month 0: stays") << u"Vaskel_2025-00-10.log"_s << true;
    QTest::newRow("one digit: stays") << u"Vaskel_2025-1-1.log"_s << true;
    QTest::newRow("a year with a sign: stays") << u"Vaskel_-2025-01-01.log"_s << true;
    QTest::newRow("a blank for a digit: stays") << u"Vaskel_2025- 1-01.log"_s << true;
    QTest::newRow("upper case: stays") << u"VASKEL_2025-01-01.LOG"_s << true;
    QTest::newRow("other digits: stays") << u"Vaskel_２０２５-01-01.log"_s << true;
    QTest::newRow("more behind the date: stays") << u"Vaskel_2025-01-01.1.log"_s << true;
    QTest::newRow("a log behind a log: stays") << u"Vaskel_2025-01-01.log.log"_s << true;
    QTest::newRow("more before the date: stays") << u"Vaskel_Vaskel_2025-01-01.log"_s << true;
    QTest::newRow("another name: stays") << u"Other_2025-01-01.log"_s << true;
    QTest::newRow("lower case: stays") << u"vaskel_2025-01-01.log"_s << true;
    QTest::newRow("another ending: stays") << u"Vaskel_2025-01-01.txt"_s << true;
}

void tst_LogRetention::usesTheDateInTheName()
{
    QFETCH(const QString, name);
    QFETCH(const bool, stays);

    // The file's own time would give the opposite result.
    QFile file(testhome::writeFile("Vaskel/"_L1 + name, "text"));
    QVERIFY(file.open(QIODevice::ReadWrite));
    const QDate changed = stays ? m_today.addYears(-5) : m_today;
    QVERIFY(file.setFileTime(changed.startOfDay(), QFile::FileModificationTime));
    file.close();

    removeExpiredLogs(m_folder, m_today);
    QCOMPARE(file.exists(), stays);
}

void tst_LogRetention::removesAllThatHaveExpired()
{
    for (int days = 0; days < 30; ++days) {
        const QString date = m_today.addDays(-days).toString(u"yyyy-MM-dd"_s);
        testhome::writeFile("Vaskel/Vaskel_"_L1 + date + ".log"_L1, "text");
    }
    testhome::writeFile(u"Vaskel/pins.json"_s, "[]");

    removeExpiredLogs(m_folder, m_today);
    QCOMPARE(QDir(m_folder).entryList(QDir::Files, QDir::Name),
             (QStringList{u"Vaskel_2026-11-06.log"_s, u"Vaskel_2026-11-07.log"_s,
                          u"Vaskel_2026-11-08.log"_s, u"Vaskel_2026-11-09.log"_s,
                          u"Vaskel_2026-11-10.log"_s, u"Vaskel_2026-11-11.log"_s,
                          u"Vaskel_2026-11-12.log"_s, u"Vaskel_2026-11-13.log"_s, u"pins.json"_s}));
}

void tst_LogRetention::leavesFoldersAlone()
{
    const QString inside = testhome::writeFile(u"Vaskel/Vaskel_2025-01-01.log/file"_s, "text");
    QVERIFY(QDir(m_folder).mkdir(u"Vaskel_2025-01-02.log"_s));
    const QString below = testhome::writeFile(u"Vaskel/old/Vaskel_2025-01-01.log"_s, "text");

    removeExpiredLogs(m_folder, m_today);
    QVERIFY(QFile::exists(inside));
    QVERIFY(QFile::exists(m_folder + "/Vaskel_2025-01-02.log"_L1));
    QVERIFY(QFile::exists(below));
}

void tst_LogRetention::ignoresAMissingFolder()
{
    removeExpiredLogs(m_folder, m_today);
    QVERIFY(!QFile::exists(m_folder));
}

VASKEL_TEST(tst_LogRetention, QCoreApplication)
#include "tst_LogRetention.moc"
