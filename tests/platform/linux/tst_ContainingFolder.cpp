// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/ContainingFolder.h"

#include "support/TestHome.h"
#include "support/TestProgram.h"

#include <QDBusConnection>
#include <QDBusContext>
#include <QDBusError>
#include <QDesktopServices>
#include <QFile>
#include <QTest>
#include <QUrl>

using namespace Qt::StringLiterals;

namespace {

// The method of org.freedesktop.FileManager1 that is called.
class FileManager : public QObject, protected QDBusContext
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.FileManager1")

public:
    // With a connection of its own: Qt would not send a call to its own connection over the bus.
    FileManager()
        : m_bus(QDBusConnection::connectToBus(QDBusConnection::SessionBus, u"file manager"_s))
    {
        m_bus.registerObject(u"/org/freedesktop/FileManager1"_s, this,
                             QDBusConnection::ExportAllSlots);
        isOnTheBus = m_bus.registerService(u"org.freedesktop.FileManager1"_s);
    }

    ~FileManager() override
    {
        m_bus.unregisterService(u"org.freedesktop.FileManager1"_s);
        QDBusConnection::disconnectFromBus(u"file manager"_s);
    }

    Q_DISABLE_COPY_MOVE(FileManager)

    bool isOnTheBus = false;
    bool fails = false;
    QStringList addresses;

public Q_SLOTS:
    // The method's own name.
    void ShowItems(const QStringList &uris, const QString & /*startupId*/)
    {
        addresses.append(uris);
        if (fails) {
            sendErrorReply(QDBusError::Failed, u"cannot show it"_s);
        }
    }

private:
    QDBusConnection m_bus;
};

// Records the folders that are opened as the desktop opens any folder.
class Desktop : public QObject
{
    Q_OBJECT

public:
    Desktop() { QDesktopServices::setUrlHandler(u"file"_s, this, "open"); }
    ~Desktop() override { QDesktopServices::unsetUrlHandler(u"file"_s); }
    Q_DISABLE_COPY_MOVE(Desktop)

    QStringList folders;

public Q_SLOTS:
    void open(const QUrl &url) { folders.append(url.toLocalFile()); }
};

} // namespace

/// showInFolder() with a session bus.
class tst_ContainingFolder : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { testhome::reset(); }
    void asksTheFileManager_data();
    void asksTheFileManager();
    void showsABrokenSymbolicLink();
    void opensTheFolderIfTheFileManagerFails();
    void opensTheFolderWithoutAFileManager();
};

void tst_ContainingFolder::asksTheFileManager_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("encoded");

    QTest::newRow("plain") << u"file.txt"_s << u"file.txt"_s;
    QTest::newRow("what addresses escape") << u"100% #1?"_s << u"100%25%20%231%3F"_s;
    QTest::newRow("Chinese") << u"文"_s << u"%E6%96%87"_s;
}

void tst_ContainingFolder::asksTheFileManager()
{
    QFETCH(const QString, name);
    QFETCH(const QString, encoded);
    FileManager manager;
    QVERIFY(manager.isOnTheBus);
    const Desktop desktop;
    const QString path = testhome::writeFile("folder/"_L1 + name, "text");
    QVERIFY(platform::showInFolder(path));
    QTRY_COMPARE(manager.addresses,
                 QStringList("file://"_L1 + testhome::path() + "/folder/"_L1 + encoded));
    QCoreApplication::processEvents();
    QCOMPARE(desktop.folders, QStringList());
}

void tst_ContainingFolder::showsABrokenSymbolicLink()
{
    const FileManager manager;
    QVERIFY(manager.isOnTheBus);
    const QString path = testhome::path() + "/link"_L1;
    QVERIFY(QFile::link(u"/no/such/file"_s, path));
    QVERIFY(platform::showInFolder(path));
    QTRY_COMPARE(manager.addresses, QStringList("file://"_L1 + path));
}

void tst_ContainingFolder::opensTheFolderIfTheFileManagerFails()
{
    FileManager manager;
    QVERIFY(manager.isOnTheBus);
    manager.fails = true;
    const Desktop desktop;
    const QString path = testhome::writeFile(u"folder/file"_s, "text");
    QVERIFY(platform::showInFolder(path));
    QTRY_COMPARE(desktop.folders, QStringList(testhome::path() + "/folder"_L1));
    QCOMPARE(manager.addresses.size(), 1);
}

void tst_ContainingFolder::opensTheFolderWithoutAFileManager()
{
    const Desktop desktop;
    const QString path = testhome::writeFile(u"folder/file"_s, "text");
    QVERIFY(platform::showInFolder(path));
    QTRY_COMPARE(desktop.folders, QStringList(testhome::path() + "/folder"_L1));
}

VASKEL_TEST(tst_ContainingFolder, QCoreApplication)
#include "tst_ContainingFolder.moc"
