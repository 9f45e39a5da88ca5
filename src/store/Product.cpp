// SPDX-License-Identifier: MIT
#include "store/Product.h"

#include "frame/Traced.h"
#include "util/Reserved.h"
#include "util/modConversion.h"
#include "util/modUtil.h"

#include <KestrinProductEditor/CorvoProductFields.h>

namespace KestrinProductEditor {

namespace {

constexpr Currency kQuantityCeiling = Currency::FromScaled(42'949'672'959'999);
constexpr Currency kDiscountCeiling = Currency::FromUnits(100);

void SetText(ErrorContext context, std::int32_t limit, std::u16string_view tooLong, std::u16string_view value,
             std::u16string& member)
{
    Traced(context, [&] {
        if (value.size() > static_cast<std::size_t>(limit))
            RaiseOwn(context, tooLong);
        member = WithoutReserved(value);
    });
}

} // namespace

void Product::Name(std::u16string_view sName)
{
    SetText(ErrorContext::Product_Name, PFS_Name, u"Product name field is too long.", sName, m_sName);
}

void Product::Key(std::u16string_view sKey)
{
    SetText(ErrorContext::Product_Key, PFS_Key, u"Product key is too big", sKey, m_sKey);
}

void Product::PartNum(std::u16string_view sPartNum)
{
    SetText(ErrorContext::Product_PartNum, PFS_PartNum, u"Product partnum is too big", sPartNum, m_sPartNum);
}

void Product::UnitPrice(Currency curUnitPrice)
{
    Traced(ErrorContext::Product_UnitPrice, [&] {
        if (!IsValidUnitPrice(curUnitPrice))
            RaiseOwn(ErrorContext::Product_UnitPrice, u"Product unit price is too big.");
        m_curUnitPrice = curUnitPrice;
    });
}

void Product::Note(std::u16string_view sNote)
{
    SetText(ErrorContext::Product_Note, PFS_Note, u"Product note is too big", sNote, m_sNote);
}

std::u16string Product::GenerateUniqueKey() const
{
    return modUtil::GuidText();
}

Variant Product::Unpack(const Variant& vProductInfo)
{
    return Traced(ErrorContext::Product_Unpack, [&] {
        m_bDirty = false;
        if (vProductInfo.IsNull()) {
            m_lRowID = 0;
            m_bIsNew = true;
            Name(u"");
            Key(u"");
            PartNum(u"");
            UnitPrice(Currency());
            Note(u"");
            return Variant();
        }
        m_lRowID = modConversion::ToLong(vProductInfo.At(kPackedRowID));
        m_bIsNew = false;
        Name(modConversion::ToText(vProductInfo.At(kPackedName)));
        Key(modConversion::ToText(vProductInfo.At(kPackedKey)));
        PartNum(modConversion::ToText(vProductInfo.At(kPackedPartNum)));
        UnitPrice(modConversion::ToCurrency(vProductInfo.At(kPackedUnitPrice)));
        Note(modConversion::ToText(vProductInfo.At(kPackedNote)));
        return Variant();
    });
}

Variant Product::Pack() const
{
    return Traced(ErrorContext::Product_Pack, [&] {
        return Variant::ArrayWith(m_lRowID, m_sName, m_sKey, m_sPartNum, m_curUnitPrice, m_sNote);
    });
}

bool Product::IsValidUnitPrice(Currency curUnitPrice) const noexcept
{
    return curUnitPrice <= m_curPriceCeiling;
}

bool Product::IsValidExtPrice(Currency curExtPrice) const noexcept
{
    return curExtPrice <= m_curPriceCeiling;
}

// The two below ask nothing of the product, but are members like their siblings: clients call them on one.
// NOLINTBEGIN(readability-convert-member-functions-to-static)
bool Product::IsValidQty(Currency curQty) const noexcept
{
    return curQty <= kQuantityCeiling;
}

bool Product::IsValidDiscount(Currency curDiscount) const noexcept
{
    return curDiscount <= kDiscountCeiling;
}
// NOLINTEND(readability-convert-member-functions-to-static)

} // namespace KestrinProductEditor
