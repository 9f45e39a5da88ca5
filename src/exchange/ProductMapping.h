// SPDX-License-Identifier: MIT
#pragma once

#include <KestrinProductEditor/Variant.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace KestrinProductEditor {

/// The fields that an import can fill, in the order of its reverse map.
enum ImportField : std::size_t
{
    kImportName,
    kImportPartNum,
    kImportUnitPrice,
    kImportNote,
    kImportFields
};

/// The file column of each field, counted from 0; -1 for a field that is not mapped.
using ProductMapping = std::array<std::int32_t, kImportFields>;

/// The mapping that is chosen by one number for each file column: 0 nothing, 1 to 4 the fields in their
/// order. When two columns choose one field, the later one has it.
[[nodiscard]] ProductMapping MappingOf(const std::vector<std::int32_t>& choices);

[[nodiscard]] bool IsAnyFieldMapped(const ProductMapping& mapping);

/// The mapping as the store's import takes it.
[[nodiscard]] Variant ReverseMap(const ProductMapping& mapping);

} // namespace KestrinProductEditor
