// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/TestHome.h"
#include "support/TestProgram.h"

#include <QCoreApplication>
#include <QDir>
#include <QProcess>
#include <QScopeGuard>
#include <QTest>

#include <array>

#include <windows.h>

using namespace Qt::StringLiterals;

namespace {

constexpr int patience = 60'000; // the machine may be busy

// The lines at the top that are not empty.
QStringList linesOf(HANDLE screen)
{
    constexpr SHORT rows = 10;
    QStringList lines;
    for (SHORT row = 0; row < rows; ++row) {
        std::array<wchar_t, 80> line = {};
        DWORD count = 0;
        ReadConsoleOutputCharacterW(screen, line.data(), DWORD(line.size()), {0, row}, &count);
        const QString text = QString::fromWCharArray(line.data(), int(count)).trimmed();
        if (!text.isEmpty()) {
            lines.append(text);
        }
    }
    return lines;
}

// Starts the program without standard streams, as a shell does that of a window, and waits for it.
bool runWithoutStreams(QString command)
{
    STARTUPINFOW startup = {};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process = {};
    if (!CreateProcessW(nullptr, reinterpret_cast<wchar_t *>(command.data()), nullptr, nullptr,
                        FALSE, 0, nullptr, nullptr, &startup, &process)) {
        return false;
    }
    const bool hasEnded = WaitForSingleObject(process.hProcess, patience) == WAIT_OBJECT_0;
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    return hasEnded;
}

} // namespace

class tst_Console : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void keepsRedirectedStreams();
    void writesToTheConsoleOfTheParent();
};

void tst_Console::keepsRedirectedStreams()
{
    QProcess process;
    process.start(QStringLiteral(CONSOLE_WRITER), QStringList());
    QVERIFY(process.waitForFinished(patience));
    QCOMPARE(process.readAllStandardOutput().trimmed(), u"grün"_s.toUtf8());
    QCOMPARE(process.readAllStandardError().trimmed(), QByteArray("error"));
}

void tst_Console::writesToTheConsoleOfTheParent()
{
    FreeConsole();
    if (!AllocConsole()) {
        QFAIL("there is no console");
    }
    const auto guard = qScopeGuard([] { FreeConsole(); });
    const HANDLE screen =
        CreateFileW(L"CONOUT$", GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                    nullptr, OPEN_EXISTING, 0, nullptr);
    QVERIFY(screen != INVALID_HANDLE_VALUE);
    SetConsoleOutputCP(437);
    const QString program = QDir::toNativeSeparators(QStringLiteral(CONSOLE_WRITER));
    QVERIFY(runWithoutStreams(program + " one"_L1));
    QCOMPARE(linesOf(screen), QStringList(u"grün"_s));
    QCOMPARE(GetConsoleOutputCP(), 437U);
    CloseHandle(screen);
}

VASKEL_TEST(tst_Console, QCoreApplication)
#include "tst_Console.moc"
