// SPDX-License-Identifier: MIT
#include "platform/win32/Win32FileDialog.h"

#include "platform/win32/Win32Dialogs.h"
#include "platform/windows/WideText.h"

#include "support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace KestrinProductEditor {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// Shows real dialogs, to somebody who does one act with each window that comes.
class Win32FileDialogTest : public testing::Test
{
protected:
    using Act = std::function<void(HWND)>;

    ~Win32FileDialogTest() override { EXPECT_TRUE(m_acts.empty()) << m_acts.size() << " windows never came"; }

    void Expect(Act act) { m_acts.push_back(std::move(act)); }

    void Shown(HWND window)
    {
        if (m_acts.empty()) {
            ADD_FAILURE() << "nobody expected this window";
            Cancel(window);
            return;
        }
        const Act act = std::move(m_acts.front());
        m_acts.pop_front();
        act(window);
    }

    static void Press(HWND window, int button) { SendMessageW(GetDlgItem(window, button), BM_CLICK, 0, 0); }
    static void Cancel(HWND window)
    {
        Press(window, GetDlgItem(window, IDCANCEL) != nullptr ? IDCANCEL : IDNO);
    }
    /// The name in the dialog's box.
    [[nodiscard]] static std::u16string NameIn(HWND dialog)
    {
        constexpr int kBox = 0x47C;
        constexpr int kEdit = 0x480;
        const HWND box = GetDlgItem(dialog, kBox);
        return TextOfWindow(box != nullptr ? box : GetDlgItem(dialog, kEdit));
    }
    [[nodiscard]] static std::vector<std::u16string> FiltersIn(HWND dialog)
    {
        constexpr int kFilters = 0x470;
        const HWND list = GetDlgItem(dialog, kFilters);
        const auto count = static_cast<WPARAM>(SendMessageW(list, CB_GETCOUNT, 0, 0));
        std::vector<std::u16string> filters;
        for (WPARAM at = 0; at < count; ++at) {
            std::u16string text(static_cast<std::size_t>(SendMessageW(list, CB_GETLBTEXTLEN, at, 0)), u'\0');
            SendMessageW(list, CB_GETLBTEXT, at, reinterpret_cast<LPARAM>(text.data()));
            filters.push_back(text);
        }
        return filters;
    }

    [[nodiscard]] std::u16string Folder() const
    {
        const std::u16string file = m_folder.File("x");
        return file.substr(0, file.size() - 2);
    }
    [[nodiscard]] FileDialog Dialog(FileDialog::Kind kind, const std::u16string& start) const
    {
        return {.kind = kind,
                .title = u"Prices",
                .filter = u"Comma Separated Value (*.csv)|*.csv|All Files (*.*)|*.*",
                .defaultExtension = u".csv",
                .start = start};
    }
    [[nodiscard]] FileDialog Open(const std::u16string& start) const
    {
        return Dialog(FileDialog::Kind::Open, start);
    }
    [[nodiscard]] FileDialog Save(const std::u16string& start) const
    {
        return Dialog(FileDialog::Kind::Save, start);
    }
    /// Paths are compared as the system tells them apart.
    static void ExpectSamePath(const std::optional<std::u16string>& path, const std::u16string& expected)
    {
        ASSERT_TRUE(path);
        std::u16string wanted = expected;
        std::replace(wanted.begin(), wanted.end(), u'/', u'\\');
        EXPECT_EQ(lstrcmpiW(Wide(path->c_str()), Wide(wanted.c_str())), 0);
        EXPECT_EQ(path->find(u'\0'), std::u16string::npos);
    }

    TemporaryFolder m_folder;
    std::deque<Act> m_acts;
    Win32Watch m_watch{[this](HWND window) { Shown(window); }, nullptr};
};

TEST_F(Win32FileDialogTest, AnswersTheFileThatWasOpened)
{
    m_folder.Write("a.csv", "1");
    Expect([this](HWND dialog) {
        EXPECT_EQ(TextOfWindow(dialog), u"Prices");
        EXPECT_TRUE(ChoosePath(dialog, m_folder.File("a.csv")));
    });
    ExpectSamePath(ShowFileDialog(Open({}), nullptr), m_folder.File("a.csv"));
}

TEST_F(Win32FileDialogTest, AnswersNothingWhenItWasCancelled)
{
    Expect([](HWND dialog) { Cancel(dialog); });
    EXPECT_FALSE(ShowFileDialog(Open(Folder()), nullptr));
    Expect([](HWND dialog) { Cancel(dialog); });
    EXPECT_FALSE(ShowFileDialog(Save(m_folder.File("a.csv")), nullptr));
}

TEST_F(Win32FileDialogTest, ShowsEachFilterByItsName)
{
    Expect([](HWND dialog) {
        EXPECT_THAT(FiltersIn(dialog), ElementsAre(u"Comma Separated Value (*.csv)", u"All Files (*.*)"));
        Cancel(dialog);
    });
    (void)ShowFileDialog(Open(Folder()), nullptr);
    FileDialog dialog = Open(Folder());
    dialog.filter.clear();
    Expect([](HWND window) {
        EXPECT_THAT(FiltersIn(window), IsEmpty());
        Cancel(window);
    });
    (void)ShowFileDialog(dialog, nullptr);
}

