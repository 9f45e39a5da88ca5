// SPDX-License-Identifier: MIT
#include "kstnedit/EditCommand.h"

#include "editor/EditorStart.h"
#include "kstnedit/EditedCatalogue.h"
#include "kstnedit/Failure.h"
#include "kstnedit/Paths.h"
#include "platform/FileKind.h"
#include "platform/Files.h"

#include <CLI/CLI.hpp>

#include <filesystem>

namespace KestrinProductEditor::CommandLine {

EditCommand::EditCommand()
    : Command("edit", "Edit the catalogue in a window",
              "  kstnedit edit\n  kstnedit edit --import price-list.csv")
{
}

void EditCommand::Declare(CLI::App& app)
{
    m_importOption =
        app.add_option("--import", m_import, "Begin with the import of this CSV file")->type_name("FILE");
}

void EditCommand::Execute(Console& /*console*/, EmbeddedHost& host)
{
    const std::u16string importFile = PrvImportFile();
    EditedCatalogue catalogue(host);
    catalogue.WarnWhenReadOnly();
    ShowProductEditor(importFile, [&](ProductLkpMgr& store) { catalogue.BeforeRelease(store); });
    catalogue.RequireSaved();
}

std::u16string EditCommand::PrvImportFile() const
{
    if (m_importOption->count() == 0)
        return {};
    if (m_import.empty())
        throw UsageFailure("--import names no file");
    std::u16string path = PathFromNative(std::filesystem::absolute(m_import).string());
    if (!IsRereadable(path))
        throw CommandFailure("cannot import " + QuotedPath(path) +
                             ": it can be read only once. Save it as a file first.");
    try {
        static_cast<void>(FileSystem().OpenForReading(path));
    } catch (const AutomationError& error) {
        throw FailureOf("there is nothing to import", error);
    }
    return path;
}

} // namespace KestrinProductEditor::CommandLine
