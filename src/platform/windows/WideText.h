// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

namespace KestrinProductEditor {

static_assert(sizeof(wchar_t) == sizeof(char16_t), "a wide character of this system is a UTF-16 unit");

[[nodiscard]] inline const wchar_t* Wide(const char16_t* text) noexcept
{
    return reinterpret_cast<const wchar_t*>(text);
}

[[nodiscard]] inline wchar_t* Wide(char16_t* text) noexcept
{
    return reinterpret_cast<wchar_t*>(text);
}

[[nodiscard]] inline std::u16string FromWide(std::wstring_view text)
{
    return {reinterpret_cast<const char16_t*>(text.data()), text.size()};
}

} // namespace KestrinProductEditor
