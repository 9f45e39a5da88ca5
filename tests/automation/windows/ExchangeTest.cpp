// SPDX-License-Identifier: MIT
#include "automation/windows/Patience.h"
#include "automation/windows/WindowsFixture.h"

#include "platform/Text.h"
#include "platform/windows/WideText.h"

#include <algorithm>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace KestrinProductEditor {

namespace {

// What the system asks is in the user's language.
constexpr std::u16string_view kAnyMessage;

[[nodiscard]] std::u16string ResultText(const Variant& result)
{
    return ToUtf16(std::to_string(result.At(2).Long())) + u" products have been imported.";
}

/// Chooses what the columns of the sample's price list are.
void MapSample(const SeenGrid& mapping)
{
    ASSERT_EQ(mapping.AllRows(), (std::vector<std::u16string>{
                                     u"Source: Product, Destination:  ", u"Source: Part No, Destination:  ",
                                     u"Source: Price, Destination:  ", u"Source: Remarks, Destination:  "}));
    // A change of mind.
    mapping.Choose(0, u"Product Note");
    mapping.Choose(0, u"Product Name");
    mapping.Choose(1, u"Product Part#");
    mapping.Choose(2, u"Product Unit Price");
    mapping.Choose(3, u"Product Note");
}

/// Names a file in a file dialog, and presses its button.
void Choose(const HostProgram& host, const std::u16string& path)
{
    constexpr int kFileNameBox = 0x47C;
    const HWND dialog = host.FileDialog(u"Export products").Handle();
    host.Settle();
    SendMessageW(GetDlgItem(dialog, kFileNameBox), WM_SETTEXT, 0,
                 reinterpret_cast<LPARAM>(Wide(path.c_str())));
    SeenWindow(GetDlgItem(dialog, IDOK)).Press();
}

[[nodiscard]] bool HasLabel(const SeenWindow& form, std::u16string_view beginning)
{
    const std::vector<SeenWindow> children = form.Children();
    return std::any_of(children.begin(), children.end(), [beginning](const SeenWindow& child) {
        return child.Class() == u"Static" && child.Text().starts_with(beginning);
    });
}

} // namespace

class Exchange : public WindowsFixture
{
protected:
    /// What a store holds, as the bytes of an export.
    [[nodiscard]] std::string ContentOf(_ProductLkpMgr& store) const
    {
        EXPECT_EQ(store.CSVProductExport(ComVariant(Variant::ArrayWith(Folder().File("content.csv")))), S_OK);
        return Folder().Read("content.csv");
    }
    void ShowImport(_ProductLkpMgr* store, const std::function<void()>& acts)
    {
        const auto dialog = Make<_ProductImportDlg>(kImportClass);
        ASSERT_EQ(dialog->Init(&store), S_OK);
        m_host.ShowWhile([&] { EXPECT_EQ(dialog->Show(), S_OK); }, acts);
    }
    void ShowExport(_ProductLkpMgr* store, const std::function<void()>& acts)
    {
        const auto dialog = Make<_ProductExportDlg>(kExportClass);
        ASSERT_EQ(dialog->Init(&store), S_OK);
        m_host.ShowWhile([&] { EXPECT_EQ(dialog->Show(), S_OK); }, acts);
    }

    HostProgram m_host;
    const ComPtr<_ProductLkpMgr> m_store = OpenStore();
};

TEST_F(Exchange, ImportsWhatIsMappedAndPreviewed)
{
    ASSERT_EQ(m_store->DeleteAll(), S_OK);
    const Variant result = ImportSample(*m_store.Get());
    const std::string expected = ContentOf(*m_store.Get());
    ASSERT_EQ(m_store->DeleteAll(), S_OK);

    ShowImport(m_store.Get(), [&] {
        const SeenWindow form = m_host.Form(kImportTitle);
        m_host.Type(form.Box(u"File to import"), SamplePath());
        EXPECT_EQ(SendMessageW(form.Button(u"First line holds column titles").Handle(), BM_GETCHECK, 0, 0),
                  BST_CHECKED);
        // The path is taken when its box is left.
        form.Press(u"Add to the products already in the list");
        m_host.Settle();
        MapSample({m_host, form});

        form.Press(u"Preview");
        const SeenWindow preview = m_host.Form(u"Import Preview");
        EXPECT_FALSE(form.IsOpen());
        EXPECT_EQ(SeenGrid(m_host, preview).Rows(), 5);
        EXPECT_EQ(SeenGrid(m_host, preview).Row(0),
                  u"Name: Claw hammer, 16 oz, Part#: HT-CH16, Unit Price: $18.95, "
                  u"Note: Forged head, hickory handle");
        preview.Press(u"Close");
        preview.AwaitEnd();

        m_host.Form(kImportTitle).Press(u"Import");
        m_host.Answer(ResultText(result), IDOK);
    });
    EXPECT_TRUE(IsSame(ContentOf(*m_store.Get()), expected));
}

