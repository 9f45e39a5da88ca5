// SPDX-License-Identifier: MIT
#pragma once

#include <KestrinProductEditor/IPNotifyCallback.h>
#include <KestrinProductEditor/ProductLkpMgr.h>
#include <KestrinProductEditor/Variant.h>

#include <memory>

namespace KestrinProductEditor {

/// A list of all products for a window of the host: name, part number and unit price, for reading.
///
/// The list has a catalogue store of its own. As every store does, it writes what it holds when it is
/// released (with the view, or by another Init): a host that only shows the list says
/// `GetDataSource()->CancelUpdate(true)`. A host that uses Qt takes ProductLkpViewWidget (QtViews.h).
///
/// No member is traced. Create and Refresh raise AutomationError; no other member raises.
class [[gnu::visibility("default")]] ProductLkpView final : public IPNotifyCallback
{
public:
    /// An empty list: a header row and nothing in it. Error 445 where there are no windows.
    [[nodiscard]] static std::shared_ptr<ProductLkpView> Create();

    ~ProductLkpView() override;

    /// Walks the store (a new one when there is none yet) and leaves it at its end. The list has a row for
    /// each product and the header then, but every product is written into row 1: it shows the last one, and
    /// the rows behind it stay empty. To show the catalogue use Init. Error 445 while the list shows the
    /// store itself (after Init, until ResetFlexDataSource).
    void Refresh();

    /// Shows nothing any more; store and adaptor stay. The answer is always Empty.
    Variant ResetFlexDataSource();

    /// The view's store; null before Init and Refresh.
    [[nodiscard]] std::shared_ptr<ProductLkpMgr> GetDataSource() const noexcept;

    /// Opens a new store and shows it. A store that the view had is let go first, so that the new one reads
    /// what it saves. A step that fails is skipped: without a store the list is empty.
    void Init();

    // IPNotifyCallback. They change nothing, and nothing of the component calls them.

    void NotifyProductAdd() override;
    void NotifyProductDelete() override;
    void NotifyProductUpdate() override;

    /// The toolkit's own object, to be put into a window of the host: a QWidget* with Qt. It belongs to the
    /// view and goes with it.
    [[nodiscard]] void* NativeHandle() const noexcept;

private:
    ProductLkpView();

    class [[gnu::visibility("hidden")]] Impl;
    std::unique_ptr<Impl> m_impl;
};

} // namespace KestrinProductEditor
