// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/Translation.h"

#include "support/TestHome.h"
#include "support/TestProgram.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QResource>
#include <QTest>
#include <QTranslator>
#include <QXmlStreamReader>

#include <algorithm>
#include <array>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

struct Message
{
    const char *context;
    const char *source;
    const char *translation;
};

// clang-format off
constexpr std::array messages = std::to_array<Message>({
    {"AppLauncher", "Browser", "浏览器"},
    {"AppLauncher", "CMD Command Line", "CMD 命令行"},
    {"AppLauncher", "Calculator", "计算器"},
    {"AppLauncher", "Command Prompt", "命令提示符"},
    {"AppLauncher", "File Explorer", "文件资源管理器"},
    {"AppLauncher", "Notepad", "记事本"},
    {"AppLauncher", "Open Bing Search", "打开必应搜索"},
    {"AppLauncher", "Paint", "画图"},
    {"AppLauncher", "Settings", "设置"},
    {"AppLauncher", "Start Menu", "开始菜单"},
    {"AppLauncher", "Task Manager", "任务管理器"},
    {"AppLauncher", "Windows Calculator", "Windows 计算器"},
    {"AppLauncher", "Windows Notepad", "Windows 记事本"},
    {"AppLauncher", "Windows Paint", "Windows 画图"},
    {"AppLauncher", "Windows Settings", "Windows 设置"},
    {"AppLauncher", "Windows Task Manager", "Windows 任务管理器"},
    {"CalcPlugin", "Calculator", "计算器"},
    {"CalcPlugin", "Enter an expression to calculate", "输入表达式进行计算"},
    {"CalcPlugin", "Expression Error", "表达式错误"},
    {"CalcPlugin", "e.g. 1+2, sqrt(16), 2^10", "例如: 1+2, sqrt(16), 2^10"},
    {"CommandLineEdit", "Open user management", "打开用户管理"},
    {"CommandLineEdit", "Search apps or type cmd space args...", "搜索应用 或 输入 命令 空格 参数..."},
    {"CommandLineEdit", "Type arguments...", "输入参数..."},
    {"DirectoryPlugin", "Directory does not exist", "目录不存在"},
    {"DirectoryPlugin", "Folder", "文件夹"},
    {"DirectoryPlugin", "Open ", "打开 "},
    {"FilePlugin", "Enter a filename to search", "输入文件名进行搜索"},
    {"FilePlugin", "Error code: ", "错误码: "},
    {"FilePlugin", "Everything SDK only supports Windows", "Everything SDK 仅支持 Windows 平台"},
    {"FilePlugin", "Everything service is not running", "Everything 服务未运行"},
    {"FilePlugin", "File search is only available on Windows", "文件搜索仅在 Windows 上可用"},
    {"FilePlugin", "No files found", "未找到文件"},
    {"FilePlugin", "Please start Everything before using file search", "请先启动 Everything 再使用文件搜索"},
    {"FilePlugin", "Powered by Everything for fast search", "由 Everything 提供极速搜索支持"},
    {"FilePlugin", "Search failed", "搜索失败"},
    {"FloatIcon", "Hide float icon", "隐藏浮动图标"},
    {"FloatIcon", "Hide main window", "隐藏主界面"},
    {"FloatIcon", "Show main window", "显示主界面"},
    {"Main", "Quit", "退出"},
    {"Main", "Restart", "重启"},
    {"Main", "Settings", "设置"},
    {"Main", "Show", "显示"},
    {"MainWindow", "%1 | %2", "%1 | %2"},
    {"MainWindow", "%1 | Unknown command", "%1 | 未知的命令"},
    {"MainWindow", "Downloading update...", "下载更新中..."},
    {"MainWindow", "New version %1 is available.\n\n%2\n\nUpdate now?", "新版本 %1 可用，%2 现在更新？"},
    {"MainWindow", "Pin to Start", "固定到开始界面"},
    {"MainWindow", "Pinned", "已固定"},
    {"MainWindow", "Search \"%1\"", "搜索 “%1”"},
    {"MainWindow", "Search apps or type cmd space args...", "搜索应用 或 输入 命令 空格 参数..."},
    {"MainWindow", "Search with %1", "用 %1 搜索"},
    {"MainWindow", "Unpin from Start", "从开始界面取消固定"},
    {"MainWindow", "Update available", "更新可用"},
    {"MainWindow", "Update failed", "更新失败"},
    {"PluginManager", " plugin has been disabled in settings", " 插件已在设置中关闭"},
    {"PluginManager", "Plugin disabled", "插件已禁用"},
    {"SettingsPlugin", "Modify global hotkey, window style and other settings", "修改全局热键、窗口样式等配置"},
    {"SettingsPlugin", "Settings", "设置"},
    {"SettingsView", "Application Behavior", "软件信息"},
    {"SettingsView", "Auto enter on empty args", "自动进入不需要参数的命令"},
    {"SettingsView", "Auto hide on focus loss", "失去焦点时隐藏"},
    {"SettingsView", "Dark", "深色"},
    {"SettingsView", "Disable all", "全部关闭"},
    {"SettingsView", "Enable all", "全部启用"},
    {"SettingsView", "Enabled", "启用"},
    {"SettingsView", "Global Hotkey", "全局唤醒快捷键"},
    {"SettingsView", "Global plugin hotkey", "全局插件快捷键"},
    {"SettingsView", "Hotkey", "快捷键"},
    {"SettingsView", "Light", "浅色"},
    {"SettingsView", "Plugins", "插件"},
    {"SettingsView", "Require double-click to launch apps", "进入应用需双击"},
    {"SettingsView", "Search Engine", "搜索引擎"},
    {"SettingsView", "Settings", "设置"},
    {"SettingsView", "Show all apps when search is empty", "默认显示所有的应用"},
    {"SettingsView", "Show float icon", "显示浮动图标"},
    {"SettingsView", "Start on boot", "跟随系统启动"},
    {"SettingsView", "System", "跟随系统"},
    {"SettingsView", "Theme", "主题"},
    {"SettingsView", "User", "用户"},
    {"TodoPlugin", "Manage TODO list and subtasks", "管理 TODO 列表与子任务"},
    {"TodoPlugin", "Task Management", "任务管理"},
    {"TodoView", "%1 active · %2 total", "%1 活动 %2 全部"},
    {"TodoView", "Active", "活动"},
    {"TodoView", "Add", "添加"},
    {"TodoView", "Add Subtask", "增加子任务"},
    {"TodoView", "Add a task and press Enter", "输入后回车新增任务"},
    {"TodoView", "All", "全部"},
    {"TodoView", "Back", "返回"},
    {"TodoView", "Completed", "完成"},
    {"TodoView", "Delete", "删除"},
    {"TodoView", "New Subtask", "新子任务"},
    {"TodoView", "Todo", "任务"},
});
// clang-format on

