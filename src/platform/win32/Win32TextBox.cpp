// SPDX-License-Identifier: MIT
#include "platform/win32/Win32TextBox.h"

#include "platform/win32/Win32Clipboard.h"
#include "platform/win32/Win32HighContrast.h"
#include "platform/win32/Win32Keys.h"
#include "platform/win32/Win32Reflection.h"
#include "platform/win32/Win32Windows.h"

#include <commctrl.h>
#include <imm.h>

#include <algorithm>
#include <array>
#include <utility>

namespace KestrinProductEditor {

namespace {

constexpr COLORREF kInk = RGB(0x10, 0x10, 0x10);
constexpr COLORREF kDisabledInk = RGB(0x40, 0x40, 0x40);
// What an EDIT can hold; the limit here is for what is typed, the EDIT's own would cut what the program
// writes.
constexpr WPARAM kNoLimit = 0x7FFFFFFE;
// The time that an EDIT takes may grow with the square of the length of a line that it is given at once, and
// with that of the number of pieces.
constexpr std::size_t kLongLine = 1000;

/// What an EDIT of many lines takes at once: lines, or a part of one that is long.
[[nodiscard]] std::u16string_view FirstPiece(std::u16string_view text)
{
    std::size_t end = 0;
    while (end < text.size()) {
        const std::size_t next = std::min(text.find(u'\n', end), text.size() - 1) + 1;
        if (next - end > kLongLine)
            break;
        end = next;
    }
    return end > 0 ? text.substr(0, end) : FittingHead(text, kLongLine);
}

[[nodiscard]] COLORREF ColorOf(std::uint32_t rgb)
{
    constexpr unsigned kByte = 0xFF;
    return RGB((rgb >> 16U) & kByte, (rgb >> 8U) & kByte, rgb & kByte);
}

/// Of a message from anywhere, which may have none.
[[nodiscard]] std::u16string TextOfMessage(LPARAM lParam)
{
    const auto* const text = reinterpret_cast<const wchar_t*>(lParam);
    return text != nullptr ? FromWide(text) : std::u16string();
}

/// The letters that an input method is about to make stand where they will be, and look alike.
void PlaceComposition(HWND edit)
{
    const HIMC method = ImmGetContext(edit);
    if (method == nullptr)
        return;
    COMPOSITIONFORM place = {};
    place.dwStyle = CFS_POINT;
    GetCaretPos(&place.ptCurrentPos);
    ImmSetCompositionWindow(method, &place);
    LOGFONTW font = {};
    if (GetObjectW(reinterpret_cast<HFONT>(SendMessageW(edit, WM_GETFONT, 0, 0)), sizeof font, &font) != 0)
        ImmSetCompositionFontW(method, &font);
    ImmReleaseContext(edit, method);
}

} // namespace

class Win32TextBox::Showing
{
public:
    explicit Showing(int& depth) : m_depth(depth) { ++m_depth; }
    Showing(const Showing&) = delete;
    Showing& operator=(const Showing&) = delete;
    ~Showing() { --m_depth; }

private:
    int& m_depth;
};

Win32TextBox::Win32TextBox(HWND edit, Win32Focus& focus)
    : Win32Control(edit, edit, focus),
      m_lines((GetWindowLongW(edit, GWL_STYLE) & ES_MULTILINE) != 0 ? BoxLines::Many : BoxLines::One)
{
    SendMessageW(edit, EM_SETLIMITTEXT, kNoLimit, 0);
    SetWindowSubclass(edit, &PrvProcedure, reinterpret_cast<UINT_PTR>(this),
                      reinterpret_cast<DWORD_PTR>(this));
}

Win32TextBox::~Win32TextBox()
{
    RemoveWindowSubclass(Window(), &PrvProcedure, reinterpret_cast<UINT_PTR>(this));
}

void Win32TextBox::SetText(std::u16string_view text)
{
    const bool isOther = text != m_text;
    m_history.Clear();
    m_text = text;
    PrvShow();
    PrvSelect({0, 0});
    if (isOther)
        Change.Raise();
}

void Win32TextBox::SetMaxLength(std::int32_t length)
{
    m_limit = static_cast<std::size_t>(std::max(length, 0));
}

void Win32TextBox::SetLocked(bool bLocked)
{
    m_isLocked = bLocked;
    SendMessageW(Window(), EM_SETREADONLY, bLocked ? TRUE : FALSE, 0);
}

void Win32TextBox::SetBackColor(std::uint32_t rgb)
{
    m_backColor = rgb;
    InvalidateRect(Window(), nullptr, TRUE);
}

void Win32TextBox::Select(std::int32_t start, std::int32_t length)
{
    const auto place = [this](std::int64_t asked) {
        return static_cast<std::size_t>(
            std::clamp<std::int64_t>(asked, 0, static_cast<std::int64_t>(m_text.size())));
    };
    PrvSelect({place(start), place(std::int64_t{start} + std::max(length, 0))});
}

std::u16string Win32TextBox::SelectedText() const
{
    const Range selection = PrvSelection();
    return m_text.substr(selection.start, selection.end - selection.start);
}

// Messages

LRESULT CALLBACK Win32TextBox::PrvProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                                            UINT_PTR id, DWORD_PTR data)
{
    if (message == WM_NCDESTROY) {
        RemoveWindowSubclass(window, &PrvProcedure, id);
        return DefSubclassProc(window, message, wParam, lParam);
    }
    auto& box = *reinterpret_cast<Win32TextBox*>(data);
    if (message == WM_LBUTTONDBLCLK) {
        const LRESULT result = DefSubclassProc(window, message, wParam, lParam);
        box.PrvDoubleClicked();
        return result;
    }
    try {
        if (const std::optional<LRESULT> answer = box.PrvHandle(message, wParam, lParam))
            return *answer;
    } catch (...) {
        // Without memory for it nothing is typed.
        return 0;
    }
    return DefSubclassProc(window, message, wParam, lParam);
}

