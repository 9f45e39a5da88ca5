// SPDX-License-Identifier: MIT
#include "kstnedit/ImportCommand.h"

#include "kstnedit/Catalogue.h"
#include "kstnedit/DisplayText.h"
#include "kstnedit/Failure.h"
#include "kstnedit/ImportReceiver.h"
#include "kstnedit/Paths.h"
#include "kstnedit/ProductRecord.h"
#include "platform/FileKind.h"
#include "platform/Text.h"
#include "platform/UserLocale.h"
#include "store/Product.h"
#include "util/modConversion.h"

#include <CLI/CLI.hpp>

#include <memory>
#include <optional>
#include <span>

namespace KestrinProductEditor::CommandLine {

namespace {

/// The rows that a save would drop. The order of the names puts them first, among all that begin with a blank
/// or a control character.
std::int64_t RowsWithoutName(ProductLkpMgr& store)
{
    std::int64_t count = 0;
    if (store.Count() == 0)
        return count;
    for (store.MoveFirst(); !store.EOF(); store.MoveNext()) {
        const std::string name = ToUtf8(store.Fields(PF_Name).String());
        if (IsBlankName(name))
            ++count;
        else if (static_cast<unsigned char>(name.front()) > ' ')
            break;
    }
    return count;
}

Variant ImportParams(std::u16string_view path, const ImportMapping& mapping, FirstLine firstLine,
                     bool replaces)
{
    constexpr std::int32_t kTicked = 1;
    const std::vector<Variant> map(mapping.columns.begin(), mapping.columns.end());
    return Variant::ArrayOf(
        {path, Variant::ArrayOf(map), firstLine == FirstLine::Titles ? kTicked : 0, replaces ? 0 : kTicked});
}

void SayDoubt(Console& console, const ImportDoubts::Lines& lines, const std::string& what)
{
    if (lines.count != 0)
        console.Say(Counted(lines.count, "line") + " (the first is line " + std::to_string(lines.firstLine) +
                    "): " + what);
}

} // namespace

ImportCommand::ImportCommand()
    : Command("import", "Add the products of a CSV file",
              "  kstnedit import price-list.csv\n"
              "  kstnedit import list.csv --map name=2,part-num=1,price=Amount --rejects rejects.csv\n"
              "  kstnedit import list.csv --no-titles --map name=1,price=2 --dry-run")
{
}

void ImportCommand::Declare(CLI::App& app)
{
    app.add_option("FILE", m_file, "The file to read")->required()->type_name("");
    m_mapOption =
        app.add_option(
               "--map", m_map,
               "The columns of the fields, each by its number from 1 or its title; without it the titles "
               "in the first line tell them")
            ->type_name("name=COL,part-num=COL,price=COL,note=COL");
    app.add_flag("--no-titles", m_noTitles, "The first line is a product; needs --map");
    app.add_flag("--replace", m_replace, "Empty the catalogue first");
    m_rejectsOption =
        app.add_option(
               "--rejects", m_rejects,
               "Write the rejected lines to this CSV file: line number, reason, and the line as it stands")
            ->type_name("FILE");
    app.add_flag("--dry-run", m_dryRun, "Count only; the catalogue stays as it is");
}

void ImportCommand::Execute(Console& console, EmbeddedHost& host)
{
    const std::u16string path = PathFromNative(m_file);
    PrvCheckArguments(host, path);
    const ImportMapping mapping = PrvMapping(console, path);
    const FirstLine firstLine = m_noTitles ? FirstLine::Product : FirstLine::Titles;
    PrvSayMapping(console, mapping);

    Catalogue catalogue(host, Catalogue::Folder::MayBeMissing);
    ProductLkpMgr& store = catalogue.Store();
    const std::int64_t blankBefore = m_replace ? 0 : RowsWithoutName(store);
    const auto receiver = std::make_shared<ImportReceiver>(
        console, m_rejects.empty() ? nullptr : FileSystem().CreateInPlace(PathFromNative(m_rejects)));
    store.SetNotifyCallback(receiver);
    const Variant result = store.CSVProductImport(ImportParams(path, mapping, firstLine, m_replace));
    store.ClearNotifyCallback();
    try {
        receiver->End();
    } catch (const AutomationError& error) {
        throw FailureOf("the rejected lines could not be written, and nothing was imported", error);
    }
    if (const std::int32_t status = result.At(0).Long(); status != 0)
        throw CommandFailure(TextOfFailure("nothing was imported from " + QuotedPath(path), status,
                                           ToUtf8(result.At(1).String())));

    Counts counts;
    counts.rejected = result.At(3).Long();
    counts.withoutName = RowsWithoutName(store) - blankBefore;
    counts.imported = result.At(2).Long() - counts.withoutName;
    counts.read = result.At(2).Long() + counts.rejected;
    if (counts.rejected != 0) {
        console.Say(Counted(static_cast<std::uint64_t>(counts.rejected), "line") + " rejected:");
        receiver->SayRejected(console);
    }
    if (counts.imported != 0)
        PrvSayDoubts(console, path, mapping);
    if (counts.imported != 0 && !m_dryRun)
        catalogue.Save();
    console.WriteLine(PrvCountsText(counts));
    if (counts.imported == 0) {
        const std::string price =
            modConversion::FormatCurrency(Currency::FromScaled(12'345'000), 2, UserLocale().Money());
        throw CommandFailure("there is no product to import in " + QuotedPath(path) +
                             ", and the catalogue stays as it is. Check the file and the mapping (--map); "
                             "prices are read as your locale writes them, like " +
                             price + ".");
    }
}

void ImportCommand::PrvCheckArguments(const EmbeddedHost& host, std::u16string_view path) const
{
    // An empty value is most likely a script's variable that was never set.
    if (m_mapOption->count() != 0 && m_map.empty())
        throw UsageFailure("--map names no columns");
    if (m_rejectsOption->count() != 0 && m_rejects.empty())
        throw UsageFailure("--rejects names no file");
    if (m_noTitles && m_map.empty())
        throw UsageFailure("--no-titles needs --map: without titles nothing tells which column is which");
    if (IsFolder(path))
        throw CommandFailure("cannot import " + QuotedPath(path) + ": it is a folder. Name a file.");
    if (!IsRereadable(path))
        throw CommandFailure("cannot import " + QuotedPath(path) +
                             ": it can be read only once. Save it as a file first.");
    if (m_rejects.empty())
        return;
    const std::u16string rejects = PathFromNative(m_rejects);
    if (AreSameFile(rejects, path) || AreSameFile(rejects, host.CataloguePath()))
        throw CommandFailure("--rejects would take the place of " + QuotedPath(rejects) +
                             ", which is still needed. Name another file.");
}

ImportMapping ImportCommand::PrvMapping(Console& console, std::u16string_view path)
{
    std::optional<ImportChoices> choices;
    if (!m_map.empty())
        choices = ReadImportChoices(console.ArgumentText(m_map));
    try {
        m_titles = ReadTitles(path);
    } catch (const AutomationError& error) {
        throw FailureOf("nothing was imported", error);
    }
    if (choices)
        return MappingOf(*choices,
                         m_noTitles ? std::nullopt : std::optional<std::span<const std::string>>(m_titles));
    const ImportMapping mapping = GuessMapping(m_titles);
    if (m_titles.size() == 1 && m_titles[0].find_first_of(";\t") != std::string::npos)
        throw CommandFailure(QuotedPath(path) + " does not separate its columns by commas. It has " +
                             TitlesText(m_titles) + ". Save it with commas, then import that.");
    if (mapping.columns[kImportName] < 0)
        throw CommandFailure("no title in the first line of " + QuotedPath(path) +
                             " tells which column holds the names. It has " + TitlesText(m_titles) +
                             ". Choose the columns with --map name=COL,price=COL, with --no-titles as well "
                             "if the first line is a product.");
    return mapping;
}

void ImportCommand::PrvSayMapping(Console& console, const ImportMapping& mapping) const
{
    constexpr std::size_t kNameWidth = 9;
    for (std::size_t field = 0; field < kImportFields; ++field) {
        std::string line = std::string(kImportFieldNames[field]) + ":";
        line.resize(kNameWidth + 1, ' ');
        const std::int32_t column = mapping.columns[field];
        if (column < 0) {
            line += "no column";
        } else {
            line += "column " + std::to_string(std::int64_t{column} + 1);
            if (!m_noTitles && static_cast<std::size_t>(column) < m_titles.size())
                line += " " + TitlesText(std::span(m_titles).subspan(static_cast<std::size_t>(column), 1));
            line += mapping.origin == ImportMapping::Origin::Guessed ? " (guessed)" : " (chosen)";
        }
        console.SayMore(line);
    }
}

void ImportCommand::PrvSayDoubts(Console& console, std::u16string_view path,
                                 const ImportMapping& mapping) const
{
    const ImportDoubts doubts =
        FindDoubts(path, mapping, m_noTitles ? FirstLine::Product : FirstLine::Titles);
    SayDoubt(console, doubts.zeroedPrices,
             "the price is below zero or above " + PriceText(kPriceCeiling) + "; the product has the price " +
                 PriceText(Currency()));
    SayDoubt(console, doubts.cutTexts,
             "a text is longer than its field; the product has the beginning of it (" +
                 std::to_string(PFS_Name) + " characters of a name or part number, " +
                 std::to_string(PFS_Note) + " of a note)");
    // A first line without a title over the prices need not be a line of titles.
    const auto priceColumn = static_cast<std::size_t>(std::max(mapping.columns[kImportPrice], 0));
    if (mapping.origin == ImportMapping::Origin::Guessed ||
        (mapping.columns[kImportPrice] >= 0 && priceColumn < m_titles.size() &&
         !m_titles[priceColumn].empty()))
        SayDoubt(console, doubts.widerThanTitles,
                 "more columns than titles. A value with a comma must stand in quotes, else the rest of the "
                 "line is read as other columns: look at these products");
}

std::string ImportCommand::PrvCountsText(const Counts& counts) const
{
    std::string text = std::to_string(counts.read) + " read, " + std::to_string(counts.imported) +
                       " imported, " + std::to_string(counts.rejected) + " rejected";
    if (counts.withoutName != 0)
        text += ", " + std::to_string(counts.withoutName) + " without a name: not kept";
    if (m_dryRun)
        text += " (dry run: nothing was changed)";
    return text;
}

} // namespace KestrinProductEditor::CommandLine
