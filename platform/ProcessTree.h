// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtGlobal>

#include <memory>

class QProcess;

namespace platform {

/// Starts a program so that it can be ended together with the programs that it starts, and keeps
/// from it what belongs to this process. Must outlive the QProcess.
class ProcessTree
{
public:
    ProcessTree();

    /// Does not end the program.
    ~ProcessTree();
    Q_DISABLE_COPY_MOVE(ProcessTree)

    /// Call once, before QProcess::start(). The program then gets no terminal, and no open file or
    /// handle besides its standard streams. It ends with this process.
    void prepare(QProcess &process);

    /// Ends the program at once, with all that it has started, also if the program itself has
    /// already ended; on Linux without those that have moved to a session of their own. Does not
    /// wait. Does nothing before the start.
    void end(QProcess &process);

private:
    struct Data;
    std::unique_ptr<Data> m_data;
};

} // namespace platform