std::optional<LRESULT> Win32TextBox::PrvHandle(UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case WM_GETDLGCODE:
        return PrvDialogCode(reinterpret_cast<const MSG*>(lParam));
    case WM_ENABLE:
        // The EDIT need not know: its own colour of disabled text is hard to read on a background of ours.
        InvalidateRect(Window(), nullptr, TRUE);
        return 0;
    case OCM_CTLCOLOREDIT:
    case OCM_CTLCOLORSTATIC:
        return PrvColors(reinterpret_cast<HDC>(wParam));
    case OCM_COMMAND:
        if (HIWORD(wParam) == EN_CHANGE && m_showings == 0)
            PrvTakeOver();
        return 0;
    default:
        break;
    }
    if (const std::optional<LRESULT> answer = PrvHandleTyping(message, wParam, lParam))
        return answer;
    return PrvHandleEditing(message, lParam);
}

std::optional<LRESULT> Win32TextBox::PrvHandleTyping(UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case WM_KEYDOWN: {
        const std::optional<TypedKey> typed = m_typed.FromKeyDown(wParam);
        if (typed) {
            PrvType(*typed);
            return 0;
        }
        return PrvKeyDown(wParam);
    }
    case WM_CHAR:
    case WM_IME_CHAR:
        if (const std::optional<TypedKey> typed = m_typed.FromUnit(static_cast<char16_t>(wParam)))
            PrvType(*typed);
        return 0;
    case WM_UNICHAR:
        if (wParam == UNICODE_NOCHAR)
            return TRUE;
        if (const std::optional<TypedKey> typed = m_typed.FromCodePoint(wParam))
            PrvType(*typed);
        return FALSE;
    case WM_SYSKEYDOWN: {
        if (wParam != VK_BACK)
            return std::nullopt;
        const HWND box = Window();
        PrvAct(TypedAct::Undo, 0);
        // Unless the system hears of it, it takes Alt for pressed alone, and turns to the menu when Alt is
        // let go.
        return DefWindowProcW(box, message, wParam, lParam);
    }
    case WM_SYSCHAR:
        return wParam == VK_BACK ? std::optional<LRESULT>(0) : std::nullopt;
    case WM_IME_STARTCOMPOSITION:
        PlaceComposition(Window());
        [[fallthrough]];
    case WM_IME_COMPOSITION:
    case WM_IME_ENDCOMPOSITION:
        // Left to itself the system shows a window of its own meanwhile, and ends with WM_IME_CHAR; the EDIT
        // would put the letters into its text as they come.
        return DefWindowProcW(Window(), message, wParam, lParam);
    default:
        return std::nullopt;
    }
}

std::optional<LRESULT> Win32TextBox::PrvHandleEditing(UINT message, LPARAM lParam)
{
    switch (message) {
    case WM_CUT:
        PrvAct(TypedAct::Cut, 0);
        return 0;
    case WM_COPY:
        PrvAct(TypedAct::Copy, 0);
        return 0;
    case WM_PASTE:
        PrvAct(TypedAct::Paste, 0);
        return 0;
    case WM_CLEAR:
        PrvTakeInPlaceOfSelection({});
        return 0;
    case WM_UNDO:
    case EM_UNDO: {
        const bool canUndo = !m_isLocked && m_history.CanUndo();
        PrvAct(TypedAct::Undo, 0);
        return canUndo ? TRUE : FALSE;
    }
    case EM_CANUNDO:
        return !m_isLocked && m_history.CanUndo() ? TRUE : FALSE;
    case EM_REPLACESEL:
        if (m_showings > 0)
            return std::nullopt;
        PrvTakeInPlaceOfSelection(TextOfMessage(lParam));
        return 0;
    case WM_SETTEXT:
        if (m_showings > 0)
            return std::nullopt;
        SetText(TextOfMessage(lParam));
        return TRUE;
    case EM_SETLIMITTEXT:
        return 0;
    default:
        return std::nullopt;
    }
}

