// SPDX-License-Identifier: GPL-3.0-or-later
#include "settings/ThemeManager.h"

#include "support/FakePlatform.h"
#include "support/TestProgram.h"

#include <QFile>
#include <QMetaMethod>
#include <QMetaProperty>
#include <QResource>
#include <QTest>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

using platform::ColorScheme;

/// The relative luminance of a colour, as in the W3C's accessibility guidelines.
double luminance(const QColor &color)
{
    const auto linear = [](double part) {
        return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF())
           + 0.0722 * linear(color.blueF());
}

double contrast(const QColor &one, const QColor &other)
{
    const auto [darker, lighter] = std::minmax({luminance(one), luminance(other)});
    return (lighter + 0.05) / (darker + 0.05);
}

/// Records the signals of a ThemeManager in order, with the palette at that time.
class Journal : public QObject
{
public:
    explicit Journal(const ThemeManager &theme)
    {
        connect(&theme, &ThemeManager::themeChanged, this, [&] { note(u"theme"_s, theme); });
        connect(&theme, &ThemeManager::paletteChanged, this, [&] { note(u"palette"_s, theme); });
    }

    QStringList entries;

private:
    void note(const QString &signal, const ThemeManager &theme)
    {
        entries.append(signal + (theme.isDark() ? " while dark"_L1 : " while light"_L1));
    }
};

} // namespace

static void addAssets()
{
    Q_INIT_RESOURCE(vaskel_assets);
}

static void removeAssets()
{
    Q_CLEANUP_RESOURCE(vaskel_assets);
}

namespace {

/// Replaces the resources of the program by those of a file during its lifetime.
class OtherTemplate
{
public:
    explicit OtherTemplate(const QString &file = QString())
        : m_file(file)
    {
        removeAssets();
        if (!m_file.isEmpty() && !QResource::registerResource(m_file)) {
            qFatal("%s is no resource file", qPrintable(m_file));
        }
    }

    ~OtherTemplate()
    {
        if (!m_file.isEmpty()) {
            QResource::unregisterResource(m_file);
        }
        addAssets();
    }

    Q_DISABLE_COPY_MOVE(OtherTemplate)

private:
    QString m_file;
};

} // namespace

Q_DECLARE_METATYPE(platform::ColorScheme)

class tst_ThemeManager : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { fakePlatform() = FakePlatform(); }

    void startsWithTheSystemsTheme();
    void decidesByNameAndScheme_data();
    void decidesByNameAndScheme();
    void sameNameEmitsNothing();
    void otherNameOfTheSamePaletteEmitsThemeOnly();
    void newPaletteFollowsTheNewName();
    void systemsChangeTakesEffectWhileTheThemeIsTheSystems();
    void systemsChangeDoesNotAffectANamedPalette_data();
    void systemsChangeDoesNotAffectANamedPalette();

    void metaObjectHoldsSignalsAndPropertiesInOrder();
    void themeIsAWritableProperty();
    void colors_data();
    void colors();

    void textHasContrastToItsBackground_data();
    void textHasContrastToItsBackground();

    void sheetHoldsTheColorsOfThePalette_data();
    void sheetHoldsTheColorsOfThePalette();
    void secondaryTextSuitsTheText();
    void sheetOfAMissingTemplateIsEmpty();
    void sheetReplacesEveryTokenEverywhere();
};

void tst_ThemeManager::startsWithTheSystemsTheme()
{
    const ThemeManager theme;
    QCOMPARE(theme.theme(), u"system"_s);
    QVERIFY(theme.isDark());
    QVERIFY(!theme.parent());

    fakePlatform().colorScheme = ColorScheme::Light;
    QVERIFY(!ThemeManager().isDark());
}

