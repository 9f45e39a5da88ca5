// SPDX-License-Identifier: MIT
#include "store/ProductRows.h"

#include "platform/Text.h"
#include "store/ProductLkpMgrImpl.h"

#include <cstddef>
#include <span>
#include <utility>

namespace KestrinProductEditor {

std::int32_t ProductRows::Count() const
{
    return static_cast<std::int32_t>(m_store.m_impl->m_table.Count());
}

std::uint64_t ProductRows::ChangeStamp() const
{
    return m_store.m_impl->m_table.ChangeStamp();
}

std::vector<std::int32_t> ProductRows::RowIDs() const
{
    // Rows that follow each other in name order lie anywhere in memory.
    constexpr std::size_t kRecordsAhead = 24;
    Recordset& table = m_store.m_impl->m_table;
    const RowOrder& order = table.Order();
    const RowStore& store = table.Rows();
    std::vector<std::int32_t> rowIDs;
    rowIDs.reserve(order.Size());
    for (std::size_t ordinal = 0; ordinal < order.BlockCount(); ++ordinal) {
        const std::span<const RowNumber> rows = order.BlockAt(ordinal);
        for (std::size_t i = 0; i < rows.size(); ++i) {
            if (i + kRecordsAhead < rows.size())
                store.PrefetchRecord(rows[i + kRecordsAhead]);
            rowIDs.push_back(store.Long(rows[i], PF_RowID));
        }
    }
    return rowIDs;
}

std::int32_t ProductRows::PlaceOf(std::int32_t rowID) const
{
    Recordset& table = m_store.m_impl->m_table;
    table.Commit();
    const RowOrder& order = table.Order();
    const RowNumber row = table.Find(PF_RowID, rowID);
    return row == kNoRow ? -1 : static_cast<std::int32_t>(order.PlaceOf(row));
}

std::int32_t ProductRows::FirstNamed(std::u16string_view prefix) const
{
    Recordset& table = m_store.m_impl->m_table;
    const RowNumber row = table.FindFirstWithPrefix(PF_Name, ToUtf8(prefix));
    return row == kNoRow ? -1 : static_cast<std::int32_t>(table.Order().PlaceOf(row));
}

void ProductRows::BeforeNextChange(std::function<void()> notice) const
{
    m_store.m_impl->m_table.BeforeNextChange(std::move(notice));
}

} // namespace KestrinProductEditor
