// SPDX-License-Identifier: MIT
#pragma once

#include <KestrinProductEditor/AutomationObject.h>

#include <memory>

namespace KestrinProductEditor {

/// The boxes of one product (name, part number, unit price, note) for a window of the host: a surface that
/// lays itself out. It is never filled, and its button does nothing. A host that uses Qt takes
/// ProductDetailsWidget (QtViews.h).
class [[gnu::visibility("default")]] ProductDetails final : public AutomationObject
{
public:
    /// Error 445 where there are no windows.
    [[nodiscard]] static std::shared_ptr<ProductDetails> Create();

    ~ProductDetails() override;

    /// Keeps nothing and changes nothing, whatever it is given (null, too). Traced; raises what the trace
    /// raises.
    void Init(const std::shared_ptr<AutomationObject>& m_objProducts);

    /// As of ProductLkpView.
    [[nodiscard]] void* NativeHandle() const noexcept;

private:
    ProductDetails();

    class [[gnu::visibility("hidden")]] Impl;
    std::unique_ptr<Impl> m_impl;
};

} // namespace KestrinProductEditor
