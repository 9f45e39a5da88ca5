// SPDX-License-Identifier: MIT
#include "support/ExchangeFixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <string>

namespace KestrinProductEditor {

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using NamedKey = IUser::NamedKey;

class ProdImportPreview : public ExchangeFixture
{
protected:
    /// Chooses a file with the columns name, part number, price and note, and looks at its preview.
    void Preview(std::string_view content, const std::function<void()>& look)
    {
        Import([&] {
            BrowseTo("list.csv", content);
            for (std::int32_t row = 1; row < m_user->Grid(u"flexGrid").Rows(); ++row)
                m_user->PickInCell(u"flexGrid", row, 1, row);
            m_user->AtNextForm([&] {
                look();
                m_user->Click(u"cmdClose");
            });
            m_user->Click(u"cmdPreview");
            EXPECT_THAT(m_user->OpenForms(), ElementsAre(u"frmProductImport"));
            m_user->Click(u"cmdCancel");
        });
    }
    [[nodiscard]] std::string Mark(std::int32_t row) const
    {
        return ToUtf8(m_user->Grid(u"flexGrid").CellMark(row, 2));
    }
};

} // namespace

TEST_F(ProdImportPreview, ShowsTheLinesAsProducts)
{
    Preview("n,p,u,t\nClamp,C-3,1234.5,heavy\nDrill,D-4,8,\n", [&] {
        EXPECT_THAT(m_user->OpenForms(), ElementsAre(u"frmProductImport", u"frmProdImportPreview"));
        EXPECT_EQ(m_user->WindowCaption(), u"Import Preview");
        EXPECT_EQ(Cell(0, 0), "Name");
        EXPECT_EQ(Cell(0, 1), "Part#");
        EXPECT_EQ(Cell(0, 2), "Unit Price");
        EXPECT_EQ(Cell(0, 3), "Note");
        EXPECT_THAT(Column(0), ElementsAre("Clamp", "Drill"));
        EXPECT_THAT(Column(1), ElementsAre("C-3", "D-4"));
        EXPECT_THAT(Column(2), ElementsAre("$1,234.50", "$8.00"));
        EXPECT_THAT(Column(3), ElementsAre("heavy", ""));
        EXPECT_EQ(Mark(1), "");
    });
    EXPECT_FALSE(m_store->SessionIsDirty());
}

TEST_F(ProdImportPreview, MarksThePricesThatDoNotArrive)
{
    Preview("n,p,u\na,1,abc\nb,2,-5\nc,3,4294967296\nd,4,\n", [&] {
        EXPECT_THAT(Column(2), ElementsAre("abc", "-$5.00", "$4,294,967,296.00", ""));
        EXPECT_THAT(Mark(1), HasSubstr("rejected"));
        EXPECT_THAT(Mark(2), HasSubstr("zero"));
        EXPECT_THAT(Mark(3), HasSubstr("zero"));
        EXPECT_THAT(Mark(4), HasSubstr("rejected"));
    });
}

TEST_F(ProdImportPreview, LeavesUnmappedFieldsEmpty)
{
    Preview("n\nClamp\n", [&] {
        EXPECT_EQ(Cell(1, 0), "Clamp");
        EXPECT_EQ(Cell(1, 2), "");
        EXPECT_EQ(Mark(1), "");
    });
}

TEST_F(ProdImportPreview, ShowsOnlyItsTitlesForAFileOfTitles)
{
    Preview("n,p\n", [&] { EXPECT_EQ(m_user->Grid(u"flexGrid").Rows(), 1); });
}

TEST_F(ProdImportPreview, ClosesByEsc)
{
    Import([&] {
        BrowseTo("list.csv", "n\na\n");
        m_user->AtNextForm([&] { m_user->Press(NamedKey::Escape); });
        m_user->Click(u"cmdPreview");
        EXPECT_THAT(m_user->OpenForms(), ElementsAre(u"frmProductImport"));
        m_user->Press(NamedKey::Escape);
    });
}

TEST_F(ProdImportPreview, SaysOnceThatItCannotBeShown)
{
    Import([&] {
        BrowseTo("list.csv", "n\na\n");
        std::filesystem::remove(m_folder.Path() / "list.csv");
        m_user->WillAnswer(MessageAnswer::Ok);
        m_user->Click(u"cmdPreview");
        EXPECT_THAT(m_user->OpenForms(), ElementsAre(u"frmProductImport"));
        m_user->Click(u"cmdCancel");
    });
    EXPECT_THAT(m_user->Messages(), ElementsAre(kNoPreview));
}

TEST_F(ProdImportPreview, SaysOnceThatAFailingTraceHasStoppedIt)
{
    for (const std::string member : {"PrvShowPreviewDlg", "cmdPreview_Click"}) {
        m_trace->FailOn("enter KestrinProductEditor.frmProductImport::" + member, 4711);
        const std::size_t before = m_user->Messages().size();
        Import([&] {
            BrowseTo("list.csv", "n\na\n");
            m_user->WillAnswer(MessageAnswer::Ok);
            m_user->Click(u"cmdPreview");
            m_trace->Heal();
            m_user->AtNextForm([&] { m_user->Click(u"cmdClose"); });
            m_user->Click(u"cmdPreview");
            m_user->Click(u"cmdCancel");
        });
        EXPECT_EQ(m_user->Messages().size(), before + 1);
    }
}

} // namespace KestrinProductEditor
