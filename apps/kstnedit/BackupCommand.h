// SPDX-License-Identifier: MIT
#pragma once

#include "kstnedit/Command.h"

#include <string>

namespace KestrinProductEditor::CommandLine {

class BackupCommand final : public Command
{
public:
    BackupCommand();

    void Declare(CLI::App& app) override;
    void Execute(Console& console, EmbeddedHost& host) override;

private:
    std::string m_file;
};

} // namespace KestrinProductEditor::CommandLine
