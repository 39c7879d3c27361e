// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/Logger.h"

#include "app/LogRetention.h"
#include "platform/ClosedPipe.h"
#include "platform/PrivateFolder.h"

#include <QDate>
#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

#include <exception>
#include <optional>
#include <string_view>

#include <spdlog/logger.h>
#include <spdlog/sinks/daily_file_sink.h>
#include <spdlog/sinks/stdout_color_sinks.h>

using namespace Qt::StringLiterals;

namespace {

constexpr auto lowestLevel = spdlog::level::debug;

QString logFolder(const QString &wanted)
{
    QString folder = wanted.isEmpty()
                         ? QStandardPaths::writableLocation(QStandardPaths::AppDataLocation)
                         : wanted;
    if (!folder.endsWith("Vaskel"_L1, Qt::CaseInsensitive)) {
        folder += "/Vaskel"_L1;
    }
    return folder;
}

// Returns null if the file cannot be opened, so that the program still starts.
spdlog::sink_ptr fileSink(const QString &folder)
{
    using Sink = spdlog::sinks::daily_file_sink_mt;
    try {
        const auto baseName = QFileInfo(folder, u"Vaskel.log"_s).filesystemFilePath().native();
        return std::make_shared<Sink>(baseName, 0, 0, false, 0);
    } catch (const std::exception &) {
        return nullptr;
    }
}

std::optional<spdlog::level::level_enum> levelOf(QtMsgType type)
{
    switch (type) {
    case QtDebugMsg:
        return spdlog::level::debug;
    case QtInfoMsg:
        return spdlog::level::info;
    case QtWarningMsg:
        return spdlog::level::warn;
    case QtCriticalMsg:
    case QtFatalMsg:
        return spdlog::level::err;
    }
    return std::nullopt;
}

} // namespace

Logger &Logger::instance()
{
    static Logger logger;
    return logger;
}

Logger::~Logger()
{
    // Objects that are destroyed later may still log.
    qInstallMessageHandler(nullptr);
}

void Logger::init(const QString &logDir)
{
    const QString folder = logFolder(logDir);
    // The log has what the user typed. A symbolic link to a folder stays as it is.
    const bool isPrivate = platform::makePrivateFolder(folder);
    if (!isPrivate) {
        QDir().mkpath(folder);
    }
    removeExpiredLogs(folder, QDate::currentDate());

    // The console's reader may exit; logging must not end the program then.
    platform::ignoreClosedPipes();
    std::vector<spdlog::sink_ptr> sinks = {std::make_shared<spdlog::sinks::stdout_color_sink_mt>()};
    if (spdlog::sink_ptr file = fileSink(folder)) {
        sinks.push_back(std::move(file));
    }
    for (const spdlog::sink_ptr &sink : sinks) {
        sink->set_level(lowestLevel);
    }
    m_logger = std::make_shared<spdlog::logger>("Vaskel", sinks.begin(), sinks.end());
    m_logger->set_level(lowestLevel);
    m_logger->flush_on(lowestLevel);
    m_logger->info("Logger initialized, log dir: {}", folder.toLocal8Bit().constData());
    if (!isPrivate && QFileInfo(folder).isDir()) {
        m_logger->warn("Other users may be able to read the log");
    }
}

void qtMessageHandler(QtMsgType type, const QMessageLogContext &context, const QString &message)
{
    const auto level = levelOf(type);
    const std::shared_ptr<spdlog::logger> &logger = Logger::instance().m_logger;
    if (!level || !logger) {
        return;
    }
    const QByteArray text = message.toLocal8Bit();
    logger->log(*level, "[QT] {}:{} {} - {}", context.file ? context.file : "", context.line,
                context.function ? context.function : "",
                std::string_view(text.constData(), size_t(text.size())));
}
