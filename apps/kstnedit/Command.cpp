// SPDX-License-Identifier: MIT
#include "kstnedit/Command.h"

namespace KestrinProductEditor::CommandLine {

Command::~Command() = default;

} // namespace KestrinProductEditor::CommandLine
