// SPDX-License-Identifier: MIT
#include "platform/win32/Win32LayoutAudit.h"

#include "platform/Text.h"
#include "platform/ui/GridBase.h"
#include "platform/win32/Win32Dialogs.h"
#include "platform/win32/Win32GridView.h"
#include "platform/win32/Win32ProgressBar.h"
#include "platform/win32/Win32Splitter.h"
#include "platform/windows/WideText.h"

#include <commctrl.h>

#include <algorithm>
#include <array>
#include <memory>
#include <string_view>
#include <utility>
#include <vector>

namespace KestrinProductEditor {

namespace {

using Controls = std::vector<HWND>;

[[nodiscard]] LONG StyleOf(HWND window)
{
    return GetWindowLongW(window, GWL_STYLE);
}

[[nodiscard]] bool IsOfClass(HWND window, const wchar_t* name)
{
    const std::u16string own = ClassOfWindow(window);
    return lstrcmpiW(Wide(own.c_str()), name) == 0;
}

[[nodiscard]] bool IsLabel(HWND window)
{
    return IsOfClass(window, WC_STATICW);
}

[[nodiscard]] bool IsBox(HWND window)
{
    return IsOfClass(window, WC_EDITW);
}

[[nodiscard]] bool IsButton(HWND window)
{
    return IsOfClass(window, WC_BUTTONW);
}

[[nodiscard]] bool IsTickable(HWND button)
{
    const LONG kind = StyleOf(button) & BS_TYPEMASK;
    return kind == BS_CHECKBOX || kind == BS_AUTOCHECKBOX;
}

[[nodiscard]] bool IsGroup(HWND window)
{
    return IsButton(window) && (StyleOf(window) & BS_TYPEMASK) == BS_GROUPBOX;
}

/// What other controls may stand on.
[[nodiscard]] bool IsFrame(HWND window)
{
    if (!IsLabel(window))
        return IsGroup(window);
    const LONG kind = StyleOf(window) & SS_TYPEMASK;
    return kind == SS_ETCHEDFRAME || kind == SS_ETCHEDHORZ || kind == SS_ETCHEDVERT ||
           kind == SS_BLACKFRAME || kind == SS_GRAYFRAME || kind == SS_WHITEFRAME;
}

[[nodiscard]] bool IsSplitter(HWND window)
{
    return IsOfClass(window, Win32Splitter::kClassName);
}

/// A control with its own inside.
[[nodiscard]] bool IsControl(HWND window)
{
    constexpr std::array kClasses = {WC_STATICW,
                                     WC_EDITW,
                                     WC_BUTTONW,
                                     WC_LISTBOXW,
                                     WC_COMBOBOXW,
                                     TOOLBARCLASSNAMEW,
                                     Win32GridView::kClassName,
                                     Win32ProgressBar::kClassName,
                                     Win32Splitter::kClassName};
    return std::any_of(kClasses.begin(), kClasses.end(),
                       [window](const wchar_t* name) { return IsOfClass(window, name); });
}

/// The visible controls within that window, from outside inwards, without what is inside of one of them.
void CollectControls(HWND from, Controls& controls)
{
    for (HWND child = GetWindow(from, GW_CHILD); child != nullptr; child = GetWindow(child, GW_HWNDNEXT)) {
        if (IsWindowVisible(child) == 0)
            continue;
        if (IsControl(child))
            controls.push_back(child);
        else
            CollectControls(child, controls);
    }
}

[[nodiscard]] SIZE SizeOf(const RECT& place)
{
    return {place.right - place.left, place.bottom - place.top};
}

[[nodiscard]] SIZE InsideOf(HWND window)
{
    RECT inside = {};
    GetClientRect(window, &inside);
    return SizeOf(inside);
}

/// On the inside of the window, from the edge where reading begins.
[[nodiscard]] RECT PlaceIn(HWND window, HWND control)
{
    RECT place = {};
    GetWindowRect(control, &place);
    MapWindowPoints(nullptr, window, reinterpret_cast<POINT*>(&place), 2);
    return place;
}

/// Texts in the font of a control.
class Measure
{
public:
    explicit Measure(HWND control) : m_control(control), m_canvas(GetDC(control))
    {
        if (const LRESULT font = SendMessageW(control, WM_GETFONT, 0, 0))
            m_before = SelectObject(m_canvas, reinterpret_cast<HGDIOBJ>(font));
    }
    Measure(const Measure&) = delete;
    Measure& operator=(const Measure&) = delete;
    ~Measure()
    {
        if (m_before != nullptr)
            SelectObject(m_canvas, m_before);
        ReleaseDC(m_control, m_canvas);
    }

