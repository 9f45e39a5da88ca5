// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <exception>
#include <memory>
#include <string>

namespace KestrinProductEditor {

/// The numbers of the errors that the component raises itself or passes on from its table and file services.
/// They are the platform's own, so that a host tells them apart as it does everywhere else.
enum ErrorNumber : std::int32_t
{
    kErrInvalidProcedureCall = 5,
    kErrOverflow = 6,
    kErrOutOfMemory = 7,
    kErrSubscriptOutOfRange = 9,
    kErrTypeMismatch = 13,
    kErrInternal = 51,
    kErrBadFileName = 52,
    kErrFileNotFound = 53,
    kErrDeviceIO = 57,
    kErrDiskFull = 61,
    kErrPermissionDenied = 70,
    kErrPathFileAccess = 75,
    kErrPathNotFound = 76,
    kErrObjectNotSet = 91,
    kErrInvalidFileFormat = 321,
    kErrCannotCreateObject = 429,
    kErrActionNotSupported = 445,
    /// The cursor stands before the first row, after the last one or on a deleted one.
    kErrNoCurrentRecord = 3021,
    /// No column has the given index.
    kErrItemNotFound = 3265,
    /// A value does not fit its column.
    kErrMultipleStep = -2147217887,
    /// The component's own number, for the texts that it raises itself ("Product not found" and its like).
    kErrComponent = -2147220503,
};

/// The one exception type of the component: an error number, who raised it, and what happened.
///
/// Every member of the public classes reports a failure with it and with nothing else. A copy never fails;
/// copies share their texts.
class [[gnu::visibility("default")]] AutomationError : public std::exception
{
public:
    /// An error with the platform's usual text for `number` and no source.
    explicit AutomationError(std::int32_t number);
    AutomationError(std::int32_t number, std::u16string source, std::u16string description);

    [[nodiscard]] std::int32_t Number() const noexcept
    {
        return m_number;
    }
    [[nodiscard]] const std::u16string& Source() const noexcept
    {
        return m_texts->source;
    }
    [[nodiscard]] const std::u16string& Description() const noexcept
    {
        return m_texts->description;
    }

    /// The description in UTF-8.
    [[nodiscard]] const char* what() const noexcept override
    {
        return m_texts->what.c_str();
    }

    /// The same error under another number.
    [[nodiscard]] AutomationError WithNumber(std::int32_t number) const noexcept;

    /// The platform's usual text for `number`; a general one when it has none.
    [[nodiscard]] static std::u16string TextOf(std::int32_t number);

private:
    struct Texts
    {
        std::u16string source;
        std::u16string description;
        std::string what;
    };

    std::int32_t m_number;
    std::shared_ptr<const Texts> m_texts;
};

} // namespace KestrinProductEditor
