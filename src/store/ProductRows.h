// SPDX-License-Identifier: MIT
#pragma once

#include <KestrinProductEditor/ProductLkpMgr.h>

#include <cstdint>
#include <functional>
#include <string_view>
#include <vector>

namespace KestrinProductEditor {

/// The rows of a store as the component's own lists see them: places in row order, counted from 0, without
/// the shared cursor and untraced. It must not outlive the store.
class ProductRows
{
public:
    explicit ProductRows(ProductLkpMgr& store) : m_store(store) {}

    [[nodiscard]] std::int32_t Count() const;
    /// Another number whenever anything in the table was changed.
    [[nodiscard]] std::uint64_t ChangeStamp() const;
    /// The row identifiers in row order.
    [[nodiscard]] std::vector<std::int32_t> RowIDs() const;
    /// The place of the first row with that identifier; -1 when none has it. A row whose new name has not
    /// moved it yet moves now, as when the cursor leaves it; so it does for the next two.
    [[nodiscard]] std::int32_t PlaceOf(std::int32_t rowID) const;
    /// The place of the first row whose name begins with `prefix`, letter case aside; -1 for none.
    [[nodiscard]] std::int32_t FirstNamed(std::u16string_view prefix) const;
    /// Calls `notice` once, right before the next change of which rows there are, of their order, names or
    /// row identifiers (of other columns, too, in part). It may read and ask anew, and must not throw.
    /// Whoever may go before the store sees to it that the notice finds nobody then.
    void BeforeNextChange(std::function<void()> notice) const;

private:
    ProductLkpMgr& m_store;
};

} // namespace KestrinProductEditor
