// SPDX-License-Identifier: MIT
#include "exchange/ProductMapping.h"

#include <algorithm>

namespace KestrinProductEditor {

ProductMapping MappingOf(const std::vector<std::int32_t>& choices)
{
    ProductMapping mapping;
    mapping.fill(-1);
    for (std::size_t column = 0; column < choices.size(); ++column) {
        const std::int32_t choice = choices[column];
        if (choice >= 1 && choice <= static_cast<std::int32_t>(mapping.size()))
            mapping[static_cast<std::size_t>(choice) - 1] = static_cast<std::int32_t>(column);
    }
    return mapping;
}

bool IsAnyFieldMapped(const ProductMapping& mapping)
{
    return std::any_of(mapping.begin(), mapping.end(), [](std::int32_t column) { return column != -1; });
}

Variant ReverseMap(const ProductMapping& mapping)
{
    return Variant::ArrayWith(mapping[kImportName], mapping[kImportPartNum], mapping[kImportUnitPrice],
                              mapping[kImportNote]);
}

} // namespace KestrinProductEditor
