// SPDX-License-Identifier: MIT
#pragma once

#include "platform/CodePage.h"

#include <cstddef>
#include <memory>
#include <ostream>
#include <string>
#include <string_view>

namespace KestrinProductEditor::CommandLine {

/// Where a program writes to. The streams outlive it.
struct ConsoleStreams
{
    std::ostream& out;
    std::ostream& err;
    std::size_t outColumns = 0; ///< the width of the terminal that `out` is; 0: it is none
    std::size_t errColumns = 0;
    /// The form of the arguments and of everything that is written.
    std::shared_ptr<const CodePage> codePage;
};

/// The program's standard streams. Texts are UTF-8 on this side.
///
/// A failure to write results is an error (OutputFailure or std::ios_base::failure); one to write messages is
/// not: there would be nobody to tell.
class Console
{
public:
    explicit Console(const ConsoleStreams& streams);

    /// Writes a result, as it is.
    void Write(std::string_view text);
    void WriteLine(std::string_view text);
    void FlushOutput() { m_out.flush(); }

    /// Writes a message on a line of its own: with the program's name before it, or as it is. What is
    /// invisible in it is made visible.
    void Say(std::string_view message);
    void SayMore(std::string_view text);
    /// Writes bytes that are no text of ours among the messages.
    void WriteMessageBytes(std::string_view bytes);

    [[nodiscard]] std::size_t OutputColumns() const noexcept { return m_outColumns; }
    [[nodiscard]] std::size_t MessageColumns() const noexcept { return m_errColumns; }
    [[nodiscard]] const CodePage& TextCodePage() const noexcept { return *m_codePage; }

    /// An argument as text.
    [[nodiscard]] std::string ArgumentText(std::string_view argument) const;
    /// The same where it is not given to the table but shown.
    [[nodiscard]] std::string Quoted(std::string_view argument) const;

private:
    std::ostream m_out;
    std::ostream& m_err;
    std::size_t m_outColumns;
    std::size_t m_errColumns;
    std::shared_ptr<const CodePage> m_codePage;
    std::string m_scratch;
};

} // namespace KestrinProductEditor::CommandLine
