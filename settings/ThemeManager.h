// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QColor>
#include <QObject>
#include <QString>

/// The look of the program: whether its palette is the dark or the light one, the colours of that
/// palette, and the style sheet made of them. It applies nothing itself. Nothing in the program
/// reads the properties, nor any colour but accent() and bg().
class ThemeManager : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QString theme READ theme WRITE setTheme NOTIFY themeChanged)
    Q_PROPERTY(bool isDark READ isDark NOTIFY paletteChanged)
    Q_PROPERTY(QColor bg READ bg NOTIFY paletteChanged)
    Q_PROPERTY(QColor surface READ surface NOTIFY paletteChanged)
    Q_PROPERTY(QColor surfacePressed READ surfacePressed NOTIFY paletteChanged)
    Q_PROPERTY(QColor text READ text NOTIFY paletteChanged)
    Q_PROPERTY(QColor textSecondary READ textSecondary NOTIFY paletteChanged)
    Q_PROPERTY(QColor accent READ accent NOTIFY paletteChanged)
    Q_PROPERTY(QColor accentPressed READ accentPressed NOTIFY paletteChanged)
    Q_PROPERTY(QColor border READ border NOTIFY paletteChanged)
    Q_PROPERTY(QColor borderFocus READ borderFocus NOTIFY paletteChanged)
    Q_PROPERTY(QColor hover READ hover NOTIFY paletteChanged)
    Q_PROPERTY(QColor selection READ selection NOTIFY paletteChanged)
    Q_PROPERTY(QColor placeholder READ placeholder NOTIFY paletteChanged)
    Q_PROPERTY(QColor error READ error NOTIFY paletteChanged)
    Q_PROPERTY(QColor closeButtonHover READ closeButtonHover NOTIFY paletteChanged)
    Q_PROPERTY(QColor iconPlaceholder READ iconPlaceholder NOTIFY paletteChanged)

public:
    // The names of the themes, compared exactly.
    static constexpr QLatin1StringView systemTheme{"system"};
    static constexpr QLatin1StringView lightTheme{"light"};
    static constexpr QLatin1StringView darkTheme{"dark"};

    /// Starts with the theme "system".
    explicit ThemeManager(QObject *parent = nullptr);

    /// The theme's name as it was set. "dark" and "light" name a palette; "system" and every other
    /// name leave it to the desktop.
    QString theme() const { return m_theme; }
    void setTheme(const QString &theme);

    /// Whether the palette is the dark one; so it is where the desktop has no preference.
    bool isDark() const { return m_isDark; }

    QColor bg() const;
    QColor surface() const;
    QColor surfacePressed() const;
    QColor text() const;
    QColor textSecondary() const;
    QColor accent() const;
    QColor accentPressed() const;
    QColor border() const;
    QColor borderFocus() const;
    QColor hover() const;
    QColor selection() const;
    QColor placeholder() const;
    QColor error() const;
    QColor closeButtonHover() const;
    QColor iconPlaceholder() const;

    /// The style sheet for the whole application in the colours of the palette, made anew at each
    /// call; empty if its template cannot be read.
    QString styleSheet() const;

    /// Decides anew between the palettes; to be called when the desktop's preference has changed.
    void updateDarkState();

Q_SIGNALS:
    /// Emitted while isDark() still tells of the theme before.
    void themeChanged();
    void paletteChanged();

private:
    QString m_theme;
    bool m_isDark = true;
};