void tst_ThemeManager::decidesByNameAndScheme_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<ColorScheme>("scheme");
    QTest::addColumn<bool>("isDark");

    const auto rows = [](const QString &name, bool unknown, bool light, bool dark) {
        const QByteArray label = name.toLatin1();
        QTest::addRow("\"%s\", unknown", label.constData())
            << name << ColorScheme::Unknown << unknown;
        QTest::addRow("\"%s\", light", label.constData()) << name << ColorScheme::Light << light;
        QTest::addRow("\"%s\", dark", label.constData()) << name << ColorScheme::Dark << dark;
    };
    rows(u"system"_s, true, false, true);
    rows(u"dark"_s, true, true, true);
    rows(u"light"_s, false, false, false);
    rows(u"Dark"_s, true, false, true);
    rows(u"LIGHT"_s, true, false, true);
    rows(u"blue"_s, true, false, true);
    rows(QString(), true, false, true);
}

void tst_ThemeManager::decidesByNameAndScheme()
{
    QFETCH(QString, name);
    QFETCH(ColorScheme, scheme);
    fakePlatform().colorScheme = scheme;
    ThemeManager theme;
    theme.setTheme(name);
    QCOMPARE(theme.theme(), name);
    QTEST(theme.isDark(), "isDark");
}

void tst_ThemeManager::sameNameEmitsNothing()
{
    ThemeManager theme;
    const Journal journal(theme);
    theme.setTheme(u"system"_s);
    QCOMPARE(journal.entries, QStringList());

    theme.setTheme(u"blue"_s);
    theme.setTheme(u"blue"_s);
    QCOMPARE(journal.entries, QStringList{u"theme while dark"_s});
}

void tst_ThemeManager::otherNameOfTheSamePaletteEmitsThemeOnly()
{
    ThemeManager theme;
    const Journal journal(theme);
    theme.setTheme(u"dark"_s);
    QCOMPARE(journal.entries, QStringList{u"theme while dark"_s});
}

void tst_ThemeManager::newPaletteFollowsTheNewName()
{
    ThemeManager theme;
    theme.setTheme(u"dark"_s);
    const Journal journal(theme);
    theme.setTheme(u"light"_s);
    QCOMPARE(journal.entries, (QStringList{u"theme while dark"_s, u"palette while light"_s}));
    QVERIFY(theme.styleSheet().contains("background-color: #f5f5f7;"_L1));
}

void tst_ThemeManager::systemsChangeTakesEffectWhileTheThemeIsTheSystems()
{
    ThemeManager theme;
    const Journal journal(theme);
    fakePlatform().colorScheme = ColorScheme::Dark;
    theme.updateDarkState();
    QCOMPARE(journal.entries, QStringList());

    fakePlatform().colorScheme = ColorScheme::Light;
    theme.updateDarkState();
    QCOMPARE(journal.entries, QStringList{u"palette while light"_s});
    theme.updateDarkState();
    QCOMPARE(journal.entries.size(), 1);
}

void tst_ThemeManager::systemsChangeDoesNotAffectANamedPalette_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<ColorScheme>("scheme");
    QTest::newRow("dark desktop, light theme") << u"light"_s << ColorScheme::Dark;
    QTest::newRow("light desktop, dark theme") << u"dark"_s << ColorScheme::Light;
}

void tst_ThemeManager::systemsChangeDoesNotAffectANamedPalette()
{
    QFETCH(QString, name);
    QFETCH(ColorScheme, scheme);
    ThemeManager theme;
    theme.setTheme(name);
    const Journal journal(theme);
    fakePlatform().colorScheme = scheme;
    theme.updateDarkState();
    QCOMPARE(journal.entries, QStringList());
}

void tst_ThemeManager::metaObjectHoldsSignalsAndPropertiesInOrder()
{
    const QMetaObject &meta = ThemeManager::staticMetaObject;
    QByteArrayList methods;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
        QCOMPARE(meta.method(i).methodType(), QMetaMethod::Signal);
        methods.append(meta.method(i).methodSignature());
    }
    QCOMPARE(methods, (QByteArrayList{"themeChanged()", "paletteChanged()"}));

    QByteArrayList properties;
    for (int i = meta.propertyOffset(); i < meta.propertyCount(); ++i) {
        const QMetaProperty property = meta.property(i);
        const bool isTheme = property.name() == QByteArray("theme");
        QCOMPARE(property.isWritable(), isTheme);
        QCOMPARE(property.notifySignal().name(),
                 QByteArray(isTheme ? "themeChanged" : "paletteChanged"));
        properties.append(property.name());
    }
    QCOMPARE(properties,
             (QByteArrayList{"theme", "isDark", "bg", "surface", "surfacePressed", "text",
                             "textSecondary", "accent", "accentPressed", "border", "borderFocus",
                             "hover", "selection", "placeholder", "error", "closeButtonHover",
                             "iconPlaceholder"}));
}

