// SPDX-License-Identifier: MIT
#include "platform/qt/QtForm.h"
#include "platform/qt/QtText.h"
#include "platform/qt/QtToolkit.h"
#include "platform/qt/QtUserControl.h"
#include "platform/ui/ToolkitEntry.h"
#include "support/ErrorOf.h"
#include "support/TemporaryFolder.h"

#include <QAccessible>
#include <QApplication>
#include <QFileDialog>
#include <QKeyEvent>
#include <QKeySequence>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QScreen>
#include <QTest>
#include <QTimer>
#include <QToolButton>
#include <QWindow>

#include <gtest/gtest.h>

#include <array>
#include <clocale>
#include <cstdlib>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

extern "C" KestrinProductEditor::IToolkit* kstnedit_toolkit(const char* version,
                                                            const char** reason) noexcept;

namespace KestrinProductEditor {

namespace {

enum class Kind
{
    TextBox,
    Button,
    CheckBox,
    Label,
    ProgressBar,
    Grid,
    ToolBar,
};

struct Named
{
    std::u16string_view name;
    Kind kind;
};

struct Layout
{
    std::u16string_view name;
    std::vector<Named> controls;
};

const std::vector<Layout>& Forms()
{
    static const std::vector<Layout> forms = {
        {u"frmProductEditor",
         {{u"SSActiveToolBars1", Kind::ToolBar},
          {u"lblProductView", Kind::Label},
          {u"flexGrid", Kind::Grid},
          {u"lblTip", Kind::Label},
          {u"lblProductDetails", Kind::Label},
          {u"lblProductName", Kind::Label},
          {u"txtProductName", Kind::TextBox},
          {u"lblPartNum", Kind::Label},
          {u"txtPartNum", Kind::TextBox},
          {u"lblUnitPrice", Kind::Label},
          {u"txtUnitPrice", Kind::TextBox},
          {u"lblNote", Kind::Label},
          {u"txtNote", Kind::TextBox},
          {u"cmdNew", Kind::Button},
          {u"cmdDelete", Kind::Button},
          {u"cmdSaveEdit", Kind::Button},
          {u"cmdCancelEdit", Kind::Button},
          {u"cmdSaveClose", Kind::Button},
          {u"cmdCancel", Kind::Button}}},
        {u"frmProductImport",
         {{u"lblImportFilePath", Kind::Label},
          {u"txtImportFilePath", Kind::TextBox},
          {u"cmdBrowse", Kind::Button},
          {u"chkFirstRowIsHeader", Kind::CheckBox},
          {u"chkAppend", Kind::CheckBox},
          {u"lblMapping", Kind::Label},
          {u"flexGrid", Kind::Grid},
          {u"cmdPreview", Kind::Button},
          {u"cmdImport", Kind::Button},
          {u"cmdCancel", Kind::Button},
          {u"prgImport", Kind::ProgressBar}}},
        {u"frmProdImportPreview",
         {{u"lblPreview", Kind::Label}, {u"flexGrid", Kind::Grid}, {u"cmdClose", Kind::Button}}},
        {u"frmProductExport",
         {{u"lblExportFilePath", Kind::Label},
          {u"txtExportFilePath", Kind::TextBox},
          {u"cmdBrowse", Kind::Button},
          {u"cmdExport", Kind::Button},
          {u"cmdCancel", Kind::Button},
          {u"prgExport", Kind::ProgressBar},
          {u"lblStatus", Kind::Label}}},
    };
    return forms;
}

const std::vector<Layout>& UserControls()
{
    static const std::vector<Layout> userControls = {
        {u"ProductLkpView", {{u"flexGrid", Kind::Grid}}},
        {u"ProductDetails",
         {{u"lblProductName", Kind::Label},
          {u"txtProductName", Kind::TextBox},
          {u"lblPartNum", Kind::Label},
          {u"txtPartNum", Kind::TextBox},
          {u"lblUnitPrice", Kind::Label},
          {u"txtUnitPrice", Kind::TextBox},
          {u"lblNote", Kind::Label},
          {u"txtNote", Kind::TextBox},
          {u"cmdNew", Kind::Button}}},
    };
    return userControls;
}

[[nodiscard]] IControl& Find(IControlSet& set, std::u16string_view name, Kind kind)
{
    switch (kind) {
    case Kind::TextBox:
        return set.TextBox(name);
    case Kind::Button:
        return set.Button(name);
    case Kind::CheckBox:
        return set.CheckBox(name);
    case Kind::Label:
        return set.Label(name);
    case Kind::ProgressBar:
        return set.ProgressBar(name);
    case Kind::Grid:
        return set.Grid(name);
    case Kind::ToolBar:
        break;
    }
    return set.ToolBar(name);
}

constexpr std::array kKinds = {Kind::TextBox,     Kind::Button, Kind::CheckBox, Kind::Label,
                               Kind::ProgressBar, Kind::Grid,   Kind::ToolBar};

void ExpectEveryName(IControlSet& set, const Layout& layout)
{
    for (const Named& named : layout.controls) {
        const std::string name = ToQt(named.name).toStdString();
        for (const Kind kind : kKinds) {
            EXPECT_EQ(ErrorNumberOf([&] { (void)Find(set, named.name, kind); }),
                      kind == named.kind ? 0 : kErrInvalidProcedureCall)
                << name << " as kind " << static_cast<int>(kind);
        }
    }
    EXPECT_EQ(ErrorNumberOf([&] { (void)set.Label(u"lblAbsent"); }), kErrInvalidProcedureCall);
}

/// The captions that the editor gives its controls.
void SetEditorCaptions(IForm& form)
{
    static const std::array kTools = {
        Tool{.id = u"ID_File", .caption = u"File", .menu = {}, .shortcuts = {}, .onlyIn = {}},
        Tool{.id = u"ID_Import",
             .caption = u"Import...",
             .menu = u"ID_File",
             .shortcuts = {Ctrl(Key::I)},
             .icon = ToolIcon::Import,
             .onlyIn = {}},
        Tool{.id = u"ID_Export",
             .caption = u"Export...",
             .menu = u"ID_File",
             .shortcuts = {Ctrl(Key::E)},
             .icon = ToolIcon::Export,
             .onlyIn = {}},
        Tool{.id = u"ID_Edit", .caption = u"Edit", .menu = {}, .shortcuts = {}, .onlyIn = {}},
        Tool{.id = u"ID_Delete",
             .caption = u"Delete",
             .menu = u"ID_Edit",
             .shortcuts = {{.key = Key::Delete}},
             .icon = ToolIcon::Delete,
             .onlyIn = u"flexGrid"},
    };
    form.ToolBar(u"SSActiveToolBars1").SetTools(kTools);
    form.Label(u"lblProductView").SetCaption(u"Product List (Count:0)");
    form.Label(u"lblTip").SetCaption(u"Tip");
    form.Label(u"lblProductName").SetCaption(u"Name");
    form.Label(u"lblPartNum").SetCaption(u"Part#");
    form.Label(u"lblUnitPrice").SetCaption(u"Unit Price");
    form.Label(u"lblNote").SetCaption(u"Note");
    form.Button(u"cmdNew").SetCaption(u"New");
    form.Button(u"cmdDelete").SetCaption(u"Delete");
    form.Button(u"cmdSaveEdit").SetCaption(u"Save");
    form.Button(u"cmdCancelEdit").SetCaption(u"Cancel Edit");
    form.Button(u"cmdSaveClose").SetCaption(u"Save && Close");
    form.Button(u"cmdCancel").SetCaption(u"Cancel");
}

/// The mnemonics of a window by what bears them; a bearer without one has an empty text.
[[nodiscard]] std::map<QString, QString> MnemonicsOf(const QWidget& window)
{
    std::map<QString, QString> mnemonics;
    for (const auto* const button : window.findChildren<QAbstractButton*>()) {
        if (!button->objectName().isEmpty() && qobject_cast<const QToolButton*>(button) == nullptr)
            mnemonics[button->objectName()] = QKeySequence::mnemonic(button->text()).toString();
    }
    for (const auto* const label : window.findChildren<QLabel*>()) {
        if (label->buddy() != nullptr)
            mnemonics[label->objectName()] = QKeySequence::mnemonic(label->text()).toString();
    }
    for (const auto* const menu : window.findChildren<QMenu*>()) {
        if (!menu->objectName().isEmpty())
            mnemonics[menu->objectName()] = QKeySequence::mnemonic(menu->menuAction()->text()).toString();
    }
    return mnemonics;
}

void ExpectNoTwoAlike(const std::map<QString, QString>& mnemonics)
{
    std::map<QString, QString> bearerOf;
    for (const auto& [bearer, mnemonic] : mnemonics) {
        EXPECT_FALSE(mnemonic.isEmpty()) << bearer.toStdString();
        const auto [other, isNew] = bearerOf.emplace(mnemonic, bearer);
        EXPECT_TRUE(isNew) << bearer.toStdString() << " and " << other->second.toStdString();
    }
}

/// Acts as soon as the event loop of the next modal window runs.
void Soon(std::function<void()> act)
{
    QTimer::singleShot(0, qApp, std::move(act));
}

/// Ends with 0 when the entry answers with that reason, "" for a toolkit.
[[noreturn]] void EndWithEntry(const char* version, std::string_view expected)
{
    const char* reason = nullptr;
    const IToolkit* const toolkit = kstnedit_toolkit(version, &reason);
    const std::string_view answered = toolkit == nullptr ? reason : "";
    std::_Exit(answered.find(expected) != std::string_view::npos && (toolkit != nullptr) == expected.empty()
                   ? 0
                   : 1);
}

/// A process without an application, as a host that knows nothing of Qt is one.
void ForgetApplication()
{
    qApp->~QApplication();
}

/// Entries in processes of their own: threads of this one would be missing in its mere copy.
class QtEntry : public testing::Test
{
protected:
    QtEntry() { GTEST_FLAG_SET(death_test_style, "threadsafe"); }
};

} // namespace

TEST(QtForms, FindEveryControlByItsNameAndKind)
{
    QtToolkit toolkit;
    for (const Layout& layout : Forms())
        ExpectEveryName(*toolkit.CreateForm(layout.name), layout);
    for (const Layout& layout : UserControls())
        ExpectEveryName(*toolkit.CreateUserControl(layout.name), layout);
}

TEST(QtForms, RefuseANameThatNoLayoutBears)
{
    QtToolkit toolkit;
    for (const std::u16string_view name : {u"", u"frmproducteditor", u"ProductDetails"})
        EXPECT_EQ(ErrorNumberOf([&] { (void)toolkit.CreateForm(name); }), kErrInvalidProcedureCall);
    EXPECT_EQ(ErrorNumberOf([&] { (void)toolkit.CreateUserControl(u"frmProductEditor"); }),
              kErrInvalidProcedureCall);
}

TEST(QtForms, GiveTheEditorMnemonicsOfWhichNoTwoAreAlike)
{
    QtForm form(u"frmProductEditor");
    SetEditorCaptions(form);
    const std::map<QString, QString> mnemonics = MnemonicsOf(form.Window());
    // Six buttons, four boxes, the list and two menus.
    EXPECT_EQ(mnemonics.size(), 13U);
    ExpectNoTwoAlike(mnemonics);
}

TEST(QtForms, KeepTheirMnemonicsWhileACountRuns)
{
    QtForm form(u"frmProductEditor");
    SetEditorCaptions(form);
    const std::map<QString, QString> before = MnemonicsOf(form.Window());
    for (const std::u16string_view caption : {u"Product List (Count:1)", u"Product List (Count:1000000)"}) {
        form.Label(u"lblProductView").SetCaption(caption);
        EXPECT_EQ(MnemonicsOf(form.Window()), before);
        EXPECT_EQ(form.Label(u"lblProductView").Caption(), caption);
    }
    form.Button(u"cmdNew").SetCaption(u"Quick");
    EXPECT_EQ(MnemonicsOf(form.Window()).at(QStringLiteral("cmdNew")), QStringLiteral("Alt+Q"));
    ExpectNoTwoAlike(MnemonicsOf(form.Window()));
}

TEST(QtForms, ShowCaptionsLetterForLetter)
{
    QtForm form(u"frmProductEditor");
    form.Label(u"lblTip").SetCaption(u"<b>this</b> & that && more");
    form.Label(u"lblNote").SetCaption(u"A & B");
    form.Button(u"cmdNew").SetCaption(u"Save && Close");
    const auto* const tip = form.Window().findChild<QLabel*>(QStringLiteral("lblTip"));
    EXPECT_EQ(tip->text(), QStringLiteral("<b>this</b> & that && more"));
    EXPECT_EQ(tip->textFormat(), Qt::PlainText);
    const auto* const note = form.Window().findChild<QLabel*>(QStringLiteral("lblNote"));
    EXPECT_EQ(note->text(), QStringLiteral("&A && B"));
    const auto* const button = form.Window().findChild<QPushButton*>(QStringLiteral("cmdNew"));
    EXPECT_EQ(button->text(), QStringLiteral("&Save && Close"));
    EXPECT_EQ(form.Button(u"cmdNew").Caption(), u"Save && Close");
}

TEST(QtForms, NameEverythingForThoseWhoCannotSeeIt)
{
    for (const Layout& layout : Forms()) {
        QtForm form(layout.name);
        for (const Named& named : layout.controls) {
            if (named.kind == Kind::Label)
                form.Label(named.name).SetCaption(u"Some label");
            else if (named.kind == Kind::Button)
                form.Button(named.name).SetCaption(u"Some button");
            else if (named.kind == Kind::CheckBox)
                form.CheckBox(named.name).SetCaption(u"Some box");
        }
        form.Window().show();
        for (const Named& named : layout.controls) {
            auto* const widget = form.Window().findChild<QWidget*>(ToQt(named.name));
            ASSERT_NE(widget, nullptr);
            EXPECT_FALSE(QAccessible::queryAccessibleInterface(widget)->text(QAccessible::Name).isEmpty())
                << widget->objectName().toStdString();
        }
    }
}

TEST(QtForms, ClickAButtonByItsMnemonicAtOnce)
{
    QtForm form(u"frmProductEditor");
    SetEditorCaptions(form);
    std::vector<std::string> told;
    form.Button(u"cmdNew").GotFocus.Connect([&] { told.emplace_back("focus"); });
    form.Button(u"cmdNew").Click.Connect([&] { told.emplace_back("click"); });
    Soon([&] {
        // The window becomes the active one.
        QCoreApplication::processEvents();
        QTest::keyClick(form.Window().focusWidget(), Qt::Key_N, Qt::AltModifier);
        told.emplace_back("end");
        form.EndModal();
    });
    form.ShowModal();
    EXPECT_EQ(told, (std::vector<std::string>{"focus", "click", "end"}));
}

TEST(QtForms, LeaveTheKeysToAnOpenMenu)
{
    QtForm form(u"frmProductEditor");
    SetEditorCaptions(form);
    form.SetFirstFocus(form.Grid(u"flexGrid"));
    std::vector<std::u16string> clicked;
    int escapes = 0;
    form.ToolBar(u"SSActiveToolBars1").ToolClick.Connect([&](std::u16string_view id) {
        clicked.emplace_back(id);
    });
    form.Escape.Connect([&] { ++escapes; });
    Soon([&] {
        QCoreApplication::processEvents();
        QTest::keyClick(form.Window().focusWidget(), Qt::Key_F, Qt::AltModifier);
        QWidget* const menu = QApplication::activePopupWidget();
        ASSERT_NE(menu, nullptr);
        QTest::keyClick(menu, Qt::Key_I, Qt::ControlModifier);
        QTest::keyClick(menu, Qt::Key_Delete);
        EXPECT_EQ(QApplication::activePopupWidget(), menu);
        QTest::keyClick(menu, Qt::Key_Escape);
        EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
        form.EndModal();
    });
    form.ShowModal();
    EXPECT_EQ(clicked, (std::vector<std::u16string>{u"ID_File"}));
    EXPECT_EQ(escapes, 0);
}

TEST(QtForms, GetTheFocusBackFromTheMenusWhicheverWereOpened)
{
    QtForm form(u"frmProductEditor");
    SetEditorCaptions(form);
    form.SetFirstFocus(form.Grid(u"flexGrid"));
    Soon([&] {
        QCoreApplication::processEvents();
        QWidget* const list = form.Window().focusWidget();
        for (const Qt::Key letter : {Qt::Key_F, Qt::Key_E}) {
            QTest::keyClick(form.Window().focusWidget(), letter, Qt::AltModifier);
            ASSERT_NE(QApplication::activePopupWidget(), nullptr);
            QTest::keyClick(QApplication::activePopupWidget(), Qt::Key_Escape);
        }
        QTest::keyClick(form.Window().focusWidget(), Qt::Key_Escape);
        EXPECT_EQ(form.Window().focusWidget(), list);
        form.EndModal();
    });
    form.ShowModal();
}

TEST(QtForms, SwallowForGoodWhatTheUserDoesWhileTheyAreBusy)
{
    QtForm form(u"frmProductImport");
    int told = 0;
    form.CloseBox.Connect([&] { ++told; });
    form.Escape.Connect([&] { ++told; });
    form.FileDrop.Connect([&](std::u16string_view) { ++told; });
    form.Button(u"cmdImport").Click.Connect([&] { ++told; });
    Soon([&] {
        form.SetBusy(true);
        auto* const button = form.Window().findChild<QPushButton*>(QStringLiteral("cmdImport"));
        const auto act = [&] {
            qApp->postEvent(&form.Window(), new QCloseEvent);
            qApp->postEvent(&form.Window(), new QKeyEvent(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier));
            for (const auto type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease})
                qApp->postEvent(button, new QMouseEvent(type, QPointF(5, 5), QPointF(5, 5), Qt::LeftButton,
                                                        Qt::LeftButton, Qt::NoModifier));
        };
        act();
        form.KeepPainting();
        EXPECT_FALSE(form.Button(u"cmdImport").IsEnabled());
        act();
        form.SetBusy(false);
        QCoreApplication::processEvents();
        EXPECT_EQ(told, 0);
        EXPECT_TRUE(form.Button(u"cmdImport").IsEnabled());
        button->click();
        form.Window().close();
        EXPECT_EQ(told, 2);
        form.EndModal();
    });
    form.ShowModal();
}

