// SPDX-License-Identifier: MIT
#include <KestrinProductEditor/KestrinProductEditor.h>
#include <KestrinProductEditor/QtViews.h>

#include <QApplication>
#include <QLabel>
#include <QMessageBox>
#include <QPixmap>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>

#include <memory>
#include <string>
#include <string_view>

using namespace KestrinProductEditor;

namespace {

/// Tells every store where its catalogue lies: the folder InstallPath/DBSubdirName.
class Config final : public IConfig
{
public:
    explicit Config(std::u16string folder) : m_folder(std::move(folder)) {}
    Variant Value(std::u16string_view sKey) override
    {
        return sKey == u"InstallPath" ? m_folder : std::u16string();
    }

private:
    std::u16string m_folder;
};

class Trace final : public ITrace
{
public:
    std::int32_t TraceErrNumber() override
    {
        const AutomationError* error = PendingError();
        return error != nullptr ? error->Number() : kErrComponent;
    }
    void TraceError(std::u16string_view) override { qWarning("failed: %s", PendingError()->what()); }
    void TraceEnter(std::u16string_view) override {}
    void TraceExit(std::u16string_view) override {}
};

/// The host's own window: the product list among the host's widgets, and a button that opens the editor.
class Window final : public QWidget
{
public:
    Window() : m_list(new ProductLkpViewWidget), m_count(new QLabel)
    {
        setWindowTitle(tr("Price list"));
        auto* const edit = new QPushButton(tr("&Edit products..."));
        connect(edit, &QPushButton::clicked, this, [this] { PrvEdit(); });
        auto* const layout = new QVBoxLayout(this);
        layout->addWidget(m_list);
        layout->addWidget(m_count);
        layout->addWidget(edit);
        resize(640, 480);
        PrvReload();
    }

private:
    /// The editor saves into the file when it is closed; Init reads it anew.
    void PrvEdit()
    {
        // No exception may leave a slot.
        try {
            ProductEditorDlg::Create()->Show(Variant());
        } catch (const AutomationError& error) {
            QMessageBox::warning(this, windowTitle(), QString::fromStdU16String(error.Description()));
        }
        PrvReload();
    }

    void PrvReload()
    {
        m_list->Init();
        const std::shared_ptr<ProductLkpMgr> store = m_list->GetDataSource();
        if (store == nullptr) {
            m_count->setText(tr("The catalogue cannot be read."));
            return;
        }
        // The list only reads: what its store has loaded must not go over what the editor saves.
        store->CancelUpdate(true);
        m_count->setText(tr("%1 products").arg(store->Count()));
    }

    ProductLkpViewWidget* m_list;
    QLabel* m_count;
};

} // namespace

// qt-host [FOLDER [PICTURE]]: the catalogue's folder, and a file for a picture of the window, which is closed
// then.
int main(int argc, char* argv[])
{
    QApplication application(argc, argv);
    const QStringList arguments = QApplication::arguments();
    const std::u16string folder = arguments.value(1, ".").toStdU16String();
    const QString picture = arguments.value(2);
    RegisterHostComponent("CorvoConf.Config", [&] { return std::make_shared<Config>(folder); });
    RegisterHostComponent("CorvoTWrp.Trace", [] { return std::make_shared<Trace>(); });

    try {
        Window window;
        window.show();
        if (!picture.isEmpty())
            QTimer::singleShot(0, &window, [&] { QApplication::exit(window.grab().save(picture) ? 0 : 1); });
        return QApplication::exec();
    } catch (const AutomationError& error) {
        qCritical("error %d: %s", error.Number(), error.what());
        return 1;
    }
}
