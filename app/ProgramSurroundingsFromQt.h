#pragma once

#include "taskdef/InstallLayout.h"

namespace morlevant {

// The surroundings of this run of either program, from the environment and Qt; call it once
// the application object exists.
ProgramSurroundings programSurroundingsFromQt();

} // namespace morlevant
