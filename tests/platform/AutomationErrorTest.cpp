// SPDX-License-Identifier: MIT
#include <KestrinProductEditor/AutomationError.h>

#include <gtest/gtest.h>

#include <string>

namespace KestrinProductEditor {

TEST(AutomationErrorText, IsThePlatformsUsualOne)
{
    const struct
    {
        std::int32_t number;
        std::u16string_view text;
    } cases[] = {
        {5, u"Invalid procedure call or argument"},
        {6, u"Overflow"},
        {7, u"Out of memory"},
        {9, u"Subscript out of range"},
        {13, u"Type mismatch"},
        {51, u"Internal error"},
        {52, u"Bad file name or number"},
        {53, u"File not found"},
        {57, u"Device I/O error"},
        {61, u"Disk full"},
        {70, u"Permission denied"},
        {75, u"Path/File access error"},
        {76, u"Path not found"},
        {91, u"Object variable or With block variable not set"},
        {321, u"Invalid file format"},
        {429, u"ActiveX component can't create object"},
        {445, u"Object doesn't support this action"},
        {3021, u"Either BOF or EOF is True, or the current record has been deleted. Requested operation "
               u"requires a current record."},
        {3265, u"Item cannot be found in the collection corresponding to the requested name or ordinal."},
        {-2147217887, u"Multiple-step operation generated errors. Check each status value."},
        {-2147220503, u"Application-defined or object-defined error"},
        {0, u"Application-defined or object-defined error"},
        {12345, u"Application-defined or object-defined error"},
    };
    for (const auto& entry : cases)
        EXPECT_EQ(AutomationError::TextOf(entry.number), entry.text) << entry.number;
}

TEST(AutomationError, OfANumberHasItsTextAndNoSource)
{
    const AutomationError error(kErrTypeMismatch);
    EXPECT_EQ(error.Number(), 13);
    EXPECT_EQ(error.Source(), u"");
    EXPECT_EQ(error.Description(), u"Type mismatch");
    EXPECT_STREQ(error.what(), "Type mismatch");
}

TEST(AutomationError, KeepsWhatItIsGiven)
{
    const AutomationError error(kErrComponent, u"Source", u"T\u00FCr not found");
    EXPECT_EQ(error.Number(), -2147220503);
    EXPECT_EQ(error.Source(), u"Source");
    EXPECT_EQ(error.Description(), u"T\u00FCr not found");
    EXPECT_STREQ(error.what(), "T\xC3\xBCr not found");
}

} // namespace KestrinProductEditor
