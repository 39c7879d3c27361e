// SPDX-License-Identifier: GPL-3.0-or-later
#include "update/FileSizeLimit.h"

#include <csignal>

#include <sys/resource.h>

namespace {

// The hard limit stays, so that the soft one can be lifted again.
void limitTo(rlim_t bytes)
{
    rlimit limit = {};
    ::getrlimit(RLIMIT_FSIZE, &limit);
    limit.rlim_cur = bytes;
    ::setrlimit(RLIMIT_FSIZE, &limit);
}

} // namespace

FileSizeLimit::FileSizeLimit(qint64 bytes)
{
    std::signal(SIGXFSZ, SIG_IGN);
    limitTo(rlim_t(bytes));
}

FileSizeLimit::~FileSizeLimit()
{
    limitTo(RLIM_INFINITY);
}
