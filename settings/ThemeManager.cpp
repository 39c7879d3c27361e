// SPDX-License-Identifier: GPL-3.0-or-later
#include "settings/ThemeManager.h"

#include "platform/ColorScheme.h"

#include <QResource>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

/// One colour in both palettes.
struct Shades
{
    QLatin1StringView dark;
    QLatin1StringView light;

    QLatin1StringView nameIn(bool isDark) const { return isDark ? dark : light; }
    QColor in(bool isDark) const { return QColor::fromString(nameIn(isDark)); }
};

namespace colors {

constexpr Shades bg{"#1e1e1e"_L1, "#f5f5f7"_L1};
constexpr Shades surface{"#2c2c2e"_L1, "#ffffff"_L1};
constexpr Shades surfacePressed{"#48484a"_L1, "#e5e5ea"_L1};
constexpr Shades text{"#f5f5f7"_L1, "#1d1d1f"_L1};
constexpr Shades textSecondary{"#98989d"_L1, "#6e6e73"_L1};
constexpr Shades accent{"#0a84ff"_L1, "#0a84ff"_L1};
constexpr Shades accentPressed{"#409cff"_L1, "#0071e3"_L1};
constexpr Shades border{"#48484a"_L1, "#d2d2d7"_L1};
constexpr Shades borderFocus{"#0a84ff"_L1, "#0a84ff"_L1};
constexpr Shades hover{"#3a3a3c"_L1, "#f0f0f2"_L1};
constexpr Shades selection{"#0a84ff"_L1, "#007aff"_L1};
constexpr Shades placeholder{"#8e8e93"_L1, "#8e8e93"_L1};
constexpr Shades error{"#f38ba8"_L1, "#dc2626"_L1};
constexpr Shades closeButtonHover{"#e81123"_L1, "#dc2626"_L1};
constexpr Shades iconPlaceholder{"#585b70"_L1, "#9ca3af"_L1};

} // namespace colors

struct Token
{
    QByteArrayView name;
    Shades shades;
};

constexpr Token tokens[] = {
    {"@BG@", colors::bg},
    {"@SURFACE@", colors::surface},
    {"@SURFACE_PRESSED@", colors::surfacePressed},
    {"@TEXT@", colors::text},
    {"@TEXT_SECONDARY@", colors::textSecondary},
    {"@BORDER@", colors::border},
    {"@BORDER_FOCUS@", colors::borderFocus},
    {"@SELECTION@", colors::selection},
    {"@HOVER@", colors::hover},
    {"@ACCENT@", colors::accent},
    {"@ACCENT_PRESSED@", colors::accentPressed},
    {"@PLACEHOLDER@", colors::placeholder},
};

// Replaces the tokens of the template in a single pass, since one pass per token takes longer than
// everything else, including decompression of the template.
QByteArray withColors(const QByteArray &styleTemplate, bool isDark)
{
    QByteArray sheet;
    sheet.reserve(2 * styleTemplate.size());
    qsizetype written = 0;
    qsizetype begin = styleTemplate.indexOf('@');
    while (begin >= 0) {
        const qsizetype end = styleTemplate.indexOf('@', begin + 1);
        const QByteArrayView name =
            QByteArrayView(styleTemplate).sliced(begin, end < 0 ? 0 : end + 1 - begin);
        const auto *token = std::find_if(std::begin(tokens), std::end(tokens),
                                         [name](const Token &each) { return each.name == name; });
        if (token == std::end(tokens)) {
            begin = end;
            continue;
        }
        sheet.append(QByteArrayView(styleTemplate).sliced(written, begin - written));
        sheet.append(token->shades.nameIn(isDark));
        written = end + 1;
        begin = styleTemplate.indexOf('@', written);
    }
    return sheet.append(QByteArrayView(styleTemplate).sliced(written));
}

} // namespace

QColor secondaryTextColor(const QColor &text)
{
    return colors::textSecondary.in(text.lightness() > 127);
}

ThemeManager::ThemeManager(QObject *parent)
    : QObject(parent)
    , m_theme(systemTheme)
{
    updateDarkState();
}

void ThemeManager::setTheme(const QString &theme)
{
    if (theme == m_theme) {
        return;
    }
    m_theme = theme;
    Q_EMIT themeChanged();
    updateDarkState();
}

void ThemeManager::updateDarkState()
{
    const bool wasDark = m_isDark;
    if (m_theme == darkTheme) {
        m_isDark = true;
    } else if (m_theme == lightTheme) {
        m_isDark = false;
    } else {
        m_isDark = platform::colorScheme() != platform::ColorScheme::Light;
    }
    if (m_isDark != wasDark) {
        Q_EMIT paletteChanged();
    }
}

QString ThemeManager::styleSheet() const
{
    return QString::fromUtf8(withColors(styleTemplate(), m_isDark));
}

// Decompression takes longer than replacing the tokens, so it is done once for each template.
const QByteArray &ThemeManager::styleTemplate() const
{
    const QResource resource(u":/assets/style.qss"_s);
    if (resource.data() != m_packedTemplate) {
        m_packedTemplate = resource.data();
        m_template = resource.uncompressedData();
        m_template.detach(); // a resource that is not packed is not copied, and may be unloaded
        // Not QIODevice::Text, which is slower because it examines each character.
        if (m_template.contains('\r')) {
            m_template.replace("\r", "");
        }
    }
    return m_template;
}

QColor ThemeManager::bg() const
{
    return colors::bg.in(m_isDark);
}

QColor ThemeManager::surface() const
{
    return colors::surface.in(m_isDark);
}

QColor ThemeManager::surfacePressed() const
{
    return colors::surfacePressed.in(m_isDark);
}

QColor ThemeManager::text() const
{
    return colors::text.in(m_isDark);
}

QColor ThemeManager::textSecondary() const
{
    return colors::textSecondary.in(m_isDark);
}

QColor ThemeManager::accent() const
{
    return colors::accent.in(m_isDark);
}

QColor ThemeManager::accentPressed() const
{
    return colors::accentPressed.in(m_isDark);
}

QColor ThemeManager::border() const
{
    return colors::border.in(m_isDark);
}

QColor ThemeManager::borderFocus() const
{
    return colors::borderFocus.in(m_isDark);
}

QColor ThemeManager::hover() const
{
    return colors::hover.in(m_isDark);
}

QColor ThemeManager::selection() const
{
    return colors::selection.in(m_isDark);
}

QColor ThemeManager::placeholder() const
{
    return colors::placeholder.in(m_isDark);
}

QColor ThemeManager::error() const
{
    return colors::error.in(m_isDark);
}

QColor ThemeManager::closeButtonHover() const
{
    return colors::closeButtonHover.in(m_isDark);
}

QColor ThemeManager::iconPlaceholder() const
{
    return colors::iconPlaceholder.in(m_isDark);
}
