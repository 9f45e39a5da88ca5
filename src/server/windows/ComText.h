// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

#include <oleauto.h>

#include <new>
#include <string>
#include <string_view>
#include <utility>

namespace KestrinProductEditor {

/// A text of the system's automation, released at the end of its scope.
class Bstr
{
public:
    Bstr() = default;
    /// Raises std::bad_alloc.
    explicit Bstr(std::u16string_view text)
        : m_text(SysAllocStringLen(reinterpret_cast<const OLECHAR*>(text.data()),
                                   static_cast<UINT>(text.size())))
    {
        if (m_text == nullptr)
            throw std::bad_alloc();
    }
    Bstr(Bstr&& other) noexcept : m_text(std::exchange(other.m_text, nullptr)) {}
    Bstr& operator=(Bstr&& other) noexcept
    {
        std::swap(m_text, other.m_text);
        return *this;
    }
    ~Bstr() { SysFreeString(m_text); }

    [[nodiscard]] BSTR Get() const noexcept { return m_text; }
    /// For a call that gives out a text.
    [[nodiscard]] BSTR* Out() noexcept { return &m_text; }
    /// Leaves it to the caller.
    [[nodiscard]] BSTR Detach() noexcept { return std::exchange(m_text, nullptr); }

private:
    BSTR m_text = nullptr;
};

/// A null BSTR is the empty text.
[[nodiscard]] inline std::u16string_view TextOf(BSTR text) noexcept
{
    return text == nullptr ? std::u16string_view()
                           : std::u16string_view(reinterpret_cast<const char16_t*>(text), SysStringLen(text));
}

} // namespace KestrinProductEditor
