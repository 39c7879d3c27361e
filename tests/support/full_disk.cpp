// SPDX-License-Identifier: GPL-3.0-or-later
//
// Preloaded into a program: as long as the file that FULL_DISK_FLAG names exists, the disk is full
// for all files in the folder that FULL_DISK_FOLDER names. As on a real one, files can be created,
// renamed and removed then, but not be written. Needs no privileges, unlike a small disk.
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include <dlfcn.h>
#include <sys/uio.h>
#include <unistd.h>

namespace {

template <typename Function> Function *next(Function *, const char *name)
{
    return reinterpret_cast<Function *>(dlsym(RTLD_NEXT, name));
}

bool isFull(int file)
{
    const char *flag = std::getenv("FULL_DISK_FLAG");
    const char *folder = std::getenv("FULL_DISK_FOLDER");
    if (!flag || !folder || access(flag, F_OK) != 0) {
        return false;
    }
    char path[4096];
    const std::string link = "/proc/self/fd/" + std::to_string(file);
    const ssize_t size = readlink(link.c_str(), path, sizeof path);
    const size_t length = std::strlen(folder);
    return size > ssize_t(length) && std::memcmp(path, folder, length) == 0 && path[length] == '/';
}

// Whether the call must fail; sets errno.
bool refuses(int file)
{
    const int before = errno;
    if (!isFull(file)) {
        errno = before;
        return false;
    }
    errno = ENOSPC;
    return true;
}

} // namespace

extern "C" {

ssize_t write(int file, const void *data, size_t size)
{
    return refuses(file) ? -1 : next(&write, "write")(file, data, size);
}

ssize_t pwrite(int file, const void *data, size_t size, off_t offset)
{
    return refuses(file) ? -1 : next(&pwrite, "pwrite")(file, data, size, offset);
}

ssize_t pwrite64(int file, const void *data, size_t size, off64_t offset)
{
    return refuses(file) ? -1 : next(&pwrite64, "pwrite64")(file, data, size, offset);
}

ssize_t writev(int file, const iovec *parts, int count)
{
    return refuses(file) ? -1 : next(&writev, "writev")(file, parts, count);
}

// Refuse here: the C library writes the buffers of its streams by calls that cannot be replaced.
size_t fwrite(const void *data, size_t size, size_t count, FILE *stream)
{
    return refuses(fileno(stream)) ? 0 : next(&fwrite, "fwrite")(data, size, count, stream);
}

size_t fwrite_unlocked(const void *data, size_t size, size_t count, FILE *stream)
{
    return refuses(fileno(stream))
               ? 0
               : next(&fwrite_unlocked, "fwrite_unlocked")(data, size, count, stream);
}

} // extern "C"
