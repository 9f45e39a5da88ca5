// SPDX-License-Identifier: MIT
#include "kstnedit/DeleteCommand.h"

#include "kstnedit/Catalogue.h"
#include "kstnedit/DisplayText.h"
#include "kstnedit/Failure.h"
#include "kstnedit/NumberArgument.h"

#include <CLI/CLI.hpp>

#include <set>

namespace KestrinProductEditor::CommandLine {

DeleteCommand::DeleteCommand()
    : Command("delete", "Delete products: all that are named or, when one does not exist, none",
              "  kstnedit delete 17 18 23")
{
}

void DeleteCommand::Declare(CLI::App& app)
{
    app.add_option("ROWID", m_rowIDs, "The row identifiers of the products")
        ->required()
        ->type_name("")
        ->check(CheckRowIdentifier);
}

void DeleteCommand::Execute(Console& console, EmbeddedHost& host)
{
    std::set<std::int32_t> rowIDs;
    for (const std::string& text : m_rowIDs)
        rowIDs.insert(CheckedNumber(text));

    Catalogue catalogue(host, Catalogue::Folder::MustExist);
    std::string missing;
    for (const std::int32_t rowID : rowIDs) {
        if (!catalogue.HasProduct(rowID))
            missing += (missing.empty() ? "" : ", ") + std::to_string(rowID);
    }
    if (!missing.empty())
        throw CommandFailure("no product has the row identifier" +
                             std::string(missing.find(',') == std::string::npos ? " " : "s ") + missing +
                             "; nothing was deleted. 'kstnedit list' shows the identifiers.");
    for (const std::int32_t rowID : rowIDs)
        catalogue.Store().Delete(rowID);
    catalogue.Save();
    console.WriteLine(Counted(rowIDs.size(), "product") + " deleted");
}

} // namespace KestrinProductEditor::CommandLine