/// Context and text.
using Text = std::pair<QString, QString>;

/// Texts that stay English in every language.
const QList<Text> untranslated = {
    {u"AppPlugin"_s, u"Search and launch applications"_s},
    {u"DirectoryPlugin"_s, u"Directory browser and navigation"_s},
    {u"FilePlugin"_s, u"File search (Everything)"_s},
    {u"SettingsPlugin"_s, u"Open Settings"_s},
};

/// Texts that only one system shows and that stay English in every language.
const QList<Text> ofOneSystem = {};

/// A message of a translation source file.
struct SourceMessage
{
    Text text;
    QString translation;
    bool isPlain; ///< finished, not obsolete, without a comment or a plural
};

// Reads up to the end of the message.
SourceMessage readMessage(QXmlStreamReader &xml, const QString &context)
{
    SourceMessage message{{context, {}}, {}, xml.attributes().isEmpty()};
    while (xml.readNextStartElement()) {
        message.isPlain &= xml.attributes().isEmpty();
        if (xml.name() == "source"_L1) {
            message.text.second = xml.readElementText();
        } else if (xml.name() == "translation"_L1) {
            message.translation = xml.readElementText();
        } else {
            message.isPlain = false;
            xml.skipCurrentElement();
        }
    }
    return message;
}

QList<SourceMessage> readMessages(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        return {};
    }
    QList<SourceMessage> found;
    QXmlStreamReader xml(&file);
    QString context;
    while (!xml.atEnd()) {
        xml.readNext();
        if (xml.isStartElement() && xml.name() == "name"_L1) {
            context = xml.readElementText();
        } else if (xml.isStartElement() && xml.name() == "message"_L1) {
            found.append(readMessage(xml, context));
        }
    }
    return xml.hasError() ? QList<SourceMessage>() : found;
}

