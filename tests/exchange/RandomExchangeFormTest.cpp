// SPDX-License-Identifier: MIT
#include "support/ExchangeFixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <optional>
#include <random>
#include <string>
#include <vector>

namespace KestrinProductEditor {

namespace {

using testing::UnorderedElementsAreArray;
using NamedKey = IUser::NamedKey;

constexpr int kActs = 3'000;
constexpr std::size_t kMostProducts = 200;

using Lines = std::vector<std::vector<std::string>>;

/// A file that may be chosen, and what is in it.
struct File
{
    std::string name;
    std::string content;
    Lines lines = {};
    bool canBeSampled = true;
};

const std::vector<File>& Files()
{
    static const std::vector<File> files = {
        {"wide.csv",
         "Title,Number,Cost\nClamp,C-3,4\nDrill,D-4,12.5\nEyelet,E-5,0\n",
         {{"Title", "Number", "Cost"},
          {"Clamp", "C-3", "4"},
          {"Drill", "D-4", "12.5"},
          {"Eyelet", "E-5", "0"}}},
        {"mixed.csv",
         "n,p\nFile,abc\nGimlet,-5\nHinge,\n",
         {{"n", "p"}, {"File", "abc"}, {"Gimlet", "-5"}, {"Hinge", ""}}},
        {"bare.csv", "Only\nIron\n", {{"Only"}, {"Iron"}}},
        {"ragged.csv", "a,b\n1,2,3\n", {}, false},
        {"empty.csv", "", {}},
        {"none.csv", "", {}, false},
    };
    return files;
}

[[nodiscard]] bool IsPrice(const std::string& text)
{
    return !text.empty() && text.find_first_not_of("-.0123456789") == std::string::npos;
}

[[nodiscard]] std::uint32_t Seed()
{
    if (const char* const given = std::getenv("KSTNEDIT_SEED"))
        return static_cast<std::uint32_t>(std::strtoul(given, nullptr, 10));
    return std::random_device{}();
}

/// Somebody who does in the import dialog whatever comes to mind. What the dialog has to show and to say is
/// worked out beside it, from the files' contents alone.
class RandomExchange : public ExchangeFixture
{
protected:
    RandomExchange()
    {
        for (const File& file : Files()) {
            if (file.name != "none.csv")
                m_folder.Write(file.name, file.content);
        }
    }

    void Work()
    {
        while (m_actsLeft > 0 && !HasFailure()) {
            m_file = nullptr;
            m_isUntold = false;
            m_hasTitles = true;
            m_appends = true;
            m_sources.clear();
            m_choices.clear();
            m_isOpen = true;
            Import([&] { Session(); });
            ASSERT_THAT(Names(), UnorderedElementsAreArray(m_names));
        }
    }

    std::mt19937 m_random;

private:
    [[nodiscard]] int Below(int end) { return std::uniform_int_distribution<int>(0, end - 1)(m_random); }

    void Session()
    {
        while (m_isOpen && !HasFailure()) {
            if (--m_actsLeft > 0)
                Act();
            else
                Leave();
            if (m_isOpen)
                Check();
        }
        if (m_isOpen)
            m_user->Click(u"cmdCancel");
    }

    void Act()
    {
        switch (Below(12)) {
        case 0:
        case 1:
            Browse();
            break;
        case 2:
        case 3:
            TypePath();
            break;
        case 4:
            m_user->Click(u"chkFirstRowIsHeader");
            m_hasTitles = !m_hasTitles;
            break;
        case 5:
            m_user->Click(u"chkAppend");
            m_appends = !m_appends;
            break;
        case 6:
        case 7:
        case 8:
            if (!m_choices.empty()) {
                const int row = Below(static_cast<int>(m_choices.size()));
                m_choices[static_cast<std::size_t>(row)] = Below(5);
                m_user->PickInCell(u"flexGrid", row + 1, 1, m_choices[static_cast<std::size_t>(row)]);
            }
            break;
        case 9:
            LookAtPreview();
            break;
        case 10:
            PressImport();
            break;
        default:
            if (Below(4) == 0)
                Leave();
            break;
        }
    }

    void Browse()
    {
        if (Below(5) == 0) {
            m_user->WillChooseFile(std::nullopt);
            m_user->Click(u"cmdBrowse");
            return;
        }
        m_file = &AnyFile();
        m_isUntold = false;
        if (!m_file->canBeSampled)
            Expect(kNoSample);
        if (Below(2) == 0)
            m_user->DropFile(m_folder.File(m_file->name));
        else
            BrowseTo(m_folder.File(m_file->name));
        Sample();
    }

