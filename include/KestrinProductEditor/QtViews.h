// SPDX-License-Identifier: MIT
#pragma once

// The views as widgets, for hosts that use Qt 6 Widgets themselves. Nothing else of the component needs Qt's
// headers, and this file is all there is to it: it needs no library beside the component's and Qt's own.

#include <KestrinProductEditor/ProductDetails.h>
#include <KestrinProductEditor/ProductLkpView.h>

#include <QPointer>
#include <QVBoxLayout>
#include <QWidget>

#include <memory>

namespace KestrinProductEditor {

/// A widget that is filled with a view. The view's own widget stands in it as long as both live: whichever
/// goes first leaves the other usable.
template<class View>
class ViewWidget : public QWidget
{
public:
    ViewWidget(const ViewWidget&) = delete;
    ViewWidget& operator=(const ViewWidget&) = delete;

    ~ViewWidget() override
    {
        // Somebody else may hold the view, which owns what it shows: it must not go with this widget.
        if (m_content != nullptr && m_content->parent() == this)
            m_content->setParent(nullptr);
    }

protected:
    /// Requires a QApplication. Raises what View::Create raises: 445 where there are no windows.
    explicit ViewWidget(QWidget* parent)
        : QWidget(parent), m_view(View::Create()), m_content(static_cast<QWidget*>(m_view->NativeHandle()))
    {
        auto* const layout = new QVBoxLayout(this);
        layout->setContentsMargins(0, 0, 0, 0);
        layout->addWidget(m_content);
        setFocusProxy(m_content);
    }

    [[nodiscard]] const std::shared_ptr<View>& PrvView() const noexcept { return m_view; }

private:
    std::shared_ptr<View> m_view;
    QPointer<QWidget> m_content;
};

/// ProductLkpView as a widget; its members do what the view's do.
class ProductLkpViewWidget : public ViewWidget<ProductLkpView>
{
public:
    explicit ProductLkpViewWidget(QWidget* parent = nullptr) : ViewWidget(parent) {}

    /// The view itself; never null.
    [[nodiscard]] const std::shared_ptr<ProductLkpView>& View() const noexcept { return PrvView(); }

    void Init() { View()->Init(); }
    void Refresh() { View()->Refresh(); }
    Variant ResetFlexDataSource() { return View()->ResetFlexDataSource(); }
    [[nodiscard]] std::shared_ptr<ProductLkpMgr> GetDataSource() const { return View()->GetDataSource(); }
};

/// ProductDetails as a widget.
class ProductDetailsWidget : public ViewWidget<ProductDetails>
{
public:
    explicit ProductDetailsWidget(QWidget* parent = nullptr) : ViewWidget(parent) {}

    /// The control itself; never null.
    [[nodiscard]] const std::shared_ptr<ProductDetails>& Details() const noexcept { return PrvView(); }

    void Init(const std::shared_ptr<AutomationObject>& m_objProducts) { Details()->Init(m_objProducts); }
};

} // namespace KestrinProductEditor