void tst_ThemeManager::themeIsAWritableProperty()
{
    ThemeManager theme;
    QVERIFY(theme.setProperty("theme", u"light"_s));
    QCOMPARE(theme.theme(), u"light"_s);
    QCOMPARE(theme.property("theme").toString(), u"light"_s);
    QCOMPARE(theme.property("isDark").toBool(), false);
}

void tst_ThemeManager::colors_data()
{
    QTest::addColumn<QString>("dark");
    QTest::addColumn<QString>("light");
    QTest::newRow("bg") << u"#1e1e1e"_s << u"#f5f5f7"_s;
    QTest::newRow("surface") << u"#2c2c2e"_s << u"#ffffff"_s;
    QTest::newRow("surfacePressed") << u"#48484a"_s << u"#e5e5ea"_s;
    QTest::newRow("text") << u"#f5f5f7"_s << u"#1d1d1f"_s;
    QTest::newRow("textSecondary") << u"#98989d"_s << u"#6e6e73"_s;
    QTest::newRow("accent") << u"#0a84ff"_s << u"#0a84ff"_s;
    QTest::newRow("accentPressed") << u"#409cff"_s << u"#0071e3"_s;
    QTest::newRow("border") << u"#48484a"_s << u"#d2d2d7"_s;
    QTest::newRow("borderFocus") << u"#0a84ff"_s << u"#0a84ff"_s;
    QTest::newRow("hover") << u"#3a3a3c"_s << u"#f0f0f2"_s;
    QTest::newRow("selection") << u"#0a84ff"_s << u"#007aff"_s;
    QTest::newRow("placeholder") << u"#8e8e93"_s << u"#8e8e93"_s;
    QTest::newRow("error") << u"#f38ba8"_s << u"#dc2626"_s;
    QTest::newRow("closeButtonHover") << u"#e81123"_s << u"#dc2626"_s;
    QTest::newRow("iconPlaceholder") << u"#585b70"_s << u"#9ca3af"_s;
}

void tst_ThemeManager::colors()
{
    ThemeManager theme;
    const auto color = [&] {
        return theme.property(QTest::currentDataTag()).value<QColor>().name();
    };
    theme.setTheme(u"dark"_s);
    QTEST(color(), "dark");
    theme.setTheme(u"light"_s);
    QTEST(color(), "light");
}

void tst_ThemeManager::textHasContrastToItsBackground_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("background");
    // 0 if the contrast must suffice; otherwise the lower one of the given colours.
    QTest::addColumn<double>("darkException");
    QTest::addColumn<double>("lightException");

    const auto row = [](const char *name, const QString &text, const QString &background,
                        double darkException = 0, double lightException = 0) {
        QTest::newRow(name) << text << background << darkException << lightException;
    };
    row("page", u"text"_s, u"bg"_s);
    row("edit, button, row, menu", u"text"_s, u"surface"_s);
    row("hovered button, row, combo box", u"text"_s, u"hover"_s);
    row("pressed button, tool tip", u"text"_s, u"surfacePressed"_s);
    row("section, muted text", u"textSecondary"_s, u"bg"_s);
    row("title bar", u"textSecondary"_s, u"surface"_s);
    row("hovered close button", u"#ffffff"_s, u"#e81123"_s);
    row("pressed close button", u"#ffffff"_s, u"#c50f1f"_s);
    row("badge, selected row, primary button", u"#ffffff"_s, u"accent"_s, 3.65, 3.65);
    row("pressed primary button", u"#ffffff"_s, u"accentPressed"_s, 2.83);
    row("disabled button", u"placeholder"_s, u"surface"_s, 4.27, 3.26);
    row("floating icon", u"bg"_s, u"accent"_s, 0, 3.35);
}