    [[nodiscard]] int LineHeight() const
    {
        TEXTMETRICW metrics = {};
        GetTextMetricsW(m_canvas, &metrics);
        return metrics.tmHeight;
    }
    /// `format` as of DrawText; `width` is where lines break, if they do.
    [[nodiscard]] SIZE Of(const std::u16string& text, UINT format, LONG width = 0) const
    {
        RECT place = {0, 0, width, 0};
        DrawTextW(m_canvas, Wide(text.c_str()), static_cast<int>(text.size()), &place, format | DT_CALCRECT);
        return SizeOf(place);
    }
    [[nodiscard]] SIZE OfLine(const std::u16string& text) const
    {
        return Of(text, DT_SINGLELINE | DT_NOPREFIX);
    }

private:
    HWND m_control;
    HDC m_canvas;
    HGDIOBJ m_before = nullptr;
};

[[nodiscard]] int Scaled(HWND window, int pixels)
{
    return MulDiv(pixels, static_cast<int>(GetDpiForWindow(window)), USER_DEFAULT_SCREEN_DPI);
}

class Audit
{
public:
    Audit(HWND window, const std::function<std::string(HWND)>& nameOf) : m_window(window), m_nameOf(nameOf)
    {
        CollectControls(window, m_controls);
    }

    [[nodiscard]] LayoutFaults Run()
    {
        for (const HWND control : m_controls)
            PrvFindClipped(control);
        PrvFindOverlaps();
        PrvFindOutside();
        for (const HWND control : m_controls)
            PrvFindPale(control);
        PrvFindTabFaults();
        return std::move(m_faults);
    }

private:
    [[nodiscard]] std::string PrvName(HWND control) const
    {
        const std::string name = m_nameOf(control);
        return name.empty() ? ToUtf8(ClassOfWindow(control)) + " " + std::to_string(GetDlgCtrlID(control))
                            : name;
    }

    void PrvAdd(LayoutFaultKind kind, HWND control, std::string reason)
    {
        m_faults.push_back({kind, PrvName(control), std::move(reason)});
    }

    // Clipped texts

    void PrvCompare(HWND control, SIZE needed, SIZE room, const std::u16string& text,
                    LayoutFaultKind kind = LayoutFaultKind::ClippedText)
    {
        if (needed.cx <= room.cx && needed.cy <= room.cy)
            return;
        const auto size = [](SIZE length) {
            return std::to_string(length.cx) + " x " + std::to_string(length.cy);
        };
        PrvAdd(kind, control, "'" + ToUtf8(text) + "' needs " + size(needed) + ", has " + size(room));
    }

    void PrvFindClipped(HWND control)
    {
        if (IsLabel(control)) {
            PrvFindClippedLabel(control);
        } else if (IsButton(control)) {
            PrvFindClippedButton(control);
        } else if (IsBox(control)) {
            PrvFindClippedBox(control);
        } else if (IsOfClass(control, TOOLBARCLASSNAMEW)) {
            PrvFindClippedTools(control);
        } else if (IsOfClass(control, Win32ProgressBar::kClassName)) {
            const std::u16string text = TextOfWindow(control);
            PrvCompare(control, Measure(control).OfLine(text), InsideOf(control), text);
        } else if (const std::shared_ptr<Win32GridView> view = Win32GridView::Of(control)) {
            PrvFindClippedList(*view);
        }
    }

