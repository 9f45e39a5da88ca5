// SPDX-License-Identifier: MIT
#include "platform/qt/LayoutAudit.h"

#include "platform/Text.h"
#include "platform/qt/QtForm.h"
#include "support/EditorFixture.h"

#include <KestrinProductEditor/ProductExportDlg.h>
#include <KestrinProductEditor/ProductImportDlg.h>

#include <QApplication>
#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPalette>
#include <QPushButton>
#include <QScreen>
#include <QStandardItemModel>
#include <QStyle>
#include <QTableView>
#include <QVBoxLayout>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <tuple>

namespace KestrinProductEditor {

namespace {

using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::Field;
using testing::IsEmpty;

/// Only that fault, of that control.
[[nodiscard]] auto OnlyFault(LayoutFaultKind kind, const std::string& control)
{
    return ElementsAre(AllOf(Field(&LayoutFault::kind, kind), Field(&LayoutFault::control, control)));
}

[[nodiscard]] LayoutFaults FaultsOf(QWidget& window)
{
    window.show();
    QApplication::processEvents();
    return AuditLayout(window);
}

// The judge

/// A window without a layout: every widget stands where it was put.
class LayoutAuditTest : public testing::Test
{
protected:
    LayoutAuditTest() { m_window.resize(400, 300); }

    template<class Widget>
    Widget& Put(const char* name, const QRect& place)
    {
        auto* const widget = new Widget(&m_window); // NOLINT(cppcoreguidelines-owning-memory): the window's
        widget->setObjectName(QString::fromLatin1(name));
        widget->setGeometry(place);
        return *widget;
    }

