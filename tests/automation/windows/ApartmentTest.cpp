// SPDX-License-Identifier: MIT
// From which threads the windows are shown, and what becomes of the host's own window meanwhile.
#include "automation/windows/Patience.h"
#include "automation/windows/WindowsFixture.h"

#include <atomic>
#include <filesystem>
#include <string>
#include <thread>

namespace KestrinProductEditor {

namespace {

constexpr std::u16string_view kHammer = u"Claw hammer, 16 oz";

} // namespace

class Apartments : public WindowsFixture
{
};

TEST_F(Apartments, ShowTheEditorOnAThreadOfTheirOwn)
{
    const std::string expected = CatalogueAfter(
        [](_ProductLkpMgr& store) { SetPrice(store, kHammer, Currency::FromScaled(217'500)); });
    std::thread other([] {
        const Apartment apartment;
        HostProgram host;
        ShowEditor(host, [&] {
            EditPrice(host, kHammer, u"21.75");
            SeenEditor(host).Window().Press(u"Save & Close");
        });
    });
    other.join();
    EXPECT_TRUE(IsSame(Catalogue(), expected));
}

TEST_F(Apartments, ShowTwoEditorsAtTheSameTime)
{
    const std::string expectedHere = CatalogueAfter(
        [](_ProductLkpMgr& store) { SetPrice(store, kHammer, Currency::FromScaled(217'500)); });
    const std::string expectedThere =
        CatalogueAfter([](_ProductLkpMgr& store) { SetPrice(store, kHammer, Currency::FromScaled(30'000)); });
    std::filesystem::copy(Folder().Path() / "Data", Folder().Path() / "There");

    std::atomic<bool> isShownHere = false;
    std::atomic<bool> isShownThere = false;
    std::atomic<bool> isDoneHere = false;
    std::thread there([&] {
        Await("the first editor", [&] { return isShownHere.load(); });
        const Apartment apartment;
        const auto control = Make<IDispatch>(L"KstneditTests.Host");
        LateObject(control.Get()).Put(u"DBSubdirName", u"There");
        HostProgram host;
        ShowEditor(host, [&] {
            const SeenEditor editor(host);
            isShownThere = true;
            EditPrice(host, kHammer, u"3");
            Await("the end of the first editor", [&] { return isDoneHere.load(); });
            EXPECT_TRUE(editor.Window().IsOpen());
            editor.Window().Press(u"Save & Close");
        });
        isShownThere = true;
    });
    HostProgram host;
    ShowEditor(host, [&] {
        const SeenEditor editor(host);
        isShownHere = true;
        Await("the second editor", [&] { return isShownThere.load(); });
        EXPECT_TRUE(editor.Window().IsOpen());
        EditPrice(host, kHammer, u"21.75");
        editor.Window().Press(u"Save & Close");
    });
    isShownHere = true;
    isDoneHere = true;
    there.join();
    EXPECT_TRUE(IsSame(Catalogue(), expectedHere));
    EXPECT_TRUE(IsSame(Folder().Read("There/corvprd2.cpd"), expectedThere));
}

TEST_F(Apartments, KeepTheHostsWindowFromTheUserWhileTheEditorIsShown)
{
    HostProgram host;
    ASSERT_EQ(GetActiveWindow(), host.Window().Handle());
    ShowEditor(host, [&] {
        const SeenEditor editor(host);
        EXPECT_FALSE(host.Window().IsOpen());
        EXPECT_TRUE(host.Window().IsShown());
        EXPECT_EQ(GetWindow(editor.Window().Handle(), GW_OWNER), host.Window().Handle());
        host.Call([&] { EXPECT_EQ(GetActiveWindow(), editor.Window().Handle()); });
        editor.Window().ChooseInMenu(u"Export...");
        const SeenWindow dialog = host.Form(kExportTitle);
        EXPECT_FALSE(editor.Window().IsOpen());
        EXPECT_FALSE(host.Window().IsOpen());
        dialog.Press(u"Cancel");
        dialog.AwaitEnd();
        host.Settle();
        EXPECT_TRUE(editor.Window().IsOpen());
        EXPECT_FALSE(host.Window().IsOpen());
        editor.Window().Press(u"Cancel");
    });
    EXPECT_TRUE(host.Window().IsOpen());
    EXPECT_EQ(GetActiveWindow(), host.Window().Handle());
}

TEST_F(Apartments, LeaveAHostsWindowAloneThatWasDisabledBefore)
{
    HostProgram host;
    EnableWindow(host.Window().Handle(), FALSE);
    ShowEditor(host, [&] { SeenEditor(host).Window().Press(u"Cancel"); });
    EXPECT_FALSE(IsWindowEnabled(host.Window().Handle()));
}

TEST_F(Apartments, WorkOffWhatTheHostHasToDoWhileTheEditorIsShown)
{
    HostProgram host;
    ShowEditor(host, [&] {
        const SeenEditor editor(host);
        const int ticks = host.Ticks();
        const int paintings = host.Paintings();
        Await("the host's timer", [&] { return host.Ticks() > ticks + 2; });
        host.Repaint();
        Await("the host's painting", [&] { return host.Paintings() > paintings; });
        editor.Window().ChooseInMenu(u"Import...");
        const SeenWindow dialog = host.Form(kImportTitle);
        const int paintingsBelow = host.Paintings();
        host.Repaint();
        Await("the host's painting", [&] { return host.Paintings() > paintingsBelow; });
        dialog.Press(u"Cancel");
        dialog.AwaitEnd();
        editor.Window().Press(u"Cancel");
    });
}

TEST_F(Apartments, ShowTheEditorToAHostWithoutAWindow)
{
    HostProgram host;
    ShowWindow(host.Window().Handle(), SW_HIDE);
    ShowEditor(host, [&] {
        const SeenEditor editor(host);
        host.Call([&] { EXPECT_EQ(GetActiveWindow(), editor.Window().Handle()); });
        editor.Window().Press(u"Cancel");
    });
}

} // namespace KestrinProductEditor
