// SPDX-License-Identifier: GPL-3.0-or-later
//
// Preloaded into a program: counts the changes of the environment and the locale between the
// creation of the thread that calls FcInit() and the return of its join, and writes the number into
// the file that ENVIRONMENT_REPORT names.
#include <atomic>
#include <clocale>
#include <cstdio>
#include <cstdlib>

#include <dlfcn.h>
#include <pthread.h>

namespace {

std::atomic<int> changes{0};
std::atomic<int> changesBefore{-1};
std::atomic<pthread_t> fontThread{};
thread_local int changesAtCreation = -1;

struct Start
{
    void *(*function)(void *);
    void *argument;
    int changes;
};

template <typename Function> Function *next(Function *, const char *name)
{
    return reinterpret_cast<Function *>(dlsym(RTLD_NEXT, name));
}

void *run(void *start)
{
    const Start copy = *static_cast<Start *>(start);
    delete static_cast<Start *>(start);
    changesAtCreation = copy.changes;
    return copy.function(copy.argument);
}

void report(int count)
{
    if (const char *path = std::getenv("ENVIRONMENT_REPORT")) {
        if (FILE *file = std::fopen(path, "w")) {
            std::fprintf(file, "%d\n", count);
            std::fclose(file);
        }
    }
}

} // namespace

extern "C" {

int FcInit()
{
    if (changesAtCreation >= 0) {
        fontThread = pthread_self();
        changesBefore = changesAtCreation;
    }
    return next(&FcInit, "FcInit")();
}

int pthread_create(pthread_t *thread, const pthread_attr_t *attributes, void *(*function)(void *),
                   void *argument)
{
    return next(&pthread_create, "pthread_create")(thread, attributes, &run,
                                                   new Start{function, argument, changes});
}

int pthread_join(pthread_t thread, void **value)
{
    const int result = next(&pthread_join, "pthread_join")(thread, value);
    if (changesBefore >= 0 && pthread_equal(thread, fontThread)) {
        report(changes - changesBefore);
    }
    return result;
}

int setenv(const char *name, const char *value, int overwrite) noexcept
{
    ++changes;
    return next(&setenv, "setenv")(name, value, overwrite);
}

int putenv(char *string) noexcept
{
    ++changes;
    return next(&putenv, "putenv")(string);
}

// Without the variable, it changes nothing.
int unsetenv(const char *name) noexcept
{
    changes += std::getenv(name) != nullptr;
    return next(&unsetenv, "unsetenv")(name);
}

int clearenv() noexcept
{
    ++changes;
    return next(&clearenv, "clearenv")();
}

char *setlocale(int category, const char *locale) noexcept
{
    changes += locale != nullptr;
    return next(&setlocale, "setlocale")(category, locale);
}

} // extern "C"
