// SPDX-License-Identifier: GPL-3.0-or-later
//
// usage: LogWriter FOLDER [WORD]...
//
// Logs for tst_Logger like the program, without an application object: one message for each of the
// words "debug", "info", "warning", "critical" and "fatal". "early" logs before the log is open,
// "threads" logs "<thread>.<number>" from several threads at once, "midnight" waits for the next
// day, and "input" for the end of the standard input. With an empty FOLDER the log chooses its own.

#include "app/Logger.h"

#include <QDate>
#include <QDebug>

#include <chrono>
#include <cstdio>
#include <thread>
#include <vector>

namespace {

void logFromThreads()
{
    std::vector<std::thread> threads;
    threads.reserve(8);
    for (int thread = 0; thread < 8; ++thread) {
        threads.emplace_back([thread] {
            for (int number = 0; number < 200; ++number) {
                qInfo("%d.%d", thread, number);
            }
        });
    }
    for (std::thread &thread : threads) {
        thread.join();
    }
}

void waitForTheNextDay()
{
    const QDate today = QDate::currentDate();
    while (QDate::currentDate() == today) {
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
}

void write(const QByteArray &word)
{
    if (word == "debug") {
        qDebug("a debug text");
    } else if (word == "info") {
        qInfo("an info text");
    } else if (word == "warning") {
        qWarning("a warning text");
    } else if (word == "critical") {
        qCritical("a critical text");
    } else if (word == "threads") {
        logFromThreads();
    } else if (word == "midnight") {
        waitForTheNextDay();
    } else if (word == "input") {
        while (std::getchar() != EOF) {
        }
    } else if (word == "fatal") {
        qFatal("a fatal text");
    }
}

} // namespace

int main(int argc, char *argv[])
{
    const std::vector<QByteArray> words(argv + 2, argv + argc);
    if (!words.empty() && words.front() == "early") {
        qtMessageHandler(QtWarningMsg, {}, QStringLiteral("an early text"));
    }
    Logger::instance().init(QString::fromLocal8Bit(argv[1]));
    qInstallMessageHandler(qtMessageHandler);
    for (const QByteArray &word : words) {
        write(word);
    }
    return 0;
}