    void TypePath()
    {
        const File* const file = Below(6) == 0 ? nullptr : &AnyFile();
        m_user->TabTo(u"txtImportFilePath");
        m_user->PressControl('A');
        m_user->Press(NamedKey::Delete);
        if (file != nullptr)
            m_user->Type(m_folder.File(file->name));
        if (file != m_file) {
            m_file = file;
            m_isUntold = file != nullptr && !file->canBeSampled;
            Sample();
        }
        // On the way away it is read; so it is when Enter is pressed on the spot.
        if (Below(2) == 0)
            m_user->Press(NamedKey::Tab);
        else
            PressImport();
    }

    void Sample()
    {
        m_sources.clear();
        m_choices.clear();
        if (m_file == nullptr || m_file->lines.empty())
            return;
        for (std::size_t column = 0; column < m_file->lines[0].size(); ++column)
            m_sources.push_back(m_hasTitles ? m_file->lines[0][column]
                                            : "Column " + std::to_string(column + 1));
        m_choices.assign(m_sources.size(), 0);
    }

    void LookAtPreview()
    {
        if (m_file == nullptr || !m_file->canBeSampled) {
            Expect(kNoPreview);
        } else {
            m_user->AtNextForm([&] {
                const std::size_t lines = std::max<std::size_t>(m_file->lines.size(), 1) - 1;
                EXPECT_EQ(m_user->Grid(u"flexGrid").Rows(), static_cast<std::int32_t>(lines) + 1);
                m_user->Click(u"cmdClose");
            });
        }
        m_user->Click(u"cmdPreview");
    }

    void PressImport()
    {
        const std::optional<std::size_t> name = ColumnOf(1);
        const std::optional<std::size_t> price = ColumnOf(3);
        if (m_file == nullptr) {
            Expect(kNoFileName);
        } else if (m_isUntold) {
            Expect(kNoSample);
        } else if (!name && !ColumnOf(2) && !price && !ColumnOf(4)) {
            Expect(kNoMapping);
        } else {
            if (!m_appends)
                m_names.clear();
            int imported = 0;
            int rejected = 0;
            for (std::size_t line = m_hasTitles ? 1 : 0; line < m_file->lines.size(); ++line) {
                const std::vector<std::string>& cells = m_file->lines[line];
                if (price && !IsPrice(cells[*price])) {
                    ++rejected;
                } else {
                    ++imported;
                    m_names.push_back(name ? cells[*name] : "");
                }
            }
            Expect(Summary(imported, rejected));
            m_isOpen = false;
        }
        m_user->Click(u"cmdImport");
        if (m_names.size() > kMostProducts) {
            m_store->DeleteAll();
            m_names.clear();
        }
    }

    void Leave()
    {
        m_isOpen = false;
        switch (Below(3)) {
        case 0:
            m_user->Click(u"cmdCancel");
            break;
        case 1:
            m_user->CloseWindow();
            break;
        default:
            m_user->Press(NamedKey::Escape);
            break;
        }
    }

    void Expect(const IUser::Message& message)
    {
        m_expected.push_back(message);
        m_user->WillAnswer(MessageAnswer::Ok);
    }

    /// What the window shows and has said, against what it should.
    void Check()
    {
        ASSERT_EQ(m_user->TextOf(u"txtImportFilePath"),
                  m_file == nullptr ? u"" : m_folder.File(m_file->name));
        ASSERT_EQ(Column(0), m_sources);
        for (std::size_t column = 0; column < m_choices.size(); ++column)
            ASSERT_EQ(m_user->Grid(u"flexGrid").CellText(static_cast<std::int32_t>(column) + 1, 1),
                      ToUtf16(std::to_string(m_choices[column])));
        ASSERT_EQ(m_user->Messages(), m_expected);
        ASSERT_FALSE(m_user->IsShown(u"prgImport"));
    }

    [[nodiscard]] const File& AnyFile()
    {
        return Files()[static_cast<std::size_t>(Below(static_cast<int>(Files().size())))];
    }
    [[nodiscard]] std::optional<std::size_t> ColumnOf(std::int32_t choice) const
    {
        const auto found = std::find(m_choices.rbegin(), m_choices.rend(), choice);
        if (found == m_choices.rend())
            return std::nullopt;
        return static_cast<std::size_t>(m_choices.rend() - found) - 1;
    }

    int m_actsLeft = kActs;
    bool m_isOpen = false;
    const File* m_file = nullptr;
    bool m_isUntold = false; // nobody has heard yet that the file cannot be read
    bool m_hasTitles = true;
    bool m_appends = true;
    std::vector<std::string> m_sources;
    std::vector<std::int32_t> m_choices;
    std::vector<std::string> m_names = {"Anchor", "Bolt"};
    std::vector<IUser::Message> m_expected;
};

} // namespace

TEST_F(RandomExchange, ShowsSaysAndImportsWhatTheFilesHold)
{
    const std::uint32_t seed = Seed();
    std::cout << "seed " << seed << " (KSTNEDIT_SEED)\n";
    SCOPED_TRACE("KSTNEDIT_SEED=" + std::to_string(seed));
    m_random.seed(seed);
    Work();
}

} // namespace KestrinProductEditor
