// SPDX-License-Identifier: MIT
#include "kstnedit/ImportMapping.h"

#include "kstnedit/DisplayText.h"
#include "kstnedit/Failure.h"
#include "kstnedit/NumberArgument.h"
#include "platform/Text.h"
#include "util/NumberText.h"
#include "util/TextOrder.h"

#include <algorithm>
#include <functional>

namespace KestrinProductEditor::CommandLine {

namespace {

constexpr std::array<std::string_view, kImportFields> kExportTitles = {"Name", "PartNum", "UnitPrice",
                                                                       "Note"};

// What price lists call the fields, as Simplified makes it, the likelier first: where a list has two of them,
// the first one is meant.
constexpr std::string_view kNameTitles[] = {"name",
                                            "productname",
                                            "itemname",
                                            "articlename",
                                            "partname",
                                            "description",
                                            "itemdescription",
                                            "productdescription",
                                            "articledescription",
                                            "partdescription",
                                            "chargedescription",
                                            "proceduredescription",
                                            "servicedescription",
                                            "procedurename",
                                            "servicename",
                                            "title",
                                            "producttitle",
                                            "product",
                                            "item",
                                            "article",
                                            "service",
                                            "procedure",
                                            "longdescription",
                                            "shortdescription",
                                            "desc"};
constexpr std::string_view kPartNumTitles[] = {"partnum",
                                               "partnumber",
                                               "partno",
                                               "partnr",
                                               "part",
                                               "sku",
                                               "itemnumber",
                                               "itemno",
                                               "itemnum",
                                               "itemnr",
                                               "itemcode",
                                               "productnumber",
                                               "productno",
                                               "productcode",
                                               "articlenumber",
                                               "articleno",
                                               "articlenr",
                                               "articlecode",
                                               "stocknumber",
                                               "stockcode",
                                               "stockno",
                                               "catalognumber",
                                               "cataloguenumber",
                                               "catno",
                                               "catalogno",
                                               "modelnumber",
                                               "modelno",
                                               "model",
                                               "mpn",
                                               "ordernumber",
                                               "orderno",
                                               "ordercode",
                                               "code",
                                               "chargecode",
                                               "procedurecode",
                                               "servicecode",
                                               "partid",
                                               "itemid",
                                               "productid",
                                               "articleid",
                                               "procedureid",
                                               "serviceid",
                                               "number",
                                               "no",
                                               "ean",
                                               "gtin",
                                               "upc",
                                               "barcode",
                                               "id",
                                               "item",
                                               "article"};
constexpr std::string_view kPriceTitles[] = {
    "unitprice",      "price",       "listprice", "salesprice",   "saleprice",
    "sellingprice",   "retailprice", "priceeach", "priceperunit", "netprice",
    "grossprice",     "amount",      "charge",    "chargeamount", "unitcharge",
    "standardcharge", "grosscharge", "charges",   "priceamount",  "unitcost",
    "cost",           "rate",        "fee",       "msrp",         "rrp"};
constexpr std::string_view kNoteTitles[] = {"note",
                                            "notes",
                                            "remark",
                                            "remarks",
                                            "comment",
                                            "comments",
                                            "annotation",
                                            "details",
                                            "additionalinfo",
                                            "additionalinformation",
                                            "info",
                                            "information",
                                            "longdescription",
                                            "productdescription",
                                            "itemdescription",
                                            "description"};

constexpr std::array<std::span<const std::string_view>, kImportFields> kUsualTitles = {
    kNameTitles, kPartNumTitles, kPriceTitles, kNoteTitles};

std::string_view Trimmed(std::string_view text)
{
    std::size_t begin = 0;
    while (begin < text.size()) {
        std::size_t next = begin;
        if (!NumberText::IsBlank(NextCodePoint(text, next)))
            break;
        begin = next;
    }
    text.remove_prefix(begin);
    while (text.ends_with(' ') || text.ends_with('\t'))
        text.remove_suffix(1);
    return text;
}

/// The letters and digits of a title, folded: "Part No." and "part_no" are one title. "#" says "no". What
/// stands in parentheses, a unit or a currency, is left out.
std::string Simplified(std::string_view title)
{
    std::string simplified;
    int depth = 0;
    for (std::size_t at = 0; at < title.size();) {
        const char32_t codePoint = TextOrder::Fold(NextCodePoint(title, at));
        if (codePoint == U'(')
            ++depth;
        else if (codePoint == U')')
            --depth;
        else if (depth > 0)
            continue;
        else if (codePoint == U'#')
            simplified += "no";
        else if (codePoint >= 0x80 || (codePoint >= U'a' && codePoint <= U'z') ||
                 (codePoint >= U'0' && codePoint <= U'9'))
            AppendCodePoint(codePoint, simplified);
    }
    return simplified;
}

bool AreEqualWithoutCase(std::string_view left, std::string_view right)
{
    return TextOrder::Compare(Trimmed(left), Trimmed(right)) == 0;
}

std::optional<ImportField> FieldNamed(std::string_view name)
{
    const auto* const found = std::find(kImportFieldNames.begin(), kImportFieldNames.end(), name);
    if (found == kImportFieldNames.end())
        return std::nullopt;
    return static_cast<ImportField>(found - kImportFieldNames.begin());
}

std::string FieldNamesText()
{
    std::string text;
    for (const std::string_view name : kImportFieldNames)
        text += (text.empty() ? "" : ", ") + std::string(name);
    return text;
}

/// The first title that `isMeant` and whose column no field has yet.
std::int32_t FirstTitle(std::span<const std::string> titles, const ImportMapping& taken,
                        const std::function<bool(const std::string&)>& isMeant)
{
    for (std::size_t column = 0; column < titles.size(); ++column) {
        const auto number = static_cast<std::int32_t>(column);
        const bool isTaken =
            std::find(taken.columns.begin(), taken.columns.end(), number) != taken.columns.end();
        if (!isTaken && isMeant(titles[column]))
            return number;
    }
    return -1;
}

std::int32_t ColumnOfTitle(std::span<const std::string> titles, std::string_view title)
{
    const ImportMapping none;
    const std::int32_t exact =
        FirstTitle(titles, none, [&](const std::string& each) { return each == title; });
    if (exact >= 0)
        return exact;
    return FirstTitle(titles, none,
                      [&](const std::string& each) { return AreEqualWithoutCase(each, title); });
}

} // namespace

ImportChoices ReadImportChoices(std::string_view text)
{
    ImportChoices choices;
    std::optional<ImportField> field;
    while (!text.empty()) {
        const std::size_t comma = text.find(',');
        const std::string_view part = text.substr(0, comma);
        text.remove_prefix(comma == std::string_view::npos ? text.size() : comma + 1);
        const std::size_t equals = part.find('=');
        if (equals != std::string_view::npos) {
            const std::string_view name = Trimmed(part.substr(0, equals));
            field = FieldNamed(name);
            if (!field)
                throw UsageFailure("--map: there is no field '" + std::string(name) + "', only " +
                                   FieldNamesText());
            if (choices[*field])
                throw UsageFailure("--map: '" + std::string(name) + "' is given twice");
            choices[*field] = part.substr(equals + 1);
        } else if (field) {
            *choices[*field] += "," + std::string(part);
        } else {
            throw UsageFailure("--map: '" + std::string(part) +
                               "' is no mapping. Write it like name=1,price=3.");
        }
    }
    if (!choices[kImportName])
        throw UsageFailure("--map: no column for the name. Write it like name=1,price=3.");
    return choices;
}

ImportMapping MappingOf(const ImportChoices& choices,
                        const std::optional<std::span<const std::string>>& titles)
{
    ImportMapping mapping;
    mapping.origin = ImportMapping::Origin::Chosen;
    for (std::size_t field = 0; field < kImportFields; ++field) {
        if (!choices[field])
            continue;
        const std::string& choice = *choices[field];
        const std::string what = "--map: " + std::string(kImportFieldNames[field]);
        if (!choice.empty() && choice.find_first_not_of("0123456789") == std::string::npos) {
            const std::int32_t number = WholeNumber(choice).value_or(0);
            if (number < 1)
                throw UsageFailure(what + ": there is no column " + choice + "; columns count from 1");
            mapping.columns[field] = number - 1;
        } else if (!titles) {
            throw UsageFailure(what + ": '" + choice +
                               "' is no column number, and with --no-titles there are no titles");
        } else if (mapping.columns[field] = ColumnOfTitle(*titles, choice); mapping.columns[field] < 0) {
            throw CommandFailure(what + ": no column has the title '" + choice + "'. The first line has " +
                                 TitlesText(*titles) + ". Write one of them, or a column number.");
        }
    }
    return mapping;
}

ImportMapping GuessMapping(std::span<const std::string> titles)
{
    ImportMapping mapping;
    const auto fill = [&](std::size_t field, const std::function<bool(const std::string&)>& isMeant) {
        if (mapping.columns[field] < 0)
            mapping.columns[field] = FirstTitle(titles, mapping, isMeant);
    };
    for (std::size_t field = 0; field < kImportFields; ++field)
        fill(field, [&](const std::string& title) { return title == kExportTitles[field]; });
    for (std::size_t field = 0; field < kImportFields; ++field)
        fill(field,
             [&](const std::string& title) { return AreEqualWithoutCase(title, kExportTitles[field]); });
    for (std::size_t field = 0; field < kImportFields; ++field) {
        for (const std::string_view usual : kUsualTitles[field])
            fill(field, [&](const std::string& title) { return Simplified(title) == usual; });
    }
    return mapping;
}

std::string TitlesText(std::span<const std::string> titles)
{
    constexpr std::size_t kMostTitles = 20;
    constexpr std::size_t kMostColumns = 40;
    if (titles.empty())
        return "no titles";
    std::string text;
    for (std::size_t i = 0; i < std::min(titles.size(), kMostTitles); ++i)
        text += (i == 0 ? "'" : ", '") + CutToWidth(titles[i], kMostColumns, "...") + "'";
    if (titles.size() > kMostTitles)
        text += " and " + std::to_string(titles.size() - kMostTitles) + " more";
    return text;
}

} // namespace KestrinProductEditor::CommandLine
