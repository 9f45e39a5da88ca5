// SPDX-License-Identifier: MIT
#pragma once

#include <KestrinProductEditor/CorvoProductFields.h>
#include <KestrinProductEditor/Currency.h>
#include <KestrinProductEditor/ProductLkpMgr.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace KestrinProductEditor::CommandLine {

/// The columns of a catalogue row by CorvoProductFields, as the catalogue file names them.
inline constexpr std::array<std::string_view, 10> kColumnNames = {
    "RowID",   "UniqueID",  "Status", "Name",         "Key",
    "PartNum", "UnitPrice", "Note",   "DirtySession", "DirtySync"};

[[nodiscard]] constexpr std::string_view ColumnName(CorvoProductFields field)
{
    return kColumnNames[static_cast<std::size_t>(field)];
}

/// One row of the catalogue; texts in UTF-8.
struct ProductRecord
{
    std::int32_t rowID = 0;
    std::int32_t uniqueID = 0;
    std::int32_t status = 0;
    std::string name;
    std::string key;
    std::string partNum;
    Currency unitPrice;
    std::string note;
    bool dirtySession = false;
    bool dirtySync = false;
};

/// The current row. Error 3021 without one.
[[nodiscard]] ProductRecord CurrentProduct(ProductLkpMgr& store);

/// Whether a product of that name (UTF-8) would be dropped when the catalogue is saved: it has no name.
[[nodiscard]] bool IsBlankName(std::string_view name);

/// The price as the locale writes it, with at least two decimals and none lost (UTF-8).
[[nodiscard]] std::string PriceText(Currency price);

} // namespace KestrinProductEditor::CommandLine
