// SPDX-License-Identifier: MIT
#include "kstnedit/BackupCommand.h"

#include "kstnedit/Catalogue.h"
#include "kstnedit/DisplayText.h"
#include "kstnedit/Failure.h"
#include "kstnedit/Paths.h"
#include "platform/FileKind.h"

#include <CLI/CLI.hpp>

namespace KestrinProductEditor::CommandLine {

BackupCommand::BackupCommand()
    : Command("backup", "Write the whole catalogue to a file that 'restore' and other installations read",
              "  kstnedit backup products-monday.cpd")
{
}

void BackupCommand::Declare(CLI::App& app)
{
    app.add_option("FILE", m_file, "The file to write; what it held is lost")->required()->type_name("");
}

void BackupCommand::Execute(Console& console, EmbeddedHost& host)
{
    const std::u16string path = PathFromNative(m_file);
    if (AreSameFile(path, host.CataloguePath()))
        throw CommandFailure("the backup would take the place of the catalogue " + QuotedPath(path) +
                             " itself. Name another file.");
    Catalogue catalogue(host, Catalogue::Folder::MustExist, Catalogue::File::MustExist);
    try {
        catalogue.Store().BinaryProductExport(path);
    } catch (const AutomationError& error) {
        throw FailureOf("the backup to " + QuotedPath(path) + " failed", error);
    }
    console.WriteLine(Counted(static_cast<std::uint64_t>(catalogue.Store().Count()), "product") + " written");
}

} // namespace KestrinProductEditor::CommandLine
