// SPDX-License-Identifier: MIT
#include "platform/win32/Win32User.h"

#include "platform/Text.h"
#include "platform/ui/Mnemonics.h"
#include "platform/win32/Win32ControlSet.h"
#include "platform/win32/Win32Form.h"
#include "platform/win32/Win32GridView.h"
#include "platform/win32/Win32ToolBar.h"
#include "platform/win32/Win32Twips.h"
#include "platform/win32/Win32UserControl.h"
#include "platform/windows/WideText.h"

#include <gtest/gtest.h>

#include <commctrl.h>
#include <shellapi.h>
#include <shlobj.h>

#include <algorithm>
#include <cstring>
#include <utility>

namespace KestrinProductEditor {

namespace {

void Fail(std::string_view act, std::u16string_view name, std::string_view reason)
{
    ADD_FAILURE() << act << " " << ToUtf8(name) << ": " << reason;
}

[[nodiscard]] UINT KeyOf(IUser::NamedKey key)
{
    using NamedKey = IUser::NamedKey;
    switch (key) {
    case NamedKey::Tab:
    case NamedKey::BackTab:
        return VK_TAB;
    case NamedKey::Enter:
        return VK_RETURN;
    case NamedKey::Escape:
        return VK_ESCAPE;
    case NamedKey::Backspace:
        return VK_BACK;
    case NamedKey::Delete:
        return VK_DELETE;
    case NamedKey::Left:
        return VK_LEFT;
    case NamedKey::Right:
        return VK_RIGHT;
    case NamedKey::Up:
        return VK_UP;
    case NamedKey::Down:
        return VK_DOWN;
    case NamedKey::Home:
        return VK_HOME;
    case NamedKey::End:
        return VK_END;
    case NamedKey::PageUp:
        return VK_PRIOR;
    case NamedKey::PageDown:
        return VK_NEXT;
    case NamedKey::F2:
        return VK_F2;
    }
    return 0;
}

[[nodiscard]] Win32Form* FrontForm()
{
    return Win32Form::Shown().empty() ? nullptr : Win32Form::Shown().back();
}

[[nodiscard]] Win32Form* FormOf(HWND window)
{
    const auto& shown = Win32Form::Shown();
    const auto found = std::find_if(shown.begin(), shown.end(),
                                    [window](const Win32Form* form) { return form->Window() == window; });
    return found == shown.end() ? nullptr : *found;
}

/// Disabled with any of its parents: the system sends it neither mouse nor keys.
[[nodiscard]] bool IsEnabledThroughout(HWND window)
{
    for (; window != nullptr; window = GetAncestor(window, GA_PARENT)) {
        if (!IsWindowEnabled(window))
            return false;
    }
    return true;
}

[[nodiscard]] LONG_PTR StyleOf(HWND window)
{
    return GetWindowLongPtrW(window, GWL_STYLE);
}

[[nodiscard]] bool IsBox(HWND window)
{
    return ClassOfWindow(window) == u"Edit";
}

[[nodiscard]] bool IsButton(HWND window)
{
    return ClassOfWindow(window) == u"Button";
}

/// Where a person would hit the window: a check box on its box, a text behind its last character.
[[nodiscard]] POINT TargetOf(HWND window)
{
    constexpr LONG kInside = 4;
    const RECT inside = InsideOf(window);
    POINT target = MiddleOf(inside);
    if (IsButton(window) && (StyleOf(window) & BS_TYPEMASK) == BS_AUTOCHECKBOX)
        target.x = std::min(inside.left + 2 * kInside, target.x);
    else if (IsBox(window) && (StyleOf(window) & ES_MULTILINE) == 0)
        target.x = inside.right - kInside;
    return target;
}

[[nodiscard]] bool CanBeChosen(const FileDialog& dialog, const std::u16string& path)
{
    const DWORD attributes = GetFileAttributesW(Wide(path.c_str()));
    const bool isThere = attributes != INVALID_FILE_ATTRIBUTES;
    const bool isFolder = isThere && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
    if (dialog.kind == FileDialog::Kind::Open)
        return isThere && !isFolder;
    const std::size_t end = path.find_last_of(u"\\/");
    const std::u16string folder = end == std::u16string::npos ? u"." : path.substr(0, end + 1);
    return !isFolder && GetFileAttributesW(Wide(folder.c_str())) != INVALID_FILE_ATTRIBUTES;
}

/// The key of the letter that is underlined in a menu's entry; 0 for none.
[[nodiscard]] UINT LetterOf(HMENU menu, UINT entry, UINT by)
{
    std::u16string text(static_cast<std::size_t>(GetMenuStringW(menu, entry, nullptr, 0, by)) + 1, u'\0');
    GetMenuStringW(menu, entry, Wide(text.data()), static_cast<int>(text.size()), by);
    for (std::size_t at = 0; at + 1 < text.size(); ++at) {
        if (text[at] != u'&')
            continue;
        ++at;
        if (text[at] != u'&')
            return LOBYTE(VkKeyScanW(static_cast<WCHAR>(text[at])));
    }
    return 0;
}

[[nodiscard]] bool IsGrey(HMENU menu, UINT entry, UINT by)
{
    return (GetMenuState(menu, entry, by) & (MF_GRAYED | MF_DISABLED)) != 0;
}

/// A block of the system's that others can take; null when it has no room.
[[nodiscard]] HGLOBAL MakeBlock(const void* first, std::size_t firstSize, const void* second,
                                std::size_t secondSize)
{
    const HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE, firstSize + secondSize);
    if (block == nullptr)
        return nullptr;
    auto* const bytes = static_cast<unsigned char*>(GlobalLock(block));
    std::memcpy(bytes, first, firstSize);
    std::memcpy(bytes + firstSize, second, secondSize);
    GlobalUnlock(block);
    return block;
}

/// The clipboard, as soon as nobody else has it open.
class OpenedClipboard
{
public:
    explicit OpenedClipboard(HWND owner)
    {
        constexpr int kTries = 1000;
        for (int tries = 0; !m_isOpen && tries < kTries; ++tries) {
            m_isOpen = OpenClipboard(owner) != 0;
            if (!m_isOpen)
                Sleep(1);
        }
        EXPECT_TRUE(m_isOpen) << "somebody keeps the clipboard";
    }
    OpenedClipboard(const OpenedClipboard&) = delete;
    OpenedClipboard& operator=(const OpenedClipboard&) = delete;
    ~OpenedClipboard()
    {
        if (m_isOpen)
            CloseClipboard();
    }

private:
    bool m_isOpen = false;
};

} // namespace

