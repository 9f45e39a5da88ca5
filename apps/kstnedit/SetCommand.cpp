// SPDX-License-Identifier: MIT
#include "kstnedit/SetCommand.h"

#include "kstnedit/Catalogue.h"
#include "kstnedit/Failure.h"
#include "kstnedit/NumberArgument.h"

#include <CLI/CLI.hpp>

namespace KestrinProductEditor::CommandLine {

SetCommand::SetCommand()
    : Command("set", "Change fields of a product; those that are not given stay as they are",
              "  kstnedit set 17 --price 19.95 --note \"new supplier\"")
{
}

void SetCommand::Declare(CLI::App& app)
{
    app.add_option("ROWID", m_rowID, "The row identifier of the product")
        ->required()
        ->type_name("")
        ->check(CheckRowIdentifier);
    m_product.Declare(app, ProductOptions::Name::Optional);
}

void SetCommand::Execute(Console& console, EmbeddedHost& host)
{
    if (m_product.AreEmpty())
        throw UsageFailure("nothing to change: give --name, --key, --part-num, --price or --note");
    const std::int32_t rowID = CheckedNumber(m_rowID);
    Catalogue catalogue(host, Catalogue::Folder::MustExist);
    catalogue.GoToProduct(rowID);
    catalogue.Store().Update(m_product.Apply(catalogue.Store().Pack(rowID), console));
    catalogue.Save();
}

} // namespace KestrinProductEditor::CommandLine