QList<Text> textsOf(const QList<SourceMessage> &sourceMessages)
{
    QList<Text> texts;
    for (const SourceMessage &message : sourceMessages) {
        texts.append(message.text);
    }
    std::sort(texts.begin(), texts.end());
    return texts;
}

/// The texts of the 92 messages.
QList<Text> firstTexts()
{
    QList<Text> texts;
    for (const Message &message : messages) {
        texts.append({QString::fromUtf8(message.context), QString::fromUtf8(message.source)});
    }
    return texts;
}

bool run(const QString &program, const QStringList &arguments)
{
    QProcess process;
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process.start(program, arguments, QIODevice::ReadOnly);
    return process.waitForFinished(120'000) && process.exitStatus() == QProcess::NormalExit
           && process.exitCode() == 0;
}

/// The messages of the second translation file: newer texts of the program, and those of Qt.
QList<SourceMessage> additions()
{
    return readMessages(QStringLiteral(ADDITIONS_SOURCE));
}

/// Whether the context is a class of Qt, whose texts are not in the program's sources.
bool isContextOfQt(const QString &context)
{
    return context.size() > 1 && context.at(0) == u'Q' && context.at(1).isUpper();
}

/// The texts of the additions that are the program's own.
QList<Text> addedTexts()
{
    QList<Text> texts = textsOf(additions());
    texts.removeIf([](const Text &text) { return isContextOfQt(text.first); });
    return texts;
}

/// The texts that lupdate finds in the program's sources.
QList<Text> textsOfSources()
{
    QStringList folders;
    for (const QString &name :
         {u"app"_s, u"commands"_s, u"core"_s, u"hotkey"_s, u"launcher"_s, u"platform"_s,
          u"plugins"_s, u"settings"_s, u"tasks"_s, u"ui"_s, u"update"_s, u"widgets"_s}) {
        const QString folder = QStringLiteral(SOURCE_FOLDER) + u'/' + name;
        if (QDir(folder).exists()) {
            folders.append(folder);
        }
    }
    const QString list = testhome::path() + "/sources.ts"_L1;
    const QStringList options = {u"-silent"_s, u"-locations"_s, u"none"_s, u"-I"_s,
                                 QStringLiteral(SOURCE_FOLDER)};
    if (!run(QStringLiteral(LUPDATE), options + folders + QStringList{u"-ts"_s, list})) {
        return {};
    }
    return textsOf(readMessages(list));
}

} // namespace

class tst_ChineseTranslation : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void translates_data();
    void translates();
    void leavesTextsInEnglish_data();
    void leavesTextsInEnglish();
    void holdsTheseMessagesAndNoOthers();
    void additionsAreOtherTexts();
    void translatesTheAdditions_data();
    void translatesTheAdditions();
    void isFoundForItsLanguages_data();
    void isFoundForItsLanguages();
    void goesBeforeAFileInTheFolder();
    void isStoredAsItIs();
    void additionsAreStoredAsTheyAre();
    void isTheSameEachTimeItIsCompiled_data();
    void isTheSameEachTimeItIsCompiled();
    void agreesWithTheSources();
};

void tst_ChineseTranslation::init()
{
    testhome::reset();
}

void tst_ChineseTranslation::translates_data()
{
    QTest::addColumn<QByteArray>("context");
    QTest::addColumn<QByteArray>("source");
    QTest::addColumn<QString>("translation");

    for (const Message &message : messages) {
        QTest::addRow("%s: %s", message.context, message.source)
            << QByteArray(message.context) << QByteArray(message.source)
            << QString::fromUtf8(message.translation);
    }
}

void tst_ChineseTranslation::translates()
{
    QFETCH(const QByteArray, context);
    QFETCH(const QByteArray, source);
    QFETCH(const QString, translation);

    QTranslator translator;
    QVERIFY(loadTranslation(translator, {u"zh-CN"_s}, u"/nonexistent"_s));
    QCOMPARE(translator.translate(context.constData(), source.constData()), translation);
}

