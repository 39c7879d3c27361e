// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

class QString;

/// Points home, data and temporary folders of this process to the given folder, so that it does not
/// see the user's files, and selects the offscreen platform. Call before the application object is
/// created.
void useHome(const QString &home);
