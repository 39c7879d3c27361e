// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtGlobal>

#include <memory>

namespace platform {

/// While it exists, what this process prints appears in the console of the program that has started
/// it, if the system gives none to programs with windows. Streams that are redirected stay so.
/// Create it before the first output.
class ParentConsole
{
public:
    ParentConsole();
    ~ParentConsole();
    Q_DISABLE_COPY_MOVE(ParentConsole)

private:
    struct Data;
    std::unique_ptr<Data> m_data;
};

} // namespace platform