std::unique_ptr<IUser> MakeUser()
{
    return std::make_unique<Win32User>();
}

Win32User::Win32User()
    : m_watch([this](HWND window) { PrvShown(window); }, [this](HWND window) { PrvGone(window); })
{
}

Win32User::~Win32User()
{
    if (m_host != nullptr)
        DestroyWindow(m_host);
    EXPECT_TRUE(m_acts.empty()) << m_acts.size() << " forms never came";
    EXPECT_TRUE(m_answers.empty()) << m_answers.size() << " messages never came";
    EXPECT_TRUE(m_paths.empty()) << m_paths.size() << " file dialogs never came";
}

// What is shown

void Win32User::PrvShown(HWND window)
{
    if (FormOf(window) != nullptr)
        PrvFormShown(window);
    else if (IsFileDialog(window))
        PrvFileDialogShown(window);
    else if (IsDialogBox(window))
        PrvMessageShown(window);
}

void Win32User::PrvGone(HWND window)
{
    if (window == m_userControlWindow) {
        m_userControl = nullptr;
        m_userControlWindow = nullptr;
    }
    if (window == m_host)
        m_host = nullptr;
}

void Win32User::PrvFormShown(HWND window)
{
    if (std::find(m_acting.begin(), m_acting.end(), window) != m_acting.end())
        return;
    // A form that was shown from inside this one's showing comes first.
    if (PrvSurface() != window) {
        m_watch.TellAgain(window);
        return;
    }
    const std::u16string name = OpenForms().back();
    if (m_acts.empty()) {
        Fail("ShowModal", name, "nobody expected this form");
    } else {
        const std::function<void()> acts = std::move(m_acts.front());
        m_acts.pop_front();
        m_acting.push_back(window);
        RunActs(acts);
        std::erase(m_acting, window);
        if (IsWindowVisible(window))
            Fail("ShowModal", name, "the acts have left this form open");
    }
    Win32Form* const form = FormOf(window);
    if (form != nullptr && IsWindowVisible(window))
        form->EndModal();
}

