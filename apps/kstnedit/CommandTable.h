// SPDX-License-Identifier: MIT
#pragma once

#include "kstnedit/Command.h"

#include <memory>
#include <vector>

namespace KestrinProductEditor::CommandLine {

/// All commands of the program, made anew, in the order of its help.
[[nodiscard]] std::vector<std::unique_ptr<Command>> MakeCommands();

} // namespace KestrinProductEditor::CommandLine
