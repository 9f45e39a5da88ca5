// SPDX-License-Identifier: MIT
#pragma once

#include "kstnedit/Command.h"
#include "kstnedit/ImportFile.h"
#include "kstnedit/ImportMapping.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace CLI {
class Option;
}

namespace KestrinProductEditor::CommandLine {

class ImportReceiver;

class ImportCommand final : public Command
{
public:
    ImportCommand();

    void Declare(CLI::App& app) override;
    void Execute(Console& console, EmbeddedHost& host) override;

private:
    struct Counts
    {
        std::int64_t read = 0;
        std::int64_t imported = 0;
        std::int64_t rejected = 0;
        std::int64_t withoutName = 0;
    };

    void PrvCheckArguments(const EmbeddedHost& host, std::u16string_view path) const;
    [[nodiscard]] ImportMapping PrvMapping(Console& console, std::u16string_view path);
    void PrvSayMapping(Console& console, const ImportMapping& mapping) const;
    void PrvSayDoubts(Console& console, std::u16string_view path, const ImportMapping& mapping) const;
    [[nodiscard]] std::string PrvCountsText(const Counts& counts) const;

    std::string m_file;
    std::string m_map;
    bool m_noTitles = false;
    bool m_replace = false;
    std::string m_rejects;
    const CLI::Option* m_mapOption = nullptr;
    const CLI::Option* m_rejectsOption = nullptr;
    bool m_dryRun = false;

    std::vector<std::string> m_titles;
};

} // namespace KestrinProductEditor::CommandLine
