// SPDX-License-Identifier: MIT
#include "kstnedit/ImportReceiver.h"

#include "kstnedit/CsvText.h"
#include "kstnedit/DisplayText.h"

namespace KestrinProductEditor::CommandLine {

ImportReceiver::ImportReceiver(Console& console, std::unique_ptr<IWriteStream> rejects)
    : m_bar(console), m_rejects(std::move(rejects)), m_codePage(CodePage::System())
{
    if (m_rejects)
        m_unwritten = "Line,Reason,Text\n";
}

void ImportReceiver::Progress(const Variant& vParams)
{
    m_bar.Show(vParams.At(0).Double());
}

void ImportReceiver::LineRejected(std::uint64_t lineNumber, std::string_view reason, std::string_view line)
{
    constexpr std::size_t kKept = 5;
    constexpr std::size_t kCollected = std::size_t{64} * 1024;
    ++m_rejectedCount;
    if (m_first.size() < kKept)
        m_first.push_back({lineNumber, std::string(reason)});
    if (!m_rejects || m_failure)
        return;
    std::string values;
    std::string scratch;
    AppendCsvValue(std::to_string(lineNumber), values);
    AppendCsvValue(m_codePage->Encode(reason, scratch), values);
    AppendCsvValue(line, values);
    m_unwritten += values;
    m_unwritten += '\n';
    if (m_unwritten.size() >= kCollected)
        PrvFlush();
}

void ImportReceiver::End()
{
    m_bar.Clear();
    if (m_rejects && !m_failure)
        PrvFlush();
    if (m_failure)
        throw *m_failure;
    if (m_rejects)
        m_rejects->Close();
}

void ImportReceiver::SayRejected(Console& console) const
{
    constexpr std::size_t kReasonColumns = 160;
    for (const Rejected& rejected : m_first)
        console.SayMore("  line " + std::to_string(rejected.line) + ": " +
                        CutToWidth(Visible(rejected.reason), kReasonColumns, "..."));
    if (m_rejectedCount > m_first.size())
        console.SayMore("  and " + Counted(m_rejectedCount - m_first.size(), "line") + " more");
}

void ImportReceiver::PrvFlush()
{
    try {
        m_rejects->Write(m_unwritten);
    } catch (const AutomationError& error) {
        m_failure = error;
    }
    m_unwritten.clear();
}

} // namespace KestrinProductEditor::CommandLine
