// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

/// What a command line asks of the running instance.
struct InstanceRequest
{
    enum class Verb {
        Toggle, ///< shows the window, or hides it if it shows
        Show,
        Hide,
        Query, ///< shows the window with a text in the box
        Quit,
    };

    /// The size of the longest message, in bytes.
    static constexpr qsizetype maximumSize = 4096;

    Verb verb = Verb::Show;
    QString text; ///< of Query

    /// Whether a program that does not run yet starts for it.
    bool startsProgram() const { return verb != Verb::Hide && verb != Verb::Quit; }

    /// The message to the running instance: the verb, and for Query a blank and the text in UTF-8.
    QByteArray toMessage() const;

    /// Nothing if the message is too long or not of the form of toMessage().
    static std::optional<InstanceRequest> fromMessage(const QByteArray &message);

    /// The verb of this name, such as "toggle".
    static std::optional<Verb> verbOf(QStringView name);

    friend bool operator==(const InstanceRequest &, const InstanceRequest &) = default;
};
