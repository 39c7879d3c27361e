// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/DesktopEntry.h"

#include "fuzz/Fuzz.h"
#include "platform/Link.h"
#include "platform/StartMenu.h"
#include "support/TestHome.h"

#include <QHash>

using namespace Qt::StringLiterals;

// The input is the content of a desktop entry. Nothing is started.

namespace {

using fuzz::check;

void checkProgram(const QByteArray &path)
{
    check(!path.contains('\0'), "a program's path with a null character");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static const QString root = testhome::path() + "/data/applications"_L1;
    static const QString path = testhome::writeFile(u"data/applications/entry.desktop"_s, {});
    fuzz::writeFile(path, fuzz::bytesOf(data, size));

    const std::optional<platform::DesktopEntry> entry = platform::DesktopEntry::load(path);
    const QHash<QString, QString> names = platform::startMenuNames(root, {path});
    if (!entry) {
        check(names.isEmpty(), "an entry that cannot be read is listed");
        return 0;
    }
    // From the cache of the first call.
    check(platform::startMenuNames(root, {path}) == names, "a second start has another name");
    const QString name = entry->isListed() ? entry->displayName() : QString();
    check(names.value(path) == name, "the menu has another name than the entry");
    check(names.isEmpty() == name.isEmpty(), "an entry without a name is listed");
    checkProgram(entry->program());
    checkProgram(entry->tryExec());
    check(!entry->icon().contains(QChar(u'\0')), "an icon's name with a null character");
    check(!entry->isListed() || entry->canStart(), "an entry that cannot start is listed");
    check(!entry->hasCategory("a;b"), "a category with a separator");
    static_cast<void>(entry->isForThisDesktop());
    return 0;
}
