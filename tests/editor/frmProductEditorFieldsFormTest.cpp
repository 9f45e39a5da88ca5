// SPDX-License-Identifier: MIT
#include "support/EditorFixture.h"

#include "platform/Text.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

namespace KestrinProductEditor {

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using NamedKey = IUser::NamedKey;

class ProductEditorFields : public EditorFixture
{
protected:
    explicit ProductEditorFields(const std::string& locale = "en_US.UTF-8") : EditorFixture(locale)
    {
        WriteCatalogue(ThreeProducts());
    }

    void WithPrice(std::int64_t scaled) { WriteCatalogue({{.rowID = 2, .name = "Anchor", .price = scaled}}); }
    [[nodiscard]] std::int64_t SavedPrice() const { return SavedRows().at(0).price; }
};

class ProductEditorFieldsInGerman : public ProductEditorFields
{
protected:
    ProductEditorFieldsInGerman() : ProductEditorFields("de_DE.UTF-8") {}
};

} // namespace

TEST_F(ProductEditorFields, TakeAsManyCharactersAsAProductDoes)
{
    Edit([&] {
        m_user->DoubleClickRow(u"flexGrid", 1);
        EXPECT_EQ(Box(u"txtProductName").MaxLength(), 255);
        EXPECT_EQ(Box(u"txtPartNum").MaxLength(), 255);
        EXPECT_EQ(Box(u"txtUnitPrice").MaxLength(), 0);
        EXPECT_EQ(Box(u"txtNote").MaxLength(), 4095);
        m_user->SetClipboard(std::u16string(300, u'n'));
        m_user->PressControl('A');
        m_user->PressControl('V');
        EXPECT_EQ(m_user->TextOf(u"txtProductName").size(), 255U);
        m_user->Click(u"cmdSaveClose");
    });
    EXPECT_THAT(SavedNames(), testing::Contains(std::string(255, 'n')));
}

TEST_F(ProductEditorFields, WriteALoadedTextBackWithoutADirtyMark)
{
    // The writes of the form are heard like typing, and end where they came from.
    WriteCatalogue({{.rowID = 2,
                     .name = std::string(255, 'n'),
                     .partNum = std::string(255, 'p'),
                     .price = 1,
                     .note = std::string(4095, 'o')}});
    Edit([&] {
        EXPECT_EQ(m_user->TextOf(u"txtNote").size(), 4095U);
        m_user->DoubleClickRow(u"flexGrid", 1);
        m_user->Click(u"cmdCancelEdit");
        m_user->Click(u"cmdCancel");
    });
    EXPECT_THAT(m_user->Messages(), IsEmpty());
}

TEST_F(ProductEditorFields, LoseTheReservedCharacterOnlyInTheRecord)
{
    Edit([&] {
        m_user->DoubleClickRow(u"flexGrid", 1);
        Fill(u"txtProductName", u"An~chor");
        EXPECT_EQ(Shown(u"txtProductName"), "An~chor");
        m_user->Click(u"cmdSaveEdit");
        EXPECT_EQ(Shown(u"txtProductName"), "Anchor");
        m_user->Click(u"cmdSaveClose");
    });
    EXPECT_EQ(SavedRows().at(0).name, "Anchor");
}

TEST_F(ProductEditorFields, KeepEveryCharacterOfANote)
{
    const std::string note = " one\r\ntwo\nthree\rfour\tfive\u00a0 ";
    WriteCatalogue({{.rowID = 2, .name = "Anchor", .note = note}});
    Edit([&] {
        EXPECT_EQ(Shown(u"txtNote"), note);
        m_user->DoubleClickRow(u"flexGrid", 1);
        Fill(u"txtPartNum", u"x");
        m_user->Click(u"cmdSaveClose");
    });
    EXPECT_EQ(SavedRows().at(0).note, note);
}

TEST_F(ProductEditorFields, WriteALineBreakThatIsTypedAsCrLf)
{
    Edit([&] {
        m_user->DoubleClickRow(u"flexGrid", 2);
        m_user->TabTo(u"txtNote");
        m_user->Type(u"a");
        m_user->Press(NamedKey::Enter);
        m_user->Type(u"b");
        m_user->Click(u"cmdSaveClose");
    });
    EXPECT_EQ(SavedRows().at(1).note, "a\r\nb");
}

// The price box

