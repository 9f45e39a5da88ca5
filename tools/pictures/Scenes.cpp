// SPDX-License-Identifier: MIT
#include "Scenes.h"

#include "PriceLists.h"
#include "editor/EditorStart.h"
#include "platform/qt/QtGridView.h"

#include <KestrinProductEditor/ProductExportDlg.h>
#include <KestrinProductEditor/ProductImportDlg.h>
#include <KestrinProductEditor/ProductLkpMgr.h>

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QProgressBar>

#include <memory>

namespace KestrinProductEditor {

namespace {

constexpr QSize kSmall(640, 480);
constexpr QSize kLarge(1920, 1080);
constexpr int kNameWidth = 270;
const QString kPriceList = QStringLiteral("price-list.csv");
const QString kDoubtfulPriceList = QStringLiteral("doubtful-list.csv");
const QString kLongPriceList = QStringLiteral("long-list.csv");

[[nodiscard]] QtGridView& List(QWidget& window)
{
    return Stage::Find<QtGridView>(window, QStringLiteral("flexGrid"));
}

void GoToProduct(QWidget& window, const QString& name)
{
    List(window).setFocus(Qt::TabFocusReason);
    Stage::Type(window, name);
}

void Fill(QWidget& window, const QString& box, const QString& text)
{
    auto& edit = Stage::Find<QLineEdit>(window, box);
    edit.setFocus(Qt::TabFocusReason);
    edit.selectAll();
    Stage::Type(window, text);
}

void EditPrice(QWidget& window, const QString& price)
{
    Stage::ChooseTool(window, QStringLiteral("ID_EditProduct"));
    Fill(window, QStringLiteral("txtUnitPrice"), price);
}

/// Opens the list at the current row of the mapping, and goes to that entry of it.
void OpenChoice(QWidget& window, int entry)
{
    Stage::Press(window, Qt::Key_F2);
    if (List(window).OpenDropDown() == nullptr)
        throw std::runtime_error("the mapping opens no list");
    for (int step = 0; step < entry; ++step)
        Stage::Press(window, Qt::Key_Down);
}

[[nodiscard]] std::shared_ptr<ProductLkpMgr> OpenStore()
{
    std::shared_ptr<ProductLkpMgr> store = ProductLkpMgr::Create();
    store->CancelUpdate(true);
    return store;
}

} // namespace

Scenes::Scenes(const QByteArray& priceList, const QString& folder) : m_camera(folder)
{
    m_host.WriteFile(kPriceList, priceList);
    m_host.WriteFile(kDoubtfulPriceList, QByteArray::fromStdString(DoubtfulPriceList()));
    m_host.WriteFile(kLongPriceList, QByteArray::fromStdString(LongPriceList()));
}

void Scenes::PlayRoad()
{
    UseLook(Theme::Light, Direction::LeftToRight);
    PrvEdit([this](QWidget& window) {
        // As a person drags it, who has names as long as these.
        List(window).setColumnWidth(0, kNameWidth);
        GoToProduct(window, QStringLiteral("claw"));
        m_camera.Take(window, QStringLiteral("1-list"));
        EditPrice(window, QStringLiteral("19.95"));
        m_camera.Take(window, QStringLiteral("2-edit"));
    });
    PrvImport([this](QWidget& window) {
        PrvMapColumns(window, kPriceList);
        m_camera.Take(window, QStringLiteral("3-import-mapping"));
        m_stage.AtNextWindow(
            [this](QWidget& preview) { m_camera.Take(preview, QStringLiteral("4-preview")); });
        Stage::Click(window, QStringLiteral("cmdPreview"));
    });
    PrvExport([this](QWidget& window) {
        Fill(window, QStringLiteral("txtExportFilePath"), QStringLiteral("products.csv"));
        m_camera.Take(window, QStringLiteral("5-export"));
    });
}

void Scenes::PlayAll(int scale)
{
    PrvPlayLook(Theme::Light, scale);
    PrvPlayLook(Theme::Dark, scale);
    PrvPlayMirrored(scale);
}

void Scenes::PrvPlayLook(Theme theme, int scale)
{
    UseLook(theme, Direction::LeftToRight);
    const QString look = QStringLiteral("-%1-%2").arg(
        theme == Theme::Dark ? QStringLiteral("dark") : QStringLiteral("light"), QString::number(scale));
    PrvEdit([this, &look](QWidget& window) { PrvShowEditor(window, look); });
    PrvImport([this, &look](QWidget& window) { PrvShowImport(window, look); });
    PrvExport([this, &look](QWidget& window) { PrvShowExport(window, look); });

    m_host.SpoilCatalogue();
    m_stage.AtNextWindow(
        [this, &look](QWidget& window) { m_camera.Take(window, QStringLiteral("editor-no-list") + look); });
    m_stage.Play([] { ShowProductEditor({}); });
}

void Scenes::PrvPlayMirrored(int scale)
{
    UseLook(Theme::Light, Direction::RightToLeft);
    const QString look = QStringLiteral("-rtl-light-%1").arg(scale);
    PrvEdit([this, &look](QWidget& window) {
        GoToProduct(window, QStringLiteral("claw"));
        m_camera.Take(window, QStringLiteral("editor") + look);
        EditPrice(window, QStringLiteral("19.95"));
        m_camera.Take(window, QStringLiteral("editor-edit") + look);
    });
    PrvImport([this, &look](QWidget& window) {
        PrvMapColumns(window, kPriceList);
        m_camera.Take(window, QStringLiteral("import") + look);
    });
}

void Scenes::PrvEdit(const Stage::Act& act)
{
    m_host.FillCatalogue(kPriceList);
    m_stage.AtNextWindow(act);
    m_stage.Play([] { ShowProductEditor({}); });
}

void Scenes::PrvImport(const Stage::Act& act)
{
    m_host.FillCatalogue(kPriceList);
    m_stage.AtNextWindow(act);
    m_stage.Play([] {
        const auto dialog = ProductImportDlg::Create();
        dialog->Init(OpenStore());
        dialog->Show();
    });
}

void Scenes::PrvExport(const Stage::Act& act)
{
    m_host.FillCatalogue(kPriceList);
    m_stage.AtNextWindow(act);
    m_stage.Play([] {
        const auto dialog = ProductExportDlg::Create();
        dialog->Init(OpenStore());
        dialog->Show();
    });
}

void Scenes::PrvTakeAtEverySize(QWidget& window, const QString& name)
{
    m_camera.Take(window, name);
    for (const QSize size : {kSmall, kLarge}) {
        m_camera.TakeAt(window, size,
                        QStringLiteral("%1-%2x%3").arg(name).arg(size.width()).arg(size.height()));
    }
}

void Scenes::PrvShowEditor(QWidget& window, const QString& look)
{
    GoToProduct(window, QStringLiteral("claw"));
    PrvTakeAtEverySize(window, QStringLiteral("editor-view") + look);

    for (const QString& id : {QStringLiteral("ID_File"), QStringLiteral("ID_Edit")}) {
        auto& bar = Stage::Find<QMenuBar>(window, {});
        auto& menu = Stage::Find<QMenu>(window, id);
        menu.popup(bar.mapToGlobal(bar.actionGeometry(menu.menuAction()).bottomLeft()));
        m_camera.Take(window, QStringLiteral("editor-menu-") + id.mid(3).toLower() + look);
        menu.close();
    }

    Stage::Click(window, QStringLiteral("cmdNew"));
    m_camera.Take(window, QStringLiteral("editor-new") + look);
    Stage::Click(window, QStringLiteral("cmdCancelEdit"));

    GoToProduct(window, QStringLiteral("claw"));
    EditPrice(window, QStringLiteral("19.95"));
    PrvTakeAtEverySize(window, QStringLiteral("editor-edit") + look);
    m_stage.AtNextWindow(
        [&](QWidget& message) { m_camera.Take(message, QStringLiteral("message-product") + look); });
    Stage::Click(window, QStringLiteral("cmdCancelEdit"));

    GoToProduct(window, QStringLiteral("claw"));
    EditPrice(window, QStringLiteral("19.95"));
    Stage::Click(window, QStringLiteral("cmdSaveEdit"));
    m_stage.AtNextWindow(
        [&](QWidget& message) { m_camera.Take(message, QStringLiteral("message-list") + look); });
    Stage::Click(window, QStringLiteral("cmdCancel"));
}

void Scenes::PrvShowImport(QWidget& window, const QString& look)
{
    m_camera.Take(window, QStringLiteral("import-empty") + look);
    PrvMapColumns(window, kDoubtfulPriceList);
    PrvTakeAtEverySize(window, QStringLiteral("import") + look);
    OpenChoice(window, 0);
    m_camera.Take(window, QStringLiteral("import-choice") + look);
    Stage::Press(window, Qt::Key_Escape);

    m_stage.AtNextWindow([&](QWidget& preview) { m_camera.Take(preview, QStringLiteral("preview") + look); });
    Stage::Click(window, QStringLiteral("cmdPreview"));

    PrvMapColumns(window, kLongPriceList);
    auto& bar = Stage::Find<QProgressBar>(window, QStringLiteral("prgImport"));
    bool isTaken = false;
    QObject::connect(&bar, &QProgressBar::valueChanged, &bar, [&](int value) {
        if (isTaken || value < bar.maximum() / 2)
            return;
        isTaken = true;
        m_camera.Take(window, QStringLiteral("import-working") + look);
    });
    m_stage.AtNextWindow(
        [&](QWidget& message) { m_camera.Take(message, QStringLiteral("message-imported") + look); });
    Stage::Click(window, QStringLiteral("cmdImport"));
    if (!isTaken)
        throw std::runtime_error("the import shows no progress");
}

void Scenes::PrvShowExport(QWidget& window, const QString& look)
{
    Fill(window, QStringLiteral("txtExportFilePath"), QStringLiteral("products.csv"));
    m_camera.Take(window, QStringLiteral("export") + look);
    Fill(window, QStringLiteral("txtExportFilePath"), QStringLiteral("/nowhere/products.csv"));
    Stage::Click(window, QStringLiteral("cmdExport"));
    if (Stage::Find<QLabel>(window, QStringLiteral("lblStatus")).text().isEmpty())
        throw std::runtime_error("the export does not say that it failed");
    m_camera.Take(window, QStringLiteral("export-failed") + look);
}

/// Names the file in the import dialog, and says of its four columns what they are.
void Scenes::PrvMapColumns(QWidget& window, const QString& priceList)
{
    Fill(window, QStringLiteral("txtImportFilePath"), priceList);
    List(window).setFocus(Qt::TabFocusReason);
    const int columns = List(window).model()->rowCount();
    if (columns != 4)
        throw std::runtime_error("the price list has " + std::to_string(columns) + " columns instead of 4");
    for (int column = 0; column < columns; ++column) {
        OpenChoice(window, column + 1);
        Stage::Press(window, Qt::Key_Return);
        Stage::Press(window, Qt::Key_Down);
    }
}

} // namespace KestrinProductEditor
