// SPDX-License-Identifier: MIT
#include "kstnedit/ShowCommand.h"

#include "kstnedit/Catalogue.h"
#include "kstnedit/NumberArgument.h"

#include <CLI/CLI.hpp>

namespace KestrinProductEditor::CommandLine {

ShowCommand::ShowCommand()
    : Command("show", "Print all that is known of one product",
              "  kstnedit show 17\n  kstnedit show 17 --format json")
{
}

void ShowCommand::Declare(CLI::App& app)
{
    app.add_option("ROWID", m_rowID, "The row identifier of the product")
        ->required()
        ->type_name("")
        ->check(CheckRowIdentifier);
    m_format.Declare(app);
}

void ShowCommand::Execute(Console& console, EmbeddedHost& host)
{
    Catalogue catalogue(host, Catalogue::Folder::MustExist);
    catalogue.GoToProduct(CheckedNumber(m_rowID));
    const std::unique_ptr<IProductWriter> writer = m_format.MakeSingleWriter(console);
    writer->Add(CurrentProduct(catalogue.Store()));
    writer->End();
}

} // namespace KestrinProductEditor::CommandLine
