// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QtGlobal>

#include <memory>

namespace spdlog {
class logger;
}

/// The log of the process: writes Qt's messages to the console and to one file per day. Only main
/// and qtMessageHandler() use it; all other code calls qDebug(), qWarning() and qCritical().
class Logger : public QObject
{
    Q_OBJECT

public:
    static Logger &instance();

    /// Opens the log and removes expired files. Call once in main, before the application object is
    /// created. The folder is logDir, or the user's data folder if that is empty; "/Vaskel" is
    /// appended unless the path ends with "Vaskel", in upper or lower case. Makes it private to the
    /// user. Logs to the console alone if the file cannot be opened.
    void init(const QString &logDir);

private:
    Logger() = default;
    ~Logger() override;

    friend void qtMessageHandler(QtMsgType, const QMessageLogContext &, const QString &);

    std::shared_ptr<spdlog::logger> m_logger;
};

/// Writes a Qt message to the log; does nothing before Logger::init(). Pass it to
/// qInstallMessageHandler(). Thread-safe.
void qtMessageHandler(QtMsgType type, const QMessageLogContext &context, const QString &message);
