// SPDX-License-Identifier: MIT
#include "automation/client/AutomationFixture.h"
#include "automation/client/Receiver.h"

#include "server/windows/ComError.h"
#include "server/windows/DualObject.h"
#include "server/windows/OwnedObject.h"
#include "server/windows/ScriptReceiver.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace KestrinProductEditor {

namespace {

[[nodiscard]] Variant Taken(VARIANT& value)
{
    Variant taken = FromCom(value);
    VariantClear(&value);
    return taken;
}

} // namespace

class EarlyBound : public AutomationFixture
{
protected:
    [[nodiscard]] Variant Field(::CorvoProductFields column)
    {
        VARIANT value;
        EXPECT_EQ(m_store->get_Fields(column, &value), S_OK);
        return Taken(value);
    }
    [[nodiscard]] LONG Count()
    {
        LONG count = -1;
        EXPECT_EQ(m_store->get_Count(&count), S_OK);
        return count;
    }

    const ComPtr<_ProductLkpMgr> m_store = OpenStore();
};

TEST_F(EarlyBound, WalksTheCatalogueByName)
{
    AddProducts(*m_store.Get(), {u"Pear", u"apple", u"Quince"});
    EXPECT_EQ(Count(), 3);
    std::vector<std::u16string> names;
    VARIANT_BOOL isEnd = VARIANT_FALSE;
    ASSERT_EQ(m_store->MoveFirst(), S_OK);
    while (m_store->EOF(&isEnd) == S_OK && !isEnd) {
        names.push_back(Field(::PF_Name).String());
        ASSERT_EQ(m_store->MoveNext(), S_OK);
    }
    EXPECT_EQ(names, (std::vector<std::u16string>{u"apple", u"Pear", u"Quince"}));
    ASSERT_EQ(m_store->MovePrevious(), S_OK);
    LONG place = 0;
    ASSERT_EQ(m_store->get_CurrentRecordIdx(&place), S_OK);
    EXPECT_EQ(place, 3);
    ASSERT_EQ(m_store->GotoNthProduct(-1), S_OK);
    VARIANT_BOOL isStart = VARIANT_FALSE;
    ASSERT_EQ(m_store->BOF(&isStart), S_OK);
    EXPECT_EQ(isStart, VARIANT_TRUE);
}

TEST_F(EarlyBound, PacksEditsAndFindsAProduct)
{
    const LONG identifier = AddProducts(*m_store.Get(), {u"Lamp"}).front();
    VARIANT packed;
    ASSERT_EQ(m_store->Pack(identifier, &packed), S_OK);
    Variant product = Taken(packed);
    EXPECT_EQ(product.At(1), Variant(u"Lamp"));
    product.ArrayForWrite().At(4) = Currency::FromScaled(195000);
    ASSERT_EQ(m_store->Update(ComVariant(product)), S_OK);
    EXPECT_EQ(Field(::PF_UnitPrice), Variant(Currency::FromScaled(195000)));
    ASSERT_EQ(m_store->put_Fields(::PF_PartNum, ComVariant(Variant(u"L-1"))), S_OK);

    VARIANT matches;
    ASSERT_EQ(m_store->GetFindMatchesByPartNum(Bstr(u"l-").Get(), VARIANT_FALSE, &matches), S_OK);
    const Variant found = Taken(matches);
    ASSERT_EQ(found.Array().Dimensions(), 2);
    EXPECT_EQ(found.Array().At(1, 0), Variant(u"L-1"));
    ASSERT_EQ(m_store->GetFindMatchesByName(Bstr(u"nothing").Get(), VARIANT_FALSE, &matches), S_OK);
    EXPECT_TRUE(Taken(matches).IsNull());
    VARIANT_BOOL isFound = VARIANT_TRUE;
    ASSERT_EQ(m_store->PartialFindByName(Bstr(u"Lamp").Get(), &isFound), S_OK);
    EXPECT_EQ(isFound, VARIANT_FALSE);

    ASSERT_EQ(m_store->FindRow(identifier), S_OK);
    EXPECT_EQ(Field(::PF_RowID), Variant(std::int32_t{identifier}));
    ASSERT_EQ(m_store->FindRowBySyncID(4711), S_OK);
    VARIANT_BOOL isEnd = VARIANT_FALSE;
    ASSERT_EQ(m_store->EOF(&isEnd), S_OK);
    EXPECT_EQ(isEnd, VARIANT_TRUE);
    ASSERT_EQ(m_store->Delete(identifier), S_OK);
    EXPECT_EQ(Count(), 0);
}

