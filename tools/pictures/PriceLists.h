// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace KestrinProductEditor {

// Files of a supplier: a line of titles, and the columns name, part number, price and note.

/// Half of its lines are no products.
[[nodiscard]] inline std::string DoubtfulPriceList()
{
    return "Product,Part No,Price,Remarks\n"
           "\"Claw hammer, 16 oz\",HT-CH16,18.95,\"Forged head, hickory handle\"\n"
           "Return of a damaged hammer,HT-CH16,-18.95,\n"
           "Custom cut plywood,WD-PLY,on request,Ask at the counter\n"
           "Tower crane,XX-1,\"1,000,000,000,000\",\n"
           "Wood screw,WS-440,0.12,\n";
}

/// Long enough for the work on it to be seen.
[[nodiscard]] inline std::string LongPriceList()
{
    constexpr int kLines = 40'000;
    std::string list = "Product,Part No,Price,Remarks\n";
    for (int line = 0; line < kLines; ++line)
        list += "Bolt,B-" + std::to_string(line) + ",0.25,\n";
    return list;
}

} // namespace KestrinProductEditor
