// SPDX-License-Identifier: MIT
#include "automation/windows/SeenWindow.h"

#include "automation/windows/Patience.h"

#include "platform/Text.h"
#include "platform/ui/Mnemonics.h"
#include "platform/windows/WideText.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>

namespace KestrinProductEditor {

namespace {

// To a window that does not answer: longer than any machine needs, milliseconds.
constexpr UINT kLongest = 30'000;

[[nodiscard]] LRESULT Ask(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    DWORD_PTR answer = 0;
    SendMessageTimeoutW(window, message, wParam, lParam, SMTO_NORMAL, kLongest, &answer);
    return static_cast<LRESULT>(answer);
}

[[nodiscard]] bool IsLabelOrButton(const SeenWindow& window)
{
    const std::u16string name = window.Class();
    return name == u"Static" || name == u"Button";
}

/// The identifier of the item with that caption; 0 for none.
[[nodiscard]] UINT ItemOf(HMENU menu, std::u16string_view caption)
{
    const int count = GetMenuItemCount(menu);
    for (int at = 0; at < count; ++at) {
        if (HMENU const inner = GetSubMenu(menu, at)) {
            if (const UINT found = ItemOf(inner, caption))
                return found;
            continue;
        }
        constexpr int kLongestCaption = 256;
        std::array<wchar_t, kLongestCaption> text = {};
        GetMenuStringW(menu, static_cast<UINT>(at), text.data(), kLongestCaption, MF_BYPOSITION);
        const std::u16string shown = ShownCaption(FromWide(text.data()));
        // Its key follows.
        if (std::u16string_view(shown).substr(0, shown.find(u'\t')) == caption)
            return GetMenuItemID(menu, at);
    }
    return 0;
}

BOOL CALLBACK Collect(HWND window, LPARAM windows)
{
    if (IsWindowVisible(window))
        reinterpret_cast<std::vector<SeenWindow>*>(windows)->emplace_back(window);
    return TRUE;
}

} // namespace

std::u16string SeenWindow::Class() const
{
    constexpr int kLongestName = 256;
    std::array<wchar_t, kLongestName> name = {};
    const int length = GetClassNameW(m_window, name.data(), kLongestName);
    return FromWide({name.data(), static_cast<std::size_t>(length)});
}

std::u16string SeenWindow::Text() const
{
    std::u16string text(static_cast<std::size_t>(Ask(m_window, WM_GETTEXTLENGTH, 0, 0)) + 1, u'\0');
    const LRESULT length =
        Ask(m_window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(Wide(text.data())));
    text.resize(static_cast<std::size_t>(length));
    return IsLabelOrButton(*this) ? ShownCaption(text) : text;
}

std::vector<SeenWindow> SeenWindow::Children() const
{
    std::vector<SeenWindow> children;
    for (HWND child = GetWindow(m_window, GW_CHILD); child != nullptr; child = GetWindow(child, GW_HWNDNEXT))
        Collect(child, reinterpret_cast<LPARAM>(&children));
    return children;
}

bool SeenWindow::Says(std::u16string_view text) const
{
    const std::vector<SeenWindow> children = Children();
    return std::any_of(children.begin(), children.end(), [text](const SeenWindow& child) {
        return IsLabelOrButton(child) && child.Text() == text;
    });
}

void SeenWindow::AwaitText(std::u16string_view text) const
{
    Await("the text " + ToUtf8(text), [&] { return Says(text); });
}

void SeenWindow::AwaitEnd() const
{
    Await("the end of " + ToUtf8(Class()), [this] { return !IsShown(); });
}

SeenWindow SeenWindow::Child(std::u16string_view className) const
{
    return *Await("a control of class " + ToUtf8(className), [&]() -> std::optional<SeenWindow> {
        for (const SeenWindow& child : Children()) {
            if (child.Class() == className)
                return child;
        }
        return std::nullopt;
    });
}

SeenWindow SeenWindow::Button(std::u16string_view caption) const
{
    return *Await("the button " + ToUtf8(caption), [&]() -> std::optional<SeenWindow> {
        for (const SeenWindow& child : Children()) {
            if (child.Class() == u"Button" && child.Text() == caption)
                return child;
        }
        return std::nullopt;
    });
}

SeenWindow SeenWindow::Box(std::u16string_view label) const
{
    return *Await("the box " + ToUtf8(label), [&]() -> std::optional<SeenWindow> {
        const std::vector<SeenWindow> children = Children();
        for (std::size_t at = 1; at < children.size(); ++at) {
            const SeenWindow& before = children[at - 1];
            if (children[at].Class() == u"Edit" && before.Class() == u"Static" && before.Text() == label)
                return children[at];
        }
        return std::nullopt;
    });
}

void SeenWindow::Press() const
{
    Await("the button " + ToUtf8(Text()) + " to be clicked",
          [this] { return IsOpen() && IsWindowEnabled(GetAncestor(m_window, GA_ROOT)) != FALSE; });
    PostMessageW(m_window, BM_CLICK, 0, 0);
}

void SeenWindow::ChooseInMenu(std::u16string_view caption) const
{
    const UINT item =
        Await("the menu's item " + ToUtf8(caption), [&] { return ItemOf(GetMenu(m_window), caption); });
    PostMessageW(m_window, WM_COMMAND, item, 0);
}

void SeenWindow::PressKey(UINT key) const
{
    constexpr LPARAM kReleased = 0xC0000000;
    PostMessageW(m_window, WM_KEYDOWN, key, 1);
    PostMessageW(m_window, WM_KEYUP, key, 1 | kReleased);
}

void SeenWindow::Click(POINT place) const
{
    const LPARAM at = MAKELPARAM(static_cast<WORD>(place.x), static_cast<WORD>(place.y));
    PostMessageW(m_window, WM_LBUTTONDOWN, MK_LBUTTON, at);
    PostMessageW(m_window, WM_LBUTTONUP, 0, at);
}

std::vector<SeenWindow> WindowsOnTop(DWORD thread)
{
    std::vector<SeenWindow> windows;
    if (thread != 0)
        EnumThreadWindows(thread, &Collect, reinterpret_cast<LPARAM>(&windows));
    else
        EnumWindows(&Collect, reinterpret_cast<LPARAM>(&windows));
    return windows;
}

} // namespace KestrinProductEditor
