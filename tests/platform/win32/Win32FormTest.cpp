// SPDX-License-Identifier: MIT
#include "platform/win32/Win32Form.h"

#include "platform/LivingObjects.h"
#include "platform/ui/MessageBox.h"
#include "platform/ui/Toolkit.h"
#include "platform/win32/Win32GridView.h"
#include "platform/win32/Win32MessageBox.h"
#include "platform/win32/Win32Splitter.h"
#include "platform/win32/Win32UserControl.h"
#include "platform/win32/Win32Watchdog.h"
#include "support/ErrorOf.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <oleacc.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace KestrinProductEditor {

namespace {

/// A window of the host's, which runs what is posted to it in whatever loop takes its messages.
class HostWindow
{
public:
    explicit HostWindow(DWORD extendedStyle = 0, DWORD style = WS_OVERLAPPEDWINDOW | WS_VISIBLE)
        : m_window(CreateWindowExW(extendedStyle, L"STATIC", L"host", style, 0, 0, 400, 300, nullptr, nullptr,
                                   nullptr, nullptr))
    {
        SetWindowLongPtrW(m_window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&PrvProcedure));
    }
    HostWindow(const HostWindow&) = delete;
    HostWindow& operator=(const HostWindow&) = delete;
    ~HostWindow() { End(); }

    [[nodiscard]] HWND Window() const { return m_window; }
    [[nodiscard]] bool IsEnabled() const { return IsWindowEnabled(m_window) != 0; }
    void End()
    {
        if (m_window != nullptr)
            DestroyWindow(std::exchange(m_window, nullptr));
    }
    void Later(std::function<void()> act) const
    {
        PostMessageW(m_window, WM_APP, 0, reinterpret_cast<LPARAM>(new std::function(std::move(act))));
    }

private:
    static LRESULT CALLBACK PrvProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
    {
        if (message != WM_APP)
            return DefWindowProcW(window, message, wParam, lParam);
        const std::unique_ptr<std::function<void()>> act(reinterpret_cast<std::function<void()>*>(lParam));
        (*act)();
        return 0;
    }

    HWND m_window;
};

class Win32FormTest : public testing::Test
{
protected:
    [[nodiscard]] HostWindow& Host() { return m_host; }
    [[nodiscard]] Win32Form& Form() { return m_form; }

    /// Shows the form while `act` goes on; the form is ended afterwards.
    void Show(const std::function<void()>& act)
    {
        m_host.Later([&] {
            act();
            m_form.EndModal();
        });
        m_form.ShowModal();
    }

    [[nodiscard]] HWND Find(std::u16string_view name) { return m_form.Controls().WindowOf(name); }

    static void Press(Win32Form& form, UINT key)
    {
        MSG message = {};
        message.hwnd = GetFocus();
        message.message = WM_KEYDOWN;
        message.wParam = key;
        message.lParam = 1;
        form.PassOn(message);
    }
    void RunAll()
    {
        MSG message = {};
        PostMessageW(m_host.Window(), WM_NULL, 0, 0);
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != 0)
            m_form.PassOn(message);
    }

private:
    Win32Watchdog m_watchdog;
    HostWindow m_host;
    Win32Form m_form{u"frmProductImport"};
};

[[nodiscard]] LONG KindOf(HWND button)
{
    return GetWindowLongW(button, GWL_STYLE) & BS_TYPEMASK;
}

[[nodiscard]] RECT PlaceOf(HWND window)
{
    RECT place = {};
    GetWindowRect(window, &place);
    return place;
}

/// The user has chosen a larger or smaller font for the texts of messages.
class SystemFont
{
public:
    SystemFont()
    {
        m_before.cbSize = sizeof m_before;
        SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof m_before, &m_before, 0);
    }
    SystemFont(const SystemFont&) = delete;
    SystemFont& operator=(const SystemFont&) = delete;
    ~SystemFont() { SystemParametersInfoW(SPI_SETNONCLIENTMETRICS, sizeof m_before, &m_before, 0); }

    void Multiply(int numerator, int denominator) const
    {
        NONCLIENTMETRICSW metrics = m_before;
        metrics.lfMessageFont.lfHeight = MulDiv(metrics.lfMessageFont.lfHeight, numerator, denominator);
        SystemParametersInfoW(SPI_SETNONCLIENTMETRICS, sizeof metrics, &metrics, 0);
    }

