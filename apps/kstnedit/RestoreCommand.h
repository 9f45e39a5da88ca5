// SPDX-License-Identifier: MIT
#pragma once

#include "kstnedit/Command.h"

#include <string>

namespace KestrinProductEditor::CommandLine {

class RestoreCommand final : public Command
{
public:
    RestoreCommand();

    void Declare(CLI::App& app) override;
    void Execute(Console& console, EmbeddedHost& host) override;

private:
    std::string m_file;
};

} // namespace KestrinProductEditor::CommandLine
