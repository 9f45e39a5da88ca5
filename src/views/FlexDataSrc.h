// SPDX-License-Identifier: MIT
#pragma once

#include <KestrinProductEditor/ProductLkpMgr.h>

#include "platform/ui/Grid.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace KestrinProductEditor {

/// Lets a grid read the catalogue store in place: name, part number, unit price, and the row identifier as a
/// fourth field. No row is copied; a cell costs one positioning and one field, and leaves that row current in
/// the store.
///
/// Nothing here raises: a failing store gives "" and 0. Without a store everything is empty.
class FlexDataSrc final : public IVSFlexDataSource, public IRowPlaces
{
public:
    FlexDataSrc() = default;
    FlexDataSrc(const FlexDataSrc&) = delete;
    FlexDataSrc& operator=(const FlexDataSrc&) = delete;
    ~FlexDataSrc() override;

    /// Shows that store, in place of an earlier one.
    void SetDataSource(const std::shared_ptr<ProductLkpMgr>& objDataSource);

    // IVSFlexDataSource

    /// Always 4.
    [[nodiscard]] std::int32_t GetFieldCount() override;
    [[nodiscard]] std::int32_t GetRecordCount() override;
    [[nodiscard]] std::u16string GetFieldName(std::int32_t Field) override;
    [[nodiscard]] std::u16string GetData(std::int32_t Field, std::int32_t Record) override;
    /// Refuses edits: does nothing.
    void SetData(std::int32_t Field, std::int32_t Record, std::u16string_view newData) override;

    // IRowPlaces. The order of the records is noted by the first change after Settle, before it happens, at 4
    // bytes a product; without a change nothing is noted.

    [[nodiscard]] std::uint64_t ChangeStamp() override;
    void Settle() override;
    [[nodiscard]] std::int32_t RecordNow(std::int32_t record) override;
    [[nodiscard]] std::int32_t RecordNamed(std::u16string_view prefix) override;

private:
    /// The records as they stood at the last Settle.
    struct Places
    {
        bool isNoted = false;             // else nothing has moved since
        std::vector<std::int32_t> rowIDs; // empty when there was no memory for them
    };

    std::shared_ptr<ProductLkpMgr> m_objDataSource;
    std::uint64_t m_changesBefore = 0; // with the stores before this one
    std::shared_ptr<Places> m_places;
};

} // namespace KestrinProductEditor
