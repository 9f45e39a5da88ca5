// SPDX-License-Identifier: MIT
#pragma once

#include <KestrinProductEditor/HostComponents.h>

#include <cstddef>
#include <cstdint>
#include <fstream>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace KestrinProductEditor::CommandLine {

/// The embedded host's trace. It writes to a file when it has one, and always remembers what the release of a
/// store cannot raise.
///
/// The file gets one line for each entry (">"), exit ("<") and error ("!"), two blanks deeper for each method
/// that is running; an error's line tells its number and text. The program's name and a blank line begin each
/// run.
class EmbeddedTrace final : public ITrace
{
public:
    /// A trace without a file.
    EmbeddedTrace() = default;

    /// Appends to the file `path` (in the platform's own bytes) from now on. False when it cannot be opened.
    [[nodiscard]] bool Open(const std::string& path);
    /// Ends the writing. False when a line was lost.
    [[nodiscard]] bool Close();

    struct Failure
    {
        std::int32_t number;
        std::string text; ///< UTF-8
    };
    /// The first error inside the release of a store; nothing when all releases went well.
    [[nodiscard]] const std::optional<Failure>& ReleaseFailure() const noexcept { return m_releaseFailure; }

    std::int32_t TraceErrNumber() override;
    void TraceError(std::u16string_view sText) override;
    void TraceEnter(std::u16string_view sContext) override;
    void TraceExit(std::u16string_view sContext) override;

private:
    void PrvWrite(char mark, std::u16string_view context, std::string_view rest);

    std::ofstream m_file;
    std::vector<std::u16string_view> m_running; // the texts live as long as the process
    std::optional<Failure> m_releaseFailure;
};

} // namespace KestrinProductEditor::CommandLine
