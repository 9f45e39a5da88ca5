// SPDX-License-Identifier: MIT
#include "server/ClassTable.h"

#include "platform/Text.h"

#include <KestrinProductEditor/AutomationError.h>
#include <KestrinProductEditor/CreateObject.h>
#include <KestrinProductEditor/ProdLkpEditDlg.h>
#include <KestrinProductEditor/ProductEditorDlg.h>
#include <KestrinProductEditor/ProductExportDlg.h>
#include <KestrinProductEditor/ProductImportDlg.h>
#include <KestrinProductEditor/ProductLkpMgr.h>

namespace KestrinProductEditor {

namespace {

template<class Class>
std::shared_ptr<AutomationObject> Make()
{
    return Class::Create();
}

constexpr ClassEntry kClasses[] = {
    {"ProdLkpEditDlg", &Make<ProdLkpEditDlg>},     {"ProductLkpMgr", &Make<ProductLkpMgr>},
    {"ProductEditorDlg", &Make<ProductEditorDlg>}, {"IPNotifyCallback", nullptr},
    {"ProductImportDlg", &Make<ProductImportDlg>}, {"IProcessProgress", nullptr},
    {"ProductExportDlg", &Make<ProductExportDlg>},
};

} // namespace

std::span<const ClassEntry> ClassTable()
{
    return kClasses;
}

std::shared_ptr<AutomationObject> CreateObject(std::string_view sClassID)
{
    const std::size_t point = sClassID.find('.');
    if (point != std::string_view::npos && EqualsWithoutAsciiCase(sClassID.substr(0, point), kLibraryName)) {
        for (const ClassEntry& entry : kClasses) {
            if (entry.create != nullptr && EqualsWithoutAsciiCase(sClassID.substr(point + 1), entry.name))
                return entry.create();
        }
    }
    throw AutomationError(kErrCannotCreateObject, {},
                          AutomationError::TextOf(kErrCannotCreateObject) + u": '" + ToUtf16(sClassID) +
                              u"'");
}

} // namespace KestrinProductEditor
