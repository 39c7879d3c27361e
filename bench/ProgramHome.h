// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <filesystem>
#include <string>
#include <vector>

inline constexpr int programCount = 500;

/// A home with installed programs, and the environment for a process in it.
class ProgramHome
{
public:
    enum class Icons {
        Same,      ///< all programs have the same icon, that of the desktop's theme
        Different, ///< each has its own, half of them vector pictures
    };

    explicit ProgramHome(Icons icons = Icons::Same);
    ~ProgramHome() { std::filesystem::remove_all(m_folder); }
    ProgramHome(const ProgramHome &) = delete;
    ProgramHome &operator=(const ProgramHome &) = delete;

    std::vector<std::string> environment() const;

    /// Whether a start has drawn the icons of all programs.
    bool hasIcons() const;

    std::filesystem::path emptyFolder(const char *name) const;

    /// Removes all that earlier starts have written.
    void forgetStarts() const;

private:
    void linkSystemIcons() const;
    void addEntry(int number, const std::string &icon) const;
    void addIcon(int number) const;

    std::filesystem::path m_folder;
};
