// SPDX-License-Identifier: MIT
#include "kstnedit/RestoreCommand.h"

#include "kstnedit/Catalogue.h"
#include "kstnedit/DisplayText.h"
#include "kstnedit/Failure.h"
#include "kstnedit/Paths.h"

#include <CLI/CLI.hpp>

namespace KestrinProductEditor::CommandLine {

RestoreCommand::RestoreCommand()
    : Command("restore", "Replace the catalogue with that of a file that 'backup' wrote",
              "  kstnedit restore products-monday.cpd")
{
}

void RestoreCommand::Declare(CLI::App& app)
{
    app.add_option("FILE", m_file, "The file to read")->required()->type_name("");
}

void RestoreCommand::Execute(Console& console, EmbeddedHost& host)
{
    const std::u16string path = PathFromNative(m_file);
    if (IsFolder(path))
        throw CommandFailure("cannot restore from " + QuotedPath(path) + ": it is a folder. Name a file.");
    if (!FileSystem().FileExists(path))
        throw CommandFailure("cannot restore from " + QuotedPath(path) +
                             ": there is no such file. Check the name for a typing error.");
    Catalogue catalogue(host, Catalogue::Folder::MayBeMissing);
    try {
        catalogue.Store().BinaryProductImport(path);
    } catch (const AutomationError& error) {
        throw CommandFailure("the catalogue was not replaced: " + std::string(error.what()) +
                             " Name a file that 'backup' or another installation wrote.");
    }
    const std::int32_t count = catalogue.Store().Count();
    catalogue.Save();
    console.WriteLine(Counted(static_cast<std::uint64_t>(count), "product") + " restored");
}

} // namespace KestrinProductEditor::CommandLine
