// SPDX-License-Identifier: MIT
#pragma once

#include <KestrinProductEditor/Currency.h>
#include <KestrinProductEditor/Variant.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace KestrinProductEditor {

/// The highest unit price: 4,294,967,295.99.
inline constexpr Currency kPriceCeiling = Currency::FromScaled(42'949'672'959'900);

/// The slots of a packed product, the array in which products cross between store, editor and host.
enum PackedSlot : std::int32_t
{
    kPackedRowID,
    kPackedName,
    kPackedKey,
    kPackedPartNum,
    kPackedUnitPrice,
    kPackedNote,
    kPackedSlots
};

/// One product: the value through which every client reads and writes the catalogue.
///
/// A new Product has empty texts, price 0, row identifier 0, and is neither dirty nor new. The row identifier
/// travels only in the packed form. No text that went through a setter holds "~".
///
/// The text and price setters, Pack and Unpack are traced and pass their errors on.
class Product
{
public:
    /// Whether it was unpacked from Null.
    [[nodiscard]] bool IsNew() const noexcept { return m_bIsNew; }

    // Texts. A setter takes every "~" out. It refuses, and changes nothing, when the value as given is longer
    // than the limit (PFS_Name, PFS_Key, PFS_PartNum, PFS_Note).

    void Name(std::u16string_view sName);
    [[nodiscard]] const std::u16string& Name() const noexcept { return m_sName; }
    void Key(std::u16string_view sKey);
    [[nodiscard]] const std::u16string& Key() const noexcept { return m_sKey; }
    void PartNum(std::u16string_view sPartNum);
    [[nodiscard]] const std::u16string& PartNum() const noexcept { return m_sPartNum; }

    /// Refuses, and changes nothing, above kPriceCeiling.
    void UnitPrice(Currency curUnitPrice);
    [[nodiscard]] Currency UnitPrice() const noexcept { return m_curUnitPrice; }

    void Note(std::u16string_view sNote);
    [[nodiscard]] const std::u16string& Note() const noexcept { return m_sNote; }

    /// Whether its client has edited it. Only the client sets it; Unpack clears it.
    void Dirty(bool bDirty) noexcept { m_bDirty = bDirty; }
    [[nodiscard]] bool Dirty() const noexcept { return m_bDirty; }

    /// A key that no other product has: 32 characters, 0 to 9 and A to F; empty when the system gives none.
    [[nodiscard]] std::u16string GenerateUniqueKey() const;

    /// Takes over a packed product, each field through its setter; Null makes a new, empty product. It stops
    /// at the first field that is refused. Returns Empty.
    Variant Unpack(const Variant& vProductInfo);
    [[nodiscard]] Variant Pack() const;

    // None of these has a lower bound.

    [[nodiscard]] bool IsValidUnitPrice(Currency curUnitPrice) const noexcept;
    [[nodiscard]] bool IsValidExtPrice(Currency curExtPrice) const noexcept;
    [[nodiscard]] bool IsValidQty(Currency curQty) const noexcept;
    [[nodiscard]] bool IsValidDiscount(Currency curDiscount) const noexcept;

private:
    std::int32_t m_lRowID = 0;
    std::u16string m_sName;
    std::u16string m_sKey;
    std::u16string m_sPartNum;
    Currency m_curUnitPrice;
    std::u16string m_sNote;
    bool m_bDirty = false;
    bool m_bIsNew = false;
    Currency m_curPriceCeiling = kPriceCeiling;
};

} // namespace KestrinProductEditor
