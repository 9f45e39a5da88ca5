// SPDX-License-Identifier: MIT
#pragma once

#include "frame/modResourceDefs.h"

#include <cstdint>

/// The identifiers of the details control's resource strings.
namespace KestrinProductEditor::modRscProductDetails {

inline constexpr std::int32_t kName = modResourceDefs::kFieldName;
inline constexpr std::int32_t kPartNum = modResourceDefs::kFieldPartNum;
inline constexpr std::int32_t kUnitPrice = modResourceDefs::kFieldUnitPrice;
inline constexpr std::int32_t kNote = modResourceDefs::kFieldNote;

} // namespace KestrinProductEditor::modRscProductDetails
