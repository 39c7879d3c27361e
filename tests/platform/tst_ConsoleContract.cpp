// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/Console.h"

#include "platform/World.h"
#include "support/TestProgram.h"

#include <QTest>

using namespace Qt::StringLiterals;

using platform::ConsoleStream;

class tst_ConsoleContract : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { world::reset(); }
    void writesIntoTheFileOfTheStarter_data();
    void writesIntoTheFileOfTheStarter();
};

void tst_ConsoleContract::writesIntoTheFileOfTheStarter_data()
{
    QTest::addColumn<ConsoleStream>("stream");
    QTest::newRow("output") << ConsoleStream::Output;
    QTest::newRow("errors") << ConsoleStream::Errors;
}

void tst_ConsoleContract::writesIntoTheFileOfTheStarter()
{
    QFETCH(const ConsoleStream, stream);
    const QString text = u"记事本 ä\n"_s;
    const auto write = [&] {
        platform::writeToConsole(stream, text);
        platform::writeToConsole(stream, u"last\n"_s);
    };
    QCOMPARE(world::writtenIntoFile(stream, write), text + "last\n"_L1);
}

VASKEL_TEST(tst_ConsoleContract, QCoreApplication)
#include "tst_ConsoleContract.moc"
