// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/TestProgram.h"

#include <QFile>
#include <QImageReader>
#include <QLabel>
#include <QRegularExpression>
#include <QResource>
#include <QTest>
#include <QXmlStreamReader>

#include <iterator>

using namespace Qt::StringLiterals;

namespace {

struct Rule
{
    const char *selector;
    const char *declarations;
};

// clang-format off
constexpr Rule rules[] = {
    {R"(QWidget)",
     R"(background-color: @BG@; color: @TEXT@; font-family: "Segoe UI Variable", "Segoe UI"; font-size: 14px)"},
    {R"(QScrollArea, QScrollArea > QWidget > QWidget, QStackedWidget)",
     R"(border: none; background-color: transparent)"},
    {R"(QWidget#windowTitleBar)",
     R"(background-color: @SURFACE@; border-bottom: 1px solid @BORDER@)"},
    {R"(QLabel#windowTitle)",
     R"(background-color: transparent; color: @TEXT_SECONDARY@; font-size: 12px; font-weight: 600)"},
    {R"(QPushButton#windowCloseButton)",
     R"(min-height: 0; padding: 0; background-color: transparent; color: @TEXT_SECONDARY@; border: none; border-radius: 7px; font-size: 18px; font-weight: 400)"},
    {R"(QPushButton#windowCloseButton:hover)",
     R"(background-color: #e81123; color: white)"},
    {R"(QPushButton#windowCloseButton:pressed)",
     R"(background-color: #c50f1f; color: white)"},
    {R"(QFrame#pluginCard)",
     R"(background-color: @SURFACE@; border: 1px solid @BORDER@; border-radius: 10px)"},
    {R"(QFrame#profileCard)",
     R"(background-color: @SURFACE@; border: 1px solid @BORDER@; border-radius: 12px)"},
    {R"(QLabel#profileAvatar)",
     R"(background-color: @ACCENT@; color: white; border-radius: 24px; font-size: 20px; font-weight: 700)"},
    {R"(QLabel#pluginCommand)",
     R"(background-color: transparent; color: @TEXT@; font-weight: 600)"},
    {R"(QLabel#pageTitle)",
     R"(background-color: transparent; color: @TEXT@; font-size: 20px; font-weight: 600)"},
    {R"(QListWidget#settingsNavigation)",
     R"(padding: 5px; background-color: @SURFACE@; border: 1px solid @BORDER@; border-radius: 12px)"},
    {R"(QListWidget#settingsNavigation::item)",
     R"(min-height: 28px; padding: 7px 10px; border-radius: 8px)"},
    {R"(QListWidget#settingsNavigation::item:selected)",
     R"(background-color: @ACCENT@; color: white)"},
    {R"(QLineEdit, QKeySequenceEdit, QComboBox)",
     R"(min-height: 24px; padding: 6px 10px; background-color: @SURFACE@; color: @TEXT@; border: 1px solid @BORDER@; border-radius: 8px; selection-background-color: @ACCENT@; selection-color: white)"},
    {R"(QFrame#commandInput)",
     R"(min-height: 36px; background-color: @SURFACE@; border: 1px solid @BORDER@; border-radius: 8px)"},
    {R"(QFrame#commandInput:focus-within)",
     R"(border: 2px solid @BORDER_FOCUS@)"},
    {R"(QLabel#commandBadge)",
     R"(padding: 3px 7px; background-color: @ACCENT@; color: white; border-radius: 6px)"},
    {R"(QLineEdit#commandArgumentEdit, QLineEdit#commandArgumentEdit:focus)",
     R"(min-height: 24px; padding: 0; background-color: transparent; border: none)"},
    {R"(QLineEdit:focus, QKeySequenceEdit:focus, QComboBox:focus)",
     R"(border: 2px solid @BORDER_FOCUS@; padding: 5px 9px)"},
    {R"(QLineEdit[placeholderText])",
     R"(color: @TEXT@)"},
    {R"(QComboBox)",
     R"(padding-right: 28px)"},
    {R"(QComboBox:hover)",
     R"(background-color: @HOVER@)"},
    {R"(QComboBox::drop-down)",
     R"(width: 24px; border: none; background-color: transparent)"},
    {R"(QComboBox QAbstractItemView)",
     R"(padding: 4px; background-color: @SURFACE@; color: @TEXT@; border: 1px solid @BORDER@; border-radius: 8px; outline: none; selection-background-color: @ACCENT@; selection-color: white)"},
    {R"(QListWidget, QTreeView)",
     R"(padding: 4px; background-color: @SURFACE@; border: 1px solid @BORDER@; border-radius: 12px; outline: none)"},
    {R"(QListWidget::item)",
     R"(min-height: 46px; padding: 8px 14px; border-radius: 8px)"},
    {R"(QTreeView::item)",
     R"(min-height: 34px; padding: 7px 10px; border-radius: 8px)"},
    {R"(QTreeWidget#todoTree)",
     R"(padding: 6px)"},
    {R"(QTreeWidget#todoTree::item)",
     R"(min-height: 30px; padding: 5px 8px)"},
    {R"(QPushButton#todoBackButton)",
     R"(min-width: 56px)"},
    {R"(QListWidget#settingsNavigation::item)",
     R"(min-height: 28px; padding: 7px 10px)"},
    {R"(QPushButton#pinnedAppButton)",
     R"(padding: 6px 12px)"},
    {R"(QListWidget::item:hover, QTreeView::item:hover)",
     R"(background-color: @HOVER@)"},
    {R"(QListWidget::item:selected, QTreeView::item:selected)",
     R"(background-color: @ACCENT@; color: white)"},
    {R"(QPushButton)",
     R"(min-height: 24px; padding: 5px 14px; background-color: @SURFACE@; color: @TEXT@; border: 1px solid @BORDER@; border-radius: 8px)"},
    {R"(QPushButton:hover)",
     R"(background-color: @HOVER@)"},
    {R"(QPushButton:pressed)",
     R"(background-color: @SURFACE_PRESSED@)"},
    {R"(QPushButton:disabled)",
     R"(color: @PLACEHOLDER@)"},
    {R"(QPushButton#primary)",
     R"(background-color: @ACCENT@; color: white; border-color: @ACCENT@; font-weight: 600)"},
    {R"(QPushButton#primary:pressed)",
     R"(background-color: @ACCENT_PRESSED@; border-color: @ACCENT_PRESSED@)"},
    {R"(QLabel#section)",
     R"(padding-top: 8px; background-color: transparent; color: @TEXT_SECONDARY@; font-size: 12px; font-weight: 600)"},
    {R"(QLabel#muted)",
     R"(background-color: transparent; color: @TEXT_SECONDARY@; font-size: 12px)"},
    {R"(QCheckBox)",
     R"(spacing: 8px; background-color: transparent)"},
    {R"(QCheckBox::indicator)",
     R"(width: 16px; height: 16px; background-color: @SURFACE@; border: 1px solid @BORDER@; border-radius: 5px)"},
    {R"(QCheckBox::indicator:hover)",
     R"(border-color: @BORDER_FOCUS@)"},
    {R"(QCheckBox::indicator:checked)",
     R"(background-color: @ACCENT@; border-color: @ACCENT@; image: url(:/assets/check.svg))"},
    {R"(QMenu)",
     R"(padding: 5px; background-color: @SURFACE@; color: @TEXT@; border: 1px solid @BORDER@; border-radius: 10px)"},
    {R"(QMenu::item)",
     R"(padding: 6px 24px 6px 12px; border-radius: 6px)"},
    {R"(QMenu::item:selected)",
     R"(background-color: @ACCENT@; color: white)"},
    {R"(QScrollBar:vertical)",
     R"(width: 10px; margin: 3px; background: transparent)"},
    {R"(QScrollBar::handle:vertical)",
     R"(min-height: 28px; background-color: @BORDER@; border-radius: 4px)"},
    {R"(QScrollBar::handle:vertical:hover)",
     R"(background-color: @TEXT_SECONDARY@)"},
    {R"(QScrollBar::add-line:vertical, QScrollBar::sub-line:vertical, QScrollBar::add-page:vertical, QScrollBar::sub-page:vertical)",
     R"(height: 0; background: transparent)"},
    {R"(QToolTip)",
     R"(padding: 5px 8px; background-color: @SURFACE_PRESSED@; color: @TEXT@; border: 1px solid @BORDER@; border-radius: 6px)"},
};
// clang-format on

QString fileText(const QString &path)
{
    QFile file(path);
    return file.open(QFile::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

/// The declarations of a block, with one blank after each colon.
QString declarations(const QString &block)
{
    QStringList all = block.simplified().split(u';', Qt::SkipEmptyParts);
    for (QString &declaration : all) {
        declaration = declaration.trimmed();
    }
    all.removeAll(QString());
    return all.join("; "_L1);
}

} // namespace

/// The style sheet and the images in the executable.
class tst_StyleSheet : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void hasExactlyTheRules();
    void isStoredCompressed();
    void isParsedByQt();
    void checkMarkIsOneWhiteLine();
    void checkMarkIsPainted();
    void iconHasItsSizeAndTransparency();
};

void tst_StyleSheet::hasExactlyTheRules()
{
    const QStringList blocks = fileText(u":/assets/style.qss"_s).split(u'}');
    QCOMPARE(blocks.size(), qsizetype(std::size(rules)) + 1);
    QCOMPARE(blocks.last(), u"\n"_s);
    for (qsizetype i = 0; i < blocks.size() - 1; ++i) {
        const QStringList halves = blocks[i].split(u'{');
        QCOMPARE(halves.size(), 2);
        QCOMPARE(halves[0].simplified(), QString::fromLatin1(rules[i].selector));
        QCOMPARE(declarations(halves[1]), QString::fromLatin1(rules[i].declarations));
    }
}

void tst_StyleSheet::isStoredCompressed()
{
    const QResource sheet(u":/assets/style.qss"_s);
    QVERIFY(sheet.isValid());
    QCOMPARE(sheet.compressionAlgorithm(), QResource::ZlibCompression);
    QCOMPARE(sheet.uncompressedSize(), 6176);
}

void tst_StyleSheet::isParsedByQt()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
    QLabel label(u"text"_s);
    label.setStyleSheet(fileText(u":/assets/style.qss"_s)
                            .replace(QRegularExpression(u"@[A-Z_]+@"_s), u"#123456"_s));
    label.show();
    QCOMPARE(label.grab().toImage().pixelColor(0, 0), QColor(u"#123456"_s));
}

