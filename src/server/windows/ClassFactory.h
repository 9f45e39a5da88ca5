// SPDX-License-Identifier: MIT
#pragma once

#include "platform/LivingObjects.h"

#include <windows.h>

#include <unknwn.h>

#include <atomic>
#include <span>

namespace KestrinProductEditor {

/// One class that clients may create: its identifier, and how an object of it is made, with one reference.
struct CreatableClass
{
    const CLSID* classID;
    IUnknown* (*make)();
};

/// In the order of the type library.
[[nodiscard]] std::span<const CreatableClass> CreatableClasses();

/// Makes the objects of one class. The first object of a thread creates the host's trace there; when that
/// fails the creation fails with its error.
class ClassFactory final : public IClassFactory
{
public:
    explicit ClassFactory(const CreatableClass& creatable) noexcept : m_class(creatable) {}
    ClassFactory(const ClassFactory&) = delete;
    ClassFactory& operator=(const ClassFactory&) = delete;
    virtual ~ClassFactory() = default;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID interfaceID, void** object) override;
    ULONG STDMETHODCALLTYPE AddRef() override { return ++m_references; }
    ULONG STDMETHODCALLTYPE Release() override;

    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID interfaceID, void** object) override;
    HRESULT STDMETHODCALLTYPE LockServer(BOOL lock) override;

private:
    const LivingObject m_living;
    const CreatableClass& m_class;
    std::atomic<ULONG> m_references = 1;
};

} // namespace KestrinProductEditor
