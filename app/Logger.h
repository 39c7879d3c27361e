// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QtGlobal>

#include <memory>

namespace spdlog {
class logger;
}

/// The log of the process: Qt's messages, one line each, on the console and in one file a day. Only
/// main and qtMessageHandler() know it; all other code calls qDebug(), qWarning() and qCritical().
class Logger : public QObject
{
    Q_OBJECT

public:
    static Logger &instance();

    /// Opens the log and removes the files that have expired; main calls it once, before anything
    /// else. The folder is logDir, or the user's data folder if that is empty, and "/Vaskel" behind
    /// it unless the path ends so in upper or lower case. Without a file the console remains.
    void init(const QString &logDir);

private:
    Logger() = default;
    ~Logger() override;

    friend void qtMessageHandler(QtMsgType, const QMessageLogContext &, const QString &);

    std::shared_ptr<spdlog::logger> m_logger;
};

/// Writes a message of Qt to the log, or nothing as long as there is none. For
/// qInstallMessageHandler(), behind Logger::init(); may be called in any thread.
void qtMessageHandler(QtMsgType type, const QMessageLogContext &context, const QString &message);