private:
    NONCLIENTMETRICSW m_before = {};
};

} // namespace

// Modality

TEST_F(Win32FormTest, DisablesTheWindowsOfItsThreadAndGivesThemBack)
{
    const HostWindow other;
    const HostWindow disabled(0, WS_OVERLAPPEDWINDOW | WS_VISIBLE | WS_DISABLED);
    const HostWindow hidden(0, WS_OVERLAPPEDWINDOW);
    Show([&] {
        EXPECT_FALSE(Host().IsEnabled());
        EXPECT_FALSE(other.IsEnabled());
        EXPECT_FALSE(disabled.IsEnabled());
        EXPECT_TRUE(hidden.IsEnabled());
        EXPECT_NE(IsWindowEnabled(Form().Window()), 0);
    });
    EXPECT_TRUE(Host().IsEnabled());
    EXPECT_TRUE(other.IsEnabled());
    EXPECT_FALSE(disabled.IsEnabled());
}

TEST_F(Win32FormTest, BelongsToTheActiveWindowWhichIsActiveAgainAfterwards)
{
    const HostWindow other;
    SetActiveWindow(Host().Window());
    Show([&] {
        EXPECT_EQ(GetWindow(Form().Window(), GW_OWNER), Host().Window());
        EXPECT_EQ(GetActiveWindow(), Form().Window());
    });
    EXPECT_EQ(GetActiveWindow(), Host().Window());
}

TEST_F(Win32FormTest, LeavesItsOwnerWhenItHasEnded)
{
    SetActiveWindow(Host().Window());
    Show([] {});
    Host().End();
    EXPECT_NE(IsWindow(Form().Window()), 0);
}

TEST_F(Win32FormTest, StandsInFrontOfAnOwnerThatStaysInFrontOfAllOthers)
{
    const HostWindow topmost(WS_EX_TOPMOST);
    SetActiveWindow(topmost.Window());
    Show([&] { EXPECT_NE(GetWindowLongW(Form().Window(), GWL_EXSTYLE) & WS_EX_TOPMOST, 0); });
}

TEST_F(Win32FormTest, GivesTheWindowsBackWhenItEndsByAnError)
{
    Form().Controls().Keys().Bind(
        {.key = Key::F2, .control = false}, []() -> bool { throw AutomationError(kErrOutOfMemory); }, [] {});
    Host().Later([&] { PostMessageW(GetFocus(), WM_KEYDOWN, VK_F2, 1); });
    EXPECT_EQ(ErrorNumberOf([&] { Form().ShowModal(); }), kErrOutOfMemory);
    EXPECT_TRUE(Host().IsEnabled());
    EXPECT_EQ(IsWindowVisible(Form().Window()), 0);
    EXPECT_EQ(Win32Form::FrontWindow(), nullptr);
    Show([&] { EXPECT_NE(IsWindowVisible(Form().Window()), 0); });
}

TEST_F(Win32FormTest, ReturnsWhenItsOwnerEnds)
{
    const HostWindow other;
    SetActiveWindow(Host().Window());
    Host().Later([&] { Host().End(); });
    Form().ShowModal();
    EXPECT_TRUE(other.IsEnabled());
    EXPECT_EQ(Win32Form::FrontWindow(), nullptr);
    // There is nothing left that could be shown.
    Form().ShowModal();
    EXPECT_TRUE(other.IsEnabled());
}

TEST_F(Win32FormTest, IsNoOwnerOfMessagesWhenItHasEnded)
{
    Show([&] {
        EXPECT_EQ(Win32Form::FrontWindow(), Form().Window());
        Form().EndModal();
        EXPECT_EQ(Win32Form::FrontWindow(), nullptr);
    });
}

TEST_F(Win32FormTest, IsShownOnTwoThreadsAtOnce)
{
    Show([&] {
        const HWND first = Form().Window();
        std::thread([first] {
            const HostWindow host;
            Win32Form form(u"frmProductExport");
            host.Later([&] {
                EXPECT_EQ(Win32Form::Shown(), std::vector<Win32Form*>{&form});
                EXPECT_FALSE(host.IsEnabled());
                form.EndModal();
            });
            form.ShowModal();
            EXPECT_NE(IsWindowEnabled(first), 0);
            EXPECT_TRUE(host.IsEnabled());
        }).join();
        EXPECT_EQ(Win32Form::Shown(), std::vector<Win32Form*>{&Form()});
    });
}

