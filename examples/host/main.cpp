// SPDX-License-Identifier: MIT
#include <KestrinProductEditor/KestrinProductEditor.h>

#include <filesystem>
#include <iostream>
#include <memory>
#include <string>
#include <string_view>

using namespace KestrinProductEditor;

namespace {

std::string Utf8(std::u16string_view text)
{
    return std::filesystem::path(text).string();
}

/// Tells every store where its catalogue lies: the folder InstallPath/DBSubdirName.
class Config final : public IConfig
{
public:
    explicit Config(std::u16string folder) : m_folder(std::move(folder)) {}
    Variant Value(std::u16string_view sKey) override
    {
        return sKey == u"InstallPath" ? m_folder : std::u16string();
    }

private:
    std::u16string m_folder;
};

/// Hears of every failure, the one that nobody can catch among them: a store saves when its last reference
/// goes.
class Trace final : public ITrace
{
public:
    std::int32_t TraceErrNumber() override
    {
        const AutomationError* error = PendingError();
        return error != nullptr ? error->Number() : kErrComponent;
    }
    void TraceError(std::u16string_view) override
    {
        std::cerr << "failed: " << PendingError()->what() << '\n';
    }
    void TraceEnter(std::u16string_view) override {}
    void TraceExit(std::u16string_view) override {}
};

void AddProducts()
{
    const auto store = ProductLkpMgr::Create();
    const auto add = [&](const char16_t* name, const char16_t* partNum, std::int64_t tenThousandths) {
        // Row identifier (given by the store), name, key, part number, price, note.
        return store->AddNew(
            Variant::ArrayOf({0, name, u"", partNum, Currency::FromScaled(tenThousandths), u""}));
    };
    add(u"Hammer, claw, 16 oz", u"HM-16", 189500);
    add(u"hammer, ball pein", u"HM-BP", 214900);
    add(u"Handsaw", u"SW-01", 245000);
    std::cout << store->Count() << " products\n";
} // The last reference to the store goes: the catalogue is saved.

void FindAndExport(const std::filesystem::path& exportFile)
{
    const auto store = ProductLkpMgr::Create();
    // This store only reads. Without this line its release would write what it loaded over whatever another
    // store has saved meanwhile.
    store->CancelUpdate(true);

    const Variant matches = store->GetFindMatchesByName(u"HAMMER", false);
    if (!matches.IsNull()) {
        for (std::int32_t row = 0; row < matches.Array().Extent(2); ++row) {
            const Variant& rowID = matches.Array().At(0, row);
            const Variant& name = matches.Array().At(1, row);
            std::cout << rowID.Long() << "  " << Utf8(name.String()) << '\n';
        }
    }
    store->CSVProductExport(Variant::ArrayOf({exportFile.u16string()}));
}

} // namespace

int main(int argc, char* argv[])
try {
    const std::filesystem::path folder = argc > 1 ? argv[1] : ".";
    RegisterHostComponent("CorvoConf.Config", [&] { return std::make_shared<Config>(folder.u16string()); });
    RegisterHostComponent("CorvoTWrp.Trace", [] { return std::make_shared<Trace>(); });

    AddProducts();
    FindAndExport(folder / "products.csv");
    std::cout << "exported\n";
} catch (const AutomationError& error) {
    std::cerr << "error " << error.Number() << ": " << error.what() << '\n';
    return 1;
}
