// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QColor>
#include <QObject>
#include <QString>

/// The colour of secondary text in the palette whose text has this colour; for painting code that
/// has no ThemeManager.
QColor secondaryTextColor(const QColor &text);

/// Chooses the dark or the light palette; provides its colours and a style sheet made of them. Does
/// not apply the style sheet. Nothing in the program reads the properties, nor any colour but
/// accent() and bg().
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

    /// The name of the theme. "dark" and "light" select a palette; with "system" and any other name
    /// the desktop decides.
    QString theme() const { return m_theme; }
    void setTheme(const QString &theme);

    /// Whether the palette is dark, as it is if the desktop has no preference.
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

    /// Returns the style sheet of the application in the colours of the palette, built at each
    /// call. Empty if its template cannot be read.
    QString styleSheet() const;

    /// Chooses the palette again. Call this when the preference of the desktop has changed.
    void updateDarkState();

Q_SIGNALS:
    /// Emitted before isDark() is updated for the new theme.
    void themeChanged();
    void paletteChanged();

private:
    const QByteArray &styleTemplate() const;

    QString m_theme;
    bool m_isDark = true;
    mutable QByteArray m_template;                   // of styleTemplate(), unpacked
    mutable const uchar *m_packedTemplate = nullptr; // where it was
};
