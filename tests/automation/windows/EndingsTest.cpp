// SPDX-License-Identifier: MIT
// What a host does to a window that it has shown, and how the window ends then.
#include "automation/windows/Patience.h"
#include "automation/windows/WindowsFixture.h"

#include <atomic>
#include <future>
#include <optional>
#include <string>

namespace KestrinProductEditor {

namespace {

constexpr std::u16string_view kHammer = u"Claw hammer, 16 oz";
constexpr int kExitCode = 7;

/// The WM_QUIT that waits in this thread's queue, taken out.
[[nodiscard]] std::optional<int> TakeQuit()
{
    MSG message = {};
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        if (message.message == WM_QUIT)
            return static_cast<int>(message.wParam);
        DispatchMessageW(&message);
    }
    return std::nullopt;
}

/// What the window answers to the end of the session; it may ask the user first.
[[nodiscard]] std::future<LRESULT> AskForTheEndOfTheSession(const SeenWindow& form)
{
    return std::async(std::launch::async,
                      [form] { return SendMessageW(form.Handle(), WM_QUERYENDSESSION, 0, 0); });
}

} // namespace

class Endings : public WindowsFixture
{
protected:
    HostProgram m_host;
    const std::string m_before = Catalogue();
    const std::string m_expected = CatalogueAfter(
        [](_ProductLkpMgr& store) { SetPrice(store, kHammer, Currency::FromScaled(217'500)); });
};

TEST_F(Endings, ShowsASecondEditorInFrontWhenAskedTwice)
{
    const auto dialog = Make<_ProductEditorDlg>(kEditorClass);
    std::atomic<HRESULT> second = E_PENDING;
    const auto show = [&] { EXPECT_EQ(dialog->Show(ComVariant()), S_OK); };
    m_host.ShowWhile(show, [&] {
        const SeenEditor below(m_host);
        m_host.Post([&] { second = dialog->Show(ComVariant()); });
        Await("the second editor", [&] { return !below.Window().IsOpen(); });
        const SeenEditor front(m_host);
        EXPECT_NE(front.Window().Handle(), below.Window().Handle());
        front.Window().Press(u"Cancel");
        front.Window().AwaitEnd();
        Await("the second Show", [&] { return second != E_PENDING; });
        EXPECT_EQ(second.load(), S_OK);
        EXPECT_TRUE(below.Window().IsOpen());
        EditPrice(m_host, kHammer, u"21.75");
        below.Window().Press(u"Save & Close");
    });
    EXPECT_TRUE(IsSame(Catalogue(), m_expected));
}

TEST_F(Endings, ShowsTheSameDialogAgainAfterItsEnd)
{
    const auto dialog = Make<_ProductEditorDlg>(kEditorClass);
    for (int round = 0; round < 3; ++round) {
        m_host.ShowWhile([&] { EXPECT_EQ(dialog->Show(ComVariant()), S_OK); },
                         [&] { SeenEditor(m_host).Window().Press(u"Cancel"); });
    }
}

TEST_F(Endings, KeepsTheEditorWhenItsHostLetsGoOfIt)
{
    auto dialog = Make<_ProductEditorDlg>(kEditorClass);
    _ProductEditorDlg* const shown = dialog.Get();
    m_host.ShowWhile([&] { EXPECT_EQ(shown->Show(ComVariant()), S_OK); },
                     [&] {
                         const SeenEditor editor(m_host);
                         m_host.Call([&] {
                             dialog.Reset();
                             // As the idle loop of a host does.
                             CoFreeUnusedLibrariesEx(0, 0);
                         });
                         EditPrice(m_host, kHammer, u"21.75");
                         editor.Window().Press(u"Save & Close");
                     });
    EXPECT_TRUE(IsSame(Catalogue(), m_expected));
}

TEST_F(Endings, TakesTheHostsCloseForTheUsers)
{
    ShowEditor(m_host, [&] { PostMessageW(SeenEditor(m_host).Window().Handle(), WM_CLOSE, 0, 0); });
    ShowEditor(m_host, [&] {
        EditPrice(m_host, kHammer, u"21.75");
        const SeenEditor editor(m_host);
        PostMessageW(editor.Window().Handle(), WM_CLOSE, 0, 0);
        m_host.Answer(kAskSaveList, IDCANCEL);
        m_host.Settle();
        EXPECT_TRUE(editor.Window().IsOpen());
        PostMessageW(editor.Window().Handle(), WM_CLOSE, 0, 0);
        m_host.Answer(kAskSaveList, IDNO);
    });
    EXPECT_TRUE(IsSame(Catalogue(), m_before));
}

TEST_F(Endings, EndsWithTheProgramAndHandsItsEndOn)
{
    ShowEditor(m_host, [&] {
        static_cast<void>(SeenEditor(m_host));
        PostThreadMessageW(m_host.Thread(), WM_QUIT, kExitCode, 0);
    });
    EXPECT_EQ(TakeQuit(), kExitCode);
    EXPECT_TRUE(IsSame(Catalogue(), m_before));
}

TEST_F(Endings, AsksForTheChangesWhenTheProgramEnds)
{
    ShowEditor(m_host, [&] {
        EditPrice(m_host, kHammer, u"21.75");
        PostThreadMessageW(m_host.Thread(), WM_QUIT, kExitCode, 0);
        m_host.Answer(kAskSaveList, IDYES);
    });
    EXPECT_EQ(TakeQuit(), kExitCode);
    EXPECT_TRUE(IsSame(Catalogue(), m_expected));
}

TEST_F(Endings, KeepsWhatIsTypedWhenTheProgramEndsAgainstTheUsersWish)
{
    ShowEditor(m_host, [&] {
        const SeenEditor editor(m_host);
        editor.Edit(kHammer);
        editor.Type(u"Unit Price", u"21.75");
        PostThreadMessageW(m_host.Thread(), WM_QUIT, kExitCode, 0);
        m_host.Answer(kAskSaveList, IDCANCEL);
    });
    EXPECT_EQ(TakeQuit(), kExitCode);
    EXPECT_TRUE(IsSame(Catalogue(), m_expected));
}

TEST_F(Endings, EndsTheFormsInFrontWithTheProgram)
{
    ShowEditor(m_host, [&] {
        SeenEditor(m_host).Window().ChooseInMenu(u"Import...");
        static_cast<void>(m_host.Form(kImportTitle));
        PostThreadMessageW(m_host.Thread(), WM_QUIT, kExitCode, 0);
    });
    EXPECT_EQ(TakeQuit(), kExitCode);
    EXPECT_TRUE(IsSame(Catalogue(), m_before));
}

TEST_F(Endings, LetsTheSessionEndWhenNothingIsChanged)
{
    ShowEditor(m_host,
               [&] { EXPECT_NE(AskForTheEndOfTheSession(SeenEditor(m_host).Window()).get(), FALSE); });
    EXPECT_TRUE(IsSame(Catalogue(), m_before));
}

TEST_F(Endings, AsksForTheChangesBeforeTheSessionEnds)
{
    ShowEditor(m_host, [&] {
        EditPrice(m_host, kHammer, u"21.75");
        const SeenEditor editor(m_host);
        std::future<LRESULT> answer = AskForTheEndOfTheSession(editor.Window());
        m_host.Answer(kAskSaveList, IDCANCEL);
        EXPECT_EQ(answer.get(), FALSE);
        EXPECT_TRUE(editor.Window().IsOpen());
        answer = AskForTheEndOfTheSession(editor.Window());
        m_host.Answer(kAskSaveList, IDYES);
        EXPECT_NE(answer.get(), FALSE);
    });
    EXPECT_TRUE(IsSame(Catalogue(), m_expected));
}

} // namespace KestrinProductEditor
