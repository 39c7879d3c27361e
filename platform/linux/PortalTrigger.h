// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

class QKeySequence;
class QString;

namespace platform {

/// The first combination of a sequence in the form of the freedesktop.org "Shortcuts" document,
/// such as "CTRL+ALT+space". Empty if that form has no name for the key.
QString portalTrigger(const QKeySequence &sequence);

} // namespace platform
