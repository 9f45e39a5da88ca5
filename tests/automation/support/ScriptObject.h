// SPDX-License-Identifier: MIT
#pragma once

#include "server/windows/ComVariant.h"
#include "server/windows/OwnedObject.h"

#include <windows.h>

#include <oleauto.h>
#include <wrl/client.h>

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <limits>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace KestrinProductEditor {

/// The arguments of a late-bound call in their order; one that came by reference is its value.
using ScriptArguments = std::span<const ComVariant>;

/// A member of a ScriptObject. The two halves of a property share identifier and name.
struct ScriptMember
{
    DISPID id;
    std::u16string name;
    /// The DISPATCH_* flags that it answers.
    WORD kinds;
    std::size_t leastArguments;
    std::size_t mostArguments;
    /// May raise an AutomationError, which reaches the script as number, source and description.
    std::function<ComVariant(ScriptArguments)> body;
};

constexpr std::size_t kAnyNumber = std::numeric_limits<std::size_t>::max();

/// A method without a result; `body` takes the arguments.
template<class Body>
[[nodiscard]] ScriptMember ScriptSub(DISPID id, std::u16string name, std::size_t least, std::size_t most,
                                     Body body)
{
    return {id, std::move(name), DISPATCH_METHOD, least, most, [body](ScriptArguments arguments) {
                body(arguments);
                return ComVariant();
            }};
}

template<class Body>
[[nodiscard]] ScriptMember ScriptSub(DISPID id, std::u16string name, std::size_t count, Body body)
{
    return ScriptSub(id, std::move(name), count, count, std::move(body));
}

/// A method with a result, or a property with arguments, which scripts read in the same way.
template<class Body>
[[nodiscard]] ScriptMember ScriptFunction(DISPID id, std::u16string name, std::size_t count, Body body)
{
    return {id, std::move(name), DISPATCH_METHOD | DISPATCH_PROPERTYGET, count, count, std::move(body)};
}

/// `body` takes nothing.
template<class Body>
[[nodiscard]] ScriptMember ScriptGet(DISPID id, std::u16string name, Body body)
{
    return ScriptFunction(id, std::move(name), 0, [body](ScriptArguments) { return body(); });
}

/// `body` takes the value.
template<class Body>
[[nodiscard]] ScriptMember ScriptPut(DISPID id, std::u16string name, Body body)
{
    return {id, std::move(name), DISPATCH_PROPERTYPUT, 1, 1, [body](ScriptArguments arguments) {
                body(arguments[0]);
                return ComVariant();
            }};
}

/// An object for late-bound callers, made of a table. Members are found by name, letter case aside. It begins
/// with one reference.
class ScriptObject final : public IDispatch
{
public:
    explicit ScriptObject(std::vector<ScriptMember> members) : m_members(std::move(members)) {}
    ScriptObject(const ScriptObject&) = delete;
    ScriptObject& operator=(const ScriptObject&) = delete;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID interfaceID, void** object) override;
    ULONG STDMETHODCALLTYPE AddRef() override { return ++m_references; }
    ULONG STDMETHODCALLTYPE Release() override;

    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override;
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) override;
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID locale,
                                            DISPID* ids) override;
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID locale, WORD flags, DISPPARAMS* parameters,
                                     VARIANT* result, EXCEPINFO* exception, UINT* badArgument) override;

private:
    virtual ~ScriptObject() = default;

    const std::vector<ScriptMember> m_members;
    std::atomic<ULONG> m_references = 1;
};

[[nodiscard]] Microsoft::WRL::ComPtr<IDispatch> MakeScriptObject(std::vector<ScriptMember> members);

[[nodiscard]] ComVariant ValueOfText(std::u16string_view text);
[[nodiscard]] ComVariant ValueOfLong(std::int32_t number);
[[nodiscard]] ComVariant ValueOfBoolean(bool isTrue);

/// What `value` is as another type, as a text, a Long, a Boolean, whatever the user's locale. They raise
/// error 13 where it is none.
[[nodiscard]] ComVariant Converted(const VARIANT& value, VARTYPE type);
[[nodiscard]] std::u16string TextIn(const VARIANT& value);
[[nodiscard]] std::int32_t LongIn(const VARIANT& value);
[[nodiscard]] bool BooleanIn(const VARIANT& value);

/// The status for an error number: 13 is 800A000D, a negative number is a status already.
[[nodiscard]] HRESULT StatusOfNumber(std::int32_t number) noexcept;

} // namespace KestrinProductEditor
