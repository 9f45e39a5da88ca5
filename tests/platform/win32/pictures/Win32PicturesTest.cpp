// SPDX-License-Identifier: MIT
#include "platform/win32/pictures/Win32Pictures.h"

#include "PriceLists.h"
#include "editor/EditorStart.h"
#include "fake/MemorySettings.h"
#include "platform/win32/Win32Form.h"
#include "platform/win32/Win32GridView.h"
#include "platform/win32/Win32ToolBar.h"
#include "platform/win32/Win32User.h"
#include "support/StoreFixture.h"

#include <KestrinProductEditor/ProductDetails.h>
#include <KestrinProductEditor/ProductExportDlg.h>
#include <KestrinProductEditor/ProductImportDlg.h>
#include <KestrinProductEditor/ProductLkpView.h>

#include <gtest/gtest.h>

#include <commctrl.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

namespace KestrinProductEditor {

namespace {

using NamedKey = IUser::NamedKey;

constexpr const char* kPriceList = "price-list.csv";

[[nodiscard]] HWND FrontForm()
{
    return Win32Form::FrontWindow();
}

[[nodiscard]] HWND ControlOf(std::u16string_view name)
{
    return Win32Form::Shown().back()->Controls().WindowOf(name);
}

/// Acts once when a progress bar is half full.
class AtHalf
{
public:
    AtHalf(HWND bar, std::function<void()> act) : m_bar(bar), m_act(std::move(act))
    {
        SetWindowSubclass(m_bar, &PrvProcedure, 1, reinterpret_cast<DWORD_PTR>(this));
    }
    AtHalf(const AtHalf&) = delete;
    AtHalf& operator=(const AtHalf&) = delete;
    ~AtHalf()
    {
        RemoveWindowSubclass(m_bar, &PrvProcedure, 1);
        EXPECT_EQ(m_act, nullptr) << "the work shows no progress";
    }

private:
    static LRESULT CALLBACK PrvProcedure(HWND bar, UINT message, WPARAM wParam, LPARAM lParam,
                                         UINT_PTR /*id*/, DWORD_PTR data)
    {
        constexpr WPARAM kHalf = 50;
        auto& self = *reinterpret_cast<AtHalf*>(data);
        const LRESULT result = DefSubclassProc(bar, message, wParam, lParam);
        if (message == PBM_SETPOS && wParam >= kHalf && self.m_act)
            RunActs(std::exchange(self.m_act, nullptr));
        return result;
    }

    HWND m_bar;
    std::function<void()> m_act;
};

/// Acts once a menu is open, and closes it.
class AtMenu
{
public:
    AtMenu(HWND form, std::function<void()> act) : m_form(form), m_act(std::move(act))
    {
        constexpr UINT kSoon = 5; // milliseconds
        SetTimer(m_form, reinterpret_cast<UINT_PTR>(this), kSoon, &PrvLook);
    }
    AtMenu(const AtMenu&) = delete;
    AtMenu& operator=(const AtMenu&) = delete;
    ~AtMenu() { KillTimer(m_form, reinterpret_cast<UINT_PTR>(this)); }

private:
    static void CALLBACK PrvLook(HWND form, UINT /*message*/, UINT_PTR id, DWORD /*time*/)
    {
        auto& self = *reinterpret_cast<AtMenu*>(id);
        if (!self.m_act || IsWindowVisible(FindWindowW(L"#32768", nullptr)) == 0)
            return;
        RunActs(std::exchange(self.m_act, nullptr));
        // Out of the menu, and out of the bar.
        PostMessageW(form, WM_KEYDOWN, VK_ESCAPE, 1);
        PostMessageW(form, WM_KEYDOWN, VK_ESCAPE, 1);
    }

    HWND m_form;
    std::function<void()> m_act;
};

/// A host's window with one child that fills it.
class HostWindow
{
public:
    HostWindow(const wchar_t* title, void* child) : m_child(static_cast<HWND>(child))
    {
        const auto scaled = [](int length) {
            return MulDiv(length, static_cast<int>(GetDpiForSystem()), USER_DEFAULT_SCREEN_DPI);
        };
        constexpr int kWidth = 560;
        constexpr int kHeight = 360;
        WNDCLASSW kind = {};
        kind.lpfnWndProc = &PrvProcedure;
        kind.hCursor = LoadCursorW(nullptr, IDC_ARROW);
        kind.hbrBackground = GetSysColorBrush(COLOR_BTNFACE);
        kind.lpszClassName = L"KstneditPictureHost";
        // Once more is an error that nobody minds.
        RegisterClassW(&kind);
        m_window = CreateWindowW(kind.lpszClassName, title, WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, 0, 0,
                                 scaled(kWidth), scaled(kHeight), nullptr, nullptr, nullptr, nullptr);
        SetParent(m_child, m_window);
        PrvFill(m_window);
        ShowWindow(m_child, SW_SHOWNA);
        ShowWindow(m_window, SW_SHOW);
    }
    HostWindow(const HostWindow&) = delete;
    HostWindow& operator=(const HostWindow&) = delete;
    ~HostWindow()
    {
        // It belongs to the view.
        SetParent(m_child, HWND_MESSAGE);
        DestroyWindow(m_window);
    }