TEST_F(ProductEditorFields, ShowThePriceWithoutSymbolWhileTheBoxHasTheFocus)
{
    struct Case
    {
        std::int64_t price;
        std::string away;
        std::string inside;
    };
    for (const Case& step : std::vector<Case>{{125'000, "$12.50", "12.50"},
                                              {70'000, "$7", "7"},
                                              {0, "$0", "0"},
                                              {12'345'000, "$1,234.50", "1,234.50"},
                                              {123'456, "$12.35", "12.35"},
                                              {-50'000, "-$5", "-5"}}) {
        SCOPED_TRACE(step.away);
        WithPrice(step.price);
        Edit([&] {
            EXPECT_EQ(Shown(u"txtUnitPrice"), step.away);
            m_user->TabTo(u"txtUnitPrice");
            EXPECT_EQ(Shown(u"txtUnitPrice"), step.inside);
            EXPECT_EQ(ToUtf8(Box(u"txtUnitPrice").SelectedText()), step.inside);
            m_user->TabTo(u"txtNote");
            EXPECT_EQ(Shown(u"txtUnitPrice"), step.away);

            m_user->DoubleClickRow(u"flexGrid", 1);
            EXPECT_EQ(Shown(u"txtUnitPrice"), step.away);
            m_user->TabTo(u"txtUnitPrice");
            EXPECT_EQ(Shown(u"txtUnitPrice"), step.inside);
            m_user->TabTo(u"txtNote");
            EXPECT_EQ(Shown(u"txtUnitPrice"), step.away);
            m_user->Click(u"cmdCancelEdit");
            m_user->Click(u"cmdCancel");
        });
        EXPECT_EQ(SavedPrice(), step.price);
    }
    EXPECT_THAT(m_user->Messages(), IsEmpty());
}

TEST_F(ProductEditorFields, NeverReadBackAPriceThatTheFormWrote)
{
    for (const std::int64_t price : {std::int64_t{123'456}, std::int64_t{-50'000}}) {
        WithPrice(price);
        Edit([&] {
            m_user->DoubleClickRow(u"flexGrid", 1);
            m_user->TabTo(u"txtUnitPrice");
            m_user->TabTo(u"txtProductName");
            m_user->Press(NamedKey::End);
            m_user->Type(u"s");
            m_user->TabTo(u"txtUnitPrice");
            m_user->Click(u"cmdSaveEdit");
            m_user->Click(u"cmdSaveClose");
        });
        EXPECT_EQ(SavedRows().at(0).name, "Anchors");
        EXPECT_EQ(SavedPrice(), price);
    }
}

TEST_F(ProductEditorFields, ReadThePriceThatTheUserTypesThoughItReadsAsBefore)
{
    WithPrice(123'456);
    Edit([&] {
        m_user->DoubleClickRow(u"flexGrid", 1);
        m_user->TabTo(u"txtUnitPrice");
        m_user->Press(NamedKey::End);
        m_user->Press(NamedKey::Backspace);
        EXPECT_EQ(Shown(u"txtUnitPrice"), "12.3");
        m_user->Type(u"5");
        EXPECT_EQ(Shown(u"txtUnitPrice"), "12.35");
        m_user->Click(u"cmdSaveClose");
    });
    EXPECT_EQ(SavedPrice(), 123'500);
}

TEST_F(ProductEditorFields, TakeDigitsSeparatorsAndEditingKeysForAPrice)
{
    Edit([&] {
        m_user->DoubleClickRow(u"flexGrid", 1);
        m_user->TabTo(u"txtUnitPrice");
        m_user->Press(NamedKey::End);
        for (const char16_t key : std::u16string_view(u"azAZ-+$ ()eE%;/:\u20ac\u00a0\u0663\u00bd"))
            m_user->Type(std::u16string(1, key));
        EXPECT_EQ(Shown(u"txtUnitPrice"), "12.50");
        // Their last 16 bits are those of "." and ",".
        m_user->Type(u"\U0001002E\U0001002C");
        EXPECT_EQ(Shown(u"txtUnitPrice"), "12.50");
        m_user->Type(u"1,.9");
        EXPECT_EQ(Shown(u"txtUnitPrice"), "12.501,.9");
        for (int i = 0; i < 3; ++i)
            m_user->Press(NamedKey::Backspace);
        EXPECT_EQ(Shown(u"txtUnitPrice"), "12.501");
        m_user->Press(NamedKey::Home);
        m_user->Press(NamedKey::Delete);
        m_user->Press(NamedKey::Right);
        m_user->Press(NamedKey::Left);
        m_user->Type(u"9");
        EXPECT_EQ(Shown(u"txtUnitPrice"), "92.501");
        m_user->Click(u"cmdSaveClose");
    });
    EXPECT_EQ(SavedPrice(), 925'010);
}

TEST_F(ProductEditorFields, LetTheClipboardThroughButNotUndoAndSelectAll)
{
    Edit([&] {
        m_user->DoubleClickRow(u"flexGrid", 3);
        m_user->TabTo(u"txtUnitPrice");
        m_user->PressControl('C');
        EXPECT_EQ(ToUtf8(m_user->Clipboard()), "1,234.50");
        m_user->PressControl('X');
        EXPECT_EQ(Shown(u"txtUnitPrice"), "");
        m_user->SetClipboard(u"about $ 7.25 each");
        m_user->PressControl('V');
        EXPECT_EQ(Shown(u"txtUnitPrice"), "about $ 7.25 each");
        m_user->PressControl('Z');
        EXPECT_EQ(Shown(u"txtUnitPrice"), "about $ 7.25 each");
        m_user->Press(NamedKey::Home);
        m_user->PressControl('A');
        EXPECT_EQ(ToUtf8(Box(u"txtUnitPrice").SelectedText()), "");
        m_user->TabTo(u"txtNote");
        EXPECT_EQ(Shown(u"txtUnitPrice"), "$7.25");
        m_user->Click(u"cmdSaveClose");
    });
    EXPECT_EQ(SavedRows().at(2).price, 72'500);
}

TEST_F(ProductEditorFields, FilterWhatAnInputMethodComposes)
{
    Edit([&] {
        m_user->DoubleClickRow(u"flexGrid", 2);
        m_user->TabTo(u"txtUnitPrice");
        m_user->Compose(u"1a2\u00e9");
        EXPECT_EQ(Shown(u"txtUnitPrice"), "12");
        m_user->TabTo(u"txtNote");
        m_user->Compose(u"\u00e9t\u00e9");
        m_user->Click(u"cmdSaveClose");
    });
    EXPECT_EQ(SavedRows().at(1).price, 120'000);
    EXPECT_EQ(SavedRows().at(1).note, "\u00e9t\u00e9");
}

TEST_F(ProductEditorFields, MakeAPriceBeyondTheCeilingZero)
{
    Edit([&] {
        m_user->DoubleClickRow(u"flexGrid", 1);
        FillPrice(u"4294967295.99");
        m_user->TabTo(u"txtNote");
        EXPECT_EQ(Shown(u"txtUnitPrice"), "$4,294,967,295.99");
        FillPrice(u"4294967296");
        EXPECT_EQ(Shown(u"txtUnitPrice"), "4294967296");
        m_user->TabTo(u"txtNote");
        EXPECT_EQ(Shown(u"txtUnitPrice"), "$0");
        m_user->Click(u"cmdSaveClose");
    });
    EXPECT_EQ(SavedPrice(), 0);
}

TEST_F(ProductEditorFields, MakeAPastedPriceBeyondAllNumbersZero)
{
    Edit([&] {
        m_user->DoubleClickRow(u"flexGrid", 1);
        m_user->TabTo(u"txtUnitPrice");
        m_user->SetClipboard(u"99999999999999999999999999");
        m_user->PressControl('V');
        m_user->TabTo(u"txtNote");
        EXPECT_EQ(Shown(u"txtUnitPrice"), "$0");
        m_user->Click(u"cmdSaveClose");
    });
    EXPECT_EQ(SavedPrice(), 0);
}

TEST_F(ProductEditorFields, AreModifiedByAnAmountAndNotByItsSeparators)
{
    Edit([&] {
        m_user->DoubleClickRow(u"flexGrid", 3);
        m_user->TabTo(u"txtUnitPrice");
        m_user->Press(NamedKey::Home);
        m_user->Press(NamedKey::Right);
        m_user->Press(NamedKey::Delete);
        EXPECT_EQ(Shown(u"txtUnitPrice"), "1234.50");
        m_user->Click(u"cmdCancelEdit");
        EXPECT_THAT(m_user->Messages(), IsEmpty());

        m_user->DoubleClickRow(u"flexGrid", 3);
        m_user->TabTo(u"txtUnitPrice");
        m_user->Press(NamedKey::End);
        m_user->Press(NamedKey::Backspace);
        m_user->Press(NamedKey::Backspace);
        m_user->WillAnswer(MessageAnswer::No);
        m_user->Click(u"cmdCancelEdit");
        EXPECT_THAT(m_user->Messages(), ElementsAre(kAskSaveProduct));
        m_user->Click(u"cmdCancel");
    });
    EXPECT_EQ(SavedRows(), ThreeProducts());
}

TEST_F(ProductEditorFields, DoNotCallAnEmptiedZeroAChange)
{
    WithPrice(0);
    Edit([&] {
        m_user->DoubleClickRow(u"flexGrid", 1);
        m_user->TabTo(u"txtUnitPrice");
        m_user->Press(NamedKey::Delete);
        EXPECT_EQ(Shown(u"txtUnitPrice"), "");
        m_user->Click(u"cmdCancelEdit");
        m_user->Click(u"cmdCancel");
    });
    EXPECT_THAT(m_user->Messages(), IsEmpty());
}

TEST_F(ProductEditorFields, CommitAPriceWithEveryKey)
{
    // Esc and another row leave the box's own focus-loss rule too late.
    Edit([&] {
        m_user->DoubleClickRow(u"flexGrid", 1);
        FillPrice(u"99");
        m_user->WillAnswer(MessageAnswer::Yes);
        m_user->ClickRow(u"flexGrid", 2);
        EXPECT_EQ(Shown(u"txtUnitPrice"), "$7");
        m_user->Click(u"cmdSaveClose");
    });
    EXPECT_EQ(SavedRows().at(0).price, 990'000);
    EXPECT_EQ(SavedRows().at(1).price, 70'000);
}

TEST_F(ProductEditorFields, CommitAPriceThatNoKeyCouldWhenTheyAreLeft)
{
    Edit([&] {
        m_user->DoubleClickRow(u"flexGrid", 1);
        m_trace->FailOn("enter KestrinProductEditor.frmProductEditor::txtUnitPrice_Change", 7);
        FillPrice(u"99");
        m_trace->Heal();
        m_user->Click(u"cmdSaveEdit");
        EXPECT_EQ(Shown(u"txtUnitPrice"), "$99");
        m_user->Click(u"cmdSaveClose");
    });
    EXPECT_EQ(SavedPrice(), 990'000);
}

TEST_F(ProductEditorFieldsInGerman, KnowTheLocalesSeparators)
{
    Edit([&] {
        EXPECT_EQ(Shown(u"txtUnitPrice"), "12,50 \u20ac");
        m_user->DoubleClickRow(u"flexGrid", 1);
        FillPrice(u"1.234,5");
        m_user->TabTo(u"txtNote");
        EXPECT_EQ(Shown(u"txtUnitPrice"), "1.234,50 \u20ac");
        m_user->Click(u"cmdSaveClose");
    });
    EXPECT_EQ(SavedPrice(), 12'345'000);
}

TEST_F(ProductEditorFields, FollowTheMonetarySeparatorsWhereNumbersHaveOthers)
{
    const ScopedLocaleVariables mixed(
        LocaleVariables{.ctype = "en_US.UTF-8", .monetary = "de_DE.UTF-8", .numeric = "fr_FR.UTF-8"});
    Edit([&] {
        m_user->DoubleClickRow(u"flexGrid", 1);
        m_user->TabTo(u"txtUnitPrice");
        m_user->Press(NamedKey::Delete);
        // A French number has a narrow no-break space between its groups.
        m_user->Type(u"1\u202f.234,5");
        EXPECT_EQ(Shown(u"txtUnitPrice"), "1.234,5");
        m_user->Click(u"cmdSaveClose");
    });
    EXPECT_EQ(SavedPrice(), 12'345'000);
}

// The way in

TEST_F(ProductEditorFields, OpenWithADoubleClickAndKeepTheCaret)
{
    for (const std::u16string_view name : {u"txtProductName", u"txtPartNum", u"txtUnitPrice", u"txtNote"}) {
        SCOPED_TRACE(ToUtf8(name));
        Edit([&] {
            m_user->ClickRow(u"flexGrid", 3);
            m_user->DoubleClick(name);
            EXPECT_EQ(Shown(u"lblProductDetails"), "Editing Clamp");
            EXPECT_EQ(ToUtf8(m_user->Focus()), ToUtf8(name));
            ExpectEditState();
            m_user->DoubleClick(name);
            EXPECT_EQ(ToUtf8(m_user->Focus()), ToUtf8(name));
            m_user->Click(u"cmdCancelEdit");
            m_user->Click(u"cmdCancel");
        });
    }
    EXPECT_THAT(m_user->Messages(), IsEmpty());
}

TEST_F(ProductEditorFields, StayLockedUnderADoubleClickWhereNoProductIs)
{
    WriteCatalogue(std::vector<ProductRow>{});
    Edit([&] {
        m_user->DoubleClick(u"txtNote");
        m_user->DoubleClick(u"txtProductName");
        ExpectViewState();
        m_user->Click(u"cmdCancel");
    });
}

TEST_F(ProductEditorFields, CannotBeTypedIntoInViewState)
{
    Edit([&] {
        for (const std::u16string_view name :
             {u"txtProductName", u"txtPartNum", u"txtUnitPrice", u"txtNote"}) {
            m_user->TabTo(name);
            m_user->Type(u"1");
            m_user->Press(NamedKey::Delete);
        }
        m_user->Click(u"cmdCancel");
    });
    EXPECT_EQ(SavedRows(), ThreeProducts());
    EXPECT_THAT(m_user->Messages(), IsEmpty());
}

} // namespace KestrinProductEditor
