// SPDX-License-Identifier: MIT
#include <KestrinProductEditor/AutomationError.h>

#include "platform/Text.h"

#include <type_traits>
#include <utility>

namespace KestrinProductEditor {

static_assert(std::is_nothrow_copy_constructible_v<AutomationError>);

namespace {

struct ErrorText
{
    std::int32_t number;
    const char16_t* text;
};

constexpr ErrorText kErrorTexts[] = {
    {kErrInvalidProcedureCall, u"Invalid procedure call or argument"},
    {kErrOverflow, u"Overflow"},
    {kErrOutOfMemory, u"Out of memory"},
    {kErrSubscriptOutOfRange, u"Subscript out of range"},
    {kErrTypeMismatch, u"Type mismatch"},
    {kErrInternal, u"Internal error"},
    {kErrBadFileName, u"Bad file name or number"},
    {kErrFileNotFound, u"File not found"},
    {kErrDeviceIO, u"Device I/O error"},
    {kErrDiskFull, u"Disk full"},
    {kErrPermissionDenied, u"Permission denied"},
    {kErrPathFileAccess, u"Path/File access error"},
    {kErrPathNotFound, u"Path not found"},
    {kErrObjectNotSet, u"Object variable or With block variable not set"},
    {kErrInvalidFileFormat, u"Invalid file format"},
    {kErrCannotCreateObject, u"ActiveX component can't create object"},
    {kErrActionNotSupported, u"Object doesn't support this action"},
    {kErrNoCurrentRecord, u"Either BOF or EOF is True, or the current record has been deleted. Requested "
                          u"operation requires a current record."},
    {kErrItemNotFound,
     u"Item cannot be found in the collection corresponding to the requested name or ordinal."},
    {kErrMultipleStep, u"Multiple-step operation generated errors. Check each status value."},
};

} // namespace

AutomationError::AutomationError(std::int32_t number) : AutomationError(number, u"", TextOf(number)) {}

AutomationError::AutomationError(std::int32_t number, std::u16string source, std::u16string description)
    : m_number(number)
{
    std::string what = ToUtf8(description);
    m_texts =
        std::make_shared<const Texts>(Texts{std::move(source), std::move(description), std::move(what)});
}

AutomationError AutomationError::WithNumber(std::int32_t number) const noexcept
{
    AutomationError error = *this;
    error.m_number = number;
    return error;
}

std::u16string AutomationError::TextOf(std::int32_t number)
{
    for (const ErrorText& entry : kErrorTexts) {
        if (entry.number == number)
            return entry.text;
    }
    return u"Application-defined or object-defined error";
}

} // namespace KestrinProductEditor