TEST(QtForms, ReturnWhenTheProgramInsistsOnItsEnd)
{
    QtForm form(u"frmProductExport");
    bool hasReturned = false;
    Soon([&] {
        Soon([] { QCoreApplication::exit(3); });
        form.ShowModal();
        hasReturned = true;
    });
    EXPECT_EQ(qApp->exec(), 3);
    EXPECT_TRUE(hasReturned);
    EXPECT_TRUE(QtForm::Shown().empty());
}

TEST(QtForms, AskBeforeTheProgramEnds)
{
    QtForm form(u"frmProductExport");
    int asked = 0;
    form.CloseBox.Connect([&] { ++asked; });
    Soon([&] {
        Soon([] { QApplication::closeAllWindows(); });
        Soon([&] {
            EXPECT_EQ(asked, 1);
            EXPECT_TRUE(form.Window().isVisible());
            form.EndModal();
        });
        form.ShowModal();
        qApp->exit();
    });
    qApp->exec();
    EXPECT_EQ(asked, 1);
}

TEST(QtForms, StandInFrontOfTheFormThatOpenedThem)
{
    QtForm below(u"frmProductEditor");
    QtForm inFront(u"frmProductImport");
    Soon([&] {
        Soon([&] {
            EXPECT_EQ(QtForm::Shown(), (std::vector<QtForm*>{&below, &inFront}));
            EXPECT_EQ(QApplication::activeModalWidget(), &inFront.Window());
            EXPECT_EQ(inFront.Window().windowHandle()->transientParent(), below.Window().windowHandle());
            inFront.EndModal();
        });
        inFront.ShowModal();
        EXPECT_EQ(QApplication::activeModalWidget(), &below.Window());
        below.EndModal();
    });
    below.ShowModal();
}

