// SPDX-License-Identifier: MIT
#pragma once

#include <KestrinProductEditor/Variant.h>

#include <windows.h>

#include <oleauto.h>

namespace KestrinProductEditor {

/// A value of the system's automation, released at the end of its scope.
class ComVariant : public VARIANT
{
public:
    /// Empty.
    ComVariant() noexcept { VariantInit(this); }
    explicit ComVariant(const Variant& value);
    ComVariant(ComVariant&& other) noexcept : VARIANT(other) { VariantInit(&other); }
    ComVariant& operator=(ComVariant&& other) noexcept
    {
        std::swap(static_cast<VARIANT&>(*this), static_cast<VARIANT&>(other));
        return *this;
    }
    ~ComVariant() { VariantClear(this); }

    /// Leaves it to the caller.
    [[nodiscard]] VARIANT Detach() noexcept
    {
        const VARIANT value = *this;
        VariantInit(this);
        return value;
    }
};

/// What `value`, which may come from a script, says to the component:
///
/// - every integer kind is a Long where it fits, else a Double; Single and Double a Double; Decimal a
/// Currency
///   where it is one exactly, else a Double; a date its text in the user's form; a missing argument Empty;
/// - a value by reference is what it refers to;
/// - an array has one or two dimensions, and elements of any of these kinds; an array of a script that is an
///   object is read through its members, another object through its default member.
///
/// Error 13 for anything else (no object; an object without a value), 9 for an array that does not begin at 0
/// or has another number of dimensions, 6 for a whole number that a Double cannot hold, 7 for more than a
/// million elements.
[[nodiscard]] Variant FromCom(const VARIANT& value);

} // namespace KestrinProductEditor