    QWidget m_window;
};

} // namespace

TEST_F(LayoutAuditTest, PassesAWindowWithoutFaults)
{
    Put<QLabel>("lblName", {10, 10, 100, 30}).setText(QStringLiteral("Name"));
    Put<QLineEdit>("txtName", {120, 10, 100, 30});
    Put<QPushButton>("cmdOk", {120, 50, 100, 30}).setText(QStringLiteral("OK"));
    EXPECT_THAT(FaultsOf(m_window), IsEmpty());
}

TEST_F(LayoutAuditTest, FindsALabelThatIsTooNarrow)
{
    Put<QLabel>("lblName", {10, 10, 30, 30}).setText(QStringLiteral("Name of the product"));
    EXPECT_THAT(FaultsOf(m_window), OnlyFault(LayoutFaultKind::ClippedText, "lblName"));
}

TEST_F(LayoutAuditTest, FindsALabelThatIsTooLow)
{
    Put<QLabel>("lblName", {10, 10, 100, 5}).setText(QStringLiteral("Name"));
    EXPECT_THAT(FaultsOf(m_window), OnlyFault(LayoutFaultKind::ClippedText, "lblName"));
}

TEST_F(LayoutAuditTest, FindsAWrappedLabelThatIsTooLow)
{
    auto& label = Put<QLabel>("lblTip", {10, 10, 100, 25});
    label.setText(QStringLiteral("A tip that takes some lines where there is room for one"));
    label.setWordWrap(true);
    EXPECT_THAT(FaultsOf(m_window), OnlyFault(LayoutFaultKind::ClippedText, "lblTip"));
    label.resize(100, 200);
    EXPECT_THAT(FaultsOf(m_window), IsEmpty());
}

TEST_F(LayoutAuditTest, FindsAButtonThatIsTooNarrow)
{
    Put<QPushButton>("cmdClose", {10, 10, 40, 30}).setText(QStringLiteral("Save && Close"));
    EXPECT_THAT(FaultsOf(m_window), OnlyFault(LayoutFaultKind::ClippedText, "cmdClose"));
}

TEST_F(LayoutAuditTest, FindsACheckBoxThatIsTooNarrow)
{
    Put<QCheckBox>("chkAppend", {10, 10, 40, 30}).setText(QStringLiteral("Add to the list"));
    EXPECT_THAT(FaultsOf(m_window), OnlyFault(LayoutFaultKind::ClippedText, "chkAppend"));
}

TEST_F(LayoutAuditTest, FindsAGroupTitleThatIsTooNarrow)
{
    Put<QGroupBox>("fraBorder", {10, 10, 40, 80}).setTitle(QStringLiteral("Product details"));
    EXPECT_THAT(FaultsOf(m_window), OnlyFault(LayoutFaultKind::ClippedText, "fraBorder"));
}

TEST_F(LayoutAuditTest, FindsABoxThatIsTooLow)
{
    Put<QLineEdit>("txtName", {10, 10, 100, 8});
    EXPECT_THAT(FaultsOf(m_window), OnlyFault(LayoutFaultKind::ClippedText, "txtName"));
}

TEST_F(LayoutAuditTest, FindsAColumnTitleThatIsTooWide)
{
    QStandardItemModel model(1, 1);
    model.setHorizontalHeaderLabels({QStringLiteral("Unit Price")});
    auto& view = Put<QTableView>("flexGrid", {10, 10, 300, 200});
    view.setModel(&model);
    view.setColumnWidth(0, 20);
    EXPECT_THAT(FaultsOf(m_window), OnlyFault(LayoutFaultKind::ColumnTitle, "flexGrid"));
}

TEST_F(LayoutAuditTest, FindsControlsThatCoverEachOther)
{
    Put<QLineEdit>("txtName", {10, 10, 100, 30});
    Put<QLineEdit>("txtPartNum", {10, 39, 100, 30});
    EXPECT_THAT(FaultsOf(m_window), OnlyFault(LayoutFaultKind::Overlap, "txtName"));
}

TEST_F(LayoutAuditTest, FindsAControlOutsideTheWindow)
{
    Put<QLineEdit>("txtName", {350, 10, 100, 30});
    EXPECT_THAT(FaultsOf(m_window), OnlyFault(LayoutFaultKind::Outside, "txtName"));
}

TEST_F(LayoutAuditTest, FindsAControlThatItsPaneCutsOff)
{
    auto& pane = Put<QWidget>("paneList", {10, 10, 100, 100});
    QLineEdit edit(&pane);
    edit.setObjectName(QStringLiteral("txtName"));
    edit.setGeometry(50, 10, 100, 30);
    EXPECT_THAT(FaultsOf(m_window), OnlyFault(LayoutFaultKind::Outside, "txtName"));
}

TEST_F(LayoutAuditTest, FindsAPaleLabel)
{
    auto& label = Put<QLabel>("lblName", {10, 10, 100, 30});
    label.setText(QStringLiteral("Name"));
    QPalette palette = label.palette();
    palette.setColor(QPalette::WindowText, QColor(0xB0, 0xB0, 0xB0));
    label.setPalette(palette);
    EXPECT_THAT(FaultsOf(m_window), OnlyFault(LayoutFaultKind::Contrast, "lblName"));
    // What cannot be used may be pale.
    label.setEnabled(false);
    EXPECT_THAT(FaultsOf(m_window), IsEmpty());
}

TEST_F(LayoutAuditTest, FindsALabelOnAPaneOfItsOwnColour)
{
    auto& pane = Put<QWidget>("paneList", {10, 10, 200, 100});
    QPalette palette = pane.palette();
    palette.setColor(QPalette::Window, QColor(0x20, 0x20, 0x20));
    pane.setPalette(palette);
    pane.setAutoFillBackground(true);
    QLabel label(QStringLiteral("Name"), &pane);
    label.setObjectName(QStringLiteral("lblName"));
    label.setGeometry(0, 0, 100, 30);
    EXPECT_THAT(FaultsOf(m_window), OnlyFault(LayoutFaultKind::Contrast, "lblName"));
}

TEST_F(LayoutAuditTest, FindsABoxWithPaleText)
{
    auto& edit = Put<QLineEdit>("txtName", {10, 10, 100, 30});
    QPalette palette = edit.palette();
    palette.setColor(QPalette::Text, QColor(0x60, 0x60, 0x60));
    palette.setColor(QPalette::Base, QColor(0x90, 0x90, 0x90));
    edit.setPalette(palette);
    EXPECT_THAT(FaultsOf(m_window), OnlyFault(LayoutFaultKind::Contrast, "txtName"));
}

TEST_F(LayoutAuditTest, FindsABoxWithPaleSelectedText)
{
    auto& edit = Put<QLineEdit>("txtName", {10, 10, 100, 30});
    QPalette palette = edit.palette();
    palette.setColor(QPalette::Highlight, QColor(0xF0, 0xF0, 0x80));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    edit.setPalette(palette);
    EXPECT_THAT(FaultsOf(m_window), OnlyFault(LayoutFaultKind::Contrast, "txtName"));
}

TEST_F(LayoutAuditTest, FindsAButtonWithAPaleCaption)
{
    auto& button = Put<QPushButton>("cmdOk", {10, 10, 100, 30});
    button.setText(QStringLiteral("OK"));
    QPalette palette = button.palette();
    palette.setColor(QPalette::ButtonText, palette.color(QPalette::Button));
    button.setPalette(palette);
    EXPECT_THAT(FaultsOf(m_window), OnlyFault(LayoutFaultKind::Contrast, "cmdOk"));
}

TEST_F(LayoutAuditTest, FindsATabOrderThatGoesUp)
{
    Put<QLineEdit>("txtPartNum", {10, 50, 100, 30});
    Put<QLineEdit>("txtName", {10, 10, 100, 30});
    EXPECT_THAT(FaultsOf(m_window), OnlyFault(LayoutFaultKind::TabOrder, "txtPartNum"));
}

TEST_F(LayoutAuditTest, FindsATabOrderAgainstTheDirectionOfReading)
{
    Put<QLineEdit>("txtName", {10, 10, 100, 30});
    Put<QLineEdit>("txtPartNum", {120, 10, 100, 30});
    EXPECT_THAT(FaultsOf(m_window), IsEmpty());
    m_window.setLayoutDirection(Qt::RightToLeft);
    EXPECT_THAT(FaultsOf(m_window), OnlyFault(LayoutFaultKind::TabOrder, "txtName"));
}

TEST_F(LayoutAuditTest, FindsATabOrderThatJumpsBetweenPanes)
{
    auto& left = Put<QWidget>("paneList", {10, 10, 150, 200});
    auto& right = Put<QWidget>("paneDetails", {170, 10, 150, 200});
    QLineEdit upperLeft(&left);
    QLineEdit upperRight(&right);
    QLineEdit lowerLeft(&left);
    upperLeft.setGeometry(0, 0, 100, 30);
    lowerLeft.setGeometry(0, 40, 100, 30);
    upperRight.setGeometry(0, 0, 100, 30);
    upperRight.setObjectName(QStringLiteral("txtName"));
    EXPECT_THAT(FaultsOf(m_window), OnlyFault(LayoutFaultKind::TabOrder, "txtName"));
    QWidget::setTabOrder(&lowerLeft, &upperRight);
    EXPECT_THAT(FaultsOf(m_window), IsEmpty());
}

TEST(ContrastOf, IsThatOfTheDefinition)
{
    EXPECT_NEAR(ContrastOf(0x000000, 0xFFFFFF), 21, 0.001);
    EXPECT_NEAR(ContrastOf(0xFFFFFF, 0x000000), 21, 0.001);
    EXPECT_NEAR(ContrastOf(0xFF0000, 0xFF0000), 1, 0.001);
    EXPECT_NEAR(ContrastOf(0x767676, 0xFFFFFF), 4.54, 0.005);
}

namespace {

// The forms

enum class Ground
{
    Light,
    Dark
};

/// How the desktop shows its windows, until the end of the scope.
class ScopedDesktop
{
public:
    ScopedDesktop(Ground ground, int fontPercent, Qt::LayoutDirection direction)
    {
        if (ground == Ground::Dark) {
            QPalette dark(QColor(0x3A, 0x3D, 0x41), QColor(0x2B, 0x2D, 0x30));
            dark.setColor(QPalette::Highlight, QColor(0x2F, 0x6D, 0xB5));
            dark.setColor(QPalette::HighlightedText, Qt::white);
            QApplication::setPalette(dark);
        } else {
            QApplication::setPalette(QApplication::style()->standardPalette());
        }
        QFont font = m_font;
        font.setPointSizeF(m_font.pointSizeF() * fontPercent / 100);
        QApplication::setFont(font);
        QApplication::setLayoutDirection(direction);
    }
    ScopedDesktop(const ScopedDesktop&) = delete;
    ScopedDesktop& operator=(const ScopedDesktop&) = delete;
    ~ScopedDesktop()
    {
        QApplication::setPalette(m_palette);
        QApplication::setFont(m_font);
        QApplication::setLayoutDirection(m_direction);
    }

private:
    QPalette m_palette = QApplication::palette();
    QFont m_font = QApplication::font();
    Qt::LayoutDirection m_direction = QApplication::layoutDirection();
};

using Desktop = std::tuple<Ground, int, Qt::LayoutDirection>;

class FormLayoutTest : public EditorFixture, public testing::WithParamInterface<Desktop>
{
protected:
    FormLayoutTest()
    {
        WriteCatalogue(ThreeProducts());
        m_folder.Write("list.csv", "Product,Part number,Price,Remarks,Supplier,Shelf\n"
                                   "Anchor,A-1,12.50,Rust-proof,Marine Goods,4\n"
                                   "Bolt,B-2,on request,,Fasteners,5\n");
    }

