// SPDX-License-Identifier: MIT
#include "frame/modResourceUtils.h"

#include "platform/Text.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>

namespace KestrinProductEditor {

TEST(GetResString, KnowsNineteenStrings)
{
    const struct
    {
        std::int32_t id;
        const char* text;
    } strings[] = {
        {101, "Product Editor"},
        {102, "Product List"},
        {103, "Product Name"},
        {104, "Part#"},
        {105, "Unit Price"},
        {106, "Name"},
        {107, "Part#"},
        {108, "Unit Price"},
        {109, "Note"},
        {110, "Are you sure you want to delete the current product?"},
        {111, "Salvo"},
        {112, "Product List"},
        {113, "The current product info has been modified. Would you like to save the changes?"},
        {114, "Editing"},
        {115, "New Product"},
        {116, "Tip: Double-click a row above or a text field on the right pane to edit a product"},
        {117, "Save && Close"},
        {118, "Cancel"},
        {119, "The product list has been modified. Would you like to save the changes?"},
    };
    for (const auto& string : strings)
        EXPECT_EQ(ToUtf8(modResourceUtils::GetResString(string.id)), string.text) << string.id;
}

TEST(GetResString, SaysSoWhenThereIsNoSuchString)
{
    for (const std::int32_t id : {0, 1, 100, 120, -101, std::numeric_limits<std::int32_t>::max(),
                                  std::numeric_limits<std::int32_t>::min()})
        EXPECT_EQ(ToUtf8(modResourceUtils::GetResString(id)), "### Resource string not found ###") << id;
}

} // namespace KestrinProductEditor