    void PrvFindClippedLabel(HWND label)
    {
        const LONG kind = StyleOf(label) & SS_TYPEMASK;
        if (kind != SS_LEFT && kind != SS_CENTER && kind != SS_RIGHT)
            return;
        const Measure measure(label);
        const std::u16string text = TextOfWindow(label);
        SIZE room = InsideOf(label);
        if ((StyleOf(label) & SS_ELLIPSISMASK) != 0) {
            PrvCompare(label, {0, measure.LineHeight()}, room, text);
            return;
        }
        UINT format = DT_WORDBREAK | DT_EXPANDTABS;
        format |= (StyleOf(label) & SS_NOPREFIX) != 0 ? DT_NOPREFIX : 0U;
        format |= (StyleOf(label) & SS_EDITCONTROL) == SS_EDITCONTROL ? DT_EDITCONTROL : 0U;
        PrvCompare(label, measure.Of(text, format, room.cx), room, text);
    }

    void PrvFindClippedButton(HWND button)
    {
        constexpr int kEdge = 3; // around a caption
        constexpr int kTickToText = 5;
        const std::u16string text = TextOfWindow(button);
        const SIZE needed = Measure(button).Of(text, DT_SINGLELINE);
        SIZE room = InsideOf(button);
        if (IsGroup(button)) {
            room.cx -= 4 * Scaled(button, kEdge);
        } else if (IsTickable(button)) {
            room.cx -=
                GetSystemMetricsForDpi(SM_CXMENUCHECK, GetDpiForWindow(button)) + Scaled(button, kTickToText);
        } else {
            room.cx -= 2 * Scaled(button, kEdge);
            room.cy -= 2 * Scaled(button, kEdge);
        }
        PrvCompare(button, needed, room, text);
    }

    void PrvFindClippedBox(HWND box)
    {
        RECT room = {};
        SendMessageW(box, EM_GETRECT, 0, reinterpret_cast<LPARAM>(&room));
        const LONG height = std::min(InsideOf(box).cy, room.bottom) - std::max(room.top, 0L);
        PrvCompare(box, {0, Measure(box).LineHeight()}, {0, height}, u"a line");
    }

    void PrvFindClippedTools(HWND bar)
    {
        const Measure measure(bar);
        const SIZE room = InsideOf(bar);
        const auto count = static_cast<int>(SendMessageW(bar, TB_BUTTONCOUNT, 0, 0));
        for (int at = 0; at < count; ++at) {
            TBBUTTON button = {};
            SendMessageW(bar, TB_GETBUTTON, static_cast<WPARAM>(at), reinterpret_cast<LPARAM>(&button));
            if ((button.fsStyle & BTNS_SEP) != 0 || (button.fsState & TBSTATE_HIDDEN) != 0)
                continue;
            RECT place = {};
            SendMessageW(bar, TB_GETITEMRECT, static_cast<WPARAM>(at), reinterpret_cast<LPARAM>(&place));
            const std::u16string text = PrvTextOfTool(bar, button.idCommand);
            // The whole button on the bar, and the whole text beside its picture.
            PrvCompare(bar, {place.right, place.bottom}, room, text);
            const LONG picture = SendMessageW(bar, TB_GETIMAGELIST, 0, 0) != 0 ? PrvPictureWidth(bar) : 0;
            const SIZE caption = measure.OfLine(text);
            PrvCompare(bar, {caption.cx + picture, caption.cy}, SizeOf(place), text);
        }
    }

    [[nodiscard]] static LONG PrvPictureWidth(HWND bar)
    {
        int width = 0;
        int height = 0;
        ImageList_GetIconSize(reinterpret_cast<HIMAGELIST>(SendMessageW(bar, TB_GETIMAGELIST, 0, 0)), &width,
                              &height);
        return width;
    }

