// SPDX-License-Identifier: MIT
#pragma once

#include "platform/CodePage.h"

#include <memory>
#include <string_view>

namespace KestrinProductEditor {

// What CodePage is made of, for its two halves only: CodePage.cpp and the platform's own file.

/// The platform's code page of that name; null when it has none that keeps ASCII and has no shift states.
/// UTF-8 and windows-1252 are never asked for.
[[nodiscard]] std::shared_ptr<const CodePage> PlatformCodePage(std::string_view name);

/// The code page that KSTNEDIT_CODEPAGE names; error 5 when there is none of that name.
[[nodiscard]] std::shared_ptr<const CodePage> CodePageOfSetting(std::string_view value);

[[nodiscard]] std::shared_ptr<const CodePage> Utf8CodePage();

} // namespace KestrinProductEditor