TEST_F(EarlyBound, KeepsTheFlags)
{
    VARIANT_BOOL isDirty = VARIANT_TRUE;
    ASSERT_EQ(m_store->get_SessionIsDirty(&isDirty), S_OK);
    EXPECT_EQ(isDirty, VARIANT_FALSE);
    AddProducts(*m_store.Get(), {u"Lamp"});
    ASSERT_EQ(m_store->get_SessionIsDirty(&isDirty), S_OK);
    EXPECT_EQ(isDirty, VARIANT_TRUE);
    ASSERT_EQ(m_store->MoveFirst(), S_OK);
    ASSERT_EQ(m_store->SetDirtySyncFlags(VARIANT_FALSE), S_OK);
    ASSERT_EQ(m_store->MoveFirst(), S_OK);
    ASSERT_EQ(m_store->SetDirtySessionFlags(VARIANT_FALSE), S_OK);
    ASSERT_EQ(m_store->MoveFirst(), S_OK);
    EXPECT_EQ(Field(::PF_DirtySync), Variant(false));
    EXPECT_EQ(Field(::PF_DirtySession), Variant(false));
    VARIANT_BOOL isCancelled = VARIANT_FALSE;
    ASSERT_EQ(m_store->get_CancelUpdate(&isCancelled), S_OK);
    EXPECT_EQ(isCancelled, VARIANT_TRUE);
}

TEST_F(EarlyBound, ImportsAndExportsWithAReceiver)
{
    Folder().Write("list.csv", "Name,Price\r\nLamp,19.50\r\nDesk,120\r\n");
    std::vector<Variant> heard;
    const ComPtr<_IProcessProgress> receiver = MakeReceiver([&](const Variant& progress) {
        heard.push_back(progress);
        return S_OK;
    });
    ASSERT_EQ(m_store->SetNotifyCallback(receiver.Get()), S_OK);
    VARIANT result;
    ASSERT_EQ(
        m_store->CSVProductImport(
            ComVariant(Variant::ArrayWith(Folder().File("list.csv"), Variant::ArrayWith(0, -1, 1, -1), 1, 0)),
            &result),
        S_OK);
    EXPECT_EQ(Taken(result), Variant::ArrayWith(0, u"", 2, 0));
    ASSERT_EQ(heard.size(), 2u);
    EXPECT_EQ(heard[1].At(0).GetKind(), Variant::Kind::Double);
    EXPECT_EQ(heard[1].At(1), Variant(1));

    heard.clear();
    ASSERT_EQ(m_store->CSVProductExport(ComVariant(Variant::ArrayWith(Folder().File("out.csv")))), S_OK);
    EXPECT_EQ(heard.size(), 2u);
    EXPECT_NE(Folder().Read("out.csv").find("\"Desk\""), std::string::npos);
    ASSERT_EQ(m_store->ClearNotifyCallback(), S_OK);

    ASSERT_EQ(m_store->BinaryProductExport(Bstr(Folder().File("all.cpd")).Get()), S_OK);
    ASSERT_EQ(m_store->DeleteAll(), S_OK);
    ASSERT_EQ(m_store->BinaryProductImport(Bstr(Folder().File("all.cpd")).Get()), S_OK);
    EXPECT_EQ(Count(), 2);
    ASSERT_EQ(m_store->put_CancelUpdate(VARIANT_TRUE), S_OK);
}

TEST_F(EarlyBound, EndsAnExportWithTheErrorOfItsReceiver)
{
    AddProducts(*m_store.Get(), {u"Lamp"});
    const ComPtr<_IProcessProgress> receiver = MakeReceiver(
        [](const Variant&) { return Report(AutomationError(1234, u"Host", u"Enough."), IID_NULL); });
    ASSERT_EQ(m_store->SetNotifyCallback(receiver.Get()), S_OK);
    EXPECT_EQ(m_store->CSVProductExport(ComVariant(Variant::ArrayWith(Folder().File("out.csv")))),
              StatusOf(1234));
    const LeftError left = TakeLeftError();
    EXPECT_EQ(left.source, u"Host");
    EXPECT_EQ(left.description, u"Enough.");
    ASSERT_EQ(m_store->ClearNotifyCallback(), S_OK);
}