TEST(QtForms, StayOnTheScreenWhereverTheFormLiesThatOpenedThem)
{
    for (const QPoint corner : {QPoint(-850, -500), QPoint(780, 780)}) {
        QtForm below(u"frmProductEditor");
        QtForm inFront(u"frmProductExport");
        Soon([&] {
            below.Window().move(corner);
            Soon([&] {
                const QRect screen = inFront.Window().screen()->availableGeometry();
                EXPECT_TRUE(screen.contains(inFront.Window().geometry())) << corner.x();
                EXPECT_GT(inFront.Window().geometry().top(), screen.top()) << "no room for a title";
                inFront.EndModal();
            });
            inFront.ShowModal();
            below.EndModal();
        });
        below.ShowModal();
    }
}

TEST(QtForms, ShowMessagesAsPlainTextWithTheirDefaultButton)
{
    struct Case
    {
        std::int32_t style;
        QMessageBox::Icon icon;
        QMessageBox::StandardButtons buttons;
        QMessageBox::StandardButton byDefault;
        MessageAnswer escape;
    };
    const std::array cases = {
        Case{kMessageYesNoCancel, QMessageBox::Question,
             QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel, QMessageBox::Yes,
             MessageAnswer::Cancel},
        Case{kMessageYesNo, QMessageBox::Question, QMessageBox::Yes | QMessageBox::No, QMessageBox::Yes,
             MessageAnswer::No},
        Case{kMessageYesNo | kMessageSecondDefault, QMessageBox::Question, QMessageBox::Yes | QMessageBox::No,
             QMessageBox::No, MessageAnswer::No},
        Case{kMessageExclamation, QMessageBox::Warning, QMessageBox::Ok, QMessageBox::Ok, MessageAnswer::Ok},
        Case{kMessageInformation, QMessageBox::Information, QMessageBox::Ok, QMessageBox::Ok,
             MessageAnswer::Ok},
    };
    QtToolkit toolkit;
    for (const Case& each : cases) {
        Soon([&] {
            auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            ASSERT_NE(box, nullptr);
            EXPECT_EQ(box->text(), QStringLiteral("<b>12 & 3</b>\r\nmore"));
            EXPECT_EQ(box->textFormat(), Qt::PlainText);
            EXPECT_EQ(box->windowTitle(), QStringLiteral("Salvo"));
            EXPECT_EQ(box->icon(), each.icon);
            EXPECT_EQ(box->standardButtons(), each.buttons);
            const auto* const button = qobject_cast<QPushButton*>(box->button(each.byDefault));
            EXPECT_TRUE(button->isDefault());
            QTest::keyClick(box, Qt::Key_Escape);
        });
        EXPECT_EQ(toolkit.Messages().Show(u"<b>12 & 3</b>\r\nmore", each.style, u"Salvo"), each.escape);
        Soon([] { QTest::keyClick(QApplication::activeModalWidget(), Qt::Key_Return); });
        EXPECT_EQ(toolkit.Messages().Show(u"Go on?", each.style, u"Salvo"),
                  each.byDefault == QMessageBox::Yes  ? MessageAnswer::Yes
                  : each.byDefault == QMessageBox::No ? MessageAnswer::No
                                                      : MessageAnswer::Ok);
    }
}

