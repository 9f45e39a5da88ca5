// SPDX-License-Identifier: MIT
#pragma once

#include "kstnedit/Command.h"
#include "kstnedit/ProductOptions.h"

#include <string>

namespace KestrinProductEditor::CommandLine {

class SetCommand final : public Command
{
public:
    SetCommand();

    void Declare(CLI::App& app) override;
    void Execute(Console& console, EmbeddedHost& host) override;

private:
    std::string m_rowID;
    ProductOptions m_product;
};

} // namespace KestrinProductEditor::CommandLine
