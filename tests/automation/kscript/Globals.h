// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

#include <oleauto.h>
#include <wrl/client.h>

#include <string>
#include <string_view>
#include <vector>

namespace KestrinProductEditor {

/// What a script has found out, and what it was given.
struct ScriptRun
{
    /// As it is named in messages.
    std::u16string file;
    std::vector<std::u16string> arguments;
    int checks = 0;
    int failures = 0;
};

/// A line on standard output, in UTF-8.
void PrintLine(std::u16string_view text);

/// The content of a text file in UTF-8, a mark at its begin included. Raises error 53 when it cannot be read,
/// 321 when it is not UTF-8.
[[nodiscard]] std::u16string ReadTextFile(std::u16string_view path);

/// The object whose members a script finds as its own:
///
///     Echo text...                    prints the texts, blanks between them
///     Check condition, text           anything but True is a failure, which `text` describes
///     Equal expected, actual, text    the same unless both are equal: numbers by value, whatever their
///     kinds;
///                                     objects when they are the same; all else only with its own kind
///     Arg(n)                          the n-th argument of the script, from 1; "" when there is none
///     ReadText(path)                  a file in UTF-8; a mark at its begin is part of the text
///     WriteText path, text            the text alone, in UTF-8
///     ReadHex(path)                   the bytes of a file as digits 0-9A-F
///
/// `run` must live longer.
[[nodiscard]] Microsoft::WRL::ComPtr<IDispatch> MakeGlobals(ScriptRun& run);

} // namespace KestrinProductEditor
