// SPDX-License-Identifier: MIT
#include "platform/win32/Win32GridAccessible.h"

#include "platform/LivingObjects.h"
#include "platform/ui/Mnemonics.h"
#include "platform/win32/Win32ClickTarget.h"
#include "platform/win32/Win32GridView.h"
#include "platform/win32/Win32Windows.h"
#include "platform/windows/WideText.h"

#include <algorithm>
#include <atomic>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace KestrinProductEditor {

namespace {

// Of the interface, __uuidof: some import libraries have a procedure under the name of its identifier.

/// Of the label in front of a window, as it is read; empty when there is none.
[[nodiscard]] std::u16string LabelOf(HWND window)
{
    const HWND label = GetWindow(window, GW_HWNDPREV);
    const bool isLabel = label != nullptr && IsOfClass(label, L"STATIC") &&
                         (GetWindowLongW(label, GWL_STYLE) & SS_NOPREFIX) == 0;
    return isLabel ? ShownCaption(TextOfWindow(label)) : std::u16string();
}

[[nodiscard]] BSTR ToBstr(std::u16string_view text)
{
    return SysAllocStringLen(Wide(text.data()), static_cast<UINT>(text.size()));
}

/// Rows as numbers, for a client that asks for several selected ones.
class RowNumbers final : public IEnumVARIANT
{
public:
    RowNumbers(std::vector<LONG> items, std::size_t at) : m_items(std::move(items)), m_at(at) {}
    RowNumbers(const RowNumbers&) = delete;
    RowNumbers& operator=(const RowNumbers&) = delete;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override
    {
        if (object == nullptr)
            return E_POINTER;
        *object = nullptr;
        if (!IsEqualIID(iid, IID_IUnknown) && !IsEqualIID(iid, IID_IEnumVARIANT))
            return E_NOINTERFACE;
        *object = static_cast<IEnumVARIANT*>(this);
        AddRef();
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++m_references; }
    ULONG STDMETHODCALLTYPE Release() override
    {
        const ULONG left = --m_references;
        if (left == 0)
            delete this; // NOLINT(cppcoreguidelines-owning-memory): as every object of this kind
        return left;
    }

    HRESULT STDMETHODCALLTYPE Next(ULONG count, VARIANT* items, ULONG* fetched) override
    {
        ULONG done = 0;
        for (; done < count && m_at < m_items.size(); ++done, ++m_at) {
            VariantInit(&items[done]);
            items[done].vt = VT_I4;
            items[done].lVal = m_items[m_at];
        }
        if (fetched != nullptr)
            *fetched = done;
        return done == count ? S_OK : S_FALSE;
    }
    HRESULT STDMETHODCALLTYPE Skip(ULONG count) override
    {
        const std::size_t left = m_items.size() - m_at;
        m_at += std::min<std::size_t>(count, left);
        return count <= left ? S_OK : S_FALSE;
    }
    HRESULT STDMETHODCALLTYPE Reset() override
    {
        m_at = 0;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE Clone(IEnumVARIANT** copy) override
    try {
        if (copy == nullptr)
            return E_POINTER;
        *copy = new RowNumbers(m_items, m_at); // NOLINT(cppcoreguidelines-owning-memory): the caller's
        return S_OK;
    } catch (...) {
        *copy = nullptr;
        return E_OUTOFMEMORY;
    }

    virtual ~RowNumbers() = default;

private:
    std::vector<LONG> m_items;
    std::size_t m_at;
    std::atomic<ULONG> m_references = 1;
    // A screen reader may hold it longer than the host does the component.
    LivingObject m_living;
};

class GridAccessible final : public IAccessible
{
public:
    GridAccessible(std::weak_ptr<Win32GridView> view, IAccessible* standard)
        : m_view(std::move(view)), m_standard(standard)
    {
    }
    GridAccessible(const GridAccessible&) = delete;
    GridAccessible& operator=(const GridAccessible&) = delete;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override
    {
        if (object == nullptr)
            return E_POINTER;
        *object = nullptr;
        if (!IsEqualIID(iid, IID_IUnknown) && !IsEqualIID(iid, IID_IDispatch) &&
            !IsEqualIID(iid, __uuidof(IAccessible)))
            return E_NOINTERFACE;
        *object = static_cast<IAccessible*>(this);
        AddRef();
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++m_references; }
    ULONG STDMETHODCALLTYPE Release() override
    {
        const ULONG left = --m_references;
        if (left == 0)
            delete this; // NOLINT(cppcoreguidelines-owning-memory): as every object of this kind
        return left;
    }

    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override
    {
        return m_standard->GetTypeInfoCount(count);
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) override
    {
        return m_standard->GetTypeInfo(index, locale, info);
    }
    // The type library's names and numbers are the same for every object; late calls must come here.
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID iid, LPOLESTR* names, UINT count, LCID locale,
                                            DISPID* ids) override
    {
        return m_standard->GetIDsOfNames(iid, names, count, locale, ids);
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID /*iid*/, LCID locale, WORD flags,
                                     DISPPARAMS* arguments, VARIANT* result, EXCEPINFO* exception,
                                     UINT* badArgument) override
    {
        ITypeInfo* info = nullptr;
        const HRESULT found = m_standard->GetTypeInfo(0, locale, &info);
        if (FAILED(found))
            return found;
        const HRESULT done = info->Invoke(static_cast<IAccessible*>(this), id, flags, arguments, result,
                                          exception, badArgument);
        info->Release();
        return done;
    }

