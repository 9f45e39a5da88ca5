// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// A second decoder of the file form, for tests: as plain as can be, and with no line in common with the one
/// that the component uses. It works on the whole file in memory and keeps values as the bytes that stand in
/// the file.
namespace KestrinProductEditor::Testing {

struct PlainColumn
{
    std::u16string name;
    unsigned type = 0;
    std::uint32_t maxLength = 0;
    std::uint32_t flags = 0;
};

enum class PlainState
{
    Original,
    Changed,
    Deleted,
    Inserted
};

struct PlainRow
{
    PlainState state = PlainState::Original;
    std::vector<std::optional<std::string>> values; // the current ones; the last ones of a deleted row
};

struct PlainTable
{
    std::uint32_t announcedRows = 0;
    std::vector<PlainColumn> columns;
    std::vector<PlainRow> rows;
    std::size_t end = 0; // the offset behind the end mark
};

/// Throws std::exception when the bytes are no table.
[[nodiscard]] PlainTable ReadPlainTableGram(std::string_view bytes);

/// The numbers and texts in a value's bytes.
[[nodiscard]] std::int64_t PlainNumber(const std::string& value);
[[nodiscard]] std::u16string PlainWideText(const std::string& value);

} // namespace KestrinProductEditor::Testing
