// SPDX-License-Identifier: MIT
#pragma once

#include "platform/ui/Form.h"
#include "platform/win32/Win32ControlSet.h"
#include "platform/win32/Win32Layout.h"

#include <windows.h>

#include <shellapi.h>

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace KestrinProductEditor {

class Win32Button;
class Win32ModalHost;

/// A form in a window of its own, of the class kClassName. It belongs to the thread that made it.
///
/// ShowModal runs a loop of its own: the windows of the thread that the user could act on are disabled and go
/// on painting, and the one that was active owns the form. A WM_QUIT and the end of the user's session are a
/// click on the close box; ShowModal leaves the former to the loop below.
class Win32Form final : public Win32Surface<IForm>
{
public:
    static constexpr const wchar_t* kClassName = L"KstneditForm";

    /// Error 5 for a name that no layout bears, 7 when the system has no room for the window.
    explicit Win32Form(std::u16string_view name);
    ~Win32Form() override;

    /// The forms that this thread shows, the one in front last.
    [[nodiscard]] static std::vector<Win32Form*> Shown();
    /// The window of the form in front that has not ended; null when this thread shows none.
    [[nodiscard]] static HWND FrontWindow();

    void SetCaption(std::u16string_view caption) override;
    [[nodiscard]] std::u16string Caption() const override { return m_caption; }
    void SetFirstFocus(IControl& control) override;
    void SetDefaultButton(IButton& button) override;
    void ShowModal() override;
    void EndModal() override;
    void SetBusy(bool bBusy) override;
    void KeepPainting() override;

    [[nodiscard]] HWND Window() const { return m_window; }
    [[nodiscard]] const std::u16string& Layout() const { return m_layout.Name(); }
    [[nodiscard]] Win32ControlSet& Controls() override { return *m_controls; }

    /// What the form's loop does with a message.
    void PassOn(MSG& message);

private:
    class Showing;

    static LRESULT CALLBACK PrvProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    static void PrvRegister();

    [[nodiscard]] LRESULT PrvHandle(UINT message, WPARAM wParam, LPARAM lParam);
    void PrvLimitSize(MINMAXINFO& limits) const;
    void PrvChangeResolution(const RECT& place);
    /// A larger font needs more room.
    void PrvKeepLeastSize() const;
    void PrvAskToClose();
    void PrvTakeFiles(HDROP files);
    [[nodiscard]] bool PrvTakesKey(const MSG& message);
    [[nodiscard]] bool PrvTakesEnter(const MSG& message);
    /// The button that Enter clicks looks like that, also where code has moved the focus.
    void PrvShowDefault();
    void PrvShow(Win32Form* below);
    void PrvHide();
    void PrvPlace(HWND owner) const;
    void PrvRunLoop();
    void PrvDropActs() const;
    void PrvPaint();

    Win32Layout m_layout;
    HWND m_window = nullptr;
    std::unique_ptr<Win32ControlSet> m_controls;
    std::u16string m_caption;
    Win32Button* m_defaultButton = nullptr;
    HWND m_focusShown = nullptr;  ///< when the default button was shown last
    Win32Form* m_below = nullptr; ///< while the form is shown, as the next one
    Win32ModalHost* m_host = nullptr;
    bool m_isShown = false;
    bool m_isEnded = false;
    bool m_isBusy = false;
    ULONGLONG m_lastFrame = 0; ///< when it was painted last, while busy
};

} // namespace KestrinProductEditor
