// SPDX-License-Identifier: GPL-3.0-or-later
//
// Checks the executable: its imports, its size and its resources.

#include "support/TestProgram.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>
#include <QXmlStreamReader>

#include <windows.h>

using namespace Qt::StringLiterals;

namespace {

const QString executable = QStringLiteral(VASKEL_EXECUTABLE);
constexpr qint64 largestSize = 30'000'000;

const wchar_t *wide(const QString &text)
{
    return reinterpret_cast<const wchar_t *>(text.utf16());
}

/// The file mapped by the loader without running its code.
class Image
{
public:
    Image()
        : m_module(LoadLibraryExW(wide(executable), nullptr, LOAD_LIBRARY_AS_IMAGE_RESOURCE))
    {
    }
    ~Image() { FreeLibrary(m_module); }
    Q_DISABLE_COPY_MOVE(Image)

    bool isValid() const { return m_module != nullptr; }
    HMODULE module() const { return m_module; }

    const IMAGE_OPTIONAL_HEADER64 &header() const
    {
        const auto *dos = at<IMAGE_DOS_HEADER>(0);
        return at<IMAGE_NT_HEADERS64>(dos->e_lfanew)->OptionalHeader;
    }

    QStringList imports() const
    {
        QStringList names;
        const DWORD start = header().DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT].VirtualAddress;
        for (const auto *entry = at<IMAGE_IMPORT_DESCRIPTOR>(start); entry->Name; ++entry) {
            names.append(QString::fromLatin1(at<char>(entry->Name)).toLower());
        }
        return names;
    }

    QByteArray resource(const wchar_t *type, const wchar_t *name) const
    {
        HRSRC found = FindResourceW(m_module, name, type);
        if (!found) {
            return {};
        }
        return {static_cast<const char *>(LockResource(LoadResource(m_module, found))),
                qsizetype(SizeofResource(m_module, found))};
    }

private:
    template <typename Type> const Type *at(DWORD offset) const
    {
        // The lower bits hold flags about the mapping.
        const auto base = reinterpret_cast<quintptr>(m_module) & ~quintptr(3);
        return reinterpret_cast<const Type *>(base + offset);
    }

    HMODULE m_module;
};

/// The texts of all elements with this name in any namespace.
QStringList texts(const QByteArray &manifest, QStringView name)
{
    QStringList found;
    QXmlStreamReader reader(manifest);
    while (!reader.atEnd()) {
        if (reader.readNext() == QXmlStreamReader::StartElement && reader.name() == name) {
            found.append(reader.readElementText());
        }
    }
    return reader.hasError() ? QStringList{reader.errorString()} : found;
}

} // namespace

class tst_Executable : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QVERIFY2(m_image.isValid(), VASKEL_EXECUTABLE); }
    void isWithinItsSizeLimit();
    void hasNoConsole();
    void hasAddressAndMemoryProtection();
    void importsTheSystemAndEverythingAlone();
    void loadsEverythingFromItsOwnFolderAlone_data();
    void loadsEverythingFromItsOwnFolderAlone();
    void manifestNamesTheProgram_data();
    void manifestNamesTheProgram();
    void manifestAsksForNoMoreRights();
    void hasItsVersion_data();
    void hasItsVersion();
    void hasItsIconInEachSize_data();
    void hasItsIconInEachSize();

private:
    QByteArray manifest() const
    {
        return m_image.resource(MAKEINTRESOURCEW(24), MAKEINTRESOURCEW(1));
    }

    Image m_image;
};

void tst_Executable::isWithinItsSizeLimit()
{
    const qint64 size = QFileInfo(executable).size();
    qInfo("%lld bytes", static_cast<long long>(size));
    QVERIFY(size > 0);
    if (VASKEL_IS_STRIPPED) {
        QCOMPARE_LE(size, largestSize);
    }
}

void tst_Executable::hasNoConsole()
{
    QCOMPARE(m_image.header().Subsystem, WORD(IMAGE_SUBSYSTEM_WINDOWS_GUI));
}

void tst_Executable::hasAddressAndMemoryProtection()
{
    for (const WORD flag :
         {IMAGE_DLLCHARACTERISTICS_DYNAMIC_BASE, IMAGE_DLLCHARACTERISTICS_NX_COMPAT,
          IMAGE_DLLCHARACTERISTICS_HIGH_ENTROPY_VA}) {
        QCOMPARE(m_image.header().DllCharacteristics & flag, int(flag));
    }
}

void tst_Executable::importsTheSystemAndEverythingAlone()
{
    wchar_t folder[MAX_PATH];
    QVERIFY(GetSystemDirectoryW(folder, MAX_PATH) > 0);
    const QDir system(QString::fromWCharArray(folder));
    QStringList others;
    const QStringList imports = m_image.imports();
    for (const QString &name : imports) {
        if (!system.exists(name) && !name.startsWith("api-ms-win-"_L1)) {
            others.append(name);
        }
    }
    QVERIFY(imports.contains(u"kernel32.dll"_s));
    QCOMPARE(others, QStringList{u"everything64.dll"_s});
}

void tst_Executable::loadsEverythingFromItsOwnFolderAlone_data()
{
    QTest::addColumn<QString>("planted");
    QTest::newRow("in the current folder") << u"current"_s;
    QTest::newRow("in PATH") << u"path"_s;
}