TEST(QtForms, ChooseFiles)
{
    const TemporaryFolder folder;
    QtToolkit toolkit;
    const FileDialog dialog = {.kind = FileDialog::Kind::Save,
                               .title = u"Export products",
                               .filter = u"Comma Separated Value (*.csv)|*.csv|All Files (*.*)|*.*",
                               .defaultExtension = u".csv",
                               .start = folder.Path().u16string()};
    Soon([&] {
        auto* const box = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
        ASSERT_NE(box, nullptr);
        EXPECT_EQ(box->windowTitle(), QStringLiteral("Export products"));
        EXPECT_EQ(box->nameFilters(), (QStringList{"Comma Separated Value (*.csv)", "All Files (*)"}));
        box->selectFile(QStringLiteral("list"));
        QTest::keyClick(box->findChild<QLineEdit*>(), Qt::Key_Return);
    });
    const std::optional<std::u16string> chosen = toolkit.ChooseFile(dialog);
    ASSERT_TRUE(chosen);
    EXPECT_TRUE(chosen->ends_with(u"/list.csv"));
    Soon([] { QTest::keyClick(QApplication::activeModalWidget(), Qt::Key_Escape); });
    EXPECT_EQ(toolkit.ChooseFile(dialog), std::nullopt);
}

TEST(QtUserControls, OutliveTheWidgetThatAHostDeletes)
{
    QtUserControl control(u"ProductDetails");
    ITextBox& box = control.TextBox(u"txtProductName");
    IButton& button = control.Button(u"cmdNew");
    {
        QWidget first;
        QWidget second;
        auto* const widget = static_cast<QWidget*>(control.NativeHandle());
        widget->setParent(&first);
        first.show();
        widget->setParent(&second);
        widget->show();
        second.show();
        box.SetFocus();
        box.SetText(u"Hammer");
        EXPECT_TRUE(box.HasFocus());
        EXPECT_GT(control.InnerWidth(), 0);
        EXPECT_GT(control.TextWidth(u"Name"), 0);
    }
    EXPECT_EQ(control.NativeHandle(), nullptr);
    EXPECT_EQ(control.InnerWidth(), 0);
    EXPECT_EQ(control.InnerHeight(), 0);
    EXPECT_EQ(control.TextWidth(u"Name"), 0);
    EXPECT_EQ(ErrorNumberOf([&] { (void)control.TextBox(u"txtProductName"); }), kErrInvalidProcedureCall);
    EXPECT_EQ(ErrorNumberOf([&] { (void)control.Place(u"fraBorder"); }), kErrInvalidProcedureCall);
    EXPECT_EQ(ErrorNumberOf([&] { control.Move(u"fraBorder", {}); }), kErrInvalidProcedureCall);
    EXPECT_EQ(box.Text(), u"Hammer");
    button.SetEnabled(false);
    button.SetFocus();
}