TEST_F(EarlyBound, ImportsInSpiteOfAFailingReceiver)
{
    Folder().Write("list.csv", "Lamp\r\nDesk\r\n");
    const ComPtr<_IProcessProgress> receiver = MakeReceiver([](const Variant&) { return E_FAIL; });
    ASSERT_EQ(m_store->SetNotifyCallback(receiver.Get()), S_OK);
    VARIANT result;
    ASSERT_EQ(
        m_store->CSVProductImport(ComVariant(Variant::ArrayWith(Folder().File("list.csv"),
                                                                Variant::ArrayWith(0, -1, -1, -1), 0, 0)),
                                  &result),
        S_OK);
    EXPECT_EQ(Taken(result), Variant::ArrayWith(0, u"", 2, 0));
    ASSERT_EQ(m_store->SetNotifyCallback(nullptr), S_OK);
}

TEST_F(EarlyBound, AddsAProductFromTheColumnsOfALine)
{
    VARIANT columns = ComVariant(Variant::ArrayWith(u"Lamp", u"19.50")).Detach();
    VARIANT map = ComVariant(Variant::ArrayWith(0, -1, 1, -1)).Detach();
    VARIANT_BOOL isError = VARIANT_TRUE;
    ASSERT_EQ(m_store->PrvCSVSetRowFields(&columns, &map, &isError), S_OK);
    EXPECT_EQ(isError, VARIANT_FALSE);
    EXPECT_EQ(Count(), 1);
    VARIANT nothing{};
    ASSERT_EQ(m_store->PrvCSVSetRowFields(&columns, &nothing, &isError), S_OK);
    EXPECT_EQ(isError, VARIANT_TRUE);
    EXPECT_EQ(Taken(columns), Variant::ArrayWith(u"Lamp", u"19.50"));
    EXPECT_EQ(Taken(map), Variant::ArrayWith(0, -1, 1, -1));
}

TEST_F(EarlyBound, TellsNumberSourceAndDescriptionOfAnError)
{
    VARIANT product;
    EXPECT_EQ(m_store->Pack(99, &product), kErrComponent);
    const LeftError left = TakeLeftError();
    EXPECT_EQ(left.description, u"Product not found");
    EXPECT_EQ(left.source, u"KestrinProductEditor.ProductLkpMgr::Pack");
    EXPECT_EQ(product.vt, VT_EMPTY);

    EXPECT_EQ(m_store->MoveFirst(), StatusOf(kErrNoCurrentRecord));
    VARIANT value;
    EXPECT_EQ(m_store->get_Fields(::PF_Name, &value), StatusOf(kErrNoCurrentRecord));
    AddProducts(*m_store.Get(), {u"Lamp"});
    for (const LONG index : {LONG{10}, LONG{-1}, LONG{2147483647}})
        EXPECT_EQ(m_store->get_Fields(static_cast<::CorvoProductFields>(index), &value),
                  StatusOf(kErrItemNotFound));
    EXPECT_EQ(m_store->Update(ComVariant(Variant(5))), StatusOf(kErrTypeMismatch));
    EXPECT_EQ(m_store->Update(ComVariant(Variant::ArrayWith(2))), StatusOf(kErrSubscriptOutOfRange));
    ASSERT_EQ(m_store->MoveFirst(), S_OK);
    EXPECT_EQ(m_store->put_Fields(::PF_Name, ComVariant(Variant(std::u16string(256, u'x')))),
              kErrMultipleStep);

    ComPtr<ISupportErrorInfo> supports;
    ASSERT_EQ(m_store.As(&supports), S_OK);
    EXPECT_EQ(supports->InterfaceSupportsErrorInfo(__uuidof(_ProductLkpMgr)), S_OK);
    EXPECT_EQ(supports->InterfaceSupportsErrorInfo(IID_IUnknown), S_FALSE);
}

