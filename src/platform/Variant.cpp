// SPDX-License-Identifier: MIT
#include <KestrinProductEditor/AutomationError.h>
#include <KestrinProductEditor/Variant.h>

#include <cassert>
#include <limits>

namespace KestrinProductEditor {

namespace {

/// The alternative of that type; error 13 when the variant holds another.
template<typename Value, typename Variant>
[[nodiscard]] auto& Require(Variant& value)
{
    if (auto* const held = std::get_if<Value>(&value))
        return *held;
    throw AutomationError(kErrTypeMismatch);
}

} // namespace

Variant::Variant(VariantArray value) : m_value(std::make_shared<VariantArray>(std::move(value))) {}

Variant Variant::Null()
{
    Variant null;
    null.m_value = NullValue{};
    return null;
}

Variant Variant::ArrayOf(std::vector<Variant> elements)
{
    return Variant(VariantArray(std::move(elements)));
}

bool Variant::Boolean() const
{
    return Require<bool>(m_value);
}

std::int32_t Variant::Long() const
{
    return Require<std::int32_t>(m_value);
}

double Variant::Double() const
{
    return Require<double>(m_value);
}

KestrinProductEditor::Currency Variant::Currency() const
{
    return Require<KestrinProductEditor::Currency>(m_value);
}

const std::u16string& Variant::String() const
{
    return Require<std::u16string>(m_value);
}

const VariantArray& Variant::Array() const
{
    return *Require<std::shared_ptr<VariantArray>>(m_value);
}

VariantArray& Variant::ArrayForWrite()
{
    auto& array = Require<std::shared_ptr<VariantArray>>(m_value);
    if (array.use_count() != 1)
        array = std::make_shared<VariantArray>(*array);
    return *array;
}

const Variant& Variant::At(std::int32_t index) const
{
    return Array().At(index);
}

bool operator==(const Variant& left, const Variant& right)
{
    if (left.IsArray() && right.IsArray())
        return left.Array() == right.Array();
    return left.m_value == right.m_value;
}

VariantArray::VariantArray(std::vector<Variant> elements)
    : m_first(static_cast<std::int32_t>(elements.size())), m_second(-1), m_elements(std::move(elements))
{
    if (m_elements.size() > static_cast<std::size_t>(std::numeric_limits<std::int32_t>::max()))
        throw AutomationError(kErrOverflow);
}

VariantArray::VariantArray(std::int32_t first, std::int32_t second) : m_first(first), m_second(second)
{
    if (first < 0 || second < 0)
        throw AutomationError(kErrSubscriptOutOfRange);
    m_elements.resize(static_cast<std::size_t>(first) * static_cast<std::size_t>(second));
}

std::int32_t VariantArray::Extent(int dimension) const
{
    if (dimension < 1 || dimension > Dimensions())
        throw AutomationError(kErrSubscriptOutOfRange);
    return dimension == 1 ? m_first : m_second;
}

const Variant& VariantArray::At(std::int32_t index) const
{
    return m_elements[PrvPlace(index)];
}

Variant& VariantArray::At(std::int32_t index)
{
    return m_elements[PrvPlace(index)];
}

const Variant& VariantArray::At(std::int32_t first, std::int32_t second) const
{
    return m_elements[PrvPlace(first, second)];
}

Variant& VariantArray::At(std::int32_t first, std::int32_t second)
{
    return m_elements[PrvPlace(first, second)];
}

std::size_t VariantArray::PrvPlace(std::int32_t index) const
{
    if (Dimensions() != 1 || index < 0 || index >= m_first)
        throw AutomationError(kErrSubscriptOutOfRange);
    return static_cast<std::size_t>(index);
}

std::size_t VariantArray::PrvPlace(std::int32_t first, std::int32_t second) const
{
    if (Dimensions() != 2 || first < 0 || first >= m_first || second < 0 || second >= m_second)
        throw AutomationError(kErrSubscriptOutOfRange);
    return static_cast<std::size_t>(second) * static_cast<std::size_t>(m_first) +
           static_cast<std::size_t>(first);
}

} // namespace KestrinProductEditor
