// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/InstanceRequest.h"

#include <QStringDecoder>

#include <algorithm>
#include <iterator>

using namespace Qt::StringLiterals;

namespace {

struct NamedVerb
{
    InstanceRequest::Verb verb;
    QLatin1StringView name;
};

constexpr NamedVerb namedVerbs[] = {
    {InstanceRequest::Verb::Toggle, "toggle"_L1}, {InstanceRequest::Verb::Show, "show"_L1},
    {InstanceRequest::Verb::Hide, "hide"_L1},     {InstanceRequest::Verb::Query, "query"_L1},
    {InstanceRequest::Verb::Quit, "quit"_L1},
};

QLatin1StringView nameOf(InstanceRequest::Verb verb)
{
    return std::find_if(std::begin(namedVerbs), std::end(namedVerbs),
                        [verb](const NamedVerb &named) { return named.verb == verb; })
        ->name;
}

} // namespace

std::optional<InstanceRequest::Verb> InstanceRequest::verbOf(QStringView name)
{
    const auto *named = std::find_if(std::begin(namedVerbs), std::end(namedVerbs),
                                     [name](const NamedVerb &one) { return one.name == name; });
    return named != std::end(namedVerbs) ? std::optional(named->verb) : std::nullopt;
}

QByteArray InstanceRequest::toMessage() const
{
    const QString name = nameOf(verb);
    return (verb == Verb::Query ? name + u' ' + text : name).toUtf8();
}

std::optional<InstanceRequest> InstanceRequest::fromMessage(const QByteArray &message)
{
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    const QString decoded = decoder(message);
    if (message.size() > maximumSize || decoder.hasError()) {
        return {};
    }
    const qsizetype blank = decoded.indexOf(u' ');
    const std::optional<Verb> verb =
        verbOf(blank == -1 ? QStringView(decoded) : QStringView(decoded).first(blank));
    if (!verb || (verb == Verb::Query) != (blank != -1)) {
        return {};
    }
    return InstanceRequest{*verb, blank == -1 ? QString() : decoded.sliced(blank + 1)};
}