TEST_F(Win32FormTest, KeepsTheHostsWindowsDisabledUnderAFormInFront)
{
    Show([&] {
        Win32Form front(u"frmProdImportPreview");
        Host().Later([&] {
            EXPECT_EQ(GetWindow(front.Window(), GW_OWNER), Form().Window());
            EXPECT_EQ(IsWindowEnabled(Form().Window()), 0);
            front.EndModal();
        });
        front.ShowModal();
        EXPECT_FALSE(Host().IsEnabled());
        EXPECT_NE(IsWindowEnabled(Form().Window()), 0);
        EXPECT_EQ(GetActiveWindow(), Form().Window());
    });
}

// The ways out

TEST_F(Win32FormTest, TakesTheEndOfTheProgramForItsCloseBoxAndPassesItOn)
{
    int asked = 0;
    Form().CloseBox.Connect([&] { ++asked; });
    Host().Later([] { PostQuitMessage(7); });
    Form().ShowModal();
    EXPECT_EQ(asked, 1);
    EXPECT_TRUE(Host().IsEnabled());
    MSG message = {};
    ASSERT_NE(PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE), 0);
    EXPECT_EQ(message.message, static_cast<UINT>(WM_QUIT));
    EXPECT_EQ(message.wParam, 7U);
}

TEST_F(Win32FormTest, HearsOfTheEndOfTheProgramThatCameWhileItWasBusy)
{
    int asked = 0;
    Form().CloseBox.Connect([&] { ++asked; });
    Host().Later([&] {
        Form().SetBusy(true);
        PostQuitMessage(7);
        InvalidateRect(Form().Window(), nullptr, TRUE);
        Form().KeepPainting();
        EXPECT_EQ(GetUpdateRect(Form().Window(), nullptr, FALSE), 0);
        Form().SetBusy(false);
    });
    Form().ShowModal();
    EXPECT_EQ(asked, 1);
    MSG message = {};
    ASSERT_NE(PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE), 0);
    EXPECT_EQ(message.wParam, 7U);
}

TEST_F(Win32FormTest, LetsTheSessionEndWhenItHasEndedItself)
{
    const auto mayEnd = [&] { return SendMessageW(Form().Window(), WM_QUERYENDSESSION, 0, 0) != 0; };
    int asked = 0;
    EXPECT_TRUE(mayEnd());
    Show([&] {
        Form().CloseBox.Connect([&] { ++asked; });
        EXPECT_FALSE(mayEnd());
        EXPECT_EQ(asked, 1);
        Form().SetBusy(true);
        EXPECT_FALSE(mayEnd());
        EXPECT_EQ(asked, 1);
        Form().SetBusy(false);
        Form().CloseBox.Connect([&] { Form().EndModal(); });
        EXPECT_TRUE(mayEnd());
    });
}

TEST_F(Win32FormTest, ClosesOnlyWhereTheUserCanReachIt)
{
    int asked = 0;
    Form().CloseBox.Connect([&] { ++asked; });
    const auto close = [&] {
        SendMessageW(Form().Window(), WM_SYSCOMMAND, SC_CLOSE, 0);
        SendMessageW(Form().Window(), WM_CLOSE, 0, 0);
        return std::exchange(asked, 0);
    };
    EXPECT_EQ(close(), 0);
    Show([&] {
        EXPECT_EQ(close(), 2);
        Form().SetBusy(true);
        EXPECT_EQ(close(), 0);
        Form().SetBusy(false);
        Host().Later([&] {
            EXPECT_EQ(close(), 0);
            EndDialog(FindWindowW(L"#32770", L"kstnedit test box"), IDOK);
        });
        MessageBoxW(Form().Window(), L"Sure?", L"kstnedit test box", MB_OK);
        EXPECT_EQ(close(), 2);
        Form().EndModal();
        EXPECT_EQ(close(), 0);
    });
}