    HRESULT STDMETHODCALLTYPE get_accParent(IDispatch** parent) override
    {
        return PrvView() ? m_standard->get_accParent(parent) : CO_E_OBJNOTCONNECTED;
    }
    HRESULT STDMETHODCALLTYPE get_accChildCount(LONG* count) override
    {
        return PrvAnswer([&](Win32GridView& view) {
            *count = view.Geometry().DataRows();
            return S_OK;
        });
    }
    HRESULT STDMETHODCALLTYPE get_accChild(VARIANT /*child*/, IDispatch** object) override
    {
        // Rows are no objects of their own.
        *object = nullptr;
        return S_FALSE;
    }
    HRESULT STDMETHODCALLTYPE get_accName(VARIANT child, BSTR* name) override
    {
        return PrvOfRow(
            child,
            [&](Win32GridView& view) {
                // The system names none but its own controls by their labels.
                const std::u16string label = LabelOf(view.Window());
                if (label.empty())
                    return m_standard->get_accName(child, name);
                *name = ToBstr(label);
                return S_OK;
            },
            [&](Win32GridView& view, std::int32_t row) {
                *name = ToBstr(PrvReadAloud(view, row));
                return S_OK;
            });
    }
    HRESULT STDMETHODCALLTYPE get_accValue(VARIANT /*child*/, BSTR* value) override
    {
        *value = nullptr;
        return DISP_E_MEMBERNOTFOUND;
    }
    HRESULT STDMETHODCALLTYPE get_accDescription(VARIANT child, BSTR* description) override
    {
        *description = nullptr;
        const auto give = [&](const std::u16string& text) {
            if (text.empty())
                return S_FALSE;
            *description = ToBstr(text);
            return S_OK;
        };
        return PrvOfRow(
            child, [&](Win32GridView& view) { return give(view.Grid()->Notice()); },
            [&](Win32GridView& view, std::int32_t row) { return give(PrvMarks(view, row)); });
    }
    HRESULT STDMETHODCALLTYPE get_accRole(VARIANT child, VARIANT* role) override
    {
        const auto give = [role](LONG value) {
            role->vt = VT_I4;
            role->lVal = value;
            return S_OK;
        };
        return PrvOfRow(
            child, [&](Win32GridView&) { return give(ROLE_SYSTEM_LIST); },
            [&](Win32GridView&, std::int32_t) { return give(ROLE_SYSTEM_LISTITEM); });
    }
    HRESULT STDMETHODCALLTYPE get_accState(VARIANT child, VARIANT* state) override
    {
        return PrvOfRow(
            child, [&](Win32GridView&) { return m_standard->get_accState(child, state); },
            [&](Win32GridView& view, std::int32_t row) {
                state->vt = VT_I4;
                state->lVal = PrvState(view, row);
                return S_OK;
            });
    }
    HRESULT STDMETHODCALLTYPE get_accHelp(VARIANT /*child*/, BSTR* help) override
    {
        *help = nullptr;
        return DISP_E_MEMBERNOTFOUND;
    }
    HRESULT STDMETHODCALLTYPE get_accHelpTopic(BSTR* file, VARIANT /*child*/, LONG* /*topic*/) override
    {
        *file = nullptr;
        return DISP_E_MEMBERNOTFOUND;
    }
    HRESULT STDMETHODCALLTYPE get_accKeyboardShortcut(VARIANT child, BSTR* shortcut) override
    {
        *shortcut = nullptr;
        return PrvOfRow(
            child, [&](Win32GridView&) { return m_standard->get_accKeyboardShortcut(child, shortcut); },
            [](Win32GridView&, std::int32_t) { return S_FALSE; });
    }
    HRESULT STDMETHODCALLTYPE get_accFocus(VARIANT* child) override
    {
        return PrvAnswer([&](Win32GridView& view) {
            VariantInit(child);
            if (GetFocus() != view.Window())
                return S_FALSE;
            child->vt = VT_I4;
            child->lVal =
                view.Grid()->CurrentRow() < 0 ? CHILDID_SELF : PrvItem(view, view.Grid()->CurrentRow());
            return S_OK;
        });
    }
    HRESULT STDMETHODCALLTYPE get_accSelection(VARIANT* children) override
    {
        return PrvAnswer([&](Win32GridView& view) {
            VariantInit(children);
            const GridBase& grid = *view.Grid();
            const std::int32_t count = grid.SelectedRowCount();
            if (count == 0)
                return S_FALSE;
            if (count == 1) {
                children->vt = VT_I4;
                children->lVal = PrvItem(view, grid.SelectedRow(0));
                return S_OK;
            }
            std::vector<LONG> items;
            items.reserve(static_cast<std::size_t>(count));
            for (std::int32_t index = 0; index < count; ++index)
                items.push_back(PrvItem(view, grid.SelectedRow(index)));
            children->punkVal =
                new RowNumbers(std::move(items), 0); // NOLINT(cppcoreguidelines-owning-memory)
            children->vt = VT_UNKNOWN;
            return S_OK;
        });
    }
    HRESULT STDMETHODCALLTYPE get_accDefaultAction(VARIANT /*child*/, BSTR* action) override
    {
        *action = nullptr;
        return DISP_E_MEMBERNOTFOUND;
    }
    HRESULT STDMETHODCALLTYPE accSelect(LONG flags, VARIANT child) override
    {
        return PrvOfRow(
            child,
            [&](Win32GridView& view) {
                if (flags != SELFLAG_TAKEFOCUS)
                    return E_INVALIDARG;
                SetFocus(view.Window());
                return S_OK;
            },
            [&](Win32GridView& view, std::int32_t row) {
                if (!IsOpenToUser(view.Window()))
                    return E_FAIL;
                if ((flags & SELFLAG_TAKEFOCUS) != 0)
                    SetFocus(view.Window());
                // Whoever lost the focus may have ended the grid.
                if (view.Grid() == nullptr)
                    return CO_E_OBJNOTCONNECTED;
                const std::optional<HeldKeys> held =
                    PrvHeldFor(flags, view.Grid()->Selection().Contains(row));
                return !held || view.Choose(row, *held) ? S_OK : E_FAIL;
            });
    }
    HRESULT STDMETHODCALLTYPE accLocation(LONG* left, LONG* top, LONG* width, LONG* height,
                                          VARIANT child) override
    {
        return PrvOfRow(
            child, [&](Win32GridView&) { return m_standard->accLocation(left, top, width, height, child); },
            [&](Win32GridView& view, std::int32_t row) {
                RECT place = view.Geometry().RowRect(row);
                MapWindowPoints(view.Window(), nullptr, reinterpret_cast<POINT*>(&place), 2);
                *left = std::min(place.left, place.right);
                *top = place.top;
                *width = std::abs(place.right - place.left);
                *height = place.bottom - place.top;
                return S_OK;
            });
    }
    HRESULT STDMETHODCALLTYPE accNavigate(LONG direction, VARIANT start, VARIANT* end) override
    {
        return PrvAnswer([&](Win32GridView& view) {
            VariantInit(end);
            const LONG last = view.Geometry().DataRows();
            LONG item = start.vt == VT_I4 ? start.lVal : CHILDID_SELF;
            if (item == CHILDID_SELF && direction != NAVDIR_FIRSTCHILD && direction != NAVDIR_LASTCHILD)
                return m_standard->accNavigate(direction, start, end);
            switch (direction) {
            case NAVDIR_FIRSTCHILD:
                item = 1;
                break;
            case NAVDIR_LASTCHILD:
                item = last;
                break;
            case NAVDIR_NEXT:
            case NAVDIR_DOWN:
                ++item;
                break;
            case NAVDIR_PREVIOUS:
            case NAVDIR_UP:
                --item;
                break;
            default:
                item = 0;
                break;
            }
            if (item < 1 || item > last)
                return S_FALSE;
            end->vt = VT_I4;
            end->lVal = item;
            return S_OK;
        });
    }
    HRESULT STDMETHODCALLTYPE accHitTest(LONG x, LONG y, VARIANT* child) override
    {
        return PrvAnswer([&](Win32GridView& view) {
            VariantInit(child);
            POINT place{x, y};
            ScreenToClient(view.Window(), &place);
            RECT client{};
            GetClientRect(view.Window(), &client);
            if (!PtInRect(&client, place))
                return m_standard->accHitTest(x, y, child);
            const std::int32_t row = view.Geometry().RowAt(place.y);
            child->vt = VT_I4;
            child->lVal = row < 0 ? CHILDID_SELF : PrvItem(view, row);
            return S_OK;
        });
    }
    HRESULT STDMETHODCALLTYPE accDoDefaultAction(VARIANT /*child*/) override { return DISP_E_MEMBERNOTFOUND; }
    HRESULT STDMETHODCALLTYPE put_accName(VARIANT /*child*/, BSTR /*name*/) override
    {
        return DISP_E_MEMBERNOTFOUND;
    }
    HRESULT STDMETHODCALLTYPE put_accValue(VARIANT /*child*/, BSTR /*value*/) override
    {
        return DISP_E_MEMBERNOTFOUND;
    }