LRESULT Win32TextBox::PrvDialogCode(const MSG* message) const
{
    constexpr LRESULT kEveryBox = DLGC_WANTCHARS | DLGC_WANTARROWS;
    // Tab into a box of one line selects its text.
    if (m_lines == BoxLines::One)
        return kEveryBox | DLGC_HASSETSEL;
    const bool isEnter = message != nullptr && message->message == WM_KEYDOWN && message->wParam == VK_RETURN;
    return isEnter ? kEveryBox | DLGC_WANTMESSAGE : kEveryBox;
}

LRESULT Win32TextBox::PrvColors(HDC canvas) const
{
    if (IsHighContrast()) {
        SetTextColor(canvas, GetSysColor(IsWindowEnabled(Window()) != 0 ? COLOR_WINDOWTEXT : COLOR_GRAYTEXT));
        SetBkColor(canvas, GetSysColor(COLOR_WINDOW));
        return reinterpret_cast<LRESULT>(GetSysColorBrush(COLOR_WINDOW));
    }
    SetTextColor(canvas, IsWindowEnabled(Window()) != 0 ? kInk : kDisabledInk);
    SetBkColor(canvas, ColorOf(m_backColor));
    SetDCBrushColor(canvas, ColorOf(m_backColor));
    return reinterpret_cast<LRESULT>(GetStockObject(DC_BRUSH));
}

void Win32TextBox::PrvDoubleClicked()
{
    // The EDIT waits for the mouse to go on selecting, but a handler may show another window.
    ReleaseCapture();
    const std::weak_ptr<const bool> isAlive = m_isAlive;
    SetFocus();
    if (!isAlive.expired())
        DblClick.Raise();
}

// What is typed

std::optional<LRESULT> Win32TextBox::PrvKeyDown(WPARAM key)
{
    switch (key) {
    case VK_DELETE:
        if (!IsDown(VK_SHIFT))
            PrvEraseAfter();
        return 0;
    // Their characters follow, or they are the window's.
    case VK_BACK:
    case VK_RETURN:
    case VK_TAB:
    case VK_ESCAPE:
    case VK_INSERT:
        return 0;
    default:
        break;
    }
    const bool isLetter = key >= 'A' && key <= 'Z';
    return isLetter && IsDown(VK_CONTROL) ? std::optional<LRESULT>(0) : std::nullopt;
}

void Win32TextBox::PrvType(TypedKey typed)
{
    std::int32_t character = typed.character;
    const std::weak_ptr<const bool> isAlive = m_isAlive;
    KeyPress.Raise(character);
    if (isAlive.expired() || character == 0)
        return;
    PrvAct(character == typed.character ? typed.act : Win32TypedText::ActOf(character), character);
}

void Win32TextBox::PrvAct(TypedAct act, std::int32_t character)
{
    const bool leavesText = act == TypedAct::SelectAll || act == TypedAct::Copy;
    if (m_isLocked && !leavesText)
        return;
    switch (act) {
    case TypedAct::None:
        break;
    case TypedAct::Insert:
        PrvInsert(Win32TypedText::TextOf(character), Win32EditHistory::Kind::Typed);
        break;
    case TypedAct::EraseBefore:
    case TypedAct::EraseWordBefore:
        PrvEraseBefore(act);
        break;
    case TypedAct::BreakLine:
        if (m_lines == BoxLines::Many)
            PrvInsert(u"\r\n", Win32EditHistory::Kind::Whole);
        break;
    case TypedAct::SelectAll:
        PrvSelect({0, m_text.size()});
        break;
    case TypedAct::Copy:
        (void)PrvCopy();
        break;
    case TypedAct::Cut:
        if (PrvCopy())
            PrvReplace(PrvSelection(), {}, Win32EditHistory::Kind::Whole);
        break;
    case TypedAct::Paste:
        PrvPaste(Win32Clipboard::Text(Window()));
        break;
    case TypedAct::Undo:
        PrvTravel(m_history.Undo());
        break;
    case TypedAct::Redo:
        PrvTravel(m_history.Redo());
        break;
    }
}

bool Win32TextBox::PrvCopy() const
{
    const std::u16string selected = SelectedText();
    return !selected.empty() && Win32Clipboard::PutText(Window(), selected);
}

