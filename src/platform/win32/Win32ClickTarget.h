// SPDX-License-Identifier: MIT
#pragma once

#include "platform/ui/Mnemonics.h"
#include "platform/win32/Win32Control.h"
#include "platform/win32/Win32Mnemonics.h"

#include <windows.h>

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace KestrinProductEditor {

/// Whether the user can act on a window: it and all that it lies in is shown and enabled.
[[nodiscard]] bool IsOpenToUser(HWND window) noexcept;

/// Listens to a BUTTON without BS_NOTIFY, for which the second half of a double click is a click: `clicked`
/// is called whenever it was clicked, with a key or by another program too.
class Win32ClickListener
{
public:
    Win32ClickListener(HWND button, std::function<void()> clicked);
    Win32ClickListener(const Win32ClickListener&) = delete;
    Win32ClickListener& operator=(const Win32ClickListener&) = delete;
    ~Win32ClickListener();

private:
    static LRESULT CALLBACK PrvProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR id,
                                         DWORD_PTR data);

    HWND m_button;
    std::function<void()> m_clicked;
};

/// What buttons and check boxes have in common: a caption with a mnemonic, and clicks.
template<class Interface>
class Win32ClickTarget : public Win32Control<Interface>
{
public:
    Win32ClickTarget(HWND button, Win32Focus& focus, Win32Mnemonics& mnemonics)
        : Win32Control<Interface>(button, button, focus), m_mnemonics(mnemonics),
          m_bearer(mnemonics.Add(Win32Mnemonics::Rank::Button, Win32Mnemonics::In(button))),
          m_listener(button, [this] { PrvClicked(); })
    {
    }

    void SetCaption(std::u16string_view caption) final
    {
        m_caption = caption;
        m_mnemonics.SetCaption(m_bearer, ShownCaption(caption));
    }
    [[nodiscard]] std::u16string Caption() const final { return m_caption; }

protected:
    /// The window was clicked.
    virtual void PrvClicked() = 0;
    /// False when a handler has ended the control meanwhile.
    [[nodiscard]] bool PrvTakeFocus()
    {
        const std::weak_ptr<const bool> isAlive = m_isAlive;
        this->Focus().Set(*this);
        return !isAlive.expired();
    }

private:
    Win32Mnemonics& m_mnemonics;
    std::size_t m_bearer;
    std::u16string m_caption;
    std::shared_ptr<const bool> m_isAlive = std::make_shared<const bool>(true);
    Win32ClickListener m_listener;
};

} // namespace KestrinProductEditor
