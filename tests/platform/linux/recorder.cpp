// SPDX-License-Identifier: GPL-3.0-or-later
//
// A program for tests to start. Writes its arguments, environment and other state as one JSON
// object to the file in the variable RECORD. With the variable RECORD_AGAIN_AFTER it waits for the
// file of that name and then adds "lived" to its record.

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcessEnvironment>
#include <QSaveFile>
#include <QThread>

#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

QJsonArray arguments(int count, char *values[])
{
    QJsonArray list;
    for (int index = 0; index < count; ++index) {
        list.append(QString::fromLocal8Bit(values[index]));
    }
    return list;
}

QJsonObject environment()
{
    QJsonObject object;
    const QProcessEnvironment variables = QProcessEnvironment::systemEnvironment();
    for (const QString &name : variables.keys()) {
        object.insert(name, variables.value(name));
    }
    return object;
}

// Skips the folder's own descriptor, which is closed by then.
QJsonObject openFiles()
{
    QJsonObject object;
    for (const QString &number : QDir(u"/proc/self/fd"_s).entryList(QDir::System | QDir::Files)) {
        const QString target = QFile::symLinkTarget("/proc/self/fd/"_L1 + number);
        if (!target.isEmpty()) {
            object.insert(number, target);
        }
    }
    return object;
}

QJsonObject signalMasks()
{
    QJsonObject object;
    QFile status(u"/proc/self/status"_s);
    if (status.open(QIODevice::ReadOnly)) {
        const QByteArrayList lines = status.readAll().split('\n');
        for (const QByteArray &line : lines) {
            if (line.startsWith("SigBlk") || line.startsWith("SigIgn")) {
                object.insert(QString::fromLatin1(line.first(6)),
                              QString::fromLatin1(line.sliced(7).trimmed()));
            }
        }
    }
    return object;
}

void save(const QJsonObject &record)
{
    QSaveFile file(qEnvironmentVariable("RECORD"));
    if (file.open(QIODevice::WriteOnly)) {
        file.write(QJsonDocument(record).toJson());
        file.commit();
    }
}

} // namespace

int main(int argc, char *argv[])
{
    QJsonObject record{{u"arguments"_s, arguments(argc, argv)},
                       {u"folder"_s, QDir::currentPath()},
                       {u"environment"_s, environment()},
                       {u"files"_s, openFiles()},
                       {u"signals"_s, signalMasks()},
                       {u"process"_s, getpid()},
                       {u"session"_s, getsid(0)}};
    save(record);
    const QString signal = qEnvironmentVariable("RECORD_AGAIN_AFTER");
    if (signal.isEmpty()) {
        return 0;
    }
    for (int tries = 0; tries < 1000 && !QFile::exists(signal); ++tries) {
        QThread::msleep(20);
    }
    record.insert(u"lived"_s, QFile::exists(signal));
    save(record);
    return 0;
}