void tst_StyleSheet::checkMarkIsOneWhiteLine()
{
    QFile file(QStringLiteral(CHECK_MARK_FILE));
    QVERIFY(file.open(QFile::ReadOnly));
    QXmlStreamReader reader(&file);
    QVERIFY(reader.readNextStartElement());
    QCOMPARE(reader.name(), u"svg"_s);
    QCOMPARE(reader.attributes().value("viewBox"_L1), u"0 0 16 16"_s);

    QVERIFY(reader.readNextStartElement());
    QCOMPARE(reader.name(), u"path"_s);
    const std::pair<QLatin1StringView, QLatin1StringView> attributes[] = {
        {"d"_L1, "M3.25 8.25 6.5 11.5 12.75 4.75"_L1},
        {"fill"_L1, "none"_L1},
        {"stroke"_L1, "#ffffff"_L1},
        {"stroke-width"_L1, "2"_L1},
        {"stroke-linecap"_L1, "round"_L1},
        {"stroke-linejoin"_L1, "round"_L1},
    };
    for (const auto &[name, value] : attributes) {
        QCOMPARE(reader.attributes().value(name), value);
    }
    QCOMPARE(reader.attributes().size(), qsizetype(std::size(attributes)));
    reader.skipCurrentElement();
    QVERIFY(!reader.readNextStartElement());
    QVERIFY(!reader.hasError());
}

void tst_StyleSheet::checkMarkIsPainted()
{
    QImageReader reader(u":/assets/check.svg"_s);
    reader.setScaledSize(QSize(16, 16));
    const QImage image = reader.read();
    QVERIFY2(!image.isNull(), qPrintable(reader.errorString()));
    QCOMPARE(image.pixelColor(6, 11), QColor(Qt::white));
    QCOMPARE(image.pixelColor(0, 0).alpha(), 0);
}

void tst_StyleSheet::iconHasItsSizeAndTransparency()
{
    QImageReader reader(u":/assets/icon.png"_s);
    const QImage image = reader.read();
    QCOMPARE(image.size(), QSize(1024, 1024));
    QCOMPARE(image.format(), QImage::Format_ARGB32);
    QCOMPARE(image.pixelColor(0, 0).alpha(), 0);
    QCOMPARE(image.pixelColor(512, 512).alpha(), 255);
}

VASKEL_TEST(tst_StyleSheet, QApplication)
#include "tst_StyleSheet.moc"
