// SPDX-License-Identifier: MIT
#pragma once

#include "server/windows/DualObject.h"

#include <KestrinProductEditor/ProductLkpMgr.h>

#include <kstnedit.h>

#include <memory>

namespace KestrinProductEditor {

template<>
struct LateMembers<_ProductLkpMgr>
{
    static constexpr LateMember<_ProductLkpMgr> kAll[] = {
        PropertyLet<&_ProductLkpMgr::put_CancelUpdate>(1),
        PropertyGet<&_ProductLkpMgr::get_CancelUpdate>(1),
        Sub<&_ProductLkpMgr::GotoNthProduct>(3),
        Function<&_ProductLkpMgr::GetFindMatchesByPartNum>(4),
        Function<&_ProductLkpMgr::GetFindMatchesByName>(5),
        Function<&_ProductLkpMgr::PartialFindByName>(6),
        Sub<&_ProductLkpMgr::Update>(7),
        Function<&_ProductLkpMgr::Pack>(8),
        Sub<&_ProductLkpMgr::BinaryProductExport>(9),
        Sub<&_ProductLkpMgr::PrvCSVSetRowFields>(10),
        Sub<&_ProductLkpMgr::SetNotifyCallback>(11),
        Sub<&_ProductLkpMgr::ClearNotifyCallback>(12),
        Sub<&_ProductLkpMgr::CSVProductExport>(13),
        Function<&_ProductLkpMgr::CSVProductImport>(14),
        Sub<&_ProductLkpMgr::BinaryProductImport>(15),
        PropertyGet<&_ProductLkpMgr::get_SessionIsDirty>(16),
        Sub<&_ProductLkpMgr::SetDirtySyncFlags>(17),
        Sub<&_ProductLkpMgr::SetDirtySessionFlags>(18),
        PropertyGet<&_ProductLkpMgr::get_Count>(19),
        PropertyGet<&_ProductLkpMgr::get_Fields>(20),
        PropertyLet<&_ProductLkpMgr::put_Fields>(20),
        Function<&_ProductLkpMgr::AddNew>(22),
        Sub<&_ProductLkpMgr::Delete>(23),
        Sub<&_ProductLkpMgr::DeleteAll>(24),
        Function<&_ProductLkpMgr::BOF>(25),
        Function<&_ProductLkpMgr::EOF>(26),
        Sub<&_ProductLkpMgr::MoveLast>(27),
        Sub<&_ProductLkpMgr::MoveFirst>(28),
        Sub<&_ProductLkpMgr::FindRowBySyncID>(29),
        PropertyGet<&_ProductLkpMgr::get_CurrentRecordIdx>(30),
        Sub<&_ProductLkpMgr::FindRow>(31),
        Sub<&_ProductLkpMgr::MoveNext>(32),
        Sub<&_ProductLkpMgr::MovePrevious>(33),
    };
};

/// The catalogue store for automation clients: each member hands its arguments on.
class ProductLkpMgrServer final : public DualObject<_ProductLkpMgr>
{
public:
    ProductLkpMgrServer();

    /// The store behind an object that a client gives us. Null for null; error 13 when the object is none of
    /// this component's, or another apartment's.
    [[nodiscard]] static std::shared_ptr<ProductLkpMgr> StoreOf(_ProductLkpMgr* object);

    HRESULT STDMETHODCALLTYPE put_CancelUpdate(VARIANT_BOOL bCancel) override;
    HRESULT STDMETHODCALLTYPE get_CancelUpdate(VARIANT_BOOL* pbCancel) override;
    HRESULT STDMETHODCALLTYPE GotoNthProduct(LONG lIdx) override;
    HRESULT STDMETHODCALLTYPE GetFindMatchesByPartNum(BSTR sPartNum, VARIANT_BOOL bAll,
                                                      VARIANT* pvMatches) override;
    HRESULT STDMETHODCALLTYPE GetFindMatchesByName(BSTR sName, VARIANT_BOOL bAll,
                                                   VARIANT* pvMatches) override;
    HRESULT STDMETHODCALLTYPE PartialFindByName(BSTR sName, VARIANT_BOOL* pbFound) override;
    HRESULT STDMETHODCALLTYPE Update(VARIANT vProductInfo) override;
    HRESULT STDMETHODCALLTYPE Pack(LONG lRowID, VARIANT* pvProductInfo) override;
    HRESULT STDMETHODCALLTYPE BinaryProductExport(BSTR sTargetPath) override;
    HRESULT STDMETHODCALLTYPE PrvCSVSetRowFields(VARIANT* vColumns, VARIANT* vRevMap,
                                                 VARIANT_BOOL* bError) override;
    HRESULT STDMETHODCALLTYPE SetNotifyCallback(_IProcessProgress* objIProgress) override;
    HRESULT STDMETHODCALLTYPE ClearNotifyCallback() override;
    HRESULT STDMETHODCALLTYPE CSVProductExport(VARIANT vParams) override;
    HRESULT STDMETHODCALLTYPE CSVProductImport(VARIANT vParams, VARIANT* pvResult) override;
    HRESULT STDMETHODCALLTYPE BinaryProductImport(BSTR sPath) override;
    HRESULT STDMETHODCALLTYPE get_SessionIsDirty(VARIANT_BOOL* pbDirty) override;
    HRESULT STDMETHODCALLTYPE SetDirtySyncFlags(VARIANT_BOOL bDirty) override;
    HRESULT STDMETHODCALLTYPE SetDirtySessionFlags(VARIANT_BOOL bDirty) override;
    HRESULT STDMETHODCALLTYPE get_Count(LONG* plCount) override;
    HRESULT STDMETHODCALLTYPE get_Fields(::CorvoProductFields lIdx, VARIANT* pvValue) override;
    HRESULT STDMETHODCALLTYPE put_Fields(::CorvoProductFields lIdx, VARIANT vValue) override;
    HRESULT STDMETHODCALLTYPE AddNew(VARIANT vProdInfo, LONG* plRowID) override;
    HRESULT STDMETHODCALLTYPE Delete(LONG lRowID) override;
    HRESULT STDMETHODCALLTYPE DeleteAll() override;
    HRESULT STDMETHODCALLTYPE BOF(VARIANT_BOOL* pbBOF) override;
    HRESULT STDMETHODCALLTYPE EOF(VARIANT_BOOL* pbEOF) override;
    HRESULT STDMETHODCALLTYPE MoveLast() override;
    HRESULT STDMETHODCALLTYPE MoveFirst() override;
    HRESULT STDMETHODCALLTYPE FindRowBySyncID(LONG lRowSyncID) override;
    HRESULT STDMETHODCALLTYPE get_CurrentRecordIdx(LONG* plIdx) override;
    HRESULT STDMETHODCALLTYPE FindRow(LONG lRowID) override;
    HRESULT STDMETHODCALLTYPE MoveNext() override;
    HRESULT STDMETHODCALLTYPE MovePrevious() override;

protected:
    [[nodiscard]] void* FindInterface(REFIID interfaceID) noexcept override;

private:
    const std::shared_ptr<ProductLkpMgr> m_store;
};

} // namespace KestrinProductEditor
