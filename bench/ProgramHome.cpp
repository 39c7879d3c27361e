// SPDX-License-Identifier: GPL-3.0-or-later
#include "ProgramHome.h"

#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <sstream>
#include <system_error>

namespace {

constexpr int pictureWidth = 48;

std::string iconName(int number)
{
    return "program-icon" + std::to_string(number);
}

std::string drawing(int number)
{
    std::ostringstream text;
    text << "<svg xmlns='http://www.w3.org/2000/svg' width='64' height='64'>"
         << "<defs><linearGradient id='shade'><stop offset='0' stop-color='rgb(" << number % 256
         << ",64,128)'/><stop offset='1' stop-color='rgb(32," << number / 2 % 256
         << ",200)'/></linearGradient></defs>"
         << "<rect x='4' y='4' width='56' height='56' rx='12' fill='url(#shade)'/>"
         << "<circle cx='" << 20 + number % 24 << "' cy='32' r='14' fill='white' opacity='0.6'/>"
         << "<path d='M12 50 C 20 " << 20 + number % 30 << ", 44 20, 52 50 Z' fill='black'/></svg>";
    return text.str();
}

std::string bigEndian(std::uint32_t value)
{
    std::string bytes;
    for (const int shift : {24, 16, 8, 0}) {
        bytes += static_cast<char>(value >> shift);
    }
    return bytes;
}

std::uint32_t checksum(const std::string &bytes)
{
    std::uint32_t sum = 0xffffffff;
    for (const char byte : bytes) {
        sum ^= static_cast<unsigned char>(byte);
        for (int bit = 0; bit < 8; ++bit) {
            sum = (sum >> 1) ^ ((sum & 1) != 0 ? 0xedb88320 : 0);
        }
    }
    return ~sum;
}

std::string chunk(const std::string &kind, const std::string &content)
{
    return bigEndian(static_cast<std::uint32_t>(content.size())) + kind + content
           + bigEndian(checksum(kind + content));
}

// Without compression, as this program has no library for it.
std::string unpacked(const std::string &bytes)
{
    std::uint32_t low = 1;
    std::uint32_t high = 0;
    for (const char byte : bytes) {
        low = (low + static_cast<unsigned char>(byte)) % 65521;
        high = (high + low) % 65521;
    }
    const auto size = static_cast<std::uint32_t>(bytes.size()); // below 65,536
    std::string block = "\x78\x01\x01";
    for (const std::uint32_t part : {size, size >> 8, ~size, ~size >> 8}) {
        block += static_cast<char>(part);
    }
    return block + bytes + bigEndian(high << 16 | low);
}

std::string picture(int number)
{
    std::string lines;
    for (int y = 0; y < pictureWidth; ++y) {
        lines += '\0'; // no filter
        for (int x = 0; x < pictureWidth; ++x) {
            for (const int value : {x * 5 + number * 7, y * 5 + number * 3, x * y + number, 255}) {
                lines += static_cast<char>(value);
            }
        }
    }
    const std::string form("\x08\x06\0\0\0", 5); // 8 bits of red, green, blue and alpha
    return "\x89PNG\r\n\x1a\n"
           + chunk("IHDR", bigEndian(pictureWidth) + bigEndian(pictureWidth) + form)
           + chunk("IDAT", unpacked(lines)) + chunk("IEND", "");
}

} // namespace

ProgramHome::ProgramHome(Icons icons)
{
    std::string pattern = std::filesystem::temp_directory_path() / "vaskel-bench-XXXXXX";
    m_folder = mkdtemp(pattern.data());
    for (const char *folder : {"tmp", "runtime", "system/applications"}) {
        std::filesystem::create_directories(m_folder / folder);
    }
    std::filesystem::permissions(m_folder / "runtime", std::filesystem::perms::owner_all);
    std::filesystem::create_directory_symlink("/usr/share/mime", m_folder / "system/mime");
    if (icons == Icons::Same) {
        std::filesystem::create_directory_symlink("/usr/share/icons", m_folder / "system/icons");
    } else {
        linkSystemIcons();
    }
    for (int number = 0; number < programCount; ++number) {
        const bool isOwn = icons == Icons::Different;
        addEntry(number, isOwn ? iconName(number) : "application-x-executable");
        if (isOwn) {
            addIcon(number);
        }
    }
}

// The themes of the system, and a folder for more icons of programs.
void ProgramHome::linkSystemIcons() const
{
    const std::filesystem::path icons = m_folder / "system/icons";
    for (const char *folder : {"48x48/apps", "scalable/apps"}) {
        std::filesystem::create_directories(icons / "hicolor" / folder);
    }
    for (const auto &theme : std::filesystem::directory_iterator("/usr/share/icons")) {
        if (theme.path().filename() != "hicolor") {
            std::filesystem::create_symlink(theme.path(), icons / theme.path().filename());
        }
    }
    std::filesystem::copy("/usr/share/icons/hicolor/index.theme", icons / "hicolor");
}

void ProgramHome::addIcon(int number) const
{
    const std::filesystem::path theme = m_folder / "system/icons/hicolor";
    if (number % 2 == 0) {
        std::ofstream(theme / "scalable/apps" / (iconName(number) + ".svg")) << drawing(number);
    } else {
        std::ofstream(theme / "48x48/apps" / (iconName(number) + ".png"), std::ios::binary)
            << picture(number);
    }
}

// As large as the entries of a real desktop, which consist mostly of translations.
void ProgramHome::addEntry(int number, const std::string &icon) const
{
    std::ofstream entry(m_folder / "system/applications"
                        / ("program" + std::to_string(number) + ".desktop"));
    entry << "[Desktop Entry]\nType=Application\nVersion=1.0\n"
          << "Name=Program " << number << "\nExec=true %U\nIcon=" << icon << '\n'
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

bool ProgramHome::hasIcons() const
{
    std::error_code missing;
    const std::filesystem::directory_iterator icons(m_folder / "tmp/Vaskel/icons", missing);
    return !missing && std::distance(begin(icons), end(icons)) >= programCount;
}

std::filesystem::path ProgramHome::emptyFolder(const char *name) const
{
    std::filesystem::path folder = m_folder / name;
    std::filesystem::remove_all(folder);
    std::filesystem::create_directory(folder);
    return folder;
}

void ProgramHome::forgetStarts() const
{
    for (const char *folder : {".cache", ".config", ".local", "tmp"}) {
        std::filesystem::remove_all(m_folder / folder);
    }
    std::filesystem::create_directory(m_folder / "tmp");
}