TEST_F(Win32FormTest, ClosesByAltF4AlsoWhereAListIsOpenInACell)
{
    int asked = 0;
    Form().CloseBox.Connect([&] { ++asked; });
    IGrid& grid = Form().Grid(u"flexGrid");
    grid.SetCols(1);
    grid.SetRows(2);
    grid.SetColComboList(0, u"#0;No|#1;Yes");
    grid.SetCurrentRow(1);
    int picked = 0;
    grid.CellChange.Connect([&](std::int32_t, std::int32_t) { ++picked; });
    Show([&] {
        grid.SetFocus();
        const HWND window = Find(u"flexGrid");
        SendMessageW(window, WM_KEYDOWN, VK_F4, 1);
        ASSERT_NE(Win32GridView::Of(window)->OpenDropDown(), nullptr);
        constexpr LPARAM kAltIsHeld = 1 << 29;
        SendMessageW(window, WM_SYSKEYDOWN, VK_F4, kAltIsHeld | 1);
        MSG message = {};
        while (PeekMessageW(&message, Form().Window(), 0, 0, PM_REMOVE) != 0)
            Form().PassOn(message);
    });
    EXPECT_EQ(asked, 1);
    EXPECT_EQ(picked, 0);
}

// Keys

TEST_F(Win32FormTest, ShowsTheButtonThatEnterClicksAsTheDefault)
{
    Form().SetDefaultButton(Form().Button(u"cmdImport"));
    Form().SetFirstFocus(Form().TextBox(u"txtImportFilePath"));
    Show([&] {
        EXPECT_EQ(KindOf(Find(u"cmdImport")), BS_DEFPUSHBUTTON);
        Form().Button(u"cmdBrowse").SetFocus();
        RunAll();
        EXPECT_EQ(KindOf(Find(u"cmdBrowse")), BS_DEFPUSHBUTTON);
        EXPECT_EQ(KindOf(Find(u"cmdImport")), BS_PUSHBUTTON);
        Form().TextBox(u"txtImportFilePath").SetFocus();
        RunAll();
        EXPECT_EQ(KindOf(Find(u"cmdBrowse")), BS_PUSHBUTTON);
        EXPECT_EQ(KindOf(Find(u"cmdImport")), BS_DEFPUSHBUTTON);
        Press(Form(), VK_TAB);
        EXPECT_EQ(KindOf(Find(u"cmdBrowse")), BS_DEFPUSHBUTTON);
        EXPECT_EQ(KindOf(Find(u"cmdImport")), BS_PUSHBUTTON);
    });
}

TEST_F(Win32FormTest, LetsArrowKeysReachOnlyWhatCanHaveTheFocus)
{
    const struct
    {
        std::u16string_view layout;
        std::u16string_view button;
    } cases[] = {
        {u"frmProductImport", u"cmdPreview"}, {u"frmProductImport", u"cmdCancel"},
        {u"frmProductImport", u"chkAppend"},  {u"frmProductExport", u"cmdExport"},
        {u"frmProductExport", u"cmdCancel"},  {u"frmProductEditor", u"cmdNew"},
        {u"frmProductEditor", u"cmdCancel"},
    };
    for (const auto& each : cases) {
        Win32Form form(each.layout);
        Host().Later([&] {
            for (const UINT key : std::initializer_list<UINT>{VK_LEFT, VK_UP, VK_RIGHT, VK_DOWN}) {
                ::SetFocus(form.Controls().WindowOf(each.button));
                Press(form, key);
                EXPECT_EQ(GetFocus(), form.Controls().Focus().KeyWindow())
                    << testing::PrintToString(each.layout) << " " << key << " id "
                    << GetDlgCtrlID(GetFocus());
            }
            form.EndModal();
        });
        form.ShowModal();
    }
}

// Size, font and direction

TEST_F(Win32FormTest, IsNeverSmallerThanItsLayoutAllows)
{
    Show([&] {
        RECT inside = {};
        SetWindowPos(Form().Window(), nullptr, 0, 0, 10, 10, SWP_NOMOVE | SWP_NOZORDER);
        GetClientRect(Form().Window(), &inside);
        const RECT import = PlaceOf(Find(u"cmdImport"));
        const RECT preview = PlaceOf(Find(u"cmdPreview"));
        EXPECT_LT(preview.right, import.left);
        EXPECT_GT(PlaceOf(Find(u"flexGrid")).bottom, PlaceOf(Find(u"flexGrid")).top);
    });
}

