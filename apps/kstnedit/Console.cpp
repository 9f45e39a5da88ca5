// SPDX-License-Identifier: MIT
#include "kstnedit/Console.h"

#include "kstnedit/DisplayText.h"

namespace KestrinProductEditor::CommandLine {

Console::Console(const ConsoleStreams& streams)
    : m_out(streams.out.rdbuf()), m_err(streams.err), m_outColumns(streams.outColumns),
      m_errColumns(streams.errColumns), m_codePage(streams.codePage)
{
    m_out.exceptions(std::ios_base::badbit | std::ios_base::failbit);
}

void Console::Write(std::string_view text)
{
    m_out << m_codePage->Encode(text, m_scratch);
}

void Console::WriteLine(std::string_view text)
{
    Write(text);
    m_out << '\n';
}

void Console::Say(std::string_view message)
{
    m_err << "kstnedit: ";
    SayMore(message);
}

void Console::SayMore(std::string_view text)
{
    m_err << m_codePage->Encode(Visible(text), m_scratch) << '\n' << std::flush;
}

void Console::WriteMessageBytes(std::string_view bytes)
{
    m_err << bytes << std::flush;
}

std::string Console::ArgumentText(std::string_view argument) const
{
    std::string scratch;
    return std::string(m_codePage->Decode(argument, scratch));
}

std::string Console::Quoted(std::string_view argument) const
{
    return "'" + ArgumentText(argument) + "'";
}

} // namespace KestrinProductEditor::CommandLine
