// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace KestrinProductEditor::CommandLine {

/// The fields that an import fills, in the order of the store's reverse map.
enum ImportField : std::size_t
{
    kImportName,
    kImportPartNum,
    kImportPrice,
    kImportNote,
    kImportFields
};

/// Their names in the option --map.
inline constexpr std::array<std::string_view, kImportFields> kImportFieldNames = {"name", "part-num", "price",
                                                                                  "note"};

/// From which column of the file each field comes.
struct ImportMapping
{
    enum class Origin
    {
        Guessed, ///< from the titles
        Chosen
    };

    Origin origin = Origin::Guessed;
    /// Columns from 0, negative for none.
    std::array<std::int32_t, kImportFields> columns = {-1, -1, -1, -1};
};

/// What the user wrote behind --map: for each field a column number or a title (UTF-8).
using ImportChoices = std::array<std::optional<std::string>, kImportFields>;

/// Reads "name=COL,part-num=COL,price=COL,note=COL"; each part may be absent but the name. A comma that no
/// field's name follows belongs to the title before it. Throws UsageFailure.
[[nodiscard]] ImportChoices ReadImportChoices(std::string_view text);

/// The mapping that the choices make. A column number counts from 1; a title is looked for in `titles` as it
/// is, then without letter case and outer blanks. Throws UsageFailure for a title when `titles` is nothing,
/// and CommandFailure for one that is not among them.
[[nodiscard]] ImportMapping MappingOf(const ImportChoices& choices,
                                      const std::optional<std::span<const std::string>>& titles);

/// The mapping that the titles suggest: the titles of our own export first, then the same without letter
/// case, then what price lists usually call the field. The name's column is negative when no title suggests
/// one.
[[nodiscard]] ImportMapping GuessMapping(std::span<const std::string> titles);

/// "'Item', 'Price'": the titles, for a message.
[[nodiscard]] std::string TitlesText(std::span<const std::string> titles);

} // namespace KestrinProductEditor::CommandLine
