// SPDX-License-Identifier: MIT
// One work of the component as a host on Windows has it done, early bound, in a process of its own:
//     kstnedit-automation-bench import|open|save|export FOLDER COUNT
// FOLDER is one that `compare --step prepare` has filled. Prints "name value" lines: microseconds, and a
// count that tells whether the work was done.
#include <windows.h>

#include <objbase.h>
#include <oleauto.h>
#include <wrl/client.h>

#include <kstnedit.h>

#include "Stopwatch.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <initializer_list>
#include <iostream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <string_view>

namespace {

using KestrinProductEditor::Bench::Stopwatch;
using Microsoft::WRL::ComPtr;

void Require(HRESULT status, const char* what)
{
    if (FAILED(status))
        throw std::runtime_error(std::string(what) + " failed with " +
                                 std::to_string(static_cast<unsigned long>(status)));
}

/// A VARIANT that is cleared at the end.
class Value
{
public:
    Value() { VariantInit(&m_value); }
    explicit Value(LONG number) : Value()
    {
        m_value.vt = VT_I4;
        m_value.lVal = number;
    }
    explicit Value(const std::wstring& text) : Value()
    {
        m_value.vt = VT_BSTR;
        m_value.bstrVal = SysAllocStringLen(text.data(), static_cast<UINT>(text.size()));
    }
    Value(std::initializer_list<const Value*> elements) : Value()
    {
        SAFEARRAY* const array = SafeArrayCreateVector(VT_VARIANT, 0, static_cast<ULONG>(elements.size()));
        if (array == nullptr)
            throw std::bad_alloc();
        m_value.vt = VT_ARRAY | VT_VARIANT;
        m_value.parray = array;
        LONG index = 0;
        for (const Value* const element : elements) {
            Require(SafeArrayPutElement(array, &index, const_cast<VARIANT*>(&element->m_value)), "an array");
            ++index;
        }
    }
    Value(const Value&) = delete;
    Value& operator=(const Value&) = delete;
    ~Value() { VariantClear(&m_value); }

    [[nodiscard]] const VARIANT& Get() const { return m_value; }
    [[nodiscard]] VARIANT* Out() { return &m_value; }

    /// An element of an array, which must be a number.
    [[nodiscard]] LONG NumberAt(LONG index) const
    {
        Value element;
        Require(SafeArrayGetElement(m_value.parray, &index, element.Out()), "the result");
        Require(VariantChangeType(element.Out(), element.Out(), 0, VT_I4), "a number of the result");
        return element.m_value.lVal;
    }

private:
    VARIANT m_value;
};

class Apartment
{
public:
    Apartment() { Require(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED), "the apartment"); }
    Apartment(const Apartment&) = delete;
    Apartment& operator=(const Apartment&) = delete;
    ~Apartment() { CoUninitialize(); }
};

struct Work
{
    std::filesystem::path folder;
    LONG count = 0;
    ComPtr<IClassFactory> stores;

    /// A store over the catalogue in `catalogueFolder`.
    [[nodiscard]] ComPtr<_ProductLkpMgr> Open(const std::filesystem::path& catalogueFolder) const
    {
        SetEnvironmentVariableW(L"KSTNEDIT_BENCH_FOLDER", catalogueFolder.c_str());
        ComPtr<_ProductLkpMgr> store;
        Require(stores->CreateInstance(nullptr, IID__ProductLkpMgr,
                                       reinterpret_cast<void**>(store.GetAddressOf())),
                "opening");
        return store;
    }
};

void Print(const char* name, double value)
{
    std::printf("%s %.17g\n", name, value);
}

void PrintCount(_ProductLkpMgr& store)
{
    LONG count = 0;
    Require(store.get_Count(&count), "Count");
    Print("count", count);
}

void KeepFile(_ProductLkpMgr& store)
{
    Require(store.put_CancelUpdate(VARIANT_TRUE), "CancelUpdate");
}

void Import(const Work& work)
{
    const std::filesystem::path folder = work.folder / "empty";
    std::filesystem::remove_all(folder);
    std::filesystem::create_directory(folder);
    const ComPtr<_ProductLkpMgr> store = work.Open(folder);
    KeepFile(*store.Get());
    const Value file((work.folder / "list.csv").wstring());
    const Value columns[] = {Value(0L), Value(1L), Value(2L), Value(3L)};
    const Value map{&columns[0], &columns[1], &columns[2], &columns[3]};
    const Value withTitles(1L);
    const Value replace(0L);
    const Value parameters{&file, &map, &withTitles, &replace};
    Value result;
    const Stopwatch watch;
    Require(store->CSVProductImport(parameters.Get(), result.Out()), "CSVProductImport");
    Print("import", watch.Microseconds());
    if (result.NumberAt(0) != 0 || result.NumberAt(2) != work.count || result.NumberAt(3) != 0)
        throw std::runtime_error("the import lost products");
    PrintCount(*store.Get());
}

void Open(const Work& work)
{
    const Stopwatch watch;
    const ComPtr<_ProductLkpMgr> store = work.Open(work.folder);
    Print("open", watch.Microseconds());
    KeepFile(*store.Get());
    PrintCount(*store.Get());
}

void Save(const Work& work)
{
    ComPtr<_ProductLkpMgr> store = work.Open(work.folder);
    PrintCount(*store.Get());
    const Stopwatch watch;
    store.Reset();
    Print("save", watch.Microseconds());
}

void Export(const Work& work)
{
    const ComPtr<_ProductLkpMgr> store = work.Open(work.folder);
    KeepFile(*store.Get());
    const std::filesystem::path target = work.folder / "exported.csv";
    std::filesystem::remove(target);
    const Value file(target.wstring());
    const Value parameters{&file};
    const Stopwatch watch;
    Require(store->CSVProductExport(parameters.Get()), "CSVProductExport");
    Print("export", watch.Microseconds());
    std::ifstream written(target, std::ios::binary);
    Print("count", static_cast<double>(std::count(std::istreambuf_iterator<char>(written),
                                                  std::istreambuf_iterator<char>(), '\n')));
    written.close();
    std::filesystem::remove(target);
}

void Run(std::string_view step, Work work)
{
    Require(CoGetClassObject(CLSID_ProductLkpMgr, CLSCTX_INPROC_SERVER, nullptr, IID_IClassFactory,
                             reinterpret_cast<void**>(work.stores.GetAddressOf())),
            "the component's factory");
    if (step == "import")
        Import(work);
    else if (step == "open")
        Open(work);
    else if (step == "save")
        Save(work);
    else if (step == "export")
        Export(work);
    else
        throw std::runtime_error("there is no step " + std::string(step));
}

} // namespace

int main(int argc, char* argv[])
try {
    if (argc != 4) {
        std::cerr << "usage: kstnedit-automation-bench import|open|save|export FOLDER COUNT\n";
        return 2;
    }
    const Apartment apartment;
    Run(argv[1], {argv[2], std::stol(argv[3]), nullptr});
    return 0;
} catch (const std::exception& error) {
    std::cerr << "kstnedit-automation-bench: " << error.what() << '\n';
    return 1;
}