    /// Looks at the form in front in its own size, in the smallest that a screen has, and in a large one.
    static void ExpectNoFault()
    {
        QWidget& window = *QtForm::FrontWindow();
        const QSize own = window.size();
        const QSize smallest(640, 480);
        // With its frame, whose width nobody knows beforehand.
        const QSize room = window.screen()->availableSize() - QSize(1, 1);
        EXPECT_EQ(own.boundedTo(room.expandedTo(window.minimumSizeHint())), own)
            << "too large for this screen";
        if (std::get<1>(GetParam()) == 100) {
            EXPECT_EQ(smallest.expandedTo(window.minimumSizeHint()), smallest) << "too large for its screen";
        }
        for (const QSize size : {own, smallest, QSize(1920, 1080)}) {
            // Large letters may take more.
            window.resize(size.expandedTo(window.minimumSizeHint()));
            QApplication::processEvents();
            for (const LayoutFault& fault : AuditLayout(window)) {
                // The editor's list has the user's own widths: large letters may need wider columns.
                if (fault.kind == LayoutFaultKind::ColumnTitle && std::get<1>(GetParam()) > 100 &&
                    window.objectName() == QStringLiteral("frmProductEditor"))
                    continue;
                ADD_FAILURE() << window.objectName().toStdString() << " at " << window.width() << " x "
                              << window.height() << ": " << fault;
            }
        }
        window.resize(own);
    }