    [[nodiscard]] HWND Handle() const { return m_window; }

private:
    static void PrvFill(HWND window)
    {
        RECT inside = {};
        GetClientRect(window, &inside);
        MoveWindow(GetWindow(window, GW_CHILD), 0, 0, inside.right, inside.bottom, TRUE);
    }
    static LRESULT CALLBACK PrvProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
    {
        if (message == WM_SIZE)
            PrvFill(window);
        return DefWindowProcW(window, message, wParam, lParam);
    }

    HWND m_child;
    HWND m_window = nullptr;
};

/// Everything of a person who never changed a setting, in a folder that is the process's current one: the
/// pictures shall not tell of this machine.
class Win32Pictures : public StoreFixture
{
protected:
    Win32Pictures()
    {
        std::ifstream file(std::filesystem::path(KSTNEDIT_SOURCE_DIR) / "samples" / kPriceList,
                           std::ios::binary);
        m_folder.Write(kPriceList, std::string(std::istreambuf_iterator<char>(file), {}));
        m_folder.Write("doubtful-list.csv", DoubtfulPriceList());
        m_folder.Write("long-list.csv", LongPriceList());
        std::filesystem::current_path(m_folder.Path());
        m_config->values.clear();
    }
    ~Win32Pictures() override { std::filesystem::current_path(m_before); }

    static void Fill(std::string_view priceList)
    {
        const auto store = Open();
        const std::u16string path(priceList.begin(), priceList.end());
        const ImportResult result =
            ImportResultOf(store->CSVProductImport(ImportParams(path, {0, 1, 2, 3}, 1, 0)));
        EXPECT_EQ(result.description, "");
        EXPECT_GT(result.imported, 0);
        EXPECT_EQ(result.rejected, 0);
    }

    void Edit(const std::function<void()>& acts)
    {
        m_user.AtNextForm(acts);
        ShowProductEditor({});
    }

    template<class Dialog>
    void Exchange(const std::function<void()>& acts)
    {
        Fill(kPriceList);
        const auto store = Open();
        store->CancelUpdate(true);
        const auto dialog = Dialog::Create();
        dialog->Init(store);
        m_user.AtNextForm(acts);
        dialog->Show();
    }

    void GoToProduct(std::u16string_view name)
    {
        m_user.TabTo(u"flexGrid");
        m_user.Type(name);
    }

    void FillBox(std::u16string_view box, std::u16string_view text)
    {
        m_user.TabTo(box);
        m_user.Type(text);
    }

    void EditPrice()
    {
        GoToProduct(u"claw");
        m_user.ChooseTool(u"ID_EditProduct");
        FillBox(u"txtUnitPrice", u"19.95");
    }

    void TakeMessage(std::string_view name, MessageAnswer answer, std::u16string_view button)
    {
        bool isTaken = false;
        m_windows.OnMessage([&](HWND box) {
            TakeAndAudit(box, name);
            isTaken = true;
        });
        m_user.WillAnswer(answer);
        m_user.Click(button);
        m_windows.OnMessage(nullptr);
        EXPECT_TRUE(isTaken) << name;
    }

    void TakeMenu(UINT header, std::string_view name)
    {
        std::wstring caption(64, L'\0');
        GetMenuStringW(GetMenu(FrontForm()), header, caption.data(), static_cast<int>(caption.size()),
                       MF_BYPOSITION);
        bool isTaken = false;
        const AtMenu look(FrontForm(), [&] {
            PictureCamera().Take(FrontForm(), name);
            isTaken = true;
        });
        SendMessageW(FrontForm(), WM_SYSCOMMAND, SC_KEYMENU, caption.at(caption.find(L'&') + 1));
        EXPECT_TRUE(isTaken) << name;
    }

