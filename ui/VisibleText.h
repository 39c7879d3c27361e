// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

/// Returns the text with visible marks in place of characters that would change its layout or hide
/// a part of it: "⏎" for a line break and "⟨U+202E⟩" for another control character or for one that
/// overrides, embeds or isolates a direction. For texts from elsewhere, such as names of files:
/// "invoice⟨U+202E⟩fdp.exe" must not look like a PDF file. Other texts are returned unchanged.
QString visibleText(const QString &text);