TEST_F(Win32FileDialogTest, BeginsInAFolder)
{
    m_folder.Write("a.csv", "1");
    Expect([](HWND dialog) {
        EXPECT_EQ(NameIn(dialog), u"");
        EXPECT_TRUE(ChoosePath(dialog, u"a.csv"));
    });
    ExpectSamePath(ShowFileDialog(Open(Folder()), nullptr), m_folder.File("a.csv"));
}

TEST_F(Win32FileDialogTest, BeginsWithAFileThatIsChosenAlready)
{
    std::u16string start = m_folder.File("new.csv");
    for (const char16_t separator : {u'\\', u'/'}) {
        std::replace_if(
            start.begin(), start.end(), [](char16_t unit) { return unit == u'\\' || unit == u'/'; },
            separator);
        Expect([](HWND dialog) {
            EXPECT_EQ(NameIn(dialog), u"new.csv");
            Press(dialog, IDOK);
        });
        ExpectSamePath(ShowFileDialog(Save(start), nullptr), m_folder.File("new.csv"));
    }
}

TEST_F(Win32FileDialogTest, BeginsWithTheNameAloneWhereItsFolderIsMissing)
{
    for (const FileDialog::Kind kind : {FileDialog::Kind::Open, FileDialog::Kind::Save}) {
        for (const char16_t* const path : {u"Q:\\no\\such\\folder\\a.csv", u"\\\\no server\\share\\a.csv",
                                           u"a.csv", u"no such folder/a.csv"}) {
            Expect([](HWND dialog) {
                EXPECT_EQ(NameIn(dialog), u"a.csv");
                Cancel(dialog);
            });
            EXPECT_FALSE(ShowFileDialog(Dialog(kind, path), nullptr));
        }
    }
}

TEST_F(Win32FileDialogTest, BeginsAlsoWithANameThatNoFileCanHave)
{
    for (const char16_t* const name : {u"Q:\\a?<b>.csv", u"a|b.csv", u"\\", u":"}) {
        Expect([](HWND dialog) { Cancel(dialog); });
        EXPECT_FALSE(ShowFileDialog(Save(name), nullptr));
    }
}

TEST_F(Win32FileDialogTest, ATypedNameGetsTheExtension)
{
    for (const char16_t* const extension : {u".csv", u"csv"}) {
        FileDialog dialog = Save(Folder());
        dialog.defaultExtension = extension;
        Expect([](HWND window) { EXPECT_TRUE(ChoosePath(window, u"prices")); });
        ExpectSamePath(ShowFileDialog(dialog, nullptr), m_folder.File("prices.csv"));
    }
    Expect([](HWND window) { EXPECT_TRUE(ChoosePath(window, u"prices.txt")); });
    ExpectSamePath(ShowFileDialog(Save(Folder()), nullptr), m_folder.File("prices.txt"));
}

TEST_F(Win32FileDialogTest, AsksBeforeAnExistingFileIsChosenToBeSaved)
{
    m_folder.Write("a.csv", "1");
    Expect([](HWND dialog) {
        EXPECT_FALSE(ChoosePath(dialog, u"a.csv"));
        EXPECT_TRUE(ChoosePath(dialog, u"a"));
    });
    Expect([](HWND question) { Press(question, IDNO); });
    Expect([](HWND question) { Press(question, IDYES); });
    ExpectSamePath(ShowFileDialog(Save(Folder()), nullptr), m_folder.File("a.csv"));
    EXPECT_EQ(m_folder.Read("a.csv"), "1");
}

TEST_F(Win32FileDialogTest, RefusesWhatIsNotThere)
{
    for (const FileDialog::Kind kind : {FileDialog::Kind::Open, FileDialog::Kind::Save}) {
        Expect([this](HWND dialog) {
            EXPECT_FALSE(ChoosePath(dialog, Folder() + u"\\no such folder\\a.csv"));
            Cancel(dialog);
        });
        Expect([](HWND refusal) { SendMessageW(ButtonOf(refusal, MessageAnswer::Ok), BM_CLICK, 0, 0); });
        EXPECT_FALSE(ShowFileDialog(Dialog(kind, Folder()), nullptr));
    }
    Expect([](HWND dialog) {
        EXPECT_FALSE(ChoosePath(dialog, u"missing.csv"));
        Cancel(dialog);
    });
    Expect([](HWND refusal) { SendMessageW(ButtonOf(refusal, MessageAnswer::Ok), BM_CLICK, 0, 0); });
    EXPECT_FALSE(ShowFileDialog(Open(Folder()), nullptr));
    EXPECT_THAT(m_folder.Names(), IsEmpty());
}

TEST_F(Win32FileDialogTest, TheHostKeepsItsFolder)
{
    std::u16string before(MAX_PATH, u'\0');
    GetCurrentDirectoryW(MAX_PATH, Wide(before.data()));
    m_folder.Write("a.csv", "1");
    Expect([](HWND dialog) { EXPECT_TRUE(ChoosePath(dialog, u"a.csv")); });
    (void)ShowFileDialog(Open(Folder()), nullptr);
    std::u16string after(MAX_PATH, u'\0');
    GetCurrentDirectoryW(MAX_PATH, Wide(after.data()));
    EXPECT_EQ(after, before);
}

} // namespace
} // namespace KestrinProductEditor