void Win32User::PrvMessageShown(HWND box)
{
    // A file dialog's own question, or its refusal.
    if (IsFileDialog(GetWindow(box, GW_OWNER))) {
        const HWND yes = GetDlgItem(box, IDYES);
        SendMessageW(yes != nullptr ? yes : ButtonOf(box, MessageAnswer::Ok), BM_CLICK, 0, 0);
        return;
    }
    if (m_onMessage)
        m_onMessage(box);
    m_messages.push_back(ReadMessage(box));
    const std::u16string text = m_messages.back().text;
    std::optional<MessageAnswer> answer = CarefulAnswer(m_messages.back().style);
    if (m_answers.empty()) {
        Fail("message", text, "nobody expected it");
    } else {
        answer = m_answers.front();
        m_answers.pop_front();
    }
    const HWND button = answer ? ButtonOf(box, *answer) : nullptr;
    if (button != nullptr) {
        SendMessageW(button, BM_CLICK, 0, 0);
        return;
    }
    if (answer)
        Fail("message", text, "it has no such button");
    PostMessageW(GetFocus(), WM_KEYDOWN, VK_ESCAPE, 1);
}

void Win32User::PrvFileDialogShown(HWND dialog)
{
    const std::u16string title = TextOfWindow(dialog);
    const HWND cancel = GetDlgItem(dialog, IDCANCEL);
    if (m_paths.empty()) {
        Fail("file dialog", title, "nobody expected it");
        SendMessageW(cancel, BM_CLICK, 0, 0);
        return;
    }
    const std::optional<std::u16string> path = std::move(m_paths.front());
    m_paths.pop_front();
    if (!path) {
        PostMessageW(GetFocus(), WM_KEYDOWN, VK_ESCAPE, 1);
    } else if (!ChoosePath(dialog, *path)) {
        Fail("file dialog", *path, "the dialog refuses it");
        SendMessageW(cancel, BM_CLICK, 0, 0);
    }
}

std::vector<std::u16string> Win32User::OpenForms() const
{
    std::vector<std::u16string> layouts;
    for (const Win32Form* const form : Win32Form::Shown()) {
        if (IsWindowVisible(form->Window()))
            layouts.emplace_back(form->Layout());
    }
    return layouts;
}

std::unique_ptr<IForm> Win32User::CreateForm(std::u16string_view name)
{
    return m_backend.CreateForm(name);
}

std::unique_ptr<IUserControl> Win32User::CreateUserControl(std::u16string_view name)
{
    std::unique_ptr<IUserControl> control = m_backend.CreateUserControl(name);
    constexpr int kRoom = 2000; // pixels
    if (m_host == nullptr) {
        m_host = CreateWindowW(L"STATIC", L"", WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, 0, 0, kRoom, kRoom,
                               nullptr, nullptr, nullptr, nullptr);
    }
    m_userControl = control.get();
    m_userControlWindow = static_cast<HWND>(control->NativeHandle());
    SetParent(m_userControlWindow, m_host);
    return control;
}

std::optional<std::u16string> Win32User::ChooseFile(const FileDialog& dialog)
{
    m_fileDialogs.push_back(dialog);
    if (!m_paths.empty() && m_paths.front() && !CanBeChosen(dialog, *m_paths.front())) {
        // No dialog gives such a path, but the next moment can make it one.
        const std::optional<std::u16string> path = std::move(m_paths.front());
        m_paths.pop_front();
        return path;
    }
    return m_backend.ChooseFile(dialog);
}

