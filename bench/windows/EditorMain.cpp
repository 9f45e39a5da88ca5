// SPDX-License-Identifier: MIT
// The editor in the system's own windows.
#include "Stopwatch.h"
#include "WindowBench.h"

#include <KestrinProductEditor/ProductEditorDlg.h>

#include "platform/win32/Win32Form.h"
#include "platform/win32/Win32GridView.h"

#include <windows.h>

#include <array>
#include <functional>
#include <memory>
#include <stdexcept>
#include <utility>

using namespace KestrinProductEditor;
using namespace KestrinProductEditor::Bench;

namespace {

/// Paints the list of the editor as soon as its turn comes, and tells of it before anything else happens.
class FirstPaint
{
public:
    /// `then` is called in the middle of the form's loop, and must not throw. One for the whole program.
    explicit FirstPaint(std::function<void(HWND)> then)
        : m_hook(SetWindowsHookExW(WH_GETMESSAGE, &PrvTaken, nullptr, GetCurrentThreadId()))
    {
        if (m_hook == nullptr)
            throw std::runtime_error("cannot look at the messages of this thread");
        s_then = std::move(then);
    }
    FirstPaint(const FirstPaint&) = delete;
    FirstPaint& operator=(const FirstPaint&) = delete;
    ~FirstPaint() { UnhookWindowsHookEx(m_hook); }

private:
    static LRESULT CALLBACK PrvTaken(int code, WPARAM removal, LPARAM taken)
    {
        const MSG& message = *reinterpret_cast<const MSG*>(taken);
        const bool isPaint = code == HC_ACTION && removal == PM_REMOVE && message.message == WM_PAINT;
        if (isPaint && s_then && Win32GridView::Of(message.hwnd) != nullptr) {
            const std::function<void(HWND)> then = std::exchange(s_then, nullptr);
            UpdateWindow(message.hwnd);
            then(message.hwnd);
        }
        return CallNextHookEx(nullptr, code, removal, taken);
    }

    static inline std::function<void(HWND)> s_then;
    HHOOK m_hook;
};

class ControlKey
{
public:
    ControlKey()
    {
        GetKeyboardState(m_before.data());
        std::array<BYTE, 256> state = {};
        state[VK_CONTROL] = state[VK_LCONTROL] = kHeldDown;
        SetKeyboardState(state.data());
    }
    ControlKey(const ControlKey&) = delete;
    ControlKey& operator=(const ControlKey&) = delete;
    ~ControlKey() { SetKeyboardState(m_before.data()); }

private:
    static constexpr BYTE kHeldDown = 0x80;
    std::array<BYTE, 256> m_before = {};
};

class EditorList final : public IEditorList
{
public:
    explicit EditorList(HWND list)
        : m_list(list), m_view(Win32GridView::Of(list)), m_form(*Win32Form::Shown().back())
    {
        SetFocus(list);
        PrvRunLoop();
    }

    void ScrollPage() override
    {
        SendMessageW(m_list, WM_VSCROLL, SB_PAGEDOWN, 0);
        PrvRunLoop();
    }
    void StepDown() override { PrvPress(VK_DOWN); }
    void SelectAll() override
    {
        const ControlKey held;
        PrvPress('A');
    }
    void JumpToBothEnds() override
    {
        PrvPress(VK_HOME);
        PrvPress(VK_END);
    }
    [[nodiscard]] std::int32_t SelectedRows() const override { return m_view->Grid()->Selection().Count(); }
    [[nodiscard]] std::int32_t CurrentRow() const override
    {
        return m_view->Grid()->CurrentRow() - m_view->Grid()->FixedRows() + 1;
    }

private:
    void PrvPress(WPARAM key)
    {
        constexpr LPARAM kReleased = 0xC0000000;
        PostMessageW(m_list, WM_KEYDOWN, key, 1);
        PostMessageW(m_list, WM_KEYUP, key, 1 | kReleased);
        PrvRunLoop();
    }

    /// The form's own loop, until it would wait. Painting is the last thing that it does.
    void PrvRunLoop()
    {
        for (MSG message; PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE);)
            m_form.PassOn(message);
    }

    HWND m_list;
    std::shared_ptr<Win32GridView> m_view;
    Win32Form& m_form;
};

void ShowEditor(const std::filesystem::path& /*folder*/)
{
    const auto editor = ProductEditorDlg::Create();
    const Stopwatch watch;
    const FirstPaint firstPaint([&](HWND window) {
        const double opened = watch.Microseconds();
        EditorList list(window);
        AnswerForEditor(opened, list);
    });
    editor->Show(Variant());
}

} // namespace

int main(int argc, char* argv[])
{
    return RunWindowBench(
        {.program = "kstnedit-window-bench", .mostOpenings = 1.3, .showEditor = &ShowEditor}, argc, argv);
}
