// SPDX-License-Identifier: GPL-3.0-or-later
#include "update/FileSizeLimit.h"

FileSizeLimit::FileSizeLimit(qint64) {}

FileSizeLimit::~FileSizeLimit() = default;
