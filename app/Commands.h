#pragma once

#include "app/MainWindow.h"

namespace belvor {

/// Runs menu command `id`; false for a number that is none.
bool runCommand(MainWindow& window, UINT id);

}   // namespace belvor
