// SPDX-License-Identifier: MIT
#include "kstnedit/AddCommand.h"

#include "kstnedit/Catalogue.h"
#include "store/Product.h"

#include <CLI/CLI.hpp>

namespace KestrinProductEditor::CommandLine {

AddCommand::AddCommand()
    : Command("add", "Add a product and print its row identifier; a key is made up when none is given",
              "  kstnedit add --name \"Claw hammer\" --part-num HT-16 --price 18.95")
{
}

void AddCommand::Declare(CLI::App& app)
{
    m_product.Declare(app, ProductOptions::Name::Required);
}

void AddCommand::Execute(Console& console, EmbeddedHost& host)
{
    Catalogue catalogue(host, Catalogue::Folder::MayBeMissing);
    Product product;
    product.Unpack(m_product.Apply(product.Pack(), console));
    if (product.Key().empty())
        product.Key(product.GenerateUniqueKey());
    const std::int32_t rowID = catalogue.Store().AddNew(product.Pack());
    catalogue.Save();
    console.WriteLine(std::to_string(rowID));
}

} // namespace KestrinProductEditor::CommandLine
