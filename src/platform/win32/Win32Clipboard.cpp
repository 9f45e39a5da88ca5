// SPDX-License-Identifier: MIT
#include "platform/win32/Win32Clipboard.h"

#include "platform/windows/WideText.h"

#include <algorithm>

namespace KestrinProductEditor::Win32Clipboard {

namespace {

class Opened
{
public:
    explicit Opened(HWND owner)
    {
        // Programs that watch the clipboard open it for a moment after each change.
        constexpr int kTries = 10;
        constexpr DWORD kPause = 5; // milliseconds
        for (int tries = 0; !m_isOpen && tries < kTries; ++tries) {
            if (tries > 0)
                Sleep(kPause);
            m_isOpen = OpenClipboard(owner) != 0;
        }
    }
    Opened(const Opened&) = delete;
    Opened& operator=(const Opened&) = delete;
    ~Opened()
    {
        if (m_isOpen)
            CloseClipboard();
    }

    [[nodiscard]] bool IsOpen() const { return m_isOpen; }

private:
    bool m_isOpen = false;
};

/// The inside of a block of memory that goes from program to program; null when it has none.
class Locked
{
public:
    explicit Locked(HGLOBAL block) : m_block(block), m_inside(static_cast<char16_t*>(GlobalLock(block))) {}
    Locked(const Locked&) = delete;
    Locked& operator=(const Locked&) = delete;
    ~Locked()
    {
        if (m_inside != nullptr)
            GlobalUnlock(m_block);
    }

    [[nodiscard]] char16_t* Units() const { return m_inside; }
    /// How many there are room for.
    [[nodiscard]] std::size_t Count() const { return GlobalSize(m_block) / sizeof(char16_t); }

private:
    HGLOBAL m_block;
    char16_t* m_inside;
};

/// With the NUL that ends it; null without memory.
[[nodiscard]] HGLOBAL MakeBlock(std::u16string_view text)
{
    const HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE, (text.size() + 1) * sizeof(char16_t));
    if (block == nullptr)
        return nullptr;
    const Locked inside(block);
    if (inside.Units() == nullptr) {
        GlobalFree(block);
        return nullptr;
    }
    *std::copy(text.begin(), text.end(), inside.Units()) = u'\0';
    return block;
}

} // namespace

bool PutText(HWND owner, std::u16string_view text)
{
    const HGLOBAL block = MakeBlock(text);
    if (block == nullptr)
        return false;
    const Opened clipboard(owner);
    // The system owns the block from then on.
    if (clipboard.IsOpen() && EmptyClipboard() != 0 && SetClipboardData(CF_UNICODETEXT, block) != nullptr)
        return true;
    GlobalFree(block);
    return false;
}

std::u16string Text(HWND owner)
{
    const Opened clipboard(owner);
    const HGLOBAL block = clipboard.IsOpen() ? GetClipboardData(CF_UNICODETEXT) : nullptr;
    if (block == nullptr)
        return {};
    const Locked inside(block);
    if (inside.Units() == nullptr)
        return {};
    return {inside.Units(), std::find(inside.Units(), inside.Units() + inside.Count(), u'\0')};
}

} // namespace KestrinProductEditor::Win32Clipboard