void Win32TextBox::PrvEraseBefore(TypedAct act)
{
    Range range = PrvSelection();
    if (range.start != range.end) {
        PrvReplace(range, {}, Win32EditHistory::Kind::Whole);
        return;
    }
    const bool isWord = act == TypedAct::EraseWordBefore;
    range.start = isWord ? WordBefore(m_text, range.end) : CharacterBefore(m_text, range.end);
    PrvReplace(range, {}, isWord ? Win32EditHistory::Kind::Whole : Win32EditHistory::Kind::Typed);
}

void Win32TextBox::PrvEraseAfter()
{
    if (m_isLocked)
        return;
    Range range = PrvSelection();
    if (range.start == range.end)
        range.end = IsDown(VK_CONTROL) ? WordAfter(m_text, range.start) : CharacterAfter(m_text, range.start);
    PrvReplace(range, {}, Win32EditHistory::Kind::Whole);
}

void Win32TextBox::PrvInsert(std::u16string_view text, Win32EditHistory::Kind kind)
{
    const Range selection = PrvSelection();
    if (m_limit > 0) {
        const std::size_t kept = m_text.size() - (selection.end - selection.start);
        text = FittingHead(text, m_limit > kept ? m_limit - kept : 0);
    }
    if (!text.empty())
        PrvReplace(selection, text, kind);
}

void Win32TextBox::PrvPaste(std::u16string_view text)
{
    PrvInsert(m_lines == BoxLines::One ? InOneLine(text) : std::u16string(text),
              Win32EditHistory::Kind::Whole);
}

void Win32TextBox::PrvTakeInPlaceOfSelection(std::u16string_view text)
{
    if (m_isLocked)
        return;
    if (text.empty())
        PrvReplace(PrvSelection(), {}, Win32EditHistory::Kind::Whole);
    else
        PrvPaste(text);
}

void Win32TextBox::PrvTravel(const std::optional<Win32EditHistory::Step>& step)
{
    if (step)
        PrvApply(*step);
}

void Win32TextBox::PrvTakeOver()
{
    const std::u16string now = TextOfWindow(Window());
    const TextDifference other = DifferenceOf(m_shown, now);
    if (other.endBefore == other.start && other.endAfter == other.start)
        return;
    const Range range = {TextPlace(m_text, m_lines, other.start),
                         TextPlace(m_text, m_lines, other.endBefore)};
    const std::u16string with = now.substr(other.start, other.endAfter - other.start);
    m_shown = now;
    PrvReplace(range, with, Win32EditHistory::Kind::Whole);
}

// The text

Win32TextBox::Range Win32TextBox::PrvSelection() const
{
    DWORD start = 0;
    DWORD end = 0;
    SendMessageW(Window(), EM_GETSEL, reinterpret_cast<WPARAM>(&start), reinterpret_cast<LPARAM>(&end));
    return {TextPlace(m_text, m_lines, start), TextPlace(m_text, m_lines, end)};
}

void Win32TextBox::PrvReplace(Range range, std::u16string_view with, Win32EditHistory::Kind kind)
{
    const Win32EditHistory::Step step = {.at = range.start,
                                         .removed = m_text.substr(range.start, range.end - range.start),
                                         .inserted = std::u16string(with)};
    if (step.removed != step.inserted)
        m_history.Add(step, kind);
    PrvApply(step);
}

void Win32TextBox::PrvApply(const Win32EditHistory::Step& step)
{
    m_text.replace(step.at, step.removed.size(), step.inserted);
    PrvShow();
    const std::size_t caret = step.at + step.inserted.size();
    PrvSelect({caret, caret});
    if (step.removed != step.inserted)
        Change.Raise();
}

void Win32TextBox::PrvShow()
{
    std::u16string shown = ShownText(m_text, m_lines);
    const TextDifference other = DifferenceOf(m_shown, shown);
    m_shown = std::move(shown);
    const Showing showing(m_showings);
    SendMessageW(Window(), EM_SETSEL, other.start, static_cast<LPARAM>(other.endBefore));
    PrvPut(std::u16string_view(m_shown).substr(other.start, other.endAfter - other.start));
    if (!m_history.CanUndo())
        SendMessageW(Window(), EM_EMPTYUNDOBUFFER, 0, 0);
}

void Win32TextBox::PrvPut(std::u16string_view shown)
{
    do {
        const std::u16string piece(m_lines == BoxLines::Many ? FirstPiece(shown) : shown);
        shown.remove_prefix(piece.size());
        SendMessageW(Window(), EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(piece.c_str()));
    } while (!shown.empty());
}

void Win32TextBox::PrvSelect(Range range)
{
    SendMessageW(Window(), EM_SETSEL, ShownPlace(m_text, m_lines, range.start),
                 static_cast<LPARAM>(ShownPlace(m_text, m_lines, range.end)));
    SendMessageW(Window(), EM_SCROLLCARET, 0, 0);
}

} // namespace KestrinProductEditor