TEST_F(Exchange, TakesTheFirstLineAsAProductWithoutTheTick)
{
    ASSERT_EQ(m_store->DeleteAll(), S_OK);
    Folder().Write("two.csv", "Lamp,1.50\r\nDesk,20\r\n");
    ShowImport(m_store.Get(), [&] {
        const SeenWindow form = m_host.Form(kImportTitle);
        form.Press(u"First line holds column titles");
        m_host.Settle();
        m_host.Type(form.Box(u"File to import"), Folder().File("two.csv"));
        form.Press(u"Add to the products already in the list");
        m_host.Settle();
        const SeenGrid mapping(m_host, form);
        mapping.Choose(0, u"Product Name");
        mapping.Choose(1, u"Product Unit Price");
        form.Press(u"Import");
        m_host.Answer(u"2 products have been imported.", IDOK);
    });
    LONG count = 0;
    ASSERT_EQ(m_store->get_Count(&count), S_OK);
    EXPECT_EQ(count, 2);
}

TEST_F(Exchange, StaysOpenUntilAFileIsNamedAndMapped)
{
    ShowImport(m_store.Get(), [&] {
        const SeenWindow form = m_host.Form(kImportTitle);
        form.Press(u"Import");
        m_host.Answer(u"Please specify import file name", IDOK);
        m_host.Type(form.Box(u"File to import"), SamplePath());
        form.Press(u"Import");
        m_host.Answer(u"You must map at least one field", IDOK);
        form.Press(u"Cancel");
    });
}

TEST_F(Exchange, ShowsInTheEditorWhatWasImportedThere)
{
    Folder().Write("one.csv", "Name\r\nZither\r\n");
    const std::string expected = CatalogueAfter([&](_ProductLkpMgr& store) {
        const ComVariant parameters(
            Variant::ArrayWith(Folder().File("one.csv"), Variant::ArrayWith(0, -1, -1, -1), 1, 1));
        ComVariant result;
        EXPECT_EQ(store.CSVProductImport(parameters, &result), S_OK);
    });
    ShowEditor(m_host, [&] {
        const SeenEditor editor(m_host);
        const std::int32_t rows = editor.List().Rows();
        editor.Window().ChooseInMenu(u"Import...");
        const SeenWindow form = m_host.Form(kImportTitle);
        m_host.Type(form.Box(u"File to import"), Folder().File("one.csv"));
        form.Press(u"Preview");
        m_host.Form(u"Import Preview").Press(u"Close");
        SeenGrid(m_host, m_host.Form(kImportTitle)).Choose(0, u"Product Name");
        form.Press(u"Import");
        m_host.Answer(u"1 products have been imported.", IDOK);
        form.AwaitEnd();
        Await("the list to show it", [&] { return editor.List().Rows() == rows + 1; });
        EXPECT_TRUE(editor.List().Holds(u"Zither"));
        editor.Window().Press(u"Save & Close");
    });
    EXPECT_TRUE(IsSame(Catalogue(), expected));
}

TEST_F(Exchange, ExportsOverAFileOnlyWhenThatIsWanted)
{
    const std::string expected = ContentOf(*m_store.Get());
    Folder().Write("old.csv", "old");
    const std::u16string path = Folder().File("old.csv");
    ShowExport(m_store.Get(), [&] {
        const SeenWindow form = m_host.Form(kExportTitle);
        form.Press(u"Browse...");
        Choose(m_host, path);
        m_host.Answer(kAnyMessage, IDNO);
        Choose(m_host, path);
        m_host.Answer(kAnyMessage, IDYES);
        Await("the path", [&] { return !form.Box(u"Export to file").Text().empty(); });
        EXPECT_EQ(Folder().Read("old.csv"), "old");
        form.Press(u"Export");
    });
    EXPECT_TRUE(IsSame(Folder().Read("old.csv"), expected));
}

TEST_F(Exchange, SaysInItsWindowWhyAnExportFailed)
{
    ShowExport(m_store.Get(), [&] {
        const SeenWindow form = m_host.Form(kExportTitle);
        form.Press(u"Export");
        m_host.Answer(u"Please enter export file path.", IDOK);
        m_host.Type(form.Box(u"Export to file"), Folder().File("no-folder/out.csv"));
        form.Press(u"Export");
        Await("the reason", [&] { return HasLabel(form, u"The products could not be exported."); });
        form.Press(u"Cancel");
    });
}

TEST_F(Exchange, KeepsTheHostPaintingWhileAnImportRuns)
{
    constexpr int kLines = 30'000;
    std::string lines = "Name\r\n";
    for (int line = 0; line < kLines; ++line)
        lines += "Product " + std::to_string(line) + "\r\n";
    Folder().Write("many.csv", lines);
    ShowImport(m_store.Get(), [&] {
        const SeenWindow form = m_host.Form(kImportTitle);
        m_host.Type(form.Box(u"File to import"), Folder().File("many.csv"));
        form.Press(u"Add to the products already in the list");
        m_host.Settle();
        SeenGrid(m_host, form).Choose(0, u"Product Name");
        form.Press(u"Import");
        // Until the form has somebody in front of it.
        Await("the end of the import", [&] {
            m_host.Repaint();
            return m_host.IsAsking();
        });
        m_host.Answer(u"30000 products have been imported.", IDOK);
    });
    EXPECT_GT(m_host.PaintingsWhileBusy(), 0);
}

} // namespace KestrinProductEditor
