// SPDX-License-Identifier: MIT
#pragma once

#include "automation/client/AutomationFixture.h"
#include "automation/windows/HostProgram.h"
#include "automation/windows/SeenGrid.h"

#include "platform/win32/Win32Watchdog.h"

#include <functional>
#include <stdexcept>
#include <string>
#include <string_view>

namespace KestrinProductEditor {

constexpr wchar_t kEditorClass[] = L"KestrinProductEditor.ProductEditorDlg";
constexpr wchar_t kImportClass[] = L"KestrinProductEditor.ProductImportDlg";
constexpr wchar_t kExportClass[] = L"KestrinProductEditor.ProductExportDlg";

constexpr std::u16string_view kEditorTitle = u"Product Editor";
constexpr std::u16string_view kImportTitle = u"Import Products";
constexpr std::u16string_view kExportTitle = u"Export Products";

constexpr std::u16string_view kAskSaveList = u"The product list has been modified.";

/// An object of that class; raises std::runtime_error when it cannot be had.
template<class Interface>
[[nodiscard]] ComPtr<Interface> Make(const wchar_t* className)
{
    ComPtr<Interface> object = Create<Interface>(className);
    if (object == nullptr)
        throw std::runtime_error("an object cannot be had");
    return object;
}

/// Compares two files, and says where they part.
[[nodiscard]] testing::AssertionResult IsSame(const std::string& file, const std::string& expected);

/// Shows the editor while somebody acts on it. The store that the editor has opened is released when it
/// returns.
void ShowEditor(HostProgram& host, const std::function<void()>& acts);

/// The editor's window, once it is open.
class SeenEditor
{
public:
    explicit SeenEditor(const HostProgram& host) : m_host(host), m_window(host.Form(kEditorTitle)) {}

    [[nodiscard]] const SeenWindow& Window() const { return m_window; }
    [[nodiscard]] SeenGrid List() const { return {m_host, m_window}; }
    /// Begins to edit the product whose name begins so, by a double click on its row.
    void Edit(std::u16string_view name) const;
    /// Types over what the box holds.
    void Type(std::u16string_view label, std::u16string_view text) const;
    /// Presses Save, and waits until the boxes are locked again.
    void Save() const;

private:
    const HostProgram& m_host;
    SeenWindow m_window;
};

/// Gives a product of that name another price, and keeps it.
void EditPrice(const HostProgram& host, std::u16string_view name, std::u16string_view price);

/// A host with a catalogue, made from the sample's price list.
class WindowsFixture : public AutomationFixture
{
protected:
    WindowsFixture();

    /// The catalogue's file.
    [[nodiscard]] std::string Catalogue() const { return Folder().Read("Data/corvprd2.cpd"); }
    /// What becomes of the catalogue by what is done to a store of it without a window. The catalogue stays.
    [[nodiscard]] std::string CatalogueAfter(const std::function<void(_ProductLkpMgr&)>& acts);
    /// The row identifier of the product with that name.
    [[nodiscard]] static LONG Find(_ProductLkpMgr& store, std::u16string_view name);
    /// Gives a product another price.
    static void SetPrice(_ProductLkpMgr& store, std::u16string_view name, Currency price);
    /// What the sample's price list, whose lines are name, part number, price and note, becomes in a store.
    static Variant ImportSample(_ProductLkpMgr& store);
    [[nodiscard]] static std::u16string SamplePath();

private:
    Win32Watchdog m_watchdog;
};

} // namespace KestrinProductEditor