TEST_F(Win32FormTest, GrowsWithALargerFontWhereItWouldBeTooSmall)
{
    const SystemFont font;
    Show([&] {
        SetWindowPos(Form().Window(), nullptr, 0, 0, 10, 10, SWP_NOMOVE | SWP_NOZORDER);
        const RECT before = PlaceOf(Form().Window());
        font.Multiply(3, 2);
        SendMessageW(Form().Window(), WM_SETTINGCHANGE, 0, 0);
        const RECT after = PlaceOf(Form().Window());
        EXPECT_GT(after.right - after.left, before.right - before.left);
        EXPECT_GT(after.bottom - after.top, before.bottom - before.top);
        EXPECT_LT(PlaceOf(Find(u"cmdPreview")).right, PlaceOf(Find(u"cmdImport")).left);
    });
}

TEST_F(Win32FormTest, TakesTheSizeThatGoesWithASmallerResolution)
{
    const SystemFont font;
    font.Multiply(2, 1);
    Win32Form form(u"frmProductImport");
    Host().Later([&] {
        font.Multiply(1, 1);
        const RECT now = PlaceOf(form.Window());
        RECT half = now;
        half.right = now.left + (now.right - now.left) / 2;
        half.bottom = now.top + (now.bottom - now.top) / 2;
        SendMessageW(form.Window(), WM_DPICHANGED, MAKEWPARAM(96, 96), reinterpret_cast<LPARAM>(&half));
        const RECT taken = PlaceOf(form.Window());
        EXPECT_NE(EqualRect(&half, &taken), 0);
        form.EndModal();
    });
    form.ShowModal();
}

TEST_F(Win32FormTest, ReadsFromTheRightWhereTheProgramDoes)
{
    SetProcessDefaultLayout(LAYOUT_RTL);
    Win32Form form(u"frmProductImport");
    SetProcessDefaultLayout(0);
    Host().Later([&] {
        const auto find = [&](std::u16string_view name) { return form.Controls().WindowOf(name); };
        EXPECT_GT(PlaceOf(find(u"lblImportFilePath")).left, PlaceOf(find(u"txtImportFilePath")).right);
        EXPECT_GT(PlaceOf(find(u"cmdPreview")).left, PlaceOf(find(u"cmdCancel")).right);
        form.EndModal();
    });
    form.ShowModal();
}

// The splitter

