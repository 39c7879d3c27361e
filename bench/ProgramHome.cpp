// SPDX-License-Identifier: GPL-3.0-or-later
#include "ProgramHome.h"

#include <cstdlib>
#include <fstream>
#include <iterator>

namespace {

constexpr int entryCount = 500;

} // namespace

ProgramHome::ProgramHome()
{
    std::string pattern = std::filesystem::temp_directory_path() / "vaskel-bench-XXXXXX";
    m_folder = mkdtemp(pattern.data());
    for (const char *folder : {"tmp", "runtime", "system/applications"}) {
        std::filesystem::create_directories(m_folder / folder);
    }
    std::filesystem::permissions(m_folder / "runtime", std::filesystem::perms::owner_all);
    for (const char *shared : {"icons", "mime"}) {
        std::filesystem::create_directory_symlink(std::filesystem::path("/usr/share") / shared,
                                                  m_folder / "system" / shared);
    }
    for (int number = 0; number < entryCount; ++number) {
        addEntry(number);
    }
}

// As large as the entries of a real desktop, which consist mostly of translations.
void ProgramHome::addEntry(int number) const
{
    std::ofstream entry(m_folder / "system/applications"
                        / ("program" + std::to_string(number) + ".desktop"));
    entry << "[Desktop Entry]\nType=Application\nVersion=1.0\n"
          << "Name=Program " << number << "\nExec=true %U\nIcon=application-x-executable\n"
          << "Categories=Utility;\nMimeType=text/plain;\nTerminal=false\nStartupNotify=true\n";
    for (const char *language : {"ca", "cs", "da", "de", "el", "es", "fi", "fr", "hu", "it",
                                 "ja", "ko", "nl", "pl", "pt", "ru", "sv", "tr", "uk", "zh_CN"}) {
        entry << "Name[" << language << "]=Program " << number << " (" << language << ")\n"
              << "Comment[" << language << "]=One of the programs of this system\n";
    }
}

std::vector<std::string> ProgramHome::environment() const
{
    const std::string folder = m_folder.string();
    std::vector<std::string> variables{
        "HOME=" + folder,
        "TMPDIR=" + folder + "/tmp",
        "XDG_RUNTIME_DIR=" + folder + "/runtime",
        "XDG_DATA_DIRS=" + folder + "/system",
        "LANG=C.UTF-8",
        "QT_QPA_PLATFORM=xcb",
    };
    for (const char *inherited : {"PATH", "DISPLAY", "XAUTHORITY", "DBUS_SESSION_BUS_ADDRESS"}) {
        if (const char *value = std::getenv(inherited)) {
            variables.push_back(std::string(inherited) + '=' + value);
        }
    }
    return variables;
}

bool ProgramHome::hasCachedIcons() const
{
    const std::filesystem::directory_iterator icons(m_folder / "tmp/Vaskel/icons");
    return std::distance(begin(icons), end(icons)) >= entryCount;
}

std::filesystem::path ProgramHome::emptyFolder(const char *name) const
{
    std::filesystem::path folder = m_folder / name;
    std::filesystem::remove_all(folder);
    std::filesystem::create_directory(folder);
    return folder;
}
