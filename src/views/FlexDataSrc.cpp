// SPDX-License-Identifier: MIT
#include "views/FlexDataSrc.h"

#include "frame/SkipFailure.h"
#include "frame/modResourceDefs.h"
#include "frame/modResourceUtils.h"
#include "store/ProductRows.h"
#include "util/modConversion.h"

#include <KestrinProductEditor/CorvoProductFields.h>

#include <cstddef>
#include <optional>
#include <utility>

namespace KestrinProductEditor {

namespace {

constexpr std::int32_t kFields = 4;

[[nodiscard]] std::optional<CorvoProductFields> ColumnOf(std::int32_t Field)
{
    constexpr CorvoProductFields kColumns[kFields] = {PF_Name, PF_PartNum, PF_UnitPrice, PF_RowID};
    if (Field < 0 || Field >= kFields)
        return std::nullopt;
    return kColumns[Field];
}

} // namespace

FlexDataSrc::~FlexDataSrc() = default;

void FlexDataSrc::SetDataSource(const std::shared_ptr<ProductLkpMgr>& objDataSource)
{
    // Two stores may have come to the same number of changes.
    m_changesBefore = ChangeStamp() + 1;
    // In this order: the earlier store may go here, and its last changes need not be noted.
    m_places.reset();
    m_objDataSource = objDataSource;
}

std::int32_t FlexDataSrc::GetFieldCount()
{
    return kFields;
}

std::int32_t FlexDataSrc::GetRecordCount()
{
    std::int32_t count = 0;
    if (m_objDataSource != nullptr)
        SkipFailure([&] { count = m_objDataSource->Count(); });
    return count;
}

std::u16string FlexDataSrc::GetFieldName(std::int32_t Field)
{
    std::u16string name;
    SkipFailure([&] {
        switch (Field) {
        case 0:
            name = modResourceUtils::GetResString(modResourceDefs::kColumnProductName);
            break;
        case 1:
            name = modResourceUtils::GetResString(modResourceDefs::kColumnPartNum);
            break;
        case 2:
            name = modResourceUtils::GetResString(modResourceDefs::kColumnUnitPrice);
            break;
        default:
            break;
        }
    });
    return name;
}

std::u16string FlexDataSrc::GetData(std::int32_t Field, std::int32_t Record)
{
    std::u16string text;
    if (m_objDataSource == nullptr)
        return text;
    SkipFailure([&] { m_objDataSource->GotoNthProduct(Record); });
    if (const std::optional<CorvoProductFields> column = ColumnOf(Field))
        SkipFailure([&] { text = modConversion::ToText(m_objDataSource->Fields(*column)); });
    return text;
}

void FlexDataSrc::SetData(std::int32_t /*Field*/, std::int32_t /*Record*/, std::u16string_view /*newData*/) {}

std::uint64_t FlexDataSrc::ChangeStamp()
{
    return m_changesBefore + (m_objDataSource != nullptr ? ProductRows(*m_objDataSource).ChangeStamp() : 0);
}

void FlexDataSrc::Settle()
{
    if (m_objDataSource == nullptr)
        return;
    // A notice that is still under way has nothing to tell: no row has moved.
    if (m_places != nullptr && !m_places->isNoted)
        return;
    m_places.reset();
    SkipFailure([&] {
        auto places = std::make_shared<Places>();
        ProductLkpMgr& store = *m_objDataSource;
        ProductRows(store).BeforeNextChange([&store, noted = std::weak_ptr(places)] {
            if (const std::shared_ptr<Places> kept = noted.lock()) {
                kept->isNoted = true;
                SkipFailure([&] { kept->rowIDs = ProductRows(store).RowIDs(); });
            }
        });
        m_places = std::move(places);
    });
}

std::int32_t FlexDataSrc::RecordNow(std::int32_t record)
{
    if (m_objDataSource == nullptr || m_places == nullptr || record < 0)
        return -1;
    std::int32_t now = -1;
    SkipFailure([&] {
        if (!m_places->isNoted)
            now = record < ProductRows(*m_objDataSource).Count() ? record : -1;
        else if (static_cast<std::size_t>(record) < m_places->rowIDs.size())
            now = ProductRows(*m_objDataSource).PlaceOf(m_places->rowIDs[static_cast<std::size_t>(record)]);
    });
    return now;
}

std::int32_t FlexDataSrc::RecordNamed(std::u16string_view prefix)
{
    std::int32_t record = -1;
    if (m_objDataSource != nullptr)
        SkipFailure([&] { record = ProductRows(*m_objDataSource).FirstNamed(prefix); });
    return record;
}

} // namespace KestrinProductEditor
