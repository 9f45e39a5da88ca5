// SPDX-License-Identifier: MIT
#include "kstnedit/EmbeddedTrace.h"

#include "kstnedit/DisplayText.h"
#include "platform/Text.h"

#include <algorithm>

namespace KestrinProductEditor::CommandLine {

namespace {

constexpr std::u16string_view kReleaseContext = u"KestrinProductMgr.ProductLkpMgr::Class_Terminate";

} // namespace

bool EmbeddedTrace::Open(const std::string& path)
{
    m_file.open(path, std::ios::app | std::ios::binary);
    m_file << "\nkstnedit\n";
    return m_file.is_open();
}

bool EmbeddedTrace::Close()
{
    if (!m_file.is_open())
        return true;
    m_file.close();
    return m_file.good();
}

std::int32_t EmbeddedTrace::TraceErrNumber()
{
    const AutomationError* const pending = PendingError();
    return pending != nullptr ? pending->Number() : static_cast<std::int32_t>(kErrComponent);
}

void EmbeddedTrace::TraceError(std::u16string_view /*sText*/)
{
    const AutomationError* const pending = PendingError();
    if (pending == nullptr)
        return;
    if (!m_releaseFailure &&
        std::find(m_running.begin(), m_running.end(), kReleaseContext) != m_running.end())
        m_releaseFailure = {pending->Number(), pending->what()};

    // A method whose handler runs does not exit any more.
    std::u16string_view context;
    if (!m_running.empty()) {
        context = m_running.back();
        m_running.pop_back();
    }
    PrvWrite('!', context, " " + std::to_string(pending->Number()) + " " + Visible(pending->what()));
    m_file.flush();
}

void EmbeddedTrace::TraceEnter(std::u16string_view sContext)
{
    PrvWrite('>', sContext, {});
    m_running.push_back(sContext);
}

void EmbeddedTrace::TraceExit(std::u16string_view sContext)
{
    if (!m_running.empty())
        m_running.pop_back();
    PrvWrite('<', sContext, {});
}

void EmbeddedTrace::PrvWrite(char mark, std::u16string_view context, std::string_view rest)
{
    if (m_file.is_open())
        m_file << std::string(2 * m_running.size(), ' ') << mark << ' ' << ToUtf8(context) << rest << '\n';
}

} // namespace KestrinProductEditor::CommandLine
