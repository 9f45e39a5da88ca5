// SPDX-License-Identifier: MIT
#pragma once

#include "kstnedit/Command.h"
#include "kstnedit/ProductWriter.h"

#include <string>

namespace KestrinProductEditor::CommandLine {

class ShowCommand final : public Command
{
public:
    ShowCommand();

    void Declare(CLI::App& app) override;
    void Execute(Console& console, EmbeddedHost& host) override;

private:
    std::string m_rowID;
    FormatOption m_format;
};

} // namespace KestrinProductEditor::CommandLine
