// SPDX-License-Identifier: MIT
#pragma once

#include "kstnedit/Command.h"

#include <string>

namespace KestrinProductEditor::CommandLine {

class ExportCommand final : public Command
{
public:
    ExportCommand();

    void Declare(CLI::App& app) override;
    void Execute(Console& console, EmbeddedHost& host) override;

private:
    std::string m_file;
};

} // namespace KestrinProductEditor::CommandLine
