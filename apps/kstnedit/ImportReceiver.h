// SPDX-License-Identifier: MIT
#pragma once

#include "exchange/csv/IRejectedLines.h"
#include "kstnedit/Console.h"
#include "kstnedit/ProgressBar.h"
#include "platform/CodePage.h"
#include "platform/Files.h"

#include <KestrinProductEditor/AutomationError.h>
#include <KestrinProductEditor/IProcessProgress.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace KestrinProductEditor::CommandLine {

/// Hears of the progress of an import and of the lines that it rejects: shows the one, keeps the first few of
/// the others, and writes all of them to a file when there is one.
class ImportReceiver final : public IProcessProgress, public IRejectedLines
{
public:
    /// `rejects` may be null.
    ImportReceiver(Console& console, std::unique_ptr<IWriteStream> rejects);

    void Progress(const Variant& vParams) override;
    void LineRejected(std::uint64_t lineNumber, std::string_view reason, std::string_view line) override;

    /// Takes the bar away and closes the file. Throws what its writing ended with: the store hears of no
    /// failure in a receiver.
    void End();

    /// Prints the rejected lines that were kept, and how many there are more.
    void SayRejected(Console& console) const;

private:
    void PrvFlush();

    struct Rejected
    {
        std::uint64_t line;
        std::string reason;
    };

    ProgressBar m_bar;
    std::unique_ptr<IWriteStream> m_rejects;
    std::shared_ptr<const CodePage> m_codePage;
    std::string m_unwritten;
    std::optional<AutomationError> m_failure;
    std::vector<Rejected> m_first;
    std::uint64_t m_rejectedCount = 0;
};

} // namespace KestrinProductEditor::CommandLine
