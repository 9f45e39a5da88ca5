// SPDX-License-Identifier: MIT
#pragma once

#include "server/windows/ComText.h"
#include "server/windows/ComVariant.h"
#include "server/windows/ForeignObject.h"

#include "support/TemporaryFolder.h"

#include <KestrinProductEditor/Variant.h>

#include <kstnedit.h>

#include <gtest/gtest.h>
#include <wrl/client.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace KestrinProductEditor {

using Microsoft::WRL::ComPtr;

/// A thread's membership in an apartment of its own.
class Apartment
{
public:
    Apartment();
    Apartment(const Apartment&) = delete;
    Apartment& operator=(const Apartment&) = delete;
    ~Apartment();
};

/// What the system answered when an object was asked for by the name of its class.
[[nodiscard]] HRESULT CreateByName(const wchar_t* className, REFIID interfaceID, void** object);

/// An object of that class; a test failure and null when it cannot be had.
template<class Interface>
[[nodiscard]] ComPtr<Interface> Create(const wchar_t* className)
{
    ComPtr<Interface> object;
    EXPECT_EQ(CreateByName(className, IID_PPV_ARGS(object.GetAddressOf())), S_OK) << className;
    return object;
}

constexpr wchar_t kStore[] = L"KestrinProductEditor.ProductLkpMgr";

/// An object called as scripts call it.
class LateObject
{
public:
    explicit LateObject(IDispatch* object) : m_dispatch(object), m_object(object) {}

    Variant Call(std::u16string_view member, std::vector<Variant> arguments = {}) const;
    void Put(std::u16string_view property, const Variant& value) const;

private:
    ComPtr<IDispatch> m_dispatch;
    ForeignObject m_object;
};

/// The source and the description that the last failed call has left on this thread.
struct LeftError
{
    std::u16string source;
    std::u16string description;
};
[[nodiscard]] LeftError TakeLeftError();

/// A catalogue of its own, a host whose components are doubles, and the component registered.
class AutomationFixture : public testing::Test
{
protected:
    AutomationFixture();
    ~AutomationFixture() override;

    /// The doubles' control, see tests/automation/hostdouble.
    [[nodiscard]] LateObject& Host() { return m_host; }
    [[nodiscard]] const TemporaryFolder& Folder() const { return m_folder; }

    /// A store that does not write the file.
    [[nodiscard]] ComPtr<_ProductLkpMgr> OpenStore();
    /// Adds products of these names; their identifiers.
    static std::vector<LONG> AddProducts(_ProductLkpMgr& store, const std::vector<std::u16string>& names);

    [[nodiscard]] static Variant Packed(std::u16string_view name, std::int64_t scaledPrice = 0);

private:
    Apartment m_apartment;
    TemporaryFolder m_folder;
    LateObject m_host;
};

} // namespace KestrinProductEditor
