// SPDX-License-Identifier: MIT
#include "kstnedit/ExportCommand.h"

#include "kstnedit/Catalogue.h"
#include "kstnedit/DisplayText.h"
#include "kstnedit/Failure.h"
#include "kstnedit/Paths.h"
#include "kstnedit/ProgressBar.h"

#include <KestrinProductEditor/IProcessProgress.h>

#include <CLI/CLI.hpp>

namespace KestrinProductEditor::CommandLine {

namespace {

class ExportReceiver final : public IProcessProgress
{
public:
    explicit ExportReceiver(Console& console) : m_bar(console) {}
    void Progress(const Variant& vParams) override { m_bar.Show(vParams.At(0).Double()); }

private:
    ProgressBar m_bar;
};

} // namespace

ExportCommand::ExportCommand()
    : Command("export", "Write names, part numbers, prices and notes of all products as a CSV file",
              "  kstnedit export price-list.csv")
{
}

void ExportCommand::Declare(CLI::App& app)
{
    app.add_option("FILE", m_file, "The file to write; what it held is lost")->required()->type_name("");
}

void ExportCommand::Execute(Console& console, EmbeddedHost& host)
{
    const std::u16string path = PathFromNative(m_file);
    Catalogue catalogue(host, Catalogue::Folder::MustExist, Catalogue::File::MustExist);
    const std::int32_t count = catalogue.Store().Count();
    try {
        catalogue.Store().SetNotifyCallback(std::make_shared<ExportReceiver>(console));
        catalogue.Store().CSVProductExport(Variant::ArrayOf({path}));
        catalogue.Store().ClearNotifyCallback();
    } catch (const AutomationError& error) {
        catalogue.Store().ClearNotifyCallback();
        const bool hasBegun = error.Number() == kErrDiskFull || error.Number() == kErrDeviceIO;
        throw FailureOf("the export to " + QuotedPath(path) + " failed" +
                            (hasBegun ? ", and the file is not complete" : ""),
                        error);
    }
    console.WriteLine(Counted(static_cast<std::uint64_t>(count), "product") + " exported");
}

} // namespace KestrinProductEditor::CommandLine
