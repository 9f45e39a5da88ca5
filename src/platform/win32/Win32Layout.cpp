// SPDX-License-Identifier: MIT
#include "platform/win32/Win32Layout.h"

#include "platform/win32/Win32Looks.h"
#include "platform/windows/WideText.h"

#include <KestrinProductEditor/AutomationError.h>

#include <algorithm>
#include <cstring>
#include <limits>
#include <span>
#include <utility>

namespace KestrinProductEditor {

namespace {

constexpr WORD kBold = 1;
constexpr int kUnitsAcross = 4;
constexpr int kUnitsDown = 8;

/// The bytes of a resource; none when the program has no such one.
[[nodiscard]] std::span<const BYTE> FindBytes(const std::u16string& name, LPCWSTR type)
{
    const HMODULE module = OwnModule();
    const HRSRC found = name.empty() ? nullptr : FindResourceW(module, Wide(name.c_str()), type);
    const HGLOBAL loaded = found == nullptr ? nullptr : LoadResource(module, found);
    if (loaded == nullptr)
        return {};
    return {static_cast<const BYTE*>(LockResource(loaded)), SizeofResource(module, found)};
}

/// Reads a resource from its beginning. What is missing at its end reads as zeros.
class Reader
{
public:
    explicit Reader(std::span<const BYTE> bytes) : m_bytes(bytes) {}

    [[nodiscard]] bool IsAtEnd() const { return m_at >= m_bytes.size(); }

    WORD Word()
    {
        WORD word = 0;
        if (m_at + sizeof word <= m_bytes.size())
            std::memcpy(&word, &m_bytes[m_at], sizeof word);
        m_at += sizeof word;
        return word;
    }

    DWORD DoubleWord()
    {
        const DWORD low = Word();
        return low | (static_cast<DWORD>(Word()) << 16U);
    }

    std::u16string Text()
    {
        std::u16string text;
        while (!IsAtEnd()) {
            const auto unit = static_cast<char16_t>(Word());
            if (unit == u'\0')
                break;
            text += unit;
        }
        return text;
    }

    /// A text, or a number after a mark.
    void SkipTextOrNumber()
    {
        constexpr WORD kMark = 0xFFFF;
        const std::size_t before = m_at;
        if (Word() == kMark) {
            (void)Word();
            return;
        }
        m_at = before;
        (void)Text();
    }

