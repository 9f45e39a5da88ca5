// SPDX-License-Identifier: MIT
#include "support/ExchangeFixture.h"

#include <KestrinProductEditor/ProductExportDlg.h>
#include <KestrinProductEditor/ProductImportDlg.h>

namespace KestrinProductEditor {

const IUser::Message ExchangeFixture::kNoFileName = Exclamation(u"Please specify import file name");
const IUser::Message ExchangeFixture::kNoMapping = Exclamation(u"You must map at least one field");
const IUser::Message ExchangeFixture::kNoSample = Exclamation(
    u"The import file format is either invalid or there has been an error while trying to read the "
    u"file.");
const IUser::Message ExchangeFixture::kNoPreview = Exclamation(u"Could not display preview dialog");
const IUser::Message ExchangeFixture::kNoImport = Exclamation(u"Could not import the data due to an error");

ExchangeFixture::ExchangeFixture()
{
    WriteCatalogue(std::vector<ProductRow>{{.rowID = 1, .name = "Anchor", .partNum = "A-1", .price = 125000},
                                           {.rowID = 2, .name = "Bolt", .partNum = "B-2", .price = 70000}});
    m_store = Open();
    m_store->CancelUpdate(true);
}

ExchangeFixture::~ExchangeFixture() = default;

void ExchangeFixture::Import(const std::function<void()>& acts)
{
    const auto dialog = ProductImportDlg::Create();
    dialog->Init(m_store);
    m_user->AtNextForm(acts);
    dialog->Show();
    EXPECT_TRUE(m_user->OpenForms().empty());
}

void ExchangeFixture::Export(const std::function<void()>& acts)
{
    const auto dialog = ProductExportDlg::Create();
    dialog->Init(m_store);
    m_user->AtNextForm(acts);
    dialog->Show();
    EXPECT_TRUE(m_user->OpenForms().empty());
}

void ExchangeFixture::BrowseTo(std::string_view name, std::string_view content)
{
    m_folder.Write(name, content);
    BrowseTo(m_folder.File(name));
}

void ExchangeFixture::BrowseTo(const std::u16string& path)
{
    m_user->WillChooseFile(path);
    m_user->Click(u"cmdBrowse");
}

std::vector<std::string> ExchangeFixture::Column(std::int32_t col) const
{
    std::vector<std::string> cells;
    for (std::int32_t row = 1; row < m_user->Grid(u"flexGrid").Rows(); ++row)
        cells.push_back(Cell(row, col));
    return cells;
}

std::string ExchangeFixture::Cell(std::int32_t row, std::int32_t col) const
{
    return ToUtf8(m_user->CellShown(u"flexGrid", row, col));
}

IUser::Message ExchangeFixture::Exclamation(std::u16string_view text)
{
    return {std::u16string(text), 48, u"Salvo"};
}

IUser::Message ExchangeFixture::Summary(int imported, int rejected)
{
    return {ToUtf16(std::to_string(imported) + " products have been imported.\r\n" +
                    std::to_string(rejected) +
                    " products have been rejected (due to an error/invalid format)."),
            64, u"Salvo"};
}

} // namespace KestrinProductEditor