    virtual ~GridAccessible() { m_standard->Release(); }

private:
    /// Null when the window or the grid has ended.
    [[nodiscard]] std::shared_ptr<Win32GridView> PrvView() const
    {
        std::shared_ptr<Win32GridView> view = m_view.lock();
        return view && view->Window() != nullptr && view->Grid() != nullptr ? view : nullptr;
    }

    template<class Answer>
    [[nodiscard]] HRESULT PrvAnswer(const Answer& answer) const
    {
        try {
            const std::shared_ptr<Win32GridView> view = PrvView();
            return view ? answer(*view) : CO_E_OBJNOTCONNECTED;
        } catch (...) {
            return E_OUTOFMEMORY;
        }
    }

    template<class OfList, class OfRow>
    [[nodiscard]] HRESULT PrvOfRow(const VARIANT& child, const OfList& ofList, const OfRow& ofRow) const
    {
        return PrvAnswer([&](Win32GridView& view) -> HRESULT {
            if (child.vt != VT_I4 || child.lVal < 0 || child.lVal > view.Geometry().DataRows())
                return E_INVALIDARG;
            if (child.lVal == CHILDID_SELF)
                return ofList(view);
            return ofRow(view, child.lVal - 1 + view.Geometry().FirstRow());
        });
    }

    /// The keys with which a click does what is asked for; nothing when it is so already.
    [[nodiscard]] static std::optional<HeldKeys> PrvHeldFor(LONG flags, bool isSelected)
    {
        if ((flags & SELFLAG_EXTENDSELECTION) != 0)
            return HeldKeys{.shift = true, .control = false};
        const bool isAsked = (flags & SELFLAG_ADDSELECTION) != 0;
        if (isAsked != isSelected && (isAsked || (flags & SELFLAG_REMOVESELECTION) != 0))
            return HeldKeys{.shift = false, .control = true};
        return (flags & SELFLAG_TAKESELECTION) != 0 ? std::optional(HeldKeys{}) : std::nullopt;
    }