    void Skip(std::size_t bytes) { m_at += bytes; }
    void AlignToDoubleWord() { m_at = (m_at + 3U) & ~std::size_t{3}; }
    [[nodiscard]] std::size_t Place() const { return m_at; }

private:
    std::span<const BYTE> m_bytes;
    std::size_t m_at = 0;
};

INT_PTR CALLBACK NoProcedure(HWND, UINT, WPARAM, LPARAM)
{
    return FALSE;
}

[[nodiscard]] bool IsMirrored(HWND owner)
{
    DWORD layout = 0;
    const bool isProcess = GetProcessDefaultLayout(&layout) != 0 && (layout & LAYOUT_RTL) != 0;
    return isProcess || (owner != nullptr && (GetWindowLongW(owner, GWL_EXSTYLE) & WS_EX_LAYOUTRTL) != 0);
}

/// A mirrored box shows the parts of a text in the wrong order where the system does not see to it itself: it
/// must only read from the right.
void ReadInsteadOfMirror(HWND control)
{
    const LONG style = GetWindowLongW(control, GWL_EXSTYLE);
    const bool isBox = (SendMessageW(control, WM_GETDLGCODE, 0, 0) & DLGC_HASSETSEL) != 0;
    if (!isBox || (style & WS_EX_LAYOUTRTL) == 0)
        return;
    constexpr LONG kReads = WS_EX_RTLREADING | WS_EX_RIGHT;
    SetWindowLongW(control, GWL_EXSTYLE, (style & ~LONG{WS_EX_LAYOUTRTL}) | kReads);
    SetWindowPos(control, nullptr, 0, 0, 0, 0,
                 SWP_FRAMECHANGED | SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

} // namespace

Win32Layout::Win32Layout(std::u16string_view name, Kind kind) : m_name(name), m_kind(kind)
{
    PrvReadDialog(name);
    PrvReadTable(name);
}

void Win32Layout::PrvReadDialog(std::u16string_view name)
{
    const std::span<const BYTE> bytes = FindBytes(std::u16string(name), RT_DIALOG);
    if (bytes.empty())
        throw AutomationError(kErrInvalidProcedureCall);
    m_template.assign(bytes.begin(), bytes.end());

    // The system's description of a DIALOGEX, field by field.
    Reader reader(bytes);
    reader.Skip(2 * sizeof(WORD) + 2 * sizeof(DWORD)); // version, signature, help, extended style
    const DWORD style = reader.DoubleWord();
    if (((style & WS_CHILD) != 0) != (m_kind == Kind::UserControl))
        throw AutomationError(kErrInvalidProcedureCall);
    const WORD count = reader.Word();
    const auto readUnits = [&reader] {
        Units units;
        units.left = static_cast<short>(reader.Word());
        units.top = static_cast<short>(reader.Word());
        units.width = static_cast<short>(reader.Word());
        units.height = static_cast<short>(reader.Word());
        return units;
    };
    m_drawn = readUnits();
    reader.SkipTextOrNumber(); // menu
    reader.SkipTextOrNumber(); // class
    reader.SkipTextOrNumber(); // title
    if ((style & DS_SETFONT) != 0) {
        reader.Skip(3 * sizeof(WORD)); // size, weight, italic and character set
        (void)reader.Text();
    }
    for (WORD at = 0; at < count; ++at) {
        reader.AlignToDoubleWord();
        reader.Skip(3 * sizeof(DWORD)); // help, extended style, style
        Item item;
        item.drawn = readUnits();
        item.id = static_cast<WORD>(reader.DoubleWord());
        reader.SkipTextOrNumber(); // class
        reader.SkipTextOrNumber(); // title
        const WORD extra = reader.Word();
        reader.Skip(extra);
        m_items.push_back(item);
    }
}

void Win32Layout::PrvReadTable(std::u16string_view name)
{
    Reader reader(FindBytes(std::u16string(name), RT_RCDATA));
    m_least.width = reader.Word();
    m_least.height = reader.Word();
    const auto tieOf = [](WORD ties, unsigned int place) { return static_cast<Tie>((ties >> place) & 0xFU); };
    while (!reader.IsAtEnd()) {
        const WORD id = reader.Word();
        const WORD ties = reader.Word();
        const WORD looks = reader.Word();
        std::u16string called = reader.Text();
        const auto item =
            std::find_if(m_items.begin(), m_items.end(), [id](const Item& one) { return one.id == id; });
        if (item == m_items.end())
            continue;
        item->name = std::move(called);
        item->left = tieOf(ties, 12);
        item->top = tieOf(ties, 8);
        item->right = tieOf(ties, 4);
        item->bottom = tieOf(ties, 0);
        item->isBold = (looks & kBold) != 0;
    }
}

HWND Win32Layout::Create(HWND parent)
{
    std::vector<BYTE> made = m_template;
    if (IsMirrored(GetActiveWindow())) {
        constexpr std::size_t kExtendedStyle = 8;
        DWORD style = 0;
        std::memcpy(&style, &made[kExtendedStyle], sizeof style);
        style |= WS_EX_LAYOUTRTL;
        std::memcpy(&made[kExtendedStyle], &style, sizeof style);
    }
    const Win32Looks looks;
    m_window = CreateDialogIndirectParamW(OwnModule(), reinterpret_cast<LPCDLGTEMPLATEW>(made.data()), parent,
                                          &NoProcedure, 0);
    if (m_window == nullptr)
        throw AutomationError(kErrOutOfMemory);
    for (Item& item : m_items) {
        item.window = GetDlgItem(m_window, item.id);
        ReadInsteadOfMirror(item.window);
    }
    TakeFont();
    return m_window;
}

HWND Win32Layout::WindowOf(std::u16string_view name) const
{
    const auto found = std::find_if(m_items.begin(), m_items.end(),
                                    [name](const Item& item) { return !name.empty() && item.name == name; });
    return found == m_items.end() ? nullptr : found->window;
}

std::vector<Win32Layout::Named> Win32Layout::Controls() const
{
    std::vector<Named> named;
    for (const Item& item : m_items) {
        if (!item.name.empty())
            named.push_back({.name = item.name, .window = item.window});
    }
    return named;
}

void Win32Layout::Arrange()
{
    const SIZE grown = PrvGrown();
    const int splitter = PrvSplitterWithin(m_splitter, grown.cx);
    HDWP places = BeginDeferWindowPos(static_cast<int>(m_items.size()));
    for (const Item& item : m_items) {
        const RECT place = PrvPlace(item, grown, splitter);
        if (places == nullptr)
            break;
        places = DeferWindowPos(places, item.window, nullptr, place.left, place.top, place.right - place.left,
                                place.bottom - place.top, SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOCOPYBITS);
    }
    if (places != nullptr)
        EndDeferWindowPos(places);
    // What the system keeps of a mirrored window's old picture is not in its place.
    if ((GetWindowLongW(m_window, GWL_EXSTYLE) & WS_EX_LAYOUTRTL) != 0)
        RedrawWindow(m_window, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_ALLCHILDREN);
}

void Win32Layout::TakeFont()
{
    const UINT dpi = GetDpiForWindow(m_window);
    Win32Font font(dpi);
    Win32Font boldFont(dpi, Win32Font::Weight::Bold);
    const SIZE before = std::exchange(m_unit, {font.AverageWidth(), font.LineHeight()});
    if (before.cx > 0)
        m_splitter = MulDiv(m_splitter, m_unit.cx, before.cx);
    const auto tell = [](HWND window, const Win32Font& shown) {
        SendMessageW(window, WM_SETFONT, reinterpret_cast<WPARAM>(shown.Handle()), TRUE);
    };
    tell(m_window, font);
    for (const Item& item : m_items)
        tell(item.window, item.isBold ? boldFont : font);
    // The ones before are held by no window any more.
    m_font = std::move(font);
    m_boldFont = std::move(boldFont);
    Arrange();
}

void Win32Layout::MoveSplitter(int by)
{
    m_splitter = PrvSplitterWithin(m_splitter + by, PrvGrown().cx);
    Arrange();
}

SIZE Win32Layout::PrvGrown() const
{
    if (m_kind == Kind::UserControl)
        return {};
    RECT inside = {};
    GetClientRect(m_window, &inside);
    const SIZE drawn = DrawnSize();
    return {inside.right - drawn.cx, inside.bottom - drawn.cy};
}

SIZE Win32Layout::PrvPixels(int width, int height) const
{
    return {MulDiv(width, m_unit.cx, kUnitsAcross), MulDiv(height, m_unit.cy, kUnitsDown)};
}

RECT Win32Layout::PrvPlace(const Item& item, SIZE grown, int splitter) const
{
    const auto moved = [splitter](LONG place, Tie tie, LONG growth) {
        switch (tie) {
        case Tie::Far:
            return place + growth;
        case Tie::Splitter:
            return place + growth + splitter;
        case Tie::Near:
            break;
        }
        return place;
    };
    const SIZE from = PrvPixels(item.drawn.left, item.drawn.top);
    const SIZE to = PrvPixels(item.drawn.left + item.drawn.width, item.drawn.top + item.drawn.height);
    RECT place = {moved(from.cx, item.left, grown.cx), moved(from.cy, item.top, grown.cy),
                  moved(to.cx, item.right, grown.cx), moved(to.cy, item.bottom, grown.cy)};
    place.right = std::max(place.right, place.left);
    place.bottom = std::max(place.bottom, place.top);
    return place;
}

int Win32Layout::PrvSplitterWithin(int wanted, int grown) const
{
    // A pane keeps three fifths of what it was drawn, and room for all that moves with the line.
    const auto spare = [this](const Item& item) {
        return static_cast<int>(PrvPixels(item.drawn.width, 0).cx) * 2 / 5;
    };
    const auto end = [this](const Item& item) {
        return static_cast<int>(PrvPixels(item.drawn.left + item.drawn.width, 0).cx);
    };
    int least = std::numeric_limits<int>::max();
    int most = 0;
    int endOfPane = 0;
    int endOfMoved = 0;
    for (const Item& item : m_items) {
        if (item.left == Tie::Near && item.right == Tie::Splitter)
            least = std::min(least, -grown - spare(item));
        if (item.left == Tie::Splitter && item.right == Tie::Far) {
            most = std::max(most, spare(item));
            endOfPane = std::max(endOfPane, end(item));
        }
        if (item.left == Tie::Splitter && item.right == Tie::Splitter)
            endOfMoved = std::max(endOfMoved, end(item));
    }
    most = std::min(most, std::max(endOfPane - endOfMoved, 0));
    return std::clamp(wanted, std::min(least, most), most);
}

} // namespace KestrinProductEditor