TEST(QtUserControls, MoveControlsInTwipsFromWhereReadingBegins)
{
    for (const Qt::LayoutDirection direction : {Qt::LeftToRight, Qt::RightToLeft}) {
        QtUserControl control(u"ProductDetails");
        auto* const widget = static_cast<QWidget*>(control.NativeHandle());
        widget->setLayoutDirection(direction);
        widget->resize(400, 200);
        widget->show();
        control.Move(u"lblNote", {.left = 150, .top = 300, .width = 1500, .height = 450});
        const ControlPlace place = control.Place(u"lblNote");
        EXPECT_EQ(place.left, 150);
        EXPECT_EQ(place.width, 1500);
        const auto* const label = widget->findChild<QLabel*>(QStringLiteral("lblNote"));
        const int fromStart =
            direction == Qt::LeftToRight ? label->geometry().left() : 399 - label->geometry().right();
        EXPECT_EQ(fromStart, 150 * label->logicalDpiX() / 1440);
        for (const ControlPlace& wrong : {ControlPlace{.width = -1}, ControlPlace{.height = -1}})
            EXPECT_EQ(ErrorNumberOf([&] { control.Move(u"lblNote", wrong); }), kErrInvalidProcedureCall);
        EXPECT_EQ(control.Place(u"lblNote").width, 1500);
    }
}

