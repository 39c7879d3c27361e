// SPDX-License-Identifier: GPL-3.0-or-later
//
// usage: steps [STEP [ARGUMENT...]]...
//
// The program of a command, for every system. It carries out the steps one by one, and ends with
// status 0:
//
//   print TEXT        prints a line
//   bytes TEXT        prints the text, whose escapes \n, \0 and \xHH are characters
//   error TEXT        prints a line on the standard error
//   flood             prints without end
//   flood-errors      prints 3 MB on the standard error, and then 9,000 x without a line feed
//   append FILE TEXT  appends a line to the file
//   show FILE         prints the content of the file
//   input             prints the standard input
//   folder            prints the working folder
//   variable NAME     prints the value of an environment variable
//   wait FILE         waits until the file exists
//   child FILE        starts itself to wait for FILE.end, and writes its ID into the file
//   pid FILE          writes its own process ID into the file
//   arguments ...     prints all that follow, each with a line feed
//   exit STATUS       ends with the status
//   crash             ends by a fault
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QHash>
#include <QProcess>
#include <QSaveFile>
#include <QThread>

#include <cstdio>
#include <cstdlib>
#include <functional>

using namespace Qt::StringLiterals;

namespace {

constexpr int patience = 6000; // polls, about a minute: no process outlasts its test for long
constexpr int lineCount = 30'000;
constexpr qsizetype lineLength = 100;

using Arguments = QStringList;
using Step = std::function<void(Arguments &)>;

void write(std::FILE *stream, const QByteArray &bytes)
{
    std::fwrite(bytes.constData(), 1, bytes.size(), stream);
    std::fflush(stream);
}

void print(const QString &text)
{
    write(stdout, text.toUtf8() + '\n');
}

QByteArray unescaped(QByteArray text)
{
    text.replace("\\n", "\n").replace("\\0", QByteArray(1, '\0'));
    for (qsizetype i = text.indexOf("\\x"); i >= 0; i = text.indexOf("\\x", i + 1)) {
        text.replace(i, 4, QByteArray::fromHex(text.mid(i + 2, 2)));
    }
    return text;
}

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// Whoever sees the file also sees all of its content. Windows replaces no file that the test has
// open to look at it.
void writeFile(const QString &path, const QByteArray &content)
{
    for (int i = 0; i < patience; ++i) {
        QSaveFile file(path);
        if (file.open(QIODevice::WriteOnly) && file.write(content) >= 0 && file.commit()) {
            return;
        }
        QThread::msleep(10);
    }
    std::_Exit(100);
}

void waitFor(const QString &path)
{
    for (int i = 0; i < patience && !QFile::exists(path); ++i) {
        QThread::msleep(10);
    }
}

void flood()
{
    while (true) {
        write(stdout, QByteArray(lineLength, 'y') + '\n');
    }
}

void floodErrors()
{
    for (int i = 0; i < lineCount; ++i) {
        write(stderr, QByteArray(lineLength, 'y') + '\n');
    }
    write(stderr, QByteArray(9000, 'x'));
}

// The child has the standard streams of this program, and stays when it ends.
void startChild(const QString &path)
{
    auto *child = new QProcess;
    child->setProcessChannelMode(QProcess::ForwardedChannels);
    child->start(QCoreApplication::applicationFilePath(), {u"wait"_s, path + ".end"_L1},
                 QIODevice::NotOpen);
    child->waitForStarted();
    writeFile(path, QByteArray::number(child->processId()));
}

const QHash<QString, Step> &steps()
{
    static const QHash<QString, Step> table = {
        {u"print"_s,
         [](Arguments &a) {
             print(a.takeFirst());
         }},
        {u"bytes"_s,
         [](Arguments &a) {
             write(stdout, unescaped(a.takeFirst().toUtf8()));
         }},
        {u"error"_s,
         [](Arguments &a) {
             write(stderr, a.takeFirst().toLocal8Bit() + '\n');
         }},
        {u"flood"_s,
         [](Arguments &) {
             flood();
         }},
        {u"flood-errors"_s,
         [](Arguments &) {
             floodErrors();
         }},
        {u"append"_s,
         [](Arguments &a) {
             const QString path = a.takeFirst();
             writeFile(path, contentOf(path) + a.takeFirst().toUtf8() + '\n');
         }},
        {u"show"_s,
         [](Arguments &a) {
             write(stdout, contentOf(a.takeFirst()));
         }},
        {u"input"_s,
         [](Arguments &) {
             QFile input;
             if (input.open(stdin, QIODevice::ReadOnly)) {
                 write(stdout, input.readAll());
             }
         }},
        {u"folder"_s,
         [](Arguments &) {
             print(QDir::currentPath());
         }},
        {u"variable"_s,
         [](Arguments &a) {
             print(qEnvironmentVariable(qPrintable(a.takeFirst())));
         }},
        {u"wait"_s,
         [](Arguments &a) {
             waitFor(a.takeFirst());
         }},
        {u"child"_s,
         [](Arguments &a) {
             startChild(a.takeFirst());
         }},
        {u"pid"_s,
         [](Arguments &a) {
             writeFile(a.takeFirst(), QByteArray::number(QCoreApplication::applicationPid()));
         }},
        {u"arguments"_s,
         [](Arguments &a) {
             while (!a.isEmpty()) {
                 print(a.takeFirst());
             }
         }},
        {u"exit"_s,
         [](Arguments &a) {
             std::_Exit(a.takeFirst().toInt());
         }},
        {u"crash"_s,
         [](Arguments &) {
             std::abort();
         }},
    };
    return table;
}

} // namespace

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    QStringList arguments = QCoreApplication::arguments();
    arguments.removeFirst();
    while (!arguments.isEmpty()) {
        const Step step = steps().value(arguments.takeFirst());
        if (!step) {
            return 101;
        }
        step(arguments);
    }
    std::_Exit(0); // without an end to the child
}