// The loop of what is in front

bool Win32User::IsListening() const
{
    const HWND surface = PrvSurface();
    return surface != nullptr && IsEnabledThroughout(surface);
}

void Win32User::PassOn(MSG& message)
{
    if (Win32Form* const form = FrontForm()) {
        form->PassOn(message);
    } else {
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
}

HWND Win32User::KeyWindow() const
{
    const HWND surface = PrvSurface();
    if (surface == nullptr)
        return nullptr;
    const HWND focus = GetFocus();
    if (focus == surface || IsChild(surface, focus))
        return focus;
    // The window is not active, or busy; its keys go where they will go when it is not.
    const HWND owed = PrvControls()->Focus().KeyWindow();
    return owed != nullptr ? owed : surface;
}

// Finding things

HWND Win32User::PrvSurface() const
{
    if (const Win32Form* const form = FrontForm())
        return IsWindowVisible(form->Window()) ? form->Window() : nullptr;
    return m_userControlWindow;
}

Win32ControlSet* Win32User::PrvControls() const
{
    if (Win32Form* const form = FrontForm())
        return &form->Controls();
    auto* const control = dynamic_cast<Win32UserControl*>(m_userControl);
    return control != nullptr ? &control->Controls() : nullptr;
}

HWND Win32User::PrvFind(std::u16string_view name) const
{
    const Win32ControlSet* const controls = PrvSurface() != nullptr ? PrvControls() : nullptr;
    return controls != nullptr ? controls->WindowOf(name) : nullptr;
}

HWND Win32User::PrvReach(std::string_view act, std::u16string_view name) const
{
    const HWND surface = PrvSurface();
    if (surface == nullptr)
        return nullptr;
    const HWND window = PrvFind(name);
    // What is done to a busy form is really sent.
    const bool isBusy = !IsWindowEnabled(surface);
    if (window == nullptr)
        Fail(act, name, "there is no such control");
    else if (!IsWindowVisible(window))
        Fail(act, name, "it is hidden");
    else if (!IsWindowEnabled(window) && !isBusy)
        Fail(act, name, "it is disabled");
    else
        return window;
    return nullptr;
}

std::shared_ptr<Win32GridView> Win32User::PrvReachGrid(std::string_view act, std::u16string_view name) const
{
    const HWND window = PrvReach(act, name);
    return window != nullptr ? Win32GridView::Of(window) : nullptr;
}

std::optional<POINT> Win32User::PrvTargetOfRow(std::string_view act, Win32GridView& view, std::int32_t row)
{
    constexpr LONG kInside = 6;
    const GridBase& grid = *view.Grid();
    const std::int32_t column = view.Geometry().FirstVisibleColumn();
    if (row < 0 || row >= grid.Rows() || column < 0) {
        Fail(act, u"", "there is no such row");
        return std::nullopt;
    }
    if (row >= grid.FixedRows())
        view.ScrollTo(row);
    const RECT cell = view.CellRect(row, column);
    POINT target = MiddleOf(cell);
    // Far from the borders, which are there to be dragged.
    if (row >= grid.FixedRows())
        target.x = std::min(cell.left + kInside, target.x);
    return target;
}

const Win32ToolBar* Win32User::PrvToolBar() const
{
    const Win32ControlSet* const controls = PrvSurface() != nullptr ? PrvControls() : nullptr;
    return controls != nullptr ? controls->FindToolBar() : nullptr;
}

// Acts

void Win32User::Click(std::u16string_view control)
{
    if (const HWND window = PrvReach("Click", control))
        m_hands.Click(window, TargetOf(window));
}

void Win32User::DoubleClick(std::u16string_view control)
{
    if (const HWND window = PrvReach("DoubleClick", control))
        m_hands.DoubleClick(window, TargetOf(window));
}

void Win32User::ClickRow(std::u16string_view grid, std::int32_t row, Modifier modifier)
{
    const std::shared_ptr<Win32GridView> view = PrvReachGrid("ClickRow", grid);
    if (view == nullptr)
        return;
    if (const std::optional<POINT> target = PrvTargetOfRow("ClickRow", *view, row))
        m_hands.Click(view->Window(), *target, modifier);
}

void Win32User::DoubleClickRow(std::u16string_view grid, std::int32_t row)
{
    const std::shared_ptr<Win32GridView> view = PrvReachGrid("DoubleClickRow", grid);
    if (view == nullptr)
        return;
    if (const std::optional<POINT> target = PrvTargetOfRow("DoubleClickRow", *view, row))
        m_hands.DoubleClick(view->Window(), *target);
}

void Win32User::Type(std::u16string_view text)
{
    m_hands.Type(text);
}

void Win32User::Press(NamedKey key, Modifier modifier)
{
    m_hands.Press(KeyOf(key), key == NamedKey::BackTab ? Modifier::Shift : modifier);
}

void Win32User::PressControl(char letter)
{
    m_hands.Press(static_cast<UINT>(letter), Modifier::Control);
}

void Win32User::Compose(std::u16string_view text)
{
    m_hands.Compose(text);
}

void Win32User::ChooseTool(std::u16string_view id)
{
    const HWND surface = PrvSurface();
    if (surface == nullptr)
        return;
    const Win32ToolBar* const bar = PrvToolBar();
    const std::optional<Win32ToolBar::Place> tool = bar != nullptr ? bar->PlaceOf(id) : std::nullopt;
    if (!tool) {
        Fail("ChooseTool", id, "there is no such tool");
        return;
    }
    const HMENU menus = GetMenu(surface);
    const UINT letter = LetterOf(menus, tool->header, MF_BYPOSITION);
    const bool isGrey = IsGrey(menus, tool->header, MF_BYPOSITION);
    if (IsListening() && (isGrey || letter == 0)) {
        Fail("ChooseTool", id, isGrey ? "its menu is disabled" : "its menu has no letter");
        return;
    }
    bool isRefused = false;
    m_watch.OnMenu([&] {
        const HMENU menu = GetSubMenu(menus, static_cast<int>(tool->header));
        const UINT item = tool->command != 0 ? LetterOf(menu, tool->command, MF_BYCOMMAND) : 0;
        isRefused = tool->command != 0 && (item == 0 || IsGrey(menu, tool->command, MF_BYCOMMAND));
        if (item != 0 && !isRefused) {
            PostMessageW(surface, WM_KEYDOWN, item, 1);
        } else {
            // Out of the menu, and out of the bar.
            PostMessageW(surface, WM_KEYDOWN, VK_ESCAPE, 1);
            PostMessageW(surface, WM_KEYDOWN, VK_ESCAPE, 1);
        }
    });
    m_hands.Post(surface, WM_SYSCOMMAND, SC_KEYMENU,
                 static_cast<LPARAM>(MapVirtualKeyW(letter, MAPVK_VK_TO_CHAR)));
    m_watch.OnMenu(nullptr);
    if (isRefused)
        Fail("ChooseTool", id, "it is disabled");
}

void Win32User::ClickTool(std::u16string_view id)
{
    if (PrvSurface() == nullptr)
        return;
    const Win32ToolBar* const bar = PrvToolBar();
    const std::optional<Win32ToolBar::Place> tool = bar != nullptr ? bar->PlaceOf(id) : std::nullopt;
    RECT place = {};
    if (!tool || tool->command == 0 ||
        SendMessageW(bar->Buttons(), TB_GETRECT, tool->command, reinterpret_cast<LPARAM>(&place)) == 0)
        Fail("ClickTool", id, "there is no such button");
    else if (IsListening() && SendMessageW(bar->Buttons(), TB_ISBUTTONENABLED, tool->command, 0) == 0)
        Fail("ClickTool", id, "it is disabled");
    else
        m_hands.Click(bar->Buttons(), MiddleOf(place));
}

void Win32User::PickInCell(std::u16string_view grid, std::int32_t row, std::int32_t col, std::int32_t number)
{
    const std::shared_ptr<Win32GridView> view = PrvReachGrid("PickInCell", grid);
    if (view == nullptr || !IsListening())
        return;
    const auto& entries = view->Grid()->ComboList(col);
    const auto entry =
        std::find_if(entries.begin(), entries.end(),
                     [number](const GridBase::ComboEntry& other) { return other.number == number; });
    if (row >= view->Grid()->Rows() || entry == entries.end()) {
        Fail("PickInCell", grid, "there is no such cell or entry");
        return;
    }
    view->ScrollTo(row);
    m_hands.Click(view->Window(), MiddleOf(view->CellRect(row, col)));
    const HWND list = view->OpenDropDown();
    if (list == nullptr) {
        Fail("PickInCell", grid, "no list opens");
        return;
    }
    const auto index = static_cast<WPARAM>(entry - entries.begin());
    SendMessageW(list, LB_SETTOPINDEX, index, 0);
    RECT item = {};
    SendMessageW(list, LB_GETITEMRECT, index, reinterpret_cast<LPARAM>(&item));
    m_hands.Click(list, MiddleOf(item));
    if (view->OpenDropDown() != nullptr)
        Fail("PickInCell", grid, "the list stays open");
}

void Win32User::DragColumn(std::u16string_view grid, std::int32_t col, std::int32_t twips)
{
    const std::shared_ptr<Win32GridView> view = PrvReachGrid("DragColumn", grid);
    if (view == nullptr)
        return;
    const RECT header = view->CellRect(0, col);
    const POINT border = {header.right - 1, MiddleOf(header).y};
    const int wider = view->Geometry().PixelsFromTwips(twips) - view->Geometry().ColumnWidth(col);
    m_hands.Drag(view->Window(), border, {border.x + wider, border.y});
}

void Win32User::CloseWindow()
{
    if (const HWND surface = PrvSurface())
        m_hands.Post(surface, WM_SYSCOMMAND, SC_CLOSE, 0);
}

void Win32User::DropFile(std::u16string_view path)
{
    const HWND surface = PrvSurface();
    if (surface == nullptr)
        return;
    std::u16string list(path);
    // An empty path ends the list.
    list.append(2, u'\0');
    DROPFILES head = {};
    head.pFiles = sizeof head;
    head.pt = MiddleOf(InsideOf(surface));
    head.fWide = TRUE;
    const HGLOBAL block = MakeBlock(&head, sizeof head, list.data(), list.size() * sizeof(char16_t));
    m_hands.Post(surface, WM_DROPFILES, reinterpret_cast<WPARAM>(block), 0);
}

void Win32User::TabTo(std::u16string_view control)
{
    const HWND window = PrvReach("TabTo", control);
    if (window == nullptr || !IsListening())
        return;
    SetFocus(window);
    // As the key does, also once round.
    if ((SendMessageW(window, WM_GETDLGCODE, 0, 0) & DLGC_HASSETSEL) != 0)
        SendMessageW(window, EM_SETSEL, 0, -1);
}

void Win32User::ResizeUserControl(IUserControl& control, float widthTwips, float heightTwips)
{
    auto* const window = static_cast<HWND>(control.NativeHandle());
    SetWindowPos(window, nullptr, 0, 0, PixelsFromTwips(window, widthTwips),
                 PixelsFromTwips(window, heightTwips), SWP_NOZORDER | SWP_NOACTIVATE | SWP_SHOWWINDOW);
    ShowWindow(m_host, SW_SHOWNA);
    UpdateWindow(m_host);
    m_hands.RunAll();
}

void Win32User::SetClipboard(std::u16string_view text)
{
    constexpr char16_t kEnd = u'\0';
    const OpenedClipboard clipboard(m_watch.Window());
    EmptyClipboard();
    const HGLOBAL block = MakeBlock(text.data(), text.size() * sizeof(char16_t), &kEnd, sizeof kEnd);
    EXPECT_NE(SetClipboardData(CF_UNICODETEXT, block), nullptr);
}

std::u16string Win32User::Clipboard() const
{
    const OpenedClipboard clipboard(m_watch.Window());
    const HANDLE block = GetClipboardData(CF_UNICODETEXT);
    if (block == nullptr)
        return {};
    std::u16string text = FromWide(static_cast<const wchar_t*>(GlobalLock(block)));
    GlobalUnlock(block);
    return text;
}

// What there is to read

std::u16string Win32User::TextOf(std::u16string_view control) const
{
    const HWND window = PrvFind(control);
    if (window == nullptr) {
        if (PrvSurface() != nullptr)
            Fail("TextOf", control, "there is no such control");
        return {};
    }
    if (IsBox(window))
        return PrvControls()->Find<ITextBox>(control).Text();
    if (IsButton(window))
        return ShownCaption(TextOfWindow(window));
    if (Win32GridView::Of(window) != nullptr)
        return PrvControls()->Find<IGrid>(control).Notice();
    if (ClassOfWindow(window) == u"KstneditProgress")
        return PrvControls()->Find<IProgressBar>(control).Caption();
    return PrvControls()->Find<ILabel>(control).Caption();
}

std::int32_t Win32User::ValueOf(std::u16string_view bar) const
{
    if (PrvFind(bar) != nullptr)
        return PrvControls()->Find<IProgressBar>(bar).Value();
    Fail("ValueOf", bar, "there is no such bar");
    return 0;
}

bool Win32User::IsShown(std::u16string_view control) const
{
    return IsWindowVisible(PrvFind(control)) != 0;
}

bool Win32User::IsEnabled(std::u16string_view control) const
{
    const HWND window = PrvFind(control);
    return window != nullptr && IsEnabledThroughout(window);
}

bool Win32User::IsLocked(std::u16string_view box) const
{
    const HWND window = PrvFind(box);
    return window != nullptr && IsBox(window) && (StyleOf(window) & ES_READONLY) != 0;
}

bool Win32User::IsTicked(std::u16string_view box) const
{
    return SendMessageW(PrvFind(box), BM_GETCHECK, 0, 0) == BST_CHECKED;
}

bool Win32User::CanChooseTool(std::u16string_view id) const
{
    const Win32ToolBar* const bar = PrvToolBar();
    const std::optional<Win32ToolBar::Place> tool = bar != nullptr ? bar->PlaceOf(id) : std::nullopt;
    if (!tool || !IsListening())
        return false;
    const HMENU menus = GetMenu(PrvSurface());
    return !IsGrey(menus, tool->header, MF_BYPOSITION) &&
           (tool->command == 0 || !IsGrey(menus, tool->command, MF_BYCOMMAND));
}

std::u16string Win32User::Focus() const
{
    const HWND surface = PrvSurface();
    if (surface == nullptr)
        return {};
    std::u16string name;
    for (HWND window = KeyWindow(); name.empty() && window != nullptr && window != surface;
         window = GetAncestor(window, GA_PARENT))
        name = PrvControls()->NameOf(window);
    return name;
}

std::u16string Win32User::WindowCaption() const
{
    const HWND surface = PrvSurface();
    return surface != nullptr ? TextOfWindow(GetAncestor(surface, GA_ROOT)) : std::u16string();
}

std::u16string Win32User::CellShown(std::u16string_view grid, std::int32_t row, std::int32_t col) const
{
    const HWND window = PrvFind(grid);
    const std::shared_ptr<Win32GridView> view = window != nullptr ? Win32GridView::Of(window) : nullptr;
    return view != nullptr ? view->Grid()->DisplayText(row, col) : std::u16string();
}

IGrid& Win32User::Grid(std::u16string_view name)
{
    return PrvControls()->Find<IGrid>(name);
}

} // namespace KestrinProductEditor