TEST_F(QtEntry, AnswersTheToolkitOfItsOwnVersionOnly)
{
    const char* reason = nullptr;
    EXPECT_NE(kstnedit_toolkit(KSTNEDIT_VERSION, &reason), nullptr);
    EXPECT_EQ(kstnedit_toolkit("0.0.1", &reason), nullptr);
    EXPECT_NE(std::string(reason).find("version"), std::string::npos);
}

TEST_F(QtEntry, AnswersOnTheApplicationsThreadOnly)
{
    std::thread([] {
        const char* reason = nullptr;
        EXPECT_EQ(kstnedit_toolkit(KSTNEDIT_VERSION, &reason), nullptr);
        EXPECT_NE(std::string(reason).find("thread"), std::string::npos);
    }).join();
}

TEST_F(QtEntry, SaysThatThereIsNoDisplayInsteadOfEndingTheProcess)
{
    const auto withoutDisplay = [](const char* platform) {
        ForgetApplication();
        for (const char* const name : {"DISPLAY", "WAYLAND_DISPLAY", "XDG_SESSION_TYPE", "QT_QPA_PLATFORM"})
            qunsetenv(name);
        if (platform != nullptr)
            qputenv("QT_QPA_PLATFORM", platform);
        EndWithEntry(KSTNEDIT_VERSION, "no display");
    };
    for (const char* const platform : {static_cast<const char*>(nullptr), "xcb", "wayland", "wayland;xcb"})
        EXPECT_EXIT(withoutDisplay(platform), testing::ExitedWithCode(0), "");
    const auto withDeadDisplay = [] {
        ForgetApplication();
        qunsetenv("QT_QPA_PLATFORM");
        qputenv("DISPLAY", ":987");
        EndWithEntry(KSTNEDIT_VERSION, "no display");
    };
    EXPECT_EXIT(withDeadDisplay(), testing::ExitedWithCode(0), "");
}

TEST_F(QtEntry, RefusesAHostWhoseApplicationHasNoWidgets)
{
    const auto withCoreApplication = [] {
        ForgetApplication();
        int count = 0;
        const QCoreApplication application(count, nullptr);
        EndWithEntry(KSTNEDIT_VERSION, "QApplication");
    };
    EXPECT_EXIT(withCoreApplication(), testing::ExitedWithCode(0), "");
}

TEST_F(QtEntry, MakesAnApplicationAndLeavesTheHostsLocaleAlone)
{
    const auto withoutApplication = [] {
        ForgetApplication();
        qputenv("LC_ALL", "C.UTF-8");
        std::setlocale(LC_ALL, "C");
        const char* reason = nullptr;
        const bool hasToolkit = kstnedit_toolkit(KSTNEDIT_VERSION, &reason) != nullptr;
        const bool isSame = std::string_view(std::setlocale(LC_ALL, nullptr)) == "C";
        std::_Exit(hasToolkit && isSame && qobject_cast<QApplication*>(qApp) != nullptr ? 0 : 1);
    };
    EXPECT_EXIT(withoutApplication(), testing::ExitedWithCode(0), "");
}

} // namespace KestrinProductEditor
