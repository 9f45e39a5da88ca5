// SPDX-License-Identifier: MIT
#include "kstnedit/ProductRecord.h"

#include "platform/Text.h"
#include "platform/UserLocale.h"
#include "util/modConversion.h"

namespace KestrinProductEditor::CommandLine {

ProductRecord CurrentProduct(ProductLkpMgr& store)
{
    const auto text = [&](CorvoProductFields field) { return ToUtf8(store.Fields(field).String()); };
    return {.rowID = store.Fields(PF_RowID).Long(),
            .uniqueID = store.Fields(PF_UniqueID).Long(),
            .status = store.Fields(PF_Status).Long(),
            .name = text(PF_Name),
            .key = text(PF_Key),
            .partNum = text(PF_PartNum),
            .unitPrice = store.Fields(PF_UnitPrice).Currency(),
            .note = text(PF_Note),
            .dirtySession = store.Fields(PF_DirtySession).Boolean(),
            .dirtySync = store.Fields(PF_DirtySync).Boolean()};
}

bool IsBlankName(std::string_view name)
{
    return name.find_first_not_of(' ') == std::string_view::npos;
}

std::string PriceText(Currency price)
{
    constexpr std::int64_t kHundredth = Currency::kScale / 100;
    constexpr std::int64_t kThousandth = Currency::kScale / 1000;
    const std::int64_t scaled = price.Scaled();
    std::int32_t decimals = 2;
    if (scaled % kHundredth != 0)
        decimals = scaled % kThousandth != 0 ? 4 : 3;
    return modConversion::FormatCurrency(price, decimals, UserLocale().Money());
}

} // namespace KestrinProductEditor::CommandLine
