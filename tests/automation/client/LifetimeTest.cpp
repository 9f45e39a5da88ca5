// SPDX-License-Identifier: MIT
#include "automation/client/AutomationFixture.h"
#include "automation/client/Receiver.h"

#include <psapi.h>

#include <cstddef>
#include <string>
#include <thread>
#include <vector>

namespace KestrinProductEditor {

namespace {

/// The component's own answer to whether it may leave the process.
[[nodiscard]] HRESULT MayUnload()
{
    const HMODULE module = GetModuleHandleW(L"kstnedit.dll");
    if (module == nullptr)
        return E_UNEXPECTED;
    const auto ask = reinterpret_cast<HRESULT(STDMETHODCALLTYPE*)()>(
        reinterpret_cast<void*>(GetProcAddress(module, "DllCanUnloadNow")));
    return ask();
}

[[nodiscard]] ComPtr<IClassFactory> FactoryOf(REFCLSID classID)
{
    ComPtr<IClassFactory> factory;
    EXPECT_EQ(CoGetClassObject(classID, CLSCTX_INPROC_SERVER, nullptr, IID_PPV_ARGS(factory.GetAddressOf())),
              S_OK);
    return factory;
}

[[nodiscard]] std::size_t PrivateBytes()
{
    PROCESS_MEMORY_COUNTERS counters{};
    counters.cb = sizeof(counters);
    EXPECT_TRUE(GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof(counters)));
    return counters.PagefileUsage;
}

constexpr const wchar_t* kLaunchers[] = {
    L"KestrinProductEditor.ProductEditorDlg", L"KestrinProductEditor.ProdLkpEditDlg",
    L"KestrinProductEditor.ProductImportDlg", L"KestrinProductEditor.ProductExportDlg"};

} // namespace

class Lifetime : public AutomationFixture
{
};

TEST_F(Lifetime, MayUnloadExactlyWhenNothingLives)
{
    ComPtr<_ProductLkpMgr> store = OpenStore();
    EXPECT_EQ(MayUnload(), S_FALSE);
    store.Reset();
    EXPECT_EQ(MayUnload(), S_OK);

    ComPtr<IClassFactory> factory = FactoryOf(CLSID_ProductLkpMgr);
    EXPECT_EQ(MayUnload(), S_FALSE);
    ASSERT_EQ(factory->LockServer(TRUE), S_OK);
    ASSERT_EQ(factory->LockServer(TRUE), S_OK);
    factory.Reset();
    EXPECT_EQ(MayUnload(), S_FALSE);
    factory = FactoryOf(CLSID_ProductLkpMgr);
    ASSERT_EQ(factory->LockServer(FALSE), S_OK);
    ASSERT_EQ(factory->LockServer(FALSE), S_OK);
    EXPECT_EQ(MayUnload(), S_FALSE);
    factory.Reset();
    EXPECT_EQ(MayUnload(), S_OK);
}

TEST_F(Lifetime, KeepsAStoreWithItsLauncher)
{
    ComPtr<_ProductLkpMgr> store = OpenStore();
    auto launcher = Create<_ProductExportDlg>(L"KestrinProductEditor.ProductExportDlg");
    ASSERT_EQ(launcher->Init(store.GetAddressOf()), S_OK);
    store.Reset();
    EXPECT_EQ(MayUnload(), S_FALSE);
    launcher.Reset();
    EXPECT_EQ(MayUnload(), S_OK);
}

TEST_F(Lifetime, IsWholeAfterTheComponentLeftTheProcess)
{
    for (int round = 0; round < 20; ++round) {
        ComPtr<_ProductLkpMgr> store = OpenStore();
        AddProducts(*store.Get(), {u"Lamp"});
        store.Reset();
        ASSERT_EQ(MayUnload(), S_OK) << round;
        CoFreeUnusedLibrariesEx(0, 0);
        ASSERT_EQ(GetModuleHandleW(L"kstnedit.dll"), nullptr) << round;
    }
}

TEST_F(Lifetime, StaysInMemoryWhileAMemberRunsThatLostItsObject)
{
    Folder().Write("list.csv", "Lamp\r\nDesk\r\n");
    ComPtr<_ProductLkpMgr> store = OpenStore();
    _ProductLkpMgr* const importing = store.Get();
    const ComPtr<_IProcessProgress> receiver = MakeReceiver([&](const Variant&) {
        importing->ClearNotifyCallback();
        store.Reset();
        // As the idle loop of a host does.
        CoFreeUnusedLibrariesEx(0, 0);
        return S_OK;
    });
    ASSERT_EQ(store->SetNotifyCallback(receiver.Get()), S_OK);
    VARIANT result;
    ASSERT_EQ(
        importing->CSVProductImport(ComVariant(Variant::ArrayWith(Folder().File("list.csv"),
                                                                  Variant::ArrayWith(0, -1, -1, -1), 0, 0)),
                                    &result),
        S_OK);
    EXPECT_EQ(FromCom(result), Variant::ArrayWith(0, u"", 2, 0));
    VariantClear(&result);
    EXPECT_EQ(store, nullptr);
    EXPECT_EQ(MayUnload(), S_OK);
}