void tst_ChineseTranslation::leavesTextsInEnglish_data()
{
    QTest::addColumn<QString>("context");
    QTest::addColumn<QString>("source");

    for (const auto &[context, source] : untranslated + ofOneSystem) {
        QTest::addRow("%s: %s", qUtf8Printable(context), qUtf8Printable(source))
            << context << source;
    }
}

void tst_ChineseTranslation::leavesTextsInEnglish()
{
    QFETCH(const QString, context);
    QFETCH(const QString, source);

    QTranslator translator;
    QVERIFY(loadTranslation(translator, {u"zh-CN"_s}, u"/nonexistent"_s));
    QCOMPARE(translator.translate(qUtf8Printable(context), qUtf8Printable(source)), QString());
}

void tst_ChineseTranslation::holdsTheseMessagesAndNoOthers()
{
    const QList<SourceMessage> found = readMessages(QStringLiteral(TRANSLATION_SOURCE));
    QCOMPARE(found.size(), 92);
    QCOMPARE(messages.size(), 92);
    for (const Message &expected : messages) {
        const Text text{QString::fromUtf8(expected.context), QString::fromUtf8(expected.source)};
        const auto message = std::find_if(found.begin(), found.end(), [&](const auto &candidate) {
            return candidate.text == text;
        });
        QVERIFY2(message != found.end(), expected.source);
        QCOMPARE(message->translation, QString::fromUtf8(expected.translation));
        QVERIFY2(message->isPlain, expected.source);
    }
}

void tst_ChineseTranslation::additionsAreOtherTexts()
{
    const QList<SourceMessage> found = additions();
    QVERIFY(!found.isEmpty());
    const QList<Text> first = firstTexts();
    for (qsizetype i = 0; i < found.size(); ++i) {
        const auto &[context, source] = found.at(i).text;
        const QByteArray name = (context + ": "_L1 + source).toUtf8();
        QVERIFY2(found.at(i).isPlain && !found.at(i).translation.isEmpty(), name.constData());
        QVERIFY2(!first.contains(found.at(i).text), name.constData());
        // Sorted, so no text is there twice.
        QVERIFY2(i == 0 || found.at(i - 1).text < found.at(i).text, name.constData());
    }
}

void tst_ChineseTranslation::translatesTheAdditions_data()
{
    QTest::addColumn<QString>("context");
    QTest::addColumn<QString>("source");
    QTest::addColumn<QString>("translation");

    const QList<SourceMessage> found = additions();
    for (const auto &[text, translation, isPlain] : found) {
        QTest::addRow("%s: %s", qUtf8Printable(text.first), qUtf8Printable(text.second))
            << text.first << text.second << translation;
    }
}

void tst_ChineseTranslation::translatesTheAdditions()
{
    QFETCH(const QString, context);
    QFETCH(const QString, source);
    QFETCH(const QString, translation);

    QTranslator translator;
    QVERIFY(loadTranslation(translator, {u"zh-CN"_s}, u"/nonexistent"_s));
    QCOMPARE(translator.translate(qUtf8Printable(context), qUtf8Printable(source)), translation);
}

void tst_ChineseTranslation::isFoundForItsLanguages_data()
{
    QTest::addColumn<QStringList>("languages");
    QTest::addColumn<bool>("found");

    QTest::newRow("with territory: found") << QStringList{u"zh-CN"_s} << true;
    QTest::newRow("language alone: found") << QStringList{u"zh"_s} << true;
    QTest::newRow("with script: found") << QStringList{u"zh-Hans"_s} << true;
    QTest::newRow("with script and territory: found") << QStringList{u"zh-Hans-CN"_s} << true;
    QTest::newRow("Taiwan: not found") << QStringList{u"zh-TW"_s} << false;
    QTest::newRow("traditional script: not found") << QStringList{u"zh-Hant"_s} << false;
    QTest::newRow("Singapore alone: not found") << QStringList{u"zh-SG"_s} << false;
    QTest::newRow("Singapore, then simplified script: found")
        << QStringList{u"zh-SG"_s, u"zh-Hans"_s} << true;
    QTest::newRow("English: not found") << QStringList{u"en-US"_s, u"en"_s} << false;
}

