// SPDX-License-Identifier: MIT
#pragma once

#include "support/PlainTableGramReader.h"

#include <map>
#include <string>
#include <string_view>
#include <vector>

/// The XML form of a saved recordset, as far as the sample files use it.
namespace KestrinProductEditor::Testing {

struct XmlRow
{
    PlainState state = PlainState::Original;
    std::map<std::string, std::string> values; // UTF-8, by column; an absent one is null
};

struct XmlTable
{
    std::vector<std::string> columns;
    std::vector<XmlRow> rows;
};

/// Throws std::exception when the text is not such a form.
[[nodiscard]] XmlTable ReadRowsetXml(std::string_view text);

} // namespace KestrinProductEditor::Testing
