// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/ColorScheme.h"

#include <QApplication>
#include <QKeySequenceEdit>
#include <QLocale>
#include <QStringList>
#include <QStyleHints>
#include <QtGlobal>

#include <functional>

/// The one place that knows in which version of Qt a call appeared.
namespace qtversion {

/// The user's languages in order of preference, as tags with dashes ("zh-Hans-CN").
inline QStringList uiLanguages(const QLocale &locale)
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 7, 0)
    return locale.uiLanguages(QLocale::TagSeparator::Dash);
#else
    return locale.uiLanguages();
#endif
}

/// Language and territory of a locale, joined by an underscore ("zh_CN").
inline QString underscoredName(const QLocale &locale)
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 7, 0)
    return locale.name(QLocale::TagSeparator::Underscore);
#else
    return locale.name();
#endif
}

/// What Qt knows of the colours that the user prefers for the whole desktop.
inline platform::ColorScheme colorScheme()
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 5, 0)
    switch (QGuiApplication::styleHints()->colorScheme()) {
    case Qt::ColorScheme::Light:
        return platform::ColorScheme::Light;
    case Qt::ColorScheme::Dark:
        return platform::ColorScheme::Dark;
    case Qt::ColorScheme::Unknown:
        break;
    }
#endif
    return platform::ColorScheme::Unknown;
}

/// Calls back when colorScheme() has changed, for as long as the context lives.
inline void watchColorScheme([[maybe_unused]] QObject *context,
                             [[maybe_unused]] const std::function<void()> &changed)
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 5, 0)
    QObject::connect(QGuiApplication::styleHints(), &QStyleHints::colorSchemeChanged, context,
                     changed);
#endif
}

/// Limits what a field may record; before 6.5 it cannot be limited.
inline void setMaximumSequenceLength(QKeySequenceEdit &edit, int count)
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 5, 0)
    edit.setMaximumSequenceLength(count);
#else
    Q_UNUSED(edit)
    Q_UNUSED(count)
#endif
}

/// Tells the application that the window is active, ahead of the window system.
inline void setActiveWindow(QWidget *window)
{
    QT_WARNING_PUSH
    QT_WARNING_DISABLE_DEPRECATED // from 6.5 on, without a substitute
        QApplication::setActiveWindow(window);
    QT_WARNING_POP
}

} // namespace qtversion
