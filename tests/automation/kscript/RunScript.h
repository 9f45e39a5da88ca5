// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

#include <oleauto.h>

#include <string>

namespace KestrinProductEditor {

enum class ScriptEnd
{
    Well,
    /// In a fault of its text or an error that it did not catch.
    InError,
};

/// Runs `text` to its end in the engine of that name ("VBScript", "JScript"), with the members of `globals`
/// as its own, and releases what it held. An error is printed as "file(line): number: source: description".
/// Raises an AutomationError when the engine cannot be used.
[[nodiscard]] ScriptEnd RunScript(const wchar_t* engineName, const std::u16string& file,
                                  const std::u16string& text, IDispatch* globals);

} // namespace KestrinProductEditor
