// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

/// The identifiers of the component's resource strings.
namespace KestrinProductEditor::modResourceDefs {

inline constexpr std::int32_t kProductEditor = 101;
inline constexpr std::int32_t kProductListTitle = 102;
inline constexpr std::int32_t kColumnProductName = 103;
inline constexpr std::int32_t kColumnPartNum = 104;
inline constexpr std::int32_t kColumnUnitPrice = 105;
inline constexpr std::int32_t kFieldName = 106;
inline constexpr std::int32_t kFieldPartNum = 107;
inline constexpr std::int32_t kFieldUnitPrice = 108;
inline constexpr std::int32_t kFieldNote = 109;
inline constexpr std::int32_t kAskDeleteProduct = 110;
inline constexpr std::int32_t kApplicationTitle = 111;
inline constexpr std::int32_t kProductListCount = 112;
inline constexpr std::int32_t kAskSaveProduct = 113;
inline constexpr std::int32_t kEditing = 114;
inline constexpr std::int32_t kNewProduct = 115;
inline constexpr std::int32_t kTip = 116;
inline constexpr std::int32_t kSaveAndClose = 117;
inline constexpr std::int32_t kCancel = 118;
inline constexpr std::int32_t kAskSaveProductList = 119;

} // namespace KestrinProductEditor::modResourceDefs
