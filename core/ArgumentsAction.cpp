// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/ArgumentsAction.h"

ArgumentsAction::~ArgumentsAction() = default;
