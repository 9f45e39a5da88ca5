// SPDX-License-Identifier: MIT
#pragma once

#include "kstnedit/Command.h"
#include "kstnedit/ProductOptions.h"

namespace KestrinProductEditor::CommandLine {

class AddCommand final : public Command
{
public:
    AddCommand();

    void Declare(CLI::App& app) override;
    void Execute(Console& console, EmbeddedHost& host) override;

private:
    ProductOptions m_product;
};

} // namespace KestrinProductEditor::CommandLine
