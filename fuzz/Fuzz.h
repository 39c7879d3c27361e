// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>

#include <cstddef>
#include <cstdint>

/// What the fuzzers have in common. Linking Fuzz.cpp also silences the log of the program, and
/// gives each process a home of its own.
namespace fuzz {

/// Ends the process, which libFuzzer reports with the input, unless the condition holds.
void check(bool holds, const char *what);

inline QByteArray bytesOf(const std::uint8_t *data, std::size_t size)
{
    return {reinterpret_cast<const char *>(data), static_cast<qsizetype>(size)};
}

/// The input as UTF-8; what is invalid becomes U+FFFD.
inline QString textOf(const std::uint8_t *data, std::size_t size)
{
    return QString::fromUtf8(bytesOf(data, size));
}

/// Creates a QApplication that needs no screen, for LLVMFuzzerInitialize().
void startApplication(int *argc, char ***argv);

/// Replaces a file with this content. The path is absolute.
void writeFile(const QString &path, const QByteArray &content);

} // namespace fuzz