// Another program or user may have put a library there. The program must not load it at its start.
void tst_Executable::loadsEverythingFromItsOwnFolderAlone()
{
    QFETCH(QString, planted);
    QTemporaryDir folder;
    for (const QString &name : {u"bin"_s, u"current"_s, u"path"_s}) {
        QVERIFY(QDir(folder.path()).mkdir(name));
    }
    const QString library = u"Everything64.dll"_s;
    const QString program = folder.filePath(u"bin/Vaskel.exe"_s);
    QVERIFY(QFile::copy(executable, program));
    QVERIFY(QFile::copy(QFileInfo(executable).dir().filePath(library),
                        folder.filePath(planted + u'/' + library)));
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"PATH"_s, QDir::toNativeSeparators(folder.filePath(u"path"_s)) + u';'
                                      + environment.value(u"PATH"_s));
    QProcess process;
    process.setProcessEnvironment(environment);
    process.setWorkingDirectory(folder.filePath(u"current"_s));
    process.start(program, QStringList());
    const bool hasEnded = process.waitForFinished(60000);
    process.kill();
    process.waitForFinished();
    QVERIFY(hasEnded);
    constexpr unsigned libraryNotFound = 0xC0000135;
    QCOMPARE(unsigned(process.exitCode()), libraryNotFound);
}

void tst_Executable::manifestNamesTheProgram_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("expected");
    QTest::newRow("density of each screen") << u"dpiAwareness"_s << u"PerMonitorV2"_s;
    QTest::newRow("density, for Windows before 10.0.14393") << u"dpiAware"_s << u"true/pm"_s;
    QTest::newRow("code page") << u"activeCodePage"_s << u"UTF-8"_s;
    QTest::newRow("long paths") << u"longPathAware"_s << u"true"_s;
}

void tst_Executable::manifestNamesTheProgram()
{
    QFETCH(QString, name);
    QFETCH(QString, expected);
    QCOMPARE(texts(manifest(), name), QStringList{expected});
}

void tst_Executable::manifestAsksForNoMoreRights()
{
    QXmlStreamReader reader(manifest());
    QStringList levels;
    while (!reader.atEnd()) {
        if (reader.readNext() == QXmlStreamReader::StartElement
            && reader.name() == "requestedExecutionLevel"_L1) {
            levels.append(reader.attributes().value("level"_L1).toString());
            QCOMPARE(reader.attributes().value("uiAccess"_L1), "false"_L1);
        }
    }
    QVERIFY2(!reader.hasError(), qPrintable(reader.errorString()));
    QCOMPARE(levels, QStringList{u"asInvoker"_s});
}

void tst_Executable::hasItsVersion_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("expected");
    QTest::newRow("name of the product") << u"ProductName"_s << u"Vaskel"_s;
    QTest::newRow("version of the product")
        << u"ProductVersion"_s << QStringLiteral(VASKEL_VERSION);
    QTest::newRow("version of the file") << u"FileVersion"_s << QStringLiteral(VASKEL_VERSION);
    QTest::newRow("what the task manager shows") << u"FileDescription"_s << u"Vaskel"_s;
    QTest::newRow("name of the file") << u"OriginalFilename"_s << u"Vaskel.exe"_s;
}

void tst_Executable::hasItsVersion()
{
    QFETCH(QString, key);
    QFETCH(QString, expected);
    QByteArray block(qsizetype(GetFileVersionInfoSizeW(wide(executable), nullptr)),
                     Qt::Uninitialized);
    QVERIFY(GetFileVersionInfoW(wide(executable), 0, DWORD(block.size()), block.data()));
    void *text = nullptr;
    UINT length = 0;
    const QString path = u"\\StringFileInfo\\040904b0\\"_s + key;
    QVERIFY(VerQueryValueW(block.constData(), wide(path), &text, &length));
    QCOMPARE(QString::fromWCharArray(static_cast<const wchar_t *>(text)), expected);

    VS_FIXEDFILEINFO *numbers = nullptr;
    QVERIFY(VerQueryValueW(block.constData(), L"\\", reinterpret_cast<void **>(&numbers), &length));
    QCOMPARE(u"%1.%2.%3"_s.arg(HIWORD(numbers->dwFileVersionMS))
                 .arg(LOWORD(numbers->dwFileVersionMS))
                 .arg(HIWORD(numbers->dwFileVersionLS)),
             QStringLiteral(VASKEL_VERSION));
}

void tst_Executable::hasItsIconInEachSize_data()
{
    QTest::addColumn<int>("size");
    for (const int size : {16, 24, 32, 48, 64, 256}) {
        QTest::addRow("%d", size) << size;
    }
}

void tst_Executable::hasItsIconInEachSize()
{
    QFETCH(int, size);
    // The group resource lists the sizes of its icons, with 0 for 256.
    const QByteArray group = m_image.resource(MAKEINTRESOURCEW(14), MAKEINTRESOURCEW(1));
    constexpr qsizetype headerSize = 6;
    constexpr qsizetype entrySize = 14;
    QList<int> sizes;
    for (qsizetype offset = headerSize; offset + entrySize <= group.size(); offset += entrySize) {
        const int width = uchar(group.at(offset));
        sizes.append(width ? width : 256);
    }
    QVERIFY2(sizes.contains(size), qPrintable(u"%1 icons"_s.arg(sizes.size())));

    HICON icon = nullptr;
    QCOMPARE(PrivateExtractIconsW(wide(executable), 0, size, size, &icon, nullptr, 1, 0), 1u);
    const QImage image = QImage::fromHICON(icon);
    DestroyIcon(icon);
    QCOMPARE(image.size(), QSize(size, size));
    // Blue with transparent corners.
    QCOMPARE(qAlpha(image.pixel(0, 0)), 0);
    const QColor colour = image.pixelColor(size / 2, size / 8);
    QVERIFY2(colour.blue() > colour.red() + 60 && colour.alpha() == 255, qPrintable(colour.name()));
}

VASKEL_TEST(tst_Executable, QCoreApplication)
#include "tst_Executable.moc"
