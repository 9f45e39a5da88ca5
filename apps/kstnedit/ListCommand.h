// SPDX-License-Identifier: MIT
#pragma once

#include "kstnedit/Command.h"
#include "kstnedit/ProductWriter.h"

#include <string>

namespace KestrinProductEditor::CommandLine {

class ListCommand final : public Command
{
public:
    ListCommand();

    void Declare(CLI::App& app) override;
    void Execute(Console& console, EmbeddedHost& host) override;

private:
    std::string m_offset = "0";
    std::string m_limit = "2147483647";
    FormatOption m_format;
};

} // namespace KestrinProductEditor::CommandLine
