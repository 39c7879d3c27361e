// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <filesystem>
#include <string>
#include <vector>

/// A home with installed programs, and the environment for a process in it.
class ProgramHome
{
public:
    ProgramHome();
    ~ProgramHome() { std::filesystem::remove_all(m_folder); }
    ProgramHome(const ProgramHome &) = delete;
    ProgramHome &operator=(const ProgramHome &) = delete;

    std::vector<std::string> environment() const;

    /// Whether Vaskel has cached the icons of all programs.
    bool hasCachedIcons() const;

    /// Makes an empty folder in the home.
    std::filesystem::path emptyFolder(const char *name) const;

private:
    void addEntry(int number) const;

    std::filesystem::path m_folder;
};
