// SPDX-License-Identifier: MIT
#include "server/windows/ProductLkpMgrServer.h"

#include "server/windows/ComText.h"
#include "server/windows/ProgressReceiver.h"

#include <KestrinProductEditor/AutomationError.h>

namespace KestrinProductEditor {

namespace {

/// Only the component's own objects answer it: it is in no library.
constexpr GUID kOwnStoreID{0x50a68b83, 0xc68d, 0x425c, {0xa7, 0x6b, 0xdf, 0xca, 0x25, 0x60, 0x3d, 0xd7}};

[[nodiscard]] bool IsTrue(VARIANT_BOOL value) noexcept
{
    return value != VARIANT_FALSE;
}

} // namespace

ProductLkpMgrServer::ProductLkpMgrServer() : DualObject(CLSID_ProductLkpMgr), m_store(ProductLkpMgr::Create())
{
}

std::shared_ptr<ProductLkpMgr> ProductLkpMgrServer::StoreOf(_ProductLkpMgr* object)
{
    if (object == nullptr)
        return nullptr;
    void* found = nullptr;
    if (FAILED(object->QueryInterface(kOwnStoreID, &found)))
        throw AutomationError(kErrTypeMismatch);
    auto* const server = static_cast<ProductLkpMgrServer*>(static_cast<_ProductLkpMgr*>(found));
    std::shared_ptr<ProductLkpMgr> store = server->m_store;
    server->Release();
    return store;
}

void* ProductLkpMgrServer::FindInterface(REFIID interfaceID) noexcept
{
    return interfaceID == kOwnStoreID ? static_cast<_ProductLkpMgr*>(this)
                                      : DualObject::FindInterface(interfaceID);
}

HRESULT ProductLkpMgrServer::put_CancelUpdate(VARIANT_BOOL bCancel)
{
    return Do([&] { m_store->CancelUpdate(IsTrue(bCancel)); });
}

HRESULT ProductLkpMgrServer::get_CancelUpdate(VARIANT_BOOL* pbCancel)
{
    return Give(pbCancel, [&] { return m_store->CancelUpdate(); });
}

HRESULT ProductLkpMgrServer::GotoNthProduct(LONG lIdx)
{
    return Do([&] { m_store->GotoNthProduct(lIdx); });
}

HRESULT ProductLkpMgrServer::GetFindMatchesByPartNum(BSTR sPartNum, VARIANT_BOOL bAll, VARIANT* pvMatches)
{
    return Give(pvMatches, [&] { return m_store->GetFindMatchesByPartNum(TextOf(sPartNum), IsTrue(bAll)); });
}

HRESULT ProductLkpMgrServer::GetFindMatchesByName(BSTR sName, VARIANT_BOOL bAll, VARIANT* pvMatches)
{
    return Give(pvMatches, [&] { return m_store->GetFindMatchesByName(TextOf(sName), IsTrue(bAll)); });
}

HRESULT ProductLkpMgrServer::PartialFindByName(BSTR sName, VARIANT_BOOL* pbFound)
{
    return Give(pbFound, [&] { return m_store->PartialFindByName(TextOf(sName)); });
}

HRESULT ProductLkpMgrServer::Update(VARIANT vProductInfo)
{
    return Do([&] { m_store->Update(FromCom(vProductInfo)); });
}

HRESULT ProductLkpMgrServer::Pack(LONG lRowID, VARIANT* pvProductInfo)
{
    return Give(pvProductInfo, [&] { return m_store->Pack(lRowID); });
}

HRESULT ProductLkpMgrServer::BinaryProductExport(BSTR sTargetPath)
{
    return Do([&] { m_store->BinaryProductExport(TextOf(sTargetPath)); });
}

HRESULT ProductLkpMgrServer::PrvCSVSetRowFields(VARIANT* vColumns, VARIANT* vRevMap, VARIANT_BOOL* bError)
{
    return Do([&] {
        if (vColumns == nullptr || vRevMap == nullptr || bError == nullptr)
            throw AutomationError(E_POINTER);
        // The store only reads the two arrays: what the caller gave is what the caller keeps.
        *bError = VARIANT_TRUE;
        Variant columns;
        Variant reverseMap;
        try {
            columns = FromCom(*vColumns);
            reverseMap = FromCom(*vRevMap);
        } catch (const AutomationError&) {
            return; // as of any column that cannot be read
        }
        bool isError = false;
        m_store->PrvCSVSetRowFields(columns, reverseMap, isError);
        *bError = isError ? VARIANT_TRUE : VARIANT_FALSE;
    });
}

HRESULT ProductLkpMgrServer::SetNotifyCallback(_IProcessProgress* objIProgress)
{
    return Do([&] {
        m_store->SetNotifyCallback(
            objIProgress == nullptr ? nullptr : std::make_shared<ProgressReceiver>(objIProgress));
    });
}

HRESULT ProductLkpMgrServer::ClearNotifyCallback()
{
    return Do([&] { m_store->ClearNotifyCallback(); });
}

HRESULT ProductLkpMgrServer::CSVProductExport(VARIANT vParams)
{
    return Do([&] { m_store->CSVProductExport(FromCom(vParams)); });
}

HRESULT ProductLkpMgrServer::CSVProductImport(VARIANT vParams, VARIANT* pvResult)
{
    return Give(pvResult, [&] {
        Variant params;
        try {
            params = FromCom(vParams);
        } catch (const AutomationError& error) {
            // As the store answers parameters that are none: it never raises.
            return Variant::ArrayWith(error.Number(), error.Description(), 0, 0);
        }
        return m_store->CSVProductImport(params);
    });
}

HRESULT ProductLkpMgrServer::BinaryProductImport(BSTR sPath)
{
    return Do([&] { m_store->BinaryProductImport(TextOf(sPath)); });
}

HRESULT ProductLkpMgrServer::get_SessionIsDirty(VARIANT_BOOL* pbDirty)
{
    return Give(pbDirty, [&] { return m_store->SessionIsDirty(); });
}

HRESULT ProductLkpMgrServer::SetDirtySyncFlags(VARIANT_BOOL bDirty)
{
    return Do([&] { m_store->SetDirtySyncFlags(IsTrue(bDirty)); });
}

HRESULT ProductLkpMgrServer::SetDirtySessionFlags(VARIANT_BOOL bDirty)
{
    return Do([&] { m_store->SetDirtySessionFlags(IsTrue(bDirty)); });
}

HRESULT ProductLkpMgrServer::get_Count(LONG* plCount)
{
    return Give(plCount, [&] { return m_store->Count(); });
}

HRESULT ProductLkpMgrServer::get_Fields(::CorvoProductFields lIdx, VARIANT* pvValue)
{
    return Give(pvValue, [&] { return m_store->Fields(lIdx); });
}

HRESULT ProductLkpMgrServer::put_Fields(::CorvoProductFields lIdx, VARIANT vValue)
{
    return Do([&] { m_store->Fields(lIdx, FromCom(vValue)); });
}

HRESULT ProductLkpMgrServer::AddNew(VARIANT vProdInfo, LONG* plRowID)
{
    return Give(plRowID, [&] { return m_store->AddNew(FromCom(vProdInfo)); });
}

HRESULT ProductLkpMgrServer::Delete(LONG lRowID)
{
    return Do([&] { m_store->Delete(lRowID); });
}

HRESULT ProductLkpMgrServer::DeleteAll()
{
    return Do([&] { m_store->DeleteAll(); });
}

HRESULT ProductLkpMgrServer::BOF(VARIANT_BOOL* pbBOF)
{
    return Give(pbBOF, [&] { return m_store->BOF(); });
}

HRESULT ProductLkpMgrServer::EOF(VARIANT_BOOL* pbEOF)
{
    return Give(pbEOF, [&] { return m_store->EOF(); });
}

HRESULT ProductLkpMgrServer::MoveLast()
{
    return Do([&] { m_store->MoveLast(); });
}

HRESULT ProductLkpMgrServer::MoveFirst()
{
    return Do([&] { m_store->MoveFirst(); });
}

HRESULT ProductLkpMgrServer::FindRowBySyncID(LONG lRowSyncID)
{
    return Do([&] { m_store->FindRowBySyncID(lRowSyncID); });
}

HRESULT ProductLkpMgrServer::get_CurrentRecordIdx(LONG* plIdx)
{
    return Give(plIdx, [&] { return m_store->CurrentRecordIdx(); });
}

HRESULT ProductLkpMgrServer::FindRow(LONG lRowID)
{
    return Do([&] { m_store->FindRow(lRowID); });
}

HRESULT ProductLkpMgrServer::MoveNext()
{
    return Do([&] { m_store->MoveNext(); });
}

HRESULT ProductLkpMgrServer::MovePrevious()
{
    return Do([&] { m_store->MovePrevious(); });
}

} // namespace KestrinProductEditor
