// SPDX-License-Identifier: MIT
#include "platform/CodePage.h"
#include "platform/Text.h"
#include "platform/UserLocale.h"
#include "platform/linux/MoneyConventions.h"

#include <langinfo.h>
#include <locale.h>

#include <new>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace KestrinProductEditor {

namespace {

// One category of the locale that the environment names. Each category is opened alone: a locale that lacks
// one of them, or a variable that names a locale which is not installed, leaves the others as they are.
class LocaleCategory
{
public:
    LocaleCategory(int mask, nl_item nameItem, nl_item codesetItem) : m_locale(newlocale(mask, "", nullptr))
    {
        if (m_locale == nullptr) {
            m_locale = newlocale(mask, "C", nullptr);
        }
        if (m_locale == nullptr) {
            throw std::bad_alloc();
        }
        const std::string_view name = Bytes(nameItem);
        m_isPlain = name == "C" || name == "POSIX" || name.starts_with("C.");
        m_codeset = Bytes(codesetItem);
    }
    LocaleCategory(const LocaleCategory&) = delete;
    LocaleCategory& operator=(const LocaleCategory&) = delete;
    ~LocaleCategory() { freelocale(m_locale); }

    [[nodiscard]] bool IsPlain() const { return m_isPlain; }

    [[nodiscard]] std::string_view Bytes(nl_item item) const { return nl_langinfo_l(item, m_locale); }

    [[nodiscard]] std::u16string Text(nl_item item) const
    {
        const std::string_view bytes = Bytes(item);
        if (IsAscii(bytes) || m_codeset == "UTF-8") {
            return ToUtf16(bytes);
        }
        std::string scratch;
        if (const auto codePage = CodePage::Named(m_codeset)) {
            return ToUtf16(codePage->Decode(bytes, scratch));
        }
        AppendWindows1252AsUtf8(bytes, scratch);
        return ToUtf16(scratch);
    }

    [[nodiscard]] int Number(nl_item item) const
    {
        const int number = static_cast<unsigned char>(*nl_langinfo_l(item, m_locale));
        return number == 255 ? kUnspecifiedConvention : number;
    }

private:
    locale_t m_locale;
    bool m_isPlain = false;
    std::string_view m_codeset;
};

class MonetaryCategory : public LocaleCategory
{
public:
    // The category's texts are in its own character set, whatever LC_CTYPE says.
    MonetaryCategory() : LocaleCategory(LC_MONETARY_MASK, _NL_LOCALE_NAME(LC_MONETARY), _NL_MONETARY_CODESET)
    {
    }
};

class NumericCategory : public LocaleCategory
{
public:
    NumericCategory() : LocaleCategory(LC_NUMERIC_MASK, _NL_LOCALE_NAME(LC_NUMERIC), _NL_NUMERIC_CODESET) {}
};

std::optional<std::u16string> UnlessEmpty(std::u16string text)
{
    if (text.empty()) {
        return std::nullopt;
    }
    return text;
}

// An item that the plain locale does not tell; elsewhere an empty text is an answer ("this locale does not
// group").
std::optional<std::u16string> UnlessPlain(const LocaleCategory& category, nl_item item)
{
    if (category.IsPlain()) {
        return std::nullopt;
    }
    return category.Text(item);
}

int OrElse(int number, int standIn)
{
    return number == kUnspecifiedConvention ? standIn : number;
}

SignConventions PositiveConventions(const MonetaryCategory& money)
{
    return {OrElse(money.Number(__P_CS_PRECEDES), 1), OrElse(money.Number(__P_SEP_BY_SPACE), 0),
            OrElse(money.Number(__P_SIGN_POSN), 1)};
}

SignConventions NegativeConventions(const MonetaryCategory& money)
{
    return {OrElse(money.Number(__N_CS_PRECEDES), 1), OrElse(money.Number(__N_SEP_BY_SPACE), 0),
            OrElse(money.Number(__N_SIGN_POSN), 1)};
}

std::u16string NegativeSign(const MonetaryCategory& money)
{
    std::u16string sign = money.Text(__NEGATIVE_SIGN);
    const bool isPlaceholder = sign.find_first_of(u"$n") != std::u16string::npos;
    return sign.empty() || isPlaceholder ? u"-" : sign;
}

class UserLocaleLinux : public IUserLocale
{
public:
    [[nodiscard]] std::optional<std::u16string> Item(LocaleItem item) const override
    {
        switch (item) {
        case LocaleItem::DecimalSeparator:
            return UnlessEmpty(NumericCategory().Text(__DECIMAL_POINT));
        case LocaleItem::ThousandSeparator:
            return UnlessPlain(NumericCategory(), __THOUSANDS_SEP);
        case LocaleItem::CurrencySymbol:
            return UnlessPlain(MonetaryCategory(), __CURRENCY_SYMBOL);
        case LocaleItem::MonDecimalSeparator:
            return UnlessEmpty(MonetaryCategory().Text(__MON_DECIMAL_POINT));
        case LocaleItem::MonThousandSeparator:
            return UnlessPlain(MonetaryCategory(), __MON_THOUSANDS_SEP);
        }
        return std::nullopt;
    }

    [[nodiscard]] MoneyLayout Money() const override
    {
        MoneyLayout layout;
        layout.numberDecimalSeparator = Item(LocaleItem::DecimalSeparator).value_or(u".");
        layout.numberThousandSeparator = Item(LocaleItem::ThousandSeparator).value_or(u",");

        const MonetaryCategory money;
        if (money.IsPlain()) {
            layout.decimalSeparator = u".";
            layout.thousandSeparator = u",";
            layout.grouping = {3};
            layout.positive = u"n";
            layout.negative = u"-n";
            return layout;
        }

        layout.symbol = money.Text(__CURRENCY_SYMBOL);
        layout.decimalSeparator = UnlessEmpty(money.Text(__MON_DECIMAL_POINT)).value_or(u".");
        layout.thousandSeparator = money.Text(__MON_THOUSANDS_SEP);
        MoneyGrouping grouping = GroupingFromBytes(money.Bytes(__MON_GROUPING));
        layout.grouping = std::move(grouping.sizes);
        layout.lastGroupEnds = grouping.lastGroupEnds;
        layout.positive = PositivePattern(PositiveConventions(money));
        layout.negative = NegativePattern(NegativeConventions(money), NegativeSign(money));
        return layout;
    }
};

} // namespace

const IUserLocale& PlatformUserLocale()
{
    // Never destroyed: a host may release its last store after the end of main.
    static const auto& kLocale = *new UserLocaleLinux;
    return kLocale;
}

} // namespace KestrinProductEditor
