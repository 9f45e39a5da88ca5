// SPDX-License-Identifier: MIT
#pragma once

#include "kstnedit/Command.h"

#include <string>
#include <vector>

namespace KestrinProductEditor::CommandLine {

class DeleteCommand final : public Command
{
public:
    DeleteCommand();

    void Declare(CLI::App& app) override;
    void Execute(Console& console, EmbeddedHost& host) override;

private:
    std::vector<std::string> m_rowIDs;
};

} // namespace KestrinProductEditor::CommandLine
