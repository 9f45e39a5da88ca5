// SPDX-License-Identifier: MIT
#pragma once

#include "exchange/CsvSample.h"
#include "exchange/ProductMapping.h"
#include "platform/ui/Toolkit.h"

#include <memory>

namespace KestrinProductEditor {

/// Shows the first lines of a file as the products that they would become. The texts are the file's own; a
/// price that the import would refuse or set to zero is marked, and says why.
class frmProdImportPreview final
{
public:
    /// The window, not shown yet. Raises what the toolkit raises.
    frmProdImportPreview();

    /// Fills the list: a row for each line of the sample.
    void DialogInit(const CsvSample& sample, const ProductMapping& mapping);
    /// Returns when the form is closed.
    void ShowModal();

private:
    std::unique_ptr<IForm> m_form;
    IGrid& m_flexGrid;
};

} // namespace KestrinProductEditor
