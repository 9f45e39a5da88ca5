// SPDX-License-Identifier: MIT
#pragma once

#include <KestrinProductEditor/Variant.h>

#include <string>
#include <string_view>

namespace KestrinProductEditor::modUtil {

/// A new product key: 32 characters, 0 to 9 and A to F; empty when the system gives none.
[[nodiscard]] std::u16string GuidText();

/// The columns of one line: an array of texts, or Null for an empty line. `separator` is one character and
/// counts outside double quotes only. A double quote is never kept, wherever it stands; one that is not
/// closed reaches to the end. Blanks are kept. `bError` becomes false: every text can be split.
[[nodiscard]] Variant SplitQuoted(std::u16string_view text, std::u16string_view separator, bool& bError);

} // namespace KestrinProductEditor::modUtil