    /// Names the file in the import dialog, and says of its four columns what they are.
    void MapColumns(std::u16string_view priceList)
    {
        constexpr std::int32_t kColumns = 4;
        FillBox(u"txtImportFilePath", priceList);
        m_user.TabTo(u"flexGrid");
        ASSERT_EQ(m_user.Grid(u"flexGrid").Rows(), kColumns + 1);
        for (std::int32_t row = 1; row <= kColumns; ++row)
            m_user.PickInCell(u"flexGrid", row, 1, row);
    }

    Win32User m_windows;
    IUser& m_user = m_windows;

private:
    std::filesystem::path m_before = std::filesystem::current_path();
    MemorySettings m_settings;
    ScopedSettings m_scopedSettings{m_settings};
};

} // namespace

TEST_F(Win32Pictures, EditorWithAList)
{
    Fill(kPriceList);
    Edit([&] {
        GoToProduct(u"claw");
        TakeAndAuditAtEverySize(FrontForm(), "editor-view");
        TakeMenu(0, "editor-menu-file");
        TakeMenu(1, "editor-menu-edit");
        m_user.Click(u"cmdNew");
        TakeAndAudit(FrontForm(), "editor-new");
        m_user.Click(u"cmdCancelEdit");
        m_user.Click(u"cmdCancel");
    });
}

TEST_F(Win32Pictures, EditorInEditState)
{
    Fill(kPriceList);
    Edit([&] {
        EditPrice();
        TakeAndAuditAtEverySize(FrontForm(), "editor-edit");
        TakeMessage("message-product", MessageAnswer::No, u"cmdCancelEdit");
        EditPrice();
        m_user.Click(u"cmdSaveEdit");
        TakeMessage("message-list", MessageAnswer::No, u"cmdCancel");
    });
}

TEST_F(Win32Pictures, EditorWithAnEmptyList)
{
    Edit([&] {
        TakeAndAudit(FrontForm(), "editor-empty");
        m_user.Click(u"cmdCancel");
    });
}

TEST_F(Win32Pictures, EditorWithoutAList)
{
    m_folder.Write("corvprd2.cpd", "no catalogue");
    Edit([&] {
        TakeAndAuditAtEverySize(FrontForm(), "editor-no-list");
        m_user.Click(u"cmdCancel");
    });
}

TEST_F(Win32Pictures, Import)
{
    Exchange<ProductImportDlg>([&] {
        TakeAndAudit(FrontForm(), "import-empty");
        MapColumns(u"doubtful-list.csv");
        TakeAndAuditAtEverySize(FrontForm(), "import");
        m_user.Press(NamedKey::F2);
        TakeAndAudit(FrontForm(), "import-choice");
        m_user.Press(NamedKey::Escape);
        m_user.AtNextForm([&] {
            TakeAndAuditAtEverySize(FrontForm(), "preview");
            m_user.Click(u"cmdClose");
        });
        m_user.Click(u"cmdPreview");

        MapColumns(u"long-list.csv");
        const AtHalf look(ControlOf(u"prgImport"), [] { TakeAndAudit(FrontForm(), "import-working"); });
        TakeMessage("message-imported", MessageAnswer::Ok, u"cmdImport");
    });
}

TEST_F(Win32Pictures, Export)
{
    Exchange<ProductExportDlg>([&] {
        FillBox(u"txtExportFilePath", u"products.csv");
        TakeAndAuditAtEverySize(FrontForm(), "export");
        FillBox(u"txtExportFilePath", u"Z:\\nowhere\\products.csv");
        m_user.Click(u"cmdExport");
        EXPECT_NE(m_user.TextOf(u"lblStatus"), u"");
        TakeAndAuditAtEverySize(FrontForm(), "export-failed");
        FillBox(u"txtExportFilePath", u"products.csv");
        const AtHalf look(ControlOf(u"prgExport"), [] { TakeAndAudit(FrontForm(), "export-working"); });
        m_user.Click(u"cmdExport");
    });
}

TEST_F(Win32Pictures, ListInAWindowOfAHost)
{
    Fill(kPriceList);
    const auto view = ProductLkpView::Create();
    view->Init();
    view->GetDataSource()->CancelUpdate(true);
    const HostWindow host(L"Salvo - Products", view->NativeHandle());
    TakeAndAuditAtEverySize(host.Handle(), "view-list");
}

TEST_F(Win32Pictures, DetailsInAWindowOfAHost)
{
    const auto details = ProductDetails::Create();
    const HostWindow host(L"Salvo - Product", details->NativeHandle());
    TakeAndAuditAtEverySize(host.Handle(), "view-details");
}

} // namespace KestrinProductEditor
