// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

struct InstanceRequest;
class MainWindow;

/// Hides the window if it shows, otherwise shows it.
void toggle(MainWindow &window);

/// Does in the running instance what a command line asks for.
void carryOut(const InstanceRequest &request, MainWindow &window);