TEST(Win32SplitterTest, MovesWithTheMouseThatIsHeldDown)
{
    const HostWindow host;
    Win32Form form(u"frmProductEditor");
    host.Later([&] {
        const HWND splitter = FindWindowExW(form.Window(), nullptr, Win32Splitter::kClassName, nullptr);
        const auto left = [&] { return PlaceOf(splitter).left; };
        const LONG drawn = left();
        const auto pane = [&] { return PlaceOf(form.Controls().WindowOf(u"flexGrid")).right; };
        const LONG drawnPane = pane();
        SendMessageW(splitter, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(2, 10));
        SendMessageW(splitter, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(12, 10));
        EXPECT_EQ(left(), drawn + 10);
        EXPECT_EQ(pane(), drawnPane + 10);
        // Far beyond its end.
        SendMessageW(splitter, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(20'000, 10));
        EXPECT_LT(left(), PlaceOf(form.Controls().WindowOf(u"cmdSaveClose")).right);
        const LONG last = left();
        // The release of the button was lost.
        SendMessageW(splitter, WM_MOUSEMOVE, 0, MAKELPARAM(-50, 10));
        SendMessageW(splitter, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(-50, 10));
        EXPECT_EQ(left(), last);
        form.EndModal();
    });
    form.ShowModal();
}

TEST(Win32SplitterTest, LeavesTheButtonsOfThePaneInsideTheLeastWindow)
{
    const HostWindow host;
    Win32Form form(u"frmProductEditor");
    host.Later([&] {
        SetWindowPos(form.Window(), nullptr, 0, 0, 1, 1, SWP_NOMOVE | SWP_NOZORDER);
        const HWND splitter = FindWindowExW(form.Window(), nullptr, Win32Splitter::kClassName, nullptr);
        SendMessageW(splitter, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(2, 10));
        SendMessageW(splitter, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(20'000, 10));
        const LONG paneEnd = PlaceOf(form.Controls().WindowOf(u"txtNote")).right;
        for (const char16_t* name : {u"cmdDelete", u"cmdCancelEdit"})
            EXPECT_LE(PlaceOf(form.Controls().WindowOf(name)).right, paneEnd);
        form.EndModal();
    });
    form.ShowModal();
}

// What outlives its window

TEST(Win32UserControlTest, OutlivesTheWindowOfItsHost)
{
    Win32UserControl control(u"ProductDetails");
    ITextBox& box = control.TextBox(u"txtProductName");
    {
        const HostWindow host;
        SetParent(static_cast<HWND>(control.NativeHandle()), host.Window());
        box.SetText(u"Hammer");
        box.SetFocus();
    }
    EXPECT_EQ(box.Text(), u"Hammer");
    box.SetText(u"Saw");
    box.SetFocus();
    EXPECT_EQ(box.Text(), u"Saw");
    EXPECT_EQ(control.NativeHandle(), nullptr);
    EXPECT_EQ(control.InnerWidth(), 0);
    EXPECT_EQ(ErrorNumberOf([&] { static_cast<void>(control.Button(u"cmdNew")); }), kErrInvalidProcedureCall);
}

TEST_F(Win32FormTest, KeepsTheComponentInMemoryWhileAReaderHoldsItsGrid)
{
    const long before = g_livingObjects;
    const LRESULT reference = SendMessageW(Find(u"flexGrid"), WM_GETOBJECT, 0, OBJID_CLIENT);
    void* object = nullptr;
    ASSERT_EQ(ObjectFromLresult(reference, __uuidof(IAccessible), 0, &object), S_OK);
    EXPECT_GT(g_livingObjects, before);
    static_cast<IAccessible*>(object)->Release();
    EXPECT_EQ(g_livingObjects, before);
}

TEST_F(Win32FormTest, ShowsThatItIsBusyByTheCursor)
{
    Show([&] {
        Form().SetBusy(true);
        EXPECT_EQ(SendMessageW(Form().Window(), WM_SETCURSOR, 0, 0), TRUE);
        EXPECT_EQ(GetCursor(), LoadCursorW(nullptr, IDC_WAIT));
        Form().SetBusy(false);
        EXPECT_NE(GetCursor(), LoadCursorW(nullptr, IDC_WAIT));
    });
}

TEST_F(Win32FormTest, TakesNoActsOfAReaderWhileItIsBusy)
{
    IGrid& grid = Form().Grid(u"flexGrid");
    grid.SetCols(1);
    grid.SetRows(3);
    void* object = nullptr;
    ASSERT_EQ(AccessibleObjectFromWindow(Find(u"flexGrid"), static_cast<DWORD>(OBJID_CLIENT),
                                         __uuidof(IAccessible), &object),
              S_OK);
    auto* const list = static_cast<IAccessible*>(object);
    VARIANT second = {};
    second.vt = VT_I4;
    second.lVal = 2;
    Show([&] {
        Form().SetBusy(true);
        EXPECT_TRUE(FAILED(list->accSelect(SELFLAG_TAKESELECTION, second)));
        EXPECT_EQ(grid.CurrentRow(), -1);
        Form().SetBusy(false);
        EXPECT_EQ(list->accSelect(SELFLAG_TAKESELECTION, second), S_OK);
        EXPECT_EQ(grid.CurrentRow(), 1);
    });
    list->Release();
}

// Messages without a form

TEST(Win32MessageBoxTest, DisablesTheHostsWindowsWhereNoneIsActive)
{
    const HostWindow host;
    SetActiveWindow(nullptr);
    std::optional<bool> isEnabled;
    // Takes the host's activation away: the message must not stand in front of that window alone.
    std::thread([&] {
        const HostWindow inactive(WS_EX_NOACTIVATE, WS_POPUP | WS_DISABLED);
        EnableWindow(inactive.Window(), TRUE);
        ShowWindow(inactive.Window(), SW_SHOWNOACTIVATE);
        ASSERT_EQ(GetActiveWindow(), nullptr);
        inactive.Later([&] {
            isEnabled = inactive.IsEnabled();
            EndDialog(FindWindowW(L"#32770", L"kstnedit test modal"), IDOK);
        });
        Win32MessageBox(nullptr).Show(u"Sure?", kMessageExclamation, u"kstnedit test modal");
        EXPECT_TRUE(inactive.IsEnabled());
    }).join();
    EXPECT_EQ(isEnabled, false);
}

} // namespace KestrinProductEditor
