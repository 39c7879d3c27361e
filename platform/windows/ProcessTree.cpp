// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/ProcessTree.h"

#include <QProcess>

#include <algorithm>
#include <array>
#include <vector>

#include <qt_windows.h>

namespace platform {

struct ProcessTree::Data
{
    HANDLE job = nullptr;
    std::array<HANDLE, 3> handles = {};
    DWORD handleCount = 0;
    std::vector<char> attributes; // of the start; read by CreateProcess()
    STARTUPINFOEXW startupInfo = {};

    LPPROC_THREAD_ATTRIBUTE_LIST attributeList()
    {
        return reinterpret_cast<LPPROC_THREAD_ATTRIBUTE_LIST>(attributes.data());
    }

    void createJob();
    void addHandle(HANDLE handle);
    bool fillAttributes();
    void extend(QProcess::CreateProcessArguments &arguments);
};

// The last handle of the job closes when this process ends, which then ends the programs.
void ProcessTree::Data::createJob()
{
    job = CreateJobObjectW(nullptr, nullptr);
    JOBOBJECT_EXTENDED_LIMIT_INFORMATION limits = {};
    limits.BasicLimitInformation.LimitFlags = JOB_OBJECT_LIMIT_KILL_ON_JOB_CLOSE;
    SetInformationJobObject(job, JobObjectExtendedLimitInformation, &limits, sizeof limits);
}

// A list with an invalid or a repeated handle would be refused.
void ProcessTree::Data::addHandle(HANDLE handle)
{
    const auto end = handles.begin() + handleCount;
    if (handle && handle != INVALID_HANDLE_VALUE
        && std::find(handles.begin(), end, handle) == end) {
        handles.at(handleCount++) = handle;
    }
}

bool ProcessTree::Data::fillAttributes()
{
    constexpr DWORD count = 2;
    SIZE_T size = 0;
    InitializeProcThreadAttributeList(nullptr, count, 0, &size);
    attributes.resize(size);
    return InitializeProcThreadAttributeList(attributeList(), count, 0, &size)
           && UpdateProcThreadAttribute(attributeList(), 0, PROC_THREAD_ATTRIBUTE_JOB_LIST, &job,
                                        sizeof job, nullptr, nullptr)
           && UpdateProcThreadAttribute(attributeList(), 0, PROC_THREAD_ATTRIBUTE_HANDLE_LIST,
                                        handles.data(), handleCount * sizeof(HANDLE), nullptr,
                                        nullptr);
}

// The program is in the job from its first instruction, so that nothing it starts can be missed.
void ProcessTree::Data::extend(QProcess::CreateProcessArguments &arguments)
{
    static_cast<STARTUPINFOW &>(startupInfo.StartupInfo) =
        *reinterpret_cast<const STARTUPINFOW *>(arguments.startupInfo);
    addHandle(startupInfo.StartupInfo.hStdInput);
    addHandle(startupInfo.StartupInfo.hStdOutput);
    addHandle(startupInfo.StartupInfo.hStdError);
    arguments.flags |= CREATE_NO_WINDOW;
    if (!fillAttributes()) {
        return;
    }
    startupInfo.StartupInfo.cb = sizeof startupInfo;
    startupInfo.lpAttributeList = attributeList();
    arguments.startupInfo = reinterpret_cast<Q_STARTUPINFO *>(&startupInfo);
    arguments.flags |= EXTENDED_STARTUPINFO_PRESENT;
}

ProcessTree::ProcessTree()
    : m_data(std::make_unique<Data>())
{
}

ProcessTree::~ProcessTree()
{
    // Without the limit, closing the handle leaves the programs running.
    if (m_data->job) {
        JOBOBJECT_EXTENDED_LIMIT_INFORMATION limits = {};
        SetInformationJobObject(m_data->job, JobObjectExtendedLimitInformation, &limits,
                                sizeof limits);
        CloseHandle(m_data->job);
    }
    if (m_data->startupInfo.lpAttributeList) {
        DeleteProcThreadAttributeList(m_data->attributeList());
    }
}

void ProcessTree::prepare(QProcess &process)
{
    m_data->createJob();
    process.setCreateProcessArgumentsModifier(
        [data = m_data.get()](QProcess::CreateProcessArguments *arguments) {
            data->extend(*arguments);
        });
}

void ProcessTree::end(QProcess &process)
{
    if (m_data->job) {
        TerminateJobObject(m_data->job, 1);
    }
    process.kill(); // it may not be in the job
}

} // namespace platform
