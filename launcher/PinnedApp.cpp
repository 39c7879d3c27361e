// SPDX-License-Identifier: GPL-3.0-or-later
#include "launcher/PinnedApp.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

using namespace Qt::StringLiterals;

namespace {

// The keys of a record are independent of these.
constexpr auto nameKey = "name"_L1;
constexpr auto pathKey = "path"_L1;
constexpr auto iconKey = "iconPath"_L1;

} // namespace

std::optional<QList<PinnedApp>> pinsFromJson(const QByteArray &text)
{
    const QJsonDocument document = QJsonDocument::fromJson(text);
    if (!document.isArray()) {
        return std::nullopt;
    }
    const QJsonArray array = document.array();
    QList<PinnedApp> pins;
    for (const QJsonValueConstRef value : array) {
        const QJsonObject pin = value.toObject();
        pins.append({pin.value(nameKey).toString(), pin.value(pathKey).toString(),
                     pin.value(iconKey).toString()});
    }
    return pins;
}

QByteArray pinsToJson(const QList<PinnedApp> &pins)
{
    QJsonArray array;
    for (const PinnedApp &pin : pins) {
        array.append(
            QJsonObject{{nameKey, pin.name}, {pathKey, pin.path}, {iconKey, pin.iconPath}});
    }
    return QJsonDocument(array).toJson(QJsonDocument::Compact);
}
