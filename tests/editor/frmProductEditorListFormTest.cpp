// SPDX-License-Identifier: MIT
#include "support/EditorFixture.h"

#include "platform/Text.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <string>
#include <vector>

namespace KestrinProductEditor {

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using NamedKey = IUser::NamedKey;
using Modifier = IUser::Modifier;

class ProductEditorList : public EditorFixture
{
protected:
    ProductEditorList() { WriteCatalogue(ThreeProducts()); }

    [[nodiscard]] std::u16string& Stored() { return m_settings.values[kAddress]; }
    [[nodiscard]] std::array<std::int32_t, 4> Widths() const
    {
        const IGrid& grid = m_user->Grid(u"flexGrid");
        return {grid.ColWidth(0), grid.ColWidth(1), grid.ColWidth(2), grid.ColWidth(3)};
    }
    [[nodiscard]] std::array<std::int32_t, 4> WidthsWith(std::u16string_view stored)
    {
        Stored() = stored;
        std::array<std::int32_t, 4> widths{};
        Edit([&] {
            widths = Widths();
            EXPECT_TRUE(m_user->Grid(u"flexGrid").IsColHidden(3));
            m_user->Click(u"cmdCancel");
        });
        return widths;
    }

    const MemorySettings::Address kAddress = {u"Salvo", u"KestrinProductEditor_Prefs",
                                              u"ViewSettings_ProductEditorDlg"};
};

} // namespace

TEST_F(ProductEditorList, ShowsTheWholeCatalogueUnderOneHeader)
{
    Edit([&] {
        const IGrid& grid = m_user->Grid(u"flexGrid");
        EXPECT_EQ(grid.Rows(), 4);
        EXPECT_EQ(grid.Cols(), 4);
        EXPECT_EQ(grid.FixedRows(), 1);
        EXPECT_EQ(grid.FixedCols(), 0);
        EXPECT_EQ(grid.Mode(), SelectionMode::ListBox);
        EXPECT_EQ(grid.ColType(2), CellType::Currency);
        EXPECT_TRUE(grid.IsColHidden(3));
        const auto shown = [&](std::int32_t row, std::int32_t col) {
            return ToUtf8(m_user->CellShown(u"flexGrid", row, col));
        };
        EXPECT_EQ(shown(0, 0), "Product Name");
        EXPECT_EQ(shown(0, 1), "Part#");
        EXPECT_EQ(shown(0, 2), "Unit Price");
        EXPECT_EQ(shown(1, 0), "Anchor");
        EXPECT_EQ(shown(1, 1), "A-1");
        EXPECT_EQ(shown(1, 2), "$12.50");
        EXPECT_EQ(shown(2, 2), "$7.00");
        EXPECT_EQ(shown(3, 2), "$1,234.50");
        EXPECT_EQ(ToUtf8(grid.CellText(3, 3)), "4");
        EXPECT_EQ(ToUtf8(grid.CellText(9, 3)), "");
        m_user->Click(u"cmdCancel");
    });
}

TEST_F(ProductEditorList, JumpsToTheProductWhoseNameIsTyped)
{
    Edit([&] {
        m_user->Type(u"c");
        EXPECT_EQ(CurrentRow(), 3);
        EXPECT_EQ(Shown(u"lblProductDetails"), "Clamp");
        m_user->Click(u"cmdCancel");
    });
}

TEST_F(ProductEditorList, HasAWideNameColumnAtTheFirstUse)
{
    Edit([&] {
        EXPECT_EQ(Widths(), (std::array<std::int32_t, 4>{2000, 1200, 1200, 1200}));
        m_user->Click(u"cmdCancel");
    });
    EXPECT_EQ(ToUtf8(Stored()), "2000~1200~1200~1200");
    EXPECT_EQ(m_settings.saves, 1U);
}

TEST_F(ProductEditorList, RestoresTheWidthsThatWereStored)
{
    EXPECT_EQ(WidthsWith(u"1500~900~800~0"), (std::array<std::int32_t, 4>{1500, 900, 800, 0}));
    EXPECT_EQ(ToUtf8(Stored()), "1500~900~800~0");
    EXPECT_EQ(WidthsWith(u"1500~900~800~70~9~x"), (std::array<std::int32_t, 4>{1500, 900, 800, 70}));
}

TEST_F(ProductEditorList, RestoresWhatCanBeReadOfDamagedWidths)
{
    EXPECT_EQ(WidthsWith(u"1500~900"), (std::array<std::int32_t, 4>{1500, 900, 1200, 1200}));
    EXPECT_EQ(WidthsWith(u"1500~wide~800~0"), (std::array<std::int32_t, 4>{1500, 1200, 1200, 1200}));
    EXPECT_EQ(WidthsWith(u"1500~-3~800~0"), (std::array<std::int32_t, 4>{1500, 1200, 1200, 1200}));
    EXPECT_EQ(WidthsWith(u"1500~~800~0"), (std::array<std::int32_t, 4>{1500, 1200, 1200, 1200}));
    EXPECT_EQ(WidthsWith(u"1500~99999999999~8~0"), (std::array<std::int32_t, 4>{1500, 1200, 1200, 1200}));
    EXPECT_EQ(WidthsWith(u"~"), (std::array<std::int32_t, 4>{1200, 1200, 1200, 1200}));
    EXPECT_THAT(m_user->Messages(), IsEmpty());
}

TEST_F(ProductEditorList, RemembersADraggedColumnHoweverItIsLeft)
{
    Stored() = u"1500~900~800~33";
    Edit([&] {
        m_user->DragColumn(u"flexGrid", 1, 1440);
        m_user->Click(u"cmdCancel");
    });
    EXPECT_EQ(ToUtf8(Stored()), "1500~1440~800~33");
    Edit([&] {
        m_user->DragColumn(u"flexGrid", 0, 2880);
        m_user->Click(u"cmdSaveClose");
    });
    EXPECT_EQ(ToUtf8(Stored()), "2880~1440~800~33");
    Edit([&] { m_user->CloseWindow(); });
    EXPECT_EQ(ToUtf8(Stored()), "2880~1440~800~33");
}

