// SPDX-License-Identifier: MIT
#pragma once

#include <KestrinProductEditor/Currency.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace KestrinProductEditor {

class VariantArray;

/// A value of any of the kinds that cross the public interface.
///
/// A Variant is a value: copies are independent. (Arrays are shared until one copy is written to.)
/// The accessors Boolean() to Array() require that kind and raise error 13 for any other.
class [[gnu::visibility("default")]] Variant
{
public:
    /// In the order of the alternatives below.
    enum class Kind
    {
        Empty,
        Null,
        Boolean,
        Long,
        Double,
        Currency,
        String,
        Array
    };

    /// Empty: a value that was never given.
    Variant() = default;
    Variant(bool value) : m_value(value) {}
    Variant(std::int32_t value) : m_value(value) {}
    Variant(double value) : m_value(value) {}
    Variant(KestrinProductEditor::Currency value) : m_value(value) {}
    Variant(std::u16string value) : m_value(std::move(value)) {}
    Variant(std::u16string_view value) : m_value(std::u16string(value)) {}
    Variant(const char16_t* value) : m_value(std::u16string(value)) {}
    Variant(VariantArray value);
    /// Nothing converts to a Variant by way of bool: not a pointer, not narrow text.
    Variant(const void*) = delete;

    /// Null: no value, said on purpose. It stands for a new product where a packed product is expected.
    [[nodiscard]] static Variant Null();

    /// A one-dimensional array of the given elements.
    [[nodiscard]] static Variant ArrayOf(std::vector<Variant> elements);
    /// The same, of elements given one by one: ArrayWith(0, u"a", price).
    template<class... Elements>
    [[nodiscard]] static Variant ArrayWith(Elements && ... elements)
    {
        std::vector<Variant> all;
        all.reserve(sizeof...(elements));
        (all.emplace_back(std::forward<Elements>(elements)), ...);
        return ArrayOf(std::move(all));
    }

    [[nodiscard]] Kind GetKind() const noexcept
    {
        return static_cast<Kind>(m_value.index());
    }
    [[nodiscard]] bool IsEmpty() const noexcept
    {
        return GetKind() == Kind::Empty;
    }
    [[nodiscard]] bool IsNull() const noexcept
    {
        return GetKind() == Kind::Null;
    }
    [[nodiscard]] bool IsArray() const noexcept
    {
        return GetKind() == Kind::Array;
    }

    [[nodiscard]] bool Boolean() const;
    [[nodiscard]] std::int32_t Long() const;
    [[nodiscard]] double Double() const;
    [[nodiscard]] KestrinProductEditor::Currency Currency() const;
    [[nodiscard]] const std::u16string& String() const;
    [[nodiscard]] const VariantArray& Array() const;

    /// The array for writing. It is this Variant's own until the Variant is copied: ask anew after that.
    [[nodiscard]] VariantArray& ArrayForWrite();

    /// Element `index` of a one-dimensional array. Error 13 for no array, 9 for an index outside it or an
    /// array of another number of dimensions.
    [[nodiscard]] const Variant& At(std::int32_t index) const;

    /// The same kind and the same value; arrays element by element.
    friend bool operator==(const Variant& left, const Variant& right);

private:
    struct NullValue
    {
        friend bool operator==(NullValue, NullValue) { return true; }
    };

    std::variant<std::monostate, NullValue, bool, std::int32_t, double, KestrinProductEditor::Currency,
                 std::u16string, std::shared_ptr<VariantArray>>
        m_value;
};

/// An array of Variants with one or two dimensions; every index begins at 0.
class [[gnu::visibility("default")]] VariantArray
{
public:
    /// One dimension.
    explicit VariantArray(std::vector<Variant> elements);
    /// Two dimensions, `first` by `second`, every element Empty. Error 9 for a negative extent.
    VariantArray(std::int32_t first, std::int32_t second);

    /// 1 or 2.
    [[nodiscard]] int Dimensions() const noexcept
    {
        return m_second < 0 ? 1 : 2;
    }
    /// The number of elements along dimension 1 or 2; error 9 for another dimension.
    [[nodiscard]] std::int32_t Extent(int dimension) const;

    /// Error 9 for an index outside the array or for the wrong number of indices.
    [[nodiscard]] const Variant& At(std::int32_t index) const;
    [[nodiscard]] Variant& At(std::int32_t index);
    [[nodiscard]] const Variant& At(std::int32_t first, std::int32_t second) const;
    [[nodiscard]] Variant& At(std::int32_t first, std::int32_t second);

    friend bool operator==(const VariantArray&, const VariantArray&) = default;

private:
    [[nodiscard]] std::size_t PrvPlace(std::int32_t index) const;
    [[nodiscard]] std::size_t PrvPlace(std::int32_t first, std::int32_t second) const;

    std::int32_t m_first;
    std::int32_t m_second;           // -1: one dimension
    std::vector<Variant> m_elements; // the first index varies fastest
};

} // namespace KestrinProductEditor