TEST_F(EarlyBound, TellsNothingOfAnEarlierFailure)
{
    VARIANT product;
    EXPECT_EQ(m_store->Pack(99, &product), kErrComponent);
    VARIANT date{};
    date.date = 1e10;
    date.vt = VT_DATE;
    LONG identifier = 0;
    EXPECT_EQ(m_store->AddNew(date, &identifier), StatusOf(kErrInvalidProcedureCall));
    LeftError left = TakeLeftError();
    EXPECT_EQ(left.source, u"");
    EXPECT_EQ(left.description, AutomationError::TextOf(kErrInvalidProcedureCall));

    EXPECT_EQ(m_store->Pack(99, &product), kErrComponent);
    EXPECT_EQ(m_store->get_Count(nullptr), E_POINTER);
    EXPECT_NE(TakeLeftError().description, u"Product not found");
}

TEST_F(EarlyBound, AnswersParametersThatAreNoneAsTheStoreDoes)
{
    SAFEARRAYBOUND fromOne{4, 1};
    ComVariant shifted;
    shifted.parray = SafeArrayCreate(VT_I4, 1, &fromOne);
    shifted.vt = VT_ARRAY | VT_I4;
    VARIANT nothing{};
    nothing.vt = VT_DISPATCH;

    VARIANT result;
    ASSERT_EQ(m_store->CSVProductImport(shifted, &result), S_OK);
    EXPECT_EQ(Taken(result).At(0), Variant(std::int32_t{kErrSubscriptOutOfRange}));
    ASSERT_EQ(m_store->CSVProductImport(nothing, &result), S_OK);
    EXPECT_EQ(Taken(result).At(0), Variant(std::int32_t{kErrTypeMismatch}));

    ComVariant columns(Variant::ArrayWith(u"Lamp"));
    ComVariant map(Variant::ArrayWith(0, -1, -1, -1));
    VARIANT_BOOL isError = VARIANT_FALSE;
    ASSERT_EQ(m_store->PrvCSVSetRowFields(&shifted, &map, &isError), S_OK);
    EXPECT_EQ(isError, VARIANT_TRUE);
    isError = VARIANT_FALSE;
    ASSERT_EQ(m_store->PrvCSVSetRowFields(&columns, &nothing, &isError), S_OK);
    EXPECT_EQ(isError, VARIANT_TRUE);
    EXPECT_EQ(Count(), 0);
}

TEST_F(EarlyBound, RefusesNoPlaceForAResult)
{
    EXPECT_EQ(m_store->get_Count(nullptr), E_POINTER);
    EXPECT_EQ(m_store->Pack(1, nullptr), E_POINTER);
    EXPECT_EQ(m_store->PrvCSVSetRowFields(nullptr, nullptr, nullptr), E_POINTER);
}

TEST_F(EarlyBound, TakesTheStoreOfALauncherByReference)
{
    const auto launcher = Create<_ProductImportDlg>(L"KestrinProductEditor.ProductImportDlg");
    _ProductLkpMgr* store = m_store.Get();
    EXPECT_EQ(launcher->Init(&store), S_OK);
    EXPECT_EQ(store, m_store.Get());
    store = nullptr;
    EXPECT_EQ(launcher->Init(&store), S_OK);
    EXPECT_EQ(launcher->Init(nullptr), S_OK);
}

TEST_F(EarlyBound, ShowsNothingForTheLookupsEditor)
{
    const auto launcher = Create<_ProdLkpEditDlg>(L"KestrinProductEditor.ProdLkpEditDlg");
    EXPECT_EQ(launcher->Show(ComVariant()), S_OK);
    EXPECT_EQ(launcher->Show(ComVariant(Variant::ArrayWith(1, u"x"))), S_OK);
}

TEST_F(EarlyBound, WritesTheFileWhenTheStoreIsReleased)
{
    {
        const ComPtr<_ProductLkpMgr> store = Create<_ProductLkpMgr>(kStore);
        AddProducts(*store.Get(), {u"Lamp"});
    }
    EXPECT_EQ(Folder().Names(), (std::vector<std::string>{"Data"}));
    {
        const ComPtr<_ProductLkpMgr> store = OpenStore();
        AddProducts(*store.Get(), {u"Desk"});
    }
    const ComPtr<_ProductLkpMgr> store = OpenStore();
    LONG count = 0;
    ASSERT_EQ(store->get_Count(&count), S_OK);
    EXPECT_EQ(count, 1);
}

} // namespace KestrinProductEditor
