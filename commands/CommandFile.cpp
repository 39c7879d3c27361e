// SPDX-License-Identifier: GPL-3.0-or-later
#include "commands/CommandFile.h"

#include "platform/QtVersion.h"
#include "platform/RegularFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLocale>
#include <QRegularExpression>
#include <QSet>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 maximumSize = 64 * 1024;
constexpr qsizetype maximumCommandLength = 32;
constexpr int maximumTimeout = 600'000;
constexpr int maximumDelay = 60'000;

const QString programs = u"a list of strings: a program and its arguments"_s;

/// Reads the keys of the object one by one, and keeps the first error.
class Reader
{
public:
    explicit Reader(const QJsonObject &object)
        : m_object(object)
    {
    }

    QString error() const { return m_error; }
    bool has(const QString &key) { return !read(key).isUndefined(); }

    void fail(const QString &key, const QString &expected)
    {
        if (m_error.isEmpty()) {
            m_error = key + ": expected "_L1 + expected;
        }
    }

    QString text(const QString &key)
    {
        const QJsonValue value = read(key);
        if (!value.isString() && !value.isUndefined()) {
            fail(key, u"a string"_s);
        }
        return value.toString();
    }

    QString requiredText(const QString &key)
    {
        QString value = text(key);
        if (value.trimmed().isEmpty()) {
            fail(key, u"a string that is not empty"_s);
        }
        return value;
    }

    /// The text in the first of the user's languages that the file has; otherwise that of the plain
    /// key.
    QString translatedText(const QString &key, const QStringList &languages)
    {
        m_translatedKeys.append(key);
        QString result = text(key);
        bool isTranslated = false;
        for (const QString &language : languages) {
            const QString translatedKey = key + u'[' + language + u']';
            if (!isTranslated && has(translatedKey)) {
                result = text(translatedKey);
                isTranslated = true;
            }
        }
        return result;
    }

    QStringList program(const QString &key)
    {
        const QJsonArray array = read(key).toArray();
        QStringList list;
        for (const auto &element : array) {
            if (!element.isString()) {
                fail(key, programs);
            }
            list.append(element.toString());
        }
        if (list.isEmpty() || list.first().isEmpty()) {
            fail(key, programs);
        } else if (list.first().contains(u'{')) {
            fail(key, u"a program without a place for the text"_s);
        }
        return list;
    }

    int number(const QString &key, int minimum, int maximum, int byDefault)
    {
        const QJsonValue value = read(key);
        if (value.isUndefined()) {
            return byDefault;
        }
        const int result = value.toInt(minimum - 1);
        if (result < minimum || result > maximum) {
            fail(key, u"a whole number from %1 to %2"_s.arg(minimum).arg(maximum));
        }
        return result;
    }

    /// The place of the value in the list; -1 if it is not there.
    qsizetype choice(const QString &key, const QStringList &values)
    {
        const QJsonValue value = read(key);
        const qsizetype index = value.isString() ? values.indexOf(value.toString()) : -1;
        if (index < 0) {
            fail(key, u"\"%1\""_s.arg(values.join("\" or \""_L1)));
        }
        return index;
    }

    /// Fails at the first key that nothing has read: it is most likely misspelt. Call it last.
    void checkKeys()
    {
        const QStringList keys = m_object.keys();
        for (const QString &key : keys) {
            if (isTranslation(key)) {
                text(key); // also those of other languages
            } else if (!m_readKeys.contains(key)) {
                fail(key, u"one of the known keys"_s);
            }
        }
    }

private:
    QJsonValue read(const QString &key)
    {
        m_readKeys.insert(key);
        return m_object.value(key);
    }

    bool isTranslation(const QString &key) const
    {
        static const QRegularExpression form(u"^([^\\[]+)\\[[A-Za-z0-9_@.-]+\\]$"_s);
        const QRegularExpressionMatch match = form.match(key);
        return match.hasMatch() && m_translatedKeys.contains(match.captured(1));
    }

    QJsonObject m_object;
    QSet<QString> m_readKeys; // also those that the object lacks
    QStringList m_translatedKeys;
    QString m_error;
};

// The user's languages in the form of the keys, such as "zh_CN" and "zh". The list ends before
// English, the language of the keys without one.
QStringList translatedLanguages()
{
    QStringList languages;
    const QStringList tags = qtversion::uiLanguages(QLocale::system());
    for (QString tag : tags) {
        const QLocale locale(tag);
        if (locale.language() == QLocale::English || locale.language() == QLocale::C) {
            break;
        }
        const QString underscored = qtversion::underscoredName(locale);
        languages << tag.replace(u'-', u'_') << underscored << underscored.section(u'_', 0, 0);
    }
    return languages;
}

