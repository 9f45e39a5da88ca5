// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string>
#include <string_view>

namespace KestrinProductEditor {

/// The system's 8-bit code page: the form that text has in CSV files and in the narrow columns of a catalogue
/// file.
///
/// Every code page keeps ASCII as it is. Inside the component text is UTF-8 (Text.h). Both directions work on
/// one value at a time, a whole cell or column text, and never fail. An object belongs to one thread at a
/// time.
class CodePage
{
public:
    virtual ~CodePage() = default;

    /// The code page of this process: KSTNEDIT_CODEPAGE when it is set ("windows-1252", "1252", "cp949",
    /// "utf-8"), else the locale's character set on Linux (plain "C" counts as UTF-8, as does one that the
    /// system does not know), the ANSI code page on Windows. An empty KSTNEDIT_CODEPAGE is not set. Asked
    /// anew at each call. Error 5 with a text that names the value when KSTNEDIT_CODEPAGE is not known.
    [[nodiscard]] static std::shared_ptr<const CodePage> System();
    /// The code page of that name; null when there is none.
    [[nodiscard]] static std::shared_ptr<const CodePage> Named(std::string_view name);

    /// Whether text in this code page is UTF-8.
    [[nodiscard]] virtual bool IsUtf8() const noexcept = 0;

    /// The UTF-8 text of `bytes`. The answer is `bytes` itself where nothing has to change, else it lies in
    /// `scratch`. A value that is not valid in the code page is read as windows-1252.
    [[nodiscard]] virtual std::string_view Decode(std::string_view bytes, std::string& scratch) const = 0;

    /// The bytes of a UTF-8 text, in the same manner. What the code page cannot hold becomes "?" (a lone
    /// surrogate, in UTF-8, U+FFFD).
    [[nodiscard]] virtual std::string_view Encode(std::string_view text, std::string& scratch) const = 0;

    /// What `text` reads as after it was encoded and decoded again.
    [[nodiscard]] std::string_view RoundTrip(std::string_view text, std::string& scratch) const;
};

/// The UTF-8 of windows-1252 bytes. Its five undefined bytes are the control characters of the same number.
void AppendWindows1252AsUtf8(std::string_view bytes, std::string& out);

} // namespace KestrinProductEditor
