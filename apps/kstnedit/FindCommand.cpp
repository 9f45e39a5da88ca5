// SPDX-License-Identifier: MIT
#include "kstnedit/FindCommand.h"

#include "kstnedit/Catalogue.h"
#include "kstnedit/Failure.h"
#include "platform/Text.h"
#include "util/TextOrder.h"

#include <CLI/CLI.hpp>

#include <cstdint>

namespace KestrinProductEditor::CommandLine {

namespace {

/// The store gives no match list for a text with this character.
constexpr char16_t kRefusedCharacter = u'\'';

Variant MatchList(ProductLkpMgr& store, CorvoProductFields column, std::u16string_view text)
{
    // What stands before the refused character narrows the list down; the rest is compared here.
    const std::u16string_view head = text.substr(0, text.find(kRefusedCharacter));
    return column == PF_PartNum ? store.GetFindMatchesByPartNum(head, head.empty())
                                : store.GetFindMatchesByName(head, head.empty());
}

} // namespace

FindCommand::FindCommand()
    : Command("find", "Print the products whose name or part number begins with a text, letter case aside",
              "  kstnedit find hammer\n  kstnedit find HT- --by partnum --format csv")
{
}

void FindCommand::Declare(CLI::App& app)
{
    app.add_option("TEXT", m_text, "The text to look for")->required()->type_name("");
    app.add_option("--by", m_by, "Where to look: name or partnum (name)")
        ->type_name("COLUMN")
        ->check(CLI::IsMember({"name", "partnum"}));
    m_format.Declare(app);
}

void FindCommand::Execute(Console& console, EmbeddedHost& host)
{
    if (m_text.empty())
        throw UsageFailure("TEXT is empty. To see every product use 'kstnedit list'.");
    const std::string text = console.ArgumentText(m_text);
    const CorvoProductFields column = m_by == "partnum" ? PF_PartNum : PF_Name;

    Catalogue catalogue(host, Catalogue::Folder::MustExist);
    ProductLkpMgr& store = catalogue.Store();
    const Variant matches = MatchList(store, column, ToUtf16(text));
    const std::unique_ptr<IProductWriter> writer = m_format.MakeListWriter(console);
    bool hasFound = false;
    for (std::int32_t i = 0; !matches.IsNull() && i < matches.Array().Extent(2); ++i) {
        if (!TextOrder::StartsWith(ToUtf8(matches.Array().At(1, i).String()), text))
            continue;
        store.FindRow(matches.Array().At(0, i).Long());
        writer->Add(CurrentProduct(store));
        hasFound = true;
    }
    writer->End();
    if (!hasFound)
        console.Say(std::string("no product has a ") + (column == PF_PartNum ? "part number" : "name") +
                    " that begins with '" + text + "'");
}

} // namespace KestrinProductEditor::CommandLine