    [[nodiscard]] static std::u16string PrvTextOfTool(HWND bar, int command)
    {
        const auto id = static_cast<WPARAM>(command);
        const LRESULT length = SendMessageW(bar, TB_GETBUTTONTEXTW, id, 0);
        if (length <= 0)
            return {};
        std::u16string text(static_cast<std::size_t>(length) + 1, u'\0');
        SendMessageW(bar, TB_GETBUTTONTEXTW, id, reinterpret_cast<LPARAM>(text.data()));
        text.pop_back();
        return text;
    }

    void PrvFindClippedList(const Win32GridView& view)
    {
        constexpr int kBesideTitle = 4;
        constexpr int kAroundNotice = 16;
        if (view.Grid() == nullptr)
            return;
        const HWND list = view.Window();
        const GridBase& grid = *view.Grid();
        const Win32GridGeometry& geometry = view.Geometry();
        const Measure measure(list);
        PrvCompare(list, {0, geometry.HeaderHeight() + measure.LineHeight()}, InsideOf(list), u"a row");
        for (std::int32_t col = 0; geometry.HeaderHeight() > 0 && col < grid.Cols(); ++col) {
            if (geometry.ColumnWidth(col) == 0)
                continue;
            const std::u16string title = grid.DisplayText(0, col);
            SIZE needed = measure.OfLine(title);
            needed.cx += 2 * Scaled(list, kBesideTitle);
            PrvCompare(list, needed, {geometry.ColumnWidth(col), geometry.HeaderHeight()}, title,
                       LayoutFaultKind::ColumnTitle);
        }
        if (grid.Notice().empty())
            return;
        RECT room = geometry.BodyRect();
        InflateRect(&room, -Scaled(list, kAroundNotice), -Scaled(list, kAroundNotice));
        const SIZE needed =
            measure.Of(grid.Notice(), DT_WORDBREAK | DT_EDITCONTROL | DT_NOPREFIX, room.right - room.left);
        PrvCompare(list, needed, SizeOf(room), grid.Notice());
    }

    // Places

    void PrvFindOverlaps()
    {
        for (std::size_t first = 0; first < m_controls.size(); ++first) {
            for (std::size_t second = first + 1; second < m_controls.size(); ++second) {
                const HWND one = m_controls[first];
                const HWND other = m_controls[second];
                const RECT place = PlaceIn(m_window, one);
                const RECT otherPlace = PlaceIn(m_window, other);
                RECT shared = {};
                if (!IsFrame(one) && !IsFrame(other) && IntersectRect(&shared, &place, &otherPlace) != 0)
                    PrvAdd(LayoutFaultKind::Overlap, one, "covers " + PrvName(other));
            }
        }
    }

    void PrvFindOutside()
    {
        for (const HWND control : m_controls) {
            for (HWND around = GetParent(control); around != nullptr; around = GetParent(around)) {
                const RECT place = PlaceIn(around, control);
                const SIZE room = InsideOf(around);
                if (place.left < 0 || place.top < 0 || place.right > room.cx || place.bottom > room.cy) {
                    PrvAdd(LayoutFaultKind::Outside, control, "reaches beyond " + PrvNameOfPane(around));
                    break;
                }
                if (around == m_window)
                    break;
            }
        }
    }

    [[nodiscard]] std::string PrvNameOfPane(HWND pane) const
    {
        return pane == m_window ? "the window" : PrvName(pane);
    }

    // Contrast

    void PrvFindPale(HWND control)
    {
        const bool isShownInGrey = IsWindowEnabled(control) == 0;
        const bool isText = IsLabel(control) && !IsFrame(control) && GetWindowTextLengthW(control) > 0;
        if (isShownInGrey || !(isText || IsBox(control)))
            return;
        const bool isLocked = IsBox(control) && (StyleOf(control) & ES_READONLY) != 0;
        const UINT question = IsBox(control) && !isLocked ? WM_CTLCOLOREDIT : WM_CTLCOLORSTATIC;
        const HDC canvas = GetDC(control);
        // As the system asks before it paints one.
        SendMessageW(GetParent(control), question, reinterpret_cast<WPARAM>(canvas),
                     reinterpret_cast<LPARAM>(control));
        const COLORREF ink = GetTextColor(canvas);
        const COLORREF ground = GetBkColor(canvas);
        ReleaseDC(control, canvas);
        const auto rgb = [](COLORREF color) {
            return std::uint32_t{GetRValue(color)} << 16U | std::uint32_t{GetGValue(color)} << 8U |
                   std::uint32_t{GetBValue(color)};
        };
        const double contrast = ContrastOf(rgb(ink), rgb(ground));
        if (contrast < kLegible)
            PrvAdd(LayoutFaultKind::Contrast, control, "its text's is " + std::to_string(contrast));
    }

