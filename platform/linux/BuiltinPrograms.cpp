// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/BuiltinPrograms.h"

#include "platform/linux/DefaultPrograms.h"
#include "platform/linux/DesktopEntry.h"

#include <QCoreApplication>
#include <QFileInfo>

#include <algorithm>
#include <span>
#include <vector>

using namespace Qt::StringLiterals;

namespace platform {

namespace {

/// A well-known program; preferred over all others on its own desktop.
struct Candidate
{
    const char *id;
    const char *command;
    const char *desktop = "";
};

constexpr Candidate textEditors[] = {{"org.gnome.TextEditor", "gnome-text-editor", "GNOME"},
                                     {"org.gnome.gedit", "gedit", "GNOME"},
                                     {"org.kde.kwrite", "kwrite", "KDE"},
                                     {"org.kde.kate", "kate", "KDE"},
                                     {"org.xfce.mousepad", "mousepad", "XFCE"},
                                     {"pluma", "pluma", "MATE"},
                                     {"org.x.editor", "xed", "X-Cinnamon"},
                                     {"xed", "xed", "X-Cinnamon"},
                                     {"featherpad", "featherpad", "LXQt"},
                                     {"l3afpad", "l3afpad", "LXDE"},
                                     {"io.elementary.code", "io.elementary.code", "Pantheon"},
                                     {"deepin-editor", "deepin-editor", "DDE"},
                                     {"leafpad", "leafpad"},
                                     {"geany", "geany"},
                                     {"gvim", "gvim"},
                                     {"emacs", "emacs"}};

constexpr Candidate calculators[] = {
    {"org.gnome.Calculator", "gnome-calculator", "GNOME"},
    {"org.kde.kcalc", "kcalc", "KDE"},
    {"mate-calc", "mate-calc", "MATE"},
    {"galculator", "galculator", "LXDE"},
    {"io.elementary.calculator", "io.elementary.calculator", "Pantheon"},
    {"deepin-calculator", "deepin-calculator", "DDE"},
    {"qalculate-gtk", "qalculate-gtk"},
    {"qalculate-qt", "qalculate-qt"},
    {"speedcrunch", "speedcrunch"},
    {"org.speedcrunch.SpeedCrunch", "speedcrunch"}};

constexpr Candidate paintPrograms[] = {{"com.github.maoschanz.drawing", "drawing", "GNOME"},
                                       {"org.kde.kolourpaint", "kolourpaint", "KDE"},
                                       {"deepin-draw", "deepin-draw", "DDE"},
                                       {"pinta", "pinta"},
                                       {"com.github.PintaProject.Pinta", "pinta"},
                                       {"mtpaint", "mtpaint"},
                                       {"gimp", "gimp"},
                                       {"org.kde.krita", "krita"}};

constexpr Candidate terminals[] = {{"org.gnome.Terminal", "gnome-terminal", "GNOME"},
                                   {"org.gnome.Console", "kgx", "GNOME"},
                                   {"org.gnome.Ptyxis", "ptyxis", "GNOME"},
                                   {"org.kde.konsole", "konsole", "KDE"},
                                   {"xfce4-terminal", "xfce4-terminal", "XFCE"},
                                   {"mate-terminal", "mate-terminal", "MATE"},
                                   {"qterminal", "qterminal", "LXQt"},
                                   {"lxterminal", "lxterminal", "LXDE"},
                                   {"io.elementary.terminal", "io.elementary.terminal", "Pantheon"},
                                   {"deepin-terminal", "deepin-terminal", "DDE"},
                                   {"com.gexperts.Tilix", "tilix"},
                                   {"terminator", "terminator"},
                                   {"kitty", "kitty"},
                                   {"Alacritty", "alacritty"},
                                   {"rxvt-unicode", "urxvt"},
                                   {"debian-xterm", "xterm"},
                                   {"xterm", "xterm"}};

constexpr Candidate fileManagers[] = {{"org.gnome.Nautilus", "nautilus", "GNOME"},
                                      {"org.kde.dolphin", "dolphin", "KDE"},
                                      {"thunar", "thunar", "XFCE"},
                                      {"caja-browser", "caja", "MATE"},
                                      {"nemo", "nemo", "X-Cinnamon"},
                                      {"pcmanfm-qt", "pcmanfm-qt", "LXQt"},
                                      {"pcmanfm", "pcmanfm", "LXDE"},
                                      {"io.elementary.files", "io.elementary.files", "Pantheon"},
                                      {"dde-file-manager", "dde-file-manager", "DDE"}};

constexpr Candidate systemMonitors[] = {
    {"gnome-system-monitor", "gnome-system-monitor", "GNOME"},
    {"org.gnome.SystemMonitor", "gnome-system-monitor", "GNOME"},
    {"org.kde.plasma-systemmonitor", "plasma-systemmonitor", "KDE"},
    {"org.kde.ksysguard", "ksysguard", "KDE"},
    {"xfce4-taskmanager", "xfce4-taskmanager", "XFCE"},
    {"mate-system-monitor", "mate-system-monitor", "MATE"},
    {"qps", "qps", "LXQt"},
    {"lxtask", "lxtask", "LXDE"},
    {"deepin-system-monitor", "deepin-system-monitor", "DDE"},
    {"gnome-system-monitor-kde", "gnome-system-monitor"},
    {"htop", "htop"}};

constexpr Candidate settingsPrograms[] = {
    {"org.gnome.Settings", "gnome-control-center", "GNOME"},
    {"gnome-control-center", "gnome-control-center", "GNOME"},
    {"systemsettings", "systemsettings", "KDE"},
    {"xfce-settings-manager", "xfce4-settings-manager", "XFCE"},
    {"matecc", "mate-control-center", "MATE"},
    {"cinnamon-settings", "cinnamon-settings", "X-Cinnamon"},
    {"lxqt-config", "lxqt-config", "LXQt"},
    {"io.elementary.settings", "io.elementary.settings", "Pantheon"},
    {"dde-control-center", "dde-control-center", "DDE"},
    {"unity-control-center", "unity-control-center", "Unity"},
    {"kdesystemsettings", "systemsettings"},
    {"lxappearance", "lxappearance", "LXDE"},
    {"obconf", "obconf"}};

constexpr Candidate browsers[] = {{"firefox", "firefox"},
                                  {"firefox-esr", "firefox-esr"},
                                  {"org.mozilla.firefox", "firefox"},
                                  {"google-chrome", "google-chrome"},
                                  {"chromium", "chromium"},
                                  {"org.gnome.Epiphany", "epiphany", "GNOME"},
                                  {"org.kde.falkon", "falkon", "KDE"}};

/// How to find the program for a built-in entry.
struct Job
{
    const char *contentType; ///< its default program is preferred; null if no type fits
    std::span<const Candidate> candidates;
    bool needsEditor = false; ///< the type's default program is often only a viewer
};

Job jobOf(BuiltinProgram program)
{
    switch (program) {
    case BuiltinProgram::Notepad:
        return {"text/plain", textEditors};
    case BuiltinProgram::Calculator:
        return {nullptr, calculators};
    case BuiltinProgram::Paint:
        return {"image/png", paintPrograms, true};
    case BuiltinProgram::CommandPrompt:
        return {nullptr, terminals};
    case BuiltinProgram::FileExplorer:
        return {"inode/directory", fileManagers};
    case BuiltinProgram::TaskManager:
        return {nullptr, systemMonitors};
    case BuiltinProgram::Settings:
        return {nullptr, settingsPrograms};
    case BuiltinProgram::Browser:
        break;
    }
    return {"x-scheme-handler/https", browsers};
}

// Moves the programs of the running desktop to the front.
std::vector<Candidate> sortedByPreference(std::span<const Candidate> candidates)
{
    const QByteArrayList desktops = currentDesktops();
    std::vector<Candidate> ordered(candidates.begin(), candidates.end());
    std::stable_partition(ordered.begin(), ordered.end(), [&](const Candidate &candidate) {
        return desktops.contains(candidate.desktop);
    });
    return ordered;
}

bool isEditor(const DesktopEntry &entry)
{
    return (entry.hasCategory("2DGraphics") || entry.hasCategory("RasterGraphics"))
           && !entry.hasCategory("Viewer");
}

QString firstMatch(const Job &job, const QStringList &paths)
{
    const auto fits = [&job](const QString &path) {
        const std::optional<DesktopEntry> entry = DesktopEntry::load(path);
        return entry && (!job.needsEditor || isEditor(*entry));
    };
    const auto path = std::find_if(paths.begin(), paths.end(), fits);
    return path != paths.end() ? *path : QString();
}

QString firstInstalled(const std::vector<Candidate> &candidates)
{
    QStringList roots = startMenuRoots();
    roots.removeIf([](const QString &root) { return !QFileInfo::exists(root); });
    for (const Candidate &candidate : candidates) {
        QString path = installedProgram(QLatin1String(candidate.id) + ".desktop"_L1, roots);
        const std::optional<DesktopEntry> entry = DesktopEntry::load(path);
        if (entry && entry->isForThisDesktop()) {
            return path;
        }
    }
    return {};
}

// Default programs come before the well-known ones. Merely associated programs come last, since
// even an archiver may claim to open folders.
QString programFor(const Job &job, const std::vector<Candidate> &candidates)
{
    QString path = job.contentType ? firstMatch(job, defaultPrograms(job.contentType)) : QString();
    if (path.isEmpty()) {
        path = firstInstalled(candidates);
    }
    if (path.isEmpty() && job.contentType) {
        path = firstMatch(job, associatedPrograms(job.contentType));
    }
    return path;
}

ProgramInfo startPage(const QString &browser)
{
    const QString address = u"https://www.bing.com/"_s;
    return {address, QCoreApplication::translate("AppLauncher", "Open Bing Search"),
            browser.isEmpty() ? address : browser};
}

} // namespace

ProgramInfo builtinProgram(BuiltinProgram program)
{
    const Job job = jobOf(program);
    const std::vector<Candidate> candidates = sortedByPreference(job.candidates);
    const QString path = programFor(job, candidates);
    if (program == BuiltinProgram::Browser) {
        return startPage(path);
    }
    if (path.isEmpty()) {
        const QString command = QString::fromLatin1(candidates.front().command);
        return {command, {}, command};
    }
    const std::optional<DesktopEntry> entry = DesktopEntry::load(path);
    return {path, entry ? entry->displayName() : QString(), path};
}

QString programFile(const QString &pathOrCommand)
{
    return pathOrCommand;
}

} // namespace platform