    /// Opens the dialog over a store, acts, and closes it with Esc.
    template<class Dialog>
    void Exchange(const std::function<void()>& acts)
    {
        const auto store = Open();
        store->CancelUpdate(true);
        const auto dialog = Dialog::Create();
        dialog->Init(store);
        m_user->AtNextForm([&] {
            acts();
            m_user->Press(IUser::NamedKey::Escape);
        });
        dialog->Show();
    }

    void MapTheList()
    {
        m_user->WillChooseFile(m_folder.File("list.csv"));
        m_user->Click(u"cmdBrowse");
        ASSERT_EQ(m_user->Grid(u"flexGrid").Rows(), 7);
        for (std::int32_t row = 1; row <= 4; ++row)
            m_user->PickInCell(u"flexGrid", row, 1, row);
    }

    ScopedDesktop m_desktop{std::get<0>(GetParam()), std::get<1>(GetParam()), std::get<2>(GetParam())};
};

} // namespace

TEST_P(FormLayoutTest, EditorInViewState)
{
    Edit([&] {
        m_user->ClickRow(u"flexGrid", 1);
        ExpectNoFault();
        m_user->Press(IUser::NamedKey::Escape);
    });
}

TEST_P(FormLayoutTest, EditorInEditState)
{
    Edit([&] {
        m_user->DoubleClickRow(u"flexGrid", 1);
        ASSERT_TRUE(IsInEditState());
        ExpectNoFault();
        m_user->Press(IUser::NamedKey::Escape);
        m_user->Press(IUser::NamedKey::Escape);
    });
}

TEST_P(FormLayoutTest, EditorWithoutAList)
{
    m_folder.Write("corvprd2.cpd", "no catalogue");
    Edit([&] {
        ExpectNoFault();
        m_user->Click(u"cmdCancel");
    });
}

TEST_P(FormLayoutTest, ImportBeforeAFileIsChosen)
{
    Exchange<ProductImportDlg>([&] { ExpectNoFault(); });
}

TEST_P(FormLayoutTest, ImportWithAMapping)
{
    Exchange<ProductImportDlg>([&] {
        MapTheList();
        ExpectNoFault();
    });
}

TEST_P(FormLayoutTest, Preview)
{
    Exchange<ProductImportDlg>([&] {
        MapTheList();
        m_user->AtNextForm([&] {
            ExpectNoFault();
            m_user->Click(u"cmdClose");
        });
        m_user->Click(u"cmdPreview");
    });
}

TEST_P(FormLayoutTest, Export)
{
    Exchange<ProductExportDlg>([&] { ExpectNoFault(); });
}

TEST_P(FormLayoutTest, ExportThatFailed)
{
    Exchange<ProductExportDlg>([&] {
        m_user->Click(u"txtExportFilePath");
        m_user->Type(u"/no/such/folder/products.csv");
        m_user->Click(u"cmdExport");
        ASSERT_NE(Shown(u"lblStatus"), "");
        ExpectNoFault();
    });
}

TEST(MirroredFormTest, AlignsItsLabelsWithWhatTheyStandFor)
{
    const ScopedDesktop desktop(Ground::Light, 100, Qt::RightToLeft);
    for (const char16_t* const name :
         {u"frmProductEditor", u"frmProductImport", u"frmProdImportPreview", u"frmProductExport"}) {
        const QtForm form(name);
        for (const QLabel* const label : form.Window().findChildren<QLabel*>()) {
            EXPECT_TRUE(label->alignment().testFlags(Qt::AlignRight | Qt::AlignAbsolute))
                << label->objectName().toStdString();
        }
    }
}

[[nodiscard]] static std::string NameOfDesktop(const testing::TestParamInfo<Desktop>& desktop)
{
    const auto& [ground, percent, direction] = desktop.param;
    return (ground == Ground::Dark ? "Dark" : "Light") + std::to_string(percent) +
           (direction == Qt::RightToLeft ? "Mirrored" : "");
}

INSTANTIATE_TEST_SUITE_P(Desktops, FormLayoutTest,
                         testing::Combine(testing::Values(Ground::Light, Ground::Dark),
                                          testing::Values(100, 200),
                                          testing::Values(Qt::LeftToRight, Qt::RightToLeft)),
                         NameOfDesktop);

} // namespace KestrinProductEditor
