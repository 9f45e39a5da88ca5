// SPDX-License-Identifier: MIT
#include "kstnedit/CommandTable.h"

#include "kstnedit/AddCommand.h"
#include "kstnedit/BackupCommand.h"
#include "kstnedit/CheckCommand.h"
#include "kstnedit/DeleteCommand.h"
#include "kstnedit/EditCommand.h"
#include "kstnedit/ExportCommand.h"
#include "kstnedit/FindCommand.h"
#include "kstnedit/ImportCommand.h"
#include "kstnedit/ListCommand.h"
#include "kstnedit/RestoreCommand.h"
#include "kstnedit/SetCommand.h"
#include "kstnedit/ShowCommand.h"

namespace KestrinProductEditor::CommandLine {

std::vector<std::unique_ptr<Command>> MakeCommands()
{
    std::vector<std::unique_ptr<Command>> commands;
    commands.push_back(std::make_unique<EditCommand>());
    commands.push_back(std::make_unique<ListCommand>());
    commands.push_back(std::make_unique<FindCommand>());
    commands.push_back(std::make_unique<ShowCommand>());
    commands.push_back(std::make_unique<AddCommand>());
    commands.push_back(std::make_unique<SetCommand>());
    commands.push_back(std::make_unique<DeleteCommand>());
    commands.push_back(std::make_unique<ImportCommand>());
    commands.push_back(std::make_unique<ExportCommand>());
    commands.push_back(std::make_unique<BackupCommand>());
    commands.push_back(std::make_unique<RestoreCommand>());
    commands.push_back(std::make_unique<CheckCommand>());
    return commands;
}

} // namespace KestrinProductEditor::CommandLine