    [[nodiscard]] static LONG PrvItem(const Win32GridView& view, std::int32_t row)
    {
        return row - view.Geometry().FirstRow() + 1;
    }

    [[nodiscard]] static std::u16string PrvReadAloud(const Win32GridView& view, std::int32_t row)
    {
        const GridBase& grid = *view.Grid();
        std::u16string read;
        for (std::int32_t col = 0; col < grid.Cols(); ++col) {
            const std::u16string text = grid.IsColHidden(col) ? std::u16string() : grid.DisplayText(row, col);
            if (text.empty())
                continue;
            if (!read.empty())
                read += u", ";
            const std::u16string heading = grid.FixedRows() > 0 ? grid.DisplayText(0, col) : std::u16string();
            if (!heading.empty())
                read += heading + u": ";
            read += text;
        }
        return read;
    }

    [[nodiscard]] static std::u16string PrvMarks(const Win32GridView& view, std::int32_t row)
    {
        const GridBase& grid = *view.Grid();
        std::u16string marks;
        for (std::int32_t col = 0; col < grid.Cols(); ++col) {
            const std::u16string mark = grid.IsColHidden(col) ? std::u16string() : grid.CellMark(row, col);
            if (mark.empty())
                continue;
            if (!marks.empty())
                marks += u", ";
            marks += mark;
        }
        return marks;
    }

