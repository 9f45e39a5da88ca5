// SPDX-License-Identifier: MIT
#pragma once

#include "store/table/RowStore.h"
#include "store/table/TableGramFormat.h"

#include <cstdint>
#include <optional>

/// The types that a column of the file may have, and which of them a column of the table can hold.
namespace KestrinProductEditor::TableGram {

struct TypeFacts
{
    Format::Type type;
    const char* name;
    /// Bytes of a value; 0 where the column says how many.
    std::uint32_t size;
};

/// Null for a type that the format does not have.
[[nodiscard]] const TypeFacts* FactsOf(std::uint16_t type) noexcept;

[[nodiscard]] bool IsWhole(std::uint16_t type) noexcept;
[[nodiscard]] bool IsWide(std::uint16_t type) noexcept;

/// Whether values of the file's type can stand in a column of that type, and what such a column holds, in
/// words.
[[nodiscard]] bool CanHold(ColumnType column, std::uint16_t type) noexcept;
[[nodiscard]] const char* KindOf(ColumnType column) noexcept;

/// A whole number of any of the file's types; UInt64 above the largest Int64 is not one.
[[nodiscard]] std::optional<std::int64_t> LoadWhole(std::uint16_t type, const char* bytes) noexcept;

} // namespace KestrinProductEditor::TableGram
