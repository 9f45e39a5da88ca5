// SPDX-License-Identifier: MIT
#include "kstnedit/ListCommand.h"

#include "kstnedit/Catalogue.h"
#include "kstnedit/NumberArgument.h"

#include <CLI/CLI.hpp>

namespace KestrinProductEditor::CommandLine {

ListCommand::ListCommand()
    : Command("list", "Print products in the order of their names",
              "  kstnedit list --offset 100 --limit 20\n  kstnedit list --format json > products.json")
{
}

void ListCommand::Declare(CLI::App& app)
{
    app.add_option("--offset", m_offset, "Leave out the first N products (0)")
        ->type_name("N")
        ->check(CheckCount);
    app.add_option("--limit", m_limit, "Print at most N products (all)")->type_name("N")->check(CheckCount);
    m_format.Declare(app);
}

void ListCommand::Execute(Console& console, EmbeddedHost& host)
{
    Catalogue catalogue(host, Catalogue::Folder::MustExist);
    ProductLkpMgr& store = catalogue.Store();
    const std::unique_ptr<IProductWriter> writer = m_format.MakeListWriter(console);
    if (store.Count() != 0) {
        store.GotoNthProduct(CheckedNumber(m_offset));
        for (std::int32_t left = CheckedNumber(m_limit); left > 0 && !store.EOF(); --left) {
            writer->Add(CurrentProduct(store));
            store.MoveNext();
        }
    }
    writer->End();
}

} // namespace KestrinProductEditor::CommandLine
