// SPDX-License-Identifier: MIT
#include <KestrinProductEditor/ProductLkpMgr.h>

#include "frame/Traced.h"
#include "frame/modInit.h"
#include "store/ProductLkpMgrImpl.h"

#include <utility>

namespace KestrinProductEditor {

// Every member that can call out (to the trace, to a receiver) holds its object while it runs.

ProductLkpMgr::ProductLkpMgr() = default;

std::shared_ptr<ProductLkpMgr> ProductLkpMgr::Create()
{
    modInit::EnsureMain();
    std::shared_ptr<ProductLkpMgr> store(new ProductLkpMgr);
    // A store has its Impl, and with it something to terminate, once all of this has ended well.
    store->m_impl = Traced(ErrorContext::ProductLkpMgr_Class_Initialize, [] {
        auto impl = std::make_unique<Impl>();
        impl->Class_Initialize();
        return impl;
    });
    return store;
}

ProductLkpMgr::~ProductLkpMgr()
{
    if (m_impl)
        m_impl->Class_Terminate();
}

void ProductLkpMgr::CancelUpdate(bool bCancel) noexcept
{
    m_impl->bCancelUpdate = bCancel;
}

bool ProductLkpMgr::CancelUpdate() const noexcept
{
    return m_impl->bCancelUpdate;
}

void ProductLkpMgr::GotoNthProduct(std::int32_t lIdx)
{
    m_impl->GotoNthProduct(lIdx);
}

Variant ProductLkpMgr::GetFindMatchesByPartNum(std::u16string_view sPartNum, bool bAll)
{
    return m_impl->GetFindMatches(PF_PartNum, sPartNum, bAll);
}

Variant ProductLkpMgr::GetFindMatchesByName(std::u16string_view sName, bool bAll)
{
    return m_impl->GetFindMatches(PF_Name, sName, bAll);
}

bool ProductLkpMgr::PartialFindByName(std::u16string_view /*sName*/) noexcept
{
    return false;
}

void ProductLkpMgr::Update(const Variant& vProductInfo)
{
    const auto self = shared_from_this();
    m_impl->Update(vProductInfo);
}

Variant ProductLkpMgr::Pack(std::int32_t lRowID)
{
    const auto self = shared_from_this();
    return m_impl->Pack(lRowID);
}

void ProductLkpMgr::BinaryProductExport(std::u16string_view sTargetPath)
{
    const auto self = shared_from_this();
    m_impl->BinaryProductExport(sTargetPath);
}

void ProductLkpMgr::PrvCSVSetRowFields(Variant& vColumns, Variant& vRevMap, bool& bError)
{
    const auto self = shared_from_this();
    m_impl->PrvCSVSetRowFields(vColumns, vRevMap, bError);
}

void ProductLkpMgr::SetNotifyCallback(std::shared_ptr<IProcessProgress> objIProgress) noexcept
{
    m_impl->SetNotifyCallback(std::move(objIProgress));
}

void ProductLkpMgr::ClearNotifyCallback() noexcept
{
    m_impl->SetNotifyCallback(nullptr);
}

void ProductLkpMgr::CSVProductExport(const Variant& vParams)
{
    const auto self = shared_from_this();
    m_impl->CSVProductExport(vParams);
}

Variant ProductLkpMgr::CSVProductImport(const Variant& vParams)
{
    const auto self = shared_from_this();
    return m_impl->CSVProductImport(vParams);
}

void ProductLkpMgr::BinaryProductImport(std::u16string_view sPath)
{
    const auto self = shared_from_this();
    m_impl->BinaryProductImport(sPath);
}

bool ProductLkpMgr::SessionIsDirty() const noexcept
{
    return m_impl->SessionIsDirty();
}

void ProductLkpMgr::SetDirtySyncFlags(bool bDirty)
{
    const auto self = shared_from_this();
    m_impl->SetDirtySyncFlags(bDirty);
}

void ProductLkpMgr::SetDirtySessionFlags(bool bDirty)
{
    const auto self = shared_from_this();
    m_impl->SetDirtySessionFlags(bDirty);
}

std::int32_t ProductLkpMgr::Count()
{
    const auto self = shared_from_this();
    return m_impl->Count();
}

Variant ProductLkpMgr::Fields(std::int32_t lIdx)
{
    const auto self = shared_from_this();
    return m_impl->GetFields(lIdx);
}

void ProductLkpMgr::Fields(std::int32_t lIdx, const Variant& vValue)
{
    const auto self = shared_from_this();
    m_impl->LetFields(lIdx, vValue);
}

std::int32_t ProductLkpMgr::AddNew(const Variant& vProdInfo)
{
    const auto self = shared_from_this();
    return m_impl->AddNew(vProdInfo);
}

void ProductLkpMgr::Delete(std::int32_t lRowID)
{
    const auto self = shared_from_this();
    m_impl->Delete(lRowID);
}

void ProductLkpMgr::DeleteAll()
{
    const auto self = shared_from_this();
    m_impl->DeleteAll();
}

bool ProductLkpMgr::BOF()
{
    const auto self = shared_from_this();
    return m_impl->IsBOF();
}

bool ProductLkpMgr::EOF()
{
    const auto self = shared_from_this();
    return m_impl->IsEOF();
}

void ProductLkpMgr::MoveLast()
{
    const auto self = shared_from_this();
    m_impl->MoveLast();
}

void ProductLkpMgr::MoveFirst()
{
    const auto self = shared_from_this();
    m_impl->MoveFirst();
}

void ProductLkpMgr::FindRowBySyncID(std::int32_t lRowSyncID)
{
    const auto self = shared_from_this();
    m_impl->FindRowBySyncID(lRowSyncID);
}

std::int32_t ProductLkpMgr::CurrentRecordIdx()
{
    return m_impl->CurrentRecordIdx();
}

void ProductLkpMgr::FindRow(std::int32_t lRowID)
{
    const auto self = shared_from_this();
    m_impl->FindRow(lRowID);
}

void ProductLkpMgr::MoveNext()
{
    const auto self = shared_from_this();
    m_impl->MoveNext();
}

void ProductLkpMgr::MovePrevious()
{
    const auto self = shared_from_this();
    m_impl->MovePrevious();
}

} // namespace KestrinProductEditor