bool isCommand(const QString &text)
{
    const bool isLongest = text.size() > maximumCommandLength;
    return !text.isEmpty() && !isLongest && text == text.toLower()
           && std::all_of(text.cbegin(), text.cend(),
                          [](QChar c) { return c.isPrint() && !c.isSpace(); });
}

// The content of the file; nothing if it cannot be read, with the reason.
std::optional<QByteArray> readFile(const QString &path, QString &error)
{
    // Opening would follow a symbolic link.
    if (const QFileInfo info(path); !info.isFile() || info.isSymLink()) {
        error = u"expected a regular file"_s;
        return std::nullopt;
    }
    QFile file(path);
    if (!platform::openRegularFile(file)) {
        error = u"expected a readable file"_s;
        return std::nullopt;
    }
    const QByteArray content = file.read(maximumSize + 1);
    if (content.size() > maximumSize) {
        error = u"expected at most %1 bytes"_s.arg(maximumSize);
        return std::nullopt;
    }
    return content;
}

std::optional<QJsonObject> readObject(const QString &path, QString &error)
{
    const std::optional<QByteArray> content = readFile(path, error);
    if (!content) {
        return std::nullopt;
    }
    QJsonParseError parseError;
    const QJsonDocument document = QJsonDocument::fromJson(*content, &parseError);
    if (parseError.error != QJsonParseError::NoError) {
        error =
            u"expected JSON: %1 at byte %2"_s.arg(parseError.errorString()).arg(parseError.offset);
        return std::nullopt;
    }
    if (!document.isObject()) {
        error = u"expected a JSON object"_s;
        return std::nullopt;
    }
    return document.object();
}

void readTexts(Reader &reader, CommandFile &file)
{
    file.command = reader.requiredText(u"command"_s);
    if (!isCommand(file.command)) {
        reader.fail(u"command"_s, u"at most %1 characters in lower case, without blanks"_s.arg(
                                      maximumCommandLength));
    }
    reader.requiredText(u"name"_s);
    const QStringList languages = translatedLanguages();
    file.name = reader.translatedText(u"name"_s, languages);
    file.description = reader.translatedText(u"description"_s, languages);
    const QString icon = reader.text(u"icon"_s);
    file.icon = icon.isEmpty() ? QString() : file.absolutePath(icon);
}

void readProgram(Reader &reader, CommandFile &file)
{
    file.exec = reader.program(u"exec"_s);
    file.output = reader.choice(u"output"_s, {u"items"_s, u"lines"_s}) == 1
                      ? CommandFile::Output::Lines
                      : CommandFile::Output::Items;
    if (reader.has(u"action"_s)) {
        constexpr std::array actions = {CommandFile::Action::Copy, CommandFile::Action::Open,
                                        CommandFile::Action::Run};
        const qsizetype index = reader.choice(u"action"_s, {u"copy"_s, u"open"_s, u"run"_s});
        file.action = index < 0 ? CommandFile::Action::Copy : actions.at(index);
    }
    if (file.action == CommandFile::Action::Run) {
        file.run = reader.program(u"run"_s);
    } else if (reader.has(u"run"_s)) {
        reader.fail(u"run"_s, u"the action \"run\""_s);
    }
    file.timeoutMs = reader.number(u"timeoutMs"_s, 1, maximumTimeout, file.timeoutMs);
    file.delayMs = reader.number(u"delayMs"_s, 0, maximumDelay, file.delayMs);
}

} // namespace

QString CommandFile::pathIn(const QString &folder)
{
    return folder + "/command.json"_L1;
}

std::optional<CommandFile> CommandFile::load(const QString &folder, QString &error)
{
    CommandFile file;
    file.folder = QDir(folder).absolutePath();
    const QString path = pathIn(file.folder);
    const auto setError = [&](const QString &text) {
        error = QDir::toNativeSeparators(path) + ": "_L1 + text;
    };
    QString readError;
    const std::optional<QJsonObject> object = readObject(path, readError);
    if (!object) {
        setError(readError);
        return std::nullopt;
    }
    Reader reader(*object);
    readTexts(reader, file);
    readProgram(reader, file);
    reader.checkKeys();
    if (!reader.error().isEmpty()) {
        setError(reader.error());
        return std::nullopt;
    }
    return file;
}

QString CommandFile::errorIfIn(const QStringList &builtinCommands) const
{
    if (!builtinCommands.contains(command)) {
        return {};
    }
    return QDir::toNativeSeparators(pathIn(folder))
           + u": command: expected a command that is not built in, not \"%1\""_s.arg(command);
}

QString CommandFile::absolutePath(const QString &path) const
{
    return QDir::cleanPath(QDir(folder).absoluteFilePath(QDir::fromNativeSeparators(path)));
}

QString CommandFile::programPath(const QString &program) const
{
    const bool hasSlash = QDir::fromNativeSeparators(program).contains(u'/');
    return hasSlash ? absolutePath(program) : program;
}
