// SPDX-License-Identifier: MIT
#pragma once

#include "kstnedit/Command.h"

#include <string>

namespace CLI {
class Option;
}

namespace KestrinProductEditor::CommandLine {

class EditCommand final : public Command
{
public:
    EditCommand();

    void Declare(CLI::App& app) override;
    void Execute(Console& console, EmbeddedHost& host) override;

private:
    /// The file to import, as if it had been browsed to; empty for none. Throws what keeps it from being
    /// read.
    [[nodiscard]] std::u16string PrvImportFile() const;

    CLI::Option* m_importOption = nullptr;
    std::string m_import;
};

} // namespace KestrinProductEditor::CommandLine