void tst_ThemeManager::textHasContrastToItsBackground()
{
    QFETCH(QString, text);
    QFETCH(QString, background);
    QFETCH(double, darkException);
    QFETCH(double, lightException);
    for (const QString &name : {u"dark"_s, u"light"_s}) {
        ThemeManager theme;
        theme.setTheme(name);
        const auto color = [&](const QString &part) {
            return part.startsWith(u'#') ? QColor(part)
                                         : theme.property(part.toLatin1()).value<QColor>();
        };
        const double ratio = contrast(color(text), color(background));
        const double exception = theme.isDark() ? darkException : lightException;
        QVERIFY2(exception > 0 ? std::abs(ratio - exception) < 0.005 : ratio >= 4.5,
                 qPrintable(u"%1: %2"_s.arg(name).arg(ratio)));
    }
}

void tst_ThemeManager::sheetHoldsTheColorsOfThePalette_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("dark") << u"dark"_s;
    QTest::newRow("light") << u"light"_s;
}

void tst_ThemeManager::sheetHoldsTheColorsOfThePalette()
{
    QFETCH(QString, name);
    ThemeManager theme;
    theme.setTheme(name);
    const std::pair<QString, QColor> tokens[] = {
        {u"@BG@"_s, theme.bg()},
        {u"@SURFACE@"_s, theme.surface()},
        {u"@SURFACE_PRESSED@"_s, theme.surfacePressed()},
        {u"@TEXT@"_s, theme.text()},
        {u"@TEXT_SECONDARY@"_s, theme.textSecondary()},
        {u"@ACCENT@"_s, theme.accent()},
        {u"@ACCENT_PRESSED@"_s, theme.accentPressed()},
        {u"@BORDER@"_s, theme.border()},
        {u"@BORDER_FOCUS@"_s, theme.borderFocus()},
        {u"@HOVER@"_s, theme.hover()},
        {u"@SELECTION@"_s, theme.selection()},
        {u"@PLACEHOLDER@"_s, theme.placeholder()},
    };
    // Build the expected sheet from the parts between the tokens, to check each token separately.
    const QString source = QString::fromUtf8(QResource(u":/assets/style.qss"_s).uncompressedData());
    QStringList pieces = source.split(u'@');
    QVERIFY(pieces.size() > 100);
    for (qsizetype i = 1; i < pieces.size(); i += 2) {
        const auto token = std::find_if(std::begin(tokens), std::end(tokens), [&](const auto &t) {
            return t.first == u'@' + pieces[i] + u'@';
        });
        QVERIFY2(token != std::end(tokens), qPrintable(pieces[i]));
        pieces[i] = token->second.name();
    }
    QCOMPARE(theme.styleSheet(), pieces.join(QString()));
}

void tst_ThemeManager::secondaryTextSuitsTheText()
{
    ThemeManager theme;
    for (const QString &name : {u"dark"_s, u"light"_s}) {
        theme.setTheme(name);
        QCOMPARE(secondaryTextColor(theme.text()), theme.textSecondary());
    }
}

void tst_ThemeManager::sheetOfAMissingTemplateIsEmpty()
{
    const OtherTemplate none;
    QVERIFY(!QFile::exists(u":/assets/style.qss"_s));
    QCOMPARE(ThemeManager().styleSheet(), QString());
}

void tst_ThemeManager::sheetReplacesEveryTokenEverywhere()
{
    ThemeManager theme;
    const QString before = theme.styleSheet();
    const OtherTemplate other(QStringLiteral(TOKENS_FILE));
    theme.setTheme(u"light"_s);
    QCOMPARE(theme.styleSheet(),
             u"#f5f5f7 #ffffff #e5e5ea #1d1d1f #6e6e73 #d2d2d7 #0a84ff #007aff #f0f0f2 #0a84ff "
             "#0071e3 #8e8e93\n"
             "#f5f5f7#f5f5f7@ @OTHER@ @bg@ #1d1d1f 中文\n"
             "#1d1d1f\n"_s);
    QVERIFY(theme.styleSheet() != before);
}

VASKEL_TEST(tst_ThemeManager, QApplication)
#include "tst_ThemeManager.moc"