    [[nodiscard]] static LONG PrvState(const Win32GridView& view, std::int32_t row)
    {
        const GridBase& grid = *view.Grid();
        LONG state = STATE_SYSTEM_SELECTABLE | STATE_SYSTEM_FOCUSABLE;
        if (grid.Mode() == SelectionMode::ListBox)
            state |= STATE_SYSTEM_MULTISELECTABLE | STATE_SYSTEM_EXTSELECTABLE;
        if (grid.Selection().Contains(row))
            state |= STATE_SYSTEM_SELECTED;
        if (grid.CurrentRow() == row && GetFocus() == view.Window())
            state |= STATE_SYSTEM_FOCUSED;
        const RECT place = view.Geometry().RowRect(row);
        if (place.bottom <= view.Geometry().HeaderHeight() || place.top >= view.Geometry().Client().cy)
            state |= STATE_SYSTEM_OFFSCREEN | STATE_SYSTEM_INVISIBLE;
        if (!IsWindowEnabled(view.Window()))
            state |= STATE_SYSTEM_UNAVAILABLE;
        return state;
    }

    std::weak_ptr<Win32GridView> m_view;
    IAccessible* m_standard; // what the system says of any window
    std::atomic<ULONG> m_references = 1;
    // A screen reader may hold it longer than the host does the component.
    LivingObject m_living;
};

} // namespace

IAccessible* MakeGridAccessible(const std::shared_ptr<Win32GridView>& view)
{
    void* standard = nullptr;
    if (FAILED(CreateStdAccessibleObject(view->Window(), OBJID_CLIENT, __uuidof(IAccessible), &standard)))
        return nullptr;
    auto* const held = static_cast<IAccessible*>(standard);
    try {
        return new GridAccessible(view,
                                  held); // NOLINT(cppcoreguidelines-owning-memory): counts its references
    } catch (...) {
        held->Release();
        return nullptr;
    }
}

} // namespace KestrinProductEditor
