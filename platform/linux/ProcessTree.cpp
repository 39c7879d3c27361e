// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/ProcessTree.h"

#include <QProcess>

#include <csignal>
#include <fcntl.h>
#include <linux/close_range.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace platform {

namespace {

constexpr unsigned firstInherited = STDERR_FILENO + 1;
constexpr int highestInherited = 1024; // for kernels that cannot close all at once

// Runs between fork() and exec(), so it may only call what is safe in a signal handler. CLOEXEC
// instead of closing: through one of these descriptors QProcess learns that exec() has failed.
void prepareChild(pid_t parent)
{
    ::setsid(); // a group of its own, without the terminal
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (::getppid() != parent) { // it has ended before the line above
        ::_exit(1);
    }
    if (::syscall(SYS_close_range, firstInherited, ~0U, CLOSE_RANGE_CLOEXEC) != 0) {
        for (int descriptor = firstInherited; descriptor < highestInherited; ++descriptor) {
            ::fcntl(descriptor, F_SETFD, FD_CLOEXEC);
        }
    }
}

} // namespace

struct ProcessTree::Data
{
    pid_t group = 0; // its id is the program's process id; 0 before the start
    bool isEnded = false;
};

ProcessTree::ProcessTree()
    : m_data(std::make_unique<Data>())
{
}

ProcessTree::~ProcessTree() = default;

void ProcessTree::prepare(QProcess &process)
{
    process.setChildProcessModifier([parent = ::getpid()] { prepareChild(parent); });
    // QProcess forgets the process ID when the program ends.
    QObject::connect(&process, &QProcess::started, &process, [&process, data = m_data.get()] {
        data->group = static_cast<pid_t>(process.processId());
    });
}

void ProcessTree::end(QProcess &process)
{
    const auto running = static_cast<pid_t>(process.processId());
    const pid_t group = running != 0 ? running : m_data->group;
    // Only once: later the ID may belong to another group.
    if (group != 0 && !m_data->isEnded) {
        ::kill(-group, SIGKILL);
        m_data->isEnded = true;
    }
    process.kill(); // it may not have its group yet
}

} // namespace platform
