// SPDX-License-Identifier: MIT
#include "kstnedit/ProductOptions.h"

#include "kstnedit/Failure.h"
#include "kstnedit/ProductRecord.h"
#include "platform/CodePage.h"
#include "platform/Text.h"
#include "platform/UserLocale.h"
#include "store/Product.h"
#include "util/Reserved.h"
#include "util/modConversion.h"

#include <CLI/CLI.hpp>

namespace KestrinProductEditor::CommandLine {

namespace {

Currency PriceOf(const std::string& text)
{
    const MoneyLayout layout = UserLocale().Money();
    const modConversion::CurrencyResult price = modConversion::CurrencyFromText(text, layout);
    if (price.error == modConversion::ConversionError::TypeMismatch)
        throw CommandFailure("--price: '" + text + "' is not an amount of money here. Write it like " +
                             modConversion::FormatCurrency(Currency::FromScaled(12'345'000), 2, layout) +
                             ".");
    if (price.value < Currency())
        throw CommandFailure("--price: '" + text + "' is below zero. A price is 0 or more.");
    if (price.error == modConversion::ConversionError::Overflow || price.value > kPriceCeiling)
        throw CommandFailure("--price: '" + text + "' is too much. The highest price is " +
                             PriceText(kPriceCeiling) + ".");
    return price.value;
}

} // namespace

bool ProductOptions::Entry::IsGiven() const
{
    return option->count() != 0;
}

void ProductOptions::Declare(CLI::App& app, Name name)
{
    m_name.option = app.add_option("--name", m_name.value, "The name")->type_name("TEXT");
    m_name.option->required(name == Name::Required);
    m_key.option = app.add_option("--key", m_key.value, "The key")->type_name("TEXT");
    m_partNum.option = app.add_option("--part-num", m_partNum.value, "The part number")->type_name("TEXT");
    m_price.option = app.add_option("--price", m_price.value, "The unit price, as your locale writes it")
                         ->type_name("PRICE");
    m_note.option = app.add_option("--note", m_note.value, "The note")->type_name("TEXT");
}

bool ProductOptions::AreEmpty() const
{
    return !m_name.IsGiven() && !m_key.IsGiven() && !m_partNum.IsGiven() && !m_price.IsGiven() &&
           !m_note.IsGiven();
}

Variant ProductOptions::Apply(Variant packed, Console& console) const
{
    struct TextField
    {
        const Entry& entry;
        const char* option;
        PackedSlot slot;
        void (Product::*set)(std::u16string_view);
        CorvoProductFldSize limit;
    };
    const TextField fields[] = {
        {m_name, "--name", kPackedName, &Product::Name, PFS_Name},
        {m_key, "--key", kPackedKey, &Product::Key, PFS_Key},
        {m_partNum, "--part-num", kPackedPartNum, &Product::PartNum, PFS_PartNum},
        {m_note, "--note", kPackedNote, &Product::Note, PFS_Note},
    };

    const std::shared_ptr<const CodePage> codePage = CodePage::System();
    const auto canBeKept = [&](const std::string& narrow) {
        std::string scratch;
        return codePage->RoundTrip(narrow, scratch) == narrow;
    };
    Product probe;
    VariantArray& slots = packed.ArrayForWrite();
    for (const TextField& field : fields) {
        if (!field.entry.IsGiven())
            continue;
        const std::u16string text = ToUtf16(console.ArgumentText(field.entry.value));
        try {
            (probe.*field.set)(text);
        } catch (const AutomationError& error) {
            std::string what = error.what();
            if (what.ends_with('.'))
                what.pop_back();
            throw CommandFailure(std::string(field.option) + ": " + what + ": it has " +
                                 std::to_string(text.size()) + " characters, at most " +
                                 std::to_string(field.limit) + " fit. Shorten it.");
        }
        if (field.slot != kPackedNote && !canBeKept(ToUtf8(text)))
            throw CommandFailure(
                std::string(field.option) +
                ": the catalogue's 8-bit code page cannot hold every character of it. Write it "
                "otherwise, or set KSTNEDIT_CODEPAGE to the code page that the catalogue has.");
        if (text.find(static_cast<char16_t>(kReservedCharacter)) != std::u16string::npos)
            console.Say(std::string(field.option) + ": '~' cannot be kept and was taken out");
        slots.At(field.slot) = text;
    }
    if (m_name.IsGiven() && IsBlankName(ToUtf8(probe.Name())))
        throw CommandFailure("--name: a product without a name is not kept. Give it a name.");
    if (m_price.IsGiven())
        slots.At(kPackedUnitPrice) = PriceOf(console.ArgumentText(m_price.value));

    Product product;
    try {
        product.Unpack(packed);
    } catch (const AutomationError& error) {
        throw CommandFailure("the product cannot be kept as it is: " + std::string(error.what()) +
                             ". Another program wrote it; give that field a new value as well.");
    }
    return product.Pack();
}

} // namespace KestrinProductEditor::CommandLine
