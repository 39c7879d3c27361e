// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/ColorScheme.h"

#include <QAbstractItemView>
#include <QAccessible>
#include <QApplication>
#include <QKeySequenceEdit>
#include <QList>
#include <QLocale>
#include <QStringList>
#include <QStyleHints>
#include <QtGlobal>

#include <functional>

/// Differences between the supported versions of Qt.
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

/// The searches for an icon, each with the names to look for in a theme and then in its parents. Qt
/// 6.4 looks for all names in one search, later versions search once for each name.
inline QList<QStringList> iconSearches(const QStringList &names)
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 5, 0)
    QList<QStringList> searches;
    for (const QString &name : names) {
        searches.append(QStringList{name});
    }
    return searches;
#else
    return {names};
#endif
}

/// Whether the size for QIconEngine::scaledPixmap() is in pixels. From Qt 6.8 on, it is not
/// multiplied by the scale.
constexpr bool scaledPixmapTakesPixels = QT_VERSION < QT_VERSION_CHECK(6, 8, 0);

/// Makes a screen reader say the text. Returns false before Qt 6.8, which cannot.
inline bool announce([[maybe_unused]] QObject *object, [[maybe_unused]] const QString &text)
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 8, 0)
    QAccessibleAnnouncementEvent event(object, text);
    QAccessible::updateAccessibility(&event);
    return true;
#else
    return false;
#endif
}

/// Makes a screen reader say the child of a view, which has become current, also while another
/// widget has the focus. Before Qt 6.8, the view itself does so.
inline void sayCurrentChild([[maybe_unused]] QWidget *view, [[maybe_unused]] int child)
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 8, 0)
    if (QAccessible::isActive() && !view->hasFocus()) {
        QAccessibleEvent event(view, QAccessible::Focus);
        event.setChild(child);
        QAccessible::updateAccessibility(&event);
    }
#endif
}

/// The colour scheme of the desktop; Unknown before Qt 6.5.
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

/// Calls back after each change of colorScheme(), as long as the context lives. Never before Qt
/// 6.5.
inline void watchColorScheme([[maybe_unused]] QObject *context,
                             [[maybe_unused]] const std::function<void()> &changed)
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 5, 0)
    QObject::connect(QGuiApplication::styleHints(), &QStyleHints::colorSchemeChanged, context,
                     changed);
#endif
}

/// The open editor of an item, or null. In Qt 6.11, isPersistentEditorOpen() is about those of
/// openPersistentEditor() alone.
inline QWidget *editorOf(const QAbstractItemView &view, const QModelIndex &index)
{
    return view.indexWidget(index);
}

/// Limits how many key combinations the field records. Does nothing before Qt 6.5.
inline void setMaximumSequenceLength(QKeySequenceEdit &edit, int count)
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 5, 0)
    edit.setMaximumSequenceLength(count);
#else
    Q_UNUSED(edit)
    Q_UNUSED(count)
#endif
}

/// Makes the window the active one without waiting for the window system.
inline void setActiveWindow(QWidget *window)
{
    QT_WARNING_PUSH
    QT_WARNING_DISABLE_DEPRECATED // since Qt 6.5, without a replacement
        QApplication::setActiveWindow(window);
    QT_WARNING_POP
}

} // namespace qtversion
