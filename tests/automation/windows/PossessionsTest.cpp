// SPDX-License-Identifier: MIT
#include "automation/windows/Possessions.h"
#include "automation/windows/WindowsFixture.h"

#include <vector>

namespace KestrinProductEditor {

namespace {

// Something that is forgotten in each opening would be this much.
constexpr int kOpenings = 200;
// What the system puts aside for itself now and then.
constexpr DWORD kSlack = 10;

void OpenAndClose(HostProgram& host, int times)
{
    const auto dialog = Make<_ProductEditorDlg>(kEditorClass);
    const auto show = [&] {
        for (int time = 0; time < times; ++time)
            ASSERT_EQ(dialog->Show(ComVariant()), S_OK);
    };
    host.ShowWhile(show, [&] {
        for (int time = 0; time < times; ++time) {
            const SeenEditor editor(host);
            editor.Window().Press(u"Cancel");
            editor.Window().AwaitEnd();
        }
    });
}

} // namespace

TEST(Possessions, AreCounted)
{
    const Possessions before = Possessions::Now();
    std::vector<HWND> windows;
    std::vector<HMENU> menus;
    std::vector<HBRUSH> brushes;
    std::vector<HANDLE> events;
    constexpr DWORD kMany = 50;
    for (DWORD number = 0; number < kMany; ++number) {
        windows.push_back(
            CreateWindowW(L"STATIC", L"", WS_POPUP, 0, 0, 1, 1, nullptr, nullptr, nullptr, nullptr));
        menus.push_back(CreateMenu());
        brushes.push_back(CreateSolidBrush(RGB(1, 2, number)));
        events.push_back(CreateEventW(nullptr, FALSE, FALSE, nullptr));
    }
    const Possessions more = Possessions::Now();
    EXPECT_GE(more.userObjects, before.userObjects + 2 * kMany);
    EXPECT_GE(more.graphicsObjects, before.graphicsObjects + kMany);
    EXPECT_GE(more.handles, before.handles + kMany);
    for (DWORD number = 0; number < kMany; ++number) {
        DestroyWindow(windows[number]);
        DestroyMenu(menus[number]);
        DeleteObject(brushes[number]);
        CloseHandle(events[number]);
    }
    const Possessions after = Possessions::Now();
    EXPECT_LE(after.userObjects, before.userObjects + kSlack);
    EXPECT_LE(after.graphicsObjects, before.graphicsObjects + kSlack);
    EXPECT_LE(after.handles, before.handles + kSlack);
}

class Openings : public WindowsFixture
{
};

TEST_F(Openings, LeaveNothingBehind)
{
    HostProgram host;
    const ComPtr<_ProductLkpMgr> keepsTheComponent = OpenStore();
    constexpr int kWarmUp = 10;
    OpenAndClose(host, kWarmUp);
    const Possessions before = Possessions::Now();
    OpenAndClose(host, kOpenings);
    const Possessions after = Possessions::Now();
    SCOPED_TRACE(testing::Message() << "before: " << before << "; after: " << after);
    EXPECT_LE(after.userObjects, before.userObjects + kSlack);
    EXPECT_LE(after.graphicsObjects, before.graphicsObjects + kSlack);
    EXPECT_LE(after.handles, before.handles + kSlack);
}

} // namespace KestrinProductEditor
