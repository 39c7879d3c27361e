// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

class QString;

/// Makes the folder the home, the data and the temporary folder of this process, which then sees
/// nothing of the user's, and has it paint without a display. To be called before the application
/// object is made.
void useHome(const QString &home);
