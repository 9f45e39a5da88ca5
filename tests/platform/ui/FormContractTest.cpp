// SPDX-License-Identifier: MIT
#include "platform/ui/Form.h"

#include "support/ContractFixture.h"

#include <stdexcept>
#include <string>
#include <vector>

namespace KestrinProductEditor {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using NamedKey = IUser::NamedKey;

class FormContract : public ContractFixture
{
protected:
    [[nodiscard]] ITextBox& NameBox() { return Form().TextBox(u"txtProductName"); }
    [[nodiscard]] IGrid& List() { return Form().Grid(u"flexGrid"); }

    /// Shows another form from within this one.
    void ShowOther(std::u16string_view layout, const std::function<void(IForm&)>& acts)
    {
        const std::unique_ptr<IForm> other = Toolkit().CreateForm(layout);
        User().AtNextForm([&] {
            acts(*other);
            other->EndModal();
        });
        other->ShowModal();
    }
};

// Layouts

enum class ControlKind
{
    TextBox,
    Button,
    CheckBox,
    Label,
    ProgressBar,
    Grid,
    ToolBar,
};

IControl& Find(IControlSet& set, ControlKind kind, std::u16string_view name)
{
    switch (kind) {
    case ControlKind::TextBox:
        return set.TextBox(name);
    case ControlKind::Button:
        return set.Button(name);
    case ControlKind::CheckBox:
        return set.CheckBox(name);
    case ControlKind::Label:
        return set.Label(name);
    case ControlKind::ProgressBar:
        return set.ProgressBar(name);
    case ControlKind::Grid:
        return set.Grid(name);
    case ControlKind::ToolBar:
        break;
    }
    return set.ToolBar(name);
}

constexpr ControlKind kEveryKind[] = {
    ControlKind::TextBox,     ControlKind::Button, ControlKind::CheckBox, ControlKind::Label,
    ControlKind::ProgressBar, ControlKind::Grid,   ControlKind::ToolBar,
};

struct LayoutRow
{
    std::u16string_view layout;
    ControlKind kind;
    std::vector<std::u16string_view> names;
};

const std::vector<LayoutRow> kFormLayouts = {
    {u"frmProductEditor", ControlKind::ToolBar, {u"SSActiveToolBars1"}},
    {u"frmProductEditor", ControlKind::Grid, {u"flexGrid"}},
    {u"frmProductEditor",
     ControlKind::Label,
     {u"lblProductView", u"lblTip", u"lblProductDetails", u"lblProductName", u"lblPartNum", u"lblUnitPrice",
      u"lblNote"}},
    {u"frmProductEditor",
     ControlKind::TextBox,
     {u"txtProductName", u"txtPartNum", u"txtUnitPrice", u"txtNote"}},
    {u"frmProductEditor",
     ControlKind::Button,
     {u"cmdNew", u"cmdDelete", u"cmdSaveEdit", u"cmdCancelEdit", u"cmdSaveClose", u"cmdCancel"}},
    {u"frmProductImport", ControlKind::Label, {u"lblImportFilePath", u"lblMapping"}},
    {u"frmProductImport", ControlKind::TextBox, {u"txtImportFilePath"}},
    {u"frmProductImport", ControlKind::CheckBox, {u"chkFirstRowIsHeader", u"chkAppend"}},
    {u"frmProductImport", ControlKind::Grid, {u"flexGrid"}},
    {u"frmProductImport", ControlKind::Button, {u"cmdBrowse", u"cmdPreview", u"cmdImport", u"cmdCancel"}},
    {u"frmProductImport", ControlKind::ProgressBar, {u"prgImport"}},
    {u"frmProdImportPreview", ControlKind::Label, {u"lblPreview"}},
    {u"frmProdImportPreview", ControlKind::Grid, {u"flexGrid"}},
    {u"frmProdImportPreview", ControlKind::Button, {u"cmdClose"}},
    {u"frmProductExport", ControlKind::Label, {u"lblExportFilePath", u"lblStatus"}},
    {u"frmProductExport", ControlKind::TextBox, {u"txtExportFilePath"}},
    {u"frmProductExport", ControlKind::Button, {u"cmdBrowse", u"cmdExport", u"cmdCancel"}},
    {u"frmProductExport", ControlKind::ProgressBar, {u"prgExport"}},
};

const std::vector<LayoutRow> kUserControlLayouts = {
    {u"ProductLkpView", ControlKind::Grid, {u"flexGrid"}},
    {u"ProductDetails", ControlKind::Label, {u"lblProductName", u"lblPartNum", u"lblUnitPrice", u"lblNote"}},
    {u"ProductDetails",
     ControlKind::TextBox,
     {u"txtProductName", u"txtPartNum", u"txtUnitPrice", u"txtNote"}},
    {u"ProductDetails", ControlKind::Button, {u"cmdNew"}},
};

void ExpectControls(IControlSet& set, const LayoutRow& row)
{
    for (const std::u16string_view name : row.names) {
        for (const ControlKind kind : kEveryKind) {
            EXPECT_EQ(ErrorNumberOf([&] { (void)Find(set, kind, name); }),
                      kind == row.kind ? 0 : kErrInvalidProcedureCall)
                << testing::PrintToString(std::u16string(name));
        }
        // The same one every time.
        EXPECT_EQ(&Find(set, row.kind, name), &Find(set, row.kind, name));
    }
}

TEST_F(FormContract, FormsHaveTheControlsOfTheirLayout)
{
    for (const LayoutRow& row : kFormLayouts)
        ExpectControls(*Toolkit().CreateForm(row.layout), row);
}

TEST_F(FormContract, UserControlsHaveTheControlsOfTheirLayout)
{
    for (const LayoutRow& row : kUserControlLayouts)
        ExpectControls(*Toolkit().CreateUserControl(row.layout), row);
}

TEST_F(FormContract, UnknownNamesAreErrors)
{
    EXPECT_EQ(ErrorNumberOf([] { (void)Toolkit().CreateForm(u"frmUnknown"); }), kErrInvalidProcedureCall);
    EXPECT_EQ(ErrorNumberOf([] { (void)Toolkit().CreateForm(u""); }), kErrInvalidProcedureCall);
    EXPECT_EQ(ErrorNumberOf([] { (void)Toolkit().CreateUserControl(u"Unknown"); }), kErrInvalidProcedureCall);
    for (const ControlKind kind : kEveryKind) {
        EXPECT_EQ(ErrorNumberOf([&] { (void)Find(Form(), kind, u"cmdUnknown"); }), kErrInvalidProcedureCall);
        EXPECT_EQ(ErrorNumberOf([&] { (void)Find(Form(), kind, u""); }), kErrInvalidProcedureCall);
    }
}

TEST_F(FormContract, TheUsersToolkitIsTheOneInUse)
{
    EXPECT_EQ(&Toolkit(), &User().Screen());
    EXPECT_EQ(&MessageBoxes(), &User().Screen().Messages());
}

TEST_F(FormContract, CaptionsAreKeptAndShown)
{
    Form().SetCaption(u"Product Editor: R&D \U0001F528");
    EXPECT_EQ(Form().Caption(), u"Product Editor: R&D \U0001F528");
    Show([&] {
        EXPECT_EQ(User().WindowCaption(), u"Product Editor: R&D \U0001F528");
        Form().SetCaption(u"another");
        EXPECT_EQ(User().WindowCaption(), u"another");
    });
}

// Showing and ending

TEST_F(FormContract, AShownFormGivesItsFirstControlTheFocusOnce)
{
    Form().SetFirstFocus(List());
    HearFocus(List(), "list");
    HearFocus(NameBox(), "name");
    EXPECT_THAT(Told(), IsEmpty());
    Show([&] {
        EXPECT_THAT(Told(), ElementsAre("list got"));
        EXPECT_EQ(User().Focus(), u"flexGrid");
        EXPECT_TRUE(List().HasFocus());
    });
    EXPECT_THAT(Told(), IsEmpty());
}

TEST_F(FormContract, EveryControlThatTakesTheFocusCanBeTheFirst)
{
    Form().SetFirstFocus(NameBox());
    HearFocus(List(), "list");
    HearFocus(NameBox(), "name");
    Show([&] { EXPECT_EQ(User().Focus(), u"txtProductName"); });
    EXPECT_THAT(Told(), ElementsAre("name got"));
}

TEST_F(FormContract, AHiddenFirstControlLeavesTheFocusToTheNextOne)
{
    Form().SetFirstFocus(List());
    List().SetVisible(false);
    HearFocus(List(), "list");
    HearFocus(NameBox(), "name");
    Show([&] { EXPECT_EQ(User().Focus(), u"txtProductName"); });
    EXPECT_THAT(Told(), ElementsAre("name got"));
}

TEST_F(FormContract, FocusThatWasSetBeforeStaysWhenTheFormIsShown)
{
    Form().SetFirstFocus(List());
    HearFocus(List(), "list");
    HearFocus(NameBox(), "name");
    NameBox().SetFocus();
    (void)Told();
    Show([&] { EXPECT_EQ(User().Focus(), u"txtProductName"); });
    EXPECT_THAT(Told(), IsEmpty());
}

TEST_F(FormContract, ShowModalReturnsWhenTheRunningHandlerHas)
{
    Form().Button(u"cmdCancel").Click.Connect([&] {
        Form().EndModal();
        Tell("handler goes on");
        NameBox().SetText(u"after the end");
    });
    User().AtNextForm([&] { User().Click(u"cmdCancel"); });
    Form().ShowModal();
    Tell("returned");
    EXPECT_THAT(Told(), ElementsAre("handler goes on", "returned"));
    EXPECT_EQ(NameBox().Text(), u"after the end");
}

TEST_F(FormContract, EndModalHidesTheForm)
{
    EXPECT_THAT(User().OpenForms(), IsEmpty());
    User().AtNextForm([&] {
        EXPECT_THAT(User().OpenForms(), ElementsAre(u"frmProductEditor"));
        Form().EndModal();
        EXPECT_THAT(User().OpenForms(), IsEmpty());
        Form().EndModal();
    });
    Form().ShowModal();
    EXPECT_THAT(User().OpenForms(), IsEmpty());
}

TEST_F(FormContract, AnEndedFormHearsNoMoreActs)
{
    Form().Button(u"cmdNew").Click.Connect([this] { Tell("click"); });
    Form().Escape.Connect([this] { Tell("escape"); });
    Form().CloseBox.Connect([this] { Tell("close"); });
    NameBox().Change.Connect([this] { Tell("change"); });
    User().AtNextForm([&] {
        NameBox().SetFocus();
        Form().EndModal();
        User().Click(u"cmdNew");
        User().Type(u"x");
        User().Press(NamedKey::Escape);
        User().CloseWindow();
    });
    Form().ShowModal();
    EXPECT_THAT(Told(), IsEmpty());
}

TEST_F(FormContract, EndModalBeforeShowModalMakesItReturnAtOnce)
{
    HearFocus(List(), "list");
    Form().SetFirstFocus(List());
    Form().EndModal();
    Form().ShowModal();
    EXPECT_THAT(Told(), IsEmpty());
}

TEST_F(FormContract, AFormMayEndWhileItsFirstControlGetsTheFocus)
{
    Form().SetFirstFocus(List());
    List().GotFocus.Connect([&] {
        Tell("got");
        Form().EndModal();
    });
    Form().ShowModal();
    EXPECT_THAT(Told(), ElementsAre("got"));
}

TEST_F(FormContract, ControlsCanBeReadAfterTheFormHasEnded)
{
    Show([&] {
        NameBox().SetFocus();
        User().Type(u"Hammer");
    });
    EXPECT_EQ(NameBox().Text(), u"Hammer");
    EXPECT_TRUE(NameBox().IsVisible());
    EXPECT_TRUE(NameBox().IsEnabled());
}

TEST_F(FormContract, TheCloseBoxClosesNothingByItself)
{
    Form().CloseBox.Connect([this] { Tell("close"); });
    Show([&] {
        User().CloseWindow();
        EXPECT_THAT(User().OpenForms(), ElementsAre(u"frmProductEditor"));
        User().CloseWindow();
    });
    EXPECT_THAT(Told(), ElementsAre("close", "close"));
}

TEST_F(FormContract, TheCloseBoxOfAFormThatDoesNotListenDoesNothing)
{
    Show([&] {
        User().CloseWindow();
        User().Press(NamedKey::Escape);
        EXPECT_THAT(User().OpenForms(), ElementsAre(u"frmProductEditor"));
    });
}

TEST_F(FormContract, EscapeIsToldAndClosesNothingByItself)
{
    Form().Escape.Connect([this] { Tell("escape"); });
    Form().CloseBox.Connect([this] { Tell("close"); });
    Show([&] {
        User().Press(NamedKey::Escape);
        EXPECT_THAT(User().OpenForms(), ElementsAre(u"frmProductEditor"));
    });
    EXPECT_THAT(Told(), ElementsAre("escape"));
}

TEST_F(FormContract, ADroppedFileIsToldWithItsPath)
{
    std::u16string dropped;
    Form().FileDrop.Connect([&](std::u16string_view path) { dropped = path; });
    Show([&] { User().DropFile(u"/lists/R&D \u00E9 50%.csv"); });
    EXPECT_EQ(dropped, u"/lists/R&D \u00E9 50%.csv");
}

// Busy

TEST_F(FormContract, ABusyFormHearsNoActNeitherNowNorLater)
{
    Form().SetFirstFocus(List());
    Form().SetDefaultButton(Form().Button(u"cmdSaveClose"));
    IToolBar& bar = Form().ToolBar(u"SSActiveToolBars1");
    const std::vector<Tool> tools = {
        {.id = u"ID_Edit", .caption = u"Edit"},
        {.id = u"ID_NewProduct",
         .caption = u"New Product",
         .menu = u"ID_Edit",
         .shortcuts = {Ctrl(Key::N)},
         .icon = ToolIcon::NewProduct},
    };
    bar.SetTools(tools);
    bar.ToolClick.Connect([this](std::u16string_view) { Tell("tool"); });
    Form().Button(u"cmdNew").Click.Connect([this] { Tell("click"); });
    Form().Button(u"cmdSaveEdit").SetShortcut(Ctrl(Key::S));
    Form().Button(u"cmdSaveEdit").Click.Connect([this] { Tell("save"); });
    Form().Button(u"cmdSaveClose").Click.Connect([this] { Tell("default"); });
    Form().Escape.Connect([this] { Tell("escape"); });
    Form().CloseBox.Connect([this] { Tell("close"); });
    Form().FileDrop.Connect([this](std::u16string_view) { Tell("drop"); });
    NameBox().Change.Connect([this] { Tell("change"); });
    NameBox().KeyPress.Connect([this](std::int32_t&) { Tell("key"); });
    NameBox().DblClick.Connect([this] { Tell("double"); });
    List().SetRows(3);
    List().SetCols(2);
    List().SetFixedRows(1);
    List().RowColChange.Connect([this] { Tell("row"); });
    List().DblClick.Connect([this] { Tell("list double"); });
    HearFocus(NameBox(), "name");
    Show([&] {
        NameBox().SetFocus();
        (void)Told();
        Form().SetBusy(true);
        Form().KeepPainting();
        User().Click(u"cmdNew");
        User().DoubleClick(u"txtProductName");
        User().Type(u"x");
        User().Compose(u"x");
        User().Press(NamedKey::Enter);
        User().Press(NamedKey::Tab);
        User().Press(NamedKey::Escape);
        User().PressControl('N');
        User().PressControl('S');
        User().ChooseTool(u"ID_NewProduct");
        User().ClickTool(u"ID_NewProduct");
        User().ClickRow(u"flexGrid", 1);
        User().DoubleClickRow(u"flexGrid", 2);
        User().CloseWindow();
        User().DropFile(u"/lists/prices.csv");
        Form().KeepPainting();
        EXPECT_THAT(Told(), IsEmpty());
        Form().SetBusy(false);
        Form().KeepPainting();
        EXPECT_THAT(Told(), IsEmpty());
        EXPECT_EQ(User().Focus(), u"txtProductName");
        User().Type(u"y");
        User().Click(u"cmdNew");
        EXPECT_THAT(Told(), ElementsAre("key", "change", "name lost", "click"));
    });
    EXPECT_EQ(NameBox().Text(), u"y");
    EXPECT_EQ(List().CurrentRow(), -1);
}

TEST_F(FormContract, WhileBusyEveryControlIsDisabled)
{
    Form().Button(u"cmdDelete").SetEnabled(false);
    Show([&] {
        Form().SetBusy(true);
        for (const std::u16string_view name :
             {u"flexGrid", u"txtProductName", u"txtNote", u"cmdNew", u"cmdDelete", u"SSActiveToolBars1"})
            EXPECT_FALSE(User().IsEnabled(name)) << testing::PrintToString(std::u16string(name));
        // What is set meanwhile holds afterwards.
        Form().Button(u"cmdCancel").SetEnabled(false);
        Form().SetBusy(false);
        for (const std::u16string_view name :
             {u"flexGrid", u"txtProductName", u"txtNote", u"cmdNew", u"SSActiveToolBars1"})
            EXPECT_TRUE(User().IsEnabled(name)) << testing::PrintToString(std::u16string(name));
        EXPECT_FALSE(User().IsEnabled(u"cmdDelete"));
        EXPECT_FALSE(User().IsEnabled(u"cmdCancel"));
    });
}

TEST_F(FormContract, ABusyFormHearsItsOwnWritesStill)
{
    NameBox().Change.Connect([this] { Tell("change"); });
    Show([&] {
        Form().SetBusy(true);
        NameBox().SetText(u"written");
        Form().Label(u"lblTip").SetCaption(u"working");
        EXPECT_EQ(User().TextOf(u"lblTip"), u"working");
        Form().SetBusy(false);
    });
    EXPECT_THAT(Told(), ElementsAre("change"));
}

TEST_F(FormContract, ABusyFormCanEnd)
{
    User().AtNextForm([&] {
        Form().SetBusy(true);
        Form().EndModal();
    });
    Form().ShowModal();
    EXPECT_THAT(User().OpenForms(), IsEmpty());
}

// Forms in front of forms

TEST_F(FormContract, AFormInFrontTakesTheActsAndGivesTheFocusBack)
{
    HearFocus(NameBox(), "name");
    HearFocus(List(), "list");
    Form().SetFirstFocus(List());
    Show([&] {
        NameBox().SetFocus();
        User().Type(u"a");
        (void)Told();
        ShowOther(u"frmProductImport", [&](IForm& other) {
            EXPECT_THAT(User().OpenForms(), ElementsAre(u"frmProductEditor", u"frmProductImport"));
            EXPECT_THAT(Told(), IsEmpty());
            other.TextBox(u"txtImportFilePath").SetFocus();
            User().Type(u"x");
            EXPECT_EQ(User().TextOf(u"txtImportFilePath"), u"x");
            EXPECT_THAT(Told(), IsEmpty());
        });
        EXPECT_THAT(Told(), ElementsAre("name got"));
        EXPECT_THAT(User().OpenForms(), ElementsAre(u"frmProductEditor"));
        EXPECT_EQ(User().Focus(), u"txtProductName");
        User().Press(NamedKey::End);
        User().Type(u"b");
    });
    EXPECT_EQ(NameBox().Text(), u"ab");
}

TEST_F(FormContract, AFormCanBeShownFromTheHandlerOfAnother)
{
    HearFocus(Form().Button(u"cmdNew"), "button");
    Form().Button(u"cmdNew").Click.Connect([&] {
        Tell("click");
        ShowOther(u"frmProductExport", [&](IForm&) { Tell("other"); });
        Tell("handler goes on");
    });
    Show([&] { User().Click(u"cmdNew"); });
    EXPECT_THAT(Told(), ElementsAre("button got", "click", "other", "button got", "handler goes on"));
}

TEST_F(FormContract, FormsOfOneLayoutStandInFrontOfEachOther)
{
    Show([&] {
        User().Click(u"txtProductName");
        User().Type(u"below");
        ShowOther(u"frmProductEditor", [&](IForm& second) {
            EXPECT_EQ(User().TextOf(u"txtProductName"), u"");
            User().Click(u"txtProductName");
            User().Type(u"above");
            EXPECT_EQ(second.TextBox(u"txtProductName").Text(), u"above");
            ShowOther(u"frmProdImportPreview", [&](IForm&) {
                EXPECT_THAT(User().OpenForms(),
                            ElementsAre(u"frmProductEditor", u"frmProductEditor", u"frmProdImportPreview"));
            });
            EXPECT_EQ(User().TextOf(u"txtProductName"), u"above");
        });
        EXPECT_EQ(User().TextOf(u"txtProductName"), u"below");
    });
}

TEST_F(FormContract, AFormWithoutControlsInFocusBelowIsLeftAlone)
{
    HearFocus(NameBox(), "name");
    // Never shown: it is not below.
    NameBox().SetFocus();
    (void)Told();
    ShowOther(u"frmProductExport", [](IForm&) {});
    EXPECT_THAT(Told(), IsEmpty());
}

// Messages and file dialogs

TEST_F(FormContract, MessagesAndFileDialogsMoveNoFocus)
{
    HearFocus(NameBox(), "name");
    Show([&] {
        NameBox().SetFocus();
        (void)Told();
        User().WillAnswer(MessageAnswer::Ok);
        MessageBoxes().Show(u"text", kMessageInformation, u"title");
        User().WillChooseFile(std::nullopt);
        (void)Toolkit().ChooseFile({});
        EXPECT_THAT(Told(), IsEmpty());
        EXPECT_EQ(User().Focus(), u"txtProductName");
        User().Type(u"x");
    });
    EXPECT_EQ(NameBox().Text(), u"x");
}

TEST_F(FormContract, ACancelledFileDialogGivesNothing)
{
    User().WillChooseFile(std::nullopt);
    Show([&] { EXPECT_EQ(Toolkit().ChooseFile({}), std::nullopt); });
}

TEST_F(FormContract, AFileDialogGivesTheChosenPath)
{
    User().WillChooseFile(u"/lists/prices.csv");
    const FileDialog dialog = {.kind = FileDialog::Kind::Save,
                               .title = u"Export to",
                               .filter = u"Comma Separated Value (*.csv)|*.csv|All Files (*.*)|*.*",
                               .defaultExtension = u".csv",
                               .start = u"/lists"};
    Show([&] { EXPECT_EQ(Toolkit().ChooseFile(dialog), u"/lists/prices.csv"); });
    ASSERT_EQ(User().FileDialogs().size(), 1U);
    const FileDialog& asked = User().FileDialogs().front();
    EXPECT_EQ(asked.kind, dialog.kind);
    EXPECT_EQ(asked.title, dialog.title);
    EXPECT_EQ(asked.filter, dialog.filter);
    EXPECT_EQ(asked.defaultExtension, dialog.defaultExtension);
    EXPECT_EQ(asked.start, dialog.start);
}

// Handlers that fail

TEST_F(FormContract, AHandlerThatThrowsLeavesTheFormUsable)
{
    const auto fail = [this](const char* what) {
        Tell(what);
        throw std::runtime_error(what);
    };
    Form().SetFirstFocus(List());
    List().GotFocus.Connect([&] { fail("got"); });
    Form().Escape.Connect([&] { fail("escape"); });
    Form().CloseBox.Connect([&] { fail("close"); });
    Form().FileDrop.Connect([&](std::u16string_view) { fail("drop"); });
    Form().ToolBar(u"SSActiveToolBars1").ToolClick.Connect([&](std::u16string_view) { fail("tool"); });
    const std::vector<Tool> tools = {
        {.id = u"ID_Edit", .caption = u"Edit"},
        {.id = u"ID_Delete", .caption = u"Delete", .menu = u"ID_Edit", .icon = ToolIcon::Delete}};
    Form().ToolBar(u"SSActiveToolBars1").SetTools(tools);
    Show([&] {
        EXPECT_THAT(Told(), ElementsAre("got"));
        for (int turn = 0; turn < 2; ++turn) {
            User().Press(NamedKey::Escape);
            User().CloseWindow();
            User().DropFile(u"/lists/prices.csv");
            User().ClickTool(u"ID_Delete");
            EXPECT_THAT(Told(), ElementsAre("escape", "close", "drop", "tool"));
        }
        EXPECT_THAT(User().OpenForms(), ElementsAre(u"frmProductEditor"));
    });
}

// User controls

class UserControlContract : public FormContract
{
protected:
    [[nodiscard]] IUserControl& Details() { return *m_details; }

private:
    std::unique_ptr<IUserControl> m_details = Toolkit().CreateUserControl(u"ProductDetails");
};

TEST_F(UserControlContract, HasASizeAndAnObjectOfItsToolkit)
{
    EXPECT_GT(Details().InnerWidth(), 0);
    EXPECT_GT(Details().InnerHeight(), 0);
    EXPECT_NE(Details().NativeHandle(), nullptr);
    EXPECT_EQ(Details().NativeHandle(), Details().NativeHandle());
}

TEST_F(UserControlContract, MovesItsControls)
{
    // Multiples of what a screen can show at every usual scale.
    const ControlPlace place = {.left = 1440, .top = 720, .width = 2880, .height = 360};
    for (const std::u16string_view name : {u"fraBorder", u"lblNote", u"txtNote", u"cmdNew"}) {
        Details().Move(name, place);
        const ControlPlace now = Details().Place(name);
        EXPECT_NEAR(now.left, place.left, 15);
        EXPECT_NEAR(now.top, place.top, 15);
        EXPECT_NEAR(now.width, place.width, 15);
        EXPECT_NEAR(now.height, place.height, 15);
    }
}

TEST_F(UserControlContract, RefusesANegativeSizeAndLeavesTheControl)
{
    const ControlPlace before = Details().Place(u"txtNote");
    EXPECT_EQ(ErrorNumberOf([&] { Details().Move(u"txtNote", {.left = 1440, .width = -1, .height = 10}); }),
              kErrInvalidProcedureCall);
    EXPECT_EQ(ErrorNumberOf([&] { Details().Move(u"txtNote", {.left = 1440, .width = 10, .height = -1}); }),
              kErrInvalidProcedureCall);
    const ControlPlace after = Details().Place(u"txtNote");
    EXPECT_EQ(after.left, before.left);
    EXPECT_EQ(after.width, before.width);
    EXPECT_EQ(after.height, before.height);
}

TEST_F(UserControlContract, TakesASizeOfNothingAndAPlaceOutside)
{
    EXPECT_EQ(ErrorNumberOf([&] { Details().Move(u"txtNote", {.left = -1440, .top = -720}); }), 0);
    const ControlPlace now = Details().Place(u"txtNote");
    EXPECT_NEAR(now.left, -1440, 15);
    EXPECT_NEAR(now.width, 0, 15);
}

TEST_F(UserControlContract, RefusesNamesThatItsLayoutDoesNotHave)
{
    EXPECT_EQ(ErrorNumberOf([&] { (void)Details().Place(u"txtUnknown"); }), kErrInvalidProcedureCall);
    EXPECT_EQ(ErrorNumberOf([&] { Details().Move(u"txtUnknown", {}); }), kErrInvalidProcedureCall);
    EXPECT_EQ(ErrorNumberOf([&] { (void)Details().TextBox(u"fraBorder"); }), kErrInvalidProcedureCall);
}

TEST_F(UserControlContract, MeasuresTexts)
{
    EXPECT_EQ(Details().TextWidth(u""), 0);
    EXPECT_GT(Details().TextWidth(u"Name"), 0);
    EXPECT_GT(Details().TextWidth(u"Name Name"), Details().TextWidth(u"Name"));
}

TEST_F(UserControlContract, KeepsTextsWithoutAWindow)
{
    Details().TextBox(u"txtNote").SetText(u"a\r\nb");
    EXPECT_EQ(Details().TextBox(u"txtNote").Text(), u"a\r\nb");
    Details().Label(u"lblNote").SetCaption(u"R&D");
    EXPECT_EQ(Details().Label(u"lblNote").Caption(), u"R&D");
}

} // namespace
} // namespace KestrinProductEditor