    // The Tab key

    [[nodiscard]] static bool PrvTakesTab(HWND control)
    {
        return (StyleOf(control) & WS_TABSTOP) != 0 && IsWindowEnabled(control) != 0;
    }

    [[nodiscard]] static bool PrvSharesRow(const RECT& one, const RECT& other)
    {
        const LONG shared = std::min(one.bottom, other.bottom) - std::max(one.top, other.top);
        return 2 * shared > std::min(SizeOf(one).cy, SizeOf(other).cy);
    }

    /// In the order in which they are read.
    void PrvReadRows(Controls left, Controls& order) const
    {
        const auto place = [this](HWND control) { return PlaceIn(m_window, control); };
        std::sort(left.begin(), left.end(),
                  [&](HWND one, HWND other) { return place(one).top < place(other).top; });
        while (!left.empty()) {
            // The row of the topmost one.
            const RECT top = place(left.front());
            const auto rest = std::stable_partition(
                left.begin(), left.end(), [&](HWND other) { return PrvSharesRow(top, place(other)); });
            std::sort(left.begin(), rest,
                      [&](HWND one, HWND other) { return place(one).left < place(other).left; });
            order.insert(order.end(), left.begin(), rest);
            left.erase(left.begin(), rest);
        }
    }

    [[nodiscard]] Controls PrvReadingOrder() const
    {
        Controls stops;
        std::copy_if(m_controls.begin(), m_controls.end(), std::back_inserter(stops), &PrvTakesTab);
        Controls order;
        const auto splitter = std::find_if(m_controls.begin(), m_controls.end(), &IsSplitter);
        if (splitter == m_controls.end()) {
            PrvReadRows(std::move(stops), order);
            return order;
        }
        const RECT line = PlaceIn(m_window, *splitter);
        std::array<Controls, 4> parts; // above the panes, one, the other, below
        for (const HWND stop : stops) {
            const RECT place = PlaceIn(m_window, stop);
            const std::size_t part = place.bottom <= line.top    ? 0
                                     : place.top >= line.bottom  ? 3
                                     : place.right <= line.right ? 1
                                                                 : 2;
            parts[part].push_back(stop);
        }
        for (Controls& part : parts)
            PrvReadRows(std::move(part), order);
        return order;
    }

    [[nodiscard]] Controls PrvTabOrder() const
    {
        Controls chain;
        HWND at = GetNextDlgTabItem(m_window, nullptr, FALSE);
        while (at != nullptr && std::find(chain.begin(), chain.end(), at) == chain.end()) {
            chain.push_back(at);
            at = GetNextDlgTabItem(m_window, at, FALSE);
        }
        return chain;
    }

    void PrvFindTabFaults()
    {
        const Controls order = PrvReadingOrder();
        const Controls chain = PrvTabOrder();
        const auto differs = std::mismatch(order.begin(), order.end(), chain.begin(), chain.end());
        if (differs.first != order.end() && differs.second != chain.end()) {
            PrvAdd(LayoutFaultKind::TabOrder, *differs.second,
                   "comes where " + PrvName(*differs.first) + " is expected");
        }
    }

    HWND m_window;
    const std::function<std::string(HWND)>& m_nameOf;
    Controls m_controls;
    LayoutFaults m_faults;
};

} // namespace

LayoutFaults AuditLayout(HWND window, const std::function<std::string(HWND)>& nameOf)
{
    return Audit(window, nameOf).Run();
}

} // namespace KestrinProductEditor