TEST_F(Lifetime, CountsReferences)
{
    ComPtr<_ProductLkpMgr> store = OpenStore();
    ComPtr<IUnknown> unknown;
    ComPtr<IDispatch> dispatch;
    ASSERT_EQ(store.As(&unknown), S_OK);
    ASSERT_EQ(store.As(&dispatch), S_OK);
    EXPECT_EQ(unknown->AddRef(), 4u);
    EXPECT_EQ(unknown->Release(), 3u);
    ComPtr<ISupportErrorInfo> supports;
    ComPtr<IUnknown> same;
    ASSERT_EQ(store.As(&supports), S_OK);
    ASSERT_EQ(supports.As(&same), S_OK);
    EXPECT_EQ(same, unknown);
    ComPtr<_ProductImportDlg> other;
    EXPECT_EQ(store.As(&other), E_NOINTERFACE);
    EXPECT_EQ(other, nullptr);
}

TEST_F(Lifetime, RefusesToBeAPartOfAnother)
{
    const ComPtr<IClassFactory> factory = FactoryOf(CLSID_ProductEditorDlg);
    IUnknown* object = factory.Get();
    EXPECT_EQ(factory->CreateInstance(factory.Get(), IID_IUnknown, reinterpret_cast<void**>(&object)),
              CLASS_E_NOAGGREGATION);
    EXPECT_EQ(object, nullptr);
    EXPECT_EQ(factory->CreateInstance(nullptr, __uuidof(_ProductLkpMgr), reinterpret_cast<void**>(&object)),
              E_NOINTERFACE);
    EXPECT_EQ(object, nullptr);
}

TEST_F(Lifetime, DoesNotCreateWhatOnlyHostsImplement)
{
    for (const wchar_t* name :
         {L"KestrinProductEditor.IPNotifyCallback", L"KestrinProductEditor.IProcessProgress"}) {
        ComPtr<IUnknown> object;
        EXPECT_EQ(CreateByName(name, IID_PPV_ARGS(object.GetAddressOf())), CO_E_CLASSSTRING);
    }
    const ComPtr<_ProductLkpMgr> store = OpenStore();
    const auto get = reinterpret_cast<HRESULT(STDMETHODCALLTYPE*)(REFCLSID, REFIID, void**)>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"kstnedit.dll"), "DllGetClassObject")));
    ComPtr<IClassFactory> factory;
    for (const CLSID& classID : {CLSID_IPNotifyCallback, CLSID_IProcessProgress})
        EXPECT_EQ(get(classID, IID_PPV_ARGS(factory.GetAddressOf())), CLASS_E_CLASSNOTAVAILABLE);
}

TEST_F(Lifetime, MakesAndReleasesLaunchersWithoutGrowth)
{
    const ComPtr<_ProductLkpMgr> keepsTheComponent = OpenStore();
    const auto round = [] {
        for (const wchar_t* name : kLaunchers)
            static_cast<void>(Create<IDispatch>(name));
    };
    for (int warmUp = 0; warmUp < 250; ++warmUp)
        round();
    const std::size_t before = PrivateBytes();
    for (int rest = 0; rest < 2500; ++rest)
        round();
    // An object that is forgotten in each round would be half a megabyte.
    EXPECT_LT(PrivateBytes(), before + 256 * 1024);
}

TEST_F(Lifetime, OpensAndReleasesStoresWithoutGrowth)
{
    const ComPtr<_ProductLkpMgr> keepsTheComponent = OpenStore();
    const auto round = [&] {
        const ComPtr<_ProductLkpMgr> store = OpenStore();
        AddProducts(*store.Get(), {u"Lamp"});
    };
    for (int warmUp = 0; warmUp < 100; ++warmUp)
        round();
    const std::size_t before = PrivateBytes();
    for (int rest = 0; rest < 1000; ++rest)
        round();
    EXPECT_LT(PrivateBytes(), before + 1024 * 1024);
    EXPECT_EQ(Host().Call(u"ConfigObjects"), Variant(0));
}

TEST_F(Lifetime, GivesEachApartmentATraceOfItsOwn)
{
    const ComPtr<_ProductLkpMgr> here = OpenStore();
    const std::int32_t before = Host().Call(u"TraceObjects").Long();
    std::vector<std::thread> threads;
    for (int number = 0; number < 2; ++number) {
        threads.emplace_back([] {
            const Apartment apartment;
            const ComPtr<_ProductLkpMgr> store = Create<_ProductLkpMgr>(kStore);
            ASSERT_NE(store, nullptr);
            EXPECT_EQ(store->put_CancelUpdate(VARIANT_TRUE), S_OK);
            const ComPtr<_ProductLkpMgr> second = Create<_ProductLkpMgr>(kStore);
            EXPECT_EQ(second->put_CancelUpdate(VARIANT_TRUE), S_OK);
            for (int row = 0; row < 100; ++row) {
                LONG identifier = 0;
                EXPECT_EQ(store->AddNew(ComVariant(Variant::Null()), &identifier), S_OK);
                EXPECT_EQ(identifier, row + 2);
            }
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(Host().Call(u"TraceObjects"), Variant(before + 2));
}

} // namespace KestrinProductEditor