void tst_ChineseTranslation::isFoundForItsLanguages()
{
    QFETCH(const QStringList, languages);
    QFETCH(const bool, found);

    QTranslator translator;
    QCOMPARE(loadTranslation(translator, languages, u"/nonexistent"_s), found);
    QCOMPARE(translator.translate("TodoView", "Todo"), found ? u"任务"_s : QString());
}

void tst_ChineseTranslation::goesBeforeAFileInTheFolder()
{
    const QString folder = testhome::path() + "/i18n"_L1;
    const QString source = testhome::writeFile(u"i18n/Vaskel_zh_CN.ts"_s, R"(<TS version="2.1">
        <context><name>MainWindow</name><message>
            <source>Pinned</source><translation>another</translation>
        </message></context></TS>)");
    QVERIFY(run(QStringLiteral(LRELEASE), {u"-silent"_s, source}));
    QTranslator other;
    QVERIFY(other.load(u"Vaskel_zh_CN"_s, folder));
    QCOMPARE(other.translate("MainWindow", "Pinned"), u"another"_s);

    QTranslator translator;
    QVERIFY(loadTranslation(translator, {u"zh-CN"_s}, folder));
    QCOMPARE(translator.translate("MainWindow", "Pinned"), u"已固定"_s);
}

void tst_ChineseTranslation::isStoredAsItIs()
{
    const QResource compiled(u":/i18n/Vaskel_zh_CN.qm"_s);
    QVERIFY(compiled.isValid());
    QCOMPARE(compiled.compressionAlgorithm(), QResource::NoCompression);
    QVERIFY(!compiled.lastModified().isValid());
    QCOMPARE(QDir(u":/i18n"_s).entryList(), QStringList{u"Vaskel_zh_CN.qm"_s});
}

void tst_ChineseTranslation::additionsAreStoredAsTheyAre()
{
    const QResource compiled(u":/translations/Additions_zh_CN.qm"_s);
    QVERIFY(compiled.isValid());
    QCOMPARE(compiled.compressionAlgorithm(), QResource::NoCompression);
    QVERIFY(!compiled.lastModified().isValid());
}

void tst_ChineseTranslation::isTheSameEachTimeItIsCompiled_data()
{
    QTest::addColumn<QString>("source");
    QTest::addColumn<QString>("resource");
    QTest::newRow("first file") << QStringLiteral(TRANSLATION_SOURCE)
                                << u":/i18n/Vaskel_zh_CN.qm"_s;
    QTest::newRow("additions") << QStringLiteral(ADDITIONS_SOURCE)
                               << u":/translations/Additions_zh_CN.qm"_s;
}

void tst_ChineseTranslation::isTheSameEachTimeItIsCompiled()
{
    QFETCH(const QString, source);
    QFETCH(const QString, resource);
    QFile stored(resource);
    QVERIFY(stored.open(QIODevice::ReadOnly));
    const QString path = testhome::path() + "/again.qm"_L1;
    QVERIFY(run(QStringLiteral(LRELEASE), {u"-silent"_s, source, u"-qm"_s, path}));
    QFile again(path);
    QVERIFY(again.open(QIODevice::ReadOnly));
    QCOMPARE(again.readAll(), stored.readAll());
}

void tst_ChineseTranslation::agreesWithTheSources()
{
    const QList<Text> inSources = textsOfSources();
    QVERIFY(!inSources.isEmpty());
    const QList<Text> expected = firstTexts() + addedTexts() + untranslated + ofOneSystem;
    for (const auto &[context, source] : inSources) {
        QVERIFY2(expected.contains(Text(context, source)),
                 qUtf8Printable("not in the translation: "_L1 + context + ": "_L1 + source));
    }
    for (const auto &[context, source] : expected) {
        QVERIFY2(inSources.contains(Text(context, source)),
                 qUtf8Printable("not in the sources: "_L1 + context + ": "_L1 + source));
    }
}

VASKEL_TEST(tst_ChineseTranslation, QCoreApplication)
#include "tst_ChineseTranslation.moc"