TEST_F(ProductEditorList, WorksWithSettingsThatCannotBeReadOrWritten)
{
    Stored() = u"1500~900~800~33";
    m_settings.FailAtReading();
    m_settings.FailAtSaving(70);
    Edit([&] {
        EXPECT_EQ(Widths()[0], 2000);
        m_user->Click(u"cmdCancel");
    });
    EXPECT_EQ(m_settings.saves, 1U);
    EXPECT_EQ(ToUtf8(Stored()), "1500~900~800~33");
    EXPECT_THAT(m_user->Messages(), IsEmpty());
}

TEST_F(ProductEditorList, TellsTheCurrentRowFromTheSelectedOnes)
{
    Edit([&] {
        m_user->ClickRow(u"flexGrid", 1);
        m_user->ClickRow(u"flexGrid", 3, Modifier::Control);
        const IGrid& grid = m_user->Grid(u"flexGrid");
        EXPECT_EQ(grid.SelectedRowCount(), 2);
        EXPECT_EQ(CurrentRow(), 3);
        EXPECT_EQ(Shown(u"lblProductDetails"), "Clamp");
        m_user->ChooseTool(u"ID_SelectAll");
        EXPECT_EQ(grid.SelectedRowCount(), 3);
        EXPECT_EQ(CurrentRow(), 3);
        m_user->Click(u"cmdCancel");
    });
}

TEST_F(ProductEditorList, ShowsInTheLocalesForm)
{
    const ScopedLocaleVariables german("de_DE.UTF-8");
    Edit([&] {
        EXPECT_EQ(ToUtf8(m_user->CellShown(u"flexGrid", 3, 2)), "1.234,50 \u20ac");
        m_user->Click(u"cmdCancel");
    });
}

TEST_F(ProductEditorList, HasItsShapeThoughSettingItUpFails)
{
    m_trace->FailOn("enter KestrinProductEditor.frmProductEditor::PrvInitView", 7);
    Edit([&] {
        m_trace->Heal();
        const IGrid& grid = m_user->Grid(u"flexGrid");
        EXPECT_EQ(grid.FixedRows(), 1);
        EXPECT_TRUE(grid.IsColHidden(3));
        EXPECT_EQ(ToUtf8(m_user->CellShown(u"flexGrid", 0, 0)), "Product Name");
        EXPECT_THAT(NamesShown(), ElementsAre("Anchor", "Bolt", "Clamp"));
        m_user->Click(u"cmdCancel");
    });
}

TEST_F(ProductEditorList, TakesARowWithoutAnIdentifierForNoProduct)
{
    Edit([&] {
        // The store answers no field: every cell is empty.
        m_trace->FailOn("enter KestrinProductMgr.ProductLkpMgr::Fields", 7);
        m_user->ClickRow(u"flexGrid", 3);
        EXPECT_EQ(Shown(u"txtProductName"), "Anchor");
        ExpectViewState();
        m_user->WillAnswer(MessageAnswer::Ok);
        m_user->Click(u"cmdDelete");
        EXPECT_THAT(m_user->Messages(), ElementsAre(kSelectFirst));
        m_user->ChooseTool(u"ID_SelectAll");
        m_user->ChooseTool(u"ID_Delete");
        EXPECT_EQ(m_user->Messages().size(), 1U);
        m_trace->Heal();
        m_user->Click(u"cmdCancel");
    });
    EXPECT_EQ(SavedRows(), ThreeProducts());
}

TEST_F(ProductEditorList, ShowsAnImportThoughItsCurrentProductCannotBeShown)
{
    std::vector<ProductRow> rows = ThreeProducts();
    rows[0].note = std::string(4096, 'n');
    WriteCatalogue(rows);
    m_folder.Write("new.csv", "Name\r\nZip\r\n");
    Edit([&] {
        EXPECT_EQ(Shown(u"lblProductView"), "Product List (Count:3)");
        m_user->AtNextForm([&] {
            m_user->WillChooseFile(m_folder.File("new.csv"));
            m_user->Click(u"cmdBrowse");
            m_user->PickInCell(u"flexGrid", 1, 1, 1);
            m_user->WillAnswer(MessageAnswer::Ok);
            m_user->Click(u"cmdImport");
        });
        m_user->ChooseTool(u"ID_Import");
        EXPECT_EQ(Shown(u"lblProductView"), "Product List (Count:4)");
        EXPECT_THAT(NamesShown(), ElementsAre("Anchor", "Bolt", "Clamp", "Zip"));
        EXPECT_EQ(CurrentRow(), 1);
        EXPECT_EQ(Shown(u"txtProductName"), "");
        m_user->Click(u"cmdSaveClose");
    });
}

TEST_F(ProductEditorList, IsRefreshedBeforeTheCurrentRowIsTrustedAgain)
{
    // Whatever has changed the store under the list: the pane shows the product that is the current row.
    Edit([&] {
        m_user->ClickRow(u"flexGrid", 3);
        m_user->Click(u"cmdNew");
        m_user->Type(u"Abrasive");
        m_user->Click(u"cmdSaveClose");
    });
    Edit([&] {
        EXPECT_THAT(NamesShown(), ElementsAre("Abrasive", "Anchor", "Bolt", "Clamp"));
        EXPECT_EQ(Shown(u"lblProductDetails"), "Abrasive");
        m_user->Click(u"cmdCancel");
    });
}

} // namespace KestrinProductEditor
