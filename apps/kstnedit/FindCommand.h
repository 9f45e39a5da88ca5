// SPDX-License-Identifier: MIT
#pragma once

#include "kstnedit/Command.h"
#include "kstnedit/ProductWriter.h"

#include <string>

namespace KestrinProductEditor::CommandLine {

class FindCommand final : public Command
{
public:
    FindCommand();

    void Declare(CLI::App& app) override;
    void Execute(Console& console, EmbeddedHost& host) override;

private:
    std::string m_text;
    std::string m_by = "name";
    FormatOption m_format;
};

} // namespace KestrinProductEditor::CommandLine
